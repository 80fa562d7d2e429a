#ifndef ROWEDITOR_H
#define ROWEDITOR_H

#include <QWidget>

#include "formstatements.h"

class FormSurroundings;
class QCheckBox;
class QLabel;
class StatementEditor;
class StatementEdits;

/// Edits one statement of a form. What is typed goes into the form at once, all that is typed in one go as one step of
/// its undo.
class RowEditor : public QWidget
{
    Q_OBJECT

public:
    /// The surroundings outlive this.
    RowEditor(StatementEdits* edits, FormSurroundings* surroundings);

    /// The statement to edit, or what became of it, and whether what is wrong with it is known.
    void Show(const FormStatement& statement, bool isChecked);
    void ShowNothing();
    const FormStatement& Shown() const { return m_shown; }
    /// The user is to type the statement.
    void StartTyping();

signals:
    /// The statement has another name now.
    void Renamed(QObject* object, const QString& property);

private:
    void SetText(const QString& text);
    void Take();
    void TakeMarker();
    void TellRemarks();

    StatementEdits* const m_edits;
    FormSurroundings* const m_surroundings;
    FormStatement m_shown;
    bool m_isShowing = false; ///< The text that changes is none that the user types.
    QLabel* const m_title;
    QCheckBox* const m_writesBack;
    StatementEditor* const m_editor;
    QLabel* const m_remarks;
};

#endif
