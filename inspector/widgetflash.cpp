#include "widgetflash.h"

namespace {

const int Interval = 200; ///< In milliseconds.
const int Toggles = 6;

} // namespace

WidgetFlash::WidgetFlash()
{
    m_timer.setInterval(Interval);
    connect(&m_timer, &QTimer::timeout, this, &WidgetFlash::Toggle);
}

WidgetFlash::~WidgetFlash()
{
    Stop();
}

/// Pages are not brought to the front for it: which one shows may be bound.
QWidget* WidgetFlash::WidgetOf(QObject* object)
{
    for (; object; object = object->parent()) {
        QWidget* const widget = qobject_cast<QWidget*>(object);
        if (widget && widget->isVisible())
            return widget;
    }
    return nullptr;
}

void WidgetFlash::Start(QObject* object)
{
    Stop();
    m_target = WidgetOf(object);
    if (!m_target)
        return;
    m_highlight = new WidgetHighlight(m_target->window());
    m_togglesLeft = Toggles;
    m_timer.start();
    Toggle();
}

void WidgetFlash::Toggle()
{
    if (m_togglesLeft-- == 0 || !m_highlight || !m_target) {
        Stop();
        return;
    }
    m_highlight->SetTarget(m_togglesLeft % 2 == 1 ? m_target.data() : nullptr);
}

void WidgetFlash::Stop()
{
    m_timer.stop();
    m_target = nullptr;
    delete m_highlight;
}
