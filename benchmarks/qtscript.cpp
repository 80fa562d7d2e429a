#include <QScriptEngine>
#include <QScriptProgram>
#include <functional>

#include "subject.h"

namespace {

/// A QScriptProgram for each binding, and a list of the bindings that read it for each variable, called at
/// once. Variables are global properties of the engine.
class Script : public Subject
{
public:
    void Define(const Variables& variables) override
    {
        const QVariantMap globals = ScriptGlobals(variables);
        for (auto it = globals.begin(); it != globals.end(); ++it)
            m_global.setProperty(it.key(), ToScript(it.value()));
        for (const Variable& variable : variables)
            m_names.append(variable.script);
        m_readers.resize(m_names.size());
    }

    Compiled Compile(const Statement& statement) override
    {
        return [this, program = QScriptProgram(statement.script)] { return m_engine.evaluate(program).toVariant(); };
    }

    void Load(const Form& form) override
    {
        if (form.kind == Form::Kind::Save) {
            LoadSave(form);
            return;
        }
        for (const Binding& binding : form.bindings) {
            if (form.kind == Form::Kind::Chain)
                m_global.setProperty(binding.target->objectName(), m_engine.newQObject(binding.target));
            const auto update = [this, &form, &binding, program = QScriptProgram(binding.script)] {
                binding.target->setProperty(form.property, m_engine.evaluate(program).toVariant());
            };
            for (const int variable : binding.reads)
                m_readers[variable].push_back(update);
            if (binding.source)
                QObject::connect(binding.source, &Item::ValueChanged, binding.target, update);
            update();
        }
    }

    void Change(int variable, const QVariant& value) override
    {
        m_global.setProperty(m_names[variable], ToScript(value));
        for (const std::function<void()>& update : m_readers[variable])
            update();
    }

    void Save(const Form&) override { m_engine.evaluate(m_save); }

    QVariant Value(int variable) const override { return m_global.property(m_names[variable]).toVariant(); }

private:
    void LoadSave(const Form& form)
    {
        QString text;
        for (int i = 0; i < int(form.bindings.size()); ++i) {
            QObject* const target = form.bindings[i].target;
            m_global.setProperty(target->objectName(), m_engine.newQObject(target));
            text += QString("%1 = %2.%3;\n").arg(m_names[i], target->objectName(), form.property);
        }
        m_save = QScriptProgram(text);
        m_engine.evaluate(m_save); // The first time compiles.
    }

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
    QStringList m_names;
    QScriptProgram m_save;                                     ///< One assignment for each target.
    std::vector<std::vector<std::function<void()>>> m_readers; ///< By variable.
};

const bool registered = RegisterSubject("QScriptProgram", MakeSubject<Script>);

} // namespace
