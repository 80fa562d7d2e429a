#ifndef STATEMENTSDIALOG_H
#define STATEMENTSDIALOG_H

#include <QDialog>

class FormChecks;
class FormWatcher;
class StatementEdits;
class StatementsPanel;

/// The statements of one object. What is done here is done in the form at once, and undone there.
class StatementsDialog : public QDialog
{
    Q_OBJECT

public:
    StatementsDialog(FormWatcher* watcher, FormChecks* checks, StatementEdits* edits, QObject* object, QWidget* parent);

    StatementsPanel* Panel() const { return m_panel; }

private:
    StatementsPanel* const m_panel;
};

#endif
