// A settings dialog: each widget is bound to one setting, and what the user has edited is saved or restored.

#include <QApplication>
#include <QComboBox>
#include <QCommandLineParser>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTimer>

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

template<typename Type>
Type* Find(const SettingsDialog& dialog, const QString& name)
{
    return dialog.findChild<Type*>(name);
}

void Click(const SettingsDialog& dialog, const QString& button)
{
    Find<QPushButton>(dialog, button)->click();
    QCoreApplication::processEvents();
}

/// Stands in for the person: edits settings on three pages, while another program renames the station.
void EditSettings(const SettingsDialog& dialog)
{
    Find<QTabWidget>(dialog, "pages")->setCurrentIndex(3);
    Expect("Apply at first", Find<QPushButton>(dialog, "applyButton")->isEnabled(), false);
    Find<QLineEdit>(dialog, "nameEdit")->setText("Pier");
    Find<QSlider>(dialog, "volumeSlider")->setValue(0);
    Find<QLineEdit>(dialog, "hostEdit")->setText("backup.example.org");
    Find<QLineEdit>(dialog, "portEdit")->setText("https");
    Data()->ChangeValue(VariableIdentifier("name", "Station"), "Harbour head", IDataPeer::NoFlag);
    QCoreApplication::processEvents();
    Expect("name that is being edited", Find<QLineEdit>(dialog, "nameEdit")->text(), "Pier");
    Expect("title, which follows", dialog.windowTitle(), "Settings of Harbour head");
    Expect("Apply", Find<QPushButton>(dialog, "applyButton")->isEnabled(), true);
    const auto* const pages = Find<QTabWidget>(dialog, "pages");
    Expect("page that is edited", pages->tabText(0), QString::fromUtf8("Station \u2022"));
    Expect("page that is not", pages->tabText(1), "Sensors");

    // The port is a number, so it takes no word; the rest is saved.
    Click(dialog, "applyButton");
    Expect("name", Read("Station", "name"), "Pier");
    Expect("volume", Read("Station\\Alarms", "volume").toInt(), 0);
    Expect("host", Read("Station\\Upload", "server").toMap().value("host"), "backup.example.org");
    Expect("port", Read("Station\\Upload", "server").toMap().value("port").toInt(), 8443);
    Expect("mark at the port", Find<QLineEdit>(dialog, "portEdit")->property("refused"), true);
    Expect("reason", Find<QLabel>(dialog, "problemNote")->isHidden(), false);
    Expect("silence is told", Find<QLabel>(dialog, "silentNote")->isHidden(), false);
}

/// Corrects the port, and takes another language with a field half edited.
void GoOn(const SettingsDialog& dialog)
{
    auto* const port = Find<QLineEdit>(dialog, "portEdit");
    port->setText("443");
    Expect("mark at the port while it is corrected", port->property("refused"), false);
    Click(dialog, "applyButton");
    Expect("port, a number as before", Read("Station\\Upload", "server").toMap().value("port").toInt(), 443);
    Expect("Apply once all is saved", Find<QPushButton>(dialog, "applyButton")->isEnabled(), false);

    Find<QTabWidget>(dialog, "pages")->setCurrentIndex(0);
    auto* const name = Find<QLineEdit>(dialog, "nameEdit");
    auto* const language = Find<QComboBox>(dialog, "languageBox");
    name->setText("Mole");
    language->setCurrentText("Deutsch");
    Q_EMIT language->activated(language->currentIndex());
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    Expect("language, saved at once", Read("Station", "language"), "Deutsch");
    Expect("caption", Find<QLabel>(dialog, "languageLabel")->text(), "&Sprache");
    Expect("title in German", dialog.windowTitle(), "Einstellungen von Pier");
    Expect("number in German", Find<QLabel>(dialog, "readingsCount")->text(), "52.704 seit dem Start");
    Expect("name that is still being edited", name->text(), "Mole");
    Expect("Apply, for the name", Find<QPushButton>(dialog, "applyButton")->isEnabled(), true);

    Click(dialog, "restoreButton");
    Expect("name, restored", name->text(), "Pier");
    Expect("Apply after that", Find<QPushButton>(dialog, "applyButton")->isEnabled(), false);
    Find<QSlider>(dialog, "volumeSlider")->setValue(30);
    Click(dialog, "cancelButton");
    Expect("volume, given up", Find<QSlider>(dialog, "volumeSlider")->value(), 0);
    Expect("volume in the data", Read("Station\\Alarms", "volume").toInt(), 0);
}

/// Stands in for the station.
void CountReadings(QTimer* timer)
{
    QObject::connect(timer, &QTimer::timeout, [] {
        const VariableIdentifier readings("readings", "Station");
        Data()->ChangeValue(readings, Data()->GetValue(readings, 0).toInt() + 1, IDataPeer::NoFlag);
    });
    timer->start(1000);
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
    if (!parser.isSet(screenshot)) {
        QTimer station;
        CountReadings(&station);
        return application.exec();
    }
    EditSettings(dialog);
    Expect("picture written", dialog.grab().save(parser.value(screenshot)), true);
    GoOn(dialog);
    return failures;
}
