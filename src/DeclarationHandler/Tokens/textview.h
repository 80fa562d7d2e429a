#ifndef TEXTVIEW_H
#define TEXTVIEW_H

#include <QString>

/// Helpers of the lexer, which walks through a statement without copying what it has not read yet.
namespace TextView {

/// The text from \a position on, without a copy: it must not outlive \a text, nor be shared. What is
/// kept of it is taken with CopyOf().
inline QString From(const QString& text, int position)
{
    return QString::fromRawData(text.constData() + position, text.length() - position);
}

/// Where the white space from \a position on ends.
inline int SkipSpace(const QString& text, int position)
{
    while (position < text.length() && text.at(position).isSpace())
        ++position;
    return position;
}

/// A copy of \a length characters from \a position on that shares nothing with \a text.
inline QString CopyOf(const QString& text, int position, int length)
{
    return QString(text.constData() + position, length);
}

/// A copy of the first \a length characters that shares nothing with \a text.
inline QString StartOf(const QString& text, int length)
{
    return CopyOf(text, 0, length);
}

} // namespace TextView

#endif
