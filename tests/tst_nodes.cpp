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

/// The value of «a operation b», and behind it the operands in the order in which they were read.
QString Evaluate(const QString& operation, const QVariant& a, const QVariant& b)
{
    RecordingDataPeer peer;
    peer.m_values = {{"a", a}, {"b", b}};
    Parser parser;
    parser.Tokenize("a " + operation + " b");
    const std::unique_ptr<IExpression> tree(parser.Parse(&peer, nullptr, nullptr, nullptr, QString(), false));
    peer.TakeCalls();
    if (tree->Store(7) || !peer.m_calls.isEmpty())
        return "stored";
    const QString value = Exact(tree->Retrieve());
    return value + ":" + peer.TakeCalls().remove("get ").remove(", ");
}

/// The same for several operators, without the operands when they are as expected.
QString EvaluateAll(const QString& operations, const QVariantList& operands, const QString& reads)
{
    QStringList results;
    for (const QString& operation : operations.split(' '))
        results
            << Evaluate(operation, operands.at(0), operands.at(1)).replace(QRegularExpression(":" + reads + "$"), "");
    return results.join(" ");
}

} // namespace

class tst_Nodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // With a and b both false, then b true, then a true, then both true.
    void Logic_data()
    {
        Rows({{"AND => false:a false:a false:ab true:ab", "OR => false:ab true:ab true:a true:a",
               "NAND => true:a true:a true:ab false:ab", "NOR => true:ab false:ab false:a false:a",
               "XOR => false:ab true:ab true:ab false:ab"}});
    }

    void Logic()
    {
        QFETCH(QString, given);
        for (int i = 0; i < Falsy.size() * Truthy.size(); ++i) {
            const QVariantList sides = {Falsy.at(i / Truthy.size()), Truthy.at(i % Truthy.size())};
            QStringList actual;
            for (int pair = 0; pair < 4; ++pair)
                actual << Evaluate(given, sides.at(pair / 2), sides.at(pair % 2));
            QTEST(actual.join(" "), "expected");
        }
    }

    // With the operators =, !=, <, >, <=, >=, +, -, * and /.
    void Values_data()
    {
        Rows({
            {"2, 2.0 => true false false false true true 4.0 0.0 4.0 1.0",
             "2, 4 => false true true false true false - -2.0 8.0 0.5",
             "'10', '9' => false true false true false true '109' 1.0 90.0 1.1111111111111112",
             "'a', 'A' => false true false false true true 'aA' 0.0 0.0 nan",
             "'abc', -2 => false true false true false true 'abc-2' 2.0 0.0 0.0",
             "2, true => false true false true false true - 1.0 2.0 2.0",
             "2.5, [1] => false true false true false true 2.5 2.5 0.0 inf",
             "-, -0.5 => false true false true false true -0.5 0.5 0.0 0.0"},
            // No numbers.
            {"[1], [1] => true false - - - - - '' '' ''", "[1], {} => false true - - - - - '' '' ''",
             "-, - => true false - - - - - '' '' ''"},
            // Equality converts to the type on its left.
            {"1.5, '1.50' => true false false false true true '1.51.50' 0.0 2.25 1.0",
             "'1.50', 1.5 => false true false false true true '1.501.5' 0.0 2.25 1.0"},
        });
    }

    void Values()
    {
        QFETCH(QString, given);
        const QVariantList operands = Operands(given);
        QTEST(EvaluateAll("= !=", operands, "ba") + " " + EvaluateAll("< > <= >= + - * /", operands, "ab"), "expected");
        QCOMPARE(EvaluateAll("+ -", {2.5f, 1}, "ab"), QString("- 1.5"));
        QCOMPARE(EvaluateAll("+ -", {QStringList("p"), QStringList("q")}, "ab"), QString("- 'pq'"));
        QCOMPARE(EvaluateAll("*", {QStringList("p%1"), QStringList("q")}, "ab"), QString("'pq%2'"));
        // A type that is read as a number, and yet does not count as one.
        QCOMPARE(EvaluateAll("< *", {QVariant::fromValue<uchar>('2'), QVariant::fromValue<uchar>('3')}, "ab"),
                 QString("- '23'"));
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
