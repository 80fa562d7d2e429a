#include "declview/formloader.h"

#include <QBuffer>
#include <QDebug>
#include <QWidget>

QWidget* FormLoader::Load(const QByteArray& text, QString* error)
{
    QByteArray copy = text;
    QBuffer buffer(&copy);
    buffer.open(QIODevice::ReadOnly);
    QWidget* const form = load(&buffer);
    if (!form)
        *error = errorString().isEmpty() ? QString("this is no form") : errorString();
    return form;
}

QWidget* FormLoader::createWidget(const QString& className, QWidget* parent, const QString& name)
{
    if (QWidget* const widget = QUiLoader::createWidget(className, parent, name))
        return widget;
    qWarning().noquote()
        << QString("%1: the class %2 is unknown; a plain widget stands in for it.").arg(name, className);
    auto* const widget = new QWidget(parent);
    widget->setObjectName(name);
    return widget;
}
