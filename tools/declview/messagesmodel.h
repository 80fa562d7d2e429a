#ifndef MESSAGESMODEL_H
#define MESSAGESMODEL_H

#include <QAbstractTableModel>
#include <QStringList>

#include "declview/messagelog.h"

class FormSession;

/// The messages as a table, the oldest first; those that come in together and say the same,
/// but for a name, are one row. The oldest go
/// when there are too many.
class MessagesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        Time,
        Declaration,
        Text,
        ColumnCount
    };

    explicit MessagesModel(FormSession* session);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    /// The name is kept, since the declaration goes with the form.
    struct Row
    {
        LogMessage message;
        QString declaration;
        QStringList texts; ///< Of all that are in the row.
    };

    void Append(const QVector<LogMessage>& arrived);
    QString Cell(const Row& row, int column) const;

    FormSession* const m_session;
    QVector<Row> m_rows;
};

#endif
