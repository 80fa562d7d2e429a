#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <random>

#include "common/diagnosis.h"
#include "common/jsondata.h"
#include "common/nearestname.h"
#include "common/statementchecks.h"
#include "support/operators.h"

namespace {

struct Run
{
    int exitCode;
    QString output;
    QString errors;
};

Run RunTool(const QString& program, const QStringList& arguments, const QByteArray& input = QByteArray())
{
    QProcess process;
    process.setWorkingDirectory(FORMS);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(-1);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

QString Written(const QTemporaryDir& folder, const QByteArray& content, const QString& name = "form.ui")
{
    QFile file(folder.filePath(name));
    const bool written = file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    return written ? file.fileName() : QString();
}

/// A form that is one widget with one property.
QByteArray Form(const QByteArray& name, const QByteArray& statement, const QByteArray& className = "QLabel")
{
    return "<ui version=\"4.0\"><widget class=\"" + className + "\" name=\"top\"><property name=\"" + name
        + "\" stdset=\"0\"><string notr=\"true\">" + statement + "</string></property></widget></ui>";
}

/// A form with a statement that can be translated, and the translation of one.
QByteArray TranslatableForm(const QByteArray& statement, const QByteArray& property = "~text")
{
    return Form(property, statement).replace(" notr=\"true\"", "").replace("<widget", "<class>Panel</class><widget");
}

QByteArray Translation(const QByteArray& source, const QByteArray& translation)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<TS "
           "version=\"2.1\"><context><name>Panel</name><message>\n<source>"
        + source + "</source>\n" + translation + "</message></context></TS>\n";
}

/// What a cell of a table says: the content of its code span, or its text.
QString Content(const QString& cell)
{
    const QRegularExpressionMatch span = QRegularExpression("^(`+)( ?)(.*)\\2\\1$").match(cell.trimmed());
    return span.hasMatch() ? span.captured(3) : cell.trimmed();
}

/// The tables of the language's documentation: the variables, and the trap that each statement is.
struct LanguageTables
{
    JsonData variables;
    QVector<QPair<QString, QString>> traps; ///< Statements, with the check that finds them.
    QStringList unchecked;                  ///< Statements among the traps that stand in a table without checks.

    bool Read()
    {
        QFile document(LANGUAGE_DOCUMENT);
        if (!document.open(QIODevice::ReadOnly))
            return false;
        QString header;
        bool isInTraps = false;
        const QStringList lines = QString::fromUtf8(document.readAll()).split('\n');
        for (const QString& line : lines) {
            const QStringList cells = line.split('|');
            isInTraps = line.startsWith("## ") ? line == "## Traps" : isInTraps;
            header = cells.size() < 3 ? QString() : header.isEmpty() ? line : header;
            if (header.isEmpty() || line == header || line.startsWith("|--"))
                continue;
            if (header.startsWith("| Variable"))
                AddVariable(Content(cells.at(1)), Content(cells.at(2)));
            else if (header.endsWith("| Check |"))
                // A statement may hold the character between the cells.
                traps.append({Content(line.section(" | ", 0, 0).mid(1)), Content(cells.at(cells.size() - 2))});
            else if (isInTraps)
                unchecked.append(line);
        }
        return true;
    }

private:
    void AddVariable(QString name, const QString& value)
    {
        QString error;
        variables.Assign(name.remove('@') + '=' + value, QString(), &error);
    }
};

/// A form with left-over words, and a property that suppresses checks.
QByteArray Suppressing(const QByteArray& checks)
{
    return Form("~text", "a b")
        .replace("</widget>",
                 "<property name=\"declcheckDisable\"><string>" + checks + "</string></property></widget>");
}

} // namespace

class tst_Tools : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void PlantedFaults_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("expected"); ///< A file with the lines that declcheck must write.

        QTest::newRow("form") << QStringList{"faults.ui", "--data", "faults.json", "--handler"} << FORMS "/faults.txt";
        QTest::newRow("translation") << QStringList{"translated.ui", "translated_de.ts"} << FORMS "/translated.txt";
    }

    void PlantedFaults()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, expected);
        const Run run = RunTool(DECLCHECK, arguments);
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.exitCode, 1);
        QFile file(expected);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList wanted = QString::fromUtf8(file.readAll()).split('\n');
        const QStringList found = run.output.split('\n');
        for (int i = 0; i < qMin(wanted.size(), found.size()); ++i)
            QCOMPARE(found.at(i), wanted.at(i));
        QCOMPARE(found.size(), wanted.size());
    }

    /// Each check has a fault in one of the forms, at the place that is expected there, and a row in the
    /// documentation with messages from there.
    void DocumentedChecks()
    {
        QFile document(TOOLS_DOCUMENT);
        QVERIFY(document.open(QIODevice::ReadOnly));
        const QString documentation = QString::fromUtf8(document.readAll());
        QString expected;
        for (const char* const name : {FORMS "/faults.txt", FORMS "/translated.txt"}) {
            QFile file(name);
            QVERIFY(file.open(QIODevice::ReadOnly));
            expected += QString::fromUtf8(file.readAll());
        }
        for (const CheckInfo& check : AllChecks()) {
            const QString start = QString("\n| `%1` | %2 | `").arg(check.name, SeverityName(check.severity));
            QVERIFY2(documentation.contains(start), check.name);
            const QString cell = documentation.section(start, 1, 1).section("` |\n", 0, 0);
            const QStringList messages = cell.split("`<br>`");
            for (const QString& message : messages)
                QVERIFY2(expected.contains(QString(": %1 [%2]\n").arg(message, check.name)), qPrintable(message));
        }
    }

    void MachineFormats()
    {
        const Run json = RunTool(DECLCHECK, {"faults.ui", "--data", "faults.json", "--format", "json", "--werror"});
        const QJsonArray findings = QJsonDocument::fromJson(json.output.toUtf8()).array();
        const QJsonObject first = findings.first().toObject();
        QCOMPARE(first.value("column").toInt(), 65);
        QCOMPARE(first.value("endColumn").toInt(), 68);
        QCOMPARE(first.value("statement")
                     .toString()
                     .mid(first.value("statementOffset").toInt(), first.value("statementLength").toInt()),
                 QString("rmp"));
        QCOMPARE(first.value("severity").toString(), QString("error"));
        QCOMPARE(first.value("object").toString(), QString("QWidget#Faults"));

        const Run sarif = RunTool(DECLCHECK, {"faults.ui", "--data", "faults.json", "--format", "sarif"});
        const QJsonObject log
            = QJsonDocument::fromJson(sarif.output.toUtf8()).object().value("runs").toArray()[0].toObject();
        const QJsonArray rules = log["tool"].toObject()["driver"].toObject()["rules"].toArray();
        const QJsonArray results = log["results"].toArray();
        QCOMPARE(results.size(), findings.size());
        for (const QJsonValue& result : results)
            QCOMPARE(rules[result["ruleIndex"].toInt()]["id"], result["ruleId"]);
        QCOMPARE(results[0]["locations"][0]["physicalLocation"]["region"]["startColumn"].toInt(), 65);
    }

    void Forms_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("output"); ///< What both streams start with behind the name of the form.

        const QByteArray bracket(100000, '(');
        QByteArray cycle = Form("~reading", "a", "A");
        cycle.replace("</ui>",
                      "<customwidgets><customwidget><class>A</class><extends>B</extends></customwidget>"
                      "<customwidget><class>B</class><extends>A</extends></customwidget></customwidgets></ui>");
        const QByteArray carriageReturns = Form("~text", "a +\r\n\r\n b&#10; <![CDATA['&lt;' c]]>");
        QByteArray latin = "<?xml version='1.0' encoding='ISO-8859-1'?>" + Form("~text", "'\xfc' b");
        const QStringList none;

        QTest::newRow("clean") << Form("~text", "a") << none << 0 << "";
        QTest::newRow("a note alone") << Form("~text", "@Widget:toolTip") << none << 0 << ":1:115: note: ";
        QTest::newRow("disabled") << Form("~text", "a b") << QStringList{"--disable", "left-over"} << 0 << "";
        QTest::newRow("a warning") << Form("~text", "a b") << none << 1 << ":1:109: warning: Did not expect";
        QTest::newRow("werror") << Form("~text", "a b") << QStringList{"--werror"} << 1 << ":1:109: error: Did not";
        QTest::newRow("the trap disabled, the parser speaks")
            << Form("~text", "a -1") << QStringList{"--disable", "minus-sign"} << 1
            << ":1:109: warning: Did not expect";
        QTest::newRow("variables") << Form("~text", "@P:a + b + @P:a") << QStringList{"--list-variables"} << 0
                                   << ":1:114: b\n";
        QTest::newRow("package") << Form("~text", "b") << QStringList{"--list-variables", "--package", "Q"} << 0
                                 << ":1:107: Q:b\n";
        QTest::newRow("an object for a package") << Form("~text", "@top:toolTip") << none << 1
                                                 << ":1:107: warning: \"top\" is the name of a package here; the "
                                                    "object's property is \"@TopWidget:toolTip\"";
        QTest::newRow("an object for the start of a name")
            << Form("~text", "top.toolTip") << none << 1
            << ":1:107: warning: \"top.toolTip\" is the name of a variable";
        QTest::newRow("empty statement") << Form("~text", "") << none << 1 << ":1:107: error: Unknown parsing error";
        QTest::newRow("line breaks and sections") << carriageReturns << none << 1 << ":3:18: warning: Did not expect";
        QTest::newRow("other encoding") << latin << none << 1 << ":1:154: warning: Did not expect token: \"b\"";
        QTest::newRow("no display") << Form("~text", "a", "QMainWindow") << none << 1
                                    << ":1:74: error: QMainWindow#top has no";
        QTest::newRow("unknown class") << Form("~toolTip", "a", "Nothing") << none << 1 << ":1:34: warning: The class";
        QTest::newRow("classes that extend each other")
            << cycle << none << 0 << ":1:64: note: A#top, taken for a QWidget";
        QTest::newRow("a layout that the loader refuses") << QByteArray(
            "<ui><widget class='QToolBar'><widget class='QWidget'/><layout class='QVBoxLayout'/></widget></ui>")
                                                          << none << 0 << "";
        QTest::newRow("deep statement") << Form("~text", bracket) << none << 1 << ":1:107: error: Expression is nested";
        QTest::newRow("deep form") << "<ui>" + QByteArray("<widget class='QWidget'>").repeated(10000) << none << 2
                                   << ":1:7229: The elements are nested";
        QTest::newRow("empty") << QByteArray() << none << 2 << ":1:1: Premature end of document.";
        QTest::newRow("cut off") << Form("~text", "a").chopped(20) << none << 2 << ":1:";
        QTest::newRow("garbage") << QByteArray("\0\xff\xfe<\x01>&", 7) << none << 2 << ":1:";
        QTest::newRow("invalid UTF-8") << Form("~text", "'\xc3('") << none << 2 << ":1:108: The text is no UTF-8.";
        const QByteArray limits = Form("~value", "x", "QSpinBox")
                                      .replace("</widget>",
                                               "<property name='~minimum'><string notr='true'>y</string></property>"
                                               "<property name='~maximum'><string notr='true'>y</string></property>"
                                               "<property name='value'><number>1</number></property></widget>");
        QTest::newRow("a value before its limits")
            << limits << QStringList{"--handler"} << 1
            << ":1:71: warning: \"value\" is declared before \"minimum\", so the limits";
        QTest::newRow("a value before its limits, bound with the form") << limits << none << 0 << "";
        QTest::newRow("a value behind its limits")
            << QByteArray(limits).replace("~value", "~maximum") << QStringList{"--handler"} << 1
            << ":1:216: error: \"maximum\" of QSpinBox#top is declared already";
        QTest::newRow("nothing to translate")
            << TranslatableForm("x") << none << 0 << ":1:89: note: The statement has no text to show; take";
        QTest::newRow("nothing that is shown") << TranslatableForm("'red'", "~styleSheet") << none << 0
                                               << ":1:89: note: The statement has no text to show";
        QTest::newRow("a text of bytes") << Form("~text", "a").replace("string", "cstring") << none << 1
                                         << ":1:69: error: \"~text\" holds no text, so there is no";
        QTest::newRow("no form") << QByteArray("<html/>") << none << 2 << ":1:8: No form";
        QTest::newRow("a list disabled") << Form("~text", "a -1") << QStringList{"--disable", "minus-sign,left-over"}
                                         << 0 << "";
        QTest::newRow("suppressed") << Suppressing("left-over") << none << 0 << "";
        QTest::newRow("suppressed for the property") << Suppressing("~text: left-over") << none << 0 << "";
        QTest::newRow("suppressed for another property")
            << Suppressing("toolTip:left-over") << none << 1 << ":1:109: warning: Did not";
        QTest::newRow("suppressed wrongly") << Suppressing("leftover,left-over") << none << 1
                                            << ":1:146: warning: There is no check \"leftover\"; did you";
        QTest::newRow("unknown check") << Form("~text", "a") << QStringList{"--disable", "minus"} << 2 << "";
        QTest::newRow("no data") << Form("~text", "a") << QStringList{"--data", "nowhere.json"} << 2 << "";
        QTest::newRow("unknown format") << Form("~text", "a") << QStringList{"--format", "xml"} << 2 << "";
    }

    void Forms()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, options);
        QFETCH(QString, output);
        const QTemporaryDir folder;
        const QString form = Written(folder, content);
        const Run run = RunTool(DECLCHECK, QStringList{form} + options);
        QTEST(run.exitCode, "exitCode");
        if (!output.isEmpty())
            QCOMPARE((run.output + run.errors).left(form.size() + output.size()), form + output);
        else
            QCOMPARE(run.output, QString());
    }

    /// What other languages write, each with the place and the hint that it gets instead of the parser's message.
    void Slips()
    {
        const QVector<QStringList> slips{
            {"@TopWidget/a:b", "0+14 parse-error", "\"@TopWidget\\a:b\""},
            {"1 * TopWidget\\a:b", "4+13 parse-error", "\"@TopWidget\\a:b\""},
            {"1 * E:b", "4+3 parse-error", "A path starts with \"@\""},
            {"E :b", "2+1 parse-error", "stands only in a reference"},
            {"@E :b", "0+2 parse-error", "No blanks stand"},
            {"@E.b", "0+4 parse-error", "A reference is a path"},
            {"'it's' + a", "4+1 escape", "The text ends before this"},
            {"'don't do it'", "5+1 escape", "The text ends before this"},
            {"a + max(b, 1)", "4+3 foreign-operator", "no functions"},
            {"if a then b", "0+2 foreign-operator", "names[key]"},
            {"a IS b", "2+2 foreign-operator", "\"=\""},
            {"a += 1", "2+2 foreign-operator", "changes nothing"},
            {"a \u2264 1", "2+1 foreign-operator", "\"<=\""},
            {"\u201ca\u201d", "0+1 foreign-operator", "between"},
            {"a[0", "1+1 left-over", "not closed"},
            {"(a", "0+1 parse-error", "not closed"},
            {"a)", "1+1 left-over", "No bracket opens"},
            {"a AND", "2+3 left-over", "Nothing stands behind"},
            {"!= a", "0+2 parse-error", "\"NOT\""},
        };
        for (const QStringList& slip : slips) {
            const Diagnosis diagnosis(slip.at(0));
            const StatementTypes types(diagnosis.Tree(), [](const Reference&) { return ValueType(); });
            const CheckOptions options;
            QStringList found;
            const QVector<StatementFinding> findings = StatementChecks(diagnosis, types, options).Run();
            for (const StatementFinding& finding : findings)
                found << QString("%1+%2 %3: %4")
                             .arg(finding.place.offset)
                             .arg(finding.place.length)
                             .arg(QString(InfoOf(finding.check).name), finding.message);
            QVERIFY2(found.size() == 1 && found.first().startsWith(slip.at(1) + ": ")
                         && found.first().contains(slip.at(2)),
                     qPrintable(slip.at(0) + ": " + found.join(", ")));
        }
    }

    /// The places follow the parser's grammar on their own; they must fit its messages for any text.
    void PlacesOfMessages()
    {
        const QStringList pieces
            = QString("a @TopWidget\\b:c 't' 1 -1 ( ) [ ] . NOT HASVALUE TRUE ;").split(' ') + BinaryOperators();
        std::mt19937 random(1);
        int messages = 0;
        for (int round = 0; round < 5000; ++round) {
            QString statement;
            for (int length = int(random() % 12); length >= 0; --length)
                statement += pieces.at(int(random() % uint(pieces.size()))) + ' ';
            const Diagnosis diagnosis(statement);
            QVERIFY2(diagnosis.HasExpression() == (diagnosis.Tree().Root() >= 0), qPrintable(statement));
            QVERIFY2(diagnosis.Messages().size() == diagnosis.Tree().Reports().size(), qPrintable(statement));
            for (const Diagnosis::Message& message : diagnosis.Messages()) {
                ++messages;
                const QString quoted = statement.mid(message.place.offset, message.place.length);
                QVERIFY2(message.text.contains('"' + quoted + '"') || message.text.startsWith("Missing")
                             || message.text.startsWith("Unknown"),
                         qPrintable(statement + ": " + message.text + " at " + quoted));
            }
        }
        QVERIFY(messages > 5000);
    }

    void Evaluations_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("errors");

        const QByteArray none;
        const QStringList set{"--data", "faults.json", "--set", "Engine:rpm=950.5", "--set", "big=3000000000"};
        const auto with = [&](const QStringList& more) { return set + more; };
        QTest::newRow("value") << with({"@Engine:rpm + big"}) << none << 0 << "3000000950.5  double\n"
                               << "";
        QTest::newRow("list") << with({"engine .'steps'"}) << none << 0 << "[1,10]  QVariantList\n"
                              << "";
        QTest::newRow("package") << with({"--package", "Engine", "HASVALUE rpm"}) << none << 0 << "true  bool\n"
                                 << "";
        QTest::newRow("lines") << set << QByteArray("title\n\nnothing\n1 / 0") << 0
                               << "\"Pump 3\"  QString\n(invalid)\ninf  double\n"
                               << "3: help: The data have no \"nothing\" without a package [unknown-variable]\n"
                                  "    nothing\n    ^~~~~~~\n";
        QTest::newRow("a trap") << with({"big + 1"}) << none << 0 << "\"30000000001\"  QString\n"
                                << "help: \"+\" joins texts here, since the literal \"1\" is one; to add, subtract the "
                                   "negative: \"big - -1\" [literal-sum]\n    big + 1\n        ^\n";
        QTest::newRow("commands") << QStringList{} << QByteArray(":set P:n = 4\n@P:n - 1\n:quit\n1") << 0
                                  << "3  double\n"
                                  << "";
        QTest::newRow("unknown command") << QStringList{} << QByteArray("\n:sett n = 4\n") << 1 << ""
                                         << "2: error: There is no command \":sett n = 4\"; see :help\n";
        QTest::newRow("control characters") << QStringList{"a \x1b[1m"} << none << 1 << "(invalid)\n"
                                            << "error: Unrecognised token at \"\\u001b[1m\".\n    a \uFFFD[1m\n"
                                               "      ^~~~\n";
        QTest::newRow("control characters in a value")
            << QStringList{"'a\x1b[1m" + QString(QChar(0x9b)) + "'"} << none << 0 << "\"a\\u001b[1m\\u009b\"  QString\n"
            << "";
        QTest::newRow("control characters in a command")
            << QStringList{} << QByteArray(":\x1b[1m\n") << 1 << ""
            << "1: error: There is no command \":\\u001b[1m\"; see :help\n";
        QTest::newRow("a name that cannot be read") << QStringList{"--set", "two words=1", "1"} << none << 2 << ""
                                                    << "*";
        QTest::newRow("warning") << with({"big title"}) << none << 0 << "3000000000  qlonglong\n"
                                 << "warning: Did not expect token: \"title\".\n    big title\n        ^~~~~\n";
        QTest::newRow("error")
            << with({"1 - * 2"}) << none << 1 << "(invalid)\n"
            << "error: Unknown parsing error; the expression is not created. An operand is wanted in "
               "place of \"*\".\n    1 - * 2\n        ^\n"
               "warning: Did not expect token: \"-\".\n    1 - * 2\n      ^\n";
        QTest::newRow("an error in one line")
            << set << QByteArray("title\n+\n") << 1 << "\"Pump 3\"  QString\n(invalid)\n"
            << "*";
        QTest::newRow("indexes that are read again and again")
            << with({QString("k[x][2 - (").repeated(100)}) << none << 1 << "(invalid)\n"
            << "*";
        QTest::newRow("widget path") << with({"@Widget:x"}) << none << 1 << "(invalid)\n"
                                     << "*";
        QTest::newRow("at run time") << with({"engine[0] + title[0]"}) << none << 0 << "(invalid)\n"
                                     << "*";
        QTest::newRow("tokens")
            << with({"--tokens", "--", "-1 .'x'"}) << none << 0
            << "   0  number           -1\n   3  selector         .\n   4  text             'x'\n(invalid)\n"
            << "help: There is no element: \"-1\" is a text, no list or map [missing-element]\n    -1 .'x'\n        "
               "^~~\n";
        QTest::newRow("json")
            << with({"--json", "title title"}) << none << 0
            << "{\"messages\":[{\"length\":5,\"message\":\"Did not expect token: \\\"title\\\".\","
               "\"offset\":6,\"severity\":\"warning\"}],\"parses\":true,\"statement\":\"title title\","
               "\"type\":\"QString\",\"value\":\"Pump 3\"}\n"
            << "";
        const QString badLines = "decleval: recording.jsonl:6: \"t\" wants seconds, from 0 on\n"
                                 "decleval: recording.jsonl:7: \"name\" wants the name of a variable\n"
                                 "decleval: recording.jsonl:8: \"package\" wants a text\n"
                                 "decleval: recording.jsonl:9: there is no \"val\"; a line has \"t\", \"package\", "
                                 "\"name\" and \"value\"\n"
                                 "decleval: recording.jsonl:10: an object is wanted\n"
                                 "decleval: recording.jsonl:12: unterminated string\n";
        const QStringList replay{"--replay", "recording.jsonl", "--package", "Engine"};
        QTest::newRow("recording") << replay + QStringList{"HASVALUE rpm"} << none << 0 << "false  bool\n" << badLines;
        QTest::newRow("recording, a time") << replay + QStringList{"--at", "1.5", "rpm"} << none << 0 << "920  int\n"
                                           << badLines;
        QTest::newRow("recording, types") << replay + QStringList{"--at", "2.5", "--set", "rpm=1", "names[1] - rpm"}
                                          << none << 0 << "2999999999  double\n"
                                          << badLines;
        QTest::newRow("a time of nothing") << QStringList{"--at", "1", "1"} << none << 2 << ""
                                           << "decleval: --at is for --replay\n";
        QTest::newRow("no recording") << QStringList{"--replay", "none", "1"} << none << 2 << ""
                                      << "*";
        QTest::newRow("no JSON") << QStringList{"--set", "a=b"} << none << 2 << ""
                                 << "*";
    }

    void Evaluations()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(QString, errors);
        const Run run = RunTool(DECLEVAL, arguments, input);
        QTEST(run.output, "output");
        QTEST(run.exitCode, "exitCode");
        if (errors == "*")
            QVERIFY(!run.errors.isEmpty());
        else
            QCOMPARE(run.errors, errors);
    }

    /// The tools' own reading of statements keeps up with the parser's.
    void DocumentedStatements()
    {
        QFile document(LANGUAGE_DOCUMENT);
        QVERIFY(document.open(QIODevice::ReadOnly));
        const QRegularExpression firstCell("^\\| (`+) ?(.*?) ?\\1 \\|", QRegularExpression::MultilineOption);
        QRegularExpressionMatchIterator cells = firstCell.globalMatch(QString::fromUtf8(document.readAll()));
        int expressions = 0;
        while (cells.hasNext()) {
            const QString statement = cells.next().captured(2);
            const Diagnosis diagnosis(statement);
            QVERIFY2((diagnosis.Tree().Root() >= 0) == diagnosis.HasExpression(), qPrintable(statement));
            expressions += diagnosis.HasExpression() ? 1 : 0;
        }
        QVERIFY2(expressions >= 30, "too few examples");
    }

    void ProjectFiles_data()
    {
        QTest::addColumn<QByteArray>("project");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("output"); ///< A part of what both streams say.

        const QStringList none;
        QTest::newRow("data") << QByteArray(R"({"data": "data.json", "package": "P"})") << none << 1
                              << "have no \"b\" in the package \"P\"";
        QTest::newRow("the host's names")
            << QByteArray(R"({"data": "data.json", "host": {"variables": [":b", "*:c"], "properties": ["own"]}})")
            << none << 1 << "1 warning in 1 form";
        QTest::newRow("disabled") << QByteArray(R"({"disable": ["left-over", "unknown-property"]})") << none << 0 << "";
        QTest::newRow("severities") << QByteArray(
            R"({"severities": {"left-over": "note", "unknown-property": "warning"}})")
                                    << none << 1 << "1 warning, 1 note in 1 form";
        QTest::newRow("the command line goes first") << QByteArray(R"({"data": "data.json", "package": "P"})")
                                                     << QStringList{"--package", "Q"} << 1 << "in the package \"Q\"";
        QTest::newRow("none") << QByteArray("{") << QStringList{"--project", ""} << 1 << "1 error, 1 warning";
        QTest::newRow("damaged") << QByteArray("{") << none << 2 << "declcheck.json: unterminated object";
        QTest::newRow("handler") << QByteArray(R"({"handler": 1})") << none << 2 << "\"handler\" is neither true nor";
        QTest::newRow("unknown key") << QByteArray(R"({"dat": 1})") << none << 2 << "did you mean \"data\"?";
        QTest::newRow("unknown severity")
            << QByteArray(R"({"severities": {"left-over": "bad"}})") << none << 2 << "The severity of \"left-over\"";
    }

    void ProjectFiles()
    {
        QFETCH(QByteArray, project);
        QFETCH(QStringList, options);
        QFETCH(QString, output);
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("forms"));
        QVERIFY(!Written(folder, project, "declcheck.json").isEmpty());
        QVERIFY(!Written(folder, R"({"P": {"a": 1}})", "data.json").isEmpty());
        const QString form = Written(folder, Form("~own", "b c"), "forms/form.ui");
        const Run run = RunTool(DECLCHECK, QStringList{form} + options);
        QTEST(run.exitCode, "exitCode");
        QVERIFY2((run.output + run.errors).contains(output), qPrintable(run.output + run.errors));
    }

    void Fixes_data()
    {
        QTest::addColumn<QByteArray>("statement");
        QTest::addColumn<QByteArray>("fixed");

        QTest::newRow("minus") << QByteArray("(a-3)") << QByteArray("(a - 3)");
        QTest::newRow("minus behind a blank") << QByteArray("a -.5") << QByteArray("a - .5");
        QTest::newRow("keyword") << QByteArray("a and True") << QByteArray("a AND TRUE");
        QTest::newRow("the only name") << QByteArray("@P:alpah + @P:beta") << QByteArray("@P:alpha + @P:beta");
        QTest::newRow("one name of several") << QByteArray("@P:bet") << QByteArray("@P:bet");
        QTest::newRow("property") << QByteArray("@Widget:tolTip") << QByteArray("@Widget:toolTip");
        const QByteArray another = "a</string></property><property name=\"~";
        QTest::newRow("bound property") << another + "tolTip\"><string>a" << another + "toolTip\"><string>a";
        QTest::newRow("property that is bound") << another + "texxt\"><string>a" << another + "texxt\"><string>a";
        QTest::newRow("start of a path") << QByteArray("@topWidget\\top:text") << QByteArray("@TopWidget\\top:text");
        QTest::newRow("entities before it") << QByteArray("'&lt;&#228;' + a-3") << QByteArray("'&lt;&#228;' + a - 3");
        QTest::newRow("a near name that cannot be read") << QByteArray("@P:gama") << QByteArray("@P:gama");
        QTest::newRow("nothing certain") << QByteArray("a == 3") << QByteArray("a == 3");
    }

    void Fixes()
    {
        QFETCH(QByteArray, statement);
        QFETCH(QByteArray, fixed);
        const QTemporaryDir folder;
        const QByteArray data = R"({"": {"a": 1}, "P": {"alpha": 1, "beta": 2, "bets": 3, "ga&ma": 4}})";
        const QString form = Written(folder, "\xef\xbb\xbf" + Form("~text", statement) + "\r\n");
        RunTool(DECLCHECK, {form, "--fix", "--data", Written(folder, data, "data.json")});
        QFile file(form);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), "\xef\xbb\xbf" + Form("~text", fixed) + "\r\n");
    }

    void Translations_data()
    {
        QTest::addColumn<QByteArray>("statement");
        QTest::addColumn<QByteArray>("translation");
        QTest::addColumn<QString>("output"); ///< A part of it; empty for none.

        const QByteArray none;
        QTest::newRow("order and texts") << QByteArray("'a ' + x + ' of ' + (y + '.')") << QByteArray("y + \" b \" + x")
                                         << "";
        QTest::newRow("no text left") << QByteArray("x + ' pieces'") << QByteArray("x") << "";
        QTest::newRow("more texts") << QByteArray("'a'") << QByteArray("('b' + 'c')") << "";
        QTest::newRow("blanks and parentheses") << QByteArray("x+'a'") << QByteArray("'b' + (x)") << "";
        QTest::newRow("a sum the other way round")
            << QByteArray("(x * 2 + y) + 'a'") << QByteArray("'b' + (y + x * 2)") << "";
        QTest::newRow("another variable") << QByteArray("x + 'a'") << QByteArray("'b' + y")
                                          << ":4:20: error: \"y\" stands in the place of \"x\"; what";
        QTest::newRow("another package") << QByteArray("@P:x + 'a'") << QByteArray("'b' + x") << ":4:20: error: \"x\"";
        QTest::newRow("the default package") << QByteArray("@Q:x + 'a'") << QByteArray("'b' + x") << "";
        QTest::newRow("another path") << QByteArray("@Widget:toolTip + 'a'") << QByteArray("'b' + @TopWidget:toolTip")
                                      << ":4:20: error: \"@TopWidget:toolTip\" stands in the place";
        QTest::newRow("read twice") << QByteArray("x + 'a'") << QByteArray("x + 'b' + x")
                                    << ":4:24: error: \"x\" is not in the statement";
        QTest::newRow("a text without quotes") << QByteArray("'a' + x") << QByteArray("b + x")
                                               << ":4:14: error: \"b\" is not in the statement; what a statement reads "
                                                  "stays as it is, and a text stands in quotes";
        QTest::newRow("missing") << QByteArray("x + 'a'") << QByteArray("'b'")
                                 << ":4:14: error: The translation lacks \"x\"";
        QTest::newRow("key") << QByteArray("'a' + m .'k'") << QByteArray("'b' + m .'l'")
                             << ":4:23: error: \"'l'\" stands";
        QTest::newRow("subscript") << QByteArray("'a' + m['k']['l']") << QByteArray("'b' + m['z']['l']")
                                   << ":4:22: error: \"'z'\" stands in the place of \"'k'\"; a key";
        QTest::newRow("compared") << QByteArray("'a' + (x != 'k')") << QByteArray("'b' + (x != 'l')")
                                  << ":4:26: error: \"'l'\" stands in the place of \"'k'\"; what is compared";
        QTest::newRow("number") << QByteArray("'a' + x * 2") << QByteArray("'b' + x * 3")
                                << ":4:24: error: \"3\" stands in the place of \"2\"; a number";
        QTest::newRow("operator") << QByteArray("'a' + x * y") << QByteArray("'b' + x / y")
                                  << ":4:20: error: \"x / y\" stands in the place of \"x * y\"; only";
        QTest::newRow("a text that is no part of what is shown")
            << QByteArray("'a' + (x - 'b')") << QByteArray("'b' + (x - 'c')")
            << ":4:25: error: \"'c'\" stands in the place of \"'b'\"; only texts that are shown";
        QTest::newRow("does not parse") << QByteArray("'a' + x") << QByteArray("'b' + * x")
                                        << ":4:20: error: Unknown parsing error";
        QTest::newRow("another language's operator")
            << QByteArray("'a' + (x AND y)") << QByteArray("'b' + (x &amp;&amp; y)")
            << ":4:23: error: There is no \"&&\"";
        QTest::newRow("left over") << QByteArray("'a'") << QByteArray("'it' s'") << ":4:20: error: ";
        QTest::newRow("finished without a text") << QByteArray("'a'") << none << "";
        QTest::newRow("control character")
            << QByteArray("'a' + x") << QByteArray("'b<byte value=\"x1b\"/>' + y") << ":4:14: error: \"y\" stands";
        QTest::newRow("unfinished") << QByteArray("'a'")
                                    << QByteArray("!<translation type=\"unfinished\">b c</translation>") << "";
        QTest::newRow("vanished") << QByteArray("'a'")
                                  << QByteArray("!<translation type=\"vanished\">b c</translation>") << "";
        QTest::newRow("lengths") << QByteArray("'a'")
                                 << QByteArray("!<translation variants=\"yes\"><lengthvariant>'b'</lengthvariant>"
                                               "<lengthvariant>b c</lengthvariant></translation>")
                                 << ":4:80: error: Did not expect token: \"c\"";
        QTest::newRow("another message's") << QByteArray("'c'") << QByteArray("b c") << "";
        QTest::newRow("nested too deep") << QByteArray("'a'")
                                         << "!<translation>" + QByteArray("<numerusform>").repeated(10000)
                                         << ":4:53: The forms of a translation are nested too deep.";
        QTest::newRow("cut off") << QByteArray("'a'") << QByteArray("!<translation>") << ":4:";
    }

    void Translations()
    {
        QFETCH(QByteArray, statement);
        QFETCH(QByteArray, translation);
        QFETCH(QString, output);
        const QTemporaryDir folder;
        const QByteArray source = statement == "'c'" ? "'d'" : statement;
        const QByteArray element
            = translation.startsWith('!') ? translation.mid(1) : "<translation>" + translation + "</translation>";
        const QString form = Written(folder, TranslatableForm(statement));
        const QString file = Written(folder, Translation(source, element), "form.ts");
        const Run run = RunTool(
            DECLCHECK,
            {file, form, "--package", "Q", "--disable", "translatable-statement,never-triggers,operand-kind"});
        QCOMPARE((run.output + run.errors).left(file.size() + output.size()),
                 output.isEmpty() ? output : file + output);
    }

    void TranslationFiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("output"); ///< What both streams start with behind the name of the file.

        const QByteArray right = Translation("'a'", "<translation>'b'</translation>");
        QTest::newRow("right") << right << 0 << "";
        QTest::newRow("of other forms") << QByteArray(right).replace("Panel", "Other") << 0
                                        << ":2:2: note: No context here bears";
        QTest::newRow("invalid UTF-8") << QByteArray(right).replace("'b'", "'\xfc'") << 2
                                       << ":4:15: The text is no UTF-8.";
        QTest::newRow("another encoding") << QByteArray(right).replace("utf-8", "ISO-8859-1") << 2
                                          << ":1:1: Translations are kept in UTF-8, not in ISO-8859-1.";
        QTest::newRow("a form") << TranslatableForm("'a'") << 2 << ":1:19: No translations: the outermost";
        QTest::newRow("empty") << QByteArray() << 2 << ":1:1: Premature end of document.";
        QTest::newRow("more behind") << right + "<TS/>" << 2 << ":5:6: Extra content at end of document.";
    }

    void TranslationFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, output);
        const QTemporaryDir folder;
        const QString file = Written(folder, content, "form.ts");
        const Run run = RunTool(DECLCHECK, {Written(folder, TranslatableForm("'a'")), file});
        QTEST(run.exitCode, "exitCode");
        QCOMPARE((run.output + run.errors).left(file.size() + output.size()),
                 output.isEmpty() ? output : file + output);
    }

    void FixedTranslation()
    {
        const QTemporaryDir folder;
        const QString form = Written(folder, TranslatableForm("'a' + m .'&lt;k'"));
        const QByteArray translation
            = Translation("'a' + m .'&lt;k'", "<translation>&quot;&#228;&quot; + m .&apos;ü&apos;</translation>\r\n");
        const QString path = Written(folder, translation, "form.TS");
        const Run run = RunTool(DECLCHECK, {form, path, "--fix"});
        QCOMPARE(run.exitCode, 0);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray(translation).replace("&apos;ü&apos;", "&apos;&lt;k&apos;"));
    }

    void StandardInput()
    {
        const Run run = RunTool(DECLCHECK, {"-", "--stdin-name", "panel.ui"}, Form("~text", "a b"));
        QVERIFY2(run.output.startsWith("panel.ui:1:109: warning: "), qPrintable(run.output + run.errors));
        QCOMPARE(run.exitCode, 1);
    }

    /// Each trap in the language's documentation is found by the check that is named there, and what is right is
    /// left alone.
    void DocumentedTraps()
    {
        LanguageTables tables;
        QVERIFY(tables.Read());
        const QTemporaryDir folder;
        QByteArray form = "<ui><widget class='QWidget' name='top'>\n";
        for (const auto& trap : qAsConst(tables.traps))
            form += "<widget class='QLabel'><property name='~toolTip'><string notr='true'>"
                + trap.first.toHtmlEscaped().toUtf8() + "</string></property></widget>\n";
        QString error;
        QVERIFY(tables.variables.Write(folder.filePath("data.json"), &error));
        const QString file = Written(folder, form + "</widget></ui>");
        const Run run = RunTool(DECLCHECK, {file, "--data", folder.filePath("data.json"), "--format", "json"});
        QVector<QStringList> found(tables.traps.size());
        for (const QJsonValue finding : QJsonDocument::fromJson(run.output.toUtf8()).array())
            found[finding["line"].toInt() - 2].append(finding["check"].toString());
        for (int i = 0; i < found.size(); ++i) {
            const QString check = tables.traps.at(i).second;
            const QString statement = tables.traps.at(i).first;
            if (statement.contains("nothing") && check != "unknown-variable")
                found[i].removeAll("unknown-variable");
            const bool isRight = check.isEmpty() ? found.at(i).isEmpty() : found.at(i).contains(check);
            QVERIFY2(isRight, qPrintable(statement + ": " + found.at(i).join(", ")));
        }
        QVERIFY(tables.traps.size() >= 70);
        QCOMPARE(tables.unchecked, QStringList());
    }

    void DataKeepTheirOrder()
    {
        const QByteArray text = "{\n    \"Z\": {\n        \"b\": 1,\n        \"a\": [1,2.5,{\"x\":\"}\\\"\"}],\n"
                                "        \"\": null\n    },\n    \"A\": {\n        \"q\": 3000000000\n    }\n}\n";
        JsonData data;
        QString error;
        QVERIFY2(data.Parse(text, "f", &error), qPrintable(error));
        QCOMPARE(data.ToJson(), text);
        QCOMPARE(data.Find("Z", "b")->value, QVariant(1));
        QVERIFY(!data.Parse("{\n \"Z\": {\"b\": 1 2}}", "f", &error));
        QCOMPARE(error, QString("f:2:16: unterminated object"));
        QCOMPARE(data.ToJson(), text);
    }

    void NearestNames()
    {
        const QString longest(64, 'x');
        const NearestName names({"windowTitle", "text", "textColor", "value", longest});
        const QStringList wrong{"windowtitle", "tetx",  "vlaue", "valu",         "textColour",
                                "te",          "value", "other", longest.mid(1), longest + "x"};
        QStringList found;
        for (const QString& name : wrong)
            found << names.Find(name);
        QCOMPARE(found, (QStringList{"windowTitle", "text", "value", "value", "textColor", "", "", "", longest, ""}));
    }
};

QTEST_GUILESS_MAIN(tst_Tools)

#include "tst_tools.moc"
