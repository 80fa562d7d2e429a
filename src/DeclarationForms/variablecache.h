#ifndef VARIABLECACHE_H
#define VARIABLECACHE_H

#include <QVariant>

#include <array>
#include <cstddef>

class WatchedVariable;

/// The values of variables that were read last, while a delivery reads them: many statements of a form read the same.
/// In the thread of the widgets.
class VariableCache
{
public:
    /// While one lives, values are kept. Those that were kept before are not looked at any more.
    class Use
    {
    public:
        explicit Use(VariableCache* cache);
        ~Use();

    private:
        Q_DISABLE_COPY(Use)

        VariableCache& m_cache;
    };

    /// Null where it is not known.
    const QVariant* Find(const WatchedVariable* variable) const;
    void Put(const WatchedVariable* variable, const QVariant& value);
    /// It is another value now.
    void Forget(const WatchedVariable* variable);

private:
    struct Entry
    {
        const WatchedVariable* variable = nullptr;
        QVariant value;
    };

    static std::size_t IndexOf(const WatchedVariable* variable);
    void Clear();

    std::array<Entry, 16> m_entries;
    int m_uses = 0;
};

#endif
