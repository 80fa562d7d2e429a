#ifndef PANELPLACEMENT_H
#define PANELPLACEMENT_H

#include <QDockWidget>
#include <QPointer>
#include <QTimer>

class QDesignerFormEditorInterface;
class QMainWindow;
class QMenu;

/// Where a panel stands in Designer: a dock of its window, or where every part is a window of its own, one more. The
/// panel's entry is in the menu "View". When the user changes between the two, the panel goes along.
class PanelPlacement : public QObject
{
    Q_OBJECT

public:
    /// Takes the panel.
    PanelPlacement(QDesignerFormEditorInterface* core, QWidget* panel);
    ~PanelPlacement() override;

    QDockWidget* Dock() const { return m_dock; }

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void Place();
    void PlaceInWindow(QMainWindow* window);
    void PlaceAlone();
    void TakeOut();
    QMenu* ViewMenu(const QMainWindow* window) const;
    void AddToMenu(QMenu* menu) const;

    QDesignerFormEditorInterface* const m_core;
    const QPointer<QDockWidget> m_dock;
    QWidget m_noTitle;                ///< In the place of a title that the window system shows.
    QPointer<QWidget> m_propertyPart; ///< The window or dock of the property editor.
    QTimer m_timer;
};

#endif
