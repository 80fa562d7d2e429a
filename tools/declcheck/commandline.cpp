#include "declcheck/commandline.h"

#include <QFileInfo>

#include <algorithm>
#include <cstdio>

#include "common/checksettings.h"
#include "common/projectfile.h"

namespace {

QStringList CheckNames()
{
    QStringList names;
    for (const CheckInfo& check : AllChecks())
        names.append(check.name);
    return names;
}

} // namespace

CommandLine::CommandLine()
    : m_package("package", "The package of variables that are named without one.", "name"),
      m_data("data", "The variables that there are; one that is not among them is a warning.", "file"),
      m_project("project", "The project file, instead of a declcheck.json beside the form or above; \"\" for none.",
                "file"),
      m_handler("handler", "The host adds the statements itself, in the order of the form; tell what depends on it."),
      m_list("list-variables", "List the variables that the forms read, instead of checking."),
      m_format("format", "How to write: text, json or sarif.", "format", "text"),
      m_disable("disable", "Leave checks out, separated by commas (repeatable): " + CheckNames().join(", ") + ".",
                "checks"),
      m_werror("werror", "Report warnings as errors."),
      m_fix("fix", "Mend in the files what is certain, and report the rest."),
      m_stdinName("stdin-name", "The name of the file that is read from stdin, for the messages.", "name", "-")
{
    m_parser.setApplicationDescription("Checks the statements in the dynamic properties of Designer forms.\n"
                                       "Exit status: 0 clean (or notes alone), 1 errors or warnings, 2 could not run.");
    m_parser.addPositionalArgument("form", "The forms to check, and translations of them; - is the standard input.",
                                   "FORM.ui... [FILE.ts...]");
    m_parser.addOptions(
        {m_package, m_data, m_project, m_handler, m_list, m_format, m_disable, m_werror, m_fix, m_stdinName});
    m_parser.addHelpOption();
    m_parser.addVersionOption();
}

CommandLine::~CommandLine() = default;

bool CommandLine::Read(const QStringList& arguments)
{
    if (!m_parser.parse(arguments))
        return Refuse(m_parser.errorText());
    if (m_parser.isSet("help") || m_parser.isSet("help-all") || m_parser.isSet("version"))
        m_parser.process(arguments);
    if (Forms().isEmpty())
        return Refuse(Translations().isEmpty() ? "No form is given; see --help."
                                               : "No form is given beside the translations.");
    if (!QStringList{"text", "json", "sarif"}.contains(Format()))
        return Refuse(QString("Unknown format \"%1\"; there are text, json and sarif.").arg(Format()));
    if (Fixes() && m_parser.positionalArguments().contains("-"))
        return Refuse("What is read from stdin cannot be mended.");
    QString error;
    return AddChecks(DisabledNames(), &m_disabled, &error) || Refuse(error);
}

QStringList CommandLine::Forms() const
{
    QStringList files = m_parser.positionalArguments();
    files.erase(std::remove_if(files.begin(), files.end(), [&](const QString& file) { return IsTranslation(file); }),
                files.end());
    return files;
}

QStringList CommandLine::Translations() const
{
    QStringList files = m_parser.positionalArguments();
    files.erase(std::remove_if(files.begin(), files.end(), [&](const QString& file) { return !IsTranslation(file); }),
                files.end());
    return files;
}

QString CommandLine::NameOf(const QString& file) const
{
    return file == "-" ? m_parser.value(m_stdinName) : file;
}

const CheckOptions* CommandLine::OptionsFor(const QString& name)
{
    const QString project
        = m_parser.isSet(m_project) ? m_parser.value(m_project) : ProjectFile::Find(QFileInfo(name).absolutePath());
    const auto found = m_settings.find(project);
    if (found != m_settings.end())
        return found->second ? &found->second->Options() : nullptr;
    std::unique_ptr<CheckSettings>& settings = m_settings[project];
    settings.reset(new CheckSettings);
    QString error;
    if (!ReadSettings(project, settings.get(), &error)) {
        Refuse(error);
        settings.reset();
    }
    return settings ? &settings->Options() : nullptr;
}

bool CommandLine::Refuse(const QString& reason) const
{
    std::fprintf(stderr, "declcheck: %s\n", qUtf8Printable(reason));
    return false;
}

bool CommandLine::IsTranslation(const QString& file) const
{
    return NameOf(file).endsWith(QLatin1String(".ts"), Qt::CaseInsensitive);
}

QStringList CommandLine::DisabledNames() const
{
    const QString all = m_parser.values(m_disable).join(',');
    return all.split(',', Qt::SkipEmptyParts);
}

bool CommandLine::ReadSettings(const QString& project, CheckSettings* settings, QString* error) const
{
    if (!settings->ReadProject(project, error))
        return false;
    if (m_parser.isSet(m_package))
        settings->SetPackage(m_parser.value(m_package));
    if (m_parser.isSet(m_data))
        settings->SetDataFile(m_parser.value(m_data));
    if (m_parser.isSet(m_handler))
        settings->UseHandler();
    settings->Disable(m_disabled);
    return settings->ReadData(error);
}
