#include "widgetpicker.h"

#include <QApplication>
#include <QKeyEvent>

#include <utility>

WidgetPicker::~WidgetPicker()
{
    Stop();
}

void WidgetPicker::Start()
{
    if (std::exchange(m_isPicking, true))
        return;
    m_isReleasing = false;
    QApplication::setOverrideCursor(Qt::CrossCursor);
    qApp->installEventFilter(this);
}

void WidgetPicker::Stop()
{
    if (!std::exchange(m_isPicking, false))
        return;
    QApplication::restoreOverrideCursor();
    if (!m_isReleasing)
        qApp->removeEventFilter(this);
    Q_EMIT Ended();
}

bool WidgetPicker::eventFilter(QObject* watched, QEvent* event)
{
    QWidget* const widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() == m_window)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (!m_isPicking)
            return false;
        m_isReleasing = true;
        Pick(widget);
        return true;
    case QEvent::MouseButtonRelease:
        if (!std::exchange(m_isReleasing, false))
            return false;
        qApp->removeEventFilter(this);
        return true;
    case QEvent::ShortcutOverride:
        // So that the key comes, whatever shortcut of the program it is.
        event->accept();
        return m_isPicking;
    case QEvent::KeyPress:
        return m_isPicking && OnKey(widget, static_cast<QKeyEvent*>(event)->key());
    default:
        return false;
    }
}

bool WidgetPicker::OnKey(QWidget* widget, int key)
{
    if (key != Qt::Key_Escape && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    if (key == Qt::Key_Escape)
        Stop();
    else
        Pick(widget);
    return true;
}

void WidgetPicker::Pick(QWidget* widget)
{
    const QPointer<QWidget> picked = widget;
    Stop();
    if (picked)
        Q_EMIT Picked(picked);
}
