#ifndef DECLARATIONDESIGNER_H
#define DECLARATIONDESIGNER_H

#include <QDesignerFormEditorPluginInterface>
#include <QObject>

#include <memory>

class DesignerTools;

/// What Designer loads.
class DeclarationDesigner : public QObject, public QDesignerFormEditorPluginInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerFormEditorPluginInterface)
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.Designer.QDesignerFormEditorPluginInterface")

public:
    DeclarationDesigner();
    ~DeclarationDesigner() override;

    bool isInitialized() const override { return m_core; }
    void initialize(QDesignerFormEditorInterface* core) override;
    /// None: Designer takes it for another way to edit a form, of which one is chosen at a time.
    QAction* action() const override { return nullptr; }
    QDesignerFormEditorInterface* core() const override { return m_core; }

private:
    QDesignerFormEditorInterface* m_core = nullptr;
    std::unique_ptr<DesignerTools> m_tools;
};

#endif
