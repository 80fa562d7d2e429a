#include "declview/widgetoutlines.h"

#include <QEvent>
#include <QPainter>
#include <QWidget>

void WidgetOutlines::Add(QWidget* widget, const QString& className)
{
    m_texts.insert(widget, className + '\n' + widget->objectName());
    widget->installEventFilter(this);
    connect(widget, &QObject::destroyed, this, [this](const QObject* gone) { m_texts.remove(gone); });
}

bool WidgetOutlines::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Paint)
        return false;
    // Below its children; a plain widget paints nothing over it.
    auto* const widget = static_cast<QWidget*>(watched);
    QPainter painter(widget);
    painter.setPen(QPen(widget->palette().color(QPalette::Mid), 1, Qt::DashLine));
    painter.drawRect(widget->rect().adjusted(0, 0, -1, -1));
    painter.setPen(widget->palette().color(QPalette::WindowText));
    painter.drawText(widget->rect(), Qt::AlignCenter, m_texts.value(watched));
    return false;
}
