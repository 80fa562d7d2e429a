#include "addstatementdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "bindableproperties.h"
#include "designerobjects.h"
#include "statementedits.h"

namespace {

const int ShownProperties = 20;

} // namespace

AddStatementDialog::AddStatementDialog(const StatementEdits* edits, QObject* object, QWidget* parent)
    : QDialog(parent),
      m_edits(edits),
      m_object(object),
      m_property(new QComboBox),
      m_writesBack(new QCheckBox("&Writes back")),
      m_note(new QLabel),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(QString("Add Statement to %1").arg(DesignerObjects::Label(edits->Core(), object)));
    // A property that only the host's class has is typed.
    m_property->setEditable(true);
    m_property->setInsertPolicy(QComboBox::NoInsert);
    m_property->setMaxVisibleItems(ShownProperties);
    const QStringList names = BindableProperties::Unbound(edits->Core(), object);
    for (const QString& name : names) {
        m_property->addItem(name);
        m_property->setItemData(m_property->count() - 1, BindableProperties::TypeOf(object, name), Qt::ToolTipRole);
    }
    m_property->completer()->setFilterMode(Qt::MatchContains);
    m_property->completer()->setCompletionMode(QCompleter::PopupCompletion);
    m_writesBack->setToolTip("Whether a save writes the property's value back to what the statement reads");
    m_buttons->button(QDialogButtonBox::Ok)->setText("&Add");

    auto* const layout = new QFormLayout(this);
    layout->addRow("&Property:", m_property);
    layout->addRow(QString(), m_writesBack);
    layout->addRow(m_note);
    layout->addRow(m_buttons);

    connect(m_property, &QComboBox::currentTextChanged, this, &AddStatementDialog::Check);
    connect(m_writesBack, &QCheckBox::toggled, this, &AddStatementDialog::Check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_property->lineEdit()->selectAll();
    Check();
}

QString AddStatementDialog::Property() const
{
    return BindableProperties::Marked(m_property->currentText().trimmed(), m_writesBack->isChecked());
}

void AddStatementDialog::Check()
{
    const QString name = m_property->currentText().trimmed();
    const QString other = BindableProperties::Marked(name, !m_writesBack->isChecked());
    bool isGood = false;
    QString note;
    if (name.isEmpty() || !m_object) {
        note = "Choose a property, or type the name of one that only the program's class has.";
    } else if (DesignerObjects::DynamicIndex(m_edits->Core(), m_object, other) >= 0) {
        note = QString("\"%1\" has a statement already, as \"%2\".").arg(name, other);
    } else if (!m_edits->CanAdd(m_object, Property())) {
        note = QString("\"%1\" is there already, or is no name for a property.").arg(Property());
    } else {
        note = QString("It will be the dynamic property \"%1\".").arg(Property());
        if (m_property->findText(name, Qt::MatchFixedString | Qt::MatchCaseSensitive) < 0) {
            note += QString("\nOnly a class of the program can have \"%1\"; %2 has none that can be bound.")
                        .arg(name, DesignerObjects::ClassName(m_edits->Core(), m_object));
        }
        isGood = true;
    }
    m_note->setText(note);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(isGood);
}
