#include "DeclarationForms/problembook.h"

#include <algorithm>

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formlog.h"

namespace {

FormProblem::Severity SeverityOf(FormProblem::Kind kind)
{
    switch (kind) {
    case FormProblem::Syntax:
    case FormProblem::LeftOver:
    case FormProblem::ReadOnlyProperty:
    case FormProblem::NotAStatement:
    case FormProblem::Duplicate:
        return FormProblem::Error;
    default:
        return FormProblem::Warning;
    }
}

/// Null where there is none.
StandingProblem* Find(StandingProblems* problems, FormProblem::Kind kind, int cause)
{
    const auto found = std::find_if(problems->begin(), problems->end(), [=](const StandingProblem& standing) {
        return standing.problem.kind == kind && standing.cause == cause;
    });
    return found == problems->end() ? nullptr : &*found;
}

bool HasProblems(const BoundStatement& statement)
{
    return !statement.problems.empty();
}

} // namespace

const TextPlace ProblemBook::NoPlace(-1, 0);

ProblemBook::ProblemBook() : m_faulty(&BoundStatement::isFaulty, HasProblems) {}

FormProblem ProblemBook::Make(QObject* object, const QString& property, const QString& statement,
                              FormProblem::Kind kind, const QString& reason, const TextPlace& place)
{
    FormProblem problem;
    problem.kind = kind;
    problem.severity = SeverityOf(kind);
    problem.object = object;
    problem.property = property;
    problem.statement = statement;
    problem.position = place.offset;
    problem.length = place.length;
    problem.message = QStringLiteral("%1 of %2: %3.")
                          .arg(Printable(property), Printable(DescribeObject(object)), Printable(reason));
    return problem;
}

FormProblem ProblemBook::Add(const std::shared_ptr<BoundStatement>& statement, FormProblem::Kind kind, int cause,
                             const QString& reason, const TextPlace& place)
{
    const FormProblem problem = Make(statement->object, *statement->marked, statement->text, kind, reason, place);
    if (StandingProblem* const standing = Find(&statement->problems, kind, cause)) {
        standing->problem = problem;
        return problem;
    }
    statement->problems.push_front({problem, cause, ++m_count});
    m_faulty.Add(statement);
    m_untold.push_back({statement, problem, cause, false});
    return problem;
}

void ProblemBook::Remove(BoundStatement* statement, FormProblem::Kind kind)
{
    if (statement->problems.empty()) // As a rule.
        return;
    statement->problems.remove_if([=](const StandingProblem& standing) { return standing.problem.kind == kind; });
}

void ProblemBook::Remove(BoundStatement* statement, FormProblem::Kind kind, int cause)
{
    if (statement->problems.empty())
        return;
    statement->problems.remove_if(
        [=](const StandingProblem& standing) { return standing.problem.kind == kind && standing.cause == cause; });
}

bool ProblemBook::Has(const BoundStatement& statement, FormProblem::Kind kind)
{
    return std::any_of(statement.problems.begin(), statement.problems.end(),
                       [=](const StandingProblem& standing) { return standing.problem.kind == kind; });
}

void ProblemBook::AddFailed(const FormProblem& problem)
{
    const auto isSame = [&problem](const StandingProblem& standing) {
        return standing.problem.object == problem.object && standing.problem.property == problem.property;
    };
    if (problem.object) {
        const auto found = std::find_if(m_failed.begin(), m_failed.end(), isSame);
        const bool isKnown = found != m_failed.end() && found->problem.kind == problem.kind
            && found->problem.statement == problem.statement;
        if (isKnown)
            return;
        m_failed.remove_if(isSame);
        m_failed.push_front({problem, 0, ++m_count});
    }
    m_untold.push_back({std::weak_ptr<BoundStatement>(), problem, 0, true});
}

void ProblemBook::RemoveFailed(const QObject* object, const QString& property)
{
    m_failed.remove_if([&](const StandingProblem& standing) {
        return standing.problem.object == object && standing.problem.property == property;
    });
}

void ProblemBook::RemoveFailed(const std::function<bool(const QObject*)>& isMeant)
{
    m_failed.remove_if(
        [&](const StandingProblem& standing) { return !standing.problem.object || isMeant(standing.problem.object); });
}

bool ProblemBook::TakeUntold(FormProblem* problem)
{
    while (!m_untold.empty()) {
        const Untold untold = m_untold.front();
        m_untold.pop_front();
        *problem = untold.problem;
        if (untold.isFailure)
            return true;
        const std::shared_ptr<BoundStatement> statement = untold.statement.lock();
        if (!statement || !statement->property)
            continue;
        const StandingProblem* const standing = Find(&statement->problems, untold.problem.kind, untold.cause);
        if (!standing)
            continue;
        *problem = standing->problem;
        return true;
    }
    return false;
}
