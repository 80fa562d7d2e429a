#include "DeclarationForms/rowadapters.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QPointer>
#include <QSet>
#include <QSignalBlocker>
#include <QStringList>
#include <QTableWidget>
#include <QTreeWidget>

#include "DeclarationForms/adapterregistry.h"
#include "DeclarationForms/adaptervalues.h"
#include "DeclarationForms/formvalues.h"
#include "DeclarationForms/keptselection.h"

namespace {

const QString Rows = QStringLiteral("rows");
const int MaxColumns = 1000;
const int MaxCells = 500000;

/// Kept with the widget; such names are never bound. The labels that were made of keys, and whether the rows
/// were maps.
const char* const OwnLabels = "_q_rowsLabels";
const char* const AreMaps = "_q_rowsAreMaps";
/// In the first cell of a row, the map that it shows, which may have more keys than there are columns. Far from
/// the roles that hosts count up.
const int MapRole = Qt::UserRole + 0x10000;

/// What the two widgets do each in its own way.
struct Kind
{
    void (*resize)(QAbstractItemView* view, int rows, int columns);
    void (*setLabels)(QAbstractItemView* view, const QStringList& labels);
    void (*tellChanges)(QAbstractItemView* view, const KeptSelection& kept);
};

struct Row
{
    QVariantList cells;
    QVariant map; ///< Invalid for a list.
};

struct Content
{
    QVector<Row> rows;
    QStringList labels; ///< New ones; empty where those there are stay.
    int columns = 0;
    bool areMaps = false;
};

QStringList LabelsOf(const QAbstractItemView& view)
{
    QStringList labels;
    for (int column = 0; column < view.model()->columnCount(); ++column)
        labels.append(view.model()->headerData(column, Qt::Horizontal).toString());
    return labels;
}

/// The labels that name keys: not those made of the keys before, nor the numbers that stand for none.
QStringList GivenLabels(const QAbstractItemView& view)
{
    const QStringList labels = LabelsOf(view);
    const QStringList own = view.property(OwnLabels).toStringList();
    for (int column = 0; column < labels.count(); ++column) {
        const QString& label = labels.at(column);
        if (!label.isEmpty() && label != own.value(column) && label != QString::number(column + 1))
            return labels;
    }
    return QStringList();
}

/// All keys, those of a row in order. Empty for too many.
QStringList KeysOf(const QVariantList& rows)
{
    QStringList keys;
    QSet<QString> known;
    for (const QVariant& row : rows) {
        const QVariantMap map = row.toMap();
        for (QVariantMap::const_iterator it = map.constBegin(); it != map.constEnd(); ++it) {
            if (known.contains(it.key()))
                continue;
            if (keys.count() == MaxColumns)
                return QStringList();
            known.insert(it.key());
            keys.append(it.key());
        }
    }
    return keys;
}

bool IsEmpty(const QVariant& cell)
{
    return !cell.isValid() || cell.userType() == QMetaType::Nullptr;
}

bool AreCells(const QVariantList& cells)
{
    for (const QVariant& cell : cells) {
        if (!IsEmpty(cell) && !AdapterValues::IsScalar(cell) && !AdapterValues::IsImage(cell))
            return false;
    }
    return true;
}

bool AddMaps(const QVariantList& list, const QStringList& keys, Content* content)
{
    bool hasKnownKey = list.isEmpty();
    for (const QVariant& entry : list) {
        if (!AdapterValues::IsMap(entry))
            return false;
        const QVariantMap map = entry.toMap();
        QVariantList cells;
        for (const QString& key : keys) {
            hasKnownKey = hasKnownKey || map.contains(key);
            cells.append(map.value(key));
        }
        if (!AreCells(cells))
            return false;
        content->rows.append({cells, map});
    }
    return hasKnownKey;
}

bool AddLists(const QVariantList& list, Content* content)
{
    for (const QVariant& entry : list) {
        QVariantList cells;
        if (!AdapterValues::ToList(entry, &cells) || cells.count() > MaxColumns || !AreCells(cells))
            return false;
        content->columns = qMax(content->columns, static_cast<int>(cells.count()));
        if (content->columns * (content->rows.count() + 1) > MaxCells)
            return false;
        content->rows.append({cells, QVariant()});
    }
    return true;
}

bool ToContent(const QVariant& value, const QAbstractItemView& view, Content* content)
{
    QVariantList list;
    if (!AdapterValues::ToList(value, &list))
        return false;
    const QStringList given = GivenLabels(view);
    content->areMaps = !list.isEmpty() && AdapterValues::IsMap(list.first());
    if (list.isEmpty())
        content->columns = view.model()->columnCount();
    if (!content->areMaps && !AddLists(list, content))
        return false;
    content->columns = qMax(content->columns, static_cast<int>(given.count()));
    if (content->areMaps) {
        const QStringList keys = given.isEmpty() ? KeysOf(list) : given;
        content->labels = given.isEmpty() ? keys : QStringList();
        content->columns = keys.count();
        return qint64(keys.count()) * list.count() <= MaxCells && AddMaps(list, keys, content);
    }
    return qint64(content->columns) * list.count() <= MaxCells;
}

void Set(QAbstractItemModel* model, const QModelIndex& index, const QVariant& value, int role)
{
    if (!FormValues::AreEqual(index.data(role), value))
        model->setData(index, value, role);
}

void WriteRow(QAbstractItemModel* model, int number, const Row& row, int columns)
{
    for (int column = 0; column < columns; ++column) {
        const QModelIndex index = model->index(number, column);
        const QVariant cell = row.cells.value(column);
        const bool isImage = AdapterValues::IsImage(cell);
        Set(model, index, isImage || IsEmpty(cell) ? QVariant() : cell, Qt::DisplayRole);
        Set(model, index, isImage ? cell : QVariant(), Qt::DecorationRole);
    }
    Set(model, model->index(number, 0), row.map, MapRole);
}

/// Tells of all changes at once: views lay out their rows with each.
void WriteCells(QAbstractItemModel* model, const Content& content)
{
    {
        const QSignalBlocker blocker(model);
        for (int row = 0; row < content.rows.count(); ++row)
            WriteRow(model, row, content.rows.at(row), content.columns);
    }
    const QModelIndex last = model->index(content.rows.count() - 1, content.columns - 1);
    if (last.isValid())
        Q_EMIT model->dataChanged(model->index(0, 0), last);
}

void WriteContent(QAbstractItemView* view, const Content& content, const Kind& kind)
{
    const QVariant isSorted = view->property("sortingEnabled");
    view->setProperty("sortingEnabled", false);
    kind.resize(view, content.rows.count(), content.columns);
    if (!content.labels.isEmpty()) {
        kind.setLabels(view, content.labels);
        view->setProperty(OwnLabels, content.labels);
    }
    view->setProperty(AreMaps, content.areMaps);
    WriteCells(view->model(), content);
    view->setProperty("sortingEnabled", isSorted);
}

bool Write(QAbstractItemView* view, const QVariant& value, const Kind& kind)
{
    Content content;
    if (!ToContent(value, *view, &content))
        return false;
    KeptSelection kept(view);
    {
        const QSignalBlocker blocker(view);
        WriteContent(view, content, kind);
        kept.Restore();
    }
    kind.tellChanges(view, kept);
    return true;
}

QVariant CellAt(const QAbstractItemModel& model, int row, int column)
{
    const QModelIndex index = model.index(row, column);
    const QVariant text = index.data(Qt::DisplayRole);
    return text.isValid() ? text : index.data(Qt::DecorationRole);
}

/// What was not there before stays away while there is nothing in its cell.
QVariantMap ReadMap(const QAbstractItemModel& model, int row, const QStringList& labels)
{
    QVariantMap map = model.index(row, 0).data(MapRole).toMap();
    for (int column = 0; column < labels.count(); ++column) {
        const QVariant cell = CellAt(model, row, column);
        if (cell.isValid() || map.contains(labels.at(column)))
            map.insert(labels.at(column), cell);
    }
    return map;
}

QVariant Read(const QAbstractItemView& view)
{
    const bool areMaps = view.property(AreMaps).toBool();
    const QStringList labels = LabelsOf(view);
    QVariantList rows;
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        QVariantList cells;
        for (int column = 0; !areMaps && column < labels.count(); ++column)
            cells.append(CellAt(*view.model(), row, column));
        rows.append(areMaps ? QVariant(ReadMap(*view.model(), row, labels)) : QVariant(cells));
    }
    return rows;
}

void ResizeTable(QAbstractItemView* view, int rows, int columns)
{
    QTableWidget* const table = static_cast<QTableWidget*>(view);
    table->setRowCount(rows);
    table->setColumnCount(columns);
}

void SetTableLabels(QAbstractItemView* view, const QStringList& labels)
{
    static_cast<QTableWidget*>(view)->setHorizontalHeaderLabels(labels);
}

void TellTableChanges(QAbstractItemView* view, const KeptSelection& kept)
{
    QTableWidget* const table = static_cast<QTableWidget*>(view);
    const QPointer<QTableWidget> guarded = table;
    if (kept.IsCurrentChanged())
        Q_EMIT table->currentCellChanged(table->currentRow(), table->currentColumn(), -1, -1);
    if (guarded && kept.IsSelectionChanged())
        Q_EMIT table->itemSelectionChanged();
}

void ResizeTree(QAbstractItemView* view, int rows, int columns)
{
    QTreeWidget* const tree = static_cast<QTreeWidget*>(view);
    const int count = tree->topLevelItemCount();
    if (rows < count)
        tree->model()->removeRows(rows, count - rows);
    tree->setColumnCount(columns);
    QList<QTreeWidgetItem*> added;
    for (int row = count; row < rows; ++row)
        added.append(new QTreeWidgetItem);
    tree->addTopLevelItems(added);
}

void SetTreeLabels(QAbstractItemView* view, const QStringList& labels)
{
    static_cast<QTreeWidget*>(view)->setHeaderLabels(labels);
}

void TellTreeChanges(QAbstractItemView* view, const KeptSelection& kept)
{
    QTreeWidget* const tree = static_cast<QTreeWidget*>(view);
    const QPointer<QTreeWidget> guarded = tree;
    if (kept.IsCurrentChanged())
        Q_EMIT tree->currentItemChanged(tree->currentItem(), nullptr);
    if (guarded && kept.IsSelectionChanged())
        Q_EMIT tree->itemSelectionChanged();
}

const Kind Table = {ResizeTable, SetTableLabels, TellTableChanges};
const Kind Tree = {ResizeTree, SetTreeLabels, TellTreeChanges};

QVariant ReadRows(const QObject* object)
{
    return Read(*static_cast<const QAbstractItemView*>(object));
}

bool WriteTable(QObject* object, const QVariant& value)
{
    return Write(static_cast<QAbstractItemView*>(object), value, Table);
}

bool WriteTree(QObject* object, const QVariant& value)
{
    return Write(static_cast<QAbstractItemView*>(object), value, Tree);
}

} // namespace

void RowAdapters::AddTo(AdapterTable* table)
{
    table->Add(&QTableWidget::staticMetaObject, Rows, {ReadRows, WriteTable, SIGNAL(cellChanged(int, int))});
    table->Add(&QTreeWidget::staticMetaObject, Rows, {ReadRows, WriteTree, SIGNAL(itemChanged(QTreeWidgetItem*, int))});
}
