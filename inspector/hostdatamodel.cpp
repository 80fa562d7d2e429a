#include "hostdatamodel.h"

#include <utility>

#include "DataLayer/idatapeer.h"
#include "inspectedform.h"
#include "qtversion.h"

namespace {

/// Gives the value the type of another one; false where that would lose something.
bool ConvertLike(const QVariant& present, QVariant* value)
{
    if (!present.isValid() || !value->isValid() || present.userType() == value->userType())
        return true;
    QVariant converted = *value;
    if (!QtVersion::Convert(&converted, present.userType()))
        return false;
    QVariant back = converted;
    if (!QtVersion::Convert(&back, value->userType()) || back != *value)
        return false;
    *value = converted;
    return true;
}

} // namespace

HostDataModel::HostDataModel(InspectedForm* form) : m_form(form), m_variables(form->Variables())
{
    connect(form, &DeclarationSource::Replaced, this, &HostDataModel::TakeVariables);
}

/// Where they are the same, an editor that is open stays.
void HostDataModel::TakeVariables()
{
    const QVector<VariableIdentifier> variables = m_form->Variables();
    if (variables == m_variables)
        return;
    beginResetModel();
    m_variables = variables;
    m_texts.clear();
    endResetModel();
}

void HostDataModel::Refresh()
{
    const QStringList before = std::exchange(m_texts, Texts());
    for (int row = 0; row < m_texts.size(); ++row) {
        if (before.value(row) != m_texts.at(row))
            Q_EMIT dataChanged(index(row, Value), index(row, Value));
    }
}

QStringList HostDataModel::Texts() const
{
    QStringList texts;
    for (int row = 0; row < m_variables.size(); ++row)
        texts.append(data(index(row, Value)).toString());
    return texts;
}

int HostDataModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_variables.size();
}

int HostDataModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant HostDataModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles{"Package", "Name", "Value"};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? titles.value(section) : QVariant();
}

QVariant HostDataModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole)
        return QVariant();
    const VariableIdentifier& identifier = m_variables.at(index.row());
    if (index.column() == Package)
        return identifier.GetPackage();
    if (index.column() == Name)
        return identifier.GetName();
    IDataPeer* const data = m_form->Data();
    const QVariant value = data ? data->GetValue(identifier, QVariant()) : QVariant();
    return value.isValid() || role == Qt::EditRole ? ValueToText(value) : QString("missing");
}

Qt::ItemFlags HostDataModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == Value ? flags | Qt::ItemIsEditable : flags;
}

bool HostDataModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    IDataPeer* const data = m_form->Data();
    // Leaving the field without a change must not turn a value that JSON does not know into a text.
    if (role != Qt::EditRole || index.column() != Value || !data
        || value.toString() == this->data(index, Qt::EditRole).toString())
        return false;
    const VariableIdentifier identifier = m_variables.at(index.row());
    QVariant read;
    QString error;
    if (!ValueFromText(value.toString(), &read, &error)) {
        Q_EMIT Refused(QString("%1 keeps its value: %2").arg(identifier.GetName(), error));
        return false;
    }
    if (!ConvertLike(data->GetValue(identifier, QVariant()), &read)) {
        Q_EMIT Refused(QString("%1 keeps its value: it is of another type").arg(identifier.GetName()));
        return false;
    }
    if (data->ChangeValue(identifier, read, IDataPeer::NoFlag))
        return true;
    Q_EMIT Refused(QString("%1 keeps its value: the host refuses it").arg(identifier.GetName()));
    return false;
}
