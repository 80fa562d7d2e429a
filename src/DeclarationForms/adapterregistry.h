#ifndef ADAPTERREGISTRY_H
#define ADAPTERREGISTRY_H

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QString>
#include <QVariant>

#include <deque>
#include <functional>
#include <vector>

/// A property that a class lacks.
struct PropertyAdapter
{
    std::function<QVariant(const QObject*)> read;
    /// Answers whether the value was taken.
    std::function<bool(QObject*, const QVariant&)> write;
    /// As SIGNAL() writes it; empty for none.
    QByteArray notifySignal = QByteArray();
    /// Where no signal of the object itself tells of changes: has the function called after each, as long as
    /// the object lives. Empty where notifySignal serves, or nothing does.
    std::function<void(QObject*, std::function<void()>)> watch = nullptr;
};

/// The adapters by property and class.
class AdapterTable
{
public:
    /// Replaces what was added before.
    void Add(const QMetaObject* type, const QString& property, PropertyAdapter adapter);

    /// How many have been added so far.
    std::size_t Count() const { return m_adapters.size(); }

    /// That of the most derived class; null for none.
    const PropertyAdapter* Find(const QObject* object, const QString& property) const;

private:
    struct Row
    {
        const QMetaObject* type;
        const PropertyAdapter* adapter;
    };

    /// What was replaced stays: it may be in use.
    std::deque<PropertyAdapter> m_adapters;
    QHash<QString, std::vector<Row>> m_rows;
};

/// The adapters of this program, in the thread of the widgets. Those that come with the library are there from
/// the start.
namespace AdapterRegistry {

AdapterTable& Table();

/// Null where the object's classes have no adapter for that property. What is found stays for ever.
const PropertyAdapter* Find(const QObject* object, const QString& property);

} // namespace AdapterRegistry

#endif
