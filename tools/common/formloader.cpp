#include "common/formloader.h"

#include <QBuffer>
#include <QDebug>
#include <QLayout>
#include <QRegularExpression>
#include <QScrollArea>
#include <QWidget>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

/// For each widget in the text, in order, whether a layout stands directly in it.
QVector<bool> FindLayouts(const QByteArray& text)
{
    QVector<bool> hasLayout;
    QVector<int> open; // The number of each element that is a widget, else -1.
    QXmlStreamReader reader(text);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement())
            open.removeLast();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("layout") && !open.isEmpty() && open.last() >= 0)
            hasLayout[open.last()] = true;
        const bool isWidget = reader.name() == QLatin1String("widget");
        open.append(isWidget ? hasLayout.size() : -1);
        if (isWidget)
            hasLayout.append(false);
    }
    return hasLayout;
}

/// A value of an enumeration or several, each as Qt's loader knows it: newer versions of Designer write the
/// enumeration's own name, too, which has its place between class and value.
QString WithoutEnumerations(const QString& values)
{
    static const QRegularExpression qualified("\\b(Q\\w+)::\\w+::(\\w+)");
    return QString(values).replace(qualified, "\\1::\\2");
}

/// The text with the attribute «native» for plain widgets without a layout. At any other plain widget the loader
/// resolves to set the margins of the next layout, which crashes where that is one that it refuses to make.
QByteArray Mended(const QByteArray& text)
{
    const QVector<bool> hasLayout = FindLayouts(text);
    int widgets = 0;
    bool isValue = false; // Inside an element with values of an enumeration.
    QByteArray mended;
    QXmlStreamReader reader(text);
    QXmlStreamWriter writer(&mended);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.hasError())
            return text;
        if (reader.isCharacters() && isValue)
            writer.writeCharacters(WithoutEnumerations(reader.text().toString()));
        else
            writer.writeCurrentToken(reader);
        if (!reader.isCharacters())
            isValue = reader.isStartElement()
                && (reader.name() == QLatin1String("set") || reader.name() == QLatin1String("enum"));
        if (reader.isStartElement() && reader.name() == QLatin1String("widget") && !hasLayout.at(widgets++)
            && reader.attributes().value("class") == QLatin1String("QWidget")
            && !reader.attributes().hasAttribute("native"))
            writer.writeAttribute("native", "true");
    }
    return mended;
}

void TellStandIn(const QString& name, const QString& className, const char* standIn)
{
    qWarning().noquote()
        << QString("%1: the class %2 is unknown; a %3 stands in for it.").arg(name, className, standIn);
}

} // namespace

QWidget* FormLoader::Load(const QByteArray& text, QString* error)
{
    QByteArray mended = Mended(text);
    QBuffer buffer(&mended);
    buffer.open(QIODevice::ReadOnly);
    QWidget* const form = load(&buffer);
    if (!form)
        *error = errorString().isEmpty() ? QString("this is no form") : errorString();
    // A layout that a widget could not take belongs to nobody.
    for (const QPointer<QLayout>& layout : qAsConst(m_layouts)) {
        if (layout && !layout->parent())
            delete layout;
    }
    return form;
}

QWidget* FormLoader::createWidget(const QString& className, QWidget* parent, const QString& name)
{
    // Asks for the class that this one extends, which may lead back here.
    const bool isAsked = m_asked.contains(className);
    m_asked.insert(className);
    QWidget* widget = isAsked ? nullptr : QUiLoader::createWidget(className, parent, name);
    m_asked.remove(className);
    // What the loader itself makes a plain widget of is no stand-in.
    if (widget && className != QLatin1String("QLayoutWidget")
        && className != QLatin1String(widget->metaObject()->className()))
        m_standIns.append({widget, className});
    if (widget)
        return widget;
    TellStandIn(name, className, "plain widget");
    widget = new QWidget(parent);
    widget->setObjectName(name);
    m_standIns.append({widget, className});
    return widget;
}

QLayout* FormLoader::createLayout(const QString& className, QObject* parent, const QString& name)
{
    if (qobject_cast<QScrollArea*>(parent)) {
        // Which deletes the widget before when it takes another, so that the layout would keep a dead one.
        qWarning().noquote() << QString("%1: a scroll area takes no layout.").arg(name);
        return nullptr;
    }
    QLayout* layout = QUiLoader::createLayout(className, parent, name);
    if (!layout) {
        TellStandIn(name, className, "vertical layout");
        layout = QUiLoader::createLayout("QVBoxLayout", parent, name);
    }
    m_layouts.append(layout);
    return layout;
}
