#include "DeclarationHandler/Tokens/numbertoken.h"

#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Tokens/formscope.h"

namespace {

const int PlainDigits = 6;

bool IsMinus(QChar character)
{
    return character == QLatin1Char('-');
}

bool IsPoint(QChar character)
{
    return character == QLatin1Char('.');
}

/// The value of a short whole number without leading zeros, whose text is in its normal form already;
/// -1 for any other lexeme.
int PlainNumber(const QString& lexeme)
{
    if (lexeme.length() > PlainDigits || (lexeme.length() > 1 && lexeme.at(0) == QLatin1Char('0')))
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
    int length = !text.isEmpty() && IsMinus(text.at(0)) ? 1 : 0;
    bool hasPoint = false;
    while (length < text.length() && (text.at(length).isDigit() || (!hasPoint && IsPoint(text.at(length))))) {
        hasPoint = hasPoint || IsPoint(text.at(length));
        ++length;
    }
    if (length == 0 || (length == 1 && (IsMinus(text.at(0)) || IsPoint(text.at(0)))))
        return nullptr;
    return new NumberToken(FormScope::StartOf(text, length));
}
