#ifndef TRANSLATIONCHECKER_H
#define TRANSLATIONCHECKER_H

#include <QHash>

#include "check/findinglist.h"
#include "check/formtexts.h"
#include "check/translationdocument.h"

/// Checks what translators made of the statements of forms.
class TranslationChecker
{
public:
    /// \a forms are what the translations are of. All must outlive this object.
    TranslationChecker(const QString& fileName, const CheckOptions& options, const QVector<FormTexts>& forms);

    /// Checks what the file contains. False, with the reason, when it holds no translations.
    bool Run(const QByteArray& content, QString* error);

    /// In the order of the file.
    const QVector<Finding>& Findings() const { return m_list.Findings(); }
    /// The content with all that is certain mended, and how much that is; null when it is nothing.
    QByteArray Fixed(int* count) const { return m_list.Fixed(count); }

private:
    void CheckMessage(const TranslationMessage& message);
    bool CheckStatement(const TranslationMessage& message, const TranslatableStatement& statement);
    bool CheckText(const TranslationMessage::Text& translated, const TranslatableStatement& statement);
    void CheckContexts();
    void NoteUnused(const TranslationMessage& message);
    void ReportUnused();
    void Report(Check check, const QString& message, const TextPlace& place, const QString& fix,
                const TranslationMessage::Text& translated, const TranslatableStatement& statement);

    const QString m_fileName;
    const CheckOptions& m_options;
    const QVector<FormTexts>& m_forms;
    TranslationDocument m_document;
    FindingList m_list;
    QMultiHash<QString, const FormTexts*> m_contexts;
    const TranslationMessage* m_firstUnused = nullptr; ///< Of those that come from the forms and are not there now.
    int m_unusedCount = 0;
};

#endif
