#ifndef FORMOBJECTS_H
#define FORMOBJECTS_H

#include <QHash>
#include <QObject>
#include <QPair>
#include <QString>

#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "DeclarationForms/watchedproperty.h"

class BoundAccess;
class FormProperty;
class SignalReceiver;

/// The objects of which a form binds or reads properties.
class FormObjects
{
public:
    FormObjects(SignalReceiver* receiver, QObject* filter) : m_receiver(receiver), m_filter(filter) {}

    /// Null for one that is not among them, or is destroyed.
    WatchedObject* Find(const QObject* object);
    /// The object is among them from now on.
    void Watch(QObject* object) { Get(object); }
    /// The property, which is among them from now on.
    WatchedProperty* Get(QObject* object, const QString& name);
    /// Null for one that is not among them.
    static WatchedProperty* Find(WatchedObject* object, const QString& name);
    typedef std::unordered_map<const QObject*, WatchedObject> Objects;
    /// Takes the object out; what refers to its properties must not any more.
    Objects::node_type Take(const WatchedObject* object);

    /// Counts what is bound of an object, which is filtered meanwhile.
    void CountBound(WatchedObject* object, int change);

    /// Marked properties of the object, bound or not, are told when they are set.
    void WatchTexts(QObject* object);
    /// Those of bound objects alone again.
    template<typename Predicate>
    void IgnoreTexts(Predicate isMeant)
    {
        for (auto& known : m_objects) {
            if (known.second.hasUnbound && isMeant(known.first))
                SetWatched(&known.second, known.second.boundCount, false);
        }
    }

    /// The signals with which editing ends are told.
    void WatchFinish(WatchedObject* object);

    /// How a property of the object is read and written; one for all objects of its class.
    std::shared_ptr<const BoundAccess> Access(const QObject* object, const QString& name);
    /// To be called when an object may take its class with it.
    void ForgetClasses();

    void AddReader(WatchedProperty* property, FormProperty* reader);
    /// Leads the reader nowhere.
    static void RemoveReader(FormProperty* reader);

    /// One text for equal names, which lives as long as this.
    const QString* Share(const QString& name) { return &*m_names.insert(name).first; }

private:
    WatchedObject* Get(QObject* object);
    const std::vector<int>& FinishSignals(const QObject* object);
    void SetWatched(WatchedObject* object, int boundCount, bool hasUnbound);

    SignalReceiver* const m_receiver;
    QObject* const m_filter;
    Objects m_objects;
    WatchedObject* m_last = nullptr; ///< Which was looked for last.
    std::unordered_set<QString> m_names;
    QHash<QPair<const QMetaObject*, QString>, std::shared_ptr<const BoundAccess>> m_accesses;
    std::size_t m_adapterCount = 0; ///< When the first of these was made.
    QHash<const QMetaObject*, std::vector<int>> m_finishSignals;
};

#endif
