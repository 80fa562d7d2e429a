#include "roweditor.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>

#include "bindableproperties.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "edit/statementeditor.h"
#include "formsurroundings.h"
#include "statementedits.h"

namespace {

const int ShownLines = 3;

} // namespace

RowEditor::RowEditor(StatementEdits* edits, FormSurroundings* surroundings)
    : m_edits(edits),
      m_surroundings(surroundings),
      m_title(new QLabel),
      m_writesBack(new QCheckBox("&Writes back")),
      m_editor(new StatementEditor),
      m_remarks(new QLabel)
{
    m_title->setTextFormat(Qt::PlainText);
    m_writesBack->setToolTip("Whether a save writes the property's value back to what the statement reads (\"_\" in "
                             "front of the name), or the statement is shown only (\"~\")");
    m_remarks->setTextFormat(Qt::PlainText);
    m_remarks->setWordWrap(true);
    m_remarks->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_editor->SetSurroundings(surroundings);
    m_editor->setMinimumHeight(m_editor->fontMetrics().lineSpacing() * ShownLines);

    auto* const head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(m_writesBack);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(head);
    layout->addWidget(m_editor, 1);
    layout->addWidget(m_remarks);

    connect(m_editor, &QPlainTextEdit::textChanged, this, &RowEditor::Take);
    connect(m_editor, &StatementEditor::RemarksChanged, this, &RowEditor::TellRemarks);
    connect(m_writesBack, &QCheckBox::clicked, this, &RowEditor::TakeMarker);
    ShowNothing();
}

void RowEditor::Show(const FormStatement& statement, bool isChecked)
{
    const bool isOther = !m_shown.IsOf(statement.object, statement.property);
    if (isOther)
        m_edits->EndRun();
    m_shown = statement;
    m_surroundings->SetObject(statement.object);
    setEnabled(statement.object && statement.isText);
    m_title->setText(QString("%1: %2").arg(statement.objectName, PropertyInfo::ToNormal(statement.property)));
    m_writesBack->setChecked(PropertyInfo::IsMutable(statement.property));
    if (isOther || m_editor->toPlainText() != statement.text)
        SetText(statement.text);
    if (isChecked)
        m_editor->SetMarks(statement.text, statement.marks);
}

/// Without taking it for something typed.
void RowEditor::SetText(const QString& text)
{
    const QScopedValueRollback<bool> isShowing(m_isShowing, true);
    m_editor->setPlainText(text);
}

void RowEditor::ShowNothing()
{
    m_edits->EndRun();
    m_shown = FormStatement();
    m_title->setText("No statement selected");
    m_surroundings->SetObject(nullptr);
    SetText(QString());
    m_writesBack->setChecked(false);
    setEnabled(false);
    TellRemarks();
}

void RowEditor::StartTyping()
{
    m_editor->setFocus();
    m_editor->selectAll();
}

void RowEditor::Take()
{
    if (m_shown.object && !m_isShowing)
        m_edits->Change(m_shown.object, m_shown.property, m_editor->toPlainText());
}

void RowEditor::TakeMarker()
{
    if (!m_shown.object)
        return;
    const QString name
        = BindableProperties::Marked(PropertyInfo::ToNormal(m_shown.property), m_writesBack->isChecked());
    if (m_edits->Rename(m_shown.object, m_shown.property, name))
        emit Renamed(m_shown.object, name);
    else
        m_writesBack->setChecked(!m_writesBack->isChecked());
}

void RowEditor::TellRemarks()
{
    // Nothing is wrong with a statement that is none.
    const QString remarks = m_shown.object ? m_editor->Remarks() : QString();
    m_remarks->setText(remarks);
    m_remarks->setVisible(!remarks.isEmpty());
}
