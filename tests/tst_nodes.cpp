#include <QtTest>

#include <memory>

#include "DeclarationHandler/Expressions/Logic/exprand.h"
#include "DeclarationHandler/Expressions/Logic/exprnot.h"
#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Expressions/exprexistence.h"
#include "DeclarationHandler/Expressions/exprobjectproperty.h"
#include "DeclarationHandler/Expressions/exprparentheses.h"
#include "DeclarationHandler/parser.h"
#include "support/recordingdatapeer.h"
#include "support/spyexpression.h"

namespace {

const QVariantList Falsy = {false, QVariant(), "", "0", "False", 0, 0.0, QVariant(QVariantList{1})};
const QVariantList Truthy = {true, "no", " ", 1, 0.5};

struct Outcome
{
    QString value;
    QString reads; ///< The operands in the order in which they were read.
};

/// Of «a operation b», which cannot be stored.
Outcome Evaluate(const QString& operation, const QVariant& a, const QVariant& b)
{
    RecordingDataPeer peer;
    peer.m_values = {{"a", a}, {"b", b}};
    Parser parser;
    parser.Tokenize("a " + operation + " b");
    const std::unique_ptr<IExpression> tree(parser.Parse(&peer, nullptr, nullptr, nullptr, QString(), false));
    peer.TakeCalls();
    if (tree->Store(7) || !peer.m_calls.isEmpty())
        return {"stored", QString()};
    const QString value = Exact(tree->Retrieve());
    return {value, peer.TakeCalls().remove("get ").remove(", ")};
}

} // namespace

class tst_Nodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // What is read of «a AND b», with all values that count as false or as true.
    void Logic_data()
    {
        Rows({{"false AND false => false, reading a",  "false AND true => false, reading a",
               "true AND false => false, reading ab",  "true AND true => true, reading ab",
               "false OR false => false, reading ab",  "false OR true => true, reading ab",
               "true OR false => true, reading a",     "true OR true => true, reading a",
               "false NAND false => true, reading a",  "false NAND true => true, reading a",
               "true NAND false => true, reading ab",  "true NAND true => false, reading ab",
               "false NOR false => true, reading ab",  "false NOR true => false, reading ab",
               "true NOR false => false, reading a",   "true NOR true => false, reading a",
               "false XOR false => false, reading ab", "false XOR true => true, reading ab",
               "true XOR false => true, reading ab",   "true XOR true => false, reading ab"}});
    }

    void Logic()
    {
        QFETCH(QString, given);
        const QStringList words = given.split(' ');
        for (int i = 0; i < Falsy.size() * Truthy.size(); ++i) {
            const auto side = [i](const QString& word) {
                return word == "true" ? Truthy.at(i % Truthy.size()) : Falsy.at(i / Truthy.size());
            };
            const Outcome outcome = Evaluate(words.at(1), side(words.at(0)), side(words.at(2)));
            QTEST(outcome.value + ", reading " + outcome.reads, "expected");
        }
    }

    void Values_data()
    {
        Rows({
            {"2 = 2.0 => true", "2 != 2.0 => false", "2 < 2.0 => false", "2 > 2.0 => false", "2 <= 2.0 => true",
             "2 >= 2.0 => true", "2 + 2.0 => 4.0", "2 - 2.0 => 0.0", "2 * 2.0 => 4.0", "2 / 2.0 => 1.0"},
            {"2 = 4 => false", "2 != 4 => true", "2 < 4 => true", "2 > 4 => false", "2 <= 4 => true", "2 >= 4 => false",
             "2 + 4 => -", "2 - 4 => -2.0", "2 * 4 => 8.0", "2 / 4 => 0.5"},
            {"'10' = '9' => false", "'10' != '9' => true", "'10' < '9' => false", "'10' > '9' => true",
             "'10' <= '9' => false", "'10' >= '9' => true", "'10' + '9' => '109'", "'10' - '9' => 1.0",
             "'10' * '9' => 90.0", "'10' / '9' => 1.1111111111111112"},
            {"'a' = 'A' => false", "'a' != 'A' => true", "'a' < 'A' => false", "'a' > 'A' => false",
             "'a' <= 'A' => true", "'a' >= 'A' => true", "'a' + 'A' => 'aA'", "'a' - 'A' => 0.0", "'a' * 'A' => 0.0",
             "'a' / 'A' => nan"},
            {"'abc' = -2 => false", "'abc' != -2 => true", "'abc' < -2 => false", "'abc' > -2 => true",
             "'abc' <= -2 => false", "'abc' >= -2 => true", "'abc' + -2 => 'abc-2'", "'abc' - -2 => 2.0",
             "'abc' * -2 => 0.0", "'abc' / -2 => 0.0"},
            {"2 = true => false", "2 != true => true", "2 < true => false", "2 > true => true", "2 <= true => false",
             "2 >= true => true", "2 + true => -", "2 - true => 1.0", "2 * true => 2.0", "2 / true => 2.0"},
            {"2.5 = [1] => false", "2.5 != [1] => true", "2.5 < [1] => false", "2.5 > [1] => true",
             "2.5 <= [1] => false", "2.5 >= [1] => true", "2.5 + [1] => 2.5", "2.5 - [1] => 2.5", "2.5 * [1] => 0.0",
             "2.5 / [1] => inf"},
            {"- = -0.5 => false", "- != -0.5 => true", "- < -0.5 => false", "- > -0.5 => true", "- <= -0.5 => false",
             "- >= -0.5 => true", "- + -0.5 => -0.5", "- - -0.5 => 0.5", "- * -0.5 => 0.0", "- / -0.5 => 0.0"},
            // No numbers.
            {"[1] = [1] => true", "[1] != [1] => false", "[1] < [1] => -", "[1] > [1] => -", "[1] <= [1] => -",
             "[1] >= [1] => -", "[1] + [1] => -", "[1] - [1] => ''", "[1] * [1] => ''", "[1] / [1] => ''"},
            {"[1] = {} => false", "[1] != {} => true", "[1] < {} => -", "[1] > {} => -", "[1] <= {} => -",
             "[1] >= {} => -", "[1] + {} => -", "[1] - {} => ''", "[1] * {} => ''", "[1] / {} => ''"},
            {"- = - => true", "- != - => false", "- < - => -", "- > - => -", "- <= - => -", "- >= - => -", "- + - => -",
             "- - - => ''", "- * - => ''", "- / - => ''"},
            // Equality converts to the type on its left.
            {"1.5 = '1.50' => true", "1.5 != '1.50' => false", "1.5 < '1.50' => false", "1.5 > '1.50' => false",
             "1.5 <= '1.50' => true", "1.5 >= '1.50' => true", "1.5 + '1.50' => '1.51.50'", "1.5 - '1.50' => 0.0",
             "1.5 * '1.50' => 2.25", "1.5 / '1.50' => 1.0"},
            {"'1.50' = 1.5 => false", "'1.50' != 1.5 => true", "'1.50' < 1.5 => false", "'1.50' > 1.5 => false",
             "'1.50' <= 1.5 => true", "'1.50' >= 1.5 => true", "'1.50' + 1.5 => '1.501.5'", "'1.50' - 1.5 => 0.0",
             "'1.50' * 1.5 => 2.25", "'1.50' / 1.5 => 1.0"},
        });
    }

    void Values()
    {
        QFETCH(QString, given);
        const QStringList words = given.split(' ');
        const QVariantList operands = Operands(words.at(0) + ", " + words.at(2));
        const Outcome outcome = Evaluate(words.at(1), operands.at(0), operands.at(1));
        QTEST(outcome.value, "expected");
        QCOMPARE(outcome.reads, QString(words.at(1).contains(QRegularExpression("^!?=$")) ? "ba" : "ab"));
    }

    void ValuesOfOtherTypes()
    {
        QCOMPARE(Evaluate("+", 2.5f, 1).value, QString("-"));
        QCOMPARE(Evaluate("-", 2.5f, 1).value, QString("1.5"));
        QCOMPARE(Evaluate("+", QStringList("p"), QStringList("q")).value, QString("-"));
        QCOMPARE(Evaluate("-", QStringList("p"), QStringList("q")).value, QString("'pq'"));
        QCOMPARE(Evaluate("*", QStringList("p%1"), QStringList("q")).value, QString("'pq%2'"));
        // A type that is read as a number, and yet does not count as one.
        const QVariant two = QVariant::fromValue<uchar>('2');
        const QVariant three = QVariant::fromValue<uchar>('3');
        QCOMPARE(Evaluate("<", two, three).value, QString("-"));
        QCOMPARE(Evaluate("*", two, three).value, QString("'23'"));
    }

    void OneOperand()
    {
        for (const QVariant& value : Falsy + Truthy + QVariantList{QString()}) {
            QStringList log;
            const auto spy = [&](bool accepts = true) { return new SpyExpression("a", value, &log, accepts); };
            QCOMPARE(Exact(ExprNot(spy(), true).Retrieve()), Exact(Falsy.contains(value)));
            QCOMPARE(Exact(ExprExistence(spy()).Retrieve()), Exact(value.isValid()));
            QCOMPARE(Exact(ExprParentheses(spy()).Retrieve()), Exact(value));
            QVERIFY(ExprParentheses(spy()).Store(value) && !ExprParentheses(spy(false)).Store(value));
            QCOMPARE(log.join(" "), QString("a ~a a ~a a ~a a=%1 a=%1 ~a ~a").arg(Exact(value)));
            log.clear();
            QVERIFY(ExprNot(spy(), false).Store(value) && !ExprNot(spy(false), false).Store(value));
            QCOMPARE(log.join(" "), QString("a=%1 a=%1 ~a ~a").arg(Exact(Falsy.contains(value))));
            log.clear();
            QVERIFY(!ExprNot(spy(), true).Store(value) && !ExprExistence(spy()).Store(value));
            QCOMPARE(log.join(" "), QString("~a ~a"));
            QCOMPARE(Exact(ExprConstant(value).Retrieve()), Exact(value));
            QVERIFY(!ExprConstant(value).Store(7));
        }
    }

    void RootDeletesEveryNodeOnce()
    {
        QStringList log;
        const auto spy = [&log](const QString& name) { return new SpyExpression(name, QVariant(), &log); };
        delete new ExprAnd(new ExprParentheses(new ExprAnd(spy("a"), spy("b"))), new ExprAnd(spy("c"), nullptr));
        QCOMPARE(log.join(" "), QString("~a ~b ~c"));
    }

    void ObjectProperty()
    {
        QScopedPointer<QObject> object(new QObject);
        ExprObjectProperty node(object.data(), "p", false);
        QVERIFY(node.GetPropertyName() == "p" && node.GetTargetObject() == object.data());
        QVERIFY(!node.Retrieve().isValid());
        QVERIFY2(!node.Store(7), "a dynamic property is written, but that is no success");
        QVERIFY(!ExprObjectProperty(object.data(), "p", true).Store(8));
        QCOMPARE(Exact(node.Retrieve()), QString("7"));
        QVERIFY(ExprObjectProperty(object.data(), "objectName", false).Store("name"));
        object.reset();
        QVERIFY(!node.Retrieve().isValid() && !node.Store(9));
    }
};

QTEST_APPLESS_MAIN(tst_Nodes)
#include "tst_nodes.moc"
