#include "Common/objectindex.h"

#include <QObject>

namespace {

bool IsBelow(const QObject* object, const QObject* parent)
{
    while (object && object != parent)
        object = object->parent();
    return object;
}

// In the order of QObject::findChild(): the children of an object come before theirs.
void Collect(const QObject* parent, QHash<QString, QPointer<QObject>>* byName)
{
    const QObjectList& children = parent->children();
    for (int i = 0; i < children.count(); ++i) {
        const QString name = children.at(i)->objectName();
        if (!name.isEmpty() && !byName->contains(name))
            byName->insert(name, children.at(i));
    }
    for (int i = 0; i < children.count(); ++i)
        Collect(children.at(i), byName);
}

} // namespace

ObjectIndex::ObjectIndex() {}

ObjectIndex::~ObjectIndex() {}

QObject* ObjectIndex::FindChild(QObject* parent, const QString& name)
{
    if (name.isEmpty())
        return parent->findChild<QObject*>(name);
    Descendants& descendants = m_descendants[parent];
    const int childCount = parent->children().count();
    if (descendants.parent != parent || descendants.childCount != childCount) {
        descendants.parent = parent;
        descendants.childCount = childCount;
        descendants.byName.clear();
        Collect(parent, &descendants.byName);
    }
    QPointer<QObject>& object = descendants.byName[name];
    if (!object || object->objectName() != name || !IsBelow(object->parent(), parent))
        object = parent->findChild<QObject*>(name);
    return object;
}

void ObjectIndex::Clear()
{
    m_descendants.clear();
}
