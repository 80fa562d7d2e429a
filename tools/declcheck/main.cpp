// Checks the statements of Designer forms and their translations, for an editor or a CI.

#include <QApplication>
#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <unistd.h>

#include "check/translationchecker.h"
#include "declcheck/commandline.h"
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

/// What came out of all files.
struct Outcome
{
    QVector<Finding> findings;
    QVector<VariableUse> variables;
    QVector<FormTexts> texts; ///< Of the forms that could be checked.
    bool succeeded = true;

    int Status() const
    {
        const bool isClean = std::all_of(findings.begin(), findings.end(),
                                         [](const Finding& finding) { return finding.severity == Severity::Note; });
        return !succeeded ? CouldNotRun : isClean ? Clean : Findings;
    }
};

/// The content of a file; "-" is the standard input. False with the reason told.
bool ReadContent(const QString& path, QByteArray* content)
{
    QFile file(path);
    const bool isOpen = path == "-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (isOpen)
        *content = file.readAll();
    else
        Complain(QString("%1: %2").arg(path, file.errorString()));
    return isOpen;
}

bool WriteContent(const QString& path, const QByteArray& content)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit())
        return true;
    Complain(QString("%1: %2").arg(path, file.errorString()));
    return false;
}

void Take(const FormChecker& checker, Outcome* outcome)
{
    outcome->findings += checker.Findings();
    outcome->variables += checker.Variables();
    outcome->texts.append(checker.Texts());
}

void Take(const TranslationChecker& checker, Outcome* outcome)
{
    outcome->findings += checker.Findings();
}

/// \a makeChecker makes one for the file of that name. False with the reason told.
template<typename MakeChecker>
bool CheckContent(const QString& name, const QByteArray& content, bool fixes, const MakeChecker& makeChecker,
                  Outcome* outcome)
{
    const auto checker = makeChecker();
    QString error;
    if (!checker->Run(content, &error)) {
        Complain(error);
        return false;
    }
    int count = 0;
    const QByteArray fixed = fixes ? checker->Fixed(&count) : QByteArray();
    if (!fixed.isEmpty()) {
        Complain(QString("%1: mended in %2 places").arg(name).arg(count));
        return WriteContent(name, fixed) && CheckContent(name, fixed, false, makeChecker, outcome);
    }
    Take(*checker, outcome);
    return true;
}

bool CheckForm(const QString& form, CommandLine* commandLine, Outcome* outcome)
{
    const QString name = commandLine->NameOf(form);
    const CheckOptions* const options = commandLine->OptionsFor(name);
    const auto makeChecker = [&] { return std::make_unique<FormChecker>(name, *options); };
    QByteArray content;
    return options && ReadContent(form, &content)
        && CheckContent(name, content, commandLine->Fixes(), makeChecker, outcome);
}

/// Against the forms that were checked before.
bool CheckTranslation(const QString& translation, CommandLine* commandLine, Outcome* outcome)
{
    const QString name = commandLine->NameOf(translation);
    const CheckOptions* const options = commandLine->OptionsFor(name);
    const auto makeChecker = [&] { return std::make_unique<TranslationChecker>(name, *options, outcome->texts); };
    QByteArray content;
    return options && ReadContent(translation, &content)
        && CheckContent(name, content, commandLine->Fixes(), makeChecker, outcome);
}

Outcome CheckFiles(CommandLine* commandLine)
{
    Outcome outcome;
    const QStringList forms = commandLine->Forms();
    for (const QString& form : forms)
        outcome.succeeded = CheckForm(form, commandLine, &outcome) && outcome.succeeded;
    const QStringList translations = commandLine->Translations();
    for (const QString& translation : translations)
        outcome.succeeded = CheckTranslation(translation, commandLine, &outcome) && outcome.succeeded;
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

int PrintFindings(const Outcome& outcome, const CommandLine& commandLine)
{
    const QString format = commandLine.Format();
    if (format == "json")
        Print(Report::ToJson(outcome.findings));
    else if (format == "sarif")
        Print(Report::ToSarif(outcome.findings, outcome.succeeded));
    else
        Print(Report::ToText(outcome.findings, isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR"))
              + Report::CountsToText(outcome.findings, commandLine.Forms().size(), commandLine.Translations().size()));
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
    const Outcome outcome = CheckFiles(&commandLine);
    return commandLine.ListsVariables() ? PrintVariables(outcome, commandLine.Format())
                                        : PrintFindings(outcome, commandLine);
}
