#ifndef TRANSLATIONDOCUMENT_H
#define TRANSLATIONDOCUMENT_H

#include <QStringList>

#include "common/xmlsource.h"

class QXmlStreamReader;

/// One text for translators, with what they made of it.
struct TranslationMessage
{
    /// A translation, of which there are several where the language has forms of a number or the length varies.
    struct Text
    {
        QString text;
        TextPlace place; ///< Of the content in the source, where entities make it longer.
    };

    QString context;
    QString source;
    TextPlace sourcePlace; ///< As the place of a translation.
    QString comment;
    QStringList files; ///< Where the text comes from, as far as it is told.
    QVector<Text> translations;
};

/// The finished translations of a .ts file. Reads any input without harm.
class TranslationDocument
{
public:
    /// False, with the reason, when the content is no .ts file in UTF-8.
    bool Parse(const QByteArray& content, const QString& fileName, QString* error);

    const XmlSource& Source() const { return m_source; }
    /// In the order of the file, without those that are unfinished, obsolete or vanished.
    const QVector<TranslationMessage>& Messages() const { return m_messages; }
    /// The name of the outermost element.
    TextPlace RootPlace() const { return m_rootPlace; }
    /// Each once, also those in which nothing is finished.
    const QStringList& Contexts() const { return m_contexts; }

private:
    void ReadFile(QXmlStreamReader* reader);
    void ReadContext(QXmlStreamReader* reader);
    void ReadMessage(QXmlStreamReader* reader, const QString& context);
    void ReadForms(QXmlStreamReader* reader, TranslationMessage* message, int depth) const;

    XmlSource m_source;
    TextPlace m_rootPlace;
    QString m_file; ///< The last location; where it is the same it is left out.
    QVector<TranslationMessage> m_messages;
    QStringList m_contexts;
};

#endif
