#include "DeclarationForms/statementlist.h"

#include <utility>

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formstate.h"

void StatementList::Add(const std::shared_ptr<BoundStatement>& statement)
{
    if ((*statement).*m_flag)
        return;
    // Where memory would be taken, that of others is let go first.
    if (m_statements.size() == m_statements.capacity()) {
        Prune(nullptr, nullptr);
        m_statements.reserve(2 * (m_statements.size() + 1));
    }
    m_statements.push_back(statement);
    (*statement).*m_flag = true;
}

bool StatementList::IsMeant(const BoundStatement& statement) const
{
    return statement.property && statement.*m_flag && (!m_isMeant || m_isMeant(statement));
}

/// Takes out those that are not meant any more, and gives those in the scope to \a found, if that is not null.
void StatementList::Prune(const QObject* scope, Statements* found)
{
    auto kept = m_statements.begin();
    for (std::weak_ptr<BoundStatement>& known : m_statements) {
        std::shared_ptr<BoundStatement> statement = known.lock();
        if (!statement)
            continue;
        if (!IsMeant(*statement)) {
            (*statement).*m_flag = false;
            continue;
        }
        kept->swap(known);
        ++kept;
        if (found && FormState::IsIn(statement->object, scope))
            found->push_back(std::move(statement));
    }
    m_statements.erase(kept, m_statements.end());
}
