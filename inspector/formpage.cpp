#include "formpage.h"

#include <QLineEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "inspectedform.h"
#include "neighbourhoodview.h"
#include "timelineview.h"
#include "view/detailpanel.h"
#include "view/tablepanel.h"

namespace {

/// A table with the names that its parts have for accessibility and for tests.
TablePanel* MakePanel(const QString& caption, QAbstractItemModel* model, const QVector<int>& widths)
{
    auto* const panel = new TablePanel(caption, model, widths);
    panel->View()->setObjectName(caption.toLower());
    panel->View()->setAccessibleName(caption);
    panel->View()->setTabKeyNavigation(false);
    panel->findChild<QLineEdit*>()->setAccessibleName("Filter of " + caption.toLower());
    return panel;
}

} // namespace

FormPage::FormPage(InspectedForm* form)
    : m_form(form),
      m_model(form),
      m_deliveries(form),
      m_data(form),
      m_declarationsPanel(MakePanel("Declarations", &m_model, {20, 16, 30, 20, 8, 20, 12, 12}))
{
    auto* const below = new QTabWidget;
    below->setAccessibleName("Details");
    below->addTab(MakeDetails(), "&Declaration");
    below->addTab(m_neighbourhood = new NeighbourhoodView, "&Neighbourhood");
    below->addTab(m_dataPanel = MakePanel("Data", &m_data, {24, 24, 40}), "D&ata");
    below->addTab(MakeTimeline(), "&Timeline");
    auto* const splitter = new QSplitter(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_declarationsPanel);
    splitter->addWidget(below);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);

    connect(m_declarationsPanel->View()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FormPage::OnSelected);
    connect(m_neighbourhood, &NeighbourhoodView::Chosen, this, &FormPage::Select);
    connect(&m_model, &QAbstractItemModel::modelReset, this, &FormPage::SelectAgain);
    connect(&m_data, &HostDataModel::Refused, this, &FormPage::Refused);
}

QWidget* FormPage::MakeDetails()
{
    m_detail = new DetailPanel(m_form, m_declarationsPanel->View()->font());
    m_detail->findChild<QTreeWidget*>()->setAccessibleName("Parts of the declaration");
    return m_detail;
}

QWidget* FormPage::MakeTimeline()
{
    m_timeline = new TimelineView(m_form);
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_timeline);
    layout->addWidget(MakePanel("Deliveries", &m_deliveries, {14, 12, 12}));
    return page;
}

void FormPage::Refresh()
{
    m_form->Refresh();
    if (m_detail->isVisible())
        m_detail->Refresh();
    // A view writes what changes into an editor that is open.
    const QTableView* const data = m_dataPanel->View();
    if (m_dataPanel->isVisible() && !data->isPersistentEditorOpen(data->currentIndex()))
        m_data.Refresh();
    if (m_timeline->isVisible()) {
        m_deliveries.Refresh();
        m_timeline->update();
    }
}

bool FormPage::SelectObject(const QObject* object)
{
    m_form->Refresh();
    const QVector<int> rows = m_model.RowsOf(object);
    if (!rows.isEmpty())
        m_declarationsPanel->SelectRows(rows);
    return !rows.isEmpty();
}

void FormPage::Select(int position)
{
    m_declarationsPanel->SelectRows({position});
}

void FormPage::OnSelected()
{
    if (m_isSelectingAgain)
        return;
    const int row = m_declarationsPanel->CurrentRow();
    m_object = row < 0 ? nullptr : m_model.Object(row);
    m_property = row < 0 ? QString() : m_form->Properties().at(row).name;
    ShowSelected();
    if (m_object)
        Q_EMIT Selected(m_object);
}

void FormPage::ShowSelected()
{
    const int row = m_declarationsPanel->CurrentRow();
    m_detail->SetDeclaration(row);
    m_neighbourhood->Show(NeighbourhoodOf(*m_form, row));
}

/// Other declarations came or went.
void FormPage::SelectAgain()
{
    const QVector<ViewedProperty>& properties = m_form->Properties();
    m_isSelectingAgain = true;
    for (int row = 0; row < properties.size(); ++row) {
        if (m_object && properties.at(row).object == m_object && properties.at(row).name == m_property)
            Select(row);
    }
    m_isSelectingAgain = false;
    ShowSelected();
}
