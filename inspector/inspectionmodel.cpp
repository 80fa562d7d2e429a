#include "inspectionmodel.h"

#include "inspectedform.h"
#include "view/tablepanel.h"

InspectionModel::InspectionModel(InspectedForm* form) : DeclarationsModel(form), m_form(form)
{
    connect(this, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& first, const QModelIndex& last) {
        if (last.column() < LastSecond)
            Q_EMIT dataChanged(index(first.row(), LastSecond), index(last.row(), Cause));
    });
}

int InspectionModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : AllColumns;
}

QVariant InspectionModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles{"Last second", "Time in ms", "Caused by"};
    static const QStringList tips{"Evaluations in the last second", "What all its evaluations took, with their writes",
                                  "What the last evaluation came from"};
    if (section < LastSecond || orientation != Qt::Horizontal)
        return DeclarationsModel::headerData(section, orientation, role);
    if (role == Qt::ToolTipRole)
        return tips.value(section - LastSecond);
    return role == Qt::DisplayRole ? titles.value(section - LastSecond) : QVariant();
}

QVariant InspectionModel::data(const QModelIndex& index, int role) const
{
    if (index.column() < LastSecond)
        return DeclarationsModel::data(index, role);
    if (role == Qt::TextAlignmentRole && index.column() != Cause)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == TablePanel::SortRole && index.column() == Time)
        return double(m_form->FiguresOf(index.row()).nanoseconds);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QVariant();
    const EvaluationFigures figures = m_form->FiguresOf(index.row());
    switch (index.column()) {
    case LastSecond:
        return figures.lastSecond;
    case Time:
        return InMilliseconds(figures.nanoseconds);
    default:
        return figures.cause;
    }
}
