// A settings dialog: each widget is bound to one setting, and a save takes a page, or all, into the data.

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "expect.h"
#include "settingsdialog.h"

namespace {

IDataPeer* Data()
{
    return Ovex_DataPeerFactory(false)->GetDataPeer(0);
}

/// The settings as they were stored: an object for each package, in it a value for each variable.
void ReadSettings(const QString& fileName)
{
    QFile file(fileName);
    file.open(QIODevice::ReadOnly);
    const QVariantMap packages = QJsonDocument::fromJson(file.readAll()).toVariant().toMap();
    for (auto package = packages.begin(); package != packages.end(); ++package) {
        const QVariantMap variables = package->toMap();
        for (auto variable = variables.begin(); variable != variables.end(); ++variable)
            Data()->ChangeValue(VariableIdentifier(variable.key(), package.key()), *variable, IDataPeer::NoFlag);
    }
}

QVariant Read(const QString& package, const QString& name)
{
    return Data()->GetValue(VariableIdentifier(name, package), QVariant());
}

/// Stands in for the person: changes settings on three pages, and saves first one page, then all.
void ChangeSettings(const SettingsDialog& dialog)
{
    dialog.findChild<QTabWidget*>("pages")->setCurrentIndex(1);
    dialog.findChild<QLineEdit*>("firstEdit")->setText("Anemometer");
    dialog.findChild<QSlider*>("volumeSlider")->setValue(0);
    dialog.findChild<QLineEdit*>("hostEdit")->setText("backup.example.org");
    dialog.findChild<QPushButton*>("savePageButton")->click();
    Expect("sensors[0] after saving its page", Read("Station", "sensors").toList().value(0), "Anemometer");
    Expect("sensors[3]", Read("Station", "sensors").toList().value(3), "Tide");
    Expect("volume, on another page", Read("Station\\Alarms", "volume").toInt(), 60);

    dialog.findChild<QPushButton*>("saveButton")->click();
    QCoreApplication::processEvents();
    Expect("volume after saving all", Read("Station\\Alarms", "volume").toInt(), 0);
    Expect("host", Read("Station\\Upload", "server").toMap().value("host"), "backup.example.org");
    Expect("port, in the same variable", Read("Station\\Upload", "server").toMap().value("port").toInt(), 8443);
    Expect("note on the page of the sensors", dialog.findChild<QLabel*>("sensorsNote")->text(),
           "Anemometer is shown first, 6 readings an hour.");
    Expect("silence is told", dialog.findChild<QLabel*>("silentNote")->isHidden(), false);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "A settings dialog whose widgets are bound to data by the statements in its form.");
    parser.addHelpOption();
    const QCommandLineOption screenshot("screenshot", "Run without a person and save a picture of the window.", "FILE");
    parser.addOption(screenshot);
    parser.process(application);

    ReadSettings(":/settings.json");
    SettingsDialog dialog;
    dialog.show();
    if (!parser.isSet(screenshot))
        return application.exec();
    ChangeSettings(dialog);
    Expect("picture written", dialog.grab().save(parser.value(screenshot)), true);
    return failures;
}
