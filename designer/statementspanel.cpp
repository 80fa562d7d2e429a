#include "statementspanel.h"

#include <QApplication>
#include <QDesignerFormWindowInterface>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSplitter>

#include <algorithm>

#include "addstatementdialog.h"
#include "formchecks.h"
#include "formwatcher.h"
#include "objectselection.h"
#include "roweditor.h"
#include "statementedits.h"
#include "view/tablepanel.h"

namespace {

/// Of the columns, in letters.
const QVector<int> ColumnWidths{18, 18, 44, 10, 60};
const int TableShare = 2;
/// How many times as wide as high the panel is from which on the editor stands beside the table.
const int WideRatio = 2;

QPushButton* MakeButton(const QString& text, const QString& toolTip, QBoxLayout* row)
{
    auto* const button = new QPushButton(text);
    button->setToolTip(toolTip);
    row->addWidget(button);
    return button;
}

} // namespace

StatementsPanel::StatementsPanel(FormWatcher* watcher, FormChecks* checks, StatementEdits* edits, QObject* scope)
    : m_watcher(watcher),
      m_checks(checks),
      m_edits(edits),
      m_isScoped(scope),
      m_scope(scope),
      m_surroundings(watcher),
      m_table(new TablePanel("Statements", &m_model, ColumnWidths)),
      m_editor(new RowEditor(edits, &m_surroundings)),
      m_splitter(new QSplitter),
      m_add(new QPushButton("&Add...")),
      m_remove(new QPushButton("&Remove"))
{
    m_table->layout()->setContentsMargins(0, 0, 0, 0);
    m_table->View()->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->View()->setColumnHidden(StatementsModel::Object, m_isScoped);
    m_table->View()->setTabKeyNavigation(false);
    m_table->View()->setAccessibleName("Statements");
    m_add->setToolTip("Binds one more property of the selected object");
    m_remove->setToolTip("Takes the selected statements away");

    auto* const side = new QWidget;
    auto* const sideLayout = new QVBoxLayout(side);
    sideLayout->setContentsMargins(0, 0, 0, 0);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(m_add);
    buttons->addWidget(m_remove);
    buttons->addStretch();
    auto* const preview = MakeButton("&Preview", "Shows the form as it is now with the project's data", buttons);
    connect(preview, &QPushButton::clicked, this, &StatementsPanel::PreviewWanted);

    sideLayout->addWidget(m_editor);
    sideLayout->addLayout(buttons);

    m_splitter->addWidget(m_table);
    m_splitter->addWidget(side);
    m_splitter->setStretchFactor(0, TableShare);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_splitter);

    connect(m_add, &QPushButton::clicked, this, &StatementsPanel::AddStatement);
    connect(m_remove, &QPushButton::clicked, this, &StatementsPanel::RemoveStatement);
    connect(m_editor, &RowEditor::Renamed, this, &StatementsPanel::SetCurrent);
    connect(watcher, &FormWatcher::Read, this, &StatementsPanel::ReadForm);
    connect(checks, &FormChecks::Checked, this, &StatementsPanel::TakeFindings);
    connect(m_table->View()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &StatementsPanel::SelectInForm);
    connect(m_table->View()->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &StatementsPanel::ShowCurrent, Qt::QueuedConnection);
    connect(qApp, &QApplication::focusChanged, this, &StatementsPanel::KeepRows);
    if (!m_isScoped)
        connect(watcher, &FormWatcher::SelectionChanged, this, &StatementsPanel::FollowForm);
    ReadForm();
}

void StatementsPanel::SetCurrent(QObject* object, const QString& property)
{
    m_watcher->ReadNow();
    const int row = m_model.Row(object, property);
    if (row >= 0)
        m_table->SelectRows({row});
    ShowCurrent();
}

void StatementsPanel::resizeEvent(QResizeEvent* event)
{
    m_splitter->setOrientation(width() > WideRatio * height() ? Qt::Horizontal : Qt::Vertical);
    QWidget::resizeEvent(event);
}

/// What is typed must not take the row away that it is typed for.
void StatementsPanel::KeepRows(const QWidget* /*old*/, const QWidget* now)
{
    QSortFilterProxyModel* const rows = SortedRows();
    const bool isTyped = m_editor->isAncestorOf(now);
    if (!now || rows->dynamicSortFilter() != isTyped)
        return;
    rows->setDynamicSortFilter(!isTyped);
    if (!isTyped)
        rows->invalidate();
}

QSortFilterProxyModel* StatementsPanel::SortedRows() const
{
    return qobject_cast<QSortFilterProxyModel*>(m_table->View()->model());
}

void StatementsPanel::ReadForm()
{
    QVector<FormStatement> statements = m_watcher->Statements();
    const auto isElsewhere = [this](const FormStatement& statement) { return statement.object != m_scope; };
    if (m_isScoped)
        statements.erase(std::remove_if(statements.begin(), statements.end(), isElsewhere), statements.end());
    for (FormStatement& statement : statements) {
        statement.findings = m_checks->TextOf(statement);
        statement.marks = m_checks->MarksOf(statement);
    }
    m_table->SetNote(m_checks->Failure().isEmpty() ? QString() : "not checked: " + m_checks->Failure());
    const QScopedValueRollback<bool> follows(m_follows, true);
    m_model.SetStatements(statements);
    ShowCurrent();
}

/// What is typed and not read yet would be taken back, and comes with its findings when it is read.
void StatementsPanel::TakeFindings()
{
    if (m_watcher->IsCurrent())
        ReadForm();
}

void StatementsPanel::ShowCurrent()
{
    const int row = m_table->CurrentRow();
    if (row >= 0)
        m_editor->Show(m_model.At(row), m_checks->IsCurrent());
    else
        m_editor->ShowNothing();
    UpdateButtons();
}

void StatementsPanel::SelectInForm()
{
    ShowCurrent();
    const int row = m_table->CurrentRow();
    QObject* const object = row >= 0 ? m_model.At(row).object : nullptr;
    if (m_follows || m_isScoped || !object || !m_watcher->Form())
        return;
    if (!ObjectSelection::Of(m_watcher->Form()).contains(object))
        ObjectSelection::Select(m_watcher->Form(), object);
}

void StatementsPanel::FollowForm()
{
    UpdateButtons();
    if (!m_watcher->Form())
        return;
    m_watcher->ReadNow();
    const QVector<QObject*> selected = ObjectSelection::Of(m_watcher->Form());
    const int current = m_table->CurrentRow();
    if (current >= 0 && selected.contains(m_model.At(current).object))
        return;
    QVector<int> rows;
    for (const QObject* const object : selected)
        rows += m_model.RowsOf(object);
    const QScopedValueRollback<bool> follows(m_follows, true);
    m_table->SelectRows(rows);
}

void StatementsPanel::AddStatement()
{
    const QPointer<QObject> target = AddTarget();
    if (!target)
        return;
    AddStatementDialog dialog(m_edits, target, this);
    if (dialog.exec() != QDialog::Accepted || !target || !m_edits->Add(target, dialog.Property(), QString()))
        return;
    SetCurrent(target, dialog.Property());
    m_editor->StartTyping();
}

void StatementsPanel::RemoveStatement()
{
    QVector<FormStatement> statements;
    const QModelIndexList rows = m_table->View()->selectionModel()->selectedRows();
    for (const QModelIndex& row : rows)
        statements.append(m_model.At(SortedRows()->mapToSource(row).row()));
    m_edits->Remove(statements);
    m_watcher->ReadNow();
}

/// What the form has selected, since that is what the user looks at.
QObject* StatementsPanel::AddTarget() const
{
    if (m_isScoped)
        return m_scope;
    const QVector<QObject*> selected = m_watcher->Form() ? ObjectSelection::Of(m_watcher->Form()) : QVector<QObject*>();
    return selected.isEmpty() ? nullptr : selected.first();
}

void StatementsPanel::UpdateButtons()
{
    m_add->setEnabled(AddTarget());
    m_remove->setEnabled(m_table->CurrentRow() >= 0);
}
