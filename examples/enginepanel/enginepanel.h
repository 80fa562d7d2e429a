#ifndef ENGINEPANEL_H
#define ENGINEPANEL_H

#include <QScopedPointer>
#include <QWidget>

#include "DeclarationForms/formbinding.h"

namespace Ui {
class EnginePanel;
}

/// The panel. Its form brings the statements along; this class binds them and saves.
class EnginePanel : public QWidget
{
    Q_OBJECT

public:
    EnginePanel();
    ~EnginePanel() override;

    const FormBinding& GetBinding() const { return m_binding; }

private:
    void BindDefaults();

    const QScopedPointer<Ui::EnginePanel> m_ui;
    FormBinding m_binding;
};

#endif
