#ifndef DIRECTACCESS_H
#define DIRECTACCESS_H

#include <QVariant>

class QMetaProperty;
class QObject;

/// Reads and writes a declared property of one of the most frequent types without what QMetaProperty does for all
/// the others.
class DirectAccess
{
public:
    /// Does nothing for a property of another type, and for one that is not both readable and writable.
    explicit DirectAccess(const QMetaProperty& property);

    /// Of the property; that of an invalid value for one that is not accessed here.
    int Type() const { return m_type; }

    /// As QMetaProperty::read(). False where that must be asked instead.
    bool Read(const QObject* object, QVariant* result) const;
    /// As QMetaProperty::write(), with its answer in \a isTaken. False where that must be asked instead. What listens
    /// to the property may destroy the owner of this object.
    bool Write(QObject* object, const QVariant& value, bool* isTaken) const;

private:
    int m_type;
    int m_index;
};

#endif
