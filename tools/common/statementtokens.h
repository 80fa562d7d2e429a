#ifndef STATEMENTTOKENS_H
#define STATEMENTTOKENS_H

#include <QStringList>
#include <QVector>

#include "Common/textplace.h"
#include "DeclarationHandler/Tokens/language.h"

/// What a reference names: a data variable, or with a widget path an object's property.
struct Reference
{
    QString name;                 ///< Of the variable or the property.
    TextPlace namePlace;          ///< In the statement.
    QString package;              ///< The prefix as written, without "@" and ":"; of a variable without one, empty.
    bool hasPackage = false;      ///< Whether there is a prefix.
    QStringList path;             ///< The elements of a widget path, "Widget" and the like included; else empty.
    QVector<TextPlace> pathPlace; ///< Of each element, in the statement.

    bool IsProperty() const { return !path.isEmpty(); }
    /// The package of a variable.
    QString Package(const QString& defaultPackage) const { return hasPackage ? package : defaultPackage; }
};

/// A token with its place in the statement.
struct StatementToken
{
    Token::TOKEN_TYPE type;
    QString lexeme;
    TextPlace place;
    Reference reference;      ///< Of tokens of the type TT_VARIABLE.
    const Language::Row* row; ///< Of operators, keywords and brackets; else null.

    bool HasRole(Language::Role role) const { return row && row->role == role; }
    /// Whether it is a number that is written out.
    bool IsNumber() const { return type == Token::TT_NUMBER; }
    /// Whether it is a text between quotes.
    bool IsQuoted() const { return type == Token::TT_SINGLE_QUOTE || type == Token::TT_DOUBLE_QUOTE; }
    /// The text between the quotes.
    QString Content() const { return lexeme.mid(1, lexeme.size() - 2); }
};

Q_DECLARE_TYPEINFO(StatementToken, Q_MOVABLE_TYPE);

/// The tokens of a statement.
class StatementTokens
{
public:
    StatementTokens() = default;
    /// Those of the whole statement, up to where no token starts.
    explicit StatementTokens(const QString& statement);

    void Append(const Token& token, const TextPlace& place);

    const QVector<StatementToken>& Tokens() const { return m_tokens; }
    /// The token that starts there or is the first behind.
    int NumberAt(int offset) const;

    /// What the statement reads, in the order written, and as often as it stands there.
    QVector<Reference> Variables() const { return References(false); }
    QVector<Reference> Properties() const { return References(true); }

    /// A word for the kind of token, as «number» or «operator».
    static QString KindName(const StatementToken& token);
    /// The words that no name can be.
    static QStringList Keywords();
    /// Those of the names that can stand in a statement.
    static QStringList Readable(const QStringList& names);

private:
    QVector<Reference> References(bool properties) const;

    QVector<StatementToken> m_tokens;
};

#endif
