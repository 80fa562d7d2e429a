#include "view/variablesmodel.h"

#include <QBrush>
#include <QFont>

#include "view/rowranges.h"
#include "view/tablecolors.h"
#include "view/variablestore.h"
#include "view/viewedproperty.h"

namespace {

QString TypeName(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return "empty";
    case QMetaType::Bool:
        return "boolean";
    case QMetaType::QString:
        return "text";
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return "list";
    case QMetaType::QVariantMap:
        return "object";
    default:
        return value.canConvert<double>() ? QString("number") : QString(value.typeName());
    }
}

} // namespace

VariablesModel::VariablesModel(VariableStore* store) : m_store(store)
{
    connect(store, &VariableStore::AboutToReset, this, &VariablesModel::beginResetModel);
    connect(store, &VariableStore::Reset, this, &VariablesModel::endResetModel);
    connect(store, &VariableStore::Changed, this, &VariablesModel::Announce);
}

int VariablesModel::MissingCount() const
{
    int count = 0;
    for (int row = 0; row < rowCount(); ++row)
        count += m_store->IsMissing(row);
    return count;
}

int VariablesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_store->Variables().size();
}

int VariablesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant VariablesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles{"Package", "Name", "Type", "Value"};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? titles.value(section) : QVariant();
}

QVariant VariablesModel::data(const QModelIndex& index, int role) const
{
    const int row = index.row();
    const bool isValue = index.column() == Value;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return Text(row, index.column());
    case Qt::ToolTipRole:
        return ToolTip(row);
    case Qt::ForegroundRole:
        return m_store->IsMissing(row) ? QVariant(QBrush(TableColors::Warning)) : QVariant();
    case Qt::FontRole: {
        QFont font;
        font.setBold(isValue && m_store->Variables().at(row).edited);
        return font;
    }
    default:
        return QVariant();
    }
}

Qt::ItemFlags VariablesModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == Value ? flags | Qt::ItemIsEditable : flags;
}

bool VariablesModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    // Leaving the field without a change must not turn a value that JSON does not know into a text.
    if (role != Qt::EditRole || index.column() != Value || value.toString() == Text(index.row(), Value))
        return false;
    QVariant read;
    QString error;
    if (!ValueFromText(value.toString(), &read, &error)) {
        Q_EMIT Refused(QString("%1 keeps its value: %2").arg(Text(index.row(), Name), error));
        return false;
    }
    return m_store->SetValue(index.row(), read);
}

void VariablesModel::Announce(const QVector<int>& positions)
{
    ForEachRange(positions,
                 [this](int first, int last) { Q_EMIT dataChanged(index(first, Type), index(last, Value)); });
}

QString VariablesModel::Text(int row, int column) const
{
    const VariableIdentifier& identifier = m_store->Variables().at(row).identifier;
    switch (column) {
    case Package:
        return identifier.GetPackage();
    case Name:
        return identifier.GetName();
    case Type:
        return TypeText(row);
    default:
        return ValueToText(m_store->Value(row));
    }
}

QString VariablesModel::TypeText(int row) const
{
    if (m_store->IsMissing(row))
        return "missing";
    const StoredVariable& variable = m_store->Variables().at(row);
    const QString type = TypeName(m_store->Value(row));
    return variable.generator && !variable.edited ? QString("%1, %2").arg(type, variable.generator->Kind()) : type;
}

QString VariablesModel::ToolTip(int row) const
{
    if (m_store->IsMissing(row))
        return "A statement reads this variable, and the data do not have it.";
    const QString value = Text(row, Value);
    if (m_store->Variables().at(row).edited)
        return value + "\nChanged here; a reload keeps it.";
    return m_store->Variables().at(row).isRead ? value : value + "\nNo statement reads this variable.";
}
