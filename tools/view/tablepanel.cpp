#include "view/tablepanel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

#include <memory>

namespace {

const int RowPadding = 7;
const int FilterWidth = 180;
/// From the first one in sight on, to find the widths.
const int MeasuredRows = 500;
const double FontScale = 0.88;

/// Numbers that are written with their decimals do not sort as texts.
class SortedRows : public QSortFilterProxyModel
{
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override
    {
        const QVariant first = left.data(TablePanel::SortRole);
        const QVariant second = right.data(TablePanel::SortRole);
        return first.isValid() ? first.toDouble() < second.toDouble() : QSortFilterProxyModel::lessThan(left, right);
    }
};

QFont SmallFont(QFont font)
{
    font.setPointSizeF(font.pointSizeF() * FontScale);
    return font;
}

} // namespace

TablePanel::TablePanel(const QString& caption, QAbstractItemModel* model, const QVector<int>& columnWidths)
    : m_caption(caption),
      m_model(model),
      m_proxy(new SortedRows(this)),
      m_view(new QTableView),
      m_filter(new QLineEdit),
      m_label(new QLabel),
      m_columnWidths(columnWidths)
{
    m_proxy->setSourceModel(model);
    m_proxy->setFilterKeyColumn(-1);
    m_proxy->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_proxy->setSortCaseSensitivity(Qt::CaseInsensitive);

    m_view->setModel(m_proxy);
    m_view->setFont(SmallFont(font()));
    m_view->horizontalHeader()->setFont(m_view->font());
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(-1, Qt::AscendingOrder);
    m_view->setAlternatingRowColors(true);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setWordWrap(false);
    m_view->setShowGrid(false);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setDefaultSectionSize(m_view->fontMetrics().height() + RowPadding);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_view->horizontalHeader()->setHighlightSections(false);
    m_view->horizontalHeader()->setResizeContentsPrecision(MeasuredRows);
    FitColumns();

    m_filter->setPlaceholderText("Filter");
    m_filter->setClearButtonEnabled(true);
    m_filter->setMaximumWidth(FilterWidth);
    connect(m_filter, &QLineEdit::textChanged, m_proxy, &QSortFilterProxyModel::setFilterFixedString);

    auto* const head = new QHBoxLayout;
    head->addWidget(m_label, 1);
    head->addWidget(m_filter);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(head);
    layout->addWidget(m_view);

    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(model, signal, this, &TablePanel::ShowCaption);
    connect(model, &QAbstractItemModel::modelReset, this, &TablePanel::ShowCaption);
    connect(m_proxy, &QAbstractItemModel::modelReset, this, &TablePanel::FitColumns);
    ShowCaption();
}

int TablePanel::CurrentRow() const
{
    const QModelIndexList selected = m_view->selectionModel()->selectedRows();
    if (selected.isEmpty())
        return -1;
    const QModelIndex current = m_view->currentIndex();
    return m_proxy->mapToSource(m_view->selectionModel()->isSelected(current) ? current : selected.first()).row();
}

void TablePanel::SelectRows(const QVector<int>& rows)
{
    QItemSelection selection;
    for (const int row : rows) {
        const QModelIndex index = m_model->index(row, 0);
        selection.select(index, index);
    }
    QItemSelection shown = m_proxy->mapSelectionFromSource(selection);
    if (shown.isEmpty() && !rows.isEmpty()) {
        m_filter->clear();
        shown = m_proxy->mapSelectionFromSource(selection);
    }
    if (!shown.isEmpty())
        m_view->setCurrentIndex(shown.first().topLeft());
    m_view->selectionModel()->select(shown, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TablePanel::FollowEnd()
{
    QScrollBar* const bar = m_view->verticalScrollBar();
    const auto follows = std::make_shared<bool>(true);
    connect(bar, &QScrollBar::valueChanged, this, [=](int value) { *follows = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [=](int, int maximum) {
        if (*follows)
            bar->setValue(maximum);
    });
}

void TablePanel::SetNote(const QString& note)
{
    m_note = note;
    ShowCaption();
}

/// As wide as what stands there needs it; an empty table is to be filled yet.
void TablePanel::FitColumns()
{
    const int letter = m_view->fontMetrics().averageCharWidth();
    for (int column = 0; column < m_columnWidths.size(); ++column) {
        if (m_proxy->rowCount() > 0)
            m_view->resizeColumnToContents(column);
        const int most = m_columnWidths.at(column) * letter;
        if (m_proxy->rowCount() == 0 || m_view->columnWidth(column) > most)
            m_view->setColumnWidth(column, most);
    }
}

void TablePanel::ShowCaption()
{
    m_label->setText(
        QString("<b>%1</b>&nbsp; %2%3").arg(m_caption).arg(m_model->rowCount()).arg(m_note.toHtmlEscaped()));
}
