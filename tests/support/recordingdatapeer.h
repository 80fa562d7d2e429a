#ifndef RECORDINGDATAPEER_H
#define RECORDINGDATAPEER_H

#include <QHash>
#include <utility>

#include "DataLayer/idataobserver.h"
#include "DataLayer/idatapeer.h"
#include "DataLayer/variableidentifier.h"
#include "support/values.h"

/// A data layer that notes every call in the order made. Variables are written «package:name», or
/// «name» without a package. It always answers false, which nobody may take for anything.
class RecordingDataPeer : public IDataPeer
{
public:
    QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) override
    {
        Note(defaultValue.isValid() ? "get with default " : "get ", identifier);
        return m_values.value(Name(identifier), defaultValue);
    }

    bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                     QFlags<IDataPeer::ChangeValueFlag> flags) override
    {
        m_values[Name(identifier)] = value;
        return Note(flags ? "force " : "set ", identifier, "=" + Exact(value));
    }

    bool AddObserver(const VariableIdentifier& identifier, IDataObserver* observer) override
    {
        m_observers[Name(identifier)] = observer;
        return Note("observe ", identifier);
    }

    void RemoveObserver(IDataObserver*) override { m_calls << "unobserve"; }
    bool AddReference(const VariableIdentifier& identifier) override { return Note("refer ", identifier); }

    /// The calls since the last time, with commas between them.
    QString TakeCalls() { return std::exchange(m_calls, QStringList()).join(", "); }

    QHash<QString, QVariant> m_values;
    QHash<QString, IDataObserver*> m_observers; ///< The last one of each variable.
    QStringList m_calls;

private:
    static QString Name(const VariableIdentifier& identifier)
    {
        return QString(identifier.GetPackage() + ":" + identifier.GetName()).remove(QRegularExpression("^:"));
    }

    bool Note(const char* call, const VariableIdentifier& identifier, const QString& value = QString())
    {
        m_calls << call + Name(identifier) + value;
        return false;
    }
};

/// Hears of changes and does nothing.
class SilentObserver : public IDataObserver
{
public:
    void OnNotify(const VariableIdentifier&) override {}
};

#endif
