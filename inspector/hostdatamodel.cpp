#include "hostdatamodel.h"

#include "DataLayer/idatapeer.h"
#include "inspectedform.h"

HostDataModel::HostDataModel(InspectedForm* form) : m_form(form)
{
    connect(form, &DeclarationSource::AboutToBeReplaced, this, &HostDataModel::beginResetModel);
    connect(form, &DeclarationSource::Replaced, this, [this] {
        m_variables = m_form->Variables();
        endResetModel();
    });
    m_variables = form->Variables();
}

void HostDataModel::Refresh()
{
    if (!m_variables.isEmpty())
        Q_EMIT dataChanged(index(0, Value), index(m_variables.size() - 1, Value));
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
    if (data->ChangeValue(identifier, read, IDataPeer::NoFlag))
        return true;
    Q_EMIT Refused(QString("%1 keeps its value: the host refuses it").arg(identifier.GetName()));
    return false;
}
