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

QVariant FormVariable::Retrieve() const
{
    return m_variable->Read();
}

bool FormVariable::Store(const QVariant& value)
{
    if (m_readOnly)
        return false;
    if (m_variable->Write(value))
        return true;
    Refuse(QStringLiteral("the data layer does not take it for \"%1\"").arg(m_variable->Identifier().GetName()));
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
    return m_access->ReadPlain(m_property->owner->object);
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
                   .arg(*m_property->name, DescribeObject(m_property->owner->object)));
        return false;
    }
    if (statement && currentReport)
        currentReport->written.push_back(statement);
    return Write(value);
}

bool FormProperty::Write(const QVariant& value)
{
    const QPointer<QObject> object = m_property->owner->object;
    const std::shared_ptr<const BoundAccess> access = m_access;
    const QString refusal = QStringLiteral("%1 of %2 does not take %3")
                                .arg(access->Name(), DescribeObject(object), FormValues::Describe(value));
    access->Write(object, value);
    if (object && access->Holds(object, access->Read(object), value))
        return true;
    Refuse(refusal);
    return false;
}
