#include "DeclarationForms/formreferences.h"

#include <QPointer>

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formlog.h"
#include "DeclarationForms/formvalues.h"
#include "DeclarationForms/watchedproperty.h"
#include "DeclarationForms/watchedvariable.h"

namespace {

thread_local StoreReport* currentReport = nullptr;

void Refuse(const QString& reason)
{
    if (currentReport)
        currentReport->refusal = reason;
}

} // namespace

StoreReport::StoreReport() : m_outer(currentReport)
{
    currentReport = this;
}

StoreReport::~StoreReport()
{
    currentReport = m_outer;
}

FormVariable::FormVariable(const std::shared_ptr<WatchedVariable>& variable, bool readOnly)
    : Expression(readOnly), m_variable(variable)
{
}

QVariant FormVariable::Retrieve() const
{
    return m_variable->Read();
}

bool FormVariable::Store(const QVariant& value)
{
    if (m_readOnly)
        return false;
    // A copy: whoever is notified may end the reference.
    const std::shared_ptr<WatchedVariable> variable = m_variable;
    if (variable->Write(value))
        return true;
    Refuse(QStringLiteral("the data layer does not take it for \"%1\"").arg(variable->Identifier().GetName()));
    return false;
}

FormProperty::FormProperty(const TextPlace& place, bool readOnly) : Expression(readOnly), m_place(place) {}

void FormProperty::SetProperty(WatchedProperty* property, const std::shared_ptr<const BoundAccess>& access)
{
    m_property = property;
    m_access = access;
}

QVariant FormProperty::Retrieve() const
{
    if (!m_property || m_property->IsAbsent())
        return QVariant();
    return m_access->ReadPlain(m_property->owner->object, m_property->name);
}

bool FormProperty::Store(const QVariant& value)
{
    if (m_readOnly)
        return false;
    if (!m_property || m_property->IsAbsent()) {
        Refuse(QStringLiteral("the object that it ends in is not there"));
        return false;
    }
    const std::shared_ptr<BoundStatement> statement = m_property->statement;
    if (statement && !statement->isWritable) {
        Refuse(QStringLiteral("it ends in %1 of %2, which only reads its statement")
                   .arg(m_property->name, DescribeObject(m_property->owner->object)));
        return false;
    }
    if (statement && currentReport)
        currentReport->written.push_back(statement);
    return Write(value);
}

bool FormProperty::Write(const QVariant& value)
{
    const QPointer<QObject> object = m_property->owner->object;
    const QString name = m_property->name;
    const std::shared_ptr<const BoundAccess> access = m_access;
    const QString refusal
        = QStringLiteral("%1 of %2 does not take %3").arg(name, DescribeObject(object), FormValues::Describe(value));
    access->Write(object, name, value);
    if (object && access->Holds(object, name, access->Read(object, name), value))
        return true;
    Refuse(refusal);
    return false;
}
