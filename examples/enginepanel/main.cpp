#include <QApplication>
#include <QCommandLineParser>

#include "enginepanel.h"
#include "enginesimulation.h"
#include "unattendedrun.h"

namespace {

const char* const DefaultSeconds = "2";

/// Dark on every desktop; the form's style sheet does the rest.
void SetLook()
{
    QPalette palette(QColor("#3a4651"), QColor("#171d23"));
    palette.setColor(QPalette::Base, "#151b20");
    palette.setColor(QPalette::Highlight, "#2c8f8a");
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, "#dfe7ec");
        palette.setColor(QPalette::Disabled, role, "#6d7c88");
    }
    QApplication::setStyle("Fusion");
    QApplication::setPalette(palette);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("An engine panel whose widgets follow the statements in its form.");
    parser.addHelpOption();
    const QCommandLineOption screenshot("screenshot", "Run without a person and save a picture of the window.", "FILE");
    const QCommandLineOption seconds("seconds", "Run without a person for that long.", "N", DefaultSeconds);
    parser.addOptions({screenshot, seconds});
    parser.process(application);
    if (!parser.positionalArguments().isEmpty())
        parser.showHelp(1);

    bool isNumber = false;
    const double length = parser.value(seconds).toDouble(&isNumber);
    if (!isNumber || length <= 0) {
        qCritical("--seconds takes a number above 0.");
        return 1;
    }

    SetLook();
    const bool unattended = parser.isSet(screenshot) || parser.isSet(seconds);
    const QScopedPointer<UnattendedRun> run(unattended ? new UnattendedRun(parser.value(screenshot)) : nullptr);
    EngineSimulation simulation;
    EnginePanel panel;
    simulation.start();
    panel.show();
    const int exitCode = run ? run->Run(&panel, length) : application.exec();
    // The thread that writes the data ends before the panel does.
    simulation.Stop();
    return exitCode;
}
