#include <QCoreApplication>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declarationhandler.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/interpreter.h"
#include "subject.h"

namespace {

class Library : public Subject
{
public:
    explicit Library(bool initialize = false) : m_initialize(initialize) {}

    void Define(const Variables& variables) override
    {
        for (const Variable& variable : variables) {
            m_identifiers.push_back(VariableIdentifier(variable.name, variable.package));
            Change(int(m_identifiers.size()) - 1, variable.value);
        }
    }

    Compiled Compile(const Statement& statement) override
    {
        const std::shared_ptr<IExpression> tree(m_interpreter.CreateStatement(
            statement.own, m_peer, nullptr, true, QString(), nullptr, TypicalForm(), nullptr));
        return [tree] { return tree ? tree->Retrieve() : QVariant(); };
    }

    void Load(const Form& form) override
    {
        const QString property = QString("_") + form.property;
        for (const Binding& binding : form.bindings)
            m_handler.AddDeclaration(form.top.get(), binding.target, property, binding.own, QString(), false,
                                     m_initialize);
        m_handler.ConnectPropertyCrossReferences();
        m_handler.Update();
    }

    void Change(int variable, const QVariant& value) override
    {
        m_peer->ChangeValue(m_identifiers[variable], value, IDataPeer::NoFlag);
    }
    void Deliver() override { QCoreApplication::processEvents(); }
    void Save(const Form&) override { m_handler.Save(nullptr, QString()); }
    QVariant Value(int variable) const override { return m_peer->GetValue(m_identifiers[variable], QVariant()); }

private:
    const bool m_initialize;
    IDataPeer* const m_peer = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    const Interpreter m_interpreter{nullptr, nullptr, nullptr};
    std::vector<VariableIdentifier> m_identifiers;
    DeclarationHandler m_handler;
};

/// Marks texts as missing until they have their first value, as hosts do that show the form meanwhile.
class InitializingLibrary : public Library
{
public:
    InitializingLibrary() : Library(true) {}
};

const bool registered = RegisterSubject("library", MakeSubject<Library>)
    && RegisterSubject("initializing", MakeSubject<InitializingLibrary>, "W3");

} // namespace
