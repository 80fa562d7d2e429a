#ifndef WATCHEDPROPERTY_H
#define WATCHEDPROPERTY_H

#include <QObject>
#include <QString>
#include <QVariant>

#include <forward_list>
#include <memory>
#include <vector>

class BoundStatement;
class FormProperty;
struct WatchedObject;

/// A property of an object that is bound, was bound, or is read by a statement.
struct WatchedProperty
{
    WatchedObject* owner;
    const QString* name = nullptr; ///< Without marker; one of those that FormObjects keeps.
    QVariant original;             ///< What Designer gave: what it held when it was first bound.
    std::shared_ptr<BoundStatement> statement;
    std::vector<FormProperty*> readers;
    int slot = -1;            ///< Of the SignalReceiver, for changes; -1 while they are not watched.
    bool wasBound = false;    ///< And has an original.
    bool isUnknown = false;   ///< The object did not have it when it was first bound.
    bool isWatched = false;   ///< An adapter was asked to tell of changes.
    bool hasNotifier = false; ///< Changes are told by a signal or an adapter.

    /// Whether statements get no value from it: it was bound, and is not any more.
    bool IsAbsent() const { return wasBound && !statement; }
};

/// An object of which a form binds or reads properties; exists until the object is destroyed.
struct WatchedObject
{
    QObject* object = nullptr;
    std::forward_list<WatchedProperty> properties;
    int destroyedSlot = -1;
    std::forward_list<int> finishedSlots; ///< For the signals with which editing ends.
    int boundCount = 0;
    bool hasUnbound = false; ///< Marked properties that may be bound once they are set to another text.
};

#endif
