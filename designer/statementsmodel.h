#ifndef STATEMENTSMODEL_H
#define STATEMENTSMODEL_H

#include <QAbstractTableModel>

#include "formstatements.h"

/// The statements of a form as a table. What stays the same when the form is read anew keeps its row, so that the
/// selection and what is drawn stay.
class StatementsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        Object,
        Property,
        Statement,
        Type,
        FindingText,
        ColumnCount
    };

    using QAbstractTableModel::QAbstractTableModel;

    void SetStatements(const QVector<FormStatement>& statements);

    const FormStatement& At(int row) const { return m_statements.at(row); }
    /// -1 when there is none.
    int Row(const QObject* object, const QString& property) const;
    QVector<int> RowsOf(const QObject* object) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    QString Cell(const FormStatement& statement, int column) const;
    void Replace(int first, int last, const QVector<FormStatement>& statements);

    QVector<FormStatement> m_statements;
};

#endif
