#include "DeclarationForms/formobjects.h"

#include <QEvent>

#include "DeclarationForms/formreferences.h"
#include "DeclarationForms/signalreceiver.h"

WatchedObject* FormObjects::Find(const QObject* object) const
{
    const auto found = m_objects.find(object);
    return found == m_objects.end() ? nullptr : found->second.get();
}

WatchedProperty* FormObjects::Find(const WatchedObject& object, const QString& name)
{
    for (const std::unique_ptr<WatchedProperty>& property : object.properties) {
        if (property->name == name)
            return property.get();
    }
    return nullptr;
}

WatchedProperty* FormObjects::Get(QObject* object, const QString& name)
{
    std::unique_ptr<WatchedObject>& watched = m_objects[object];
    if (!watched) {
        watched.reset(new WatchedObject);
        watched->object = object;
        watched->destroyedSlot = m_receiver->WatchDestruction(watched.get());
    }
    if (WatchedProperty* const known = Find(*watched, name))
        return known;
    std::unique_ptr<WatchedProperty> property(new WatchedProperty);
    property->owner = watched.get();
    property->name = Share(name);
    watched->properties.push_back(std::move(property));
    return watched->properties.back().get();
}

std::unique_ptr<WatchedObject> FormObjects::Take(const WatchedObject* object)
{
    const auto found = m_objects.find(object->object);
    std::unique_ptr<WatchedObject> taken = std::move(found->second);
    m_objects.erase(found);
    for (const std::unique_ptr<WatchedProperty>& property : taken->properties)
        m_receiver->Forget(property->slot);
    for (const int slot : taken->finishedSlots)
        m_receiver->Forget(slot);
    m_receiver->Forget(taken->destroyedSlot);
    return taken;
}

void FormObjects::CountBound(WatchedObject* object, int change)
{
    const bool wasBound = object->boundCount > 0;
    object->boundCount += change;
    if (!wasBound && object->boundCount > 0)
        object->object->installEventFilter(m_filter);
    if (wasBound && object->boundCount == 0)
        object->object->removeEventFilter(m_filter);
}

void FormObjects::AddReader(WatchedProperty* property, FormProperty* reader)
{
    reader->SetProperty(property);
    reader->SetIndex(property->readers.size());
    property->readers.push_back(reader);
}

void FormObjects::RemoveReader(FormProperty* reader)
{
    WatchedProperty* const property = reader->Property();
    if (!property)
        return;
    property->readers.back()->SetIndex(reader->Index());
    property->readers[reader->Index()] = property->readers.back();
    property->readers.pop_back();
    reader->SetProperty(nullptr);
}
