#ifndef FORMWALK_H
#define FORMWALK_H

#include <QString>
#include <QVariant>

#include <deque>

class QObject;

/// A marked dynamic property.
struct MarkedProperty
{
    QObject* object;
    QString name; ///< With its marker.
    QVariant text;
    bool mayHaveFormat = true; ///< For its numbers, in another dynamic property.
};

typedef std::deque<MarkedProperty> MarkedProperties;

/// The walk through the objects of a form.
namespace FormWalk {

/// The marked properties of \a scope and all below it, in the order of QObject::children(), each object with all
/// below it before the next; of one object in the order in which they were set.
MarkedProperties Collect(QObject* scope);

/// Whether the dynamic property of that name is a marked one, and not Qt's own.
bool IsMarked(const QByteArray& name);
/// Whether it is one with the number format of another.
bool IsFormat(const QByteArray& name);
/// The name of the property that such a format is for.
QString FormattedBy(const QByteArray& name);

} // namespace FormWalk

#endif
