#include "DeclarationForms/formwalk.h"

#include <QObject>

#include <vector>

namespace {

void CollectFrom(QObject* object, QVector<MarkedProperty>* properties)
{
    const QList<QByteArray> names = object->dynamicPropertyNames();
    for (const QByteArray& name : names) {
        if (FormWalk::IsMarked(name))
            properties->append({object, QString::fromLatin1(name), object->property(name)});
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
