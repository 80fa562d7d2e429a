#include "declview/formsession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QSet>

#include <algorithm>

#include "check/formchecker.h"
#include "common/checksettings.h"
#include "common/formdocument.h"
#include "common/formloader.h"
#include "common/projectfile.h"

namespace {

const int TakingDelay = 50;

bool ReadFile(const QString& fileName, QByteArray* contents, QString* error)
{
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly)) {
        *contents = file.readAll();
        return true;
    }
    *error = QString("%1: %2").arg(fileName, file.errorString());
    return false;
}

/// The objects of a form in the order in which they are bound.
QHash<const QObject*, int> OrderOf(const QObject* form)
{
    QHash<const QObject*, int> order{{form, 0}};
    const QList<QObject*> children = form->findChildren<QObject*>();
    for (const QObject* const child : children)
        order.insert(child, order.size());
    return order;
}

/// Whether it shows nothing of itself, as other bases of custom widgets do.
bool IsBlank(const QWidget& widget)
{
    const char* const name = widget.metaObject()->className();
    return qstrcmp(name, "QWidget") == 0 || qstrcmp(name, "QFrame") == 0;
}

} // namespace

FormSession::FormSession(const SessionFiles& files) : m_files(files)
{
    m_taking.setSingleShot(true);
    m_taking.setInterval(TakingDelay);
    connect(&m_taking, &QTimer::timeout, this, &FormSession::TakeState);
    connect(&m_variables, &VariableStore::Changed, this, &FormSession::StartTaking);
    connect(&m_log, &MessageLog::Arrived, this, &FormSession::OnMessages);
}

FormSession::~FormSession()
{
    disconnect(&m_log, nullptr, this, nullptr);
    Unbind();
    delete m_form;
}

bool FormSession::Load(QString* error)
{
    QByteArray text;
    JsonData data;
    if (!ReadFile(m_files.form, &text, error) || !FormDocument().Parse(text, m_files.form, error)
        || (!m_files.data.isEmpty() && !data.Read(m_files.data, error)))
        return false;
    const QDir folder = QFileInfo(m_files.form).absoluteDir();
    m_resources.Load(text, folder);
    FormLoader loader;
    loader.setWorkingDirectory(folder);
    QString reason;
    QWidget* const form = loader.Load(text, &reason);
    if (!form) {
        // The form that stays may still load its pictures.
        m_resources.Load(m_text, folder);
        *error = QString("%1: %2").arg(m_files.form, reason);
        return false;
    }
    for (const FormLoader::StandIn& standIn : loader.StandIns()) {
        if (standIn.widget && IsBlank(*standIn.widget))
            m_outlines.Add(standIn.widget, standIn.className);
    }
    m_text = text;
    m_fileData = data;
    m_variables.Load(data);
    m_motion.Show();
    Replace(form);
    return true;
}

FormSaveResult FormSession::Save(const QString& objectName)
{
    const FormSaveResult result = m_binding->Save(Scope(objectName));
    StartTaking();
    return result;
}

void FormSession::Revert(const QString& objectName)
{
    m_binding->Revert(Scope(objectName));
    StartTaking();
}

QObject* FormSession::Scope(const QString& objectName) const
{
    return objectName.isEmpty() || !m_form ? nullptr : m_form->findChild<QObject*>(objectName);
}

IDataPeer* FormSession::Data() const
{
    return m_binding ? m_binding->DataPeer() : nullptr;
}

BoundProperty FormSession::Bound(int position) const
{
    const ViewedProperty& viewed = m_properties.at(position);
    const QVector<BoundProperty> bound
        = viewed.object ? m_binding->BoundProperties(viewed.object) : QVector<BoundProperty>();
    for (const BoundProperty& property : bound) {
        if (property.object == viewed.object && property.property.mid(1) == viewed.name)
            return property;
    }
    return BoundProperty();
}

QVector<int> FormSession::ReadersOf(int position) const
{
    const ViewedProperty& property = m_properties.at(position);
    return m_readers.value({property.object, property.name});
}

bool FormSession::SaveData(const QString& fileName, QString* error)
{
    if (!m_variables.Save(fileName, error))
        return false;
    m_files.data = fileName;
    return true;
}

QStringList FormSession::Scopes() const
{
    QStringList names;
    for (const ViewedProperty& property : m_properties) {
        if (!property.writable)
            continue;
        // Without the widget itself, and without the form, which is all.
        const QStringList path = property.path.split('\\');
        for (int i = 1; i < path.size() - 1; ++i) {
            if (!names.contains(path.at(i)))
                names.append(path.at(i));
        }
    }
    return names;
}

void FormSession::Replace(QWidget* form)
{
    // What has been written until now is about the properties that go.
    m_log.Flush();
    Q_EMIT AboutToBeReplaced();
    Unbind();
    QWidget* const previous = m_form;
    m_form = form;
    Bind();
    Q_EMIT Replaced();
    // Whoever calls may have been called by one of its widgets.
    if (previous)
        previous->deleteLater();
}

void FormSession::Unbind()
{
    m_binding.reset();
    m_properties.clear();
    m_positions.clear();
    m_readers.clear();
}

void FormSession::Bind()
{
    m_binding = std::make_unique<FormBinding>(m_form);
    m_binding->SetDefaultPackage(m_files.defaultPackage);
    m_binding->Bind();
    ListProperties();
    NoteReads();
    WatchProperties();
    const QVector<FormProblem> problems = m_binding->Problems();
    for (const FormProblem& problem : problems)
        OnProblem(problem);
    TakeProblems();
    connect(m_binding.get(), &FormBinding::ProblemFound, this, &FormSession::OnProblem);
    connect(m_binding.get(), &FormBinding::EditedChanged, this, &FormSession::EditedChanged);
}

/// What is bound, and what is not, for an error, in the order of the form.
void FormSession::ListProperties()
{
    const auto append
        = [this](QObject* object, const QString& marked, const QString& statement, bool writable, quint64 evaluations) {
              m_properties.append(
                  {object, marked.mid(1), statement, WidgetPath(object, m_form), writable, evaluations, QString()});
          };
    const QVector<BoundProperty> bound = m_binding->BoundProperties();
    for (const BoundProperty& property : bound)
        append(property.object, property.property, property.statement, property.writable, property.evaluations);
    const QVector<FormProblem> problems = m_binding->Problems();
    QSet<QPair<QObject*, QString>> unbound;
    for (const FormProblem& problem : problems) {
        const QPair<QObject*, QString> key(problem.object, problem.property);
        if (problem.severity != FormProblem::Error || unbound.contains(key))
            continue;
        unbound.insert(key);
        append(problem.object, problem.property, problem.statement, problem.property.startsWith('_'), 0);
    }
    const QHash<const QObject*, int> order = OrderOf(m_form);
    std::stable_sort(m_properties.begin(), m_properties.end(),
                     [&order](const ViewedProperty& left, const ViewedProperty& right) {
                         return order.value(left.object) < order.value(right.object);
                     });
    for (int i = 0; i < m_properties.size(); ++i)
        m_positions[m_properties.at(i).object].append(i);
}

void FormSession::NoteReads()
{
    QSet<VariableIdentifier> identifiers;
    const QVector<BoundProperty> bound = m_binding->BoundProperties();
    for (const BoundProperty& property : bound) {
        for (const VariableIdentifier& identifier : property.variables)
            identifiers.insert(identifier);
    }
    m_variables.SetRead(identifiers);
}

void FormSession::WatchProperties()
{
    const QVector<BoundProperty> bound = m_binding->BoundProperties();
    for (const BoundProperty& property : bound) {
        Watch(property.object, property.property.mid(1));
        for (const QPair<QPointer<QObject>, QString>& read : property.properties) {
            Watch(read.first, read.second);
            m_readers[{read.first, read.second}].append(Find(property.object, property.property));
        }
    }
}

void FormSession::Watch(const QObject* object, const QString& property)
{
    if (!object)
        return;
    const QMetaObject* const type = object->metaObject();
    const QMetaProperty metaProperty = type->property(type->indexOfProperty(property.toLatin1()));
    const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("OnPropertyChanged()"));
    if (metaProperty.hasNotifySignal())
        connect(object, metaProperty.notifySignal(), this, slot, Qt::UniqueConnection);
}

void FormSession::OnPropertyChanged()
{
    const QVector<int> positions = m_positions.value(sender());
    for (const int position : positions)
        Q_EMIT PropertyChanged(position);
    StartTaking();
}

/// What is under way already is not put off, since data may change all the time.
void FormSession::StartTaking()
{
    if (!m_taking.isActive())
        m_taking.start();
}

void FormSession::TakeState()
{
    const QVector<BoundProperty> bound = m_binding ? m_binding->BoundProperties() : QVector<BoundProperty>();
    for (const BoundProperty& property : bound) {
        const int position = Find(property.object, property.property);
        if (position < 0)
            continue;
        ViewedProperty& viewed = m_properties[position];
        if (viewed.evaluations == property.evaluations && viewed.edited == property.edited)
            continue;
        viewed.evaluations = property.evaluations;
        viewed.edited = property.edited;
        Q_EMIT PropertyChanged(position);
    }
    TakeProblems();
}

void FormSession::TakeProblems()
{
    QHash<int, FormProblem> first;
    const QVector<FormProblem> problems = m_binding ? m_binding->Problems() : QVector<FormProblem>();
    for (const FormProblem& problem : problems) {
        const int position = Find(problem.object, problem.property);
        if (!first.contains(position))
            first.insert(position, problem);
    }
    for (int i = 0; i < m_properties.size(); ++i) {
        const FormProblem problem = first.value(i);
        if (m_properties.at(i).problem == problem.message)
            continue;
        m_properties[i].problem = problem.message;
        m_properties[i].severity = problem.severity;
        Q_EMIT PropertyChanged(i);
    }
}

void FormSession::Check()
{
    CheckSettings settings;
    QString error;
    if (!ReadSettings(&settings, &error)) {
        m_log.Note(QtWarningMsg, "The form is not checked. " + error);
        return;
    }
    FormChecker checker(m_files.Name(), settings.Options());
    {
        // What building the form anew prints has been told.
        const MessageLog::Silence silence;
        if (!checker.Run(m_text, &error)) {
            m_log.Note(QtWarningMsg, "The form is not checked. " + error);
            return;
        }
    }
    for (ViewedProperty& property : m_properties)
        property.findings.clear();
    for (const Finding& finding : checker.Findings())
        TakeFinding(finding);
    for (int i = 0; i < m_properties.size(); ++i) {
        QVector<DeclarationFinding>& findings = m_properties[i].findings;
        std::stable_sort(findings.begin(), findings.end(),
                         [](const DeclarationFinding& left, const DeclarationFinding& right) {
                             return left.severity > right.severity;
                         });
        if (!findings.isEmpty())
            Q_EMIT PropertyChanged(i);
    }
}

/// The project file's, with the variables that there are now in the place of its data.
bool FormSession::ReadSettings(CheckSettings* settings, QString* error) const
{
    const QString folder = QFileInfo(m_files.form).absolutePath();
    if (!settings->ReadProject(ProjectFile::Find(folder), error))
        return false;
    settings->SetPackage(m_files.defaultPackage);
    // Without a file nobody says which variables there are.
    if (m_files.data.isEmpty())
        return true;
    JsonData data = m_fileData;
    for (int i = 0; i < m_variables.Variables().size(); ++i) {
        const StoredVariable& variable = m_variables.Variables().at(i);
        if (variable.edited)
            data.Set({variable.identifier.GetPackage(), variable.identifier.GetName(), m_variables.Value(i)});
    }
    settings->SetData(data);
    return true;
}

/// Objects of one name with the same statement are taken for alike.
void FormSession::TakeFinding(const Finding& finding)
{
    static const QHash<int, FormProblem::Severity> severities{{int(Severity::Note), FormProblem::Note},
                                                              {int(Severity::Warning), FormProblem::Warning},
                                                              {int(Severity::Error), FormProblem::Error}};
    const QString name = finding.object.section('#', 1);
    const QString text = finding.message + " [" + InfoOf(finding.check).name + ']';
    bool isTaken = false;
    for (ViewedProperty& property : m_properties) {
        const bool isMeant = property.statement == finding.statement && property.object
            && property.object->objectName() == name && finding.property.mid(1) == property.name;
        if (isMeant)
            property.findings.append({severities.value(int(finding.severity)), text});
        isTaken = isTaken || isMeant;
    }
    if (!isTaken)
        m_log.Note(
            finding.severity == Severity::Note ? QtInfoMsg : QtWarningMsg,
            QString("%1:%2:%3: %4").arg(finding.file).arg(finding.start.line).arg(finding.start.column).arg(text));
}

void FormSession::OnProblem(const FormProblem& problem)
{
    m_log.Note(QtWarningMsg, problem.message, Find(problem.object, problem.property));
    StartTaking();
}

void FormSession::OnMessages(QVector<LogMessage> messages)
{
    for (LogMessage& message : messages) {
        if (message.declaration >= 0 || !message.object)
            continue;
        message.declaration = Find(message.object, message.property);
        if (message.declaration < 0)
            continue;
        m_properties[message.declaration].diagnostic = message.text;
        Q_EMIT PropertyChanged(message.declaration);
    }
    Q_EMIT MessagesArrived(messages);
}

int FormSession::Find(const QObject* object, const QString& markedProperty) const
{
    const QVector<int> positions = m_positions.value(object);
    for (const int position : positions) {
        const ViewedProperty& property = m_properties.at(position);
        if (property.name == markedProperty.mid(1) && property.writable == markedProperty.startsWith('_'))
            return position;
    }
    return -1;
}
