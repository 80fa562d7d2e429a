#ifndef LEXER_H
#define LEXER_H

#include <QString>

#include "Common/textplace.h"
#include "DeclarationHandler/declarationhandler_export.h"

class Token;

/// Splits a statement into tokens, one after the other. In one thread at a time.
class DECLARATIONHANDLER_EXPORT Lexer
{
public:
    /// Starts in front of \a statement.
    explicit Lexer(const QString& statement);

    /// Reads the next token, which the caller owns. Null at the end, and where no token starts: then the
    /// rest stays unread, for good.
    Token* ReadToken();

    /// Where the token stands in the statement that was read last.
    TextPlace GetPlace() const { return m_place; }
    /// What has not been read, without white space in front; of length 0 at the end.
    TextPlace GetUnread() const { return TextPlace(m_position, m_statement.length() - m_position); }

private:
    Q_DISABLE_COPY(Lexer)

    const QString m_statement;
    QString m_view; ///< Of what is unread, for the recognisers; shares the statement's characters.
    int m_position;
    TextPlace m_place;
};

#endif
