#include "DeclarationForms/formsaver.h"

#include <algorithm>
#include <utility>

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/evaluation.h"
#include "DeclarationForms/formdelivery.h"
#include "DeclarationForms/formedits.h"
#include "DeclarationForms/formreferences.h"
#include "DeclarationForms/formstate.h"
#include "DeclarationForms/formvalues.h"
#include "DeclarationForms/watchedproperty.h"
#include "DeclarationForms/watchedvariable.h"

namespace {

bool ComesBefore(const std::shared_ptr<BoundStatement>& left, const std::shared_ptr<BoundStatement>& right)
{
    return left->place < right->place;
}

/// Whether numbers are shown through the format, which may be wrong or may not fit.
bool IsFormatted(const BoundStatement& statement, const QVariant& present)
{
    if (!statement.format)
        return false;
    const QVariant number = present.isValid() ? present : QVariant(0);
    QString unused;
    return NumberFormat::IsNumber(number) && statement.format->Apply(number, statement.Locale(), &unused, &unused);
}

/// Whether an evaluation would give the value that is known: nothing but variables is read, and none has changed.
bool IsCurrent(const BoundStatement& statement)
{
    const auto& compiled = statement.compiled;
    return !statement.isDirty && compiled.properties.begin() == compiled.properties.end()
        && std::none_of(compiled.variables.begin(), compiled.variables.end(),
                        [](const FormVariable* reference) { return reference->Variable()->MayHaveChanged(); });
}

} // namespace

FormSaveResult FormSaver::Save(Statements waiting, const std::function<bool(const QObject*)>& isMeant)
{
    const FormState::Guard guard(&m_state);
    FormSaveResult result;
    for (std::size_t next = 0; next < waiting.size() && !m_state.isClosed; ++next) {
        const std::shared_ptr<BoundStatement> statement = waiting[next];
        Statements written;
        if (SaveOne(statement, &result, &written))
            ++result.saved;
        for (const std::shared_ptr<BoundStatement>& edited : written) {
            TellReaders(*edited);
            if (!edited->property || edited->place <= statement->place || !isMeant(edited->object))
                continue;
            const auto place = std::lower_bound(waiting.begin() + next + 1, waiting.end(), edited, ComesBefore);
            if (place == waiting.end() || *place != edited)
                waiting.insert(place, edited);
        }
    }
    return result;
}

bool FormSaver::SaveOne(const std::shared_ptr<BoundStatement>& statement, FormSaveResult* result, Statements* written)
{
    QVariant held;
    if (!m_edits.Confirm(statement, &held)) {
        statement->isTouched = false;
        return false;
    }
    Refusal refusal;
    if (!statement->property)
        return false;
    const uint changes = statement->changes + statement->writes;
    if (!Store(statement, held, &refusal, written)) {
        Refuse(statement, held, refusal, result);
        return false;
    }
    if (!statement->property)
        return true;
    // What happened meanwhile to the property may be an edit again.
    statement->shown = std::move(held);
    m_edits.End(statement);
    if (!statement->property->hasNotifier || statement->changes + statement->writes != changes)
        m_edits.Refresh(statement);
    TellReaders(*statement);
    m_delivery.Mark(statement);
    return true;
}

/// The property holds another value, and may have no signal that tells.
void FormSaver::TellReaders(const BoundStatement& statement)
{
    if (statement.property && !statement.property->hasNotifier)
        m_delivery.MarkReaders(*statement.property, m_delivery.Writer());
}

bool FormSaver::Store(const std::shared_ptr<BoundStatement>& statement, const QVariant& held, Refusal* refusal,
                      Statements* written)
{
    Evaluation evaluation(*statement);
    IExpression* const tree = statement->compiled.tree.get();
    QVariant converted;
    const QVariant* const value = Convert(*statement, &evaluation, held, &converted, refusal);
    if (!value)
        return false;
    if (!statement->property || statement->compiled.tree.get() != tree)
        return false;
    StoreReport report;
    const bool isStored = tree->Store(*value);
    written->insert(written->end(), report.written.begin(), report.written.end());
    if (isStored)
        return true;
    const bool isPassedOn = !report.refusal.isEmpty();
    refusal->cause = isPassedOn ? Refusal::NotAccepted : Refusal::NotPassedOn;
    refusal->reason = isPassedOn ? report.refusal : QStringLiteral("the statement passes no value on");
    return false;
}

/// What is to be saved, in the type that the statement has now: \a held itself or \a converted. Null where that cannot
/// be done.
const QVariant* FormSaver::Convert(const BoundStatement& statement, Evaluation* evaluation, const QVariant& held,
                                   QVariant* converted, Refusal* refusal)
{
    const bool isCurrent = IsCurrent(statement);
    const QVariant evaluated = isCurrent ? QVariant() : evaluation->Retrieve(*statement.compiled.tree);
    if (!statement.property)
        return nullptr;
    const QVariant& present = isCurrent ? statement.value : evaluated;
    const bool isFormatted = IsFormatted(statement, present);
    QVariant number;
    QString problem;
    if (isFormatted && !statement.format->Read(held.toString(), statement.Locale(), &number, &problem)) {
        *refusal = {Refusal::NoNumber, problem};
        return nullptr;
    }
    if (!isFormatted && (!present.isValid() || held.userType() == present.userType()))
        return &held;
    const QVariant& entered = isFormatted ? number : held;
    if (!present.isValid())
        *converted = entered;
    if (!present.isValid() || FormValues::ConvertWithoutLoss(entered, present.userType(), converted))
        return converted;
    *refusal = {Refusal::NoConversion,
                QStringLiteral("%1 cannot be saved as %2")
                    .arg(FormValues::Describe(entered), FormValues::DescribeType(present))};
    return nullptr;
}

void FormSaver::Refuse(const std::shared_ptr<BoundStatement>& statement, const QVariant& held, const Refusal& refusal,
                       FormSaveResult* result)
{
    if (!statement->property || refusal.reason.isEmpty())
        return;
    statement->refused = std::make_unique<QVariant>(held);
    for (const Refusal::Cause other :
         {Refusal::NoNumber, Refusal::NoConversion, Refusal::NotPassedOn, Refusal::NotAccepted}) {
        if (other != refusal.cause)
            ProblemBook::Remove(statement.get(), FormProblem::NotStored, other);
    }
    result->refused.append(m_state.problems.Add(statement, FormProblem::NotStored, refusal.cause, refusal.reason));
}
