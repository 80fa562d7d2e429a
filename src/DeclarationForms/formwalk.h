#ifndef FORMWALK_H
#define FORMWALK_H

#include <QString>
#include <QVariant>

#include <functional>
#include <vector>

class QObject;

/// A marked dynamic property.
struct MarkedProperty
{
    QObject* object;
    QString name; ///< With its marker.
    QVariant text;
    bool mayHaveFormat = true; ///< For its numbers, in another dynamic property.
};

typedef std::vector<MarkedProperty> MarkedProperties;

/// The walk through the objects of a form.
namespace FormWalk {

/// Visits \a scope and all below it, in the order of QObject::children(), each object with all below it before the
/// next, for as long as \a visit answers true. A visit may destroy any of them, which are not visited then.
void Visit(QObject* scope, const std::function<bool(QObject*)>& visit);

/// The marked properties of the object, in the order in which they were set.
MarkedProperties MarkedOf(QObject* object);

/// Whether the dynamic property of that name is a marked one, and not Qt's own.
bool IsMarked(const QByteArray& name);
/// Whether it is one with the number format of another.
bool IsFormat(const QByteArray& name);
/// The name of the property that such a format is for.
QString FormattedBy(const QByteArray& name);

} // namespace FormWalk

#endif
