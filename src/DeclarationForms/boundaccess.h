#ifndef BOUNDACCESS_H
#define BOUNDACCESS_H

#include <QString>
#include <QVariant>

#include "Common/propertyaccess.h"
#include "DeclarationForms/directaccess.h"

class QObject;
struct QMetaObject;
struct PropertyAdapter;

/// How one property of the objects of a class is read and written: as the class declares it, as a dynamic property,
/// or through an adapter. "visible" and "enabled" of a widget are its own setting, whatever its parents are.
class BoundAccess
{
public:
    /// \a object is one of the class, and not kept.
    BoundAccess(const QObject* object, const QString& name);

    /// Of the property.
    const QString& Name() const { return m_name; }
    /// Whether the object has the property, declared, dynamic or by an adapter.
    bool Exists(const QObject* object) const;
    /// Whether it can be written; true for properties that the objects do not have yet.
    bool IsWritable() const { return m_isWritable; }
    /// The signal that tells of its changes, as an index into the methods of the class; -1 for none.
    int NotifySignal() const { return m_notifySignal; }
    /// Null for none.
    const PropertyAdapter* Adapter() const { return m_adapter; }

    QVariant Read(const QObject* object) const;
    /// As the language reads it: where the widget's own setting is not all.
    QVariant ReadPlain(const QObject* object) const;
    /// Answers whether the object took the value, as far as it tells.
    bool Write(QObject* object, const QVariant& value) const;

    /// What a write of the value leaves where the property holds texts and the value is a number, whose text takes
    /// time to make, put into \a text; else the value.
    const QVariant& AsHeld(const QObject* object, const QVariant& value, QVariant* text) const;

    /// Puts what the adapter reads into the dynamic property of that name, for whoever does not know of adapters.
    void Mirror(QObject* object) const;

    /// Whether the property, which holds \a held, has taken \a written.
    bool Holds(const QObject* object, const QVariant& held, const QVariant& written) const;
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

    static int NotifySignalOf(const QMetaObject* metaObject, int index, const PropertyAdapter* adapter);
    static Kind KindOf(const QObject* object, const QString& name);

    const QString m_name;
    PropertyAccess m_access;
    DirectAccess m_direct;
    const QMetaObject* m_metaObject; ///< That the property was looked up in.
    const PropertyAdapter* m_adapter;
    int m_index; ///< In the class; -1 for none.
    int m_notifySignal;
    bool m_isWritable;
    Kind m_kind;
};

#endif
