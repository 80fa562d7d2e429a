// Evaluates a statement, or reads statements line by line.

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "common/jsondata.h"
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
          m_json("json", "Print one object of JSON for each statement."),
          m_dataPeer(Ovex_DataPeerFactory(false)->GetDataPeer(0))
    {
        m_parser.setApplicationDescription("Evaluates a statement; without one, each line of the input.\n"
                                           "Exit status: 0 all parse, 1 one does not, 2 could not run.");
        m_parser.addPositionalArgument("statement", "The statement.", "[STATEMENT]");
        m_parser.addOptions({m_data, m_set, m_package, m_tokens, m_json});
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
        m_variables.Publish(m_dataPeer);
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
        if (m_parser.isSet("help"))
            m_parser.showHelp(Parsed);
        if (m_parser.isSet("version"))
            m_parser.showVersion();
        if (m_parser.positionalArguments().size() > 1) {
            *error = "More than one statement is given; a statement with blanks stands in quotes.";
            return false;
        }
        return ReadVariables(error);
    }

    bool ReadVariables(QString* error)
    {
        if (m_parser.isSet(m_data) && !m_variables.Read(m_parser.value(m_data), error))
            return false;
        const QStringList assignments = m_parser.values(m_set);
        for (const QString& assignment : assignments) {
            if (!m_variables.Assign(assignment, m_parser.value(m_package), error))
                return false;
        }
        return true;
    }

    int EvaluateLines()
    {
        LineReader reader(Words());
        int status = Parsed;
        QString line;
        while (reader.ReadLine(&line)) {
            if (!line.trimmed().isEmpty())
                status = qMax(status, EvaluateOne(line));
        }
        return status;
    }

    int EvaluateOne(const QString& statement)
    {
        const Evaluation evaluation(statement, m_dataPeer, m_parser.value(m_package));
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
            if (variable.package == m_parser.value(m_package))
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
    const QCommandLineOption m_json;
    IDataPeer* const m_dataPeer;
    JsonData m_variables;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(DECLARATIONHANDLER_VERSION);
    return Program().Run(QCoreApplication::arguments());
}
