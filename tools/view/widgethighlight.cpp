#include "view/widgethighlight.h"

#include <QEvent>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBox>

namespace {

const int Margin = 2;

/// Brings a page of the container to the front; the page may lie in a widget of the container's own.
template<typename Container>
void ShowPage(QWidget* ancestor, QWidget* page)
{
    auto* const container = qobject_cast<Container*>(ancestor);
    if (container && container->indexOf(page) >= 0)
        container->setCurrentWidget(page);
}

} // namespace

WidgetHighlight::WidgetHighlight(QWidget* stage) : QRubberBand(QRubberBand::Rectangle, stage) {}

void WidgetHighlight::SetTarget(QWidget* target)
{
    for (const QPointer<QWidget>& widget : qAsConst(m_watched)) {
        if (widget)
            widget->removeEventFilter(this);
    }
    m_watched.clear();
    m_target = target;
    for (QWidget* widget = target; widget && widget != parent(); widget = widget->parentWidget()) {
        widget->installEventFilter(this);
        m_watched.append(widget);
    }
    Place();
}

bool WidgetHighlight::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        Place();
        break;
    default:
        break;
    }
    return false;
}

void WidgetHighlight::Place()
{
    // The form may put it into another window.
    if (!m_target || !m_target->isVisible() || !parentWidget()->isAncestorOf(m_target)) {
        hide();
        return;
    }
    const QRect area(m_target->mapTo(parentWidget(), QPoint(0, 0)), m_target->size());
    setGeometry(area.adjusted(-Margin, -Margin, Margin, Margin));
    raise();
    show();
}

void WidgetHighlight::Reveal(QWidget* target) const
{
    for (QWidget* page = target; page != parent() && page; page = page->parentWidget()) {
        for (QWidget* ancestor = page->parentWidget(); ancestor && ancestor != parent();
             ancestor = ancestor->parentWidget()) {
            ShowPage<QTabWidget>(ancestor, page);
            ShowPage<QStackedWidget>(ancestor, page);
            ShowPage<QToolBox>(ancestor, page);
        }
    }
}
