#include <KConfigDialogManager>
#include <KConfigSkeleton>

#include <QTemporaryDir>
#include <memory>

#include "settingspage.h"

// The settings page bound by the manager of configuration dialogs of KDE Frameworks. Its save ends in a file.

namespace {

class ConfigDialog
{
public:
    ConfigDialog() : m_values(SettingsPage::Count)
    {
        m_skeleton.setCurrentGroup("page");
        for (int i = 0; i < SettingsPage::Count; ++i)
            m_skeleton.addItemString(QString("v%1").arg(i), m_values[i], SettingsPage::InitialText(i))->setDefault();
    }

    void Load()
    {
        m_manager.reset(new KConfigDialogManager(&page, &m_skeleton));
        m_manager->updateWidgets();
    }

    void Save()
    {
        if (m_manager->hasChanged())
            m_manager->updateSettings();
    }

    QString Value(int i) const { return m_values[i]; }

    SettingsPage page{"kcfg_v"};

private:
    QTemporaryDir m_folder;
    std::vector<QString> m_values;
    KConfigSkeleton m_skeleton{KSharedConfig::openConfig(m_folder.filePath("settings"), KConfig::SimpleConfig)};
    std::unique_ptr<KConfigDialogManager> m_manager;
};

const bool registered = RegisterSettings<ConfigDialog>("KConfigDialogManager");

} // namespace
