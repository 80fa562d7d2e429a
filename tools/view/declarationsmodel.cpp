#include "view/declarationsmodel.h"

#include <QBrush>
#include <QFont>

#include <algorithm>
#include <utility>

#include "view/declarationsource.h"
#include "view/rowranges.h"
#include "view/tablecolors.h"

namespace {

const int AnnounceInterval = 100;

} // namespace

DeclarationsModel::DeclarationsModel(DeclarationSource* source) : m_source(source)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(AnnounceInterval);
    connect(&m_timer, &QTimer::timeout, this, &DeclarationsModel::Announce);
    connect(source, &DeclarationSource::PropertyChanged, this, &DeclarationsModel::MarkChanged);
    connect(source, &DeclarationSource::AboutToBeReplaced, this, &DeclarationsModel::beginResetModel);
    connect(source, &DeclarationSource::Replaced, this, [this] {
        m_changed.clear();
        endResetModel();
    });
}

QObject* DeclarationsModel::Object(int row) const
{
    return m_source->Properties().at(row).object;
}

QVector<int> DeclarationsModel::RowsOf(const QObject* object) const
{
    QVector<int> rows;
    for (; object && rows.isEmpty(); object = object->parent()) {
        for (int row = 0; row < rowCount(); ++row) {
            if (Object(row) == object)
                rows.append(row);
        }
    }
    return rows;
}

int DeclarationsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_source->Properties().size();
}

int DeclarationsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant DeclarationsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles{"Widget", "Property", "Statement", "Value", "Count", "Problem"};
    if (orientation != Qt::Horizontal)
        return QVariant();
    if (role == Qt::ToolTipRole && section == Evaluations)
        return "How often the statement has been evaluated";
    return role == Qt::DisplayRole ? titles.value(section) : QVariant();
}

QVariant DeclarationsModel::data(const QModelIndex& index, int role) const
{
    const ViewedProperty& property = m_source->Properties().at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return Cell(property, index.column());
    case Qt::AccessibleTextRole:
        return Cell(property, index.column()).toString()
            + (index.column() == Value && property.edited ? ", edited" : "");
    case Qt::ToolTipRole:
        return ToolTip(property, index.column());
    case Qt::TextAlignmentRole:
        return int(index.column() == Evaluations ? Qt::AlignRight | Qt::AlignVCenter
                                                 : Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        return Color(property, index.column());
    case Qt::FontRole: {
        QFont font;
        font.setBold(index.column() == Value && property.edited);
        return font;
    }
    default:
        return QVariant();
    }
}

void DeclarationsModel::MarkChanged(int row)
{
    m_changed.append(row);
    if (!m_timer.isActive())
        m_timer.start();
}

void DeclarationsModel::Announce()
{
    ForEachRange(std::exchange(m_changed, {}),
                 [this](int first, int last) { Q_EMIT dataChanged(index(first, Widget), index(last, Diagnostic)); });
}

int DeclarationsModel::FirstProblem() const
{
    const QVector<ViewedProperty>& properties = m_source->Properties();
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [](const ViewedProperty& property) { return property.IsDoubtful(); });
    return found == properties.end() ? -1 : int(found - properties.begin());
}

int DeclarationsModel::ProblemCount() const
{
    const QVector<ViewedProperty>& properties = m_source->Properties();
    return int(std::count_if(properties.begin(), properties.end(),
                             [](const ViewedProperty& property) { return property.IsDoubtful(); }));
}

/// A row with a problem is marked from its start, which is always in sight.
QVariant DeclarationsModel::Color(const ViewedProperty& property, int column)
{
    if (column != Widget && column != Property && column != Diagnostic)
        return QVariant();
    if (!property.IsDoubtful())
        return column == Diagnostic && !property.diagnostic.isEmpty() ? QBrush(TableColors::Error) : QVariant();
    const FormProblem::Severity severity
        = property.problem.isEmpty() ? property.findings.first().severity : property.severity;
    return QBrush(severity == FormProblem::Error ? TableColors::Error : TableColors::Warning);
}

QVariant DeclarationsModel::Cell(const ViewedProperty& property, int column) const
{
    switch (column) {
    case Widget:
        return property.path.section('\\', -1);
    case Property:
        return (property.writable ? '_' : '~') + property.name;
    case Statement:
        return property.statement.simplified();
    case Value:
        return ValueToText(property.Value());
    case Evaluations:
        return property.evaluations;
    default:
        return property.Remark();
    }
}

QString DeclarationsModel::ToolTip(const ViewedProperty& property, int column) const
{
    if (column == Widget)
        return property.path;
    if (column == Statement)
        return property.statement;
    if (column == Diagnostic)
        return property.Remarks().join('\n');
    if (column == Value && property.edited)
        return Cell(property, column).toString() + "\nEdited in the form, and not saved.";
    return Cell(property, column).toString();
}
