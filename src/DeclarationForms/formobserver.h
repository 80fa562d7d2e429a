#ifndef FORMOBSERVER_H
#define FORMOBSERVER_H

#include <QString>
#include <QVector>

#include <atomic>

#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/declarationforms_export.h"

class FormBinding;
class QObject;

/// Why a statement is evaluated.
struct FormCause
{
    /// What brought the evaluation about.
    enum Kind
    {
        Call,     ///< A call of the host, or an event that the binding answers.
        Variable, ///< The data.
        Property  ///< A property that the statement reads.
    };

    Kind kind = Call;            ///< What it was.
    VariableIdentifier variable; ///< Empty unless it was one.
    QObject* object = nullptr;   ///< Whose property it was; null unless it was one. Not to be kept unguarded.
    QString name;                ///< Of the property, without marker, or of the call or event.
};

/// One evaluation of a statement, with the write of its value.
struct FormEvaluation
{
    int place;          ///< Of the property in the binding: the same from when it is bound to when it is unbound.
    QObject* object;    ///< The bound object; null if the evaluation had it deleted. Not to be kept unguarded.
    QString property;   ///< With its marker.
    qint64 nanoseconds; ///< Those included of what the write caused at once.
};

/// Sees what the form bindings of the process do, for inspectors and measurements. Observing changes nothing, and
/// while nobody observes it costs a look at one pointer.
///
/// Each operation is called in the thread of its binding, which is that of the widgets. It may install another
/// observer, and must neither delete a binding nor call one, but for what FormBinding answers as constant.
class DECLARATIONFORMS_EXPORT FormObserver
{
public:
    /// Is told of nothing before it is installed.
    FormObserver();
    /// Takes itself away if it is installed.
    virtual ~FormObserver();

    /// From now on \a observer is told, and no other; it stays the caller's. Null ends that.
    static void Install(FormObserver* observer);
    /// Who is told; null for nobody.
    static FormObserver* Installed() { return s_installed.load(std::memory_order_acquire); }

    /// The bindings that there are, in the order made, those of other threads included.
    static QVector<FormBinding*> Bindings();

    /// A binding has been made, which has bound nothing yet.
    virtual void OnMade(FormBinding* binding);
    /// A binding is about to be deleted.
    virtual void OnGone(FormBinding* binding);
    /// Statements were bound, replaced or unbound; called for each.
    virtual void OnBound(FormBinding* binding);
    /// The statement at that place is to be evaluated with the next delivery, or the one that runs.
    virtual void OnMarked(FormBinding* binding, int place, const FormCause& cause);
    /// A statement was evaluated.
    virtual void OnEvaluated(FormBinding* binding, const FormEvaluation& evaluation);
    /// A delivery has ended, after so many evaluations. One inside another, by a call from a slot, is part of that.
    virtual void OnDelivered(FormBinding* binding, int evaluations, qint64 nanoseconds);

private:
    Q_DISABLE_COPY(FormObserver)

    static std::atomic<FormObserver*> s_installed;
};

#endif
