#ifndef FORMSTATE_H
#define FORMSTATE_H

#include <QPointer>
#include <QString>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "DeclarationForms/changegatherer.h"
#include "DeclarationForms/compiledstatement.h"
#include "DeclarationForms/formbinding.h"
#include "DeclarationForms/formobjects.h"
#include "DeclarationForms/problembook.h"
#include "DeclarationForms/readingorder.h"
#include "DeclarationForms/signalreceiver.h"
#include "DeclarationForms/watchedvariable.h"

class BoundStatement;

/// Where a statement finds the variables that it names.
struct VariableSource
{
    IDataPeer* peer = nullptr; ///< Null for the default.
    QString package;           ///< Of those named without one.
};

/// What the parts of a form's binding share.
class FormState
{
public:
    typedef std::vector<std::shared_ptr<BoundStatement>> Statements;

    FormState(QObject* form, FormBinding* binding, SignalReceiver::Listener* listener, QObject* filter,
              std::function<void()> deliver);

    /// Whether \a object is \a scope or below it; a null scope means all.
    static bool IsIn(const QObject* object, const QObject* scope);

    /// The bound statements in the scope, in the order bound.
    Statements In(const QObject* scope) const;
    /// The statement of a property, by its name without marker; null for none.
    std::shared_ptr<BoundStatement> Find(const QObject* object, const QString& name);
    /// That of what is bound from now on.
    const VariableSource& Source() const { return sources[source]; }
    void SetSource(const VariableSource& wanted);
    /// The peer of a source, or else the default; null where there is none.
    static IDataPeer* PeerOf(const VariableSource& source);
    /// Takes statements out of the list that are not bound any more, when they are many.
    void Compact();

    /// While one lives, trees that are replaced are kept: they may be running. What is marked meanwhile is due to
    /// that call, if it is named, for an observer.
    class Guard
    {
    public:
        explicit Guard(FormState* state, const char* call = nullptr);
        ~Guard();

    private:
        Q_DISABLE_COPY(Guard)

        FormState& m_state;
        const char* const m_outerCall;
    };

    const QPointer<QObject> form;
    FormBinding* const binding;                            ///< Not to be used once this is closed.
    std::vector<VariableSource> sources{VariableSource()}; ///< All that there were.
    quint16 source = 0;                                    ///< Of what is bound from now on.
    FormBinding::SavePolicy savePolicy = FormBinding::SaveOnRequest;
    FormBinding::EditPolicy editPolicy = FormBinding::KeepEdits;
    bool isClosed = false; ///< The binding is gone.
    /// Told of changes by adapters, also when nobody wants to know any more.
    std::function<void(QObject* object, const QString& property)> adapterChange;

    ChangeGatherer gatherer;
    WatchedVariables variables;
    SignalReceiver receiver;
    FormObjects objects;
    ProblemBook problems;
    ReadingOrder order;
    Statements statements; ///< In the order bound; those without a property are not bound any more.
    int lastPlace = 0;
    int unboundCount = 0; ///< Of those in the list.
    int depth = 0;
    const char* call = "event"; ///< What runs, as an observer is told.
    std::deque<CompiledStatement> replaced;
};

#endif
