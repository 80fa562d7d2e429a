#include "DeclarationHandler/Tokens/singlequotetoken.h"

#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Tokens/quotedtext.h"
#include "DeclarationHandler/Tokens/textview.h"

SingleQuoteToken::SingleQuoteToken(const QString& lexeme) : Token(lexeme, TT_SINGLE_QUOTE) {}

IExpression* SingleQuoteToken::CreateExpression(IDataPeer*, IDataObserver*, QObject*, QObject*, const QString&,
                                                bool) const
{
    return new ExprConstant(QuotedText::Content(GetLexeme()));
}

Token* SingleQuoteToken::Parse(const QString& text)
{
    const int length = QuotedText::Length(text, QLatin1Char('\''));
    return length == 0 ? nullptr : new SingleQuoteToken(TextView::StartOf(text, length));
}
