#ifndef FORMDELIVERY_H
#define FORMDELIVERY_H

#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

class BoundStatement;
class Evaluation;
class FormObserver;
class FormEdits;
class FormState;
class WatchedVariable;
struct WatchedProperty;

/// Evaluates the statements of a form that need it, in the order of reading, and shows their values.
class FormDelivery
{
public:
    FormDelivery(FormState* state, FormEdits* edits) : m_state(*state), m_edits(*edits) {}

    /// The statement is evaluated by the delivery that runs, unless it has been already, or by the next one.
    void Mark(const std::shared_ptr<BoundStatement>& statement);
    /// As above for all that read the property, after \a writer, if not null, has written it.
    void MarkReaders(const WatchedProperty& property, const BoundStatement* writer);

    /// Evaluates what is marked. With \a withVariables also what reads variables that have changed.
    void Run(bool withVariables);

    /// Whether anything is marked.
    bool IsWaiting() const { return !m_waiting.empty(); }

    /// A value that was not taken may have come by the write of another property.
    void CheckTaken(const std::shared_ptr<BoundStatement>& statement);

    /// Writes a property for the binding. Answers whether it was taken.
    bool WriteProperty(const BoundStatement& statement, const QVariant& target);
    /// Whose property is being written so; null for none.
    const BoundStatement* Writer() const { return m_writer; }

private:
    typedef std::shared_ptr<BoundStatement> Statement;
    typedef std::vector<Statement> Statements;

    /// Another statement of an object, before a property of that object is written.
    struct Sibling
    {
        Statement statement;
        QVariant held;
        bool isEdited;
    };
    typedef std::vector<Sibling> Siblings;

    void TellMarked(const BoundStatement& statement, FormObserver* observer) const;
    void MarkVariables();
    void EvaluateMarked();
    void UpdateOrder();
    void TellCircles();
    Statement TakeNext();

    void Evaluate(const Statement& statement);
    void EvaluateObserved(const Statement& statement);
    void TellEvaluation(const Statement& statement, const Evaluation& evaluation);
    void TellNoValue(const Statement& statement);
    static bool IsSettled(const BoundStatement& statement);
    void Show(const Statement& statement, const QVariant& previous);
    void Write(const Statement& statement, const QVariant& held, const QVariant& target, const QVariant& given);
    void WriteAgain(const Statement& statement);
    void TellTaken(const Statement& statement, const QVariant& target, bool isTaken, const QString& reason);
    bool WaitsForBound(const BoundStatement& statement) const;

    Siblings SiblingsOf(const BoundStatement& statement) const;
    static bool HasCutSibling(const BoundStatement& statement);
    void Settle(const Siblings& siblings, const BoundStatement& written, bool hasChanged);
    void SettleSibling(const Sibling& sibling, const BoundStatement& written, bool hasChanged);

    FormState& m_state;
    FormEdits& m_edits;
    quint64 m_lastNumber = 0;
    quint64 m_number = 0; ///< Of the delivery that runs; 0 while none does.
    Statements m_waiting;
    Statements m_sorted;     ///< Of the delivery that runs, the next one last.
    Statements m_queue;      ///< A heap, of what was marked since it began.
    bool m_isTaking = false; ///< What is marked now is evaluated by the delivery that begins.
    const BoundStatement* m_writer = nullptr;
    const WatchedVariable* m_changedVariable = nullptr; ///< Whose readers are being marked; null for none.
    const WatchedProperty* m_changedProperty = nullptr;
    quint64 m_evaluations = 0; ///< In all, for an observer.
};

#endif
