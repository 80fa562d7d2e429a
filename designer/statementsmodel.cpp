#include "statementsmodel.h"

#include <algorithm>

#include "view/tablecolors.h"

namespace {

bool IsSameRow(const FormStatement& first, const FormStatement& second)
{
    return first.IsOf(second.object, second.property) && first.objectName == second.objectName;
}

bool IsSame(const FormStatement& first, const FormStatement& second)
{
    return IsSameRow(first, second) && first.text == second.text && first.isText == second.isText
        && first.className == second.className && first.type == second.type && first.findings == second.findings
        && first.marks == second.marks;
}

/// By the worst, which is told first.
QVariant ColorOf(const QString& findings)
{
    if (findings.startsWith(SeverityName(Severity::Error)))
        return TableColors::Error;
    return findings.startsWith(SeverityName(Severity::Warning)) ? TableColors::Warning : QVariant();
}

} // namespace

void StatementsModel::SetStatements(const QVector<FormStatement>& statements)
{
    const auto start
        = std::mismatch(m_statements.cbegin(), m_statements.cend(), statements.cbegin(), statements.cend(), IsSameRow);
    const int same = int(start.first - m_statements.cbegin());
    const int shorter = int(qMin(m_statements.size(), statements.size()));
    int sameAtEnd = 0;
    while (sameAtEnd < shorter - same
           && IsSameRow(m_statements.at(m_statements.size() - 1 - sameAtEnd),
                        statements.at(statements.size() - 1 - sameAtEnd)))
        ++sameAtEnd;
    Replace(same, int(m_statements.size()) - sameAtEnd,
            statements.mid(same, int(statements.size()) - sameAtEnd - same));
    for (int row = 0; row < statements.size(); ++row) {
        if (IsSame(m_statements.at(row), statements.at(row)))
            continue;
        m_statements[row] = statements.at(row);
        emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    }
}

/// The rows from \a first to before \a last.
void StatementsModel::Replace(int first, int last, const QVector<FormStatement>& statements)
{
    if (last > first) {
        beginRemoveRows(QModelIndex(), first, last - 1);
        m_statements.remove(first, last - first);
        endRemoveRows();
    }
    if (!statements.isEmpty()) {
        beginInsertRows(QModelIndex(), first, first + int(statements.size()) - 1);
        m_statements = m_statements.mid(0, first) + statements + m_statements.mid(first);
        endInsertRows();
    }
}

int StatementsModel::Row(const QObject* object, const QString& property) const
{
    const auto found = std::find_if(m_statements.begin(), m_statements.end(),
                                    [&](const FormStatement& statement) { return statement.IsOf(object, property); });
    return found == m_statements.end() ? -1 : int(found - m_statements.begin());
}

QVector<int> StatementsModel::RowsOf(const QObject* object) const
{
    QVector<int> rows;
    for (int row = 0; row < m_statements.size(); ++row) {
        if (m_statements.at(row).object == object)
            rows.append(row);
    }
    return rows;
}

int StatementsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_statements.size());
}

int StatementsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant StatementsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char* const titles[ColumnCount] = {"Object", "Property", "Statement", "Type", "Finding"};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return QVariant();
    return QString(titles[section]);
}

QVariant StatementsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const FormStatement& statement = m_statements.at(index.row());
    if (role == Qt::DisplayRole && index.column() == FindingText)
        return statement.findings.section('\n', 0, 0);
    if (role == Qt::DisplayRole)
        return Cell(statement, index.column()).simplified();
    if (role == Qt::ForegroundRole && index.column() == FindingText)
        return ColorOf(statement.findings);
    if (role == Qt::ToolTipRole && index.column() == Object)
        return QString("%1#%2").arg(statement.className, statement.objectName);
    if (role == Qt::ToolTipRole)
        return Cell(statement, index.column());
    return QVariant();
}

QString StatementsModel::Cell(const FormStatement& statement, int column) const
{
    switch (column) {
    case Object:
        return statement.objectName;
    case Property:
        return statement.property;
    case Statement:
        return statement.text;
    case Type:
        return statement.type;
    default:
        return statement.findings;
    }
}
