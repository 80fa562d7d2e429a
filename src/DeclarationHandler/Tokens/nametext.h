#ifndef NAMETEXT_H
#define NAMETEXT_H

#include <QString>

/// What names look like.
namespace NameText {

/// The length of the name at the start of \a text; 0 when there is none.
inline int Length(const QString& text)
{
    if (text.isEmpty() || !text.at(0).isLetter())
        return 0;
    int length = 1;
    while (length < text.length()) {
        const QChar character = text.at(length);
        if (!character.isLetterOrNumber() && character != QLatin1Char('_') && character != QLatin1Char('.'))
            break;
        ++length;
    }
    return length;
}

} // namespace NameText

#endif
