#ifndef COMPILEDSTATEMENT_H
#define COMPILEDSTATEMENT_H

#include <cstddef>
#include <forward_list>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include "Common/textplace.h"
#include "DeclarationHandler/iexpression.h"

class FormProperty;
class FormVariable;

/// The references of one kind in a statement, in its order. Each knows the next one: a form has thousands of them.
template<typename Reference>
class ReferenceChain
{
public:
    class Iterator
    {
    public:
        typedef std::forward_iterator_tag iterator_category;
        typedef Reference* value_type;
        typedef std::ptrdiff_t difference_type;
        typedef Reference* const* pointer;
        typedef Reference* reference;

        explicit Iterator(Reference* current = nullptr) : m_current(current) {}
        Reference* operator*() const { return m_current; }
        Iterator& operator++()
        {
            m_current = m_current->Next();
            return *this;
        }
        Iterator operator++(int)
        {
            const Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator& other) const { return m_current == other.m_current; }
        bool operator!=(const Iterator& other) const { return m_current != other.m_current; }

    private:
        Reference* m_current;
    };

    ReferenceChain() = default;
    /// Links them; whoever owns them keeps them for as long as this.
    explicit ReferenceChain(const std::vector<Reference*>& references)
    {
        for (auto it = references.rbegin(); it != references.rend(); ++it) {
            (*it)->SetNext(m_first);
            m_first = *it;
        }
    }
    ReferenceChain(ReferenceChain&& other) noexcept : m_first(std::exchange(other.m_first, nullptr)) {}
    ReferenceChain& operator=(ReferenceChain&& other) noexcept
    {
        m_first = std::exchange(other.m_first, nullptr);
        return *this;
    }

    Iterator begin() const { return Iterator(m_first); }
    Iterator end() const { return Iterator(); }

private:
    Reference* m_first = nullptr;
};

/// A statement's tree, and the nodes in it that others ask for.
struct CompiledStatement
{
    std::unique_ptr<IExpression> tree;
    ReferenceChain<FormProperty> properties;
    ReferenceChain<FormVariable> variables;
    std::forward_list<std::pair<const IExpression*, TextPlace>> subscripts; ///< With the place of each index.
};

#endif
