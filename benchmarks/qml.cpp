#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExpression>
#include <deque>

#include "subject.h"

namespace {

/// What QML saves through, since it cannot assign to properties of its context.
class Writer : public QObject
{
    Q_OBJECT

public:
    explicit Writer(Subject& subject) : m_subject(subject) {}

    Q_INVOKABLE void Write(int variable, const QVariant& value) { m_subject.Change(variable, value); }

private:
    Subject& m_subject;
};

/// A QQmlExpression for each binding, which tells by a signal that its value has changed. Variables are
/// properties of the context. One more expression saves, a call for each target.
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
        if (form.kind == Form::Kind::Save) {
            LoadSave(form);
            return;
        }
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

    void Save(const Form&) override { m_expressions.back().evaluate(); }

    QVariant Value(int variable) const override { return m_context.contextProperty(m_names[variable]); }

private:
    void LoadSave(const Form& form)
    {
        QString text;
        m_context.setContextProperty("writer", &m_writer);
        for (int i = 0; i < int(form.bindings.size()); ++i) {
            QObject* const target = form.bindings[i].target;
            m_context.setContextProperty(target->objectName(), target);
            text += QString("writer.Write(%1, %2.%3);\n").arg(i).arg(target->objectName(), form.property);
        }
        m_expressions.emplace_back(&m_context, nullptr, text);
        m_expressions.back().evaluate(); // The first time compiles.
    }

    Writer m_writer{*this};
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

#include "qml.moc"
