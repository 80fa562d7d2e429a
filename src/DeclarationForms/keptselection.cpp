#include "DeclarationForms/keptselection.h"

#include <QAbstractItemView>
#include <QItemSelection>
#include <QItemSelectionModel>

QString RowKey(const QVariant& text, const QVariant& data)
{
    const QString key = data.toString();
    return key.isEmpty() ? QLatin1Char('t') + text.toString() : QLatin1Char('d') + key;
}

KeptSelection::KeptSelection(QAbstractItemView* view)
    : m_view(view), m_current(CellAt(view->currentIndex().row(), view->currentIndex().column()))
{
    const QModelIndexList selected = view->selectionModel()->selectedIndexes();
    for (const QModelIndex& index : selected)
        m_selected.append(CellAt(index.row(), index.column()));
}

void KeptSelection::Restore()
{
    FindRows();
    const int current = RowOf(m_current);
    QItemSelection selection;
    m_isCurrentChanged = current != m_current.row;
    for (const Cell& cell : qAsConst(m_selected)) {
        const int row = RowOf(cell);
        m_isSelectionChanged |= row != cell.row;
        const QModelIndex index = m_view->model()->index(row, cell.column);
        if (index.isValid())
            selection.select(index, index);
    }
    QItemSelectionModel* const model = m_view->selectionModel();
    // Rows that went took along what was on them.
    if (m_isCurrentChanged || m_view->currentIndex().row() != current)
        model->setCurrentIndex(m_view->model()->index(current, m_current.column), QItemSelectionModel::NoUpdate);
    if (m_isSelectionChanged || model->selectedIndexes().count() != m_selected.count())
        model->select(selection, QItemSelectionModel::ClearAndSelect);
}

KeptSelection::Cell KeptSelection::CellAt(int row, int column) const
{
    const QModelIndex first = m_view->model()->index(row, 0);
    return {RowKey(first.data(Qt::DisplayRole), first.data(Qt::UserRole)), first.row(), column};
}

int KeptSelection::RowOf(const Cell& cell) const
{
    if (cell.row < 0 || CellAt(cell.row, 0).key == cell.key)
        return cell.row < m_view->model()->rowCount() ? cell.row : -1;
    return m_rows.value(cell.key, -1);
}

void KeptSelection::FindRows()
{
    for (int row = m_view->model()->rowCount() - 1; row >= 0; --row)
        m_rows.insert(CellAt(row, 0).key, row);
}
