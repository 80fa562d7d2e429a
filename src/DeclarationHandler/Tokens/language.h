#ifndef LANGUAGE_H
#define LANGUAGE_H

#include <QString>

#include "DeclarationHandler/Tokens/token.h"
#include "DeclarationHandler/declarationhandler_export.h"

class IExpression;

/// The operators, keywords and brackets of the statement language, each in one row with all that is known of
/// it. Lexer and parser read this table, and so does whoever colours, completes or explains statements. May be
/// read from any thread.
class DECLARATIONHANDLER_EXPORT Language
{
public:
    /// What a row stands for in a statement.
    enum Role
    {
        LogicOperator,      ///< Between two truth values.
        EqualityOperator,   ///< Between any two values.
        OrderingOperator,   ///< Between two numbers, with a truth value as result.
        ArithmeticOperator, ///< Between two numbers or texts.
        PrefixOperator,     ///< In front of its one operand.
        Literal,            ///< A word that is a value.
        OpeningBracket,     ///< "(" or "[".
        ClosingBracket,     ///< ")" or "]".
        Selector            ///< Between a value and the name of its member.
    };

    /// How tightly a token binds that follows a complete operand. None ends the expression.
    enum Precedence
    {
        None = 0,           ///< Nothing that follows an operand.
        Logical = 1,        ///< The logic operators.
        Comparison = 2,     ///< Equality and ordering.
        Additive = 3,       ///< "+" and "-".
        Multiplicative = 4, ///< "*", "/" and their like.
        Prefix = 5,         ///< The prefix operators.
        Opening = 6         ///< "(".
    };

    /// One operator, keyword or bracket.
    struct Row
    {
        const char* text;       ///< In ASCII.
        Token::TOKEN_TYPE type; ///< The kind of its tokens; no two rows have the same.
        Role role;              ///< What it stands for.
        Precedence precedence;  ///< How tightly it binds behind an operand.
        /// Operators between two operands: a new node, which owns both. Null in other rows.
        IExpression* (*createBinary)(IExpression* left, IExpression* right);
        /// Prefix operators: a new node, which owns the operand. Null in other rows.
        IExpression* (*createPrefix)(IExpression* operand);
        bool isOperandReadOnly; ///< Prefix operators: whether a value that is saved stops at them.
        /// Literals: a new node. Null in other rows.
        IExpression* (*createLiteral)();

        /// Whether a letter or digit behind it makes it the start of a name.
        bool IsWord() const { return text[0] >= 'A' && text[0] <= 'Z'; }
        /// Whether it stands between two operands.
        bool IsBinary() const { return createBinary != nullptr; }
    };

    /// How many rows there are.
    static int GetRowCount();
    /// The rows in the order in which they are tried; those of one character come last.
    /// \a index must be one of those.
    static const Row& GetRow(int index);

    /// The row of that kind; null for kinds without a fixed text.
    static const Row* Find(Token::TOKEN_TYPE type);
    /// The row of several characters that \a text starts with; null when there is none. A word counts only
    /// where it ends.
    static const Row* FindWord(const QString& text);
    /// The row of that one character; null when there is none.
    static const Row* FindChar(QChar character);
    /// The text of a row as tokens share it.
    static const QString& GetText(const Row& row);
};

#endif
