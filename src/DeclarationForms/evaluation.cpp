#include "DeclarationForms/evaluation.h"

#include "DeclarationForms/formvalues.h"
#include "DeclarationHandler/iexpression.h"

namespace {

thread_local const BoundStatement* running = nullptr;

} // namespace

Evaluation::Evaluation(const BoundStatement& statement) : m_outer(running)
{
    running = &statement;
}

Evaluation::~Evaluation()
{
    running = m_outer;
}

const BoundStatement* Evaluation::Running()
{
    return running;
}

QVariant Evaluation::Retrieve(const IExpression& tree)
{
    const Use use(this);
    return tree.Retrieve();
}

QString Evaluation::ReasonOf(const Fault& fault)
{
    const QString value = FormValues::Describe(fault.value);
    switch (fault.problem) {
    case NoCollection:
        return QStringLiteral("%1 has an index behind it and is neither list nor map").arg(value);
    case IndexNotInteger:
        return QStringLiteral("the index %1 is no integer").arg(value);
    case IndexOutOfBounds:
        return QStringLiteral("the list has no element at the index %1").arg(value);
    case InvalidKey:
        return QStringLiteral("the key %1 is blank").arg(value);
    }
    return QString();
}

void Evaluation::OnEvaluationProblem(const IExpression& node, Problem problem, const QVariant& value)
{
    for (const Fault& fault : m_faults) {
        if (fault.problem == problem)
            return;
    }
    m_faults.push_back({problem, &node, value});
}
