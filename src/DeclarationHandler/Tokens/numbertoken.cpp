#include "DeclarationHandler/Tokens/numbertoken.h"

#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Tokens/textview.h"

namespace {

bool IsMinus(QChar character)
{
    return character == QLatin1Char('-');
}

bool IsPoint(QChar character)
{
    return character == QLatin1Char('.');
}

} // namespace

NumberToken::NumberToken(const QString& lexeme) : Token(lexeme, TT_NUMBER) {}

IExpression* NumberToken::CreateExpression(IDataPeer*, IDataObserver*, QObject*, QObject*, const QString&, bool) const
{
    const double value = GetLexeme().toDouble();
    return new ExprConstant(QString::fromLatin1("%1").arg(value, 0, 'g', -1, QLatin1Char(' ')));
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
    return new NumberToken(TextView::StartOf(text, length));
}
