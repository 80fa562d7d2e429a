#include "common/xmlsource.h"

#include <QHash>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>

#include "qtversion.h"

namespace {

const char ByteOrderMark[] = "\xef\xbb\xbf";

QString Decode(const QByteArray& content)
{
    static const QRegularExpression declaration("^<\\?xml[^>]*encoding\\s*=\\s*[\"']([^\"']+)");
    const QRegularExpressionMatch match = declaration.match(QString::fromLatin1(content.left(200)));
    return QtVersion::Decode(content, match.captured(1).toLatin1());
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

bool XmlSource::Set(const QByteArray& content, const QString& fileName, QString* error)
{
    *this = XmlSource();
    m_content = content;
    m_text = Decode(content);
    m_lineStarts.append(0);
    for (int i = 0; i < m_text.size(); ++i) {
        const QChar character = m_text.at(i);
        if (character == '\n' || (character == '\r' && QStringView(m_text).mid(i + 1, 1) != QLatin1String("\n")))
            m_lineStarts.append(i + 1);
        else if (character.isLowSurrogate())
            m_lowSurrogates.append(i);
    }
    // In other encodings nothing stands for what is invalid, and UTF-16 has zeros.
    const int invalid = int(m_text.indexOf(QChar::ReplacementCharacter));
    const bool isValid
        = invalid < 0 || content.contains('\0') || content.contains(QString(QChar::ReplacementCharacter).toUtf8());
    if (!isValid)
        *error = Complaint(fileName, invalid, "The text is no UTF-8.");
    return isValid;
}

Position XmlSource::PositionOf(int offset) const
{
    const auto line = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset) - 1;
    const auto first = std::lower_bound(m_lowSurrogates.begin(), m_lowSurrogates.end(), *line);
    const auto last = std::lower_bound(m_lowSurrogates.begin(), m_lowSurrogates.end(), offset);
    return {int(line - m_lineStarts.begin()) + 1, offset - *line - int(last - first) + 1};
}

QString XmlSource::Complaint(const QString& fileName, int offset, const QString& reason) const
{
    const Position position = PositionOf(offset);
    return QString("%1:%2:%3: %4").arg(fileName).arg(position.line).arg(position.column).arg(reason);
}

TextPlace XmlSource::AttributePlace(const QXmlStreamReader& reader, const QString& attribute) const
{
    const int end = int(reader.characterOffset());
    // No value holds the character unescaped.
    const int start = qMax(0, m_text.lastIndexOf('<', end - 1));
    static const QRegularExpression pattern("\\s([\\w:.-]+)\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')");
    auto match = pattern.globalMatch(m_text.mid(start, end - start));
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        const int group = found.capturedStart(2) >= 0 ? 2 : 3;
        if (found.captured(1) == attribute)
            return {start + int(found.capturedStart(group)), int(found.capturedLength(group))};
    }
    return {start, 1};
}

TextPlace XmlSource::ContentPlace(const QXmlStreamReader& reader, int start) const
{
    const int end = int(m_text.lastIndexOf('<', int(reader.characterOffset()) - 1));
    return {start, qMax(0, end - start)};
}

TextPlace XmlSource::PlaceIn(const TextPlace& content, const QString& text, const TextPlace& piece) const
{
    if (m_mapped != content.offset) {
        const RawText raw(m_text, content);
        m_mapped = content.offset;
        // An entity of the document's own, or the like, hides where the characters stand.
        m_map = raw.Text() == text ? raw.Map() : QVector<int>();
    }
    if (m_map.size() <= piece.End())
        return content;
    const int start = m_map.at(piece.offset);
    return {start, m_map.at(piece.End()) - start};
}

QByteArray XmlSource::Replaced(const QVector<QPair<TextPlace, QString>>& replacements) const
{
    QString text = m_text;
    for (auto it = replacements.rbegin(); it != replacements.rend(); ++it)
        text.replace(it->first.offset, it->first.length, it->second);
    const QByteArray mark = m_content.startsWith(ByteOrderMark) ? ByteOrderMark : "";
    QByteArray content;
    if (mark + m_text.toUtf8() == m_content)
        content = mark + text.toUtf8();
    else if (m_text.toLatin1() == m_content)
        content = text.toLatin1();
    return Decode(content) == text ? content : QByteArray();
}
