#include "roweditor.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "bindableproperties.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "statementedits.h"

namespace {

const int ShownLines = 3;

} // namespace

RowEditor::RowEditor(StatementEdits* edits)
    : m_edits(edits), m_title(new QLabel), m_writesBack(new QCheckBox("&Writes back")), m_editor(new QPlainTextEdit)
{
    m_title->setTextFormat(Qt::PlainText);
    m_writesBack->setToolTip("Whether a save writes the property's value back to what the statement reads (\"_\" in "
                             "front of the name), or the statement is shown only (\"~\")");
    m_editor->setAccessibleName("Statement");
    m_editor->setTabChangesFocus(true);
    m_editor->setMinimumHeight(m_editor->fontMetrics().lineSpacing() * ShownLines);

    auto* const head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(m_writesBack);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(head);
    layout->addWidget(m_editor);

    connect(m_editor, &QPlainTextEdit::textChanged, this, &RowEditor::Take);
    connect(m_writesBack, &QCheckBox::clicked, this, &RowEditor::TakeMarker);
    ShowNothing();
}

void RowEditor::Show(const FormStatement& statement)
{
    const bool isOther = !m_shown.IsOf(statement.object, statement.property);
    if (isOther)
        m_edits->EndRun();
    m_shown = statement;
    setEnabled(statement.object && statement.isText);
    m_title->setText(QString("%1: %2").arg(statement.objectName, PropertyInfo::ToNormal(statement.property)));
    m_writesBack->setChecked(PropertyInfo::IsMutable(statement.property));
    if (!isOther && m_editor->toPlainText() == statement.text)
        return;
    const QSignalBlocker blocker(m_editor);
    m_editor->setPlainText(statement.text);
}

void RowEditor::ShowNothing()
{
    m_edits->EndRun();
    m_shown = FormStatement();
    m_title->setText("No statement selected");
    const QSignalBlocker blocker(m_editor);
    m_editor->clear();
    m_writesBack->setChecked(false);
    setEnabled(false);
}

void RowEditor::StartTyping()
{
    m_editor->setFocus();
    m_editor->selectAll();
}

void RowEditor::Take()
{
    if (m_shown.object)
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
