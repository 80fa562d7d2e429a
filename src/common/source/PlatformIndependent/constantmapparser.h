#ifndef CONSTANTMAPPARSER_H
#define CONSTANTMAPPARSER_H

#include <QString>

#include "DeclarationHandler/declarationhandler_export.h"

/// Reads references to one entry of a constant map: «~colors[red]» or «~colors['dark red']». White
/// space may surround the "~", the map's name, the brackets and the key; white space inside the
/// quotes belongs to the key. Every operation may be called from any thread.
class DECLARATIONHANDLER_EXPORT ConstantMapParser
{
public:
    /// Splits a reference into map name and key, each written where its pointer is not null. False,
    /// with nothing written, when \a text is no reference.
    static bool Parse(const QString& text, QString* mapName, QString* key);

    /// The map's name; null when \a text is no reference.
    static QString GetMapName(const QString& text);

    /// The map's name with "~" in front; "~" alone when \a text is no reference.
    static QString GetMapNameWithPrefix(const QString& text);

    /// Whether \a text is a reference, without leading white space, into a map whose name starts with
    /// "loc", further markers left out: such a map holds text for the user's eyes.
    static bool IsLocalizableMapEntry(const QString& text);

private:
    ConstantMapParser();
};

#endif
