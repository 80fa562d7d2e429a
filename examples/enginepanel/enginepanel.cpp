#include "enginepanel.h"

#include "ui_enginepanel.h"

namespace {

/// As often as a person can read along.
const int DeliveryInterval = 50;

} // namespace

EnginePanel::EnginePanel() : m_ui(new Ui::EnginePanel), m_binding(this)
{
    m_ui->setupUi(this);
    m_binding.SetDefaultPackage("Engine");
    m_binding.SetDeliveryInterval(DeliveryInterval);
    m_binding.Bind();
    BindDefaults();

    // The settings wait for a button: one saves its group, the other the whole form. The two switches work at
    // once, by the save policy that the form gives them.
    connect(m_ui->applyButton, &QPushButton::clicked, this, [this] { m_binding.Save(m_ui->limitsGroup); });
    connect(m_ui->saveButton, &QPushButton::clicked, this, [this] { m_binding.Save(); });
}

EnginePanel::~EnginePanel() = default;

/// What the user can set is enabled while the settings are not locked, unless the form says otherwise.
void EnginePanel::BindDefaults()
{
    const QWidgetList settings{m_ui->maximumSpeed, m_ui->maximumTemperature, m_ui->fuelReserve, m_ui->applyButton,
                               m_ui->vesselEdit,   m_ui->modeChoice,         m_ui->messagesBox, m_ui->lockBox,
                               m_ui->saveButton};
    for (QWidget* widget : settings)
        m_binding.BindDefault(widget, "~enabled", "NOT locked");
}
