#include "DeclarationForms/variablecache.h"

#include <tuple>

namespace {

const std::size_t Alignment = alignof(std::max_align_t); ///< Of what is on the heap.

} // namespace

VariableCache::Use::Use(VariableCache* cache) : m_cache(*cache)
{
    ++m_cache.m_uses;
    m_cache.Clear();
}

VariableCache::Use::~Use()
{
    if (--m_cache.m_uses == 0)
        m_cache.Clear();
}

const QVariant* VariableCache::Find(const WatchedVariable* variable) const
{
    const Entry& entry = m_entries[IndexOf(variable)];
    return entry.variable == variable ? &entry.value : nullptr;
}

void VariableCache::Put(const WatchedVariable* variable, const QVariant& value)
{
    if (m_uses > 0)
        m_entries[IndexOf(variable)] = {variable, value};
}

void VariableCache::Forget(const WatchedVariable* variable)
{
    Entry& entry = m_entries[IndexOf(variable)];
    if (entry.variable == variable)
        entry = Entry();
}

std::size_t VariableCache::IndexOf(const WatchedVariable* variable)
{
    return reinterpret_cast<quintptr>(variable) / Alignment % std::tuple_size<decltype(m_entries)>::value;
}

void VariableCache::Clear()
{
    m_entries.fill(Entry());
}
