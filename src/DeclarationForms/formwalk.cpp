#include "DeclarationForms/formwalk.h"

#include <QObject>

#include <algorithm>
#include <vector>

namespace {

const char* const FormatSuffix = "_format";

/// Where the property before has the same name, both share it.
QString NameOf(const QByteArray& name, const MarkedProperties& properties)
{
    const QString text = QString::fromUtf8(name);
    return !properties.empty() && properties.back().name == text ? properties.back().name : text;
}

void CollectFrom(QObject* object, MarkedProperties* properties)
{
    const QList<QByteArray> names = object->dynamicPropertyNames();
    const bool mayHaveFormat = std::any_of(names.begin(), names.end(), FormWalk::IsFormat);
    for (const QByteArray& name : names) {
        if (FormWalk::IsMarked(name))
            properties->push_back({object, NameOf(name, *properties), object->property(name), mayHaveFormat});
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

bool FormWalk::IsFormat(const QByteArray& name)
{
    return name.endsWith(FormatSuffix);
}

QString FormWalk::FormattedBy(const QByteArray& name)
{
    return QString::fromUtf8(name.left(name.length() - static_cast<int>(qstrlen(FormatSuffix))));
}
