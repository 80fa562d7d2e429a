#ifndef TEXTPLACE_H
#define TEXTPLACE_H

#include <QtGlobal>

/// A piece of a text: where it starts and how long it is, in QChar units.
struct TextPlace
{
    int offset;
    int length;

    TextPlace() : offset(0), length(0) {}
    TextPlace(int placeOffset, int placeLength) : offset(placeOffset), length(placeLength) {}

    /// Where the piece ends.
    int End() const { return offset + length; }
};

Q_DECLARE_TYPEINFO(TextPlace, Q_MOVABLE_TYPE);

#endif
