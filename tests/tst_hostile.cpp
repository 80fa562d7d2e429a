#include <QtTest>

#include <memory>

#include "DataLayer/idatapeerfactory.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"
#include "support/operators.h"

namespace {

struct Outcome
{
    QVariant value;
    QStringList messages;
};

Outcome Evaluate(const QString& statement)
{
    static Interpreter interpreter(Ovex_DataPeerFactory(false)->GetDataPeer(0), nullptr, nullptr);
    IParsingResult* result = nullptr;
    Outcome outcome = {interpreter.Evaluate(statement, &result), {}};
    const std::unique_ptr<IParsingResult> record(result);
    if (record)
        outcome.messages = record->GetWarningMessages();
    return outcome;
}

QString Unrecognised(const QString& text)
{
    return "Unrecognised token at \"" + text + "\".";
}

} // namespace

class tst_Hostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // One token kind again and again, or one token: start, what is repeated, end => the first message.
    void LongTexts_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::addColumn<QString>("expected");
        const QString deep = "Expression is nested too deeply.";
        const QString unknown = "Unknown parsing error; the expression is not created.";
        const auto add = [](const char* repeated, const char* start, const char* end, const QString& message) {
            QTest::newRow(repeated) << start << end << message;
        };
        for (const char* const token : {"(", "NOT ", "HASVALUE "})
            add(token, "", "", deep);
        for (const char* const token : {")", "[", "]", "."})
            add(token, "", "", unknown);
        const QStringList operators = BinaryOperators();
        for (const QString& token : operators)
            add(qPrintable(token + (token == "=" || Language::FindWord(token) ? " " : "")), "", "", unknown);
        for (const char* const token : {"x ", "7 ", "''", "\"\"", "@p:x ", "TRUE ", "FALSE "})
            add(token, "", "", "Did not expect token: \"" + QString(token).trimmed() + "\".");
        add("- x ", "x", "", deep);
        add(".'k'", "x ", "", deep);
        add("a", "", "", QString());
        add("1", "", "", QString());
        add("%1 ", "'", "'", QString());
        add("\u2003\n", "x", "", QString());
        add("p\\", "@", ":x", QString());
        add("a\\", "@TopWidget\\", ":x", unknown);
        add("$", "", "", Unrecognised("..."));
        add("q", "'", "", Unrecognised("..."));
        add("r\\", "@", "", Unrecognised("..."));
    }

    void LongTexts()
    {
        QFETCH(QString, start);
        QFETCH(QString, end);
        const QString repeated = QTest::currentDataTag();
        const QString statement = start + repeated.repeated(TEST_LONGEST / repeated.length()) + end;
        const QString message = Evaluate(statement).messages.value(0);
        QFETCH(QString, expected);
        if (expected.contains("..."))
            QVERIFY(message == expected.replace("...", statement));
        else
            QCOMPARE(message, expected);
    }

    // A message, and a value, shows every text as it was written.
    void EveryCharacter()
    {
        QString all;
        for (uint code = 0; code <= 0xffff; ++code) {
            const QChar character(code);
            const QString alone = Evaluate("a - a" + QString(character)).messages.join("|");
            const bool expected = character.isLetterOrNumber() || character.isSpace() || character == '_'
                || Language::FindChar(character);
            QVERIFY2(expected || alone == Unrecognised(character), qPrintable(QString::number(code, 16)));
            if (character != '\'' && !character.isSurrogate())
                all += character;
        }
        for (char32_t code = 0x10000; code <= 0x10ffff; ++code)
            all += QString::fromUcs4(&code, 1);
        all += QString("%1%2%99") + QChar(0xd800) + QChar(0xdc00) + QChar(0xdc00) + QChar(0xd800);
        QVERIFY(Evaluate("'" + all + "'").value == all);
        QVERIFY(Evaluate("x '" + all + "'").messages == QStringList("Did not expect token: \"'" + all + "'\"."));
        QVERIFY(Evaluate("(x '" + all + "'").messages.value(0) == "Encountered \"'" + all + "'\" instead of \")\".");
        QVERIFY(Evaluate("x $" + all).messages == QStringList(Unrecognised("$" + all)));
    }
};

QTEST_APPLESS_MAIN(tst_Hostile)
#include "tst_hostile.moc"
