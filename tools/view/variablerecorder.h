#ifndef VARIABLERECORDER_H
#define VARIABLERECORDER_H

#include <QHash>
#include <QObject>
#include <QVector>

#include "common/datarecording.h"

class VariableStore;

/// Records the variables of a store: those that there are at the start, and what changes from then on. Of changes that
/// the store announces at once, the last of each variable.
class VariableRecorder : public QObject
{
    Q_OBJECT

public:
    /// The variables outlive this.
    explicit VariableRecorder(VariableStore* variables);
    ~VariableRecorder() override;

    /// False, with the reason, when the file cannot be written.
    bool Start(const QString& fileName, QString* error);
    /// False, with the reason, when not all was written.
    bool Stop(QString* error);
    bool IsRecording() const { return m_recorder.IsRecording(); }

Q_SIGNALS:
    /// The value of a variable has no form in JSON, or the file takes no more.
    void Failed(const QString& reason);

private:
    void Note(const QVector<int>& positions);
    void NoteAll();
    void NoteValue(const VariableIdentifier& identifier);
    void Flush();

    VariableStore* const m_variables;
    DataRecorder m_recorder;
    QHash<VariableIdentifier, QVariant> m_last; ///< What is recorded of each.
};

#endif
