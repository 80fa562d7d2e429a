#include "enginepanel.h"

#include "ui_enginepanel.h"

const QString EnginePanel::DefaultPackage("Engine");

EnginePanel::EnginePanel() : m_ui(new Ui::EnginePanel)
{
    m_ui->setupUi(this);
    m_binding = BindForm(m_handler, this, DefaultPackage);
    AddDefaultDeclarations();
    m_handler.ConnectPropertyCrossReferences();
    m_handler.Update();
    ConnectButtons();
}

EnginePanel::~EnginePanel() = default;

/// What the user can set is enabled while the settings are not locked, unless the form says otherwise.
void EnginePanel::AddDefaultDeclarations()
{
    const QString statement = "NOT locked";
    const QWidgetList settings{m_ui->maximumSpeed, m_ui->maximumTemperature, m_ui->fuelReserve, m_ui->applyButton,
                               m_ui->vesselEdit,   m_ui->messagesBox,        m_ui->lockBox,     m_ui->saveButton};
    for (QWidget* widget : settings) {
        if (m_handler.AddDefaultDeclaration(this, widget, "~enabled", statement, DefaultPackage))
            m_binding.declarations.append({widget, "~enabled", statement});
    }
}

void EnginePanel::ConnectButtons()
{
    // The two switches work at once, each on its own.
    connect(m_ui->runButton, &QPushButton::clicked, this,
            [this] { m_handler.SaveProperty(m_ui->runButton, "checked"); });
    connect(m_ui->lockBox, &QCheckBox::clicked, this, [this] { m_handler.SaveProperty(m_ui->lockBox, "checked"); });

    // The settings wait for a button: one saves its group, the other the whole form.
    connect(m_ui->applyButton, &QPushButton::clicked, this,
            [this] { m_handler.Save(this, m_ui->limitsGroup->objectName()); });
    connect(m_ui->saveButton, &QPushButton::clicked, this, [this] { m_handler.Save(nullptr, QString()); });
}
