#ifndef QUOTEDTEXT_H
#define QUOTEDTEXT_H

#include "DeclarationHandler/Tokens/textview.h"

/// What the two kinds of quoted literals share.
namespace QuotedText {

/// The length of the literal at the start of \a text, both quotes included; 0 when there is none.
inline int Length(const QString& text, QChar quote)
{
    if (text.length() < 2 || text.at(0) != quote)
        return 0;
    return text.indexOf(quote, 1) + 1;
}

/// The text between the quotes.
inline QString Content(const QString& lexeme)
{
    return lexeme.mid(1, lexeme.length() - 2);
}

} // namespace QuotedText

#endif
