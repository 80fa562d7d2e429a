#include "DeclarationForms/widgetpaths.h"

#include <QObject>

namespace {

QObject* StartOf(const QString& first, QObject* widget, QObject* form)
{
    if (first == QLatin1String("Widget"))
        return widget;
    if (first == QLatin1String("ParentWidget"))
        return widget->parent() ? widget->parent() : form;
    return form;
}

} // namespace

QObject* WidgetPaths::Find(const QStringList& path, QObject* widget, QObject* form)
{
    QObject* object = StartOf(path.value(0), widget, form);
    for (int i = 1; object && i < path.count(); ++i)
        object = m_index.FindChild(object, path.at(i));
    return object;
}
