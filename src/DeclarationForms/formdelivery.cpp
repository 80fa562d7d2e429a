#include "DeclarationForms/formdelivery.h"

#include <QElapsedTimer>
#include <QMetaType>

#include <algorithm>
#include <utility>

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/evaluation.h"
#include "DeclarationForms/formedits.h"
#include "DeclarationForms/formlog.h"
#include "DeclarationForms/formobserver.h"
#include "DeclarationForms/formreferences.h"
#include "DeclarationForms/formstate.h"
#include "DeclarationForms/formvalues.h"
#include "DeclarationForms/propertyorder.h"
#include "DeclarationForms/watchedproperty.h"
#include "DeclarationForms/watchedvariable.h"

namespace {

/// Behind those of an evaluation.
const int FormatCause = EvaluationListener::InvalidKey + 1;

bool ComesLater(const std::shared_ptr<BoundStatement>& left, const std::shared_ptr<BoundStatement>& right)
{
    return left->rank > right->rank;
}

bool ComesBefore(const std::shared_ptr<BoundStatement>& left, const std::shared_ptr<BoundStatement>& right)
{
    return left->rank < right->rank;
}

/// Puts a value into a variable for as long as it lives.
template<typename Value>
class Temporarily
{
public:
    Temporarily(Value* variable, Value value) : m_variable(variable), m_outer(*variable) { *variable = value; }
    ~Temporarily() { *m_variable = m_outer; }

private:
    Q_DISABLE_COPY(Temporarily)

    Value* const m_variable;
    const Value m_outer;
};

/// Asks for memory before it is needed.
inline void Fetch(const void* memory)
{
#if defined(__GNUC__)
    __builtin_prefetch(memory);
#else
    Q_UNUSED(memory);
#endif
}

const std::size_t LineLength = 64; ///< In bytes, as that of most processors.
/// In lines, of what an evaluation looks at: all but the last members.
const std::size_t StatementLength = (sizeof(BoundStatement) * 3 / 4 + LineLength - 1) / LineLength;
const std::size_t TreeLength = 6; ///< In lines, of most.

// Distances, in statements.
const std::size_t FarAhead = 8;
const std::size_t Ahead = 5;
const std::size_t NearAhead = 2;

void FetchLines(quintptr address, std::size_t count)
{
    for (std::size_t line = 0; line < count; ++line)
        Fetch(reinterpret_cast<const void*>(address + line * LineLength));
}

quintptr AddressOf(const void* memory)
{
    return reinterpret_cast<quintptr>(memory);
}

/// What is evaluated soon, the last one first: a large form does not fit into the caches of a processor.
void FetchAhead(const std::vector<std::shared_ptr<BoundStatement>>& statements)
{
    if (statements.size() < FarAhead)
        return;
    FetchLines(AddressOf((statements.end() - FarAhead)->get()), StatementLength);
    const BoundStatement& sooner = **(statements.end() - Ahead);
    Fetch(sooner.object);
    // The root is made last, behind the nodes below it.
    FetchLines(AddressOf(sooner.compiled.tree.get()) - (TreeLength - 1) * LineLength, TreeLength);
}

/// What is marked soon, in the order of the readers.
void FetchReaders(const std::vector<FormVariable*>& readers, std::size_t current)
{
    if (current + FarAhead >= readers.size())
        return;
    Fetch(readers[current + FarAhead]);
    Fetch(readers[current + Ahead]->Statement());
    Fetch(readers[current + NearAhead]->Statement()->property);
}

/// For as many more, and often called.
void Reserve(std::vector<std::shared_ptr<BoundStatement>>* statements, std::size_t count)
{
    const std::size_t wanted = statements->size() + count;
    if (wanted > statements->capacity())
        statements->reserve(std::max(wanted, 2 * statements->capacity()));
}

TextPlace PlaceOf(const BoundStatement& statement, const IExpression* node)
{
    for (const auto& subscript : statement.compiled.subscripts) {
        if (subscript.first == node)
            return subscript.second;
    }
    return ProblemBook::NoPlace;
}

TextPlace PlaceOfReference(const BoundStatement& reader, const BoundStatement& writer)
{
    for (const FormProperty* const reference : reader.compiled.properties) {
        if (reference->Property() == writer.property)
            return reference->Place();
    }
    return ProblemBook::NoPlace;
}

/// What the statement reads that is not bound any more; null for nothing.
const FormProperty* AbsentReference(const BoundStatement& statement)
{
    for (const FormProperty* const reference : statement.compiled.properties) {
        if (reference->Property() && reference->Property()->IsAbsent())
            return reference;
    }
    return nullptr;
}

bool IsOfUnknownKind(const QVariant& value)
{
    return value.userType() >= QMetaType::User && !value.canConvert<QString>();
}

} // namespace

void FormDelivery::Mark(const Statement& statement)
{
    if (statement->isDirty || !statement->property)
        return;
    statement->isDirty = true;
    if (FormObserver* const observer = FormObserver::Installed())
        TellMarked(*statement, observer);
    if (m_number != 0 && statement->delivery != m_number) {
        m_queue.push_back(statement);
        std::push_heap(m_queue.begin(), m_queue.end(), ComesLater);
        return;
    }
    // What waits already has asked for a delivery.
    if (m_waiting.empty() && !m_isTaking)
        m_state.gatherer.Schedule();
    m_waiting.push_back(statement);
}

void FormDelivery::TellMarked(const BoundStatement& statement, FormObserver* observer) const
{
    // Its observer has been told that the binding is gone.
    if (m_state.isClosed)
        return;
    FormCause cause;
    if (m_changedProperty) {
        cause.kind = FormCause::Property;
        cause.object = m_changedProperty->owner->object;
        cause.name = *m_changedProperty->name;
    } else if (m_changedVariable) {
        cause.kind = FormCause::Variable;
        cause.variable = m_changedVariable->Identifier();
    } else {
        cause.name = QLatin1String(m_state.call);
    }
    observer->OnMarked(m_state.binding, statement.place, cause);
}

void FormDelivery::MarkReaders(const WatchedProperty& property, const BoundStatement* writer)
{
    const Temporarily<const WatchedProperty*> changed(&m_changedProperty, &property);
    for (std::size_t i = 0; i < property.readers.size(); ++i) {
        BoundStatement* const statement = property.readers[i]->Statement();
        if (statement == writer)
            continue;
        const bool isRoundTrip = writer && writer->circle != 0 && statement->circle == writer->circle;
        if (!isRoundTrip || statement->delivery != m_number)
            Mark(statement->property->statement);
    }
}

void FormDelivery::MarkVariables()
{
    const Temporarily<bool> taking(&m_isTaking, true);
    const Temporarily<const WatchedVariable*> changed(&m_changedVariable, nullptr);
    for (const std::shared_ptr<WatchedVariable>& variable : m_state.gatherer.Take()) {
        m_changedVariable = variable.get();
        const auto& readers = variable->readers;
        Reserve(&m_waiting, readers.size());
        for (std::size_t i = 0; i < readers.size(); ++i) {
            FetchReaders(readers, i);
            Mark(readers[i]->Statement()->property->statement);
        }
    }
}

void FormDelivery::Run(bool withVariables)
{
    const FormState::Guard guard(&m_state);
    UpdateOrder();
    if (withVariables)
        MarkVariables();
    const WatchedVariables::Reader reader(&m_state.variables);
    const bool isInner = m_number != 0;
    if (isInner || !FormObserver::Installed()) {
        EvaluateMarked();
        return;
    }
    QElapsedTimer timer;
    timer.start();
    const quint64 before = m_evaluations;
    EvaluateMarked();
    FormObserver* const observer = FormObserver::Installed();
    if (observer && !m_state.isClosed && m_evaluations != before)
        observer->OnDelivered(m_state.binding, static_cast<int>(m_evaluations - before), timer.nsecsElapsed());
}

void FormDelivery::EvaluateMarked()
{
    const Temporarily<quint64> number(&m_number, ++m_lastNumber);
    Statements outer;
    outer.swap(m_sorted);
    m_sorted.swap(m_waiting);
    m_sorted.insert(m_sorted.end(), outer.begin(), outer.end());
    if (std::is_sorted(m_sorted.begin(), m_sorted.end(), ComesBefore)) // As a rule.
        std::reverse(m_sorted.begin(), m_sorted.end());
    else
        std::sort(m_sorted.begin(), m_sorted.end(), ComesLater);
    while (const Statement next = TakeNext()) {
        if (FormObserver::Installed())
            EvaluateObserved(next);
        else
            Evaluate(next);
    }
}

FormDelivery::Statement FormDelivery::TakeNext()
{
    while (!(m_queue.empty() && m_sorted.empty()) && !m_state.isClosed) {
        const bool isAdded = m_sorted.empty() || (!m_queue.empty() && ComesLater(m_sorted.back(), m_queue.front()));
        if (isAdded)
            std::pop_heap(m_queue.begin(), m_queue.end(), ComesLater);
        Statements& source = isAdded ? m_queue : m_sorted;
        const Statement next = std::move(source.back());
        source.pop_back();
        FetchAhead(m_sorted);
        if (next->property && next->isDirty)
            return next;
    }
    return nullptr;
}

void FormDelivery::UpdateOrder()
{
    if (m_state.order.IsValid())
        return;
    const bool hadCircles = m_state.order.HasCircles();
    m_state.order.Compute(m_state.statements);
    std::make_heap(m_queue.begin(), m_queue.end(), ComesLater);
    std::sort(m_sorted.begin(), m_sorted.end(), ComesLater);
    if (hadCircles || m_state.order.HasCircles())
        TellCircles();
}

void FormDelivery::TellCircles()
{
    for (const Statement& statement : m_state.statements) {
        if (!statement->property)
            continue;
        if (statement->circle == 0) {
            ProblemBook::Remove(statement.get(), FormProblem::Cycle);
            continue;
        }
        QStringList names;
        const std::vector<const BoundStatement*> way = ReadingOrder::WayRound(*statement);
        for (const BoundStatement* const member : way)
            names.append(QStringLiteral("%1 of %2").arg(*member->marked, DescribeObject(member->object)));
        m_state.problems.Add(
            statement, FormProblem::Cycle, 0,
            QStringLiteral("the statement reads in a circle, %1").arg(names.join(QStringLiteral(" reads "))),
            PlaceOfReference(*statement, *way.at(1)));
    }
}

void FormDelivery::EvaluateObserved(const Statement& statement)
{
    ++m_evaluations;
    QElapsedTimer timer;
    timer.start();
    Evaluate(statement);
    FormObserver* const observer = FormObserver::Installed();
    if (observer && !m_state.isClosed)
        observer->OnEvaluated(m_state.binding,
                              {statement->place, statement->object, *statement->marked, timer.nsecsElapsed()});
}

void FormDelivery::Evaluate(const Statement& statement)
{
    statement->isDirty = false;
    statement->delivery = m_number;
    ++statement->evaluations;
    Evaluation evaluation(*statement);
    const IExpression* const tree = statement->compiled.tree.get();
    QVariant value = evaluation.Retrieve(*tree);
    if (!statement->property || statement->compiled.tree.get() != tree)
        return;
    // To swap variants is cheaper than to move them, here and below.
    statement->value.swap(value);
    const QVariant& previous = value;
    TellEvaluation(statement, evaluation);
    TellNoValue(statement);
    Show(statement, previous);
}

void FormDelivery::TellEvaluation(const Statement& statement, const Evaluation& evaluation)
{
    for (int cause = 0; cause < FormatCause && !statement->problems.empty(); ++cause) {
        const auto& faults = evaluation.Faults();
        const bool stands = std::any_of(faults.begin(), faults.end(),
                                        [cause](const Evaluation::Fault& fault) { return fault.problem == cause; });
        if (!stands)
            ProblemBook::Remove(statement.get(), FormProblem::Evaluation, cause);
    }
    for (const Evaluation::Fault& fault : evaluation.Faults()) {
        m_state.problems.Add(statement, FormProblem::Evaluation, fault.problem, Evaluation::ReasonOf(fault),
                             PlaceOf(*statement, fault.node));
    }
}

void FormDelivery::TellNoValue(const Statement& statement)
{
    if (const FormProperty* const absent = AbsentReference(*statement)) {
        const QString reason = QStringLiteral("the statement reads %1 of %2, which is not bound any more");
        m_state.problems.Add(statement, FormProblem::NoValue, 0,
                             reason.arg(*absent->Property()->name, DescribeObject(absent->Property()->owner->object)),
                             absent->Place());
        return;
    }
    if (statement->value.isValid() && statement->problems.empty())
        return;
    const bool isExplained = ProblemBook::Has(*statement, FormProblem::UnknownObject)
        || ProblemBook::Has(*statement, FormProblem::Evaluation);
    if (statement->value.isValid() || isExplained)
        ProblemBook::Remove(statement.get(), FormProblem::NoValue);
    else
        m_state.problems.Add(statement, FormProblem::NoValue, 0, QStringLiteral("the statement has no value"));
}

/// Whether the property, which holds what was shown, is left so: most are, that a save or a change of something else
/// has evaluated.
bool FormDelivery::IsSettled(const BoundStatement& statement)
{
    return FormValues::AreEqual(statement.shown, statement.value) && !statement.isOverwritten
        && statement.problems.empty() && statement.IsPlain() && !statement.access->IsRewritten()
        && !statement.access->IsUnsettled(statement.object) && !HasCutSibling(statement);
}

void FormDelivery::Show(const Statement& statement, const QVariant& previous)
{
    const QVariant held = statement->Read();
    if (!statement->property)
        return;
    const bool isAsShown = statement->isShown && FormValues::AreEqual(held, statement->shown);
    if (isAsShown && IsSettled(*statement)) {
        m_edits.End(statement);
        statement->isReverting = false;
        statement->isCut = false;
        return;
    }
    BoundStatement::Faults faults;
    const QVariant target = statement->Target(&faults);
    if (faults.format.isEmpty())
        ProblemBook::Remove(statement.get(), FormProblem::Evaluation, FormatCause);
    else
        m_state.problems.Add(statement, FormProblem::Evaluation, FormatCause, faults.format);

    QVariant text;
    const QVariant& given = statement->access->AsHeld(statement->object, target, &text);
    const bool keepsEdit = m_state.editPolicy == FormBinding::KeepEdits && !statement->isReverting;
    if (keepsEdit && !isAsShown && FormEdits::IsEdit(*statement, held, given)) {
        m_edits.Set(statement, true);
        ProblemBook::Remove(statement.get(), FormProblem::NotTaken);
        return;
    }
    m_edits.End(statement);
    statement->isReverting = false;
    const bool isWanted
        = std::exchange(statement->isOverwritten, false) || ProblemBook::Has(*statement, FormProblem::NotTaken);
    const bool isAsBefore = !isWanted && isAsShown && statement->access->IsRewritten()
        && FormValues::AreEqual(previous, statement->value);
    if (isAsBefore)
        return;
    const bool wantsSetting = statement->value.isValid() && statement->access->IsUnsettled(statement->object);
    if (!wantsSetting && (statement->Holds(held, given) || (!target.isValid() && !faults.image.isEmpty()))) {
        statement->shown = held;
        statement->isShown = true;
        TellTaken(statement, target, true, faults.image);
        if (HasCutSibling(*statement))
            Settle(SiblingsOf(*statement), *statement, false);
        return;
    }
    Write(statement, held, target, given);
    if (statement->property && !faults.image.isEmpty())
        TellTaken(statement, target, true, faults.image);
}

/// \a given is what the property would hold of the target.
void FormDelivery::Write(const Statement& statement, const QVariant& held, const QVariant& target,
                         const QVariant& given)
{
    const Siblings siblings = SiblingsOf(*statement);
    const uint number = ++statement->writes;
    bool isTaken = WriteProperty(*statement, given);
    if (!statement->property || statement->writes != number)
        return;
    QVariant read = statement->Read();
    statement->shown.swap(read);
    statement->isShown = true;
    const bool hasChanged = !FormValues::AreEqual(held, statement->shown);
    if (hasChanged && statement->isRead)
        MarkReaders(*statement->property, statement.get());
    Settle(siblings, *statement, hasChanged);
    if (!statement->property || statement->writes != number)
        return;
    if (!statement->access->IsRewritten() && !IsOfUnknownKind(statement->shown))
        isTaken = statement->Holds(statement->shown, given);
    TellTaken(statement, target, isTaken || !statement->value.isValid(), QString());
}

bool FormDelivery::WriteProperty(const BoundStatement& statement, const QVariant& target)
{
    const Temporarily<const BoundStatement*> writer(&m_writer, &statement);
    return statement.access->Write(statement.object, target);
}

/// Where a bound has changed, or has not caught up.
void FormDelivery::WriteAgain(const Statement& statement)
{
    const QVariant held = statement->Read();
    const QVariant target = statement->Target();
    if (!statement->property || !target.isValid())
        return;
    if (!statement->Holds(held, target)) {
        QVariant text;
        Write(statement, held, target, statement->access->AsHeld(statement->object, target, &text));
        return;
    }
    statement->shown = held;
    TellTaken(statement, target, true, QString());
}

void FormDelivery::CheckTaken(const Statement& statement)
{
    if (!ProblemBook::Has(*statement, FormProblem::NotTaken))
        return;
    const QVariant held = statement->Read();
    const QVariant target = statement->Target();
    if (!statement->property || !target.isValid() || !statement->Holds(held, target))
        return;
    statement->shown = held;
    TellTaken(statement, target, true, QString());
}

void FormDelivery::TellTaken(const Statement& statement, const QVariant& target, bool isTaken, const QString& reason)
{
    statement->isCut = !isTaken && WaitsForBound(*statement);
    if (isTaken && reason.isEmpty()) {
        ProblemBook::Remove(statement.get(), FormProblem::NotTaken);
        return;
    }
    if (statement->isCut)
        return;
    const QString words = reason.isEmpty() ? FormValues::DescribeRefusal(target, statement->shown) : reason;
    m_state.problems.Add(statement, FormProblem::NotTaken, 0, words);
}

/// Whether something that bounds the property reads it, and will be evaluated for its change.
bool FormDelivery::WaitsForBound(const BoundStatement& statement) const
{
    const auto& properties = statement.property->owner->properties;
    return std::any_of(properties.begin(), properties.end(), [&statement](const WatchedProperty& sibling) {
        return sibling.statement && sibling.statement->isDirty && sibling.statement->Reads(statement.property)
            && PropertyOrder::Bounds(*sibling.name, statement.Name());
    });
}

FormDelivery::Siblings FormDelivery::SiblingsOf(const BoundStatement& statement) const
{
    Siblings siblings;
    if (statement.isAlone)
        return siblings;
    for (const WatchedProperty& property : statement.property->owner->properties) {
        const Statement& sibling = property.statement;
        if (sibling && sibling.get() != &statement && sibling->isShown)
            siblings.push_back({sibling, QVariant(), false});
    }
    for (Sibling& sibling : siblings) {
        if (!sibling.statement->property)
            continue;
        sibling.held = sibling.statement->Read();
        sibling.isEdited = FormEdits::IsEdit(*sibling.statement, sibling.held, sibling.statement->Target());
    }
    return siblings;
}

bool FormDelivery::HasCutSibling(const BoundStatement& statement)
{
    if (statement.isAlone)
        return false;
    const auto& properties = statement.property->owner->properties;
    return std::any_of(properties.begin(), properties.end(),
                       [](const WatchedProperty& sibling) { return sibling.statement && sibling.statement->isCut; });
}

void FormDelivery::Settle(const Siblings& siblings, const BoundStatement& written, bool hasChanged)
{
    for (const Sibling& sibling : siblings) {
        if (sibling.statement->property)
            SettleSibling(sibling, written, hasChanged);
    }
}

/// What a write did to another property of the object is no edit.
void FormDelivery::SettleSibling(const Sibling& sibling, const BoundStatement& written, bool hasChanged)
{
    const Statement& statement = sibling.statement;
    const bool isBounded = PropertyOrder::Bounds(written.Name(), statement->Name());
    if (sibling.isEdited) {
        if (isBounded && hasChanged && !statement->Holds(statement->Read(), sibling.held))
            WriteProperty(*statement, sibling.held);
        return;
    }
    if (isBounded && !statement->isDirty && (hasChanged || statement->isCut))
        WriteAgain(statement);
    else if (hasChanged && statement->isWritable)
        statement->shown = statement->Read();
}
