#ifndef HOSTDATAMODEL_H
#define HOSTDATAMODEL_H

#include <QAbstractTableModel>
#include <QVector>

#include "DataLayer/variableidentifier.h"

class InspectedForm;

/// The variables that a form reads, with the values that the host has at present: they are read when they are drawn,
/// without a subscription. A value is entered as JSON; what is no JSON counts as a text.
class HostDataModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        Package,
        Name,
        Value,
        ColumnCount
    };

    explicit HostDataModel(InspectedForm* form);

    /// Reads the values again, and announces those that are others.
    void Refresh();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// False, with the reason told, where the text is no value, would lose something as one of the present type, or is
    /// refused by the host.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

Q_SIGNALS:
    void Refused(const QString& reason);

private:
    QStringList Texts() const;
    void TakeVariables();

    InspectedForm* const m_form;
    QVector<VariableIdentifier> m_variables;
    QStringList m_texts; ///< Of the values that were announced last.
};

#endif
