#include "DeclarationHandler/Tokens/formnames.h"

#include <QObject>

#include "DeclarationHandler/Tokens/textview.h"

namespace {

thread_local FormNames* inUse = nullptr;

bool IsBelow(const QObject* object, const QObject* parent)
{
    while (object && object != parent)
        object = object->parent();
    return object;
}

} // namespace

FormNames::FormNames() {}

FormNames::Use::Use(FormNames* names) : m_outer(inUse)
{
    inUse = names;
}

FormNames::Use::~Use()
{
    inUse = m_outer;
}

QString FormNames::StartOf(const QString& text, int length)
{
    if (!inUse)
        return TextView::StartOf(text, length);
    const QString view = QString::fromRawData(text.constData(), length);
    const QSet<QString>::const_iterator known = inUse->m_texts.constFind(view);
    return known == inUse->m_texts.constEnd() ? inUse->Share(TextView::StartOf(text, length)) : *known;
}

QString FormNames::Shared(const QString& text)
{
    return inUse ? inUse->Share(text) : text;
}

QObject* FormNames::FindChild(QObject* parent, const QString& name)
{
    return inUse && !name.isEmpty() ? inUse->Find(parent, name) : parent->findChild<QObject*>(name);
}

QString FormNames::Share(const QString& text)
{
    return *m_texts.insert(text);
}

void FormNames::Clear()
{
    m_texts.clear();
    m_descendants.clear();
}

QObject* FormNames::Find(QObject* parent, const QString& name)
{
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

// In the order of QObject::findChild(): the children of an object come before theirs.
void FormNames::Collect(const QObject* parent, QHash<QString, QPointer<QObject>>* byName)
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
