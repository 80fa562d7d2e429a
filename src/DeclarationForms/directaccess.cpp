#include "DeclarationForms/directaccess.h"

#include <QMetaProperty>
#include <QMetaType>
#include <QObject>
#include <QString>

namespace {

/// What a meta object leaves where it follows the usual convention: others answer with it.
const int Untouched = -1;

bool IsFrequent(int type)
{
    return type == QMetaType::QString || type == QMetaType::Double || type == QMetaType::Int || type == QMetaType::Bool;
}

template<typename Value>
bool ReadAs(const QObject* object, int index, QVariant* result)
{
    Value value = Value();
    int status = Untouched;
    void* arguments[] = {&value, result, &status};
    QMetaObject::metacall(const_cast<QObject*>(object), QMetaObject::ReadProperty, index, arguments);
    if (status != Untouched || arguments[0] != &value)
        return false;
    QVariant read(value);
    result->swap(read);
    return true;
}

template<typename Value>
bool WriteAs(QObject* object, int index, const QVariant& value)
{
    // A copy: the property may take it by a reference that is not constant.
    Value copy = *static_cast<const Value*>(value.constData());
    QVariant boxed = value;
    int status = Untouched;
    int flags = 0;
    void* arguments[] = {&copy, &boxed, &status, &flags};
    QMetaObject::metacall(object, QMetaObject::WriteProperty, index, arguments);
    return status != 0;
}

} // namespace

DirectAccess::DirectAccess(const QMetaProperty& property)
    : m_type(QMetaType::UnknownType), m_index(property.propertyIndex())
{
    const bool isAccessible = property.isReadable() && property.isWritable();
    if (isAccessible && !property.isEnumType() && IsFrequent(property.userType()))
        m_type = property.userType();
}

bool DirectAccess::Read(const QObject* object, QVariant* result) const
{
    switch (m_type) {
    case QMetaType::QString:
        return ReadAs<QString>(object, m_index, result);
    case QMetaType::Double:
        return ReadAs<double>(object, m_index, result);
    case QMetaType::Int:
        return ReadAs<int>(object, m_index, result);
    case QMetaType::Bool:
        return ReadAs<bool>(object, m_index, result);
    default:
        return false;
    }
}

bool DirectAccess::Write(QObject* object, const QVariant& value, bool* isTaken) const
{
    if (value.userType() != m_type)
        return false;
    switch (m_type) {
    case QMetaType::QString:
        *isTaken = WriteAs<QString>(object, m_index, value);
        return true;
    case QMetaType::Double:
        *isTaken = WriteAs<double>(object, m_index, value);
        return true;
    case QMetaType::Int:
        *isTaken = WriteAs<int>(object, m_index, value);
        return true;
    case QMetaType::Bool:
        *isTaken = WriteAs<bool>(object, m_index, value);
        return true;
    default:
        return false;
    }
}
