#ifndef PROPERTYORDER_H
#define PROPERTYORDER_H

#include "DeclarationForms/declarationforms_export.h"

class QString;

/// Which of a widget's properties limit what others of the same widget can take.
class DECLARATIONFORMS_EXPORT PropertyOrder
{
public:
    /// Whether the property \a bound is to be written before \a property, and \a property again when \a bound
    /// changes. By name, whatever the class; no two properties bound each other, not by a detour either.
    static bool Bounds(const QString& bound, const QString& property);
};

#endif
