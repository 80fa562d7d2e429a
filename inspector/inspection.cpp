#include "inspection.h"

#include <QThread>

#include "inspectedform.h"

namespace {

const int Second = 1000;

} // namespace

Inspection::Inspection()
{
    Install(this);
    const QVector<FormBinding*> bindings = Bindings();
    for (FormBinding* const binding : bindings)
        Add(binding);
    connect(&m_second, &QTimer::timeout, this, [this] {
        // Some may go meanwhile.
        const QVector<InspectedForm*> forms = m_forms;
        for (InspectedForm* const form : forms)
            form->EndSecond();
    });
    m_second.start(Second);
}

Inspection::~Inspection()
{
    qDeleteAll(m_forms);
}

void Inspection::Add(FormBinding* binding)
{
    // Those of other threads are none of a window's.
    if (binding->thread() != thread())
        return;
    auto* const form = new InspectedForm(binding);
    m_forms.append(form);
    m_byBinding.insert(binding, form);
    Q_EMIT Added(form);
}

/// Null also for one of another thread.
InspectedForm* Inspection::Find(FormBinding* binding) const
{
    return QThread::currentThread() == thread() ? m_byBinding.value(binding) : nullptr;
}

void Inspection::OnMade(FormBinding* binding)
{
    if (QThread::currentThread() == thread())
        Add(binding);
}

void Inspection::OnGone(FormBinding* binding)
{
    InspectedForm* const form = Find(binding);
    if (!form)
        return;
    m_forms.removeOne(form);
    m_byBinding.remove(binding);
    form->NoteGone();
    Q_EMIT Removed(form);
    form->deleteLater();
}

void Inspection::OnBound(FormBinding* binding)
{
    if (InspectedForm* const form = Find(binding))
        form->NoteBound();
}

void Inspection::OnMarked(FormBinding* binding, int place, const FormCause& cause)
{
    if (InspectedForm* const form = Find(binding))
        form->NoteMarked(place, cause);
}

void Inspection::OnEvaluated(FormBinding* binding, const FormEvaluation& evaluation)
{
    if (InspectedForm* const form = Find(binding))
        form->NoteEvaluated(evaluation);
}

void Inspection::OnDelivered(FormBinding* binding, int evaluations, qint64 nanoseconds)
{
    if (InspectedForm* const form = Find(binding))
        form->NoteDelivered(evaluations, nanoseconds);
}
