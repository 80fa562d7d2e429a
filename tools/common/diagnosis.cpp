#include "common/diagnosis.h"

#include <QObject>
#include <QScopedPointer>

#include "DataLayer/idatapeer.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/iparsingresult.h"
#include "DeclarationHandler/parser.h"

namespace {

const int MaxExcerpt = 100;

/// A data layer without variables, since nothing is evaluated.
class NoData : public IDataPeer
{
public:
    QVariant GetValue(const VariableIdentifier&, const QVariant& defaultValue) override { return defaultValue; }
    bool ChangeValue(const VariableIdentifier&, const QVariant&, QFlags<ChangeValueFlag>) override { return false; }
    bool AddObserver(const VariableIdentifier&, IDataObserver*) override { return false; }
    void RemoveObserver(IDataObserver*) override {}
    bool AddReference(const VariableIdentifier&) override { return false; }
};

/// The statement with every widget path cut down to its first element, so that it leads to an object.
/// Backslashes fill the gap: nothing else moves.
QString WithShortPaths(QString statement, const StatementTokens& tokens)
{
    const QVector<Reference> properties = tokens.Properties();
    for (const Reference& property : properties) {
        const int end = property.namePlace.offset - 1;
        const QString filled = property.path.first().rightJustified(property.package.size(), '\\');
        statement.replace(end - filled.size(), filled.size(), filled);
    }
    return statement;
}

/// How far the line reaches to the left of a position, and at most MaxExcerpt / 2.
int LineStart(const QString& text, int position)
{
    int start = position;
    while (start > 0 && position - start < MaxExcerpt / 2 && text.at(start - 1) != '\n')
        --start;
    return start;
}

int LineEnd(const QString& text, int start)
{
    int end = start;
    while (end < text.size() && end - start < MaxExcerpt && text.at(end) != '\n')
        ++end;
    return end;
}

bool EndsLine(const QString& text, int position)
{
    return position < 0 || position >= text.size() || text.at(position) == '\n';
}

/// Blanks as wide as the text, which keep its tabs.
QString Blanks(const QString& text)
{
    QString blanks;
    for (const QChar character : text) {
        if (!character.isLowSurrogate())
            blanks += character == '\t' ? '\t' : ' ';
    }
    return blanks;
}

} // namespace

Diagnosis::Diagnosis(const QString& statement) : m_tokens(statement), m_tree(m_tokens)
{
    NoData data;
    QObject object;
    Parser parser;
    const QString parsed = WithShortPaths(statement, m_tokens);
    parser.Tokenize(parsed);
    const QScopedPointer<IExpression> expression(parser.Parse(&data, nullptr, &object, &object, QString(), true));
    const QScopedPointer<IParsingResult> result(parser.CopyResult());
    m_hasExpression = !expression.isNull();
    m_hasError = !result->HasSucceeded();

    const QStringList texts = result->GetWarningMessages();
    const QVector<StatementTree::Report>& reports = m_tree.Reports();
    for (int i = 0; i < texts.size(); ++i) {
        if (texts.size() != reports.size()) {
            m_messages.append({texts.at(i), QString(), Place{0, statement.size()}, true});
            continue;
        }
        const Place place = reports.at(i).place;
        QString text = texts.at(i);
        text.replace('"' + parsed.mid(place.offset, place.length) + '"',
                     '"' + statement.mid(place.offset, place.length) + '"');
        m_messages.append({text, reports.at(i).detail, place, reports.at(i).isError});
    }
}

QString Excerpt(const QString& text, const Place& place, const QString& label)
{
    const int start = LineStart(text, place.offset);
    const int end = LineEnd(text, start);
    const QString before = (start == 0                      ? label
                                : EndsLine(text, start - 1) ? QString()
                                                            : QString("..."))
        + text.midRef(start, place.offset - start);
    const QString line = before + text.midRef(place.offset, end - place.offset) + (EndsLine(text, end) ? "" : "...");
    const QString marks = '^' + QString(qBound(1, place.length, qMax(1, end - place.offset)) - 1, '~');
    const QString indent(4, ' ');
    return indent + line + '\n' + indent + Blanks(before) + marks + '\n';
}
