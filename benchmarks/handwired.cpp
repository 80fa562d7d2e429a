#include "handwired.h"

#include "item.h"

void HandWired::Define(const Variables& variables)
{
    for (const Variable& variable : variables) {
        m_names.push_back(variable.name);
        m_variables.push_back(std::make_unique<DataVariable>(variable.name));
        m_store.insert(variable.name, variable.value);
        Stored(int(m_names.size()) - 1, variable.value);
    }
}

void HandWired::Load(const Form& form)
{
    m_form = &form;
    if (form.kind == Form::Kind::Save)
        return;
    for (int i = 0; i < int(form.bindings.size()); ++i)
        Bind(form.bindings[i], MakeExpression(form, i));
}

void HandWired::Bind(const Binding& binding, Expression expression)
{
    const auto kept = std::make_shared<Expression>(std::move(expression));
    const auto update
        = [kept, target = binding.target, property = m_form->property] { target->setProperty(property, (*kept)()); };
    for (const int variable : binding.reads)
        QObject::connect(m_variables[variable].get(), &DataVariable::Changed, binding.target, update);
    if (binding.source)
        QObject::connect(static_cast<Item*>(binding.source), &Item::ValueChanged, binding.target, update);
    update();
}

void HandWired::Change(int variable, const QVariant& value)
{
    QVariant& stored = m_store[m_names[variable]];
    if (stored == value)
        return;
    stored = value;
    Stored(variable, value);
    Notify(variable);
}

void HandWired::Save()
{
    for (int i = 0; i < int(m_form->bindings.size()); ++i) {
        const QVariant value = m_form->bindings[i].target->property(m_form->property);
        m_store[m_names[i]] = value;
        Stored(i, value);
    }
}
