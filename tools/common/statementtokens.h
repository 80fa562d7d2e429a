#ifndef STATEMENTTOKENS_H
#define STATEMENTTOKENS_H

#include <QStringList>
#include <QVector>

#include "DeclarationHandler/Tokens/token.h"

/// A piece of a text: where it starts and how long it is, in QChar units.
struct Place
{
    int offset = 0;
    int length = 0;

    int End() const { return offset + length; }
};

Q_DECLARE_TYPEINFO(Place, Q_PRIMITIVE_TYPE);

/// What a reference names: a data variable, or with a widget path an object's property.
struct Reference
{
    QString name;             ///< Of the variable or the property.
    Place namePlace;          ///< In the statement.
    QString package;          ///< The prefix as written, without "@" and ":"; of a variable without one, empty.
    bool hasPackage = false;  ///< Whether there is a prefix.
    QStringList path;         ///< The elements of a widget path, "Widget" and the like included; else empty.
    QVector<Place> pathPlace; ///< Of each element, in the statement.

    bool IsProperty() const { return !path.isEmpty(); }
    /// The package of a variable.
    QString Package(const QString& defaultPackage) const { return hasPackage ? package : defaultPackage; }
};

/// A token with its place in the statement.
struct StatementToken
{
    Token::TOKEN_TYPE type;
    QString lexeme;
    Place place;
    Reference reference; ///< Of tokens of the type TT_VARIABLE.
    bool isBinary;       ///< As Token::IsBinOp().
    int precedence;      ///< As Token::GetPrecedence().
};

Q_DECLARE_TYPEINFO(StatementToken, Q_MOVABLE_TYPE);

/// The tokens of a statement as the library's parser sees them, with the places that its tokens do not know.
class StatementTokens
{
public:
    StatementTokens() = default;
    explicit StatementTokens(const QString& statement);

    const QVector<StatementToken>& Tokens() const { return m_tokens; }
    /// What no token starts with, to the end of the statement; of length 0 when everything was read.
    Place Unread() const { return m_unread; }

    /// What the statement reads, in the order written, and as often as it stands there.
    QVector<Reference> Variables() const { return References(false); }
    QVector<Reference> Properties() const { return References(true); }

    /// A word for the kind of token, as «number» or «operator».
    static QString KindName(const StatementToken& token);

private:
    QVector<Reference> References(bool properties) const;

    QVector<StatementToken> m_tokens;
    Place m_unread;
};

#endif
