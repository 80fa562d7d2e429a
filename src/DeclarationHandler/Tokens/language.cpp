#include "DeclarationHandler/Tokens/language.h"

#include "DeclarationHandler/Expressions/Arithmetic/expradd.h"
#include "DeclarationHandler/Expressions/Arithmetic/exprdivide.h"
#include "DeclarationHandler/Expressions/Arithmetic/exprmultiply.h"
#include "DeclarationHandler/Expressions/Arithmetic/exprsubstract.h"
#include "DeclarationHandler/Expressions/Comparison/exprequal.h"
#include "DeclarationHandler/Expressions/Comparison/exprequalorgreater.h"
#include "DeclarationHandler/Expressions/Comparison/exprequalorsmaller.h"
#include "DeclarationHandler/Expressions/Comparison/exprgreater.h"
#include "DeclarationHandler/Expressions/Comparison/exprnotequal.h"
#include "DeclarationHandler/Expressions/Comparison/exprsmaller.h"
#include "DeclarationHandler/Expressions/Logic/exprand.h"
#include "DeclarationHandler/Expressions/Logic/exprnand.h"
#include "DeclarationHandler/Expressions/Logic/exprnor.h"
#include "DeclarationHandler/Expressions/Logic/exprnot.h"
#include "DeclarationHandler/Expressions/Logic/expror.h"
#include "DeclarationHandler/Expressions/Logic/exprxor.h"
#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Expressions/exprexistence.h"

namespace {

typedef Language::Row Row;

template<typename Node>
IExpression* NewBinary(IExpression* left, IExpression* right)
{
    return new Node(left, right);
}

IExpression* NewNot(IExpression* operand)
{
    return new ExprNot(operand, false);
}

IExpression* NewExistence(IExpression* operand)
{
    return new ExprExistence(operand);
}

template<bool Value>
IExpression* NewTruth()
{
    return new ExprConstant(Value);
}

// Each kind of row says here what it needs.

template<typename Node>
constexpr Row Operator(const char* text, Token::TOKEN_TYPE type, Language::Role role, Language::Precedence precedence)
{
    return Row{text, type, role, precedence, NewBinary<Node>, nullptr, false, nullptr};
}

constexpr Row PrefixOperator(const char* text, Token::TOKEN_TYPE type, IExpression* (*create)(IExpression*),
                             bool isOperandReadOnly)
{
    return Row{text, type, Language::PrefixOperator, Language::Prefix, nullptr, create, isOperandReadOnly, nullptr};
}

constexpr Row Literal(const char* text, Token::TOKEN_TYPE type, IExpression* (*create)())
{
    return Row{text, type, Language::Literal, Language::None, nullptr, nullptr, false, create};
}

constexpr Row Sign(const char* text, Token::TOKEN_TYPE type, Language::Role role,
                   Language::Precedence precedence = Language::None)
{
    return Row{text, type, role, precedence, nullptr, nullptr, false, nullptr};
}

constexpr Row Rows[] = {
    Operator<ExprNotEqual>("!=", Token::TT_NOT_EQUAL, Language::EqualityOperator, Language::Comparison),
    Operator<ExprEqualOrSmaller>("<=", Token::TT_EQUAL_OR_SMALLER, Language::OrderingOperator, Language::Comparison),
    Operator<ExprEqualOrGreater>(">=", Token::TT_EQUAL_OR_GREATER, Language::OrderingOperator, Language::Comparison),
    Operator<ExprOr>("OR", Token::TT_OR, Language::LogicOperator, Language::Logical),
    Operator<ExprAnd>("AND", Token::TT_AND, Language::LogicOperator, Language::Logical),
    Operator<ExprNor>("NOR", Token::TT_NOR, Language::LogicOperator, Language::Logical),
    Operator<ExprXor>("XOR", Token::TT_XOR, Language::LogicOperator, Language::Logical),
    Operator<ExprNand>("NAND", Token::TT_NAND, Language::LogicOperator, Language::Logical),
    PrefixOperator("NOT", Token::TT_NOT, NewNot, false),
    // Asking for a value never writes it, whatever the rest of the statement may do.
    PrefixOperator("HASVALUE", Token::TT_HASVALUE, NewExistence, true),
    Literal("TRUE", Token::TT_TRUE, NewTruth<true>),
    Literal("FALSE", Token::TT_FALSE, NewTruth<false>),
    Sign("(", Token::TT_LEFT_PARENTHESIS, Language::OpeningBracket, Language::Opening),
    Sign(")", Token::TT_RIGHT_PARENTHESIS, Language::ClosingBracket),
    Sign("[", Token::TT_LEFT_BRACKET, Language::OpeningBracket),
    Sign("]", Token::TT_RIGHT_BRACKET, Language::ClosingBracket),
    Operator<ExprSubstract>("-", Token::TT_MINUS, Language::ArithmeticOperator, Language::Additive),
    Operator<ExprAdd>("+", Token::TT_PLUS, Language::ArithmeticOperator, Language::Additive),
    Operator<ExprDivide>("/", Token::TT_DIVIDE, Language::ArithmeticOperator, Language::Multiplicative),
    Operator<ExprMultiply>("*", Token::TT_MULTIPLY, Language::ArithmeticOperator, Language::Multiplicative),
    Operator<ExprEqual>("=", Token::TT_EQUAL, Language::EqualityOperator, Language::Comparison),
    Operator<ExprSmaller>("<", Token::TT_SMALLER, Language::OrderingOperator, Language::Comparison),
    Operator<ExprGreater>(">", Token::TT_GREATER, Language::OrderingOperator, Language::Comparison),
    Sign(".", Token::TT_DOT, Language::Selector),
};
constexpr int RowCount = sizeof(Rows) / sizeof(Rows[0]);

/// The largest kind in the rows from \a row on, or \a largest.
constexpr int LargestType(int row, int largest)
{
    return row == RowCount ? largest : LargestType(row + 1, Rows[row].type > largest ? Rows[row].type : largest);
}
constexpr int TypeCount = LargestType(0, 0) + 1;

/// The row of that kind among those from \a row on; null when there is none.
constexpr const Row* RowOf(int type, int row)
{
    return row == RowCount ? nullptr : Rows[row].type == type ? &Rows[row] : RowOf(type, row + 1);
}

/// The rows by kind, which the parser asks for with every token: in a table that the compiler fills.
template<int... Types>
struct RowsByType
{
    static const Row* Find(int type)
    {
        static constexpr const Row* rows[] = {RowOf(Types, 0)...};
        return rows[type];
    }
};

/// RowsByType<0, 1, ..., count - 1>.
template<int Count, int... Types>
struct AllRowsByType : AllRowsByType<Count - 1, Count - 1, Types...>
{
};
template<int... Types>
struct AllRowsByType<0, Types...> : RowsByType<Types...>
{
};

bool IsSingleChar(const Row& row)
{
    return row.text[1] == '\0';
}

const int AsciiCount = 128;

/// The rows by their first characters, and their texts as the tokens share them.
struct Index
{
    QString texts[RowCount];
    const Row* byChar[AsciiCount];  ///< The rows of one character; null for others.
    bool startsLongRow[AsciiCount]; ///< Whether a text of several characters starts with that character.

    Index() : byChar(), startsLongRow()
    {
        for (int i = 0; i < RowCount; ++i) {
            texts[i] = QLatin1String(Rows[i].text);
            const int first = Rows[i].text[0];
            if (IsSingleChar(Rows[i]))
                byChar[first] = &Rows[i];
            else
                startsLongRow[first] = true;
        }
    }
};

const Index& GetIndex()
{
    // Complete before the first look-up in any thread.
    static const Index index;
    return index;
}

bool StartsLongRow(QChar character)
{
    return character.unicode() < AsciiCount && GetIndex().startsLongRow[character.unicode()];
}

bool Matches(const Row& row, const QString& text)
{
    // The first character alone rules out nearly all.
    if (text.at(0) != QLatin1Char(row.text[0]) || !text.startsWith(QLatin1String(row.text), Qt::CaseSensitive))
        return false;
    const int length = static_cast<int>(qstrlen(row.text));
    return !row.IsWord() || text.length() == length || !text.at(length).isLetterOrNumber();
}

} // namespace

int Language::GetRowCount()
{
    return RowCount;
}

const Language::Row& Language::GetRow(int index)
{
    return Rows[index];
}

const Language::Row* Language::Find(Token::TOKEN_TYPE type)
{
    return type < TypeCount ? AllRowsByType<TypeCount>::Find(type) : nullptr;
}

const Language::Row* Language::FindWord(const QString& text)
{
    if (text.isEmpty() || !StartsLongRow(text.at(0)))
        return nullptr;
    for (int i = 0; i < RowCount; ++i) {
        if (!IsSingleChar(Rows[i]) && Matches(Rows[i], text))
            return &Rows[i];
    }
    return nullptr;
}

const Language::Row* Language::FindChar(QChar character)
{
    return character.unicode() < AsciiCount ? GetIndex().byChar[character.unicode()] : nullptr;
}

const QString& Language::GetText(const Row& row)
{
    return GetIndex().texts[&row - Rows];
}
