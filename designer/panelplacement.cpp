#include "panelplacement.h"

#include <QDesignerFormEditorInterface>
#include <QDesignerPropertyEditorInterface>
#include <QDesignerSettingsInterface>
#include <QEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace {

const char IsShownKey[] = "DeclarationStatements/Shown";
const char GeometryKey[] = "DeclarationStatements/Geometry";
const QSize AloneSize(800, 400);
const int DockedHeight = 280;

} // namespace

PanelPlacement::PanelPlacement(QDesignerFormEditorInterface* core, QWidget* panel)
    : m_core(core), m_dock(new QDockWidget)
{
    m_dock->setObjectName("DeclarationStatements");
    m_dock->setWindowTitle("Statements");
    m_dock->setWidget(panel);
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &PanelPlacement::Place);
    // Designer's windows are there once it has started.
    m_timer.start();
}

PanelPlacement::~PanelPlacement()
{
    if (!m_dock)
        return;
    TakeOut();
    delete m_dock;
}

bool PanelPlacement::eventFilter(QObject* watched, QEvent* event)
{
    // Designer moves its parts when the user wants the other way, and deletes what they were in.
    if (event->type() == QEvent::ParentChange && watched == m_propertyPart && m_dock) {
        TakeOut();
        m_timer.start();
    }
    return QObject::eventFilter(watched, event);
}

void PanelPlacement::Place()
{
    if (!m_dock || !m_core->propertyEditor())
        return;
    m_propertyPart = m_core->propertyEditor()->parentWidget();
    auto* const window = qobject_cast<QMainWindow*>(m_core->topLevel());
    if (!m_propertyPart || !window)
        return;
    m_propertyPart->installEventFilter(this);
    QMenu* const menu = ViewMenu(window);
    if (menu)
        AddToMenu(menu);
    if (menu && window->isAncestorOf(m_propertyPart))
        PlaceInWindow(window);
    else
        PlaceAlone();
}

void PanelPlacement::PlaceInWindow(QMainWindow* window)
{
    m_dock->setTitleBarWidget(nullptr);
    if (window->restoreDockWidget(m_dock))
        return;
    window->addDockWidget(Qt::BottomDockWidgetArea, m_dock);
    window->resizeDocks({m_dock}, {DockedHeight}, Qt::Vertical);
    m_dock->show();
}

void PanelPlacement::PlaceAlone()
{
    const QDesignerSettingsInterface* const settings = m_core->settingsManager();
    m_dock->setTitleBarWidget(&m_noTitle);
    m_dock->setParent(nullptr, Qt::Window);
    m_dock->resize(AloneSize);
    m_dock->restoreGeometry(settings->value(GeometryKey).toByteArray());
    m_dock->setVisible(settings->value(IsShownKey, true).toBool());
}

/// Notes what the user made of a window of its own, as Designer notes it of docks.
void PanelPlacement::TakeOut()
{
    if (m_dock->isWindow() && m_dock->titleBarWidget() == &m_noTitle) {
        m_core->settingsManager()->setValue(IsShownKey, m_dock->isVisible());
        m_core->settingsManager()->setValue(GeometryKey, m_dock->saveGeometry());
    }
    m_dock->setTitleBarWidget(nullptr);
    m_dock->setParent(nullptr);
}

/// The menu with the entries of Designer's own parts.
QMenu* PanelPlacement::ViewMenu(const QMainWindow* window) const
{
    const QList<QAction*> titles = window->menuBar()->actions();
    for (const QAction* const title : titles) {
        const QList<QAction*> entries = title->menu() ? title->menu()->actions() : QList<QAction*>();
        for (const QAction* const entry : entries) {
            if (entry->parent() == m_propertyPart)
                return title->menu();
        }
    }
    return nullptr;
}

/// Behind the entries of Designer's own parts.
void PanelPlacement::AddToMenu(QMenu* menu) const
{
    const QList<QAction*> entries = menu->actions();
    if (entries.contains(m_dock->toggleViewAction()))
        return;
    bool isBehind = false;
    for (QAction* const entry : entries) {
        const bool isOfPart = entry->parent() && entry->parent()->metaObject() == m_propertyPart->metaObject();
        if (isBehind && !isOfPart)
            return menu->insertAction(entry, m_dock->toggleViewAction());
        isBehind = isOfPart;
    }
    menu->addAction(m_dock->toggleViewAction());
}
