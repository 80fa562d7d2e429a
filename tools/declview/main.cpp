#include <QApplication>
#include <QCommandLineParser>
#include <QScreen>
#include <QTextStream>

#include "common/jsondata.h"
#include "declview/formsession.h"
#include "declview/mainwindow.h"
#include "declview/unattendedrun.h"

namespace {

const int CannotRun = 2;
const QSize LargestPicture(4000, 3000);
const int LatestTime = 1000000;

struct Options
{
    SessionFiles files;
    UnattendedTasks tasks;
    JsonData assignments;
    double time; ///< At which generators stand for the tasks.
};

int Fail(const QString& reason)
{
    QTextStream(stderr) << "declview: " << reason << '\n';
    return CannotRun;
}

bool AsksAboutTheProgram(const QCommandLineParser& parser)
{
    return parser.isSet("help") || parser.isSet("version");
}

/// Works without an application, since what is asked for decides on the platform. An empty text, or what
/// is wrong.
QString ReadOptions(QCommandLineParser* parser, const QStringList& arguments, Options* options)
{
    const QCommandLineOption data("data", "Variables by package and name.", "DATA.json");
    const QCommandLineOption package("package", "Package of variables that the form names without one.", "NAME");
    const QCommandLineOption set("set", "Give a variable a value; may be repeated.", "[PACKAGE:]NAME=JSON");
    const QCommandLineOption screenshot("screenshot", "Save a picture of the window and exit.", "FILE");
    const QCommandLineOption print("print", "Print what the bound properties hold and exit.");
    const QCommandLineOption at("at", "Show data that move as they are then, with the options that exit.", "SECONDS",
                                "0");
    const QCommandLineOption json("json", "Print it as JSON.");
    parser->setApplicationDescription("Shows a form live, beside its variables, declarations and messages.");
    parser->addHelpOption();
    parser->addVersionOption();
    parser->addOptions({data, package, set, screenshot, print, json, at});
    parser->addPositionalArgument("FORM.ui", "The form.");

    if (!parser->parse(arguments))
        return parser->errorText();
    if (AsksAboutTheProgram(*parser))
        return QString();
    if (parser->positionalArguments().size() != 1)
        return "one form is wanted (see --help)";
    options->files = {parser->positionalArguments().constFirst(), parser->value(data), parser->value(package)};
    options->tasks = {parser->value(screenshot), parser->isSet(print) || parser->isSet(json), parser->isSet(json)};
    bool isNumber = false;
    options->time = parser->value(at).toDouble(&isNumber);
    if (!isNumber || !(options->time >= 0 && options->time <= LatestTime))
        return QString("--at wants seconds, from 0 to %1").arg(LatestTime);
    const QStringList assignments = parser->values(set);
    QString error;
    for (const QString& assignment : assignments) {
        if (!options->assignments.Assign(assignment, options->files.defaultPackage, &error))
            return error;
    }
    return QString();
}

int Run(const Options& options)
{
    FormSession session(options.files);
    session.Variables().Set(options.assignments);
    MainWindow window(&session);
    QString error;
    if (!session.Load(&error))
        return Fail(error);
    const bool unattended = options.tasks.Any();
    window.FitToForm(unattended ? LargestPicture : QApplication::primaryScreen()->availableSize());
    session.Motion().SetTime(options.time);
    window.SetMotion(!unattended);
    window.show();
    if (unattended)
        return RunUnattended(options.tasks, session, &window) ? 0 : CannotRun;
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    QCommandLineParser parser;
    Options options;
    const QString problem = ReadOptions(&parser, arguments, &options);
    if (!problem.isEmpty())
        return Fail(problem);
    if ((options.tasks.Any() || AsksAboutTheProgram(parser)) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication application(argc, argv);
    application.setApplicationVersion(DECLARATIONHANDLER_VERSION);
    if (parser.isSet("help"))
        parser.showHelp();
    if (parser.isSet("version"))
        parser.showVersion();
    return Run(options);
}
