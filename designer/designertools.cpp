#include "designertools.h"

#include <QDesignerFormEditorInterface>
#include <QMessageBox>

#include "panelplacement.h"
#include "statementsdialog.h"
#include "statementspanel.h"

DesignerTools::DesignerTools(QDesignerFormEditorInterface* core)
    : m_core(core),
      m_watcher(core),
      m_checks(&m_watcher),
      m_edits(core),
      m_previews(&m_watcher),
      m_menus(core->extensionManager(), [this](QObject* object) { Open(object); }),
      m_panel(new StatementsPanel(&m_watcher, &m_checks, &m_edits)),
      m_placement(new PanelPlacement(core, m_panel))
{
    connect(&m_edits, &StatementEdits::Changing, &m_watcher, &FormWatcher::StartTyping);
    connect(&m_edits, &StatementEdits::Changed, &m_watcher, &FormWatcher::TakeTyped);
    connect(m_panel, &StatementsPanel::PreviewWanted, &m_previews, &FormPreviews::Start);
    connect(&m_previews, &FormPreviews::Failed, this, &DesignerTools::TellFailure);
}

DesignerTools::~DesignerTools() = default;

void DesignerTools::Open(QObject* object)
{
    StatementsDialog dialog(&m_watcher, &m_checks, &m_edits, object, m_core->topLevel());
    connect(dialog.Panel(), &StatementsPanel::PreviewWanted, &m_previews, &FormPreviews::Start);
    dialog.exec();
}

void DesignerTools::TellFailure(const QString& reason)
{
    QMessageBox::warning(m_core->topLevel(), "Preview", "The preview cannot be shown.\n\n" + reason);
}
