#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExpression>
#include <deque>

#include "subject.h"

namespace {

/// A QQmlExpression for each binding, which tells by a signal that its value has changed. Variables are
/// properties of the context.
class Qml : public Subject
{
public:
    void Define(const Variables& variables) override
    {
        const QVariantMap globals = ScriptGlobals(variables);
        for (auto it = globals.begin(); it != globals.end(); ++it)
            m_context.setContextProperty(it.key(), it.value());
        for (const Variable& variable : variables)
            m_names.append(variable.script);
    }

    Compiled Compile(const Statement& statement) override
    {
        const auto expression = std::make_shared<QQmlExpression>(&m_context, nullptr, statement.script);
        return [expression] { return expression->evaluate(); };
    }

    void Load(const Form& form) override
    {
        if (form.kind == Form::Kind::Save)
            return;
        for (const Binding& binding : form.bindings) {
            if (form.kind == Form::Kind::Chain)
                m_context.setContextProperty(binding.target->objectName(), binding.target);
            m_expressions.emplace_back(&m_context, nullptr, binding.script);
            QQmlExpression* const expression = &m_expressions.back();
            const auto update = [expression, target = binding.target, property = form.property] {
                target->setProperty(property, expression->evaluate());
            };
            expression->setNotifyOnValueChanged(true);
            QObject::connect(expression, &QQmlExpression::valueChanged, binding.target, update);
            update();
        }
    }

    void Change(int variable, const QVariant& value) override
    {
        m_context.setContextProperty(m_names[variable], value);
    }

    QVariant Value(int variable) const override { return m_context.contextProperty(m_names[variable]); }

private:
    QQmlEngine m_engine;
    // One value held for good, as any form has: else the engine sets up and takes down its store of such
    // values for each expression.
    const QJSValue m_kept = m_engine.newObject();
    QQmlContext m_context{&m_engine};
    QStringList m_names;
    std::deque<QQmlExpression> m_expressions;
};

const bool registered = RegisterSubject("QQmlExpression", MakeSubject<Qml>);

} // namespace
