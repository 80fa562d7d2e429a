#include "DeclarationForms/itemadapters.h"

#include <QAbstractItemModel>
#include <QComboBox>
#include <QIcon>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QSignalBlocker>

#include "DeclarationForms/adapterregistry.h"
#include "DeclarationForms/adaptervalues.h"
#include "DeclarationForms/formvalues.h"
#include "DeclarationForms/keptselection.h"

namespace {

const QString Items = QStringLiteral("items");
const QString CurrentData = QStringLiteral("currentData");
const QString TextKey = QStringLiteral("text");
const QString DataKey = QStringLiteral("data");
const QString IconKey = QStringLiteral("icon");

/// Holds what the icon was made of, for reading it again; far from the roles that hosts count up.
const int IconSourceRole = Qt::UserRole + 0x10000;

struct Item
{
    QString text;
    QVariant data;
    QVariant icon; ///< A path or an image; invalid for none.
};

bool IsIcon(const QVariant& value)
{
    return !value.isValid() || value.userType() == QMetaType::QString || AdapterValues::IsImage(value);
}

bool ToItem(const QVariant& value, Item* item)
{
    if (!AdapterValues::IsMap(value)) {
        item->text = value.toString();
        return AdapterValues::IsScalar(value);
    }
    const QVariantMap map = value.toMap();
    const QVariant text = map.value(TextKey);
    item->text = text.toString();
    item->data = map.value(DataKey);
    item->icon = map.value(IconKey);
    const bool isSomething = text.isValid() || item->data.isValid() || item->icon.isValid();
    return isSomething && (!text.isValid() || AdapterValues::IsScalar(text)) && IsIcon(item->icon);
}

bool ToItems(const QVariant& value, QVector<Item>* items)
{
    QVariantList list;
    if (!AdapterValues::ToList(value, &list))
        return false;
    items->reserve(list.count());
    for (const QVariant& entry : qAsConst(list)) {
        Item item;
        if (!ToItem(entry, &item))
            return false;
        items->append(item);
    }
    return true;
}

/// A column of the model behind a widget.
class ItemColumn
{
public:
    ItemColumn(QAbstractItemModel* model, const QModelIndex& root = QModelIndex(), int column = 0)
        : m_model(model), m_root(root), m_column(column)
    {
    }

    QVariantList Read() const
    {
        QVariantList list;
        for (int row = 0; row < m_model->rowCount(m_root); ++row)
            list.append(ReadRow(row));
        return list;
    }

    /// False where the model takes no such items, or an icon is none.
    bool Write(const QVector<Item>& items) const
    {
        const int count = m_model->rowCount(m_root);
        if (items.count() > count && !m_model->insertRows(count, items.count() - count, m_root))
            return false;
        if (items.count() < count && !m_model->removeRows(items.count(), count - items.count(), m_root))
            return false;
        return WriteRows(items);
    }

    /// The first row with that key, the given one if it has it; -1 for none.
    int Find(const QString& key, int row) const
    {
        if (KeyAt(row) == key)
            return row;
        for (int other = 0; other < m_model->rowCount(m_root); ++other) {
            if (KeyAt(other) == key)
                return other;
        }
        return -1;
    }

    QString KeyAt(int row) const
    {
        const QModelIndex index = At(row);
        return index.isValid() ? RowKey(index.data(Qt::DisplayRole), index.data(Qt::UserRole)) : QString();
    }

private:
    QModelIndex At(int row) const { return m_model->index(row, m_column, m_root); }

    QVariant ReadRow(int row) const
    {
        const QModelIndex index = At(row);
        const QString text = index.data(Qt::DisplayRole).toString();
        const QVariant data = index.data(Qt::UserRole);
        const QVariant source = index.data(IconSourceRole);
        const QVariant icon = source.isValid() ? source : index.data(Qt::DecorationRole);
        if (!data.isValid() && !icon.isValid())
            return text;
        QVariantMap map{{TextKey, text}};
        if (data.isValid())
            map.insert(DataKey, data);
        if (icon.isValid())
            map.insert(IconKey, icon);
        return map;
    }

    /// Tells of all changes at once: views lay out their items with each.
    bool WriteRows(const QVector<Item>& items) const
    {
        bool isTaken = true;
        {
            const QSignalBlocker blocker(m_model);
            for (int row = 0; row < items.count(); ++row)
                isTaken = WriteRow(row, items.at(row)) && isTaken;
        }
        if (!items.isEmpty())
            Q_EMIT m_model->dataChanged(At(0), At(static_cast<int>(items.count()) - 1));
        return isTaken;
    }

    bool WriteRow(int row, const Item& item) const
    {
        const QModelIndex index = At(row);
        const bool isTaken = Set(index, item.text, Qt::DisplayRole) && Set(index, item.data, Qt::UserRole);
        if (FormValues::AreEqual(index.data(IconSourceRole), item.icon)
            && (item.icon.isValid() || !index.data(Qt::DecorationRole).isValid()))
            return isTaken;
        const QIcon icon = item.icon.isValid() ? AdapterValues::ToIcon(item.icon) : QIcon();
        const QVariant decoration = icon.isNull() ? QVariant() : QVariant(icon);
        const QVariant source = decoration.isValid() ? item.icon : QVariant();
        return Set(index, decoration, Qt::DecorationRole) && Set(index, source, IconSourceRole) && isTaken
            && (decoration.isValid() || !item.icon.isValid());
    }

    bool Set(const QModelIndex& index, const QVariant& value, int role) const
    {
        return FormValues::AreEqual(index.data(role), value) || m_model->setData(index, value, role);
    }

    QAbstractItemModel* const m_model;
    const QPersistentModelIndex m_root;
    const int m_column;
};

ItemColumn ColumnOf(const QComboBox& box)
{
    return ItemColumn(box.model(), box.rootModelIndex(), box.modelColumn());
}

/// What a combo box shows, so that it can go on showing it.
class ShownInBox
{
public:
    explicit ShownInBox(QComboBox* box)
        : m_box(box),
          m_index(box->currentIndex()),
          m_text(box->currentText()),
          m_data(box->currentData()),
          m_key(ColumnOf(*box).KeyAt(m_index)),
          m_isTyped(box->isEditable() && m_text != box->itemText(m_index)),
          m_wasEmpty(box->count() == 0)
    {
    }

    void Restore() const
    {
        m_box->setCurrentIndex(NewIndex());
        if (m_isTyped && m_box->currentText() != m_text)
            m_box->setEditText(m_text);
    }

    /// The widget may be gone after this.
    void TellChanges() const
    {
        const QPointer<QComboBox> guarded = m_box;
        const QString text = m_box->currentText();
        if (m_index != m_box->currentIndex() || !FormValues::AreEqual(m_data, m_box->currentData()))
            Q_EMIT m_box->currentIndexChanged(m_box->currentIndex());
        if (guarded && text != m_text)
            Q_EMIT m_box->currentTextChanged(text);
    }

private:
    int NewIndex() const
    {
        const int found = m_index < 0 ? -1 : ColumnOf(*m_box).Find(m_key, m_index);
        const bool hasNone = m_isTyped || (m_index < 0 && !m_wasEmpty);
        // As a combo box does with its first items.
        return found >= 0 || hasNone || m_box->count() == 0 ? found : 0;
    }

    QComboBox* const m_box;
    const int m_index;
    const QString m_text;
    const QVariant m_data;
    const QString m_key;
    const bool m_isTyped;
    const bool m_wasEmpty;
};

bool WriteBox(QObject* object, const QVariant& value)
{
    QComboBox* const box = static_cast<QComboBox*>(object);
    QVector<Item> items;
    if (!ToItems(value, &items) || items.count() > box->maxCount())
        return false;
    const ShownInBox shown(box);
    bool isTaken = false;
    {
        const QSignalBlocker blocker(box);
        isTaken = ColumnOf(*box).Write(items);
        shown.Restore();
    }
    shown.TellChanges();
    return isTaken;
}

/// No data stands for no item.
bool WriteCurrentData(QObject* object, const QVariant& value)
{
    QComboBox* const box = static_cast<QComboBox*>(object);
    int index = value.isValid() ? 0 : -1;
    while (index >= 0 && index < box->count() && !FormValues::Holds(box->itemData(index), value))
        ++index;
    if (index >= box->count() && value.isValid())
        return false;
    box->setCurrentIndex(index);
    return true;
}

void TellChanges(QListWidget* list, const KeptSelection& kept)
{
    const QPointer<QListWidget> guarded = list;
    if (kept.IsCurrentChanged())
        Q_EMIT list->currentRowChanged(list->currentRow());
    if (guarded && kept.IsCurrentChanged())
        Q_EMIT list->currentTextChanged(list->currentItem() ? list->currentItem()->text() : QString());
    if (guarded && kept.IsSelectionChanged())
        Q_EMIT list->itemSelectionChanged();
}

bool WriteList(QObject* object, const QVariant& value)
{
    QListWidget* const list = static_cast<QListWidget*>(object);
    QVector<Item> items;
    if (!ToItems(value, &items))
        return false;
    KeptSelection kept(list);
    bool isTaken = false;
    {
        const QSignalBlocker blocker(list);
        const bool isSorted = list->isSortingEnabled();
        list->setSortingEnabled(false);
        isTaken = ItemColumn(list->model()).Write(items);
        list->setSortingEnabled(isSorted);
        kept.Restore();
    }
    TellChanges(list, kept);
    return isTaken;
}

QVariant ReadBox(const QObject* object)
{
    return ColumnOf(*static_cast<const QComboBox*>(object)).Read();
}

QVariant ReadList(const QObject* object)
{
    return ItemColumn(static_cast<const QListWidget*>(object)->model()).Read();
}

QVariant ReadCurrentData(const QObject* object)
{
    return static_cast<const QComboBox*>(object)->currentData();
}

} // namespace

void ItemAdapters::AddTo(AdapterTable* table)
{
    table->Add(&QComboBox::staticMetaObject, Items, {ReadBox, WriteBox});
    table->Add(&QListWidget::staticMetaObject, Items, {ReadList, WriteList});
    table->Add(&QComboBox::staticMetaObject, CurrentData,
               {ReadCurrentData, WriteCurrentData, SIGNAL(currentIndexChanged(int))});
}
