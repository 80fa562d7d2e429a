#ifndef KEPTSELECTION_H
#define KEPTSELECTION_H

#include <QHash>
#include <QPair>
#include <QString>
#include <QVariant>
#include <QVector>

class QAbstractItemView;

/// The current item and the selection of a view, put back to the same rows after they were written anew. A row is
/// known by the data of its first cell, or else by the text there.
class KeptSelection
{
public:
    explicit KeptSelection(QAbstractItemView* view);

    /// Rows that are gone are not selected any more.
    void Restore();

    bool IsCurrentChanged() const { return m_isCurrentChanged; }
    bool IsSelectionChanged() const { return m_isSelectionChanged; }

private:
    /// A row by what it is known by, and a column.
    struct Cell
    {
        QString key;
        int row;
        int column;
    };

    Cell CellAt(int row, int column) const;
    int RowOf(const Cell& cell) const;
    void FindRows();

    QAbstractItemView* const m_view;
    Cell m_current;
    QVector<Cell> m_selected;
    QHash<QString, int> m_rows;
    bool m_isCurrentChanged = false;
    bool m_isSelectionChanged = false;
};

/// What the row with that text and that data is known by.
QString RowKey(const QVariant& text, const QVariant& data);

#endif
