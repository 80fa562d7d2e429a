#include "declview/formsession.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>

#include "DataLayer/idatapeerfactory.h"
#include "DeclarationHandler/Declarations/declproperty.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"
#include "common/formdocument.h"
#include "common/formloader.h"
#include "common/jsondata.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "common/statementtokens.h"

namespace {

const QLatin1String CycleMessage("Cycle of references:");

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

/// What the parser has to say; the handler, which parses the statement itself, does not tell.
QString Diagnose(const MarkedProperty& marked, QObject* form, const QString& defaultPackage)
{
    const MessageLog::Silence silence;
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    const Interpreter interpreter(nullptr, nullptr, nullptr);
    IParsingResult* result = nullptr;
    delete interpreter.CreateStatement(marked.text, data, nullptr, true, defaultPackage, marked.object, form, &result);
    const QScopedPointer<IParsingResult> owned(result);
    return result ? result->GetWarningMessages().join(' ') : QString("The statement is blank.");
}

} // namespace

FormSession::FormSession(const SessionFiles& files) : m_files(files)
{
    connect(&m_log, &MessageLog::Arrived, this, &FormSession::OnMessages);
    QCoreApplication::instance()->installEventFilter(this);
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
    m_text = text;
    m_variables.Load(data);
    Replace(form);
    return true;
}

void FormSession::Save(const QString& objectName)
{
    m_handler.Save(m_form, objectName);
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
    for (const BoundProperty& property : m_properties) {
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

/// A change of a variable reaches its declarations by queued calls; with each begins a turn.
bool FormSession::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MetaCall && qobject_cast<DeclProperty*>(watched))
        m_log.BeginTurn();
    return false;
}

void FormSession::Replace(QWidget* form)
{
    // What has been written until now is about the properties that go.
    m_log.Flush();
    Q_EMIT FormAboutToBeReplaced();
    Unbind();
    QWidget* const previous = m_form;
    m_form = form;
    Bind();
    WatchProperties();
    Q_EMIT FormReplaced();
    // Whoever calls may have been called by one of its widgets.
    if (previous)
        previous->deleteLater();
    m_handler.ConnectPropertyCrossReferences();
    m_log.BeginTurn();
    m_handler.Update();
}

void FormSession::Unbind()
{
    m_handler.Clear();
    m_probes.clear();
    m_properties.clear();
}

void FormSession::Bind()
{
    QSet<VariableIdentifier> identifiers;
    const QVector<MarkedProperty> marked = CollectMarkedProperties(m_form);
    for (const MarkedProperty& property : marked) {
        m_log.BeginTurn();
        switch (BindProperty(m_handler, m_form, property, m_files.defaultPackage)) {
        case BindingKind::Declaration:
            m_log.Attribute(m_properties.size());
            AddProperty(property);
            NoteReads(property.text, &identifiers);
            break;
        case BindingKind::Constant:
            break;
        case BindingKind::Refused:
            m_log.Note(QtWarningMsg,
                       QString("%1: %2 holds no text, so it is no statement.")
                           .arg(WidgetPath(property.object, m_form), property.name));
        }
    }
    m_variables.SetRead(identifiers);
}

void FormSession::AddProperty(const MarkedProperty& marked)
{
    const int position = m_properties.size();
    const QString diagnostic = Diagnose(marked, m_form, m_files.defaultPackage);
    m_properties.append({marked.object, PropertyInfo::ToNormal(marked.name), marked.text,
                         WidgetPath(marked.object, m_form), PropertyInfo::IsMutable(marked.name), -1, diagnostic});
    if (!diagnostic.isEmpty())
        m_log.Note(QtWarningMsg, diagnostic, position);
}

void FormSession::NoteReads(const QString& statement, QSet<VariableIdentifier>* identifiers) const
{
    const QVector<Reference> variables = StatementTokens(statement).Variables();
    for (const Reference& reference : variables)
        identifiers->insert(VariableIdentifier(reference.name, reference.Package(m_files.defaultPackage)));
}

void FormSession::WatchProperties()
{
    QSet<QPair<QObject*, QString>> watched;
    for (int i = 0; i < m_properties.size(); ++i) {
        BoundProperty& property = m_properties[i];
        // Of several declarations of one property, the handler connects the first.
        if (watched.contains({property.object, property.name}))
            continue;
        watched.insert({property.object, property.name});
        m_probes.push_back(std::make_unique<PropertyProbe>(&m_handler, property.object, property.name));
        const PropertyProbe* const probe = m_probes.back().get();
        if (probe->Counts())
            property.evaluations = 0;
        connect(probe, &PropertyProbe::Evaluated, this, [this, i] { OnEvaluated(i); });
        connect(probe, &PropertyProbe::Changed, this, [this, i] { Q_EMIT PropertyChanged(i); });
    }
}

void FormSession::OnEvaluated(int position)
{
    m_log.Attribute(position);
    ++m_properties[position].evaluations;
    Q_EMIT PropertyChanged(position);
}

void FormSession::OnMessages(QVector<LogMessage> messages)
{
    for (LogMessage& message : messages) {
        if (message.text.startsWith(CycleMessage))
            message.declaration = FindNamedBy(message.text);
        if (message.declaration < 0)
            continue;
        m_properties[message.declaration].diagnostic = message.text;
        Q_EMIT PropertyChanged(message.declaration);
    }
    Q_EMIT MessagesArrived(messages);
}

/// The only declaration of which the message speaks; -1 if there is no such one.
int FormSession::FindNamedBy(const QString& message) const
{
    int found = -1;
    for (int i = 0; i < m_properties.size(); ++i) {
        const BoundProperty& property = m_properties.at(i);
        if (!property.object
            || !message.endsWith(
                QString("\"%1#%2:%3\"")
                    .arg(property.object->metaObject()->className(), property.object->objectName(), property.name)))
            continue;
        if (found >= 0)
            return -1;
        found = i;
    }
    return found;
}
