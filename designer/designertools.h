#ifndef DESIGNERTOOLS_H
#define DESIGNERTOOLS_H

#include <memory>

#include "formchecks.h"
#include "formpreviews.h"
#include "formwatcher.h"
#include "statementedits.h"
#include "statementsmenu.h"

class PanelPlacement;
class StatementsPanel;

/// All that the plugin brings to one Designer. It goes before Designer's own parts do.
class DesignerTools : public QObject
{
    Q_OBJECT

public:
    explicit DesignerTools(QDesignerFormEditorInterface* core);
    ~DesignerTools() override;

    StatementsPanel* Panel() const { return m_panel; }
    FormWatcher* Watcher() { return &m_watcher; }
    FormChecks* Checks() { return &m_checks; }
    StatementEdits* Edits() { return &m_edits; }

    /// The dialog with the statements of an object.
    void Open(QObject* object);

private:
    void TellFailure(const QString& reason);

    QDesignerFormEditorInterface* const m_core;
    FormWatcher m_watcher;
    FormChecks m_checks;
    StatementEdits m_edits;
    FormPreviews m_previews;
    StatementsMenuFactory m_menus;
    StatementsPanel* const m_panel; ///< Belongs to the placement.
    const std::unique_ptr<PanelPlacement> m_placement;
};

#endif
