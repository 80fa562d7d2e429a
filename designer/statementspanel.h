#ifndef STATEMENTSPANEL_H
#define STATEMENTSPANEL_H

#include <QPointer>
#include <QWidget>

#include "formsurroundings.h"
#include "statementsmodel.h"

class FormChecks;
class FormWatcher;
class QPushButton;
class QSortFilterProxyModel;
class QSplitter;
class RowEditor;
class StatementEdits;
class TablePanel;

/// The statements of the form that is edited, or of one of its objects: a table with an editor for the row that is
/// current. In the table of a form, row and selection of the form follow each other.
class StatementsPanel : public QWidget
{
    Q_OBJECT

public:
    /// Of all objects without \a scope.
    StatementsPanel(FormWatcher* watcher, FormChecks* checks, StatementEdits* edits, QObject* scope = nullptr);

    TablePanel* Table() const { return m_table; }
    RowEditor* Editor() const { return m_editor; }

    /// Makes a row current, also one that is yet to be read.
    void SetCurrent(QObject* object, const QString& property);

signals:
    void PreviewWanted();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void KeepRows(const QWidget* old, const QWidget* now);
    QSortFilterProxyModel* SortedRows() const;
    void ReadForm();
    void TakeFindings();
    void ShowCurrent();
    void SelectInForm();
    void FollowForm();
    void AddStatement();
    void RemoveStatement();
    QObject* AddTarget() const;
    void UpdateButtons();

    FormWatcher* const m_watcher;
    FormChecks* const m_checks;
    StatementEdits* const m_edits;
    const bool m_isScoped;
    const QPointer<QObject> m_scope;
    FormSurroundings m_surroundings;
    StatementsModel m_model;
    TablePanel* const m_table;
    RowEditor* const m_editor;
    QSplitter* const m_splitter;
    QPushButton* const m_add;
    QPushButton* const m_remove;
    bool m_follows = false; ///< The table follows the form, not the form the table.
};

#endif
