#include "declview/messagesmodel.h"

#include <QBrush>
#include <QHash>

#include "declview/formsession.h"
#include "view/tablecolors.h"

namespace {

const int MaxRows = 10000;

/// With those that say the same of the same in one line, in the place of the first.
QVector<LogMessage> Counted(const QVector<LogMessage>& messages)
{
    QVector<LogMessage> different;
    QVector<int> counts;
    QHash<QPair<int, QString>, int> positions;
    for (const LogMessage& message : messages) {
        int& position = positions[{message.declaration, message.text}];
        if (position == 0) {
            different.append(message);
            counts.append(0);
            position = different.size();
        }
        ++counts[position - 1];
    }
    for (int i = 0; i < different.size(); ++i) {
        if (counts.at(i) > 1)
            different[i].text += QString(" (%1 times)").arg(counts.at(i));
    }
    return different;
}

} // namespace

MessagesModel::MessagesModel(FormSession* session) : m_session(session)
{
    connect(session, &FormSession::MessagesArrived, this, &MessagesModel::Append);
}

int MessagesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int MessagesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant MessagesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles{"Time", "Declaration", "Message"};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? titles.value(section) : QVariant();
}

QVariant MessagesModel::data(const QModelIndex& index, int role) const
{
    const Row& row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return Cell(row, index.column()).simplified();
    case Qt::ToolTipRole:
        return Cell(row, index.column());
    case Qt::ForegroundRole:
        if (row.message.type == QtDebugMsg || row.message.type == QtInfoMsg)
            return QVariant();
        return QBrush(row.message.type == QtWarningMsg ? TableColors::Warning : TableColors::Error);
    default:
        return QVariant();
    }
}

void MessagesModel::Append(const QVector<LogMessage>& arrived)
{
    const QVector<LogMessage> messages = Counted(arrived);
    beginInsertRows(QModelIndex(), m_rows.size(), m_rows.size() + messages.size() - 1);
    for (const LogMessage& message : messages) {
        QString name;
        if (message.declaration >= 0) {
            const ViewedProperty& property = m_session->Properties().at(message.declaration);
            name = property.path.section('\\', -1) + ':' + property.name;
        }
        m_rows.append({message, name});
    }
    endInsertRows();

    const int surplus = m_rows.size() - MaxRows;
    if (surplus > 0) {
        beginRemoveRows(QModelIndex(), 0, surplus - 1);
        m_rows.remove(0, surplus);
        endRemoveRows();
    }
}

QString MessagesModel::Cell(const Row& row, int column) const
{
    switch (column) {
    case Time:
        return row.message.time.toString("HH:mm:ss.zzz");
    case Declaration:
        return row.declaration;
    default:
        return row.message.text;
    }
}
