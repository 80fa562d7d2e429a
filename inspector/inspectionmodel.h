#ifndef INSPECTIONMODEL_H
#define INSPECTIONMODEL_H

#include "view/declarationsmodel.h"

class InspectedForm;

/// The declarations with what their evaluations cost and what caused the last one.
class InspectionModel : public DeclarationsModel
{
    Q_OBJECT

public:
    enum CostColumn
    {
        LastSecond = ColumnCount,
        Time,
        Cause,
        AllColumns
    };

    explicit InspectionModel(InspectedForm* form);

    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    InspectedForm* const m_form;
};

#endif
