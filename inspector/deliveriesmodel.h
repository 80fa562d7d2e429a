#ifndef DELIVERIESMODEL_H
#define DELIVERIESMODEL_H

#include <QAbstractTableModel>

#include <deque>

#include "inspectedform.h"

/// The last deliveries of a form, the newest first, as they were with the last Refresh().
class DeliveriesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        End,
        Evaluations,
        Time,
        Cause,
        ColumnCount
    };

    explicit DeliveriesModel(const InspectedForm* form) : m_form(form) {}

    void Refresh();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    const InspectedForm* const m_form;
    std::deque<InspectedDelivery> m_deliveries;
    quint64 m_count = 0; ///< Of all that there had been.
};

#endif
