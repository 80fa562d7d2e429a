#include "inspectorwindow.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>

#include "formpage.h"
#include "inspectedform.h"

namespace {

const int RefreshInterval = 500; ///< In milliseconds, as fast as anyone reads.
const int NoteDuration = 8000;
const QSize InitialSize(1300, 800);

} // namespace

InspectorWindow::InspectorWindow() : m_pages(new QStackedWidget)
{
    setWindowTitle("Declarations of " + QGuiApplication::applicationDisplayName());
    // The program ends with its own last window.
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_DeleteOnClose);
    AddToolBar();
    setCentralWidget(m_pages);
    resize(InitialSize);
    statusBar()->setAccessibleName("Messages");

    m_pages->addWidget(new QLabel("No form is bound."));
    for (InspectedForm* const form : m_inspection.Forms())
        OnAdded(form);
    connect(&m_inspection, &Inspection::Added, this, &InspectorWindow::OnAdded);
    connect(&m_inspection, &Inspection::Removed, this, &InspectorWindow::OnRemoved);
    connect(&m_picker, &WidgetPicker::Picked, this, &InspectorWindow::ShowWidget);
    connect(&m_picker, &WidgetPicker::Ended, this, [this] { m_pick->setChecked(false); });
    connect(&m_refresh, &QTimer::timeout, this, [this] {
        if (isVisible() && !isMinimized())
            Refresh();
        else
            Record();
    });
    m_refresh.start(RefreshInterval);
}

InspectorWindow::~InspectorWindow()
{
    // Before the forms that they show.
    qDeleteAll(m_pages->findChildren<FormPage*>());
}

void InspectorWindow::AddToolBar()
{
    QToolBar* const toolBar = addToolBar("Actions");
    toolBar->setMovable(false);
    m_forms = new QComboBox;
    m_forms->setAccessibleName("Form");
    m_forms->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto* const label = new QLabel("&Form ");
    label->setBuddy(m_forms);
    toolBar->addWidget(label);
    toolBar->addWidget(m_forms);
    connect(m_forms, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &InspectorWindow::ShowCurrent);

    m_pick = toolBar->addAction("&Pick a widget");
    m_pick->setCheckable(true);
    m_pick->setShortcut(QKeySequence("Ctrl+P"));
    m_pick->setToolTip("Shows the declarations of the widget that is clicked next, or that has the focus when Enter is "
                       "pressed; Escape gives up (Ctrl+P)");
    connect(m_pick, &QAction::toggled, this, [this](bool wanted) { wanted ? m_picker.Start() : m_picker.Stop(); });
    m_record = toolBar->addAction("&Record data…");
    m_record->setCheckable(true);
    m_record->setShortcut(QKeySequence("Ctrl+R"));
    m_record->setToolTip("Writes each change of the variables to a file, which declview and decleval replay (Ctrl+R)");
    connect(m_record, &QAction::triggered, this, &InspectorWindow::OnRecord);
    // Tool buttons take the focus by their mnemonics alone.
    for (QAction* const action : {m_pick, m_record})
        toolBar->widgetForAction(action)->setFocusPolicy(Qt::StrongFocus);
}

FormPage* InspectorWindow::CurrentPage() const
{
    return qobject_cast<FormPage*>(m_pages->currentWidget());
}

/// Null while there are no forms.
InspectedForm* InspectorWindow::CurrentForm() const
{
    return m_inspection.Forms().value(m_forms->currentIndex());
}

FormPage* InspectorWindow::PageOf(const InspectedForm* form) const
{
    for (int i = 0; i < m_pages->count(); ++i) {
        auto* const page = qobject_cast<FormPage*>(m_pages->widget(i));
        if (page && page->Inspected() == form)
            return page;
    }
    return nullptr;
}

/// Pages are made for the forms that somebody looks at: a program may have hundreds.
void InspectorWindow::ShowCurrent()
{
    InspectedForm* const form = CurrentForm();
    if (!form) {
        m_pages->setCurrentIndex(0);
        return;
    }
    FormPage* page = PageOf(form);
    if (!page) {
        page = new FormPage(form);
        connect(page, &FormPage::Selected, &m_flash, &WidgetFlash::Start);
        connect(page, &FormPage::Refused, this, &InspectorWindow::Tell);
        m_pages->addWidget(page);
    }
    m_pages->setCurrentWidget(page);
    page->Refresh();
}

void InspectorWindow::ShowWidget(const QWidget* widget)
{
    const QVector<InspectedForm*> forms = m_inspection.Forms();
    for (InspectedForm* const form : forms)
        form->Refresh();
    // The nearest around it that has some, of whichever form.
    for (const QObject* object = widget; object; object = object->parent()) {
        for (int i = 0; i < forms.size(); ++i) {
            if (!forms.at(i)->Has(object))
                continue;
            m_forms->setCurrentIndex(i);
            CurrentPage()->SelectObject(object);
            raise();
            activateWindow();
            return;
        }
    }
    Tell(QString("Nothing is bound in %1 \"%2\".").arg(widget->metaObject()->className(), widget->objectName()));
}

bool InspectorWindow::StartRecording(const QString& fileName)
{
    StopRecording();
    QString error = "there are no data";
    if (CurrentForm())
        CurrentForm()->Refresh();
    const bool isStarted = CurrentForm() && CurrentForm()->Data() && m_recorder.Start(fileName, &error);
    m_recorded = isStarted ? CurrentForm() : nullptr;
    m_record->setChecked(isStarted);
    Tell(isStarted ? "Recording to " + fileName : "Nothing is recorded: " + error);
    if (isStarted) {
        // The host may delete the peer once nothing is bound.
        connect(m_recorded, &InspectedForm::BoundChanged, this, [this] { m_recorder.Leave(); });
        Record();
    }
    return isStarted;
}

/// Goes on after a change of what is bound, and writes what there is to write.
void InspectorWindow::Record()
{
    if (!m_recorded)
        return;
    m_recorded->Refresh();
    const QVector<VariableIdentifier> variables = m_recorded->Variables();
    if (!m_recorder.IsFollowing() && m_recorded->Data() && !variables.isEmpty())
        m_recorder.Follow(m_recorded->Data(), variables);
    if (!m_recorder.Flush())
        StopRecording();
}

void InspectorWindow::StopRecording()
{
    if (!m_recorded)
        return;
    disconnect(m_recorded, &InspectedForm::BoundChanged, this, nullptr);
    m_recorded = nullptr;
    m_record->setChecked(false);
    QString error;
    const QStringList withoutForm = m_recorder.WithoutForm();
    if (!m_recorder.Stop(&error))
        Tell("The recording is not complete: " + error);
    else if (!withoutForm.isEmpty())
        Tell("The recording is written, without values of " + withoutForm.join(", ") + ", for which JSON has no form.");
    else
        Tell("The recording is written.");
}

void InspectorWindow::Refresh()
{
    ShowTitles();
    Record();
    if (FormPage* const page = CurrentPage())
        page->Refresh();
}

void InspectorWindow::OnAdded(InspectedForm* form)
{
    m_forms->addItem(form->Title(), QVariant::fromValue(static_cast<QObject*>(form)));
}

/// Its data may go with it.
void InspectorWindow::OnRemoved(InspectedForm* form)
{
    if (form == m_recorded)
        StopRecording();
    if (FormPage* const page = PageOf(form)) {
        m_pages->removeWidget(page);
        // It may be what the binding was deleted from.
        page->deleteLater();
    }
    m_forms->removeItem(m_forms->findData(QVariant::fromValue(static_cast<QObject*>(form))));
    ShowCurrent();
}

void InspectorWindow::OnRecord(bool wanted)
{
    if (!wanted)
        return StopRecording();
    m_record->setChecked(false);
    const QPointer<InspectorWindow> guarded = this;
    const QString fileName = QFileDialog::getSaveFileName(this, "Record data", QString(), "Recordings (*.jsonl)");
    if (guarded && !fileName.isEmpty())
        StartRecording(fileName);
}

/// The form's name may be set after its binding was made.
void InspectorWindow::ShowTitles()
{
    for (int i = 0; i < m_forms->count(); ++i) {
        const QString title = m_inspection.Forms().at(i)->Title();
        if (m_forms->itemText(i) != title)
            m_forms->setItemText(i, title);
    }
}

void InspectorWindow::Tell(const QString& text)
{
    statusBar()->showMessage(text, NoteDuration);
}
