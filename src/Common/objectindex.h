#ifndef OBJECTINDEX_H
#define OBJECTINDEX_H

#include <QHash>
#include <QPointer>
#include <QString>

#include "DeclarationHandler/declarationhandler_export.h"

class QObject;

/// Finds objects by name, as QObject::findChild() does, for a form that is asked for thousands of them:
/// searching it anew each time would take time in proportion to its square. To be used in the thread of
/// the objects.
class DECLARATIONHANDLER_EXPORT ObjectIndex
{
public:
    ObjectIndex();
    ~ObjectIndex();

    /// The first object of that name below \a parent, at any depth; null when there is none. \a parent must
    /// not be null. What is below it is searched once, and again when an object is not found where it was or
    /// \a parent has gained or lost a child; an object that is still there is taken, even where another of
    /// its name has come before it.
    QObject* FindChild(QObject* parent, const QString& name);

    /// Lets go of everything.
    void Clear();

private:
    Q_DISABLE_COPY(ObjectIndex)

    /// The objects below one.
    struct Descendants
    {
        QPointer<QObject> parent;
        int childCount;
        QHash<QString, QPointer<QObject>> byName;
    };

    QHash<QObject*, Descendants> m_descendants;
};

#endif
