#include <QtTest>

#include <algorithm>
#include <memory>

#include "DeclarationHandler/Tokens/language.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"
#include "support/messagecatcher.h"
#include "support/recordingdatapeer.h"

namespace {

/// What a table's cell says: the content of its code span; nothing for (empty); else its plain text.
QString Content(const QString& cell)
{
    const QRegularExpressionMatch span = QRegularExpression("^(`+)( ?)(.*)\\2\\1$").match(cell.trimmed());
    return span.hasMatch() ? span.captured(3) : cell.trimmed().remove("(empty)");
}

/// What the document says of the level of a row.
QString LevelOf(const Language::Row& row)
{
    if (row.role == Language::PrefixOperator)
        return "prefix";
    return row.IsBinary() ? QString::number(row.precedence) : "selector";
}

} // namespace

/// Evaluates the examples of the language's documentation: the rows of its tables of statements, with the
/// variables from its tables of variables. Holds its table of operators against the library's.
class tst_Language : public QObject
{
    Q_OBJECT

    RecordingDataPeer m_peer;
    QList<QStringList> m_examples;      ///< Statement, value, type and message.
    QMap<QString, QString> m_operators; ///< Their levels.

private Q_SLOTS:
    void initTestCase()
    {
        QFile document(LANGUAGE_DOCUMENT);
        QVERIFY2(document.open(QIODevice::ReadOnly), LANGUAGE_DOCUMENT);
        QString table;
        for (const QString& line : QString::fromUtf8(document.readAll()).split('\n')) {
            QStringList cells = line.split('|').mid(1);
            std::transform(cells.begin(), cells.end(), cells.begin(), Content);
            if (cells.isEmpty() || table.isEmpty())
                table = cells.join("|");
            else if (table == "Variable|Value|")
                m_peer.m_values[cells.first().remove("@")] = FromJson(cells.at(1)).value(0);
            else if (table.startsWith("Statement|Value|Type|") && cells.first() != "---")
                m_examples << (table.contains("|Message|") ? cells : cells.mid(0, 3));
            else if (table.startsWith("Operator|Level|"))
                for (const QString& text : cells.first().remove('`').split(' '))
                    m_operators[text] = cells.at(1);
        }
        QVERIFY2(m_examples.size() >= 30, "too few examples");
    }

    void Examples_data()
    {
        QTest::addColumn<QStringList>("example");
        for (const QStringList& example : m_examples)
            QTest::newRow(qPrintable(example.first())) << example;
    }

    void Examples()
    {
        QFETCH(QStringList, example);
        const MessageCatcher lines;
        Interpreter interpreter(&m_peer, nullptr, nullptr);
        IParsingResult* result = nullptr;
        const QVariant value = interpreter.Evaluate(example.value(0), &result);
        const std::unique_ptr<IParsingResult> record(result);
        QCOMPARE(value.isValid() ? value.toString() : "(invalid)", example.value(1));
        QCOMPARE(value.isValid() ? value.typeName() : "-", qPrintable(example.value(2)));
        QCOMPARE(record->GetWarningMessages().value(0), example.value(3));
    }

    void Rows()
    {
        QMap<QString, QString> operators;
        for (int i = 0; i < Language::GetRowCount(); ++i) {
            const Language::Row& row = Language::GetRow(i);
            const QString text = Language::GetText(row);
            const QByteArray name = text.toLatin1();
            QVERIFY2(Language::Find(row.type) == &row, name);
            QVERIFY2((row.role <= Language::ArithmeticOperator) == (row.createBinary != nullptr), name);
            QVERIFY2((row.role == Language::PrefixOperator) == (row.createPrefix != nullptr), name);
            QVERIFY2((row.role == Language::Literal) == (row.createLiteral != nullptr), name);
            QVERIFY2(!row.IsBinary() || row.precedence > Language::None, name);
            if (row.createBinary || row.createPrefix || text == "[" || text == "]" || text == ".")
                operators[text] = LevelOf(row);
        }
        m_operators.remove("---");
        QCOMPARE(m_operators, operators);
    }
};

QTEST_APPLESS_MAIN(tst_Language)
#include "tst_language.moc"
