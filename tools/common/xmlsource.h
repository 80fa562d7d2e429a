#ifndef XMLSOURCE_H
#define XMLSOURCE_H

#include <QPair>
#include <QString>
#include <QVector>

#include "Common/textplace.h"

class QXmlStreamReader;

/// Where something stands in a file, both counted from 1.
struct Position
{
    int line = 0;   ///< 0 for none.
    int column = 0; ///< In characters.
};

/// The text of an XML file, and where in it things stand. Takes any input without harm.
class XmlSource
{
public:
    /// False, with the reason, for a text that its encoding does not allow.
    bool Set(const QByteArray& content, const QString& fileName, QString* error);

    const QString& Text() const { return m_text; }
    /// A piece of the text.
    QString Piece(const TextPlace& place) const { return m_text.mid(place.offset, place.length); }
    Position PositionOf(int offset) const;
    /// «FILE:LINE:COLUMN: REASON».
    QString Complaint(const QString& fileName, int offset, const QString& reason) const;

    /// Where the value of an attribute stands, in the start tag that was read last.
    TextPlace AttributePlace(const QXmlStreamReader& reader, const QString& attribute) const;
    /// The content of the element whose end was read last and whose start tag ended at \a start.
    TextPlace ContentPlace(const QXmlStreamReader& reader, int start) const;
    /// Where a piece of what the content of an element says stands. \a content is the content's place, which
    /// entities make longer, and \a text what it says.
    TextPlace PlaceIn(const TextPlace& content, const QString& text, const TextPlace& piece) const;

    /// The file with other texts in some places, which do not overlap and come in their order; null when the
    /// rest would not stay as it was.
    QByteArray Replaced(const QVector<QPair<TextPlace, QString>>& replacements) const;

private:
    QByteArray m_content;
    QString m_text;
    QVector<int> m_lineStarts;
    QVector<int> m_lowSurrogates; ///< Second halves of characters, which count for no column.

    mutable int m_mapped = -1;  ///< The start of the content that the map is of.
    mutable QVector<int> m_map; ///< Where each character of what it says stands.
};

#endif
