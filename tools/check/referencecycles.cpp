#include "check/referencecycles.h"

namespace {

const int MaxSteps = 20;

// In the place of a depth.
const int NotReached = -1;
const int Done = -2;

} // namespace

ReferenceCycles::ReferenceCycles(const FormModel& model, const QVector<QVector<ReadDeclaration>>& reads,
                                 FormFindings* findings)
    : m_model(model), m_reads(reads), m_findings(findings), m_depths(reads.size(), NotReached)
{
}

void ReferenceCycles::Run()
{
    for (int i = 0; i < m_depths.size(); ++i) {
        if (m_depths.at(i) == NotReached)
            FindFrom(i);
    }
}

/// Walks along the references, depth first; one that leads back onto the way closes a cycle.
void ReferenceCycles::FindFrom(int start)
{
    QVector<Step> way{{start, -1}};
    m_depths[start] = 0;
    while (!way.isEmpty()) {
        Step& step = way.last();
        const QVector<ReadDeclaration>& reads = m_reads.at(step.declaration);
        if (++step.read >= reads.size()) {
            m_depths[step.declaration] = Done;
            way.removeLast();
            continue;
        }
        const int next = reads.at(step.read).declaration;
        if (m_depths.at(next) >= 0)
            Report(way, m_depths.at(next));
        if (m_depths.at(next) != NotReached)
            continue;
        m_depths[next] = way.size();
        way.append({next, -1});
    }
}

/// Tells of the circle from the step \a first of the way to its end and back.
void ReferenceCycles::Report(const QVector<Step>& way, int first)
{
    QStringList path;
    for (int i = first; i < way.size() && path.size() < MaxSteps; ++i)
        path.append(m_model.Describe(m_model.Declarations().at(way.at(i).declaration)));
    if (way.size() - first > MaxSteps)
        path.append("...");
    path.append(path.first());
    const Step& step = way.at(first);
    const Reference& reference = *m_reads.at(step.declaration).at(step.read).reference;
    m_findings->Report(Check::ReferenceCycle, "Statements read each other in a circle: " + path.join(" -> "),
                       m_model.Declarations().at(step.declaration), reference.namePlace);
}
