#include "DeclarationHandler/Expressions/exprarray.h"

#include <QDebug>

#include "Common/qtcompat.h"
#include "DeclarationHandler/evaluationlistener.h"

namespace {

/// Whether there is someone to tell, instead of the debug stream.
bool IsTold(const IExpression& node, EvaluationListener::Problem problem, const QVariant& value)
{
    EvaluationListener* const listener = EvaluationListener::GetCurrent();
    if (listener)
        listener->OnEvaluationProblem(node, problem, value);
    return listener;
}

} // namespace

ExprArray::ExprArray(IExpression* collection, IExpression* index, bool readOnly)
    : BinaryExpression(collection, index, readOnly)
{
}

QVariant ExprArray::Retrieve() const
{
    if (!m_left)
        return QVariant();
    QVariant result;
    const QVariant collection = m_left->Retrieve();
    if (QtCompat::CanConvert(collection, QMetaType::QVariantList))
        RetrieveFromList(result, collection);
    else if (QtCompat::CanConvert(collection, QMetaType::QVariantMap))
        RetrieveFromMap(result, collection);
    else if (collection.isValid() && !IsTold(*this, EvaluationListener::NoCollection, collection))
        qDebug() << "Retrieve"
                 << ": Failed to evaluate ExprArray! Collection has unknown type:" << collection;
    return result;
}

bool ExprArray::Store(const QVariant& value)
{
    if (m_readOnly || !m_left || !m_right)
        return false;
    QVariantList list = QtCompat::ToList(m_left->Retrieve());
    bool isInteger = false;
    const int index = QtCompat::ToInt(m_right->Retrieve(), &isInteger);
    if (!isInteger || index < 0 || index >= list.size())
        return false;
    list[index] = value;
    return m_left->Store(list);
}

bool ExprArray::RetrieveFromMap(QVariant& result, const QVariant& collection) const
{
    if (!m_right || QtCompat::IsNull(collection))
        return false;
    const QVariantMap map = collection.toMap();
    const QVariant key = m_right->Retrieve();
    if (QtCompat::IsNull(key))
        return false;
    const QString name = QtCompat::ToString(key);
    if (name.trimmed().isEmpty()) {
        if (!IsTold(*this, EvaluationListener::InvalidKey, key)) {
            qDebug() << "RetrieveFromMap"
                     << ": Map key is not valid! Key:" << key;
        }
        return false;
    }
    result = map.value(name);
    return !QtCompat::IsNull(result);
}

bool ExprArray::RetrieveFromList(QVariant& result, const QVariant& collection) const
{
    if (!m_right || QtCompat::IsNull(collection))
        return false;
    const QVariantList list = QtCompat::ToList(collection);
    const QVariant subscript = m_right->Retrieve();
    if (QtCompat::IsNull(subscript))
        return false;
    bool isInteger = false;
    const int index = QtCompat::ToInt(subscript, &isInteger);
    if (!isInteger) {
        if (!IsTold(*this, EvaluationListener::IndexNotInteger, subscript)) {
            qDebug() << "RetrieveFromList"
                     << ": Index expression is not integer! Index:" << subscript;
        }
        return false;
    }
    if (index < 0 || index >= list.count()) {
        if (!IsTold(*this, EvaluationListener::IndexOutOfBounds, subscript)) {
            qDebug() << "RetrieveFromList"
                     << ": Index out of bounds! Index:" << index;
        }
        return false;
    }
    result = list.at(index);
    return true;
}
