#include "common/statementtokens.h"

#include <QObject>
#include <QScopedPointer>

#include <algorithm>

#include "DeclarationHandler/Tokens/lexer.h"
#include "DeclarationHandler/Tokens/variabletoken.h"

namespace {

/// The elements of «@Engine\Left:», with places that count from the start of the statement.
void SplitPrefix(const QString& prefix, int offset, Reference* reference)
{
    int start = 1;
    for (int i = 1; i < prefix.size(); ++i) {
        if (prefix.at(i) != '\\' && prefix.at(i) != ':')
            continue;
        if (i > start) {
            reference->path.append(prefix.mid(start, i - start));
            reference->pathPlace.append({offset + start, i - start});
        }
        start = i + 1;
    }
}

bool IsWidgetPath(const VariableToken& token, const QStringList& path)
{
    // The object stands for any: the token tells whether the path starts from one at all.
    QObject object;
    return token.GetTopObject(&object, &object, path) != nullptr;
}

Reference ReadReference(const VariableToken& token, int offset)
{
    Reference reference;
    reference.name = token.GetVariableName();
    const int nameLength = int(reference.name.size());
    const int prefixLength = token.GetLexemeLength() - nameLength;
    reference.namePlace = {offset + prefixLength, nameLength};
    reference.hasPackage = token.HasPackage();
    if (!reference.hasPackage)
        return reference;
    reference.package = token.GetPackage(QString());
    SplitPrefix(token.GetLexeme().left(prefixLength), offset, &reference);
    if (!IsWidgetPath(token, reference.path)) {
        reference.path.clear();
        reference.pathPlace.clear();
    }
    return reference;
}

} // namespace

StatementTokens::StatementTokens(const QString& statement)
{
    Lexer lexer(statement);
    for (;;) {
        const QScopedPointer<Token> token(lexer.ReadToken());
        if (!token)
            break;
        Append(*token, lexer.GetPlace());
    }
}

void StatementTokens::Append(const Token& token, const TextPlace& place)
{
    const auto* const variable = dynamic_cast<const VariableToken*>(&token);
    m_tokens.append({token.GetTokenType(), token.GetLexeme(), place,
                     variable ? ReadReference(*variable, place.offset) : Reference(),
                     Language::Find(token.GetTokenType())});
}

int StatementTokens::NumberAt(int offset) const
{
    const auto token = std::find_if(m_tokens.begin(), m_tokens.end(),
                                    [&](const StatementToken& each) { return each.place.offset >= offset; });
    return int(token - m_tokens.begin());
}

QVector<Reference> StatementTokens::References(bool properties) const
{
    QVector<Reference> references;
    for (const StatementToken& token : m_tokens) {
        if (token.type == Token::TT_VARIABLE && token.reference.IsProperty() == properties)
            references.append(token.reference);
    }
    return references;
}

QString StatementTokens::KindName(const StatementToken& token)
{
    if (token.IsNumber())
        return "number";
    if (token.type == Token::TT_VARIABLE)
        return token.reference.IsProperty() ? "widget property" : "variable";
    if (!token.row)
        return "text";
    switch (token.row->role) {
    case Language::Literal:
        return "truth value";
    case Language::OpeningBracket:
    case Language::ClosingBracket:
        return "bracket";
    case Language::Selector:
        return "selector";
    default:
        return "operator";
    }
}

QStringList StatementTokens::Readable(const QStringList& names)
{
    QStringList readable;
    for (const QString& name : names) {
        const QVector<StatementToken> tokens = StatementTokens(name).Tokens();
        if (tokens.size() == 1 && tokens.first().reference.name == name)
            readable.append(name);
    }
    return readable;
}

QStringList StatementTokens::Keywords()
{
    QStringList words;
    for (int i = 0; i < Language::GetRowCount(); ++i) {
        if (Language::GetRow(i).IsWord())
            words.append(Language::GetText(Language::GetRow(i)));
    }
    return words;
}
