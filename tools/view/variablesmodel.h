#ifndef VARIABLESMODEL_H
#define VARIABLESMODEL_H

#include <QAbstractTableModel>

class VariableStore;
struct StoredVariable;

/// The variables as a table. A value is entered as JSON; what is no JSON counts as a text.
class VariablesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        Package,
        Name,
        Type,
        Value,
        ColumnCount
    };

    explicit VariablesModel(VariableStore* store);

    int MissingCount() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

Q_SIGNALS:
    /// The text looks like a list or an object and is none.
    void Refused(const QString& reason);

private:
    void Announce(const QVector<int>& positions);
    QString Text(int row, int column) const;
    QString TypeText(int row) const;
    QString ToolTip(int row) const;

    VariableStore* const m_store;
};

#endif
