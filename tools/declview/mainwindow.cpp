#include "declview/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>

#include <utility>

#include "declview/formstage.h"
#include "view/detailpanel.h"
#include "view/tablepanel.h"
#include "view/widgethighlight.h"

namespace {

/// In letters.
const int DockWidth = 125;
const QSize MinimumSize(1200, 920);
/// For bars and frames.
const int Spare = 100;
const int NoteDuration = 8000;
/// So that the form is seen before it is checked.
const int CheckingDelay = 50;
const Qt::KeyboardModifier SelectModifier = Qt::ControlModifier;

} // namespace

MainWindow::MainWindow(FormSession* session)
    : m_session(session),
      m_variables(&session->Variables()),
      m_declarations(session),
      m_messages(session),
      m_recorder(&session->Variables())
{
    AddToolBar();
    AddStage();
    AddDock();
    statusBar()->showMessage("Ctrl and a click on a widget selects its declarations.");

    m_checking.setSingleShot(true);
    m_checking.setInterval(CheckingDelay);
    connect(&m_checking, &QTimer::timeout, this, &MainWindow::CheckForm);
    connect(session, &FormSession::Replaced, this, &MainWindow::OnFormReplaced);
    connect(session, &FormSession::EditedChanged, this, &MainWindow::SetEdited);
    connect(&m_variables, &VariablesModel::Refused, this, &MainWindow::Tell);
    connect(&m_recorder, &VariableRecorder::Failed, this, [this](const QString& reason) {
        m_record->setText(m_recorder.IsRecording() ? "End recording" : "Record");
        ShowProblem(reason);
    });
    connect(&m_watcher, &FileWatcher::Changed, this, &MainWindow::Reload);
    m_watcher.Add(session->Files().form);
    if (!session->Files().data.isEmpty())
        m_watcher.Add(session->Files().data);
    qApp->installEventFilter(this);
}

MainWindow::~MainWindow()
{
    // The form is the session's.
    if (m_session->Form())
        m_session->Form()->setParent(nullptr);
}

void MainWindow::Reload()
{
    m_watcher.Accept();
    QString error;
    if (!m_session->Load(&error)) {
        ShowProblem("The form stays as it was. " + error);
        return;
    }
    m_banner->hide();
    Tell("Loaded " + m_session->Files().Name());
}

void MainWindow::SetMotion(bool running)
{
    m_motion->setChecked(running);
    ShowMotion();
}

void MainWindow::FitToForm(const QSize& limit)
{
    const QSize wanted = m_stage->minimumSize() + QSize(m_dockWidth + Spare, Spare);
    resize(wanted.expandedTo(MinimumSize).boundedTo(limit));
}

void MainWindow::AddToolBar()
{
    auto* const toolBar = addToolBar("Actions");
    toolBar->setMovable(false);
    toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);

    m_scopes = new QComboBox;
    m_scopes->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_scopes->setToolTip("What \"Save\" and \"Revert\" are for");
    m_save
        = toolBar->addAction(style()->standardIcon(QStyle::SP_DialogApplyButton), "Save", this, &MainWindow::SaveForm);
    m_save->setToolTip("Writes what was edited in the form back into the variables");
    m_revert = toolBar->addAction(style()->standardIcon(QStyle::SP_DialogResetButton), "Revert", this,
                                  &MainWindow::RevertForm);
    m_revert->setToolTip("Gives up what was edited in the form");
    toolBar->addWidget(m_scopes);
    toolBar->addSeparator();
    QAction* const saveData = toolBar->addAction(style()->standardIcon(QStyle::SP_DialogSaveButton), "Save data", this,
                                                 &MainWindow::SaveData);
    saveData->setShortcut(QKeySequence::Save);
    saveData->setToolTip("Writes the variables to the data file");
    QAction* const reload
        = toolBar->addAction(style()->standardIcon(QStyle::SP_BrowserReload), "Reload", this, &MainWindow::Reload);
    reload->setShortcut(QKeySequence::Refresh);
    reload->setToolTip("Reads form and data again; edited variables stay");
    m_motion = toolBar->addAction("Run");
    m_motion->setCheckable(true);
    m_motion->setToolTip("Lets the variables move that the data file gives a generator");
    connect(m_motion, &QAction::toggled, this, &MainWindow::ShowMotion);
    toolBar->addSeparator();
    QAction* const replay = toolBar->addAction("Replay", this, &MainWindow::AskForReplay);
    replay->setToolTip("Lets the variables move as they were recorded");
    m_record = toolBar->addAction("Record", this, &MainWindow::ToggleRecording);
    m_record->setToolTip("Writes what the variables become to a file, until it is pressed again");
}

void MainWindow::AddStage()
{
    m_stage = new FormStage;
    m_highlight = new WidgetHighlight(m_stage);
    m_banner = new QLabel;
    m_banner->setObjectName("banner");
    m_banner->setWordWrap(true);
    m_banner->setStyleSheet("background: #c62828; color: white; padding: 8px;");
    m_banner->hide();

    auto* const scrollArea = new QScrollArea;
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setWidgetResizable(true);
    scrollArea->setWidget(m_stage);
    auto* const central = new QWidget;
    auto* const layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_banner);
    layout->addWidget(scrollArea);
    setCentralWidget(central);
}

void MainWindow::AddDock()
{
    m_variablesPanel = new TablePanel("Variables", &m_variables, {24, 24, 20});
    m_declarationsPanel = new TablePanel("Declarations", &m_declarations, {24, 20, 36, 24, 8});
    m_detail = new DetailPanel(m_session, m_declarationsPanel->View()->font());
    m_messagesPanel = new TablePanel("Messages", &m_messages, {16, 26});
    m_variablesPanel->View()->setObjectName("variables");
    m_declarationsPanel->View()->setObjectName("declarations");
    m_messagesPanel->View()->setObjectName("messages");
    m_messagesPanel->FollowEnd();

    auto* const splitter = new QSplitter(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_variablesPanel);
    splitter->addWidget(m_declarationsPanel);
    splitter->addWidget(m_detail);
    splitter->addWidget(m_messagesPanel);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 4);
    splitter->setStretchFactor(2, 3);
    splitter->setStretchFactor(3, 2);

    auto* const dock = new QDockWidget("Behind the form");
    dock->setObjectName("dock");
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    dock->setWidget(splitter);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    m_dockWidth = DockWidth * fontMetrics().averageCharWidth();
    resizeDocks({dock}, {m_dockWidth}, Qt::Horizontal);

    connect(m_declarationsPanel->View()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &MainWindow::Highlight);
    connect(&m_declarations, &QAbstractItemModel::dataChanged, this, &MainWindow::ShowProblemCount);
    connect(&m_variables, &QAbstractItemModel::modelReset, this, &MainWindow::ShowMissing);
    connect(&m_variables, &QAbstractItemModel::dataChanged, this, &MainWindow::ShowMissing);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (static_cast<QMouseEvent*>(event)->modifiers() == SelectModifier && SelectDeclarationsOf(watched))
            m_clickIsOurs = true;
        return m_clickIsOurs && watched->isWidgetType();
    case QEvent::MouseMove:
        return m_clickIsOurs && watched->isWidgetType();
    case QEvent::MouseButtonRelease:
        return watched->isWidgetType() && std::exchange(m_clickIsOurs, false);
    default:
        return false;
    }
}

void MainWindow::OnFormReplaced()
{
    m_highlight->SetTarget(nullptr);
    m_stage->SetForm(m_session->Form());
    m_motion->setVisible(m_session->Motion().AnyMoves());
    m_detail->SetDeclaration(qMax(0, m_declarations.FirstProblem()));
    ShowScopes();
    ShowProblemCount();
    SetEdited(false);
    m_checking.start();
    setWindowTitle(m_session->Files().Name() + "[*] - declview");
}

void MainWindow::CheckForm()
{
    const bool isPainted = !isVisible() || windowHandle()->isExposed();
    if (!isPainted) {
        m_checking.start();
        return;
    }
    m_stage->repaint();
    m_session->Check();
    if (m_declarationsPanel->CurrentRow() < 0)
        m_detail->SetDeclaration(qMax(0, m_declarations.FirstProblem()));
    else
        m_detail->Refresh();
}

void MainWindow::ShowScopes()
{
    const QString current = m_scopes->currentData().toString();
    m_scopes->clear();
    m_scopes->addItem("the whole form", QString());
    const QStringList scopes = m_session->Scopes();
    for (const QString& scope : scopes)
        m_scopes->addItem(scope, scope);
    m_scopes->setCurrentIndex(qMax(0, m_scopes->findData(current)));
}

void MainWindow::ShowMissing()
{
    const int missing = m_variables.MissingCount();
    m_variablesPanel->SetNote(missing ? QString(", %1 missing").arg(missing) : QString());
}

void MainWindow::ShowProblemCount()
{
    const int problems = m_declarations.ProblemCount();
    m_declarationsPanel->SetNote(problems ? QString(", %1 with a problem").arg(problems) : QString());
    m_detail->Refresh();
}

/// As a host enables its button.
void MainWindow::SetEdited(bool edited)
{
    m_save->setEnabled(edited);
    m_revert->setEnabled(edited);
    setWindowModified(edited);
}

void MainWindow::ShowMotion()
{
    const bool running = m_motion->isChecked();
    m_motion->setVisible(m_session->Motion().AnyMoves());
    m_session->Motion().SetRunning(running);
    m_motion->setIcon(style()->standardIcon(running ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
    m_motion->setText(running ? "Pause" : "Run");
}

void MainWindow::SaveForm()
{
    const FormSaveResult result = m_session->Save(m_scopes->currentData().toString());
    QString text = QString("Saved: %1, %2 edited").arg(m_scopes->currentText()).arg(result.saved);
    if (!result.refused.isEmpty())
        text += QString(", %1 refused. %2").arg(result.refused.size()).arg(result.refused.constFirst().message);
    Tell(text);
}

void MainWindow::RevertForm()
{
    m_session->Revert(m_scopes->currentData().toString());
}

void MainWindow::SaveData()
{
    QString fileName = m_session->Files().data;
    if (fileName.isEmpty())
        fileName = QFileDialog::getSaveFileName(this, "Save data", QString(), "Data (*.json)");
    if (fileName.isEmpty())
        return;
    QString error;
    if (!m_session->SaveData(fileName, &error)) {
        ShowProblem("The data are not saved. " + error);
        return;
    }
    m_watcher.Add(fileName);
    Tell("Written: " + fileName);
}

bool MainWindow::Replay(const QString& fileName, QString* error)
{
    DataRecording recording;
    if (!recording.Read(fileName, error))
        return false;
    for (const QString& problem : recording.Problems())
        m_session->Log().Note(QtWarningMsg, problem);
    m_session->Motion().SetRecording(recording);
    m_session->Motion().SetTime(0);
    m_motion->setVisible(m_session->Motion().AnyMoves());
    Tell(QString("%1 changes in %2 seconds").arg(recording.Changes().size()).arg(recording.Duration()));
    return true;
}

void MainWindow::AskForReplay()
{
    const QString fileName
        = QFileDialog::getOpenFileName(this, "Replay data", QString(), "Recordings (*.jsonl);;All (*)");
    QString error;
    if (!fileName.isEmpty() && !Replay(fileName, &error))
        ShowProblem("Nothing is replayed. " + error);
}

bool MainWindow::Record(const QString& fileName, QString* error)
{
    const bool isRecording = m_recorder.Start(fileName, error);
    m_record->setText(isRecording ? "End recording" : "Record");
    return isRecording;
}

void MainWindow::ToggleRecording()
{
    QString error;
    if (m_recorder.IsRecording()) {
        if (!m_recorder.Stop(&error))
            ShowProblem("Not all is recorded. " + error);
        m_record->setText("Record");
        return;
    }
    const QString fileName = QFileDialog::getSaveFileName(this, "Record data", QString(), "Recordings (*.jsonl)");
    if (!fileName.isEmpty() && !Record(fileName, &error))
        ShowProblem("Nothing is recorded. " + error);
}

void MainWindow::Highlight()
{
    const int row = m_declarationsPanel->CurrentRow();
    m_detail->SetDeclaration(row);
    auto* const widget = row < 0 ? nullptr : qobject_cast<QWidget*>(m_declarations.Object(row));
    m_highlight->Reveal(widget);
    m_highlight->SetTarget(widget);
    if (widget && !m_highlight->Shows())
        Tell(widget->objectName() + " is hidden at the moment.");
}

/// False outside the form, and where nothing is bound.
bool MainWindow::SelectDeclarationsOf(const QObject* clicked)
{
    const QWidget* const form = m_session->Form();
    if (!form || !clicked->isWidgetType()
        || (clicked != form && !form->isAncestorOf(static_cast<const QWidget*>(clicked))))
        return false;
    const QVector<int> rows = m_declarations.RowsOf(clicked);
    if (rows.isEmpty())
        return false;
    m_declarationsPanel->SelectRows(rows);
    return true;
}

void MainWindow::Tell(const QString& text)
{
    statusBar()->showMessage(text, NoteDuration);
}

void MainWindow::ShowProblem(const QString& problem)
{
    m_session->Log().Note(QtCriticalMsg, problem);
    m_banner->setText(problem);
    m_banner->show();
}
