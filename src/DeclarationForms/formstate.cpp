#include "DeclarationForms/formstate.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "DataLayer/idatapeerfactory.h"
#include "DeclarationForms/boundstatement.h"

namespace {

const quint16 MaxSource = std::numeric_limits<quint16>::max();

} // namespace

FormState::FormState(QObject* formObject, FormBinding* formBinding, SignalReceiver::Listener* listener, QObject* filter,
                     std::function<void()> deliver)
    : form(formObject),
      binding(formBinding),
      gatherer(std::move(deliver)),
      variables(&gatherer),
      receiver(listener),
      objects(&receiver, filter)
{
}

bool FormState::IsIn(const QObject* object, const QObject* scope)
{
    if (!scope)
        return true;
    while (object && object != scope)
        object = object->parent();
    return object;
}

FormState::Statements FormState::In(const QObject* scope) const
{
    Statements found;
    found.reserve(scope ? 0 : statements.size());
    for (const std::shared_ptr<BoundStatement>& statement : statements) {
        if (statement->property && IsIn(statement->object, scope))
            found.push_back(statement);
    }
    return found;
}

std::shared_ptr<BoundStatement> FormState::Find(const QObject* object, const QString& name)
{
    WatchedObject* const watched = objects.Find(object);
    const WatchedProperty* const property = watched ? FormObjects::Find(watched, name) : nullptr;
    return property ? property->statement : nullptr;
}

void FormState::SetSource(const VariableSource& wanted)
{
    const auto found = std::find_if(sources.begin(), sources.end(), [&wanted](const VariableSource& known) {
        return known.peer == wanted.peer && known.package == wanted.package;
    });
    source = static_cast<quint16>(found - sources.begin());
    if (found != sources.end())
        return;
    // More are not told apart.
    if (sources.size() > MaxSource)
        sources[source = MaxSource] = wanted;
    else
        sources.push_back(wanted);
}

IDataPeer* FormState::PeerOf(const VariableSource& source)
{
    if (source.peer)
        return source.peer;
    IDataPeerFactory* const factory = Ovex_DataPeerFactory(false);
    return factory ? factory->GetDataPeer(0) : nullptr;
}

void FormState::Compact()
{
    if (unboundCount * 2 <= static_cast<int>(statements.size()))
        return;
    const auto isUnbound = [](const std::shared_ptr<BoundStatement>& statement) { return !statement->property; };
    statements.erase(std::remove_if(statements.begin(), statements.end(), isUnbound), statements.end());
    unboundCount = 0;
}

FormState::Guard::Guard(FormState* state, const char* call) : m_state(*state), m_outerCall(state->call)
{
    ++m_state.depth;
    if (call)
        m_state.call = call;
}

FormState::Guard::~Guard()
{
    m_state.call = m_outerCall;
    if (--m_state.depth > 0)
        return;
    // Deleting nodes runs nothing of the host.
    m_state.replaced.clear();
    m_state.variables.Release();
}
