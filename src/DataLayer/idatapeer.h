#ifndef IDATAPEER_H
#define IDATAPEER_H

#include <QFlags>
#include <QVariant>

#include "DataLayer/datalayer_export.h"

class IDataObserver;
class VariableIdentifier;

/// The way to the data variables. Every operation may be called from any thread, also from inside
/// IDataObserver::OnNotify(). Users hold plain pointers and never delete a peer; it must outlive
/// everything that was given it.
class DATALAYER_EXPORT IDataPeer
{
public:
    /// How a value is written.
    enum ChangeValueFlag
    {
        /// Observers hear of the write if it changes the value.
        NoFlag = 0x0,
        /// Observers hear of the write even if the value stays the same.
        ForceNotification = 0x1
    };
    /// Any number of them.
    Q_DECLARE_FLAGS(ChangeValueFlags, ChangeValueFlag)

    /// The variable's current value, or \a defaultValue when the data layer holds none.
    virtual QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) = 0;

    /// Writes the variable, creating it where it does not exist yet. Answers whether the data layer
    /// took the value.
    virtual bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                             QFlags<IDataPeer::ChangeValueFlag> flags)
        = 0;

    /// From now on each change of the variable calls \a observer, which stays the caller's. The
    /// variable need not exist yet. Answers whether the observer is subscribed.
    virtual bool AddObserver(const VariableIdentifier& identifier, IDataObserver* observer) = 0;

    /// Ends every subscription of the observer. When this returns, no call to the observer runs in
    /// another thread, and none will start. From inside the observer's own OnNotify() it does not
    /// wait for that call. An observer that was never added is ignored.
    virtual void RemoveObserver(IDataObserver* observer) = 0;

    /// Tells the data layer that somebody reads the variable without observing it. Answers whether
    /// the data layer took note.
    virtual bool AddReference(const VariableIdentifier& identifier) = 0;

protected:
    virtual ~IDataPeer() {}
};

Q_DECLARE_OPERATORS_FOR_FLAGS(IDataPeer::ChangeValueFlags)

#endif
