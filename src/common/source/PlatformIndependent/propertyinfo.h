#ifndef PROPERTYINFO_H
#define PROPERTYINFO_H

#include <QString>
#include <QStringList>

#include "DeclarationHandler/declarationhandler_export.h"

/// What a property's name tells about it. Names are compared case-sensitively, and no white space is
/// skipped. Every operation may be called from any thread.
///
/// A marked name starts with "~" (read-only) or "_" (mutable): such a property carries a statement.
/// The name without its markers is the normal name, that of the real property.
class DECLARATIONHANDLER_EXPORT PropertyInfo
{
public:
    /// Whether the name starts with "~".
    static bool IsReadOnly(const QString& name);
    /// Whether the name starts with "_".
    static bool IsMutable(const QString& name);
    /// Whether the name carries either marker.
    static bool IsOvexProperty(const QString& name);
    /// The name without its leading run of "~" and "_".
    static QString ToNormal(const QString& name);

    /// Whether the name starts with "loc_" or "_loc".
    static bool HasLocalizablePrefix(const QString& name);
    /// Whether the property holds text for the user's eyes: by its prefix, or as one of
    /// GetLocalizableProperties(). Expects the normal name.
    static bool IsLocalizableProperty(const QString& name);
    /// The standard properties that hold text for the user's eyes.
    static const QStringList& GetLocalizableProperties();

private:
    PropertyInfo();

    static const QStringList m_localizableProperties;
};

#endif
