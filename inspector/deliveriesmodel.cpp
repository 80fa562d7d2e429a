#include "deliveriesmodel.h"

void DeliveriesModel::Refresh()
{
    if (m_form->DeliveryCount() == m_count)
        return;
    beginResetModel();
    m_count = m_form->DeliveryCount();
    m_deliveries = QVector<InspectedDelivery>(m_form->Deliveries().rbegin(), m_form->Deliveries().rend());
    endResetModel();
}

int DeliveriesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_deliveries.size();
}

int DeliveriesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant DeliveriesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles{"Ended", "Evaluations", "Time in ms", "Caused by"};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? titles.value(section) : QVariant();
}

QVariant DeliveriesModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QVariant();
    const InspectedDelivery& delivery = m_deliveries.at(index.row());
    switch (index.column()) {
    case End:
        return delivery.end.toString("HH:mm:ss.zzz");
    case Evaluations:
        return delivery.evaluations;
    case Time:
        return InMilliseconds(delivery.nanoseconds);
    default:
        return delivery.cause;
    }
}
