#include "DeclarationForms/formwalk.h"

#include <QObject>

#include <vector>

namespace {

/// Where the property before has the same name, both share it.
QString NameOf(const QByteArray& name, const MarkedProperties& properties)
{
    const QString text = QString::fromUtf8(name);
    return !properties.empty() && properties.back().name == text ? properties.back().name : text;
}

void CollectFrom(QObject* object, MarkedProperties* properties)
{
    const QList<QByteArray> names = object->dynamicPropertyNames();
    for (const QByteArray& name : names) {
        if (FormWalk::IsMarked(name))
            properties->push_back({object, NameOf(name, *properties), object->property(name)});
    }
}

} // namespace

MarkedProperties FormWalk::Collect(QObject* scope)
{
    MarkedProperties properties;
    // Without recursion: nobody limits how deep a form is.
    std::vector<QObject*> waiting = {scope};
    while (!waiting.empty()) {
        QObject* const object = waiting.back();
        waiting.pop_back();
        CollectFrom(object, &properties);
        const QObjectList& children = object->children();
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return properties;
}

bool FormWalk::IsMarked(const QByteArray& name)
{
    return (name.startsWith('~') || name.startsWith('_')) && !name.startsWith("_q_");
}
