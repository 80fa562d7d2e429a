#ifndef INSPECTION_H
#define INSPECTION_H

#include <QHash>
#include <QObject>
#include <QTimer>

#include "DeclarationForms/formobserver.h"

class InspectedForm;

/// The form bindings of this thread, observed for as long as it lives. An observer that the host has installed before
/// outlives this, and is told as well.
class Inspection : public QObject, private FormObserver
{
    Q_OBJECT

public:
    Inspection();
    ~Inspection() override;

    /// In the order made.
    const QVector<InspectedForm*>& Forms() const { return m_forms; }

Q_SIGNALS:
    void Added(InspectedForm* form);
    /// Its binding is gone; it is deleted from the event loop.
    void Removed(InspectedForm* form);

private:
    void Add(FormBinding* binding);

    void OnMade(FormBinding* binding) override;
    void OnGone(FormBinding* binding) override;
    void OnBound(FormBinding* binding) override;
    void OnMarked(FormBinding* binding, int place, const FormCause& cause) override;
    void OnEvaluated(FormBinding* binding, const FormEvaluation& evaluation) override;
    void OnDelivered(FormBinding* binding, int evaluations, qint64 nanoseconds) override;
    InspectedForm* Find(FormBinding* binding) const;
    void ForgetGone();
    void Remove(InspectedForm* form);

    FormObserver* const m_outer; ///< That of the host, which is told as before; null for none.
    QVector<InspectedForm*> m_forms;
    QHash<FormBinding*, InspectedForm*> m_byBinding;
    QTimer m_second;
};

#endif
