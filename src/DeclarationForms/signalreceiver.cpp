#include "DeclarationForms/signalreceiver.h"

#include "DeclarationForms/watchedproperty.h"

namespace {

/// A connection keeps the number of the method that it calls in 16 bits.
const int SlotsEach = 30000;

} // namespace

/// Its methods, numbered behind those of QObject, stand for the slots from m_first on.
class SignalReceiver::Receiver : public QObject
{
public:
    Receiver(SignalReceiver* owner, int first) : m_owner(owner), m_first(first) {}

    int qt_metacall(QMetaObject::Call call, int method, void** arguments) override
    {
        method = QObject::qt_metacall(call, method, arguments);
        if (method < 0 || call != QMetaObject::InvokeMetaMethod)
            return method;
        m_owner->Tell(m_first + method);
        return -1;
    }

private:
    SignalReceiver* const m_owner;
    const int m_first;
};

QObject* SignalReceiver::Slot::Sender() const
{
    return kind == Change ? property->owner->object : object->object;
}

SignalReceiver::SignalReceiver(Listener* listener) : m_listener(listener) {}

SignalReceiver::~SignalReceiver() = default;

int SignalReceiver::WatchChanges(WatchedProperty* property, int signal)
{
    return Connect(Slot(property, signal));
}

int SignalReceiver::WatchDestruction(WatchedObject* object)
{
    static const int destroyed = QObject::staticMetaObject.indexOfSignal("destroyed(QObject*)");
    return Connect(Slot(object, destroyed, Destruction));
}

int SignalReceiver::WatchFinish(WatchedObject* object, int signal)
{
    return Connect(Slot(object, signal, Finish));
}

int SignalReceiver::Connect(const Slot& slot)
{
    if (slot.signal < 0)
        return -1;
    if (m_free.empty()) {
        m_free.push_back(static_cast<int>(m_slots.size()));
        m_slots.push_back(Slot());
    }
    const int number = m_free.back();
    const std::size_t index = number / SlotsEach;
    if (index == m_receivers.size())
        m_receivers.emplace_back(new Receiver(this, number));
    const int method = QObject::staticMetaObject.methodCount() + number % SlotsEach;
    if (!QMetaObject::connect(slot.Sender(), slot.signal, m_receivers[index].get(), method, Qt::DirectConnection))
        return -1;
    m_free.pop_back();
    m_slots[number] = slot;
    return number;
}

void SignalReceiver::Forget(int slot)
{
    if (slot < 0 || m_receivers.empty())
        return;
    const Slot forgotten = m_slots[slot];
    const int method = QObject::staticMetaObject.methodCount() + slot % SlotsEach;
    QMetaObject::disconnect(forgotten.Sender(), forgotten.signal, m_receivers[slot / SlotsEach].get(), method);
    m_slots[slot] = Slot();
    m_free.push_back(slot);
}

void SignalReceiver::Close()
{
    m_receivers.clear();
    m_slots.clear();
    m_free.clear();
}

void SignalReceiver::Tell(int slot)
{
    const Slot told = m_slots[slot];
    if (told.kind == Change)
        m_listener->OnChanged(told.property);
    else if (told.kind == Destruction)
        m_listener->OnDestroyed(told.object);
    else if (told.kind == Finish)
        m_listener->OnFinished(told.object);
}
