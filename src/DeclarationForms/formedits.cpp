#include "DeclarationForms/formedits.h"

#include <algorithm>

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formstate.h"
#include "DeclarationForms/formvalues.h"
#include "DeclarationForms/watchedproperty.h"

namespace {

/// Takes out those that are not meant any more, and gives those in the scope to \a found, if that is not null.
void Prune(std::vector<std::weak_ptr<BoundStatement>>* statements, bool (*isMeant)(const BoundStatement&),
           const QObject* scope = nullptr, FormEdits::Statements* found = nullptr)
{
    auto kept = statements->begin();
    for (std::weak_ptr<BoundStatement>& known : *statements) {
        std::shared_ptr<BoundStatement> statement = known.lock();
        if (!statement || !statement->property || !isMeant(*statement))
            continue;
        kept->swap(known);
        ++kept;
        if (found && FormState::IsIn(statement->object, scope))
            found->push_back(std::move(statement));
    }
    statements->erase(kept, statements->end());
}

bool IsTouched(const BoundStatement& statement)
{
    return statement.isTouched;
}

bool IsBound(const BoundStatement& statement)
{
    return statement.property;
}

/// Where memory would be taken, that of others is let go first.
void Append(std::vector<std::weak_ptr<BoundStatement>>* statements, const std::shared_ptr<BoundStatement>& statement,
            bool (*isMeant)(const BoundStatement&))
{
    if (statements->size() == statements->capacity()) {
        Prune(statements, isMeant);
        statements->reserve(2 * (statements->size() + 1));
    }
    statements->push_back(statement);
}

void ForgetRefusal(BoundStatement* statement)
{
    statement->refused.reset();
    ProblemBook::Remove(statement, FormProblem::NotStored);
}

} // namespace

bool FormEdits::IsEdit(const BoundStatement& statement, const QVariant& held, const QVariant& target)
{
    return statement.isWritable && statement.isShown && !FormValues::AreEqual(held, statement.shown)
        && !statement.Holds(held, target);
}

bool FormEdits::Refresh(const std::shared_ptr<BoundStatement>& statement, QVariant* value)
{
    QVariant unused;
    // What the data hold is not known before the evaluation that a save has asked for.
    return Look(statement, !statement->isDirty, value ? value : &unused);
}

bool FormEdits::Confirm(const std::shared_ptr<BoundStatement>& statement, QVariant* value)
{
    const bool isTold = statement->isEdited && statement->property && statement->property->hasNotifier;
    return Look(statement, !statement->isDirty && !isTold, value);
}

/// Whether it is edited: it holds something else than what was shown, and than the data where those are compared.
bool FormEdits::Look(const std::shared_ptr<BoundStatement>& statement, bool isCompared, QVariant* held)
{
    if (!statement->property || !statement->isWritable || !statement->isShown)
        return false;
    *held = statement->Read();
    if (!statement->property)
        return false;
    if (statement->refused && !FormValues::AreEqual(*held, *statement->refused))
        ForgetRefusal(statement.get());
    bool isEdited = !FormValues::AreEqual(*held, statement->shown);
    if (isEdited && isCompared && statement->HoldsTarget(*held)) {
        isEdited = false;
        statement->shown = *held;
    }
    if (isEdited)
        Set(statement, true);
    else
        End(statement);
    return isEdited;
}

void FormEdits::End(const std::shared_ptr<BoundStatement>& statement)
{
    Set(statement, false);
    if (statement->refused)
        ForgetRefusal(statement.get());
}

void FormEdits::Set(const std::shared_ptr<BoundStatement>& statement, bool isEdited)
{
    // It may have been unbound while its property was looked at.
    if (statement->isEdited == isEdited || (isEdited && !statement->property))
        return;
    statement->isEdited = isEdited;
    m_count += isEdited ? 1 : -1;
    if (isEdited)
        Touch(statement);
}

void FormEdits::AddUnwatched(const std::shared_ptr<BoundStatement>& statement)
{
    if (statement->isUnwatched)
        return;
    statement->isUnwatched = true;
    Append(&m_unwatched, statement, IsBound);
}

void FormEdits::Touch(const std::shared_ptr<BoundStatement>& statement)
{
    if (statement->isTouched)
        return;
    Append(&m_touched, statement, IsTouched);
    statement->isTouched = true;
}

FormEdits::Statements FormEdits::Candidates(const QObject* scope)
{
    Statements found;
    found.reserve(scope ? 0 : m_touched.size() + m_unwatched.size());
    Prune(&m_touched, IsTouched, scope, &found);
    Prune(&m_unwatched, IsBound, scope, &found);
    const auto comesBefore = [](const auto& left, const auto& right) { return left->place < right->place; };
    if (!std::is_sorted(found.begin(), found.end(), comesBefore)) // As a rule it is.
        std::sort(found.begin(), found.end(), comesBefore);
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}
