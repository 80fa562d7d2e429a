#include "DeclarationForms/formobjects.h"

#include <QEvent>

#include "DeclarationForms/adapterregistry.h"
#include "DeclarationForms/boundaccess.h"
#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formreferences.h"
#include "DeclarationForms/savepolicies.h"
#include "DeclarationForms/signalreceiver.h"

WatchedObject* FormObjects::Find(const QObject* object)
{
    if (m_last && m_last->object == object)
        return m_last;
    const auto found = m_objects.find(object);
    if (found == m_objects.end())
        return nullptr;
    m_last = &found->second;
    return m_last;
}

WatchedProperty* FormObjects::Find(WatchedObject* object, const QString& name)
{
    for (WatchedProperty& property : object->properties) {
        if (*property.name == name)
            return &property;
    }
    return nullptr;
}

WatchedObject* FormObjects::Get(QObject* object)
{
    if (m_last && m_last->object == object)
        return m_last;
    WatchedObject* const watched = &m_objects[object];
    m_last = watched;
    if (!watched->object) {
        watched->object = object;
        watched->destroyedSlot = m_receiver->WatchDestruction(watched);
    }
    return watched;
}

WatchedProperty* FormObjects::Get(QObject* object, const QString& name)
{
    WatchedObject* const watched = Get(object);
    auto last = watched->properties.before_begin();
    for (auto it = watched->properties.begin(); it != watched->properties.end(); last = it++) {
        if (*it->name == name)
            return &*it;
    }
    WatchedProperty& property = *watched->properties.emplace_after(last);
    property.owner = watched;
    property.name = Share(name);
    return &property;
}

FormObjects::Objects::node_type FormObjects::Take(const WatchedObject* object)
{
    m_last = nullptr;
    Objects::node_type taken = m_objects.extract(object->object);
    ForgetClasses();
    for (const WatchedProperty& property : taken.mapped().properties)
        m_receiver->Forget(property.slot);
    for (const int slot : taken.mapped().finishedSlots)
        m_receiver->Forget(slot);
    m_receiver->Forget(taken.mapped().destroyedSlot);
    return taken;
}

void FormObjects::ForgetClasses()
{
    m_accesses.clear();
    m_finishSignals.clear();
}

void FormObjects::CountBound(WatchedObject* object, int change)
{
    SetWatched(object, object->boundCount + change, object->hasUnbound);
    if (object->boundCount > 2)
        return;
    for (const WatchedProperty& property : object->properties) {
        if (property.statement)
            property.statement->isAlone = object->boundCount < 2;
    }
}

void FormObjects::WatchTexts(QObject* object)
{
    WatchedObject* const watched = Get(object);
    SetWatched(watched, watched->boundCount, true);
}

void FormObjects::SetWatched(WatchedObject* object, int boundCount, bool hasUnbound)
{
    const bool wasFiltered = object->boundCount > 0 || object->hasUnbound;
    const bool isFiltered = boundCount > 0 || hasUnbound;
    object->boundCount = boundCount;
    object->hasUnbound = hasUnbound;
    if (!wasFiltered && isFiltered)
        object->object->installEventFilter(m_filter);
    if (wasFiltered && !isFiltered)
        object->object->removeEventFilter(m_filter);
}

void FormObjects::WatchFinish(WatchedObject* object)
{
    if (!object->finishedSlots.empty())
        return;
    for (const int signal : FinishSignals(object->object))
        object->finishedSlots.push_front(m_receiver->WatchFinish(object, signal));
}

/// A class is searched once.
const std::vector<int>& FormObjects::FinishSignals(const QObject* object)
{
    const auto found = m_finishSignals.constFind(object->metaObject());
    return found != m_finishSignals.constEnd()
        ? *found
        : *m_finishSignals.insert(object->metaObject(), SavePolicies::FinishSignals(object));
}

std::shared_ptr<const BoundAccess> FormObjects::Access(const QObject* object, const QString& name)
{
    const std::size_t adapterCount = AdapterRegistry::Table().Count();
    if (m_adapterCount != adapterCount)
        m_accesses.clear();
    m_adapterCount = adapterCount;
    std::shared_ptr<const BoundAccess>& access = m_accesses[qMakePair(object->metaObject(), name)];
    if (!access)
        access = std::make_shared<const BoundAccess>(object, name);
    return access;
}

void FormObjects::AddReader(WatchedProperty* property, FormProperty* reader)
{
    reader->SetProperty(property, Access(property->owner->object, *property->name));
    reader->SetIndex(property->readers.size());
    property->readers.push_back(reader);
    if (property->statement)
        property->statement->isRead = true;
}

void FormObjects::RemoveReader(FormProperty* reader)
{
    WatchedProperty* const property = reader->Property();
    if (!property)
        return;
    property->readers.back()->SetIndex(reader->Index());
    property->readers[reader->Index()] = property->readers.back();
    property->readers.pop_back();
    if (property->statement)
        property->statement->isRead = !property->readers.empty();
    reader->SetProperty(nullptr, nullptr);
}
