#include "view/variablerecorder.h"

#include "view/variablestore.h"

VariableRecorder::VariableRecorder(VariableStore* variables) : m_variables(variables)
{
    connect(variables, &VariableStore::Changed, this, &VariableRecorder::Note);
    connect(variables, &VariableStore::Reset, this, &VariableRecorder::NoteAll);
}

VariableRecorder::~VariableRecorder()
{
    QString error;
    Stop(&error);
}

bool VariableRecorder::Start(const QString& fileName, QString* error)
{
    m_last.clear();
    if (!m_recorder.Start(fileName, error))
        return false;
    NoteAll();
    return true;
}

bool VariableRecorder::Stop(QString* error)
{
    return m_recorder.Stop(error);
}

void VariableRecorder::Note(const QVector<int>& positions)
{
    if (!IsRecording())
        return;
    for (const int position : positions)
        NoteValue(m_variables->Variables().at(position).identifier);
    Flush();
}

/// Those that the store had and has no longer, too.
void VariableRecorder::NoteAll()
{
    if (!IsRecording())
        return;
    const QList<VariableIdentifier> recorded = m_last.keys();
    for (const VariableIdentifier& identifier : recorded)
        NoteValue(identifier);
    const QVector<StoredVariable> variables = m_variables->Variables();
    for (const StoredVariable& variable : variables)
        NoteValue(variable.identifier);
    Flush();
}

void VariableRecorder::NoteValue(const VariableIdentifier& identifier)
{
    const QVariant value = m_variables->Value(identifier);
    if (m_last.value(identifier) == value && m_last.value(identifier).userType() == value.userType())
        return;
    m_last.insert(identifier, value);
    if (!m_recorder.Record(identifier, value))
        Q_EMIT Failed(QString("%1:%2 is recorded without its value, for which JSON has no form.")
                          .arg(identifier.GetPackage(), identifier.GetName()));
}

void VariableRecorder::Flush()
{
    QString error;
    if (!m_recorder.Flush() && !Stop(&error))
        Q_EMIT Failed("The recording ends. " + error);
}
