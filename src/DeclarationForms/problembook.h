#ifndef PROBLEMBOOK_H
#define PROBLEMBOOK_H

#include <QString>

#include <deque>
#include <forward_list>
#include <functional>
#include <memory>

#include "Common/textplace.h"
#include "DeclarationForms/formproblem.h"
#include "DeclarationForms/statementlist.h"

class BoundStatement;

/// A problem that has been found and has not gone away.
struct StandingProblem
{
    FormProblem problem;
    int cause;      ///< Tells problems of one kind apart.
    quint64 number; ///< In the order found.
};

typedef std::forward_list<StandingProblem> StandingProblems; ///< One pointer: most statements have none.

/// Keeps the problems of a form, and which of them have not been told yet.
class ProblemBook
{
public:
    static const TextPlace NoPlace;

    ProblemBook();

    static FormProblem Make(QObject* object, const QString& property, const QString& statement, FormProblem::Kind kind,
                            const QString& reason, const TextPlace& place);

    /// A problem of what is bound. One of the same kind and cause that stands already takes the new words, and is
    /// not told again. Answers the problem.
    FormProblem Add(const std::shared_ptr<BoundStatement>& statement, FormProblem::Kind kind, int cause,
                    const QString& reason, const TextPlace& place = NoPlace);
    static void Remove(BoundStatement* statement, FormProblem::Kind kind);
    static void Remove(BoundStatement* statement, FormProblem::Kind kind, int cause);
    static bool Has(const BoundStatement& statement, FormProblem::Kind kind);
    /// Appends the statements in the scope that have problems to \a found.
    void FindFaulty(const QObject* scope, StatementList::Statements* found) { m_faulty.Find(scope, found); }

    /// A declaration that could not be bound. Without an object it is told and not kept.
    void AddFailed(const FormProblem& problem);
    void RemoveFailed(const QObject* object, const QString& property);
    /// Those for which \a isMeant answers true, and those of objects that are gone.
    void RemoveFailed(const std::function<bool(const QObject*)>& isMeant);
    const StandingProblems& Failed() const { return m_failed; }

    /// The next problem to be told, if it still stands; false when there is none.
    bool TakeUntold(FormProblem* problem);

private:
    struct Untold
    {
        std::weak_ptr<BoundStatement> statement;
        FormProblem problem;
        int cause;
        bool isFailure;
    };

    StatementList m_faulty;
    StandingProblems m_failed;
    std::deque<Untold> m_untold;
    quint64 m_count = 0;
};

#endif
