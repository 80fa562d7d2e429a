#include "inspection.h"

#include <QThread>

#include "inspectedform.h"

namespace {

const int Second = 1000;

} // namespace

Inspection::Inspection() : m_outer(Installed())
{
    Install(this);
    const QVector<FormBinding*> bindings = Bindings();
    for (FormBinding* const binding : bindings)
        Add(binding);
    connect(&m_second, &QTimer::timeout, this, [this] {
        ForgetGone();
        // Some may go meanwhile.
        const QVector<InspectedForm*> forms = m_forms;
        for (InspectedForm* const form : forms)
            form->EndSecond();
    });
    m_second.start(Second);
}

Inspection::~Inspection()
{
    if (Installed() == this)
        Install(m_outer);
    qDeleteAll(m_forms);
}

/// Those that nobody has told of: the host may have installed an observer of its own since.
void Inspection::ForgetGone()
{
    const QVector<InspectedForm*> forms = m_forms;
    for (InspectedForm* const form : forms) {
        if (!form->Binding())
            Remove(form);
    }
}

void Inspection::Remove(InspectedForm* form)
{
    m_forms.removeOne(form);
    m_byBinding.remove(m_byBinding.key(form));
    form->NoteGone();
    Q_EMIT Removed(form);
    form->deleteLater();
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
    if (m_outer)
        m_outer->OnMade(binding);
    if (QThread::currentThread() == thread())
        Add(binding);
}

void Inspection::OnGone(FormBinding* binding)
{
    if (m_outer)
        m_outer->OnGone(binding);
    if (InspectedForm* const form = Find(binding))
        Remove(form);
}

void Inspection::OnBound(FormBinding* binding)
{
    if (m_outer)
        m_outer->OnBound(binding);
    if (InspectedForm* const form = Find(binding))
        form->NoteBound();
}

void Inspection::OnMarked(FormBinding* binding, int place, const FormCause& cause)
{
    if (m_outer)
        m_outer->OnMarked(binding, place, cause);
    if (InspectedForm* const form = Find(binding))
        form->NoteMarked(place, cause);
}

void Inspection::OnEvaluated(FormBinding* binding, const FormEvaluation& evaluation)
{
    if (m_outer)
        m_outer->OnEvaluated(binding, evaluation);
    if (InspectedForm* const form = Find(binding))
        form->NoteEvaluated(evaluation);
}

void Inspection::OnDelivered(FormBinding* binding, int evaluations, qint64 nanoseconds)
{
    if (m_outer)
        m_outer->OnDelivered(binding, evaluations, nanoseconds);
    if (InspectedForm* const form = Find(binding))
        form->NoteDelivered(evaluations, nanoseconds);
}
