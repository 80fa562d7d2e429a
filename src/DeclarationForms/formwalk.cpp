#include "DeclarationForms/formwalk.h"

#include <QObject>
#include <QPointer>

#include <algorithm>

namespace {

const char* const FormatSuffix = "_format";

/// An object whose children are visited.
struct Parent
{
    QPointer<QObject> object;
    int next;
    const QObject* last; ///< Visited before the next one; null for none. It need not exist any more.
};

/// The next child; null when there is none.
QObject* TakeNext(Parent* parent)
{
    if (!parent->object)
        return nullptr;
    const QObjectList& children = parent->object->children();
    // Others may have come or gone before it, or it itself.
    if (parent->last && children.value(parent->next - 1) != parent->last) {
        const int place = static_cast<int>(children.indexOf(const_cast<QObject*>(parent->last)));
        parent->next = place < 0 ? parent->next - 1 : place + 1;
    }
    QObject* const child = children.value(parent->next++);
    parent->last = child;
    return child;
}

} // namespace

void FormWalk::Visit(QObject* scope, const std::function<bool(QObject*)>& visit)
{
    // Without recursion: nobody limits how deep a form is.
    std::vector<Parent> parents;
    for (QObject* object = scope; object;) {
        if (!object->children().isEmpty())
            parents.push_back({object, 0, nullptr});
        if (!visit(object))
            return;
        object = nullptr;
        while (!object && !parents.empty()) {
            object = TakeNext(&parents.back());
            if (!object)
                parents.pop_back();
        }
    }
}

MarkedProperties FormWalk::MarkedOf(QObject* object)
{
    MarkedProperties properties;
    const QList<QByteArray> names = object->dynamicPropertyNames();
    const bool mayHaveFormat = std::any_of(names.begin(), names.end(), IsFormat);
    for (const QByteArray& name : names) {
        if (IsMarked(name))
            properties.push_back({object, QString::fromUtf8(name), object->property(name), mayHaveFormat});
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
