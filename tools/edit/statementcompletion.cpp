#include "edit/statementcompletion.h"

#include "edit/statementsurroundings.h"

namespace {

bool IsPartOfReference(QChar character)
{
    return character.isLetterOrNumber() || character == '_' || character == '@' || character == ':'
        || character == '\\';
}

/// Where the reference or word starts that ends at the offset.
int StartOf(const QString& statement, int offset)
{
    int start = offset;
    while (start > 0 && IsPartOfReference(statement.at(start - 1))) {
        --start;
        if (statement.at(start) == '@')
            break;
    }
    return start;
}

/// Whether the offset is within a text between quotes.
bool IsInText(const QString& statement, int offset)
{
    QChar quote;
    for (int i = 0; i < offset; ++i) {
        const QChar character = statement.at(i);
        if (quote.isNull() && (character == '\'' || character == '"'))
            quote = character;
        else if (character == quote)
            quote = QChar();
    }
    return !quote.isNull();
}

QStringList Candidates(const QString& typed, const StatementSurroundings& surroundings)
{
    if (!typed.startsWith('@'))
        return StatementTokens::Keywords() + surroundings.Variables();
    QStringList words;
    const QString path = typed.mid(1).section(':', 0, 0);
    if (typed.contains(':')) {
        const QStringList properties = surroundings.Properties(path);
        for (const QString& property : properties)
            words.append('@' + path + ':' + property);
    } else {
        const QStringList paths = surroundings.Paths();
        for (const QString& object : paths)
            words.append('@' + object + ':');
    }
    return words + surroundings.Variables();
}

} // namespace

StatementCompletion StatementCompletion::At(const QString& statement, int offset,
                                            const StatementSurroundings* surroundings)
{
    StatementCompletion completion;
    if (IsInText(statement, offset))
        return completion;
    const int start = StartOf(statement, offset);
    const QString typed = statement.mid(start, offset - start);
    completion.place = TextPlace(start, offset - start);
    const QStringList words = surroundings ? Candidates(typed, *surroundings) : StatementTokens::Keywords();
    for (const QString& word : words) {
        if (word.startsWith(typed, Qt::CaseInsensitive) && word != typed)
            completion.words.append(word);
    }
    completion.words.removeDuplicates();
    completion.words.sort(Qt::CaseInsensitive);
    return completion;
}
