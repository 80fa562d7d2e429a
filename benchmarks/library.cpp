#include "DeclarationHandler/declarationhandler.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/interpreter.h"
#include "peerdata.h"

namespace {

class Library : public PeerData
{
public:
    explicit Library(bool initialize = false) : m_initialize(initialize) {}

    Compiled Compile(const Statement& statement) override
    {
        const std::shared_ptr<IExpression> tree(m_interpreter.CreateStatement(
            statement.own, m_peer, nullptr, true, QString(), nullptr, TypicalForm(), nullptr));
        return [tree] { return tree ? tree->Retrieve() : QVariant(); };
    }

    void Load(const Form& form) override
    {
        const QString property = form.MarkedProperty();
        for (const Binding& binding : form.bindings)
            m_handler.AddDeclaration(form.top.get(), binding.target, property, binding.own, QString(), false,
                                     m_initialize);
        m_handler.ConnectPropertyCrossReferences();
        m_handler.Update();
    }

    void Save(const Form&) override { m_handler.Save(nullptr, QString()); }

private:
    const bool m_initialize;
    const Interpreter m_interpreter{nullptr, nullptr, nullptr};
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
