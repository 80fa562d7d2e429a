#ifndef EVALUATION_H
#define EVALUATION_H

#include <QString>
#include <QVariant>

#include <vector>

#include "DeclarationHandler/evaluationlistener.h"

class BoundStatement;

/// The evaluation of a statement in this thread, while it lives: what Qt and the host print meanwhile belongs to
/// it, and it hears of what goes wrong.
class Evaluation : private EvaluationListener
{
public:
    explicit Evaluation(const BoundStatement& statement);
    ~Evaluation() override;

    /// The statement that is being evaluated; null for none.
    static const BoundStatement* Running();

    /// The value of a tree, with what goes wrong among the faults.
    QVariant Retrieve(const IExpression& tree);

    struct Fault
    {
        Problem problem;
        const IExpression* node;
        QVariant value;
    };
    /// The first of each kind.
    const std::vector<Fault>& Faults() const { return m_faults; }
    static QString ReasonOf(const Fault& fault);

private:
    Q_DISABLE_COPY(Evaluation)

    void OnEvaluationProblem(const IExpression& node, Problem problem, const QVariant& value) override;

    const BoundStatement* const m_outer;
    std::vector<Fault> m_faults;
};

#endif
