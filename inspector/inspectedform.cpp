#include "inspectedform.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace {

const double NanosecondsPerMillisecond = 1e6;

} // namespace

QString InMilliseconds(qint64 nanoseconds)
{
    return QString::number(double(nanoseconds) / NanosecondsPerMillisecond, 'f', 3);
}

InspectedForm::InspectedForm(FormBinding* binding) : m_binding(binding) {}

QString InspectedForm::Title() const
{
    const QObject* const form = Form();
    if (!form)
        return "no form";
    const QString name = form->objectName().isEmpty() ? "without a name" : form->objectName();
    return QString("%1 (%2)").arg(name, form->metaObject()->className());
}

QVector<int> InspectedForm::ReadersOf(int position) const
{
    const ViewedProperty& property = m_properties.at(position);
    return m_readers.value({property.object.data(), property.name});
}

QObject* InspectedForm::Form() const
{
    return m_binding ? m_binding->Form() : nullptr;
}

QString InspectedForm::DefaultPackage() const
{
    return m_binding ? m_binding->DefaultPackage() : QString();
}

IDataPeer* InspectedForm::Data() const
{
    return m_binding && !m_isStale ? m_binding->DataPeer() : nullptr;
}

bool InspectedForm::Has(const QObject* object) const
{
    return std::any_of(m_properties.begin(), m_properties.end(),
                       [object](const ViewedProperty& property) { return property.object == object; });
}

EvaluationFigures InspectedForm::FiguresOf(int position) const
{
    const auto found = m_counted.find(m_places.value(position, -1));
    if (found == m_counted.end())
        return EvaluationFigures();
    const Counted& counted = found->second;
    return {counted.evaluations, counted.lastSecond, counted.nanoseconds, Describe(counted.cause)};
}

QVector<VariableIdentifier> InspectedForm::Variables() const
{
    QVector<VariableIdentifier> variables;
    for (const BoundProperty& bound : m_bound)
        variables += bound.variables;
    std::sort(variables.begin(), variables.end());
    variables.erase(std::unique(variables.begin(), variables.end()), variables.end());
    return variables;
}

void InspectedForm::NoteBound()
{
    if (!std::exchange(m_isStale, true))
        Q_EMIT BoundChanged();
}

void InspectedForm::NoteMarked(int place, const FormCause& cause)
{
    Cause& pending = m_counted[place].pending;
    pending = {cause.kind, cause.variable, cause.object, cause.name};
    if (m_firstMark.isEmpty())
        m_firstMark = Describe(pending);
}

void InspectedForm::NoteEvaluated(const FormEvaluation& evaluation)
{
    Counted& counted = m_counted[evaluation.place];
    if (counted.object != evaluation.object)
        counted.object = evaluation.object;
    counted.property = evaluation.property;
    m_hasNewPlaces = m_hasNewPlaces || counted.evaluations == 0;
    ++counted.evaluations;
    ++counted.thisSecond;
    counted.nanoseconds += evaluation.nanoseconds;
    if (counted.fresh++ == 0)
        m_changed.append(evaluation.place);
    counted.cause = counted.pending;
    if (m_firstEvaluation.isEmpty())
        m_firstEvaluation = Describe(counted.cause);
}

void InspectedForm::NoteDelivered(int evaluations, qint64 nanoseconds)
{
    // What a delivery marks for the next one was marked before that begins.
    const QString evaluated = std::exchange(m_firstEvaluation, QString());
    const QString marked = std::exchange(m_firstMark, QString());
    m_deliveries.push_back(
        {QDateTime::currentDateTime(), evaluations, nanoseconds, marked.isEmpty() ? evaluated : marked});
    if (m_deliveries.size() > MaxDeliveries)
        m_deliveries.pop_front();
    ++m_deliveryCount;
}

void InspectedForm::NoteGone()
{
    Q_EMIT AboutToBeReplaced();
    m_binding = nullptr;
    m_properties.clear();
    m_bound.clear();
    m_readers.clear();
    m_places.clear();
    m_rows.clear();
    m_counted.clear();
    m_changed.clear();
    Q_EMIT Replaced();
}

void InspectedForm::Refresh()
{
    if (!m_binding)
        return;
    if (std::exchange(m_isStale, false))
        Rebuild();
    if (std::exchange(m_hasNewPlaces, false))
        MatchPlaces();
    const QVector<int> changed = std::exchange(m_changed, {});
    for (const int place : changed) {
        const auto found = m_counted.find(place);
        const int row = m_rows.value(place, -1);
        if (found == m_counted.end() || row < 0)
            continue;
        m_properties[row].evaluations += std::exchange(found->second.fresh, 0);
        Q_EMIT PropertyChanged(row);
    }
}

void InspectedForm::EndSecond()
{
    Refresh();
    for (auto& entry : m_counted) {
        const int before = std::exchange(entry.second.lastSecond, std::exchange(entry.second.thisSecond, 0));
        const int row = m_rows.value(entry.first, -1);
        if (before != entry.second.lastSecond && row >= 0)
            Q_EMIT PropertyChanged(row);
    }
    if (m_binding)
        TakeState();
}

QString InspectedForm::Describe(const Cause& cause)
{
    switch (cause.kind) {
    case FormCause::Variable:
        return QString("variable %1:%2").arg(cause.variable.GetPackage(), cause.variable.GetName());
    case FormCause::Property:
        return QString("property %1 of %2")
            .arg(cause.name, cause.object ? cause.object->objectName() : "a deleted object");
    case FormCause::Call:
        break;
    }
    return cause.name;
}

void InspectedForm::Rebuild()
{
    const QVector<BoundProperty> bound = m_binding->BoundProperties();
    // Reading them runs code of the host.
    if (!m_binding)
        return;
    Q_EMIT AboutToBeReplaced();
    m_bound = bound;
    m_properties.clear();
    for (const BoundProperty& property : bound) {
        m_properties.append({property.object, property.property.mid(1), property.statement,
                             WidgetPath(property.object, Form()), property.writable, property.evaluations, QString()});
        m_properties.last().edited = property.edited;
    }
    AppendUnbound();
    ListReaders();
    ForgetFresh();
    MatchPlaces();
    Q_EMIT Replaced();
    // Whoever shows them runs code of the host, too.
    if (m_binding)
        TakeProblems();
}

/// What is most wrong is not bound at all.
void InspectedForm::AppendUnbound()
{
    const QVector<FormProblem> unbound = UnboundProblems(m_binding->Problems());
    for (const FormProblem& problem : unbound) {
        ViewedProperty property{problem.object,
                                problem.property.mid(1),
                                problem.statement,
                                WidgetPath(problem.object, Form()),
                                problem.property.startsWith('_'),
                                0,
                                QString()};
        property.problem = problem.message;
        property.severity = problem.severity;
        m_properties.append(property);
    }
}

QVector<FormProblem> InspectedForm::UnboundProblems(const QVector<FormProblem>& standing) const
{
    QSet<Key> bound;
    for (const BoundProperty& property : m_bound)
        bound.insert({property.object.data(), property.property});
    QVector<FormProblem> problems;
    for (const FormProblem& problem : standing) {
        if (problem.object && !bound.contains({problem.object.data(), problem.property}))
            problems.append(problem);
    }
    return problems;
}

void InspectedForm::ListReaders()
{
    m_readers.clear();
    for (int row = 0; row < m_bound.size(); ++row) {
        for (const auto& read : m_bound.at(row).properties)
            m_readers[{read.first.data(), read.second}].append(row);
    }
}

/// The binding has told of all evaluations until now.
void InspectedForm::ForgetFresh()
{
    const QVector<int> changed = std::exchange(m_changed, {});
    for (const int place : changed) {
        const auto found = m_counted.find(place);
        if (found != m_counted.end())
            found->second.fresh = 0;
    }
}

/// Gives the rows what was counted for them, and forgets what has been unbound.
void InspectedForm::MatchPlaces()
{
    QHash<Key, int> rows;
    for (int row = 0; row < m_bound.size(); ++row)
        rows.insert({m_bound.at(row).object.data(), m_bound.at(row).property}, row);
    m_places.fill(-1, m_bound.size());
    m_rows.clear();
    for (auto entry = m_counted.begin(); entry != m_counted.end();) {
        Counted& counted = entry->second;
        const int row = counted.object ? rows.value({counted.object.data(), counted.property}, -1) : -1;
        // Those without an evaluation wait for it, or were unbound before it came.
        const bool isExpected = counted.evaluations == 0 && int(m_counted.size()) <= 2 * (m_bound.size() + 1);
        if (row < 0 && !isExpected) {
            entry = m_counted.erase(entry);
            continue;
        }
        if (row >= 0) {
            m_places[row] = entry->first;
            m_rows.insert(entry->first, row);
        }
        ++entry;
    }
}

void InspectedForm::TakeState()
{
    const QVector<BoundProperty> bound = m_binding->BoundProperties();
    // It may have changed meanwhile, when it follows with the next refresh.
    if (!m_binding || m_isStale || bound.size() != m_bound.size())
        return;
    m_bound = bound;
    for (int row = 0; row < bound.size(); ++row) {
        ViewedProperty& property = m_properties[row];
        property.evaluations = bound.at(row).evaluations;
        if (std::exchange(property.edited, bound.at(row).edited) != property.edited)
            Q_EMIT PropertyChanged(row);
    }
    ForgetFresh();
    TakeProblems();
}

void InspectedForm::TakeProblems()
{
    const QVector<FormProblem> standing = m_binding->Problems();
    if (!m_binding)
        return;
    if (UnboundProblems(standing).size() != m_properties.size() - m_bound.size())
        m_isStale = true;
    QHash<Key, QVector<FormProblem>> problems;
    for (const FormProblem& problem : standing)
        problems[{problem.object.data(), problem.property}].append(problem);
    for (int row = 0; row < m_bound.size() && row < m_properties.size(); ++row) {
        ViewedProperty& property = m_properties[row];
        const QVector<FormProblem> all = problems.value({m_bound.at(row).object.data(), m_bound.at(row).property});
        const FormProblem problem = all.value(0);
        property.findings.clear();
        for (int other = 1; other < all.size(); ++other)
            property.findings.append({all.at(other).severity, all.at(other).message});
        if (property.problem == problem.message)
            continue;
        // What was wrong last stays to be seen.
        if (problem.message.isEmpty())
            property.diagnostic = "no more: " + property.problem;
        property.problem = problem.message;
        property.severity = problem.severity;
        Q_EMIT PropertyChanged(row);
    }
}
