#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QScreen>
#include <QTextStream>
#include <QTranslator>

#include <memory>

#include "common/jsondata.h"
#include "common/projectfile.h"
#include "declview/formsession.h"
#include "declview/mainwindow.h"
#include "declview/propertyprinter.h"
#include "declview/unattendedrun.h"

namespace {

const int CannotRun = 2;
const QSize LargestPicture(4000, 3000);
const QSize LargestForm(4000, 4000);
const double SmallestScale = 0.1;
const double LargestScale = 4;
const int LatestTime = 1000000;

struct Options
{
    SessionFiles files;
    UnattendedTasks tasks;
    bool watches;
    QString translation; ///< May be empty, as the next two.
    QString recording;   ///< To replay.
    QString recordTo;
    JsonData assignments;
    double time; ///< At which generators start, or stand for the tasks.
};

int Fail(const QString& reason)
{
    QTextStream(stderr) << "declview: " << reason << '\n';
    return CannotRun;
}

/// False when the text is no «WIDTHxHEIGHT».
bool ReadSize(const QString& text, QSize* size)
{
    const QStringList sides = text.split('x');
    *size = QSize(sides.value(0).toInt(), sides.value(1).toInt());
    return sides.size() == 2 && QRect({}, LargestForm).contains(QRect({}, *size)) && !size->isEmpty();
}

/// The options of the command line.
class CommandLine
{
public:
    CommandLine()
    {
        m_parser.setApplicationDescription("Shows a form live, beside its variables, declarations and messages.");
        m_parser.addHelpOption();
        m_parser.addVersionOption();
        m_parser.addOptions({m_data, m_package, m_set, m_translation, m_screenshot, m_size, m_scale, m_print, m_watch,
                             m_json, m_at, m_replay, m_record, m_name});
        m_parser.addPositionalArgument("FORM.ui", "The form.");
    }

    /// Works without an application, since what is asked for decides on the platform. An empty text, or what
    /// is wrong.
    QString Read(const QStringList& arguments, Options* options)
    {
        if (!m_parser.parse(arguments))
            return m_parser.errorText();
        if (AsksAboutTheProgram())
            return QString();
        if (m_parser.positionalArguments().size() != 1)
            return "one form is wanted (see --help)";
        QString error;
        if (!ReadFiles(&options->files, &error))
            return error;
        options->translation = m_parser.value(m_translation);
        options->recording = m_parser.value(m_replay);
        options->recordTo = m_parser.value(m_record);
        options->watches = m_parser.isSet(m_watch);
        ReadTasks(&options->tasks, &error);
        ReadTime(options, &error);
        const QStringList assignments = m_parser.values(m_set);
        for (const QString& assignment : assignments) {
            if (error.isEmpty() && !options->assignments.Assign(assignment, options->files.defaultPackage, &error))
                return error;
        }
        return error;
    }

    bool AsksAboutTheProgram() const
    {
        return m_parser.isSet("help") || m_parser.isSet("help-all") || m_parser.isSet("version");
    }

    /// Ends the program.
    void TellAboutTheProgram()
    {
        if (m_parser.isSet("version"))
            m_parser.showVersion();
        m_parser.showHelp();
    }

private:
    /// What the command line says goes before the project file.
    bool ReadFiles(SessionFiles* files, QString* error) const
    {
        files->form = m_parser.positionalArguments().constFirst();
        files->name = m_parser.value(m_name);
        const QString path = ProjectFile::Find(QFileInfo(files->form).absolutePath());
        ProjectFile project;
        if (!path.isEmpty() && !project.Read(path, error))
            return false;
        files->data = m_parser.isSet(m_data) ? m_parser.value(m_data) : project.data;
        files->defaultPackage = m_parser.isSet(m_package) ? m_parser.value(m_package) : project.package;
        return true;
    }

    void ReadTasks(UnattendedTasks* tasks, QString* error) const
    {
        const bool watches = m_parser.isSet(m_watch);
        tasks->asJson = m_parser.isSet(m_json);
        tasks->print = m_parser.isSet(m_print) || (tasks->asJson && !watches);
        tasks->picture = m_parser.value(m_screenshot);
        tasks->formAlone = m_parser.isSet(m_size) || m_parser.isSet(m_scale);
        tasks->scale = m_parser.value(m_scale).toDouble();
        if (tasks->formAlone && m_parser.isSet(m_record))
            *error = "--record is for a window, and --size and --scale are for none";
        else if (watches && tasks->Any())
            *error = "--watch goes on, and --screenshot and --print exit";
        else if (tasks->formAlone && tasks->picture.isEmpty())
            *error = "--size and --scale are for --screenshot";
        else if (m_parser.isSet(m_size) && !ReadSize(m_parser.value(m_size), &tasks->formSize))
            *error
                = QString("--size wants WIDTHxHEIGHT, up to %1x%2").arg(LargestForm.width()).arg(LargestForm.height());
        else if (!(tasks->scale >= SmallestScale && tasks->scale <= LargestScale))
            *error = QString("--scale wants a number from %1 to %2").arg(SmallestScale).arg(LargestScale);
    }

    void ReadTime(Options* options, QString* error) const
    {
        bool isNumber = false;
        options->time = m_parser.value(m_at).toDouble(&isNumber);
        if (!isNumber || !(options->time >= 0 && options->time <= LatestTime))
            *error = QString("--at wants seconds, from 0 to %1").arg(LatestTime);
    }

    QCommandLineParser m_parser;
    const QCommandLineOption m_data{"data", "Variables by package and name.", "DATA.json"};
    const QCommandLineOption m_package{"package", "Package of variables that the form names without one.", "NAME"};
    const QCommandLineOption m_set{"set", "Give a variable a value; may be repeated.", "[PACKAGE:]NAME=JSON"};
    const QCommandLineOption m_translation{"translation", "Show the form in another language.", "FILE.qm"};
    const QCommandLineOption m_screenshot{"screenshot", "Save a picture of the window and exit.", "FILE"};
    const QCommandLineOption m_size{"size", "Picture the form alone, in that size.", "WIDTHxHEIGHT"};
    const QCommandLineOption m_scale{"scale", "Picture the form alone, with so many pixels for each of a screen.", "N",
                                     "1"};
    const QCommandLineOption m_print{"print", "Print what the bound properties hold and exit."};
    const QCommandLineOption m_watch{"watch", "Print what the bound properties hold, and what changes."};
    const QCommandLineOption m_replay{"replay", "Let variables move as they were recorded.", "FILE"};
    const QCommandLineOption m_record{"record", "Record what the variables become.", "FILE"};
    const QCommandLineOption m_name{"form-name", "What the form is called, where its file is a copy.", "NAME"};
    const QCommandLineOption m_json{"json", "Print it as JSON."};
    const QCommandLineOption m_at{"at", "The time at which data that move start, and stand for the options that exit.",
                                  "SECONDS", "0"};
};

/// Without a window, and out of sight.
bool PictureForm(const Options& options, const FormSession& session)
{
    QWidget* const form = session.Form();
    form->setAttribute(Qt::WA_DontShowOnScreen);
    if (options.tasks.formSize.isValid())
        form->resize(options.tasks.formSize);
    form->show();
    if (options.tasks.formSize.isValid() && form->size() != options.tasks.formSize)
        QTextStream(stderr) << "declview: the form is " << form->width() << 'x' << form->height()
                            << ", as its limits want it\n";
    return RunUnattended(options.tasks, session, form);
}

int RunWindow(const Options& options, FormSession* session, MainWindow* window)
{
    const bool unattended = options.tasks.Any();
    window->FitToForm(unattended ? LargestPicture : QApplication::primaryScreen()->availableSize());
    window->SetMotion(!unattended);
    window->show();
    if (unattended)
        return RunUnattended(options.tasks, *session, window) ? 0 : CannotRun;
    std::unique_ptr<PropertyPrinter> printer;
    if (options.watches)
        printer = std::make_unique<PropertyPrinter>(session, options.tasks.asJson);
    return QApplication::exec();
}

/// Bad lines of one that is replayed go to stderr. The window may be null.
bool StartRecordings(const Options& options, FormSession* session, MainWindow* window, QString* error)
{
    if (!options.recording.isEmpty()) {
        DataRecording recording;
        if (!recording.Read(options.recording, error))
            return false;
        for (const QString& problem : recording.Problems())
            QTextStream(stderr) << "declview: " << problem << '\n';
        session->Motion().SetRecording(recording);
    }
    return !window || options.recordTo.isEmpty() || window->Record(options.recordTo, error);
}

int Run(const Options& options)
{
    QTranslator translator;
    if (!options.translation.isEmpty() && !translator.load(options.translation))
        return Fail(options.translation + ": this is no translation that can be read");
    QApplication::installTranslator(&translator);
    // They print the problems that stand at the end.
    if (options.tasks.Any())
        QLoggingCategory::setFilterRules("declarationforms.warning=false");
    FormSession session(options.files);
    session.Variables().Set(options.assignments);
    std::unique_ptr<MainWindow> window;
    if (!options.tasks.formAlone)
        window = std::make_unique<MainWindow>(&session);
    QString error;
    if (!session.Load(&error))
        return Fail(error);
    if (!StartRecordings(options, &session, window.get(), &error))
        return Fail(error);
    session.Motion().SetTime(options.time);
    if (options.tasks.formAlone)
        return PictureForm(options, session) ? 0 : CannotRun;
    return RunWindow(options, &session, window.get());
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    CommandLine commandLine;
    Options options{};
    const QString problem = commandLine.Read(arguments, &options);
    if (!problem.isEmpty())
        return Fail(problem);
    if ((options.tasks.Any() || commandLine.AsksAboutTheProgram()) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication application(argc, argv);
    application.setApplicationVersion(DECLARATIONHANDLER_VERSION);
    if (commandLine.AsksAboutTheProgram())
        commandLine.TellAboutTheProgram();
    return Run(options);
}
