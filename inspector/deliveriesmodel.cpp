#include "deliveriesmodel.h"

#include <algorithm>

#include "view/tablepanel.h"

void DeliveriesModel::Refresh()
{
    const std::deque<InspectedDelivery>& all = m_form->Deliveries();
    const quint64 fresh = std::min<quint64>(m_form->DeliveryCount() - m_count, all.size());
    m_count = m_form->DeliveryCount();
    if (fresh == 0)
        return;
    beginInsertRows(QModelIndex(), 0, int(fresh) - 1);
    m_deliveries.insert(m_deliveries.begin(), all.rbegin(), all.rbegin() + std::ptrdiff_t(fresh));
    endInsertRows();
    const int count = rowCount();
    if (count <= InspectedForm::MaxDeliveries)
        return;
    beginRemoveRows(QModelIndex(), InspectedForm::MaxDeliveries, count - 1);
    m_deliveries.resize(InspectedForm::MaxDeliveries);
    endRemoveRows();
}

int DeliveriesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_deliveries.size());
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
    const InspectedDelivery& delivery = m_deliveries.at(std::size_t(index.row()));
    if (role == Qt::TextAlignmentRole && (index.column() == Evaluations || index.column() == Time))
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == TablePanel::SortRole && index.column() == Time)
        return double(delivery.nanoseconds);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QVariant();
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
