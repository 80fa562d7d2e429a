#ifndef MAINWINDOW_H
#define MAINWINDOW_H

#include <QMainWindow>
#include <QTimer>

#include "declview/filewatcher.h"
#include "declview/formsession.h"
#include "declview/messagesmodel.h"
#include "view/declarationsmodel.h"
#include "view/variablerecorder.h"
#include "view/variablesmodel.h"

class DetailPanel;
class FormStage;
class QComboBox;
class QLabel;
class TablePanel;
class WidgetHighlight;

/// The form beside the tables of what is behind it.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// The session outlives the window.
    explicit MainWindow(FormSession* session);
    ~MainWindow() override;

    /// Reads the files again. When that fails the form stays as it is, and a banner says so.
    void Reload();
    /// Lets the clock of the generators run, or stand.
    void SetMotion(bool running);
    /// Lets variables move as they were recorded. False, with the reason, when that cannot be read.
    bool Replay(const QString& fileName, QString* error);
    /// Records the variables until the window goes, or the user ends it. False, with the reason, when it cannot be.
    bool Record(const QString& fileName, QString* error);
    /// Takes the size in which the whole form is seen, up to that one.
    void FitToForm(const QSize& limit);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void AddToolBar();
    void AddStage();
    void AddDock();
    void OnFormReplaced();
    void CheckForm();
    void ShowScopes();
    void ShowMissing();
    void ShowMotion();
    void ShowProblemCount();
    void SetEdited(bool edited);
    void SaveForm();
    void RevertForm();
    void SaveData();
    void AskForReplay();
    void ToggleRecording();
    void Highlight();
    bool SelectDeclarationsOf(const QObject* clicked);
    void Tell(const QString& text);
    void ShowProblem(const QString& problem);

    FormSession* const m_session;
    QTimer m_checking; ///< Runs until the form has been shown.
    VariablesModel m_variables;
    DeclarationsModel m_declarations;
    MessagesModel m_messages;
    FileWatcher m_watcher;
    VariableRecorder m_recorder;

    FormStage* m_stage;
    WidgetHighlight* m_highlight;
    QLabel* m_banner;
    QComboBox* m_scopes;
    QAction* m_save;
    QAction* m_revert;
    QAction* m_motion;
    QAction* m_record;
    int m_dockWidth;
    TablePanel* m_variablesPanel;
    TablePanel* m_declarationsPanel;
    DetailPanel* m_detail;
    TablePanel* m_messagesPanel;
    bool m_clickIsOurs = false; ///< Until the button is released.
};

#endif
