#include "edit/statementeditor.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

#include "common/diagnosis.h"
#include "edit/statementcompletion.h"
#include "edit/statementhighlighter.h"
#include "edit/statementsurroundings.h"

namespace {

/// In letters, from which on what is typed is completed unasked.
const int LeastTyped = 2;
const int DarkBelow = 128;

QColor ColorOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return QColor(0xe5, 0x39, 0x35);
    case Severity::Warning:
        return QColor(0xef, 0x8f, 0x00);
    default:
        return QColor(0x42, 0x8b, 0xca);
    }
}

} // namespace

StatementEditor::StatementEditor(QWidget* parent)
    : QPlainTextEdit(parent),
      m_highlighter(new StatementHighlighter(document())),
      m_completer(new QCompleter(&m_words, this))
{
    setAccessibleName("Statement");
    setTabChangesFocus(true);
    setLineWrapMode(WidgetWidth);
    m_highlighter->SetDark(palette().color(QPalette::Base).lightness() < DarkBelow);
    m_completer->setWidget(this);
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    connect(m_completer, QOverload<const QString&>::of(&QCompleter::activated), this, &StatementEditor::Insert);
    connect(this, &QPlainTextEdit::textChanged, this, &StatementEditor::Parse);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &StatementEditor::RemarksChanged);
}

void StatementEditor::SetMarks(const QString& statement, const QVector<StatementMark>& marks)
{
    if (statement == toPlainText())
        Show(marks);
}

/// What the parser says is there with the keystroke; all else comes when somebody has looked for it.
void StatementEditor::Parse()
{
    const QString text = toPlainText();
    // Colours count as changes, too.
    if (text == m_parsed)
        return;
    m_parsed = text;
    QVector<StatementMark> marks;
    const Diagnosis diagnosis(text);
    for (const Diagnosis::Message& message : diagnosis.Messages()) {
        marks.append(
            {message.place, message.isError ? Severity::Error : Severity::Warning, message.Whole(), QString()});
    }
    Show(marks);
}

void StatementEditor::Show(const QVector<StatementMark>& marks)
{
    m_shown.clear();
    const int length = int(toPlainText().size());
    for (const StatementMark& mark : marks) {
        QTextCursor cursor(document());
        cursor.setPosition(qBound(0, mark.place.offset, length));
        cursor.setPosition(qBound(0, mark.place.End(), length), QTextCursor::KeepAnchor);
        m_shown.append({mark, cursor});
    }
    std::stable_sort(m_shown.begin(), m_shown.end(),
                     [](const Shown& left, const Shown& right) { return left.mark.severity > right.mark.severity; });
    Underline();
    emit RemarksChanged();
}

void StatementEditor::Underline()
{
    QList<QTextEdit::ExtraSelection> selections;
    // The worst is drawn last, over the others.
    for (int i = int(m_shown.size()) - 1; i >= 0; --i) {
        QTextEdit::ExtraSelection selection;
        selection.cursor = m_shown.at(i).cursor;
        // What is missing is shown at the letter in front of it.
        if (!selection.cursor.hasSelection()
            && !selection.cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor))
            selection.cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
        selection.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        selection.format.setUnderlineColor(ColorOf(m_shown.at(i).mark.severity));
        selections.append(selection);
    }
    setExtraSelections(selections);
}

QString StatementEditor::Remarks() const
{
    QStringList all;
    QStringList here;
    for (const Shown& shown : m_shown) {
        const QString text = SeverityName(shown.mark.severity) + ": " + shown.mark.message;
        all.append(text);
        if (IsAt(shown, textCursor().position()))
            here.append(text);
    }
    return (here.isEmpty() ? all : here).join('\n');
}

bool StatementEditor::Fix()
{
    const Shown* wanted = nullptr;
    for (const Shown& shown : qAsConst(m_shown)) {
        if (CanFix(shown)
            && (!wanted || (IsAt(shown, textCursor().position()) && !IsAt(*wanted, textCursor().position()))))
            wanted = &shown;
    }
    if (!wanted)
        return false;
    Apply(Shown(*wanted));
    return true;
}

void StatementEditor::Complete()
{
    const StatementCompletion completion
        = StatementCompletion::At(toPlainText(), textCursor().position(), m_surroundings);
    if (completion.words.isEmpty() || isReadOnly()) {
        m_completer->popup()->hide();
        return;
    }
    m_replaced = completion.place.offset;
    m_words.setStringList(completion.words);
    m_completer->setCompletionPrefix(QString());
    QAbstractItemView* const popup = m_completer->popup();
    popup->setCurrentIndex(m_completer->completionModel()->index(0, 0));
    QTextCursor start(document());
    start.setPosition(m_replaced);
    QRect place = cursorRect(start);
    place.setWidth(popup->sizeHintForColumn(0) + popup->verticalScrollBar()->sizeHint().width());
    m_completer->complete(place);
}

void StatementEditor::Insert(const QString& word)
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(m_replaced, QTextCursor::KeepAnchor);
    cursor.insertText(word);
    setTextCursor(cursor);
    // A path wants one of the properties.
    if (word.endsWith(':'))
        Complete();
}

bool StatementEditor::IsAt(const Shown& shown, int position) const
{
    return shown.cursor.selectionStart() <= position && position <= shown.cursor.selectionEnd();
}

/// Not where the text has changed since.
bool StatementEditor::CanFix(const Shown& shown) const
{
    return !isReadOnly() && !shown.mark.fix.isEmpty()
        && shown.cursor.selectionEnd() - shown.cursor.selectionStart() == shown.mark.place.length;
}

void StatementEditor::Apply(const Shown& shown)
{
    QTextCursor cursor = shown.cursor;
    cursor.insertText(shown.mark.fix);
}

QString StatementEditor::Explain(int position) const
{
    QStringList lines;
    for (const Shown& shown : m_shown) {
        if (IsAt(shown, position))
            lines.append(shown.mark.message);
    }
    for (const StatementToken& token : m_highlighter->Tokens().Tokens()) {
        const bool isMeant = token.place.offset <= position && position < token.place.End();
        if (isMeant && token.type == Token::TT_VARIABLE && m_surroundings)
            lines.append(m_surroundings->Describe(token.reference));
    }
    lines.removeAll(QString());
    return lines.join('\n');
}

/// Designer has shortcuts of its own for what is a key of the editor.
bool StatementEditor::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        const bool isFix = key->modifiers() == Qt::AltModifier && key->key() == Qt::Key_Return;
        const bool isAsk = key->modifiers() == Qt::ControlModifier && key->key() == Qt::Key_Space;
        if (isFix || isAsk) {
            event->accept();
            return true;
        }
    }
    return QPlainTextEdit::event(event);
}

bool StatementEditor::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QPlainTextEdit::viewportEvent(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const QString text = Explain(cursorForPosition(help->pos()).position());
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), "<p>" + text.toHtmlEscaped().replace('\n', "</p><p>") + "</p>", this);
    return true;
}

void StatementEditor::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        m_highlighter->SetDark(palette().color(QPalette::Base).lightness() < DarkBelow);
}

void StatementEditor::contextMenuEvent(QContextMenuEvent* event)
{
    const QScopedPointer<QMenu> menu(createStandardContextMenu());
    QAction* const first = menu->actions().value(0);
    // By the key it is about the cursor, not about where the mouse is.
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    const int position = isByMouse ? cursorForPosition(event->pos()).position() : textCursor().position();
    bool hasFixes = false;
    const QVector<Shown> all = m_shown;
    for (const Shown& shown : all) {
        if (!CanFix(shown) || !IsAt(shown, position))
            continue;
        hasFixes = true;
        auto* const fix = new QAction(
            QString("Put \"%1\" in the place of \"%2\"").arg(shown.mark.fix, shown.cursor.selectedText()), menu.data());
        connect(fix, &QAction::triggered, this, [this, shown] { Apply(shown); });
        menu->insertAction(first, fix);
    }
    if (hasFixes)
        menu->insertSeparator(first);
    menu->exec(event->globalPos());
}

void StatementEditor::keyPressEvent(QKeyEvent* event)
{
    const bool isOffering = m_completer->popup()->isVisible();
    const int key = event->key();
    // These are for the offers.
    if (isOffering
        && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab
            || key == Qt::Key_Escape)) {
        event->ignore();
        return;
    }
    if (event->modifiers() == Qt::ControlModifier && key == Qt::Key_Space) {
        Complete();
        return;
    }
    if (event->modifiers() == Qt::AltModifier && key == Qt::Key_Return) {
        Fix();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
    if (isOffering || !event->text().isEmpty())
        Follow(event->text());
}

void StatementEditor::focusInEvent(QFocusEvent* event)
{
    m_completer->setWidget(this);
    QPlainTextEdit::focusInEvent(event);
}

/// Offers go on as long as a name is typed.
void StatementEditor::Follow(const QString& typed)
{
    const StatementCompletion completion
        = StatementCompletion::At(toPlainText(), textCursor().position(), m_surroundings);
    const QString text = toPlainText().mid(completion.place.offset, completion.place.length);
    const bool isName = !typed.isEmpty() && (typed.at(0).isLetterOrNumber() || QString("_@:\\").contains(typed.at(0)));
    const bool isEnough = text.size() >= LeastTyped || text.startsWith('@');
    if (m_completer->popup()->isVisible() ? completion.place.length > 0 : isName && isEnough)
        Complete();
    else
        m_completer->popup()->hide();
}
