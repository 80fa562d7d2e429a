#ifndef HANDWIRED_H
#define HANDWIRED_H

#include <functional>

#include "subject.h"

/// Announces the changes of one variable.
class DataVariable : public QObject
{
    Q_OBJECT

public:
    explicit DataVariable(const DataName& name) : m_name(name) {}
    void Notify() { Q_EMIT Changed(m_name); }

Q_SIGNALS:
    void Changed(const DataName& name);

private:
    const DataName m_name;
};

/// Bindings wired by hand: a hash of values, an object with a signal for each variable, and a
/// connection for each variable that a binding reads. Delivers at once.
class HandWired : public Subject
{
public:
    void Define(const Variables& variables) override;
    void Load(const Form& form) override;
    void Change(int variable, const QVariant& value) override;
    void Save() override;
    QVariant Value(int variable) const override { return m_store.value(m_names[variable]); }

protected:
    using Expression = std::function<QVariant()>;

    /// What the binding's statement says.
    virtual Expression MakeExpression(const Form& form, int binding) = 0;
    virtual void Bind(const Binding& binding, Expression expression);
    virtual void Notify(int variable) { m_variables[variable]->Notify(); }
    /// A variable has got a value, which an evaluator may want to hold itself.
    virtual void Stored(int, const QVariant&) {}

    const Form* m_form = nullptr;
    QHash<DataName, QVariant> m_store;
    std::vector<DataName> m_names;

private:
    std::vector<std::unique_ptr<DataVariable>> m_variables;
};

#endif
