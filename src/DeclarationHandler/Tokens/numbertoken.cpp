#include "DeclarationHandler/Tokens/numbertoken.h"

#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Tokens/formscope.h"

namespace {

/// The significant digits to which a number is rounded; more become an exponent.
const int SignificantDigits = 6;

/// The value of a short whole number without leading zeros, whose text is in its normal form already;
/// -1 for any other lexeme.
int PlainNumber(const QString& lexeme)
{
    if (lexeme.length() > SignificantDigits || (lexeme.length() > 1 && lexeme.at(0) == QLatin1Char('0')))
        return -1;
    int value = 0;
    for (int i = 0; i < lexeme.length(); ++i) {
        const int digit = lexeme.at(i).unicode() - '0';
        if (digit < 0 || digit > 9)
            return -1;
        value = 10 * value + digit;
    }
    return value;
}

} // namespace

NumberToken::NumberToken(const QString& lexeme) : Token(lexeme, TT_NUMBER) {}

IExpression* NumberToken::CreateExpression(IDataPeer*, IDataObserver*, QObject*, QObject*, const QString&, bool) const
{
    const QString lexeme = GetLexeme();
    const int plain = PlainNumber(lexeme);
    if (plain >= 0)
        return new ExprConstant(lexeme, plain);
    const QString text = QString::fromLatin1("%1").arg(lexeme.toDouble(), 0, 'g', -1, QLatin1Char(' '));
    return new ExprConstant(text, text.toDouble());
}

Token* NumberToken::Parse(const QString& text)
{
    const QLatin1Char point('.');
    int length = text.startsWith(QLatin1Char('-')) ? 1 : 0;
    bool hasPoint = false;
    while (length < text.length() && (text.at(length).isDigit() || (!hasPoint && text.at(length) == point))) {
        hasPoint = hasPoint || text.at(length) == point;
        ++length;
    }
    const bool isSignOrPoint = length == 1 && !text.at(0).isDigit();
    return length == 0 || isSignOrPoint ? nullptr : new NumberToken(FormScope::StartOf(text, length));
}
