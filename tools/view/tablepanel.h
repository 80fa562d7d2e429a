#ifndef TABLEPANEL_H
#define TABLEPANEL_H

#include <QSortFilterProxyModel>
#include <QTableView>

class QLabel;
class QLineEdit;

/// A table under its caption, with a field that filters it. Columns sort by a click.
class TablePanel : public QWidget
{
    Q_OBJECT

public:
    /// What a cell is sorted by, where that is not its text.
    static const int SortRole = Qt::UserRole;

    /// The widths are in letters, the largest that a column is given; the last one takes the rest.
    TablePanel(const QString& caption, QAbstractItemModel* model, const QVector<int>& columnWidths);

    QTableView* View() const { return m_view; }
    /// The row of the model that is current; -1 if none is.
    int CurrentRow() const;
    /// Takes the filter away where it hides them.
    void SelectRows(const QVector<int>& rows);
    /// Keeps the last row in sight as long as it is.
    void FollowEnd();
    /// What else there is to say, behind the number of rows.
    void SetNote(const QString& note);

private:
    void ShowCaption();
    void FitColumns();

    const QString m_caption;
    QString m_note;
    QAbstractItemModel* const m_model;
    QSortFilterProxyModel* const m_proxy;
    QTableView* const m_view;
    QLineEdit* const m_filter;
    QLabel* const m_label;
    const QVector<int> m_columnWidths;
};

#endif
