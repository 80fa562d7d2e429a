#ifndef BOUNDACCESS_H
#define BOUNDACCESS_H

#include <QString>
#include <QVariant>

#include "Common/propertyaccess.h"

class QObject;
struct PropertyAdapter;

/// What an object tells of one of its properties.
class PropertyShape
{
public:
    /// \a object may be null.
    PropertyShape(const QObject* object, const QString& name);

    /// Whether the object has the property, declared, dynamic or by an adapter.
    bool Exists() const;
    /// Whether it can be written; true for properties that the object does not have yet.
    bool IsWritable() const;
    /// The signal that tells of its changes, as an index into the methods of the class; -1 for none.
    int NotifySignal() const;
    /// Null for none.
    const PropertyAdapter* Adapter() const { return m_adapter; }

private:
    const QObject* m_object;
    const QString m_name;
    int m_index; ///< In the class; -1 for none.
    const PropertyAdapter* m_adapter;
};

/// How one property of an object is read and written: through the object's class, as a dynamic property, or
/// through an adapter. "visible" and "enabled" of a widget are its own setting, whatever its parents are.
class BoundAccess
{
public:
    BoundAccess(const QObject* object, const QString& name);

    /// \a name is that given to the constructor, here as everywhere.
    QVariant Read(const QObject* object, const QString& name) const;
    /// As the language reads it: where the widget's own setting is not all.
    QVariant ReadPlain(const QObject* object, const QString& name) const;
    /// Answers whether the object took the value, as far as it tells.
    bool Write(QObject* object, const QString& name, const QVariant& value) const;

    /// Puts what the adapter reads into the dynamic property of that name, for whoever does not know of adapters.
    void Mirror(QObject* object, const QString& name) const;

    /// Whether the property, which holds \a held, has taken \a written.
    bool Holds(const QObject* object, const QString& name, const QVariant& held, const QVariant& written) const;
    /// Whether the text that is read back may differ from the one that was taken.
    bool IsRewritten() const { return m_kind == Markup || m_adapter; }
    /// Whether the widget is shown or hidden by default only, until its parent is shown.
    bool IsUnsettled(const QObject* object) const;

    /// Whether \a value is the path of an image for this property.
    bool TakesImagePath(const QVariant& value) const;
    /// The image in that file; a null one, with \a problem, when it cannot be loaded. Invalid, with
    /// \a problem, for an empty path.
    static QVariant LoadImage(const QString& path, QString* problem);

private:
    enum Kind : quint8
    {
        Plain,
        Visible,
        Enabled,
        Image,
        Markup
    };

    static Kind KindOf(const QObject* object, const QString& name);

    PropertyAccess m_access;
    const PropertyAdapter* m_adapter;
    Kind m_kind;
};

#endif
