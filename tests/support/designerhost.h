#ifndef DESIGNERHOST_H
#define DESIGNERHOST_H

#include <QDesignerActionEditorInterface>
#include <QDesignerComponents>
#include <QDesignerFormEditorInterface>
#include <QDesignerFormEditorPluginInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerFormWindowManagerInterface>
#include <QDesignerIntegration>
#include <QDesignerObjectInspectorInterface>
#include <QDesignerPropertyEditorInterface>
#include <QDesignerWidgetBoxInterface>
#include <QPluginLoader>
#include <QWidget>

#include <memory>

/// Designer's form editor, with Designer's own plugins and none that are installed.
class DesignerHost
{
public:
    DesignerHost()
    {
        QDesignerComponents::initializeResources();
        m_core = QDesignerComponents::createFormEditor(nullptr);
        m_core->setWidgetBox(QDesignerComponents::createWidgetBox(m_core, &m_window));
        m_core->setPropertyEditor(QDesignerComponents::createPropertyEditor(m_core, &m_window));
        m_core->setObjectInspector(QDesignerComponents::createObjectInspector(m_core, &m_window));
        m_core->setActionEditor(QDesignerComponents::createActionEditor(m_core, &m_window));
        m_integration = std::make_unique<QDesignerIntegration>(m_core);
        m_taskMenus.reset(QDesignerComponents::createTaskMenu(m_core, nullptr));
        const QObjectList plugins = QPluginLoader::staticInstances();
        for (QObject* const plugin : plugins) {
            auto* const part = qobject_cast<QDesignerFormEditorPluginInterface*>(plugin);
            if (part && !part->isInitialized())
                part->initialize(m_core);
        }
    }

    ~DesignerHost()
    {
        CloseAll();
        m_taskMenus.reset();
        m_integration.reset();
        qDeleteAll(m_window.children());
        delete m_core;
    }

    DesignerHost(const DesignerHost&) = delete;
    DesignerHost& operator=(const DesignerHost&) = delete;

    QDesignerFormEditorInterface* Core() const { return m_core; }

    /// The form is the active one.
    QDesignerFormWindowInterface* Open(const QString& content)
    {
        QDesignerFormWindowManagerInterface* const manager = m_core->formWindowManager();
        QDesignerFormWindowInterface* const form = manager->createFormWindow();
        m_integration->setupFormWindow(form);
        form->setContents(content);
        manager->setActiveFormWindow(form);
        return form;
    }

    void CloseAll()
    {
        while (m_core->formWindowManager()->formWindowCount() > 0)
            delete m_core->formWindowManager()->formWindow(0);
    }

private:
    QWidget m_window;
    QDesignerFormEditorInterface* m_core = nullptr;
    std::unique_ptr<QDesignerIntegration> m_integration;
    std::unique_ptr<QObject> m_taskMenus;
};

#endif
