#include "common/formdocument.h"

#include <QFile>
#include <QSet>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

/// Building a form is recursive, in the one who loads it as well.
const int MaxDepth = 300;

int KindOf(QStringView element)
{
    static const QHash<QString, int> kinds{{"widget", FormObject::Widget},
                                           {"layout", FormObject::Layout},
                                           {"action", FormObject::Action},
                                           {"actiongroup", FormObject::ActionGroup},
                                           {"buttongroup", FormObject::ButtonGroup}};
    return kinds.value(element.toString(), -1);
}

QString DefaultClass(FormObject::Kind kind)
{
    switch (kind) {
    case FormObject::Action:
        return "QAction";
    case FormObject::ActionGroup:
        return "QActionGroup";
    case FormObject::ButtonGroup:
        return "QButtonGroup";
    default:
        return QString();
    }
}

} // namespace

bool FormDocument::Read(const QString& fileName, QString* error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QString("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    return Parse(file.readAll(), fileName, error);
}

QSet<QString> FormDocument::Texts() const
{
    QSet<QString> texts;
    QXmlStreamReader reader(m_source.Text());
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QLatin1String("string"))
            texts.insert(reader.readElementText(QXmlStreamReader::SkipChildElements));
    }
    return texts;
}

bool FormDocument::Parse(const QByteArray& content, const QString& fileName, QString* error)
{
    *this = FormDocument();
    if (!m_source.Set(content, fileName, error))
        return false;
    QXmlStreamReader reader(m_source.Text());
    ReadElements(&reader);
    if (!reader.hasError() && (m_objects.isEmpty() || m_objects.first().kind != FormObject::Widget))
        reader.raiseError("No form: there is no widget.");
    if (reader.hasError())
        *error = m_source.Complaint(fileName, int(reader.characterOffset()), reader.errorString());
    return !reader.hasError();
}

void FormDocument::ReadElements(QXmlStreamReader* reader)
{
    while (!reader->atEnd()) {
        reader->readNext();
        if (reader->isStartElement())
            ReadStart(reader);
        else if (reader->isEndElement())
            m_open.removeLast();
    }
}

void FormDocument::ReadStart(QXmlStreamReader* reader)
{
    const QStringView element = reader->name();
    if (m_open.isEmpty() && element != QLatin1String("ui")) {
        reader->raiseError("No form: the outermost element is not \"ui\".");
    } else if (element == QLatin1String("property")) {
        ReadProperty(reader);
    } else if (element == QLatin1String("attribute")) {
        ReadAttribute(reader);
    } else if (element == QLatin1String("customwidget")) {
        ReadCustomWidget(reader);
    } else if (element == QLatin1String("class") && m_open.size() == 1) {
        m_className = reader->readElementText(QXmlStreamReader::SkipChildElements);
    } else if (m_open.size() > MaxDepth) {
        reader->raiseError(QString("The elements are nested more than %1 deep.").arg(MaxDepth));
    } else {
        const int kind = KindOf(element);
        if (kind >= 0)
            AddObject(*reader, FormObject::Kind(kind));
        m_open.append(kind >= 0 ? m_objects.size() - 1 : -1);
    }
}

void FormDocument::AddObject(const QXmlStreamReader& reader, FormObject::Kind kind)
{
    FormObject object;
    object.kind = kind;
    object.className = reader.attributes().value("class").toString();
    if (object.className.isEmpty())
        object.className = DefaultClass(kind);
    object.classPlace = m_source.AttributePlace(reader, "class");
    object.name = reader.attributes().value("name").toString();
    object.parent = EnclosingObject();
    m_objects.append(object);
}

void FormDocument::ReadProperty(QXmlStreamReader* reader)
{
    FormProperty property;
    property.name = reader->attributes().value("name").toString();
    property.namePlace = m_source.AttributePlace(*reader, "name");
    property.textPlace = property.namePlace;
    property.isText = false;
    while (reader->readNextStartElement())
        ReadValue(reader, &property);
    if (!m_open.isEmpty() && m_open.last() >= 0)
        m_objects[m_open.last()].properties.append(property);
    else
        AddStray(property);
}

void FormDocument::ReadValue(QXmlStreamReader* reader, FormProperty* property) const
{
    static const QSet<QString> words{"number", "double", "bool", "enum", "cstring"};
    property->element = reader->name().toString();
    property->isText = property->element == "string";
    if (words.contains(property->element))
        property->content = reader->readElementText(QXmlStreamReader::SkipChildElements).trimmed();
    if (words.contains(property->element))
        return;
    if (!property->isText)
        return reader->skipCurrentElement();
    const int start = int(reader->characterOffset());
    property->isTranslatable
        = reader->attributes().value("notr").compare(QLatin1String("true"), Qt::CaseInsensitive) != 0;
    property->comment = reader->attributes().value("comment").toString();
    property->text = reader->readElementText(QXmlStreamReader::SkipChildElements);
    property->textPlace = m_source.ContentPlace(*reader, start);
}

/// A property of something that becomes no object, such as an item.
void FormDocument::AddStray(const FormProperty& property)
{
    const int object = EnclosingObject();
    if (object < 0)
        return;
    m_objects[object].strays.append(property);
    if (property.name == "text" && property.isText && m_open.size() > 1 && m_open.at(m_open.size() - 2) == object)
        m_objects[object].items.append(property.text);
}

void FormDocument::ReadAttribute(QXmlStreamReader* reader)
{
    FormProperty attribute;
    attribute.name = reader->attributes().value("name").toString();
    attribute.namePlace = m_source.AttributePlace(*reader, "name");
    attribute.textPlace = attribute.namePlace;
    attribute.isText = false;
    const int object = m_open.isEmpty() ? -1 : m_open.last();
    while (reader->readNextStartElement()) {
        attribute.element = reader->name().toString();
        attribute.text = reader->readElementText(QXmlStreamReader::SkipChildElements);
    }
    if (object < 0)
        return;
    if (attribute.name == "buttonGroup")
        m_objects[object].buttonGroup = attribute.text;
    m_objects[object].strays.append(attribute);
}

void FormDocument::ReadCustomWidget(QXmlStreamReader* reader)
{
    QString customClass;
    QString baseClass;
    while (reader->readNextStartElement()) {
        if (reader->name() == QLatin1String("class"))
            customClass = reader->readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        else if (reader->name() == QLatin1String("extends"))
            baseClass = reader->readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        else
            reader->skipCurrentElement();
    }
    m_baseClasses.insert(customClass, baseClass);
}

int FormDocument::EnclosingObject() const
{
    const auto found = std::find_if(m_open.rbegin(), m_open.rend(), [](int object) { return object >= 0; });
    return found == m_open.rend() ? -1 : *found;
}
