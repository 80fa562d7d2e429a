#ifndef FORMREFERENCES_H
#define FORMREFERENCES_H

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

#include "Common/textplace.h"
#include "DeclarationForms/boundaccess.h"
#include "DeclarationHandler/expression.h"

class BoundStatement;
class WatchedVariable;
struct WatchedProperty;

/// What the references of a statement say when a value is stored through it; current while this lives, in the
/// thread of the widgets.
class StoreReport
{
public:
    StoreReport();
    ~StoreReport();

    QString refusal; ///< Why a destination did not take the value; empty otherwise.
    std::vector<std::shared_ptr<BoundStatement>> written; ///< Whose properties were written.

private:
    Q_DISABLE_COPY(StoreReport)

    StoreReport* const m_outer;
};

/// A reference to a variable. Unlike the language's own it answers what the data layer answers to a write.
class FormVariable : public Expression
{
public:
    FormVariable(WatchedVariable* variable, bool readOnly) : Expression(readOnly), m_variable(variable) {}

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;

    WatchedVariable* Variable() const { return m_variable; }

    /// Of the statement; null for none.
    FormVariable* Next() const { return m_next; }
    void SetNext(FormVariable* next) { m_next = next; }
    BoundStatement* Statement() const { return m_statement; }
    void SetStatement(BoundStatement* statement) { m_statement = statement; }
    /// Among the readers of the variable.
    std::size_t Index() const { return m_index; }
    void SetIndex(std::size_t index) { m_index = static_cast<quint32>(index); }

private:
    quint32 m_index = 0; // Beside what the base class has.
    WatchedVariable* const m_variable;
    FormVariable* m_next = nullptr;
    BoundStatement* m_statement = nullptr;
};

/// A reference to a property of an object, which need not exist yet. It has no value while the path leads
/// nowhere, and while a property that was bound is not.
class FormProperty : public Expression
{
public:
    FormProperty(const TextPlace& place, bool readOnly);

    QVariant Retrieve() const override;
    /// Writes the property. Refused where the property is bound and its statement reads only.
    bool Store(const QVariant& value) override;

    /// Null while the path leads nowhere.
    WatchedProperty* Property() const { return m_property; }
    /// \a access is that of the property; null for none.
    void SetProperty(WatchedProperty* property, const std::shared_ptr<const BoundAccess>& access);
    /// In the statement.
    const TextPlace& Place() const { return m_place; }

    /// As for FormVariable.
    FormProperty* Next() const { return m_next; }
    void SetNext(FormProperty* next) { m_next = next; }
    BoundStatement* Statement() const { return m_statement; }
    void SetStatement(BoundStatement* statement) { m_statement = statement; }
    /// Among the readers of the property.
    std::size_t Index() const { return m_index; }
    void SetIndex(std::size_t index) { m_index = static_cast<quint32>(index); }

private:
    bool Write(const QVariant& value);

    quint32 m_index = 0;
    const TextPlace m_place;
    WatchedProperty* m_property = nullptr;
    std::shared_ptr<const BoundAccess> m_access;
    FormProperty* m_next = nullptr;
    BoundStatement* m_statement = nullptr;
};

#endif
