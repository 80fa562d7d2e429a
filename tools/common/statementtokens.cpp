#include "common/statementtokens.h"

#include <QObject>
#include <QScopedPointer>

#include <algorithm>

#include "DeclarationHandler/Tokens/doublequotetoken.h"
#include "DeclarationHandler/Tokens/numbertoken.h"
#include "DeclarationHandler/Tokens/singlequotetoken.h"
#include "DeclarationHandler/Tokens/variabletoken.h"

namespace {

/// The recognisers in the order in which the parser tries them.
Token* NextToken(const QString& text)
{
    for (const auto parse :
         {NumberToken::Parse, Token::Parse, SingleQuoteToken::Parse, DoubleQuoteToken::Parse, VariableToken::Parse}) {
        if (Token* const token = parse(text))
            return token;
    }
    return nullptr;
}

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
    const int prefixLength = token.GetLexemeLength() - reference.name.size();
    reference.namePlace = {offset + prefixLength, reference.name.size()};
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

int SkipSpace(const QString& statement, int position)
{
    while (position < statement.size() && statement.at(position).isSpace())
        ++position;
    return position;
}

} // namespace

StatementTokens::StatementTokens(const QString& statement)
{
    int position = SkipSpace(statement, 0);
    while (position < statement.size()) {
        const QString unread = QString::fromRawData(statement.constData() + position, statement.size() - position);
        const QScopedPointer<Token> token(NextToken(unread));
        if (!token)
            break;
        const auto* const variable = dynamic_cast<const VariableToken*>(token.data());
        m_tokens.append({token->GetTokenType(), token->GetLexeme(), Place{position, token->GetLexemeLength()},
                         variable ? ReadReference(*variable, position) : Reference(), token->IsBinOp(),
                         token->GetPrecedence()});
        position = SkipSpace(statement, position + token->GetLexemeLength());
    }
    m_unread = {position, statement.size() - position};
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
    if (token.isBinary || token.type == Token::TT_NOT || token.type == Token::TT_HASVALUE)
        return "operator";
    switch (token.type) {
    case Token::TT_NUMBER:
        return "number";
    case Token::TT_SINGLE_QUOTE:
    case Token::TT_DOUBLE_QUOTE:
        return "text";
    case Token::TT_TRUE:
    case Token::TT_FALSE:
        return "truth value";
    case Token::TT_VARIABLE:
        return token.reference.IsProperty() ? "widget property" : "variable";
    case Token::TT_DOT:
        return "selector";
    default:
        return "bracket";
    }
}
