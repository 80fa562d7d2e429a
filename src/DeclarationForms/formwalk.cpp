#include "DeclarationForms/formwalk.h"

#include <QObject>

#include <vector>

namespace {

/// Where the property before has the same name, both share it.
QString NameOf(const QByteArray& name, const QVector<MarkedProperty>& properties)
{
    const QString text = QString::fromUtf8(name);
    return !properties.isEmpty() && properties.last().name == text ? properties.last().name : text;
}

void CollectFrom(QObject* object, QVector<MarkedProperty>* properties)
{
    const QList<QByteArray> names = object->dynamicPropertyNames();
    for (const QByteArray& name : names) {
        if (FormWalk::IsMarked(name))
            properties->append({object, NameOf(name, *properties), object->property(name)});
    }
}

} // namespace

QVector<MarkedProperty> FormWalk::Collect(QObject* scope)
{
    QVector<MarkedProperty> properties;
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
