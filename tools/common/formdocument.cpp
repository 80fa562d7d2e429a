#include "common/formdocument.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

#include <algorithm>

#include "qtversion.h"

namespace {

/// Building a form is recursive, in the one who loads it as well.
const int MaxDepth = 300;

const char ByteOrderMark[] = "\xef\xbb\xbf";

QString Decode(const QByteArray& content)
{
    static const QRegularExpression declaration("^<\\?xml[^>]*encoding\\s*=\\s*[\"']([^\"']+)");
    const QRegularExpressionMatch match = declaration.match(QString::fromLatin1(content.left(200)));
    return QtVersion::Decode(content, match.captured(1).toLatin1());
}

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

/// Reads the raw text of an element: what it says, and where each character of that stands.
class RawText
{
public:
    RawText(const QString& source, const TextPlace& place)
        : m_source(source), m_position(place.offset), m_end(place.End())
    {
        while (m_position < m_end)
            ReadPiece();
        m_map.append(m_end);
    }

    const QString& Text() const { return m_text; }
    const QVector<int>& Map() const { return m_map; }

private:
    void ReadPiece()
    {
        if (StartsWith("<![CDATA["))
            ReadLiteral(IndexOf("]]>"), 3);
        else if (StartsWith("<!--"))
            m_position = IndexOf("-->") + 3;
        else if (StartsWith("<?"))
            m_position = IndexOf("?>") + 2;
        else if (StartsWith("&"))
            ReadEntity();
        else
            ReadCharacter();
    }

    bool StartsWith(const char* text) const
    {
        return QStringView(m_source).mid(m_position, int(qstrlen(text))) == QLatin1String(text);
    }

    int IndexOf(const char* text) const
    {
        const int index = m_source.indexOf(QLatin1String(text), m_position);
        return index < 0 ? m_end : index;
    }

    void ReadLiteral(int end, int closing)
    {
        m_position += int(qstrlen("<![CDATA["));
        while (m_position < end)
            ReadCharacter();
        m_position = end + closing;
    }

    void ReadCharacter()
    {
        const QChar character = m_source.at(m_position);
        Append(character == '\r' ? QChar('\n') : character);
        m_position += character == '\r' && QStringView(m_source).mid(m_position + 1, 1) == QLatin1String("\n") ? 2 : 1;
    }

    void ReadEntity()
    {
        static const QHash<QString, QChar> named{{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
        const int end = IndexOf(";");
        const QString name = m_source.mid(m_position + 1, end - m_position - 1);
        if (name.startsWith('#')) {
            const char32_t code = name.startsWith("#x") ? name.mid(2).toUInt(nullptr, 16) : name.mid(1).toUInt();
            const QString characters = QString::fromUcs4(&code, 1);
            for (const QChar character : characters)
                Append(character);
        } else {
            Append(named.value(name));
        }
        m_position = end + 1;
    }

    void Append(QChar character)
    {
        m_text.append(character);
        m_map.append(m_position);
    }

    const QString& m_source;
    int m_position;
    const int m_end;
    QString m_text;
    QVector<int> m_map;
};

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

bool FormDocument::Parse(const QByteArray& content, const QString& fileName, QString* error)
{
    if (!SetSource(content)) {
        const Position position = PositionOf(m_source.indexOf(QChar::ReplacementCharacter));
        *error = QString("%1:%2:%3: The text is no UTF-8.").arg(fileName).arg(position.line).arg(position.column);
        return false;
    }
    QXmlStreamReader reader(m_source);
    ReadElements(&reader);
    if (!reader.hasError() && (m_objects.isEmpty() || m_objects.first().kind != FormObject::Widget))
        reader.raiseError("No form: there is no widget.");
    if (!reader.hasError())
        return true;
    const Position position = PositionOf(int(reader.characterOffset()));
    *error = QString("%1:%2:%3: %4").arg(fileName).arg(position.line).arg(position.column).arg(reader.errorString());
    return false;
}

Position FormDocument::PositionOf(int sourceOffset) const
{
    const auto line = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), sourceOffset) - 1;
    const auto first = std::lower_bound(m_lowSurrogates.begin(), m_lowSurrogates.end(), *line);
    const auto last = std::lower_bound(m_lowSurrogates.begin(), m_lowSurrogates.end(), sourceOffset);
    return {int(line - m_lineStarts.begin()) + 1, sourceOffset - *line - int(last - first) + 1};
}

TextPlace FormDocument::SourcePlace(const FormProperty& property, const TextPlace& place) const
{
    if (m_mapped != &property) {
        const RawText raw(m_source, property.textPlace);
        m_mapped = &property;
        // An entity of the document's own, or the like, hides where the characters stand.
        m_map = raw.Text() == property.text ? raw.Map() : QVector<int>();
    }
    if (m_map.size() <= place.End())
        return property.textPlace;
    const int start = m_map.at(place.offset);
    return {start, m_map.at(place.End()) - start};
}

QByteArray FormDocument::Replaced(const QVector<QPair<TextPlace, QString>>& replacements) const
{
    QString source = m_source;
    for (auto it = replacements.rbegin(); it != replacements.rend(); ++it)
        source.replace(it->first.offset, it->first.length, it->second);
    const QByteArray mark = m_content.startsWith(ByteOrderMark) ? ByteOrderMark : "";
    QByteArray content;
    if (mark + m_source.toUtf8() == m_content)
        content = mark + source.toUtf8();
    else if (m_source.toLatin1() == m_content)
        content = source.toLatin1();
    return Decode(content) == source ? content : QByteArray();
}

/// False for a text that its encoding does not allow.
bool FormDocument::SetSource(const QByteArray& content)
{
    *this = FormDocument();
    m_content = content;
    m_source = Decode(content);
    m_lineStarts.append(0);
    for (int i = 0; i < m_source.size(); ++i) {
        const QChar character = m_source.at(i);
        if (character == '\n' || (character == '\r' && QStringView(m_source).mid(i + 1, 1) != QLatin1String("\n")))
            m_lineStarts.append(i + 1);
        else if (character.isLowSurrogate())
            m_lowSurrogates.append(i);
    }
    // In other encodings nothing stands for what is invalid, and UTF-16 has zeros.
    return !m_source.contains(QChar::ReplacementCharacter) || content.contains('\0')
        || content.contains(QString(QChar::ReplacementCharacter).toUtf8());
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
    object.classPlace = AttributePlace(reader, "class");
    object.name = reader.attributes().value("name").toString();
    object.parent = EnclosingObject();
    m_objects.append(object);
}

void FormDocument::ReadProperty(QXmlStreamReader* reader)
{
    FormProperty property;
    property.name = reader->attributes().value("name").toString();
    property.namePlace = AttributePlace(*reader, "name");
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
    property->text = reader->readElementText(QXmlStreamReader::SkipChildElements);
    const int end = m_source.lastIndexOf('<', int(reader->characterOffset()) - 1);
    property->textPlace = {start, qMax(0, end - start)};
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
    attribute.namePlace = AttributePlace(*reader, "name");
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

/// Where the value of an attribute stands, in the start tag that was read last.
TextPlace FormDocument::AttributePlace(const QXmlStreamReader& reader, const QString& attribute) const
{
    const int end = int(reader.characterOffset());
    // No value holds the character unescaped.
    const int start = qMax(0, m_source.lastIndexOf('<', end - 1));
    static const QRegularExpression pattern("\\s([\\w:.-]+)\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')");
    auto match = pattern.globalMatch(m_source.mid(start, end - start));
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        const int group = found.capturedStart(2) >= 0 ? 2 : 3;
        if (found.captured(1) == attribute)
            return {start + int(found.capturedStart(group)), int(found.capturedLength(group))};
    }
    return {start, 1};
}

int FormDocument::EnclosingObject() const
{
    const auto found = std::find_if(m_open.rbegin(), m_open.rend(), [](int object) { return object >= 0; });
    return found == m_open.rend() ? -1 : *found;
}
