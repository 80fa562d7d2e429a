#include "DeclarationForms/formobserver.h"

#include "DeclarationForms/formregistry.h"

std::atomic<FormObserver*> FormObserver::s_installed{nullptr};

FormObserver::FormObserver() = default;

FormObserver::~FormObserver()
{
    FormObserver* self = this;
    s_installed.compare_exchange_strong(self, nullptr);
}

void FormObserver::Install(FormObserver* observer)
{
    s_installed.store(observer, std::memory_order_release);
}

QVector<FormBinding*> FormObserver::Bindings()
{
    return FormRegistry::Bindings();
}

void FormObserver::OnMade(FormBinding*) {}

void FormObserver::OnGone(FormBinding*) {}

void FormObserver::OnBound(FormBinding*) {}

void FormObserver::OnMarked(FormBinding*, int, const FormCause&) {}

void FormObserver::OnEvaluated(FormBinding*, const FormEvaluation&) {}

void FormObserver::OnDelivered(FormBinding*, int, qint64) {}
