#include "DeclarationForms/formedits.h"

#include <algorithm>

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formvalues.h"
#include "DeclarationForms/problembook.h"
#include "DeclarationForms/watchedproperty.h"

namespace {

void ForgetRefusal(BoundStatement* statement)
{
    statement->refused.reset();
    ProblemBook::Remove(statement, FormProblem::NotStored);
}

} // namespace

FormEdits::FormEdits() : m_touched(&BoundStatement::isTouched), m_unwatched(&BoundStatement::isUnwatched) {}

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

FormEdits::Statements FormEdits::Candidates(const QObject* scope)
{
    Statements found;
    found.reserve(scope ? 0 : m_touched.MaxCount() + m_unwatched.MaxCount());
    m_touched.Find(scope, &found);
    m_unwatched.Find(scope, &found);
    const auto comesBefore = [](const auto& left, const auto& right) { return left->place < right->place; };
    if (!std::is_sorted(found.begin(), found.end(), comesBefore)) // As a rule it is.
        std::sort(found.begin(), found.end(), comesBefore);
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}
