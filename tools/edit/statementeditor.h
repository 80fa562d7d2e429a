#ifndef STATEMENTEDITOR_H
#define STATEMENTEDITOR_H

#include <QPlainTextEdit>
#include <QStringListModel>
#include <QTextCursor>
#include <QVector>

#include "edit/statementmark.h"

class QCompleter;
class StatementHighlighter;
class StatementSurroundings;

/// Edits one statement: colours it, offers what can stand there, and underlines what is wrong with it. Ctrl+Space asks
/// for the offers, Alt+Return mends what is certain at the cursor.
class StatementEditor : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit StatementEditor(QWidget* parent = nullptr);

    /// What the statement can read; null for nothing. It outlives this, or is taken away.
    void SetSurroundings(const StatementSurroundings* surroundings) { m_surroundings = surroundings; }
    /// What is known of \a statement; nothing happens where another one is shown.
    void SetMarks(const QString& statement, const QVector<StatementMark>& marks);

    /// What is wrong at the cursor, or else with the statement, worst first; empty when nothing is.
    QString Remarks() const;
    /// Mends what is certain at the cursor, or else the first that is. False when nothing is.
    bool Fix();
    /// Offers what can stand at the cursor.
    void Complete();

signals:
    /// Remarks() may answer another text.
    void RemarksChanged();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    /// A mark that moves with the text around it.
    struct Shown
    {
        StatementMark mark;
        QTextCursor cursor;
    };

    void Parse();
    void Show(const QVector<StatementMark>& marks);
    void Underline();
    void Insert(const QString& word);
    void Follow(const QString& typed);
    bool IsAt(const Shown& shown, int position) const;
    bool CanFix(const Shown& shown) const;
    void Apply(const Shown& shown);
    QString Explain(int position) const;

    const StatementSurroundings* m_surroundings = nullptr;
    StatementHighlighter* const m_highlighter;
    QStringListModel m_words;
    QCompleter* const m_completer;
    QVector<Shown> m_shown;
    QString m_parsed;   ///< What the marks are of.
    int m_replaced = 0; ///< Where the word starts that a choice takes the place of.
};

#endif
