#ifndef ROWEDITOR_H
#define ROWEDITOR_H

#include <QWidget>

#include "formstatements.h"

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class StatementEdits;

/// Edits one statement of a form. What is typed goes into the form at once, all that is typed in one go as one step of
/// its undo.
class RowEditor : public QWidget
{
    Q_OBJECT

public:
    explicit RowEditor(StatementEdits* edits);

    /// The statement to edit, or what became of it.
    void Show(const FormStatement& statement);
    void ShowNothing();
    const FormStatement& Shown() const { return m_shown; }
    /// The user is to type the statement.
    void StartTyping();

signals:
    /// The statement has another name now.
    void Renamed(QObject* object, const QString& property);

private:
    void Take();
    void TakeMarker();

    StatementEdits* const m_edits;
    FormStatement m_shown;
    QLabel* const m_title;
    QCheckBox* const m_writesBack;
    QPlainTextEdit* const m_editor;
};

#endif
