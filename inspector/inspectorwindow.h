#ifndef INSPECTORWINDOW_H
#define INSPECTORWINDOW_H

#include <QMainWindow>
#include <QTimer>

#include "hostrecorder.h"
#include "inspection.h"
#include "widgetflash.h"
#include "widgetpicker.h"

class FormPage;
class QComboBox;
class QStackedWidget;

/// The inspector's window: a page for each form binding of the program that is looked at.
class InspectorWindow : public QMainWindow
{
    Q_OBJECT

public:
    InspectorWindow();
    ~InspectorWindow() override;

    /// The page in front; null while there are no forms.
    FormPage* CurrentPage() const;
    WidgetPicker& Picker() { return m_picker; }
    WidgetFlash& Flash() { return m_flash; }

    /// Shows the declarations of that widget, whichever form it is of, or says that there are none.
    void ShowWidget(const QWidget* widget);
    /// Records the data of the form in front. False when nothing is recorded, and why is said.
    bool StartRecording(const QString& fileName);
    void StopRecording();
    bool IsRecording() const { return m_recorded; }

    /// What the timer does a few times a second.
    void Refresh();

private:
    void AddToolBar();
    InspectedForm* CurrentForm() const;
    FormPage* PageOf(const InspectedForm* form) const;
    void ShowCurrent();
    void Record();
    void OnAdded(InspectedForm* form);
    void OnRemoved(InspectedForm* form);
    void OnRecord(bool wanted);
    void ShowTitles();
    void Tell(const QString& text);

    Inspection m_inspection;
    WidgetFlash m_flash;
    WidgetPicker m_picker{this};
    HostRecorder m_recorder;
    InspectedForm* m_recorded = nullptr;
    QComboBox* m_forms = nullptr;
    QStackedWidget* m_pages;
    QAction* m_pick = nullptr;
    QAction* m_record = nullptr;
    QTimer m_refresh;
};

#endif
