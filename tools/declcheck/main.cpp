// Checks the statements of Designer forms, for an editor or a CI.

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QSaveFile>
#include <QScopedPointer>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <unistd.h>

#include "common/knownvariables.h"
#include "common/projectfile.h"
#include "declcheck/report.h"

namespace {

enum ExitCode
{
    Clean = 0,
    Findings = 1,
    CouldNotRun = 2
};

void Complain(const QString& message)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

void Print(const QByteArray& text)
{
    std::fwrite(text.constData(), 1, size_t(text.size()), stdout);
}

/// What building a form prints is no matter of its statements.
void FilterMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg)
        Complain(message);
}

QStringList CheckNames()
{
    QStringList names;
    for (const CheckInfo& check : AllChecks())
        names.append(check.name);
    return names;
}

/// The options that hold for the forms of one project, with the data that they refer to.
class Settings
{
public:
    /// What the project file says, if \a project is the path of one. False with the reason.
    bool ReadProject(const QString& project, QString* error)
    {
        if (project.isEmpty())
            return true;
        ProjectFile file;
        if (!file.Read(project, error))
            return false;
        m_options.package = file.package;
        m_options.disabled = file.disabled;
        m_options.severities = file.severities;
        m_options.hostVariables = file.hostVariables;
        m_options.hostProperties = file.hostProperties;
        m_dataFile = file.data;
        return true;
    }

    void SetPackage(const QString& package) { m_options.package = package; }
    void SetDataFile(const QString& dataFile) { m_dataFile = dataFile; }
    void Disable(const QSet<int>& checks) { m_options.disabled += checks; }

    /// False, with the reason, when there are data that cannot be read.
    bool ReadData(QString* error)
    {
        if (m_dataFile.isEmpty())
            return true;
        if (!m_data.Read(m_dataFile, error))
            return false;
        m_known.reset(new KnownVariables(m_data));
        m_options.variables = m_known.data();
        return true;
    }

    const CheckOptions& Options() const { return m_options; }

private:
    CheckOptions m_options;
    QString m_dataFile;
    JsonData m_data;
    QScopedPointer<KnownVariables> m_known;
};

/// The options of the command line, and what they stand for.
class CommandLine
{
public:
    CommandLine()
        : m_package("package", "The package of variables that are named without one.", "name"),
          m_data("data", "The variables that there are; one that is not among them is a warning.", "file"),
          m_project("project", "The project file, instead of a declcheck.json beside the form or above; \"\" for none.",
                    "file"),
          m_list("list-variables", "List the variables that the forms read, instead of checking."),
          m_format("format", "How to write: text, json or sarif.", "format", "text"),
          m_disable("disable", "Leave checks out, separated by commas (repeatable): " + CheckNames().join(", ") + ".",
                    "checks"),
          m_werror("werror", "Report warnings as errors."),
          m_fix("fix", "Mend in the forms what is certain, and report the rest."),
          m_stdinName("stdin-name", "The name of the form that is read from stdin, for the messages.", "name", "-")
    {
        m_parser.setApplicationDescription(
            "Checks the statements in the dynamic properties of Designer forms.\n"
            "Exit status: 0 clean (or notes alone), 1 errors or warnings, 2 could not run.");
        m_parser.addPositionalArgument("form", "The forms to check; - is the standard input.", "FORM.ui...");
        m_parser.addOptions({m_package, m_data, m_project, m_list, m_format, m_disable, m_werror, m_fix, m_stdinName});
        m_parser.addHelpOption();
        m_parser.addVersionOption();
    }

    /// False for what cannot be understood, with the reason told.
    bool Read(const QStringList& arguments)
    {
        if (!m_parser.parse(arguments))
            return Refuse(m_parser.errorText());
        if (m_parser.isSet("help") || m_parser.isSet("help-all") || m_parser.isSet("version"))
            m_parser.process(arguments);
        if (Forms().isEmpty())
            return Refuse("No form is given; see --help.");
        if (!QStringList{"text", "json", "sarif"}.contains(Format()))
            return Refuse(QString("Unknown format \"%1\"; there are text, json and sarif.").arg(Format()));
        if (Fixes() && Forms().contains("-"))
            return Refuse("What is read from stdin cannot be mended.");
        QString error;
        return AddChecks(DisabledNames(), &m_disabled, &error) || Refuse(error);
    }

    QStringList Forms() const { return m_parser.positionalArguments(); }
    QString Format() const { return m_parser.value(m_format); }
    QString StdinName() const { return m_parser.value(m_stdinName); }
    bool ListsVariables() const { return m_parser.isSet(m_list); }
    bool WarningsAreErrors() const { return m_parser.isSet(m_werror); }
    bool Fixes() const { return m_parser.isSet(m_fix); }

    /// Those for a form of that name; the command line goes before the project file. Null when they cannot be
    /// read, with the reason told once.
    const CheckOptions* OptionsFor(const QString& form)
    {
        const QString project
            = m_parser.isSet(m_project) ? m_parser.value(m_project) : ProjectFile::Find(QFileInfo(form).absolutePath());
        const auto found = m_settings.find(project);
        if (found != m_settings.end())
            return found->second ? &found->second->Options() : nullptr;
        std::unique_ptr<Settings>& settings = m_settings[project];
        settings.reset(new Settings);
        QString error;
        if (!ReadSettings(project, settings.get(), &error)) {
            Refuse(error);
            settings.reset();
        }
        return settings ? &settings->Options() : nullptr;
    }

private:
    bool Refuse(const QString& reason) const
    {
        Complain("declcheck: " + reason);
        return false;
    }

    QStringList DisabledNames() const
    {
        const QString all = m_parser.values(m_disable).join(',');
        return all.split(',', Qt::SkipEmptyParts);
    }

    bool ReadSettings(const QString& project, Settings* settings, QString* error) const
    {
        if (!settings->ReadProject(project, error))
            return false;
        if (m_parser.isSet(m_package))
            settings->SetPackage(m_parser.value(m_package));
        if (m_parser.isSet(m_data))
            settings->SetDataFile(m_parser.value(m_data));
        settings->Disable(m_disabled);
        return settings->ReadData(error);
    }

    QCommandLineParser m_parser;
    const QCommandLineOption m_package;
    const QCommandLineOption m_data;
    const QCommandLineOption m_project;
    const QCommandLineOption m_list;
    const QCommandLineOption m_format;
    const QCommandLineOption m_disable;
    const QCommandLineOption m_werror;
    const QCommandLineOption m_fix;
    const QCommandLineOption m_stdinName;
    QSet<int> m_disabled;
    std::map<QString, std::unique_ptr<Settings>> m_settings; ///< By project file; null for those not to be read.
};

/// What came out of all forms.
struct Outcome
{
    QVector<Finding> findings;
    QVector<VariableUse> variables;
    bool succeeded = true;

    int Status() const
    {
        const bool isClean = std::all_of(findings.begin(), findings.end(),
                                         [](const Finding& finding) { return finding.severity == Severity::Note; });
        return !succeeded ? CouldNotRun : isClean ? Clean : Findings;
    }
};

/// The content of a form; "-" is the standard input. False with the reason told.
bool ReadForm(const QString& form, QByteArray* content)
{
    QFile file(form);
    const bool isOpen = form == "-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (isOpen)
        *content = file.readAll();
    else
        Complain(QString("%1: %2").arg(form, file.errorString()));
    return isOpen;
}

bool WriteForm(const QString& form, const QByteArray& content)
{
    QSaveFile file(form);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit())
        return true;
    Complain(QString("%1: %2").arg(form, file.errorString()));
    return false;
}

bool CheckContent(const QString& name, const QByteArray& content, const CheckOptions& options, bool fixes,
                  Outcome* outcome)
{
    FormChecker checker(name, options);
    QString error;
    if (!checker.Run(content, &error)) {
        Complain(error);
        return false;
    }
    int count = 0;
    const QByteArray fixed = fixes ? checker.Fixed(&count) : QByteArray();
    if (!fixed.isEmpty()) {
        Complain(QString("%1: mended in %2 places").arg(name).arg(count));
        return WriteForm(name, fixed) && CheckContent(name, fixed, options, false, outcome);
    }
    outcome->findings += checker.Findings();
    outcome->variables += checker.Variables();
    return true;
}

Outcome CheckForms(CommandLine* commandLine)
{
    Outcome outcome;
    const QStringList forms = commandLine->Forms();
    for (const QString& form : forms) {
        const QString name = form == "-" ? commandLine->StdinName() : form;
        const CheckOptions* const options = commandLine->OptionsFor(name);
        QByteArray content;
        outcome.succeeded = options && ReadForm(form, &content)
            && CheckContent(name, content, *options, commandLine->Fixes(), &outcome) && outcome.succeeded;
    }
    for (Finding& finding : outcome.findings) {
        if (commandLine->WarningsAreErrors() && finding.severity == Severity::Warning)
            finding.severity = Severity::Error;
    }
    return outcome;
}

int PrintVariables(const Outcome& outcome, const QString& format)
{
    Print(format == "text" ? Report::ToText(outcome.variables) : Report::ToJson(outcome.variables));
    return outcome.succeeded ? Clean : CouldNotRun;
}

int PrintFindings(const Outcome& outcome, const QString& format, int formCount)
{
    if (format == "json")
        Print(Report::ToJson(outcome.findings));
    else if (format == "sarif")
        Print(Report::ToSarif(outcome.findings, outcome.succeeded));
    else
        Print(Report::ToText(outcome.findings, isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR"))
              + Report::CountsToText(outcome.findings, formCount));
    return outcome.Status();
}

} // namespace

int main(int argc, char* argv[])
{
    // The forms are built and never shown, so no display is wanted.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(FilterMessage);
    QApplication application(argc, argv);
    application.setApplicationVersion(DECLARATIONHANDLER_VERSION);

    CommandLine commandLine;
    if (!commandLine.Read(application.arguments()))
        return CouldNotRun;
    const Outcome outcome = CheckForms(&commandLine);
    return commandLine.ListsVariables() ? PrintVariables(outcome, commandLine.Format())
                                        : PrintFindings(outcome, commandLine.Format(), commandLine.Forms().size());
}
