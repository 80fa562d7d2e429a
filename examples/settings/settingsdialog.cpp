#include "settingsdialog.h"

#include <QEvent>
#include <QMetaProperty>
#include <QStyle>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "ui_settings.h"

namespace {

const QString EditedMark = QStringLiteral(" \u2022");
/// A dynamic property, for the style sheet.
const char* const Refused = "refused";

QLocale LocaleOf(const QString& language)
{
    return language == "Deutsch" ? QLocale(QLocale::German) : QLocale(QLocale::English);
}

void Mark(QWidget* widget, const QString& message)
{
    widget->setProperty(Refused, !message.isEmpty());
    widget->setToolTip(message);
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

} // namespace

SettingsDialog::SettingsDialog() : m_ui(new Ui::SettingsDialog), m_binding(this)
{
    m_ui->setupUi(this);
    m_binding.SetDefaultPackage("Station");
    m_binding.Bind();
    FollowLanguage();
    ConnectButtons();
    WatchEdits();
    ShowState();
}

SettingsDialog::~SettingsDialog() = default;

void SettingsDialog::accept()
{
    if (m_binding.Save().refused.isEmpty())
        QDialog::accept();
}

void SettingsDialog::reject()
{
    m_binding.Revert();
    QDialog::reject();
}

void SettingsDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_ui->retranslateUi(this);
        ShowState();
    }
    QDialog::changeEvent(event);
}

void SettingsDialog::ConnectButtons()
{
    connect(m_ui->okButton, &QPushButton::clicked, this, &SettingsDialog::accept);
    connect(m_ui->cancelButton, &QPushButton::clicked, this, &SettingsDialog::reject);
    connect(m_ui->applyButton, &QPushButton::clicked, this, [this] { m_binding.Save(); });
    connect(m_ui->restoreButton, &QPushButton::clicked, this, [this] {
        m_binding.Revert(m_ui->pages->currentWidget());
        ShowState();
    });
    connect(&m_binding, &FormBinding::EditedChanged, m_ui->applyButton, &QPushButton::setEnabled);
    connect(&m_binding, &FormBinding::Saved, this, [this] {
        FollowLanguage();
        ShowState();
    });
    connect(m_ui->pages, &QTabWidget::currentChanged, this, &SettingsDialog::ShowState);
}

/// The binding tells of the form as a whole; the pages have marks of their own.
void SettingsDialog::WatchEdits()
{
    const QMetaMethod showState = metaObject()->method(metaObject()->indexOfSlot("ShowState()"));
    const QVector<BoundProperty> properties = m_binding.BoundProperties();
    for (const BoundProperty& bound : properties) {
        const QMetaObject* const type = bound.object->metaObject();
        const QMetaProperty property = type->property(type->indexOfProperty(bound.property.mid(1).toLatin1()));
        if (bound.writable && property.hasNotifySignal())
            connect(bound.object, property.notifySignal(), this, showState);
    }
}

void SettingsDialog::ShowState()
{
    ShowEditedPages();
    ShowRefusals();
}

void SettingsDialog::ShowEditedPages()
{
    QTabWidget* const pages = m_ui->pages;
    for (int i = 0; i < pages->count(); ++i) {
        const QString title = pages->tabText(i).remove(EditedMark);
        pages->setTabText(i, m_binding.IsEdited(pages->widget(i)) ? title + EditedMark : title);
    }
    m_ui->restoreButton->setEnabled(m_binding.IsEdited(pages->currentWidget()));
}

void SettingsDialog::ShowRefusals()
{
    QHash<QWidget*, QString> refusals;
    const QVector<FormProblem> problems = m_binding.Problems();
    for (const FormProblem& problem : problems) {
        if (problem.kind == FormProblem::NotStored)
            refusals.insert(qobject_cast<QWidget*>(problem.object), problem.message);
    }
    const QList<QWidget*> widgets = findChildren<QWidget*>();
    for (QWidget* const widget : widgets) {
        if (refusals.contains(widget) || widget->property(Refused).toBool())
            Mark(widget, refusals.value(widget));
    }
    m_ui->problemNote->setText(QStringList(refusals.values()).join('\n'));
    m_ui->problemNote->setVisible(!refusals.isEmpty());
}

/// English is what the form is written in.
void SettingsDialog::FollowLanguage()
{
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    const QString language = data->GetValue(VariableIdentifier("language", "Station"), QVariant()).toString();
    if (language == m_language)
        return;
    m_language = language;
    const QLocale locale = LocaleOf(language);
    setLocale(locale);
    QCoreApplication::removeTranslator(&m_translator);
    if (m_translator.load(locale, "settings", "_", ":/translations"))
        QCoreApplication::installTranslator(&m_translator);
}
