#ifndef VARIABLESTORE_H
#define VARIABLESTORE_H

#include <QHash>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QVector>

#include <atomic>
#include <optional>

#include "DataLayer/idataobserver.h"
#include "DataLayer/variableidentifier.h"
#include "common/valuegenerator.h"

class IDataPeer;
class JsonData;

/// A variable of the form: one that the data file has, that a statement reads, or that was set here.
struct StoredVariable
{
    VariableIdentifier identifier;
    bool inFile;                               ///< As it was read or written last.
    bool edited;                               ///< Changed since then; a later reading of the file leaves it alone.
    bool isRead;                               ///< By a statement of the form.
    std::optional<ValueGenerator> generator{}; ///< What moves it, unless it is edited.
};

/// The variables in the data layer: what the data file says, and what is changed afterwards, by whomever
/// and in whatever thread. Changes are announced in this object's thread, several at once.
class VariableStore : public QObject, private IDataObserver
{
    Q_OBJECT

public:
    VariableStore();
    ~VariableStore() override;

    /// Writes what stands in a data file, except where a variable was edited.
    void Load(const JsonData& file);
    /// Writes values of the user's own, which count as edited.
    void Set(const JsonData& values);
    bool SetValue(int position, const QVariant& value);
    /// Writes the values that generators have so many seconds after the start, except where one was edited.
    void Move(double seconds);
    /// Writes values that were recorded, except where one was edited.
    void Replay(const QHash<VariableIdentifier, QVariant>& values);
    /// Whether a generator moves any.
    bool AnyMoves() const;
    /// Which variables the statements read; those that are neither read, edited nor in the file go.
    void SetRead(const QSet<VariableIdentifier>& identifiers);

    /// Writes all variables that have a value to a file, those that move as their generators. They count as unedited
    /// then.
    bool Save(const QString& fileName, QString* error);

    const QVector<StoredVariable>& Variables() const { return m_variables; }
    QVariant Value(int position) const;
    QVariant Value(const VariableIdentifier& identifier) const;
    /// Whether a statement reads it and nobody has given it a value.
    bool IsMissing(int position) const;

    /// Announces what has changed until now at once.
    void Flush();

Q_SIGNALS:
    void AboutToReset();
    /// The list has others, or in another order.
    void Reset();
    void Changed(const QVector<int>& positions);

private:
    void OnNotify(const VariableIdentifier& identifier) override;
    void customEvent(QEvent* event) override;
    bool IsMissing(const StoredVariable& variable) const;
    StoredVariable& Find(const VariableIdentifier& identifier);
    /// Puts what is missing first, too.
    void RemoveUnused();

    IDataPeer* const m_data;
    QVector<StoredVariable> m_variables;
    QHash<VariableIdentifier, int> m_positions; ///< In m_variables.
    std::atomic<bool> m_loading{false};

    QMutex m_mutex;                             ///< Guards what follows.
    QHash<VariableIdentifier, bool> m_notified; ///< What has changed, and whether that was an edit.
};

#endif
