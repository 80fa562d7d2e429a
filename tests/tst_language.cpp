#include <QtTest>

#include <algorithm>
#include <memory>

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

} // namespace

/// Evaluates the examples of the language's documentation: the rows of its tables of statements, with the
/// variables from its tables of variables.
class tst_Language : public QObject
{
    Q_OBJECT

    RecordingDataPeer m_peer;
    QList<QStringList> m_examples; ///< Statement, value, type and message.

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
                m_examples << cells;
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
};

QTEST_APPLESS_MAIN(tst_Language)
#include "tst_language.moc"
