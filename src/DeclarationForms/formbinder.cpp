#include "DeclarationForms/formbinder.h"

#include <algorithm>
#include <utility>

#include "DeclarationForms/adapterregistry.h"
#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formdelivery.h"
#include "DeclarationForms/formedits.h"
#include "DeclarationForms/formobserver.h"
#include "DeclarationForms/formreferences.h"
#include "DeclarationForms/formstate.h"
#include "DeclarationForms/formwalk.h"
#include "DeclarationForms/watchedproperty.h"
#include "common/source/PlatformIndependent/constantmapparser.h"
#include "common/source/PlatformIndependent/propertyinfo.h"

namespace {

bool IsText(const QVariant& value)
{
    return value.userType() == QMetaType::QString;
}

} // namespace

FormBinder::FormBinder(FormState* state, FormEdits* edits, FormDelivery* delivery)
    : m_state(*state), m_edits(*edits), m_delivery(*delivery), m_compiler(&state->variables)
{
}

bool FormBinder::Bind(QObject* scope)
{
    bool hasNoError = true;
    FormWalk::Visit(scope, [this, &hasNoError](QObject* object) {
        hasNoError = BindMarked(object) && hasNoError;
        return !m_state.isClosed;
    });
    ResolveAgain();
    m_paths.Clear();
    return hasNoError && !m_state.isClosed;
}

bool FormBinder::BindMarked(QObject* object)
{
    const MarkedProperties properties = FormWalk::MarkedOf(object);
    if (properties.empty())
        return true;
    // What is read and told here may destroy it.
    m_state.objects.Watch(object);
    bool hasNoError = true;
    QSet<QString> names;
    for (const MarkedProperty& property : properties) {
        if (m_state.isClosed || !m_state.objects.Find(object))
            break;
        const QString name = NormalName(property.name);
        const bool isDuplicate = names.contains(name);
        if (properties.size() > 1)
            names.insert(name);
        if (isDuplicate)
            TellDuplicate(property);
        hasNoError = !isDuplicate && Bind(property, m_state.source) && hasNoError;
    }
    return hasNoError;
}

/// The name without its marker. Neighbours in a form are often marked alike.
QString FormBinder::NormalName(const QString& marked)
{
    if (marked != m_lastMarked) {
        m_lastMarked = marked;
        m_lastNormal = PropertyInfo::ToNormal(marked);
    }
    return m_lastNormal;
}

bool FormBinder::Bind(const MarkedProperty& property, quint16 source)
{
    QString map;
    QString key;
    const bool hasIndex = property.name.contains(QLatin1Char('['));
    if (hasIndex && property.object && IsText(property.text) && ConstantMapParser::Parse(property.name, &map, &key)) {
        PutConstant(property.object, map, key, property.text.toString());
        m_state.problems.RemoveFailed(property.object, property.name);
        return true;
    }
    const QString name = NormalName(property.name);
    if (!Check(property, name))
        return false;
    const Access access = m_state.objects.Access(property.object, name);
    if (!access->IsWritable())
        return Fail(property, FormProblem::ReadOnlyProperty, QStringLiteral("the property cannot be written"));
    m_state.objects.Watch(property.object);
    // First, while nothing is made that the host's code may take away.
    const QVariant held = access->Read(property.object);
    if (m_state.isClosed || !m_state.objects.Find(property.object))
        return !m_state.isClosed;
    CompiledStatement compiled;
    StatementCompiler::Fault fault;
    const bool isReadOnly = PropertyInfo::IsReadOnly(property.name);
    const VariableSource& variables = m_state.sources[source];
    if (!m_compiler.Compile(property.text.toString(), FormState::PeerOf(variables), variables.package, isReadOnly,
                            &compiled, &fault))
        return Fail(property, fault.kind, fault.reason, fault.place);
    const Statement statement = Prepare(property, name, access, held);
    statement->source = source;
    Install(property, statement, &compiled, held);
    return true;
}

void FormBinder::TellDuplicate(const MarkedProperty& property)
{
    Fail(property, FormProblem::Duplicate, QStringLiteral("the property has another statement already"));
}

bool FormBinder::Fail(const MarkedProperty& property, FormProblem::Kind kind, const QString& reason,
                      const TextPlace& place)
{
    // Nobody tells when the object is destroyed.
    m_state.objects.ForgetClasses();
    if (property.object)
        m_state.objects.WatchTexts(property.object);
    m_state.problems.AddFailed(
        ProblemBook::Make(property.object, property.name, property.text.toString(), kind, reason, place));
    return false;
}

/// Whether the declaration could be bound, whatever its statement.
bool FormBinder::Check(const MarkedProperty& property, const QString& name)
{
    if (!property.object)
        return Fail(property, FormProblem::NotAStatement, QStringLiteral("there is no object to bind"));
    if (!PropertyInfo::IsOvexProperty(property.name) || name.isEmpty())
        return Fail(property, FormProblem::NotAStatement, QStringLiteral("the name is not one behind a marker"));
    if (property.name.contains(QChar(QChar::ReplacementCharacter)))
        return Fail(property, FormProblem::NotAStatement, QStringLiteral("the name is not in UTF-8"));
    if (!IsText(property.text))
        return Fail(property, FormProblem::NotAStatement, QStringLiteral("what it holds is no text"));
    return true;
}

void FormBinder::Install(const MarkedProperty& property, const Statement& statement, CompiledStatement* compiled,
                         const QVariant& held)
{
    m_state.problems.RemoveFailed(property.object, property.name);
    CompiledStatement replaced = std::exchange(statement->compiled, std::move(*compiled));
    const QString text = property.text.toString();
    if (statement->text != text || (statement->marked && *statement->marked != property.name))
        statement->problems.clear();
    statement->text = text;
    statement->marked = m_state.objects.Share(property.name);
    statement->isWritable = !PropertyInfo::IsReadOnly(property.name);
    if (property.mayHaveFormat)
        statement->ReadFormat(held);
    else
        statement->format.reset();
    Attach(statement);
    // After that, so that variables that both read stay subscribed to.
    Detach(replaced);
    if (replaced.tree)
        m_state.replaced.push_back(std::move(replaced));
    if (statement->property->isUnknown)
        m_state.problems.Add(statement, FormProblem::UnknownProperty, 0,
                             QStringLiteral("the object has no such property; it becomes a dynamic one"));
    if (!statement->isWritable)
        m_edits.End(statement);
    else if (!statement->property->hasNotifier)
        WatchUntold(statement);
    TellBound();
    m_delivery.Mark(statement);
}

/// Not what a binding unbinds that is gone for its observer.
void FormBinder::TellBound() const
{
    FormObserver* const observer = FormObserver::Installed();
    if (observer && !m_state.isClosed)
        observer->OnBound(m_state.binding);
}

/// Nothing tells of its edits but the end of editing, if that does.
void FormBinder::WatchUntold(const Statement& statement)
{
    m_edits.AddUnwatched(statement);
    m_state.objects.WatchFinish(statement->property->owner);
}

/// The statement of the property, which is bound from now on.
FormBinder::Statement FormBinder::Prepare(const MarkedProperty& property, const QString& name, const Access& access,
                                          const QVariant& held)
{
    WatchedProperty* const watched = m_state.objects.Get(property.object, name);
    if (watched->statement)
        return watched->statement;
    const Statement statement = std::make_shared<BoundStatement>(watched, access);
    if (!watched->wasBound) {
        watched->isUnknown = !access->Exists(property.object);
        watched->original = held;
        watched->wasBound = true;
    }
    statement->place = ++m_state.lastPlace;
    watched->statement = statement;
    m_state.statements.push_back(statement);
    m_state.objects.CountBound(watched->owner, 1);
    Watch(watched, *access);
    statement->isRead = !watched->readers.empty();
    m_delivery.MarkReaders(*watched, nullptr);
    return statement;
}

void FormBinder::Watch(WatchedProperty* property, const BoundAccess& access)
{
    if (property->slot >= 0 || property->isWatched)
        return;
    QObject* const object = property->owner->object;
    property->slot = m_state.receiver.WatchChanges(property, access.NotifySignal());
    const PropertyAdapter* const adapter = access.Adapter();
    if (property->slot < 0 && adapter && adapter->watch) {
        property->isWatched = true;
        const QPointer<QObject> guarded = object;
        adapter->watch(object, [changed = m_state.adapterChange, guarded, name = *property->name] {
            if (guarded)
                changed(guarded, name);
        });
    }
    property->hasNotifier = property->slot >= 0 || property->isWatched;
}

/// An adapter tells of changes for as long as the object lives.
void FormBinder::Unwatch(WatchedProperty* property)
{
    m_state.receiver.Forget(property->slot);
    property->slot = -1;
    property->hasNotifier = property->isWatched;
}

void FormBinder::PutConstant(QObject* object, const QString& map, const QString& key, const QString& value)
{
    const QByteArray name = map.toUtf8();
    QVariantMap entries = object->property(name).toMap();
    entries.insert(key, value);
    object->setProperty(name, entries);
    WatchedObject* const watched = m_state.objects.Find(object);
    if (const WatchedProperty* const property = watched ? FormObjects::Find(watched, map) : nullptr)
        m_delivery.MarkReaders(*property, nullptr);
}

void FormBinder::Attach(const Statement& statement)
{
    for (FormVariable* const variable : statement->compiled.variables) {
        variable->SetStatement(statement.get());
        WatchedVariables::Add(variable->Variable(), variable);
    }
    for (FormProperty* const reference : statement->compiled.properties)
        reference->SetStatement(statement.get());
    Resolve(statement);
    if (m_state.order.HasCircles())
        m_state.order.Invalidate();
    m_state.order.Append(statement.get());
}

void FormBinder::Detach(const CompiledStatement& compiled)
{
    for (FormVariable* const variable : compiled.variables)
        m_state.variables.Remove(variable->Variable(), variable);
    for (FormProperty* const reference : compiled.properties)
        FormObjects::RemoveReader(reference);
}

/// Connects the references whose paths lead somewhere. Answers whether there was one to connect.
bool FormBinder::Resolve(const Statement& statement)
{
    bool hasUnresolved = false;
    bool hasResolved = false;
    QStringList path;
    QString name;
    for (FormProperty* const reference : statement->compiled.properties) {
        if (reference->Property())
            continue;
        const TextPlace& place = reference->Place();
        StatementCompiler::SplitReference(statement->text.mid(place.offset, place.length), &path, &name);
        QObject* const object = m_paths.Find(path, statement->object, m_state.form);
        hasResolved = hasResolved || object;
        hasUnresolved = hasUnresolved || !object;
        if (!object)
            continue;
        WatchedProperty* const property = m_state.objects.Get(object, name);
        m_state.objects.AddReader(property, reference);
        Watch(property, *m_state.objects.Access(object, name));
    }
    TellPaths(statement);
    if (hasUnresolved)
        NoteUnresolved(statement);
    return hasResolved;
}

/// Told by their places, each once.
void FormBinder::TellPaths(const Statement& statement)
{
    for (const FormProperty* const reference : statement->compiled.properties) {
        const TextPlace& place = reference->Place();
        if (reference->Property()) {
            ProblemBook::Remove(statement.get(), FormProblem::UnknownObject, place.offset);
            continue;
        }
        const QString path = statement->text.mid(place.offset, place.length);
        m_state.problems.Add(statement, FormProblem::UnknownObject, place.offset,
                             QStringLiteral("the path in \"%1\" leads to no object").arg(path), place);
    }
}

void FormBinder::NoteUnresolved(const Statement& statement)
{
    if (statement->isUnresolved)
        return;
    statement->isUnresolved = true;
    m_unresolved.push_back(statement);
}

void FormBinder::ResolveAgain(const QString& name)
{
    std::vector<std::weak_ptr<BoundStatement>> unresolved;
    unresolved.swap(m_unresolved);
    for (const std::weak_ptr<BoundStatement>& known : unresolved) {
        const Statement statement = known.lock();
        if (!statement || !statement->property)
            continue;
        statement->isUnresolved = false;
        if (!name.isEmpty() && !statement->text.contains(name)) {
            NoteUnresolved(statement);
        } else if (Resolve(statement)) {
            m_state.order.Invalidate();
            m_delivery.Mark(statement);
        }
    }
}

void FormBinder::Unbind(const QObject* scope)
{
    for (const Statement& statement : m_state.In(scope)) {
        if (statement->property)
            Unbind(statement);
    }
    const auto isMeant = [scope](const QObject* object) { return FormState::IsIn(object, scope); };
    m_state.problems.RemoveFailed(isMeant);
    m_state.objects.IgnoreTexts(isMeant);
}

void FormBinder::Unbind(const Statement& statement)
{
    WatchedProperty* const property = statement->property;
    m_edits.Set(statement, false);
    Detach(statement->compiled);
    statement->problems.clear();
    property->statement = nullptr;
    statement->property = nullptr;
    ++m_state.unboundCount;
    m_state.replaced.push_back(std::move(statement->compiled));
    m_state.objects.CountBound(property->owner, -1);
    if (property->readers.empty())
        Unwatch(property);
    m_delivery.MarkReaders(*property, nullptr);
    if (m_state.order.HasCircles())
        m_state.order.Invalidate();
    m_state.Compact();
    TellBound();
}

void FormBinder::Forget(const WatchedObject* object)
{
    FormObjects::Objects::node_type taken = m_state.objects.Take(object);
    WatchedObject* const gone = &taken.mapped();
    if (gone->hasUnbound)
        m_state.problems.RemoveFailed([](const QObject*) { return false; });
    for (WatchedProperty& property : gone->properties) {
        property.slot = -1;
        const Statement statement = property.statement;
        if (!statement)
            continue;
        Unbind(statement);
        statement->object = nullptr;
    }
    for (const WatchedProperty& property : gone->properties) {
        while (!property.readers.empty()) {
            FormProperty* const reader = property.readers.back();
            const Statement statement = reader->Statement()->property->statement;
            FormObjects::RemoveReader(reader);
            TellPaths(statement);
            NoteUnresolved(statement);
            m_delivery.Mark(statement);
        }
    }
}
