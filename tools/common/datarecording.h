#ifndef DATARECORDING_H
#define DATARECORDING_H

#include <QElapsedTimer>
#include <QFile>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include "DataLayer/variableidentifier.h"

/// What a variable became at a time.
struct RecordedChange
{
    double seconds; ///< Since the start of the recording.
    VariableIdentifier identifier;
    QVariant value; ///< Invalid when the variable was removed.
};

/// A host's data over time, as a file of JSON lines: an object for each change of a variable.
///
///     {"t": 0.25, "package": "Engine", "name": "rpm", "value": 900}
///
/// The types are those of JsonData. A variable that was removed has no "value". Lines may stand in any order of times;
/// empty ones are skipped.
class DataRecording
{
public:
    /// Takes the changes of a file in the place of those held. False, with nothing changed and the reason in
    /// \a error, when the file cannot be read. Lines that are no change are left out and told by Problems().
    bool Read(const QString& fileName, QString* error);
    /// As Read(), from a text; \a source names it in the problems.
    void Parse(const QByteArray& text, const QString& source);

    /// By time; those of one time in the order of the file.
    const QVector<RecordedChange>& Changes() const { return m_changes; }
    /// The time of the last change, in seconds; 0 when there is none.
    double Duration() const { return m_changes.isEmpty() ? 0 : m_changes.last().seconds; }
    /// What is wrong with lines, each as «FILE:LINE: REASON».
    const QStringList& Problems() const { return m_problems; }

    /// The line for a change, with its line break.
    static QByteArray ToLine(const RecordedChange& change);
    /// False, with the reason, when the line is no change.
    static bool FromLine(const QByteArray& line, RecordedChange* change, QString* error);

private:
    QVector<RecordedChange> m_changes;
    QStringList m_problems;
};

/// Writes a recording while a host runs. For one thread at a time.
class DataRecorder
{
public:
    /// Starts a recording at the time 0, in a file that is written anew; one that runs ends. False, with the reason,
    /// when it cannot be.
    bool Start(const QString& fileName, QString* error);
    /// Ends it, with all written that was recorded. False, with the reason, when that failed now or before.
    bool Stop(QString* error);
    bool IsRecording() const { return m_file.isOpen(); }

    /// Notes what the variable is from now on; an invalid value, that it is gone. False when JSON has no form for
    /// the value, in whose place null is written. Without effect while nothing is recorded.
    bool Record(const VariableIdentifier& identifier, const QVariant& value);
    /// Hands to the file what is recorded until now, best after all changes that came together. False when that failed.
    bool Flush();

private:
    QFile m_file;
    QElapsedTimer m_running;
    bool m_failed = false;
};

#endif
