#include "timelineview.h"

#include <QPainter>

#include <algorithm>

#include "inspectedform.h"

TimelineView::TimelineView(const InspectedForm* form) : m_form(form)
{
    setAccessibleName("Timeline of deliveries");
    setAccessibleDescription("The table below has the same figures.");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize TimelineView::sizeHint() const
{
    return QSize(InspectedForm::MaxDeliveries / 2, 60);
}

void TimelineView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    const std::deque<InspectedDelivery>& deliveries = m_form->Deliveries();
    if (deliveries.empty())
        return;
    const auto isShorter = [](const InspectedDelivery& left, const InspectedDelivery& right) {
        return left.nanoseconds < right.nanoseconds;
    };
    const double longest
        = double(qMax<qint64>(1, std::max_element(deliveries.begin(), deliveries.end(), isShorter)->nanoseconds));
    const double barWidth = double(width()) / InspectedForm::MaxDeliveries;
    double right = width();
    for (auto delivery = deliveries.rbegin(); delivery != deliveries.rend(); ++delivery, right -= barWidth) {
        const double barHeight = qMax(1.0, height() * double(delivery->nanoseconds) / longest);
        painter.fillRect(QRectF(right - barWidth, height() - barHeight, barWidth, barHeight), palette().highlight());
    }
}
