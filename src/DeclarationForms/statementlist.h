#ifndef STATEMENTLIST_H
#define STATEMENTLIST_H

#include <cstddef>
#include <memory>
#include <vector>

class BoundStatement;
class QObject;

/// Those statements of a form that carry a flag. Those that are not bound any more are left out.
class StatementList
{
public:
    typedef std::vector<std::shared_ptr<BoundStatement>> Statements;
    typedef bool BoundStatement::*Flag;
    typedef bool (*Predicate)(const BoundStatement&);

    /// Statements lose the flag once \a isMeant answers false for them; it may be null.
    explicit StatementList(Flag flag, Predicate isMeant = nullptr) : m_flag(flag), m_isMeant(isMeant) {}

    /// Sets the flag.
    void Add(const std::shared_ptr<BoundStatement>& statement);
    /// The greatest number that there may be.
    std::size_t MaxCount() const { return m_statements.size(); }
    /// Appends those in the scope to \a found, in the order in which they were added. One that lost the flag and got it
    /// again may be there twice.
    void Find(const QObject* scope, Statements* found) { Prune(scope, found); }

private:
    bool IsMeant(const BoundStatement& statement) const;
    void Prune(const QObject* scope, Statements* found);

    const Flag m_flag;
    const Predicate m_isMeant;
    std::vector<std::weak_ptr<BoundStatement>> m_statements;
};

#endif
