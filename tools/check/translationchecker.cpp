#include "check/translationchecker.h"

#include <QFileInfo>

#include <algorithm>

#include "check/statementcomparison.h"
#include "common/slips.h"

namespace {

/// As it stands in a .ts file.
QString Escaped(const QString& text)
{
    return text.toHtmlEscaped().replace('\'', "&apos;");
}

} // namespace

TranslationChecker::TranslationChecker(const QString& fileName, const CheckOptions& options,
                                       const QVector<FormTexts>& forms)
    : m_fileName(fileName), m_options(options), m_forms(forms), m_list(fileName, m_document.Source(), options)
{
}

bool TranslationChecker::Run(const QByteArray& content, QString* error)
{
    if (!m_document.Parse(content, m_fileName, error))
        return false;
    for (const FormTexts& form : m_forms)
        m_contexts.insert(form.context, &form);
    CheckContexts();
    for (const TranslationMessage& message : m_document.Messages())
        CheckMessage(message);
    ReportUnused();
    m_list.Sort();
    return true;
}

/// Most of a program's contexts come from its code, but not all where there are its forms.
void TranslationChecker::CheckContexts()
{
    const QStringList& contexts = m_document.Contexts();
    if (contexts.isEmpty() || std::any_of(contexts.begin(), contexts.end(), [&](const QString& context) {
            return m_contexts.contains(context);
        }))
        return;
    Finding finding;
    finding.check = Check::TranslationUnused;
    finding.message = "No context here bears the name of a class of the forms, so there is nothing to check";
    finding.source = m_document.RootPlace();
    finding.excerpt = Excerpt(m_document.Source().Piece(finding.source), {0, finding.source.length});
    m_list.Add(finding);
}

void TranslationChecker::CheckMessage(const TranslationMessage& message)
{
    bool isText = false;
    const QList<const FormTexts*> forms = m_contexts.values(message.context);
    for (const FormTexts* form : forms) {
        isText = isText || form->texts.contains(message.source);
        const bool isRight
            = std::all_of(form->statements.begin(), form->statements.end(),
                          [&](const TranslatableStatement& statement) { return CheckStatement(message, statement); });
        // What another widget makes of it is the same, or nearly so.
        if (!isRight)
            return;
    }
    if (!isText)
        NoteUnused(message);
}

/// False when anything is told. All is right with a statement that the message does not translate.
bool TranslationChecker::CheckStatement(const TranslationMessage& message, const TranslatableStatement& statement)
{
    // A message without a comment is for all.
    if (statement.text != message.source || (!message.comment.isEmpty() && message.comment != statement.comment))
        return true;
    bool isRight = true;
    for (const TranslationMessage::Text& translated : message.translations)
        isRight = CheckText(translated, statement) && isRight;
    return isRight;
}

/// False when anything is told.
bool TranslationChecker::CheckText(const TranslationMessage::Text& translated, const TranslatableStatement& statement)
{
    const Diagnosis translation(translated.text);
    if (!translation.Messages().isEmpty()) {
        const Diagnosis::Message& first = translation.Messages().first();
        const StatementFinding slip = FindSlip(translation);
        const bool isSlip = !slip.message.isEmpty();
        Report(Check::TranslationError, isSlip ? slip.message : first.Whole(), isSlip ? slip.place : first.place,
               QString(), translated, statement);
        return false;
    }
    const auto lookup = [&](const Reference& reference) {
        return statement.types.value(StatementComparison::NameOf(reference, m_options.package));
    };
    const Diagnosis original(statement.text);
    const QVector<StatementComparison::Difference> differences
        = StatementComparison(original, translation, {lookup, m_options.package, statement.showsTexts}).Run();
    for (int i = 0; i < differences.size() && i < MaxFindings; ++i)
        Report(Check::TranslationChange, differences.at(i).message, differences.at(i).place, differences.at(i).fix,
               translated, statement);
    return differences.isEmpty();
}

/// Code may have texts in the same context; only what comes from the form can be missed there.
void TranslationChecker::NoteUnused(const TranslationMessage& message)
{
    const QList<const FormTexts*> forms = m_contexts.values(message.context);
    const bool isOfForm = std::any_of(forms.begin(), forms.end(), [&](const FormTexts* form) {
        return std::any_of(message.files.begin(), message.files.end(),
                           [&](const QString& file) { return QFileInfo(file).fileName() == form->fileName; });
    });
    m_unusedCount += isOfForm ? 1 : 0;
    if (isOfForm && !m_firstUnused)
        m_firstUnused = &message;
}

void TranslationChecker::ReportUnused()
{
    if (!m_firstUnused)
        return;
    Finding finding;
    finding.check = Check::TranslationUnused;
    finding.message = m_unusedCount == 1
        ? QString("The form has no such text any more, so nobody sees the translation; lupdate sorts it out")
        : QString("%1 texts are no longer in the forms, of which this is the first, so nobody sees their "
                  "translations; lupdate sorts them out")
              .arg(m_unusedCount);
    finding.source = m_firstUnused->sourcePlace;
    finding.excerpt = Excerpt(m_firstUnused->source, {0, int(m_firstUnused->source.size())});
    m_list.Add(finding);
}

void TranslationChecker::Report(Check check, const QString& message, const TextPlace& place, const QString& fix,
                                const TranslationMessage::Text& translated, const TranslatableStatement& statement)
{
    if (statement.suppressed.contains(int(check)))
        return;
    const TextPlace source = m_document.Source().PlaceIn(translated.place, translated.text, place);
    Finding finding;
    finding.check = check;
    finding.message = message;
    finding.source = source;
    finding.object = statement.object;
    finding.property = statement.property;
    finding.statement = translated.text;
    finding.original = statement.text;
    finding.excerpt = Excerpt(translated.text, place, statement.property + "  ");
    // Not where it is unknown in which part of the translation it stands.
    const bool isKnown = source.length < translated.place.length || place.length == translated.text.size();
    finding.fix = isKnown ? Escaped(fix) : QString();
    m_list.Add(finding);
}
