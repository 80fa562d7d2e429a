#include "check/translationdocument.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace {

/// Such as a form of a number in a translation, and in that one of a length.
const int MaxForms = 2;

/// Reads on in the content of an element. False at its end.
bool ReadPiece(QXmlStreamReader* reader, QString* text)
{
    if (reader->atEnd() || reader->readNext() == QXmlStreamReader::EndElement)
        return false;
    if (reader->isCharacters() || reader->isEntityReference())
        *text += reader->text();
    // Control characters, which XML does not have.
    if (reader->isStartElement() && reader->name() == QLatin1String("byte")) {
        const QString value = reader->attributes().value("value").toString();
        *text += QChar(value.startsWith('x') ? value.mid(1).toUShort(nullptr, 16) : value.toUShort());
        reader->skipCurrentElement();
    }
    return true;
}

QString ReadText(QXmlStreamReader* reader)
{
    QString text;
    while (ReadPiece(reader, &text)) {
        if (reader->isStartElement())
            reader->skipCurrentElement();
    }
    return text;
}

/// The encoding that the file names, if that is another than UTF-8.
QString ForeignEncoding(const QString& text)
{
    static const QRegularExpression declaration("^<\\?xml[^>]*encoding\\s*=\\s*[\"']([^\"']+)");
    const QString encoding = declaration.match(text.left(200)).captured(1);
    const bool isOurs = encoding.isEmpty() || encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) == 0;
    return isOurs ? QString() : encoding;
}

} // namespace

bool TranslationDocument::Parse(const QByteArray& content, const QString& fileName, QString* error)
{
    *this = TranslationDocument();
    if (!m_source.Set(content, fileName, error))
        return false;
    const QString encoding = content.contains('\0') ? QString("UTF-16") : ForeignEncoding(m_source.Text());
    QXmlStreamReader reader(m_source.Text());
    if (!encoding.isEmpty())
        reader.raiseError(QString("Translations are kept in UTF-8, not in %1.").arg(encoding));
    else if (!reader.readNextStartElement())
        reader.raiseError(reader.errorString());
    else if (reader.name() != QLatin1String("TS"))
        reader.raiseError("No translations: the outermost element is not \"TS\".");
    else
        ReadFile(&reader);
    // Behind the outermost element nothing may stand.
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        *error = m_source.Complaint(fileName, int(reader.characterOffset()), reader.errorString());
    return !reader.hasError();
}

void TranslationDocument::ReadFile(QXmlStreamReader* reader)
{
    const int tag = int(m_source.Text().lastIndexOf('<', int(reader->characterOffset()) - 1));
    m_rootPlace = {tag + 1, int(reader->name().size())};
    while (reader->readNextStartElement()) {
        if (reader->name() == QLatin1String("context"))
            ReadContext(reader);
        else
            reader->skipCurrentElement();
    }
}

void TranslationDocument::ReadContext(QXmlStreamReader* reader)
{
    QString context;
    while (reader->readNextStartElement()) {
        if (reader->name() == QLatin1String("name")) {
            context = ReadText(reader);
            if (!m_contexts.contains(context))
                m_contexts.append(context);
        } else if (reader->name() == QLatin1String("message")) {
            ReadMessage(reader, context);
        } else {
            reader->skipCurrentElement();
        }
    }
}

void TranslationDocument::ReadMessage(QXmlStreamReader* reader, const QString& context)
{
    static const QStringList unused{"unfinished", "obsolete", "vanished"};
    TranslationMessage message;
    message.context = context;
    bool isFinished = false;
    while (reader->readNextStartElement()) {
        const int start = int(reader->characterOffset());
        if (reader->name() == QLatin1String("source")) {
            message.source = ReadText(reader);
            message.sourcePlace = m_source.ContentPlace(*reader, start);
        } else if (reader->name() == QLatin1String("comment")) {
            message.comment = ReadText(reader);
        } else if (reader->name() == QLatin1String("translation")) {
            isFinished = !unused.contains(reader->attributes().value("type").toString());
            ReadForms(reader, &message, 0);
        } else {
            const QStringView file = reader->attributes().value("filename");
            const bool isLocation = reader->name() == QLatin1String("location");
            m_file = isLocation && !file.isEmpty() ? file.toString() : m_file;
            if (isLocation)
                message.files.append(m_file);
            reader->skipCurrentElement();
        }
    }
    if (isFinished && !reader->hasError())
        m_messages.append(message);
}

/// The text of a translation, or those of the forms in it.
void TranslationDocument::ReadForms(QXmlStreamReader* reader, TranslationMessage* message, int depth) const
{
    const int start = int(reader->characterOffset());
    QString text;
    bool hasForms = false;
    while (ReadPiece(reader, &text)) {
        if (!reader->isStartElement())
            continue;
        hasForms = reader->name() == QLatin1String("numerusform") || reader->name() == QLatin1String("lengthvariant");
        if (hasForms && depth == MaxForms)
            reader->raiseError("The forms of a translation are nested too deep.");
        else if (hasForms)
            ReadForms(reader, message, depth + 1);
        else
            reader->skipCurrentElement();
    }
    // Where there is no text Qt takes the source.
    if (!hasForms && !text.isEmpty())
        message->translations.append({text, m_source.ContentPlace(*reader, start)});
}
