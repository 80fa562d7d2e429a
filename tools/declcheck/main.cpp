// Checks the statements of Designer forms, for an editor or a CI.

#include <QApplication>
#include <QCommandLineParser>
#include <QScopedPointer>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

#include "common/knownvariables.h"
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

/// The options of the command line, and what they stand for.
class CommandLine
{
public:
    CommandLine()
        : m_package("package", "The package of variables that are named without one.", "name"),
          m_data("data", "The variables that there are; one that is not among them is a warning.", "file"),
          m_list("list-variables", "List the variables that the forms read, instead of checking."),
          m_format("format", "How to write: text, json or sarif.", "format", "text"),
          m_disable("disable", "Leave a check out (repeatable): " + CheckNames().join(", ") + ".", "check"),
          m_werror("werror", "Report warnings as errors.")
    {
        m_parser.setApplicationDescription(
            "Checks the statements in the dynamic properties of Designer forms.\n"
            "Exit status: 0 clean (or notes alone), 1 errors or warnings, 2 could not run.");
        m_parser.addPositionalArgument("form", "The forms to check.", "FORM.ui...");
        m_parser.addOptions({m_package, m_data, m_list, m_format, m_disable, m_werror});
        m_parser.addHelpOption();
        m_parser.addVersionOption();
    }

    /// False for what cannot be understood, with the reason told.
    bool Read(const QStringList& arguments)
    {
        if (!m_parser.parse(arguments))
            return Refuse(m_parser.errorText());
        if (m_parser.isSet("help"))
            m_parser.showHelp(Clean);
        if (m_parser.isSet("version"))
            m_parser.showVersion();
        if (Forms().isEmpty())
            return Refuse("No form is given; see --help.");
        if (!QStringList{"text", "json", "sarif"}.contains(Format()))
            return Refuse(QString("Unknown format \"%1\"; there are text, json and sarif.").arg(Format()));
        m_options.package = m_parser.value(m_package);
        return ReadDisabled() && ReadData();
    }

    QStringList Forms() const { return m_parser.positionalArguments(); }
    QString Format() const { return m_parser.value(m_format); }
    bool ListsVariables() const { return m_parser.isSet(m_list); }
    bool WarningsAreErrors() const { return m_parser.isSet(m_werror); }
    const CheckOptions& Options() const { return m_options; }

private:
    bool Refuse(const QString& reason) const
    {
        Complain("declcheck: " + reason);
        return false;
    }

    bool ReadDisabled()
    {
        const QStringList names = CheckNames();
        const QStringList disabled = m_parser.values(m_disable);
        for (const QString& name : disabled) {
            if (!names.contains(name))
                return Refuse(QString("There is no check \"%1\"%2").arg(name, NearestName(names).Hint(name)));
            m_options.disabled.insert(names.indexOf(name));
        }
        return true;
    }

    bool ReadData()
    {
        if (!m_parser.isSet(m_data))
            return true;
        QString error;
        if (!m_variables.Read(m_parser.value(m_data), &error))
            return Refuse(error);
        m_known.reset(new KnownVariables(m_variables));
        m_options.variables = m_known.data();
        return true;
    }

    QCommandLineParser m_parser;
    const QCommandLineOption m_package;
    const QCommandLineOption m_data;
    const QCommandLineOption m_list;
    const QCommandLineOption m_format;
    const QCommandLineOption m_disable;
    const QCommandLineOption m_werror;
    CheckOptions m_options;
    JsonData m_variables;
    QScopedPointer<KnownVariables> m_known;
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

Outcome CheckForms(const CommandLine& commandLine)
{
    Outcome outcome;
    const QStringList forms = commandLine.Forms();
    for (const QString& form : forms) {
        FormChecker checker(form, commandLine.Options());
        QString error;
        if (!checker.Run(&error)) {
            Complain(error);
            outcome.succeeded = false;
            continue;
        }
        outcome.findings += checker.Findings();
        if (commandLine.ListsVariables())
            outcome.variables += checker.Variables();
    }
    for (Finding& finding : outcome.findings) {
        if (commandLine.WarningsAreErrors() && finding.severity == Severity::Warning)
            finding.severity = Severity::Error;
    }
    return outcome;
}

int PrintVariables(const Outcome& outcome, const QString& format)
{
    Print(format == "text" ? Report::ToText(outcome.variables) : Report::ToJson(outcome.variables));
    return outcome.succeeded ? Clean : CouldNotRun;
}

int PrintFindings(const Outcome& outcome, const QString& format)
{
    if (format == "json")
        Print(Report::ToJson(outcome.findings));
    else if (format == "sarif")
        Print(Report::ToSarif(outcome.findings, outcome.succeeded));
    else
        Print(Report::ToText(outcome.findings, isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR")));
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
    const Outcome outcome = CheckForms(commandLine);
    return commandLine.ListsVariables() ? PrintVariables(outcome, commandLine.Format())
                                        : PrintFindings(outcome, commandLine.Format());
}
