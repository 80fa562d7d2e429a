#include "DeclarationForms/formregistry.h"

#include <mutex>

#include "DeclarationForms/formobserver.h"

namespace {

struct Registered
{
    std::mutex mutex; ///< Guards what follows.
    QVector<FormBinding*> bindings;
};

/// Never destroyed: static objects of a host may have bindings.
Registered& All()
{
    static Registered* const registered = new Registered;
    return *registered;
}

} // namespace

void FormRegistry::Add(FormBinding* binding)
{
    {
        const std::lock_guard<std::mutex> lock(All().mutex);
        All().bindings.append(binding);
    }
    if (FormObserver* const observer = FormObserver::Installed())
        observer->OnMade(binding);
}

void FormRegistry::Remove(FormBinding* binding)
{
    {
        const std::lock_guard<std::mutex> lock(All().mutex);
        All().bindings.removeOne(binding);
    }
    if (FormObserver* const observer = FormObserver::Installed())
        observer->OnGone(binding);
}

QVector<FormBinding*> FormRegistry::Bindings()
{
    const std::lock_guard<std::mutex> lock(All().mutex);
    return All().bindings;
}
