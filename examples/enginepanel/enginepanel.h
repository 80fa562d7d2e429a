#ifndef ENGINEPANEL_H
#define ENGINEPANEL_H

#include <QScopedPointer>
#include <QWidget>

#include "DeclarationHandler/declarationhandler.h"
#include "bindform/bindform.h"

namespace Ui {
class EnginePanel;
}

/// The panel. Its form brings the statements along; this class binds them and saves.
class EnginePanel : public QWidget
{
    Q_OBJECT

public:
    /// The package of variables that the form names without one.
    static const QString DefaultPackage;

    EnginePanel();
    ~EnginePanel() override;

    /// What is bound, default declarations included.
    const FormBinding& GetBinding() const { return m_binding; }

private:
    void AddDefaultDeclarations();
    void ConnectButtons();

    // The handler goes before the widgets do, which are this widget's children.
    const QScopedPointer<Ui::EnginePanel> m_ui;
    DeclarationHandler m_handler;
    FormBinding m_binding;
};

#endif
