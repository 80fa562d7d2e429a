#include "DeclarationHandler/Tokens/doublequotetoken.h"

#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Tokens/quotedtext.h"
#include "DeclarationHandler/Tokens/textview.h"

DoubleQuoteToken::DoubleQuoteToken(const QString& lexeme) : Token(lexeme, TT_DOUBLE_QUOTE) {}

IExpression* DoubleQuoteToken::CreateExpression(IDataPeer*, IDataObserver*, QObject*, QObject*, const QString&,
                                                bool) const
{
    return new ExprConstant(QuotedText::Content(GetLexeme()));
}

Token* DoubleQuoteToken::Parse(const QString& text)
{
    const int length = QuotedText::Length(text, QLatin1Char('"'));
    return length == 0 ? nullptr : new DoubleQuoteToken(TextView::StartOf(text, length));
}
