#ifndef SIGNALRECEIVER_H
#define SIGNALRECEIVER_H

#include <QObject>

#include <memory>
#include <vector>

struct WatchedObject;
struct WatchedProperty;

/// Hears of signals of many objects, by few objects of its own: a form has thousands of properties.
class SignalReceiver
{
public:
    /// Told directly, in the thread of the sender's signal, which is that of the widgets.
    class Listener
    {
    public:
        virtual void OnChanged(WatchedProperty* property) = 0;
        virtual void OnDestroyed(WatchedObject* object) = 0;
        /// Editing of the object's properties ended.
        virtual void OnFinished(WatchedObject* object) = 0;

    protected:
        ~Listener() = default;
    };

    explicit SignalReceiver(Listener* listener);
    ~SignalReceiver();

    /// The number under which the connection is ended again; -1 where there is no such signal.
    int WatchChanges(WatchedProperty* property, int signal);
    int WatchDestruction(WatchedObject* object);
    int WatchFinish(WatchedObject* object, int signal);
    /// Ends a connection. The object may be under destruction, when it has none any more.
    void Forget(int slot);

    /// Ends all of them; nothing is told any more.
    void Close();

private:
    Q_DISABLE_COPY(SignalReceiver)

    class Receiver;
    enum Kind : quint8
    {
        Free,
        Change, ///< Of a property; the others are of an object.
        Destruction,
        Finish
    };
    struct Slot
    {
        union {
            WatchedProperty* property;
            WatchedObject* object;
        };
        int signal = -1;
        Kind kind = Free;

        Slot() : object(nullptr) {}
        Slot(WatchedProperty* changed, int ofSignal) : property(changed), signal(ofSignal), kind(Change) {}
        Slot(WatchedObject* watched, int ofSignal, Kind ofKind) : object(watched), signal(ofSignal), kind(ofKind) {}
        QObject* Sender() const;
    };

    int Connect(const Slot& slot);
    void Tell(int slot);

    Listener* m_listener;
    std::vector<std::unique_ptr<Receiver>> m_receivers;
    std::vector<Slot> m_slots;
    std::vector<int> m_free;
};

#endif
