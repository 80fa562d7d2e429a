#ifndef BOUNDACCESS_H
#define BOUNDACCESS_H

#include <QString>
#include <QVariant>

#include "Common/propertyaccess.h"

class QObject;
struct PropertyAdapter;

/// How one property of an object is read and written: through the object's class, as a dynamic property, or
/// through an adapter. "visible" and "enabled" of a widget are its own setting, whatever its parents are.
class BoundAccess
{
public:
    BoundAccess(const QObject* object, const QString& name);

    /// Whether the object has the property, declared, dynamic or by an adapter.
    static bool Exists(const QObject* object, const QString& name);
    /// Whether it can be written; true for properties that the object does not have yet.
    static bool IsWritable(const QObject* object, const QString& name);
    /// The signal that tells of its changes, as an index into the methods of the class; -1 for none.
    static int NotifySignal(const QObject* object, const QString& name);

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

    const PropertyAdapter* Adapter() const { return m_adapter; }

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
