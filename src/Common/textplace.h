#ifndef TEXTPLACE_H
#define TEXTPLACE_H

/// A piece of a text: where it starts and how long it is, in QChar units.
struct TextPlace
{
    int offset; ///< Where it starts.
    int length; ///< 0 where it stands between two characters.

    /// The start of the text.
    TextPlace() : offset(0), length(0) {}
    /// That place; the numbers are not checked.
    TextPlace(int placeOffset, int placeLength) : offset(placeOffset), length(placeLength) {}

    /// Where the piece ends.
    int End() const { return offset + length; }
};

#endif
