#include "settingsdialog.h"

#include "bindform/bindform.h"
#include "ui_settings.h"

SettingsDialog::SettingsDialog() : m_ui(new Ui::SettingsDialog)
{
    m_ui->setupUi(this);
    BindForm(m_handler, this, "Station");
    m_handler.ConnectPropertyCrossReferences();
    m_handler.Update();

    connect(m_ui->savePageButton, &QPushButton::clicked, this,
            [this] { m_handler.Save(this, m_ui->pages->currentWidget()->objectName()); });
    connect(m_ui->saveButton, &QPushButton::clicked, this, [this] { m_handler.Save(nullptr, QString()); });
}

SettingsDialog::~SettingsDialog() = default;
