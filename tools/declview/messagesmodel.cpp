#include "declview/messagesmodel.h"

#include <QBrush>
#include <QHash>
#include <QRegularExpression>

#include "declview/formsession.h"
#include "view/tablecolors.h"

namespace {

const int MaxRows = 10000;

/// How many differ by a name in the tooltip of one line.
const int MaxNames = 50;

/// What is the same in messages that differ by a name, which stands first or in quotes.
QString KindOf(const LogMessage& message)
{
    static const QRegularExpression name("^[^\\s:]+: |'[^']*'|\"[^\"]*\"");
    return message.declaration >= 0 ? message.text : QString(message.text).replace(name, "\n");
}

/// Messages of one kind, which are one line.
struct MessageGroup
{
    LogMessage message; ///< The first, with how many there are.
    int count;
    QStringList texts; ///< Different ones.
};

QString CountOf(const MessageGroup& group)
{
    if (group.texts.size() > 1)
        return QString(" (and %1 like this)").arg(group.count - 1);
    return group.count > 1 ? QString(" (%1 times)").arg(group.count) : QString();
}

/// With those that say the same of the same, or of others of a kind, in one line, in the place of the first.
QVector<MessageGroup> Counted(const QVector<LogMessage>& messages)
{
    QVector<MessageGroup> groups;
    QHash<QPair<int, QString>, int> positions;
    for (const LogMessage& message : messages) {
        int& position = positions[{message.declaration, KindOf(message)}];
        if (position == 0) {
            groups.append({message, 0, {}});
            position = groups.size();
        }
        MessageGroup& group = groups[position - 1];
        ++group.count;
        if (group.texts.size() < MaxNames && !group.texts.contains(message.text))
            group.texts.append(message.text);
    }
    for (MessageGroup& group : groups)
        group.message.text += CountOf(group);
    return groups;
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
        return index.column() == Text ? row.texts.join('\n') : Cell(row, index.column());
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
    const QVector<MessageGroup> groups = Counted(arrived);
    beginInsertRows(QModelIndex(), m_rows.size(), m_rows.size() + groups.size() - 1);
    for (const MessageGroup& group : groups) {
        const LogMessage& message = group.message;
        QString name;
        if (message.declaration >= 0) {
            const ViewedProperty& property = m_session->Properties().at(message.declaration);
            name = property.path.section('\\', -1) + ':' + property.name;
        }
        m_rows.append({message, name, group.texts});
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
