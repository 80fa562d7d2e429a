#include <QScriptEngine>
#include <QScriptProgram>

#include "handwired.h"

namespace {

class CompiledProgram : public Compiled
{
public:
    CompiledProgram(QScriptEngine& engine, const QString& script) : m_engine(engine), m_program(script) {}
    QVariant Evaluate() override { return m_engine.evaluate(m_program).toVariant(); }

private:
    QScriptEngine& m_engine;
    const QScriptProgram m_program;
};

/// A QScriptProgram for each binding, wired by hand. Variables are global properties of the engine.
class Script : public HandWired
{
public:
    void Define(const Variables& variables) override
    {
        HandWired::Define(variables);
        const QVariantMap globals = ScriptGlobals(variables);
        for (auto it = globals.begin(); it != globals.end(); ++it)
            m_global.setProperty(it.key(), ToScript(it.value()));
    }

    std::unique_ptr<Compiled> Compile(const Statement& statement) override
    {
        return std::make_unique<CompiledProgram>(m_engine, statement.script);
    }

    void Load(const Form& form) override
    {
        for (const Binding& binding : form.bindings) {
            if (form.kind == Form::Kind::Chain)
                m_global.setProperty(binding.target->objectName(), m_engine.newQObject(binding.target));
        }
        HandWired::Load(form);
    }

protected:
    Expression MakeExpression(const Form& form, int binding) override
    {
        return [this, program = QScriptProgram(form.bindings[binding].script)] {
            return m_engine.evaluate(program).toVariant();
        };
    }

    void Stored(int variable, const QVariant& value) override
    {
        m_global.setProperty(m_names[variable].name, ToScript(value));
    }

private:
    QScriptValue ToScript(const QVariant& value)
    {
        if (value.userType() == QMetaType::Double)
            return value.toDouble();
        if (value.userType() == QMetaType::QString)
            return value.toString();
        // Inside of a list all types become what they are in the script.
        return m_engine.toScriptValue(QVariantList{value}).property(0);
    }

    QScriptEngine m_engine;
    QScriptValue m_global = m_engine.globalObject();
};

const bool registered = RegisterSubject("QScriptProgram", MakeSubject<Script>);

} // namespace
