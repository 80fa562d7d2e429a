// Evaluates a statement, or reads statements line by line.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QScopedPointer>

#include <algorithm>
#include <cstdio>
#include <limits>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "common/datarecording.h"
#include "common/jsondata.h"
#include "common/knownvariables.h"
#include "common/projectfile.h"
#include "common/statementtokens.h"
#include "decleval/evaluation.h"
#include "decleval/linereader.h"

namespace {

enum ExitCode
{
    Parsed = 0,
    NotParsed = 1,
    CouldNotRun = 2
};

void Print(FILE* stream, const QByteArray& text)
{
    std::fwrite(text.constData(), 1, size_t(text.size()), stream);
    std::fflush(stream);
}

class Program
{
public:
    Program()
        : m_data("data", "Variables by package and name, in JSON.", "file"),
          m_set("set", "Set a variable (repeatable): [PACKAGE:]NAME=JSON.", "assignment"),
          m_package("package", "The package of variables that are named without one.", "name"),
          m_tokens("tokens", "Print the tokens as well."),
          m_replay("replay", "A recording of a host's data, to its end or to the time of --at.", "file"),
          m_at("at", "The time in the recording.", "seconds"),
          m_json("json", "Print one object of JSON for each statement."),
          m_dataPeer(Ovex_DataPeerFactory(false)->GetDataPeer(0))
    {
        m_parser.setApplicationDescription("Evaluates a statement; without one, each line of the input.\n"
                                           "Exit status: 0 all parse, 1 one does not, 2 could not run.");
        m_parser.addPositionalArgument("statement", "The statement.", "[STATEMENT]");
        m_parser.addOptions({m_data, m_replay, m_at, m_set, m_package, m_tokens, m_json});
        m_parser.addHelpOption();
        m_parser.addVersionOption();
    }

    int Run(const QStringList& arguments)
    {
        QString error;
        if (!Read(arguments, &error)) {
            Print(stderr, "decleval: " + error.toUtf8() + '\n');
            return CouldNotRun;
        }
        Publish();
        const QStringList statements = m_parser.positionalArguments();
        return statements.isEmpty() ? EvaluateLines() : EvaluateOne(statements.first());
    }

private:
    bool Read(const QStringList& arguments, QString* error)
    {
        if (!m_parser.parse(arguments)) {
            *error = m_parser.errorText();
            return false;
        }
        if (m_parser.isSet("help") || m_parser.isSet("help-all") || m_parser.isSet("version"))
            m_parser.process(arguments);
        if (m_parser.positionalArguments().size() > 1) {
            *error = "More than one statement is given; a statement with blanks stands in quotes.";
            return false;
        }
        return ReadVariables(error);
    }

    bool ReadVariables(QString* error)
    {
        const QString path = ProjectFile::Find(".");
        ProjectFile project;
        if (!path.isEmpty() && !project.Read(path, error))
            return false;
        m_options.package = m_parser.isSet(m_package) ? m_parser.value(m_package) : project.package;
        m_options.disabled = project.disabled;
        m_options.hostVariables = project.hostVariables;
        const QString data = m_parser.isSet(m_data) ? m_parser.value(m_data) : project.data;
        if (!data.isEmpty() && !m_variables.Read(data, error))
            return false;
        if (!Replay(error))
            return false;
        const QStringList assignments = m_parser.values(m_set);
        return std::all_of(assignments.begin(), assignments.end(),
                           [&](const QString& assignment) { return Assign(assignment, error); });
    }

    /// Lines of a recording that are none are told, and the others count.
    bool Replay(QString* error)
    {
        bool isNumber = true;
        const double time
            = m_parser.isSet(m_at) ? m_parser.value(m_at).toDouble(&isNumber) : std::numeric_limits<double>::infinity();
        if (!isNumber || !(time >= 0)) {
            *error = "--at wants seconds, from 0 on";
            return false;
        }
        if (!m_parser.isSet(m_replay) && m_parser.isSet(m_at)) {
            *error = "--at is for --replay";
            return false;
        }
        if (!m_parser.isSet(m_replay))
            return true;
        DataRecording recording;
        if (!recording.Read(m_parser.value(m_replay), error))
            return false;
        for (const QString& problem : recording.Problems())
            Print(stderr, "decleval: " + problem.toUtf8() + '\n');
        for (const RecordedChange& change : recording.Changes()) {
            if (change.seconds <= time)
                m_variables.Set({change.identifier.GetPackage(), change.identifier.GetName(), change.value});
        }
        return true;
    }

    /// Refuses names that no statement can read.
    bool Assign(const QString& assignment, QString* error)
    {
        const QString left = assignment.section('=', 0, 0).trimmed();
        const QVector<StatementToken> tokens = StatementTokens(left.contains(':') ? '@' + left : left).Tokens();
        const bool isName = tokens.size() == 1 && tokens.first().type == Token::TT_VARIABLE
            && !tokens.first().reference.IsProperty()
            && tokens.first().place.length == left.size() + (left.contains(':') ? 1 : 0);
        if (!isName && assignment.contains('=')) {
            *error = QString("\"%1\" is no name of a variable; a statement cannot read it").arg(left);
            return false;
        }
        return m_variables.Assign(assignment, m_options.package, error);
    }

    void Publish()
    {
        m_variables.Publish(m_dataPeer);
        m_known.reset(m_variables.Variables().isEmpty() ? nullptr : new KnownVariables(m_variables));
        m_options.variables = m_known.data();
    }

    int EvaluateLines()
    {
        LineReader reader(Words());
        int status = Parsed;
        int number = 0;
        QString line;
        while (reader.ReadLine(&line)) {
            ++number;
            const int toldNumber = reader.IsTerminal() ? 0 : number;
            const QString command = line.trimmed();
            if (command == ":quit")
                break;
            if (command.startsWith(':'))
                status = qMax(status, Obey(command, toldNumber));
            else if (!command.isEmpty())
                status = qMax(status, EvaluateOne(line, toldNumber));
        }
        return status;
    }

    /// A line that is no statement, with its number if that is to be told.
    int Obey(const QString& command, int line)
    {
        QString error = QString("There is no command \"%1\"; see :help").arg(command);
        if (command == ":help") {
            Print(stdout,
                  ":set [PACKAGE:]NAME=JSON  gives a variable a value\n"
                  ":quit                     ends\n"
                  "All else is a statement; \"count = 3\" compares.\n");
            return Parsed;
        }
        if (command.startsWith(":set ") && Assign(command.mid(int(qstrlen(":set "))), &error)) {
            Publish();
            return Parsed;
        }
        const QString place = line > 0 ? QString("%1: ").arg(line) : QString();
        Print(stderr, (place + "error: " + Escaped(error)).toUtf8() + '\n');
        return NotParsed;
    }

    int EvaluateOne(const QString& statement, int line = 0)
    {
        const Evaluation evaluation(statement, m_dataPeer, m_options, line);
        if (m_parser.isSet(m_json)) {
            Print(stdout, evaluation.ToJson(m_parser.isSet(m_tokens)));
        } else {
            if (m_parser.isSet(m_tokens))
                Print(stdout, evaluation.TokensToText());
            Print(stderr, evaluation.MessagesToText());
            Print(stdout, evaluation.ValueToText());
        }
        return evaluation.Parses() ? Parsed : NotParsed;
    }

    /// What can be completed: the variables, as they are written in a statement, and the keywords.
    QStringList Words() const
    {
        QStringList words = StatementTokens::Keywords();
        for (const Variable& variable : m_variables.Variables()) {
            if (variable.package == m_options.package)
                words.append(variable.name);
            if (!variable.package.isEmpty())
                words.append('@' + variable.package + ':' + variable.name);
        }
        return words;
    }

    QCommandLineParser m_parser;
    const QCommandLineOption m_data;
    const QCommandLineOption m_set;
    const QCommandLineOption m_package;
    const QCommandLineOption m_tokens;
    const QCommandLineOption m_replay;
    const QCommandLineOption m_at;
    const QCommandLineOption m_json;
    IDataPeer* const m_dataPeer;
    JsonData m_variables;
    QScopedPointer<KnownVariables> m_known;
    CheckOptions m_options;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(DECLARATIONHANDLER_VERSION);
    return Program().Run(QCoreApplication::arguments());
}
