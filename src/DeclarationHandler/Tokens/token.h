#ifndef TOKEN_H
#define TOKEN_H

#include <QString>

#include "DeclarationHandler/declarationhandler_export.h"

class IDataObserver;
class IDataPeer;
class IExpression;
class QObject;

/// A piece of a statement: what the text was and of which kind it is. This class itself stands for
/// operators, brackets, the dot and keywords; literals and references have classes of their own.
///
/// Every token class recognises its own text through a static Parse(), by one convention: it looks
/// only at the start of the text given, which is the unread rest of the statement and does not begin
/// with white space, and returns a new token that the caller owns and whose lexeme is the text
/// consumed, or null when the start is not its own. Tokens keep no reference to that text. Parse() may
/// be called from any thread, and a token used in one thread at a time.
class DECLARATIONHANDLER_EXPORT Token
{
public:
    /// The kinds of tokens, each with its text.
    enum TOKEN_TYPE
    {
        TT_IDENTIFIER = 1,    ///< a name
        TT_LEFT_PARENTHESIS,  ///< "("
        TT_RIGHT_PARENTHESIS, ///< ")"
        TT_LEFT_BRACKET,      ///< "["
        TT_RIGHT_BRACKET,     ///< "]"
        TT_PLUS,              ///< "+"
        TT_MINUS,             ///< "-"
        TT_MULTIPLY,          ///< "*"
        TT_DIVIDE,            ///< "/"
        TT_EQUAL,             ///< "="
        TT_NOT_EQUAL,         ///< "!="
        TT_SMALLER,           ///< "<"
        TT_GREATER,           ///< ">"
        TT_EQUAL_OR_SMALLER,  ///< "<="
        TT_EQUAL_OR_GREATER,  ///< ">="
        TT_OR,                ///< "OR"
        TT_AND,               ///< "AND"
        TT_XOR,               ///< "XOR"
        TT_NOR,               ///< "NOR"
        TT_NAND,              ///< "NAND"
        TT_NOT,               ///< "NOT"
        TT_TRUE,              ///< "TRUE"
        TT_FALSE,             ///< "FALSE"
        TT_NUMBER,            ///< a number
        TT_VARIABLE,          ///< a reference to a data variable or a widget property
        TT_DOT,               ///< "."
        TT_SINGLE_QUOTE,      ///< a text between single quotes
        TT_DOUBLE_QUOTE,      ///< a text between double quotes
        TT_HASVALUE           ///< "HASVALUE"
    };

    /// \a lexeme is the text that the token covers; its kind is not checked against it.
    Token(const QString& lexeme, TOKEN_TYPE type);
    virtual ~Token();

    /// The node that this token stands for as an operand, owned by the caller; null when it cannot
    /// stand as one. Variables are read and watched through \a dataPeer and \a dataObserver, widget
    /// paths start from \a widget and \a topWidget, \a defaultPackage serves names without a package,
    /// and \a readOnly is handed to the node.
    virtual IExpression* CreateExpression(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget,
                                          QObject* topWidget, const QString& defaultPackage, bool readOnly) const;

    /// The text that the token covers, quotes included; never empty.
    QString GetLexeme() const { return m_lexeme; }
    /// The length of that text in QChar units.
    int GetLexemeLength() const { return m_lexeme.length(); }
    /// The kind given to the constructor.
    TOKEN_TYPE GetTokenType() const { return m_tokenType; }
    /// Always 0: tokens do not know where in the statement they stand.
    int GetLexemeOffset() const;
    /// How tightly the token binds when it follows a complete operand, 0 when it ends the expression.
    int GetPrecedence() const;
    /// Whether the token is an operator between two operands.
    bool IsBinOp() const;

    /// Recognises what ParseString() does, and else what ParseChar() does.
    static Token* Parse(const QString& text);
    /// Recognises operators of two characters, and keywords, which end where a letter or digit does not
    /// follow.
    static Token* ParseString(const QString& text);
    /// Recognises operators of one character, brackets and the dot. \a text must not be empty.
    static Token* ParseChar(const QString& text);

private:
    Q_DISABLE_COPY(Token)

    QString m_lexeme;
    TOKEN_TYPE m_tokenType;
};

#endif
