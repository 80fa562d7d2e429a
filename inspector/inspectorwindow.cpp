#include "inspectorwindow.h"

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
    setWindowTitle("Declarations of this program");
    // The program ends with its own last window.
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_DeleteOnClose);
    AddToolBar();
    setCentralWidget(m_pages);
    resize(InitialSize);
    statusBar()->setAccessibleName("Messages");

    for (InspectedForm* const form : m_inspection.Forms())
        OnAdded(form);
    connect(&m_inspection, &Inspection::Added, this, &InspectorWindow::OnAdded);
    connect(&m_inspection, &Inspection::Removed, this, &InspectorWindow::OnRemoved);
    connect(&m_picker, &WidgetPicker::Picked, this, &InspectorWindow::ShowWidget);
    connect(&m_picker, &WidgetPicker::Ended, this, [this] { m_pick->setChecked(false); });
    connect(&m_refresh, &QTimer::timeout, this, [this] {
        if (isVisible() && !isMinimized())
            Refresh();
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
    connect(m_forms, QOverload<int>::of(&QComboBox::currentIndexChanged), m_pages, &QStackedWidget::setCurrentIndex);

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
    return static_cast<FormPage*>(m_pages->currentWidget());
}

FormPage* InspectorWindow::PageOf(const InspectedForm* form) const
{
    for (int i = 0; i < m_pages->count(); ++i) {
        auto* const page = static_cast<FormPage*>(m_pages->widget(i));
        if (page->Inspected() == form)
            return page;
    }
    return nullptr;
}

void InspectorWindow::ShowWidget(const QWidget* widget)
{
    for (int i = 0; i < m_pages->count(); ++i) {
        if (!static_cast<FormPage*>(m_pages->widget(i))->SelectObject(widget))
            continue;
        m_forms->setCurrentIndex(i);
        raise();
        activateWindow();
        return;
    }
    Tell(QString("Nothing is bound in %1 \"%2\".").arg(widget->metaObject()->className(), widget->objectName()));
}

bool InspectorWindow::StartRecording(const QString& fileName)
{
    StopRecording();
    const FormPage* const page = CurrentPage();
    IDataPeer* const data = page ? page->Inspected()->Data() : nullptr;
    QString error = "there are no data";
    const bool isStarted = data && m_recorder.Start(fileName, data, page->Inspected()->Variables(), &error);
    m_recorded = isStarted ? page->Inspected() : nullptr;
    m_record->setChecked(isStarted);
    Tell(isStarted ? "Recording to " + fileName : "Nothing is recorded: " + error);
    return isStarted;
}

void InspectorWindow::StopRecording()
{
    if (!m_recorded)
        return;
    m_recorded = nullptr;
    m_record->setChecked(false);
    QString error;
    Tell(m_recorder.Stop(&error) ? "The recording is written." : "The recording is not complete: " + error);
}

void InspectorWindow::Refresh()
{
    ShowTitles();
    if (FormPage* const page = CurrentPage())
        page->Refresh();
}

void InspectorWindow::OnAdded(InspectedForm* form)
{
    auto* const page = new FormPage(form);
    connect(page, &FormPage::Selected, &m_flash, &WidgetFlash::Start);
    connect(page, &FormPage::Refused, this, &InspectorWindow::Tell);
    m_pages->addWidget(page);
    m_forms->addItem(form->Title());
}

/// Its data may go with it.
void InspectorWindow::OnRemoved(InspectedForm* form)
{
    if (form == m_recorded)
        StopRecording();
    FormPage* const page = PageOf(form);
    const int index = m_pages->indexOf(page);
    m_pages->removeWidget(page);
    m_forms->removeItem(index);
    m_pages->setCurrentIndex(m_forms->currentIndex());
    // It may be what the binding was deleted from.
    page->deleteLater();
}

void InspectorWindow::OnRecord(bool wanted)
{
    if (!wanted)
        return StopRecording();
    m_record->setChecked(false);
    const QString fileName = QFileDialog::getSaveFileName(this, "Record data", QString(), "Recordings (*.jsonl)");
    if (!fileName.isEmpty())
        StartRecording(fileName);
}

/// The form's name may be set after its binding was made.
void InspectorWindow::ShowTitles()
{
    for (int i = 0; i < m_forms->count(); ++i) {
        const QString title = static_cast<FormPage*>(m_pages->widget(i))->Inspected()->Title();
        if (m_forms->itemText(i) != title)
            m_forms->setItemText(i, title);
    }
}

void InspectorWindow::Tell(const QString& text)
{
    statusBar()->showMessage(text, NoteDuration);
}
