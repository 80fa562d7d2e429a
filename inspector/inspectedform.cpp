#include "inspectedform.h"

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
    return m_binding ? m_binding->DataPeer() : nullptr;
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

void InspectedForm::NoteMarked(int place, const FormCause& cause)
{
    m_counted[place].cause = {cause.kind, cause.variable, cause.object, cause.name};
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
    if (m_firstPlace < 0)
        m_firstPlace = evaluation.place;
}

void InspectedForm::NoteDelivered(int evaluations, qint64 nanoseconds)
{
    const auto first = m_counted.find(std::exchange(m_firstPlace, -1));
    const QString cause = first == m_counted.end() ? QString() : Describe(first->second.cause);
    m_deliveries.push_back({QDateTime::currentDateTime(), evaluations, nanoseconds, cause});
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
    for (const int place : std::exchange(m_changed, {})) {
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
    ListReaders();
    ForgetFresh();
    MatchPlaces();
    Q_EMIT Replaced();
    TakeProblems();
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
    for (const int place : std::exchange(m_changed, {})) {
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
        if (row < 0 && counted.evaluations > 0) {
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
    if (!m_binding || m_isStale || bound.size() != m_properties.size())
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
    QHash<Key, FormProblem> problems;
    const QVector<FormProblem> standing = m_binding->Problems();
    if (!m_binding)
        return;
    for (const FormProblem& problem : standing) {
        const Key key(problem.object.data(), problem.property);
        if (!problems.contains(key))
            problems.insert(key, problem);
    }
    for (int row = 0; row < m_properties.size(); ++row) {
        ViewedProperty& property = m_properties[row];
        const FormProblem problem = problems.value({m_bound.at(row).object.data(), m_bound.at(row).property});
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
