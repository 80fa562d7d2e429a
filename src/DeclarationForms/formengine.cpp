#include "DeclarationForms/formengine.h"

#include <algorithm>

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formlog.h"
#include "DeclarationForms/formreferences.h"
#include "DeclarationForms/formvalues.h"
#include "DeclarationForms/formwalk.h"
#include "DeclarationForms/savepolicies.h"
#include "common/source/PlatformIndependent/constantmapparser.h"
#include "common/source/PlatformIndependent/propertyinfo.h"

namespace {

template<typename Value>
void AppendOnce(QVector<Value>* values, const Value& value)
{
    if (!values->contains(value))
        values->append(value);
}

BoundProperty Describe(const BoundStatement& statement)
{
    BoundProperty described;
    described.object = statement.object;
    described.property = *statement.marked;
    described.statement = statement.text;
    described.writable = statement.isWritable;
    described.value = statement.value;
    described.shown = statement.shown;
    described.edited = statement.isEdited;
    described.evaluations = statement.evaluations;
    for (const FormVariable* const variable : statement.compiled.variables)
        AppendOnce(&described.variables, variable->Variable()->Identifier());
    for (const FormProperty* const reference : statement.compiled.properties) {
        if (const WatchedProperty* const property = reference->Property())
            AppendOnce(&described.properties, qMakePair(QPointer<QObject>(property->owner->object), *property->name));
    }
    return described;
}

} // namespace

FormEngine::FormEngine(QObject* form, FormBinding* binding)
    : m_binding(binding),
      m_filter(this),
      m_state(form, binding, this, &m_filter, [this] { Deliver(); }),
      m_delivery(&m_state, &m_edits),
      m_saver(&m_state, &m_edits, &m_delivery),
      m_binder(&m_state, &m_edits, &m_delivery),
      m_translation(&m_state, &m_edits, &m_delivery, &m_binder)
{
    m_filter.SetForm(form);
}

FormEngine::~FormEngine() = default;

void FormEngine::Start()
{
    const std::weak_ptr<FormEngine> engine = shared_from_this();
    m_state.adapterChange = [engine](QObject* object, const QString& name) {
        const std::shared_ptr<FormEngine> self = engine.lock();
        WatchedObject* const watched = self ? self->m_state.objects.Find(object) : nullptr;
        if (WatchedProperty* const property = watched ? FormObjects::Find(watched, name) : nullptr)
            self->OnChanged(property);
    };
}

void FormEngine::Close()
{
    const FormState::Guard guard(&m_state);
    m_state.isClosed = true;
    m_filter.Close();
    m_binder.Unbind(nullptr);
    m_state.receiver.Close();
    m_state.gatherer.Close();
}

bool FormEngine::Bind(QObject* scope)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const FormState::Guard guard(&m_state, "Bind");
    const QPointer<QObject> guarded = scope;
    m_translation.Absorb();
    if (m_state.isClosed || (scope && !guarded))
        return false;
    QObject* const top = scope ? scope : m_state.form.data();
    const bool hasNoError
        = top ? m_binder.Bind(top) : m_binder.Bind(MarkedProperty{nullptr, QString(), QString()}, m_state.source);
    Run(false);
    Tell();
    return hasNoError;
}

bool FormEngine::Bind(QObject* object, const QString& property, const QString& statement, bool isDefault)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const FormState::Guard guard(&m_state, "Bind");
    if (isDefault && HasDeclaration(object, property))
        return true;
    const QPointer<QObject> guarded = object;
    m_translation.Absorb();
    if (m_state.isClosed || (object && !guarded))
        return false;
    const bool hasNoError = m_binder.Bind(MarkedProperty{object, property, statement}, m_state.source);
    // Paths may lead to what is below it.
    if (hasNoError && guarded && !(object->objectName().isEmpty() && object->children().isEmpty()))
        m_binder.ResolveAgain(object->children().isEmpty() ? object->objectName() : QString());
    Run(false);
    Tell();
    return hasNoError;
}

/// Whether the property, or the entry of a map, has its text already.
bool FormEngine::HasDeclaration(QObject* object, const QString& property)
{
    QString map;
    QString key;
    if (object && property.contains(QLatin1Char('[')) && ConstantMapParser::Parse(property, &map, &key))
        return object->property(map.toUtf8()).toMap().contains(key);
    return PropertyInfo::IsOvexProperty(property) && m_state.Find(object, PropertyInfo::ToNormal(property));
}

void FormEngine::Unbind(QObject* scope)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const FormState::Guard guard(&m_state, "Unbind");
    m_binder.Unbind(scope);
    Tell();
}

QVector<FormProblem> FormEngine::Problems(QObject* scope)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    StatementList::Statements faulty;
    m_state.problems.FindFaulty(scope, &faulty);
    std::vector<StandingProblem> found;
    for (const Statement& statement : faulty) {
        if (statement->refused)
            RefreshEdit(statement);
        found.insert(found.end(), statement->problems.begin(), statement->problems.end());
    }
    for (const StandingProblem& failed : m_state.problems.Failed()) {
        if (failed.problem.object && FormState::IsIn(failed.problem.object, scope))
            found.push_back(failed);
    }
    std::sort(found.begin(), found.end(),
              [](const StandingProblem& left, const StandingProblem& right) { return left.number < right.number; });
    QVector<FormProblem> problems;
    for (const StandingProblem& standing : found)
        problems.append(standing.problem);
    return problems;
}

QVector<BoundProperty> FormEngine::BoundProperties(QObject* scope)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    QVector<BoundProperty> properties;
    for (const Statement& statement : m_state.In(scope)) {
        RefreshEdit(statement);
        if (statement->property)
            properties.append(Describe(*statement));
    }
    TellSoon();
    return properties;
}

bool FormEngine::IsEdited(QObject* scope)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    m_translation.Absorb();
    bool isEdited = false;
    for (const Statement& statement : m_state.In(scope))
        isEdited = RefreshEdit(statement) || isEdited;
    TellSoon();
    return isEdited;
}

FormSaveResult FormEngine::Save(QObject* scope)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const FormState::Guard guard(&m_state, "Save");
    m_translation.Absorb();
    const QPointer<QObject> top = scope;
    const FormSaveResult result = m_saver.Save(m_edits.Candidates(scope), [top, scope](const QObject* object) {
        return (top || !scope) && FormState::IsIn(object, scope);
    });
    Tell();
    if (m_binding && !m_state.isClosed)
        Q_EMIT m_binding->Saved(result.saved);
    return result;
}

void FormEngine::Revert(QObject* scope)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const FormState::Guard guard(&m_state, "Revert");
    const QPointer<QObject> guarded = scope;
    m_translation.Absorb();
    if (m_state.isClosed || (scope && !guarded))
        return;
    for (const Statement& statement : m_state.In(scope))
        MarkForRevert(statement);
    Run(false);
    Tell();
}

void FormEngine::MarkForRevert(const Statement& statement)
{
    const QVariant held = statement->Read();
    if (!statement->property)
        return;
    const bool wasEdited = statement->isEdited;
    m_edits.End(statement);
    if (!wasEdited && FormValues::AreEqual(held, statement->shown))
        return;
    statement->isReverting = true;
    statement->isOverwritten = true;
    m_delivery.Mark(statement);
}

void FormEngine::Update()
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const FormState::Guard guard(&m_state, "Update");
    m_translation.Absorb();
    if (m_state.isClosed)
        return;
    m_translation.Apply();
    m_binder.ResolveAgain();
    for (const Statement& statement : m_state.In(nullptr))
        m_delivery.Mark(statement);
    Run(true);
    Tell();
}

void FormEngine::Deliver()
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const FormState::Guard guard(&m_state);
    m_translation.Absorb();
    if (m_state.isClosed)
        return;
    if (!m_delivery.IsWaiting() && !m_translation.HasTexts() && !m_state.gatherer.HasChanges()) {
        m_state.gatherer.Skip();
        return;
    }
    m_translation.Apply();
    Run(true);
    Tell();
}

void FormEngine::Run(bool withVariables)
{
    m_delivery.Run(withVariables);
    m_translation.Renew();
}

void FormEngine::OnChanged(WatchedProperty* property)
{
    const BoundStatement* const writer = m_delivery.Writer();
    if (writer && writer->property == property)
        return;
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const Statement statement = property->statement;
    m_delivery.MarkReaders(*property, writer);
    const bool isOwn = writer && writer->property && writer->property->owner == property->owner;
    if (!statement)
        return;
    ++statement->changes;
    statement->access->Mirror(statement->object);
    // What one write of a delivery does to a property that is still to be written is none of the user's.
    if (writer && statement->isDirty && !statement->isEdited) {
        statement->shown = statement->Read();
        return;
    }
    if (writer && !statement->isEdited)
        m_delivery.CheckTaken(statement);
    if (statement->isWritable && !isOwn && !m_translation.IsRunning())
        NoteEdit(statement);
}

void FormEngine::NoteEdit(const Statement& statement)
{
    const FormState::Guard guard(&m_state, "edit");
    m_edits.Touch(statement);
    const bool isEdited = RefreshEdit(statement);
    if (isEdited && statement->property) {
        const FormBinding::SavePolicy policy = SavePolicies::Of(statement->object, m_state.savePolicy);
        const bool isFinished = policy == FormBinding::SaveOnEditingFinished
            && (statement->property->isWatched || SavePolicies::IsConfirmedByChange(statement->object));
        if (policy == FormBinding::SaveAtOnce || isFinished)
            SaveByPolicy({statement});
        else if (policy == FormBinding::SaveOnEditingFinished)
            m_state.objects.WatchFinish(statement->property->owner);
    }
    Tell();
}

bool FormEngine::RefreshEdit(const Statement& statement)
{
    const bool wasEdited = statement->isEdited;
    const bool isEdited = m_edits.Refresh(statement);
    if (wasEdited && !isEdited)
        m_delivery.Mark(statement);
    return isEdited;
}

void FormEngine::OnFinished(WatchedObject* object)
{
    SaveFinished(object->object);
}

void FormEngine::OnLeft(QObject* object)
{
    if (!SavePolicies::TellsOfLeaving(object))
        SaveFinished(object);
}

void FormEngine::SaveFinished(QObject* object)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const WatchedObject* const watched = m_state.objects.Find(object);
    if (!watched || m_translation.IsRunning())
        return;
    std::vector<Statement> statements;
    for (const WatchedProperty& property : watched->properties) {
        if (property.statement && property.statement->isWritable)
            statements.push_back(property.statement);
    }
    std::vector<Statement> edited;
    for (const Statement& statement : statements) {
        if (RefreshEdit(statement) && statement->property
            && SavePolicies::Of(statement->object, m_state.savePolicy) != FormBinding::SaveOnRequest)
            edited.push_back(statement);
    }
    std::sort(edited.begin(), edited.end(),
              [](const Statement& left, const Statement& right) { return left->place < right->place; });
    if (!edited.empty())
        SaveByPolicy(edited);
    Tell();
}

void FormEngine::SaveByPolicy(const std::vector<Statement>& statements)
{
    const FormState::Guard guard(&m_state, "save by policy");
    const FormSaveResult result = m_saver.Save(statements, [this](const QObject* object) {
        return SavePolicies::Of(object, m_state.savePolicy) != FormBinding::SaveOnRequest;
    });
    Tell();
    if (result.saved > 0 && m_binding && !m_state.isClosed)
        Q_EMIT m_binding->Saved(result.saved);
}

void FormEngine::OnDestroyed(WatchedObject* object)
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    const FormState::Guard guard(&m_state, "object destroyed");
    m_binder.Forget(object);
    TellSoon();
}

void FormEngine::OnPropertySet(QObject* object, const QByteArray& name)
{
    if (FormWalk::IsMarked(name)) {
        m_translation.NoteText(object, name);
        m_state.gatherer.Schedule();
        return;
    }
    if (!FormWalk::IsFormat(name))
        return;
    const Statement statement = m_state.Find(object, FormWalk::FormattedBy(name));
    if (!statement)
        return;
    const QVariant held = statement->Read();
    if (!statement->property)
        return;
    statement->ReadFormat(held);
    statement->isOverwritten = true;
    m_delivery.Mark(statement);
}

/// Numbers are written in another way.
void FormEngine::OnLocaleChange(QObject* object)
{
    const WatchedObject* const watched = m_state.objects.Find(object);
    if (!watched)
        return;
    for (const WatchedProperty& property : watched->properties) {
        if (!property.statement || !property.statement->format)
            continue;
        property.statement->isOverwritten = true;
        m_delivery.Mark(property.statement);
    }
}

void FormEngine::OnLanguageChange()
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    m_translation.Begin();
    m_state.gatherer.Schedule();
}

void FormEngine::OnTurn()
{
    const std::shared_ptr<FormEngine> self = shared_from_this();
    if (m_translation.IsRunning())
        m_translation.End();
    Tell();
}

void FormEngine::Tell()
{
    FormProblem problem;
    while (m_binding && !m_state.isClosed && m_state.problems.TakeUntold(&problem)) {
        qCWarning(FormLog).noquote() << problem.message;
        Q_EMIT m_binding->ProblemFound(problem);
    }
    const bool isEdited = m_edits.HasEdits();
    if (!m_binding || m_state.isClosed || isEdited == m_toldEdited)
        return;
    m_toldEdited = isEdited;
    Q_EMIT m_binding->EditedChanged(isEdited);
}

void FormEngine::TellSoon()
{
    m_filter.PostTurn();
}
