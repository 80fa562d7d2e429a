#include <QtTest>

#include "Common/variantobject.h"
#include "DeclarationHandler/Expressions/exprarray.h"
#include "DeclarationHandler/Expressions/exprproperty.h"
#include "qtversion.h"
#include "support/messagecatcher.h"
#include "support/spyexpression.h"

namespace {

/// A record whose class has a field of its own.
class Reading : public VariantObject
{
    Q_OBJECT
    Q_PROPERTY(QString unit MEMBER m_unit)

    QString m_unit = "bar";
};

VariantObject Record()
{
    VariantObject record;
    record.setObjectName("name");
    record.setProperty("k", 1);
    record.setProperty("text", "value");
    return record;
}

/// The values that the tables call by a name, or else write out.
QVariant Named(const QString& text)
{
    static const QHash<QString, QVariant> values
        = {{"list", Operands("1, 'two', 3.5")},
           {"map", Operands("{'k': 1, ' k ': 'blanks', '5': true, '': 2}").at(0)},
           {"texts", QStringList{"a", "b"}},
           {"hash", QVariantHash{{"k", 1}}},
           {"record", Record().ToVariant()},
           {"null list", QtVersion::NullOf(QMetaType::QVariantList)},
           {"null map", QtVersion::NullOf(QMetaType::QVariantMap)},
           {"null text", QtVersion::NullOf(QMetaType::QString)}};
    return values.contains(text) ? values.value(text) : Operands(text).value(0);
}

/// The node of «collection[selector]» or «collection.selector» over two spies, c and s.
QSharedPointer<IExpression> NewNode(const QString& text, QStringList* log, bool readOnly = false, bool accepts = true)
{
    const QRegularExpressionMatch parts = QRegularExpression("^(.*?)([[.])(.*?)\\]?$").match(text);
    IExpression* const left = new SpyExpression("c", Named(parts.captured(1)), log, accepts);
    IExpression* const right = new SpyExpression("s", Named(parts.captured(3)), log);
    if (parts.captured(2) == "[")
        return QSharedPointer<IExpression>(new ExprArray(left, right, readOnly));
    return QSharedPointer<IExpression>(new ExprProperty(left, right, readOnly));
}

} // namespace

class tst_Selection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The value, the reads of collection and selector, and the line written.
    void Retrieve_data()
    {
        Rows({
            {"list[0] => 1 cs", "list[2] => 3.5 cs", "list['1'] => 'two' cs", "list[1.6] => 3.5 cs", "list[-] => - cs",
             "list[null text] => - cs", "texts[1] => 'b' cs", "-[0] => - c", "null list['x'] => - c"},
            {"map['k'] => 1 cs", "map[' k '] => 'blanks' cs", "map[5] => true cs", "hash['k'] => 1 cs",
             "map['K'] => - cs", "map[null text] => - cs", "null map[' '] => - c"},
            {"map.'k' => 1 cs", "map.5 => true cs", "map.'K' => - cs", "map.- => 2 cs", "record.'k' => 1 cs",
             "record.'text' => 'value' cs", "record.'other' => - cs", "list.'0' => - c", "hash.'k' => - c",
             "'abc'.'k' => - c", "-.'k' => - c"},
            {"list[3] => - cs RetrieveFromList : Index out of bounds! Index: 3",
             "list['-1'] => - cs RetrieveFromList : Index out of bounds! Index: -1",
             "list['x'] => - cs RetrieveFromList : Index expression is not integer! Index: QVariant(QString, \"x\")",
             "map['  '] => - cs RetrieveFromMap : Map key is not valid! Key: QVariant(QString, \"  \")",
             "'abc'[0] => - c Retrieve : Failed to evaluate ExprArray! Collection has unknown type: QVariant(QString, "
             "\"abc\")",
             "record['k'] => - c Retrieve : Failed to evaluate ExprArray! Collection has unknown type: "
             "QVariant(VariantObject, )"},
        });
    }

    void Retrieve()
    {
        QFETCH(QString, given);
        QStringList log;
        MessageCatcher messages;
        const QString value = Exact(NewNode(given, &log)->Retrieve());
        QTEST((QStringList{value, log.mid(0, log.size() - 2).join("")} + messages.Take()).join(" "), "expected");
    }

    // What reaches the collection when 7 is stored through the selection.
    void Store_data()
    {
        Rows({{"list['1'] => [1, 7, 3.5]", "texts[1] => ['a', 7]", "list[3] => ", "list[-1] => ", "list['x'] => ",
               "list[-] => ", "map['k'] => ", "map.'k' => {'': 2, ' k ': 'blanks', '5': true, 'k': 7}",
               "{}.'new' => {'new': 7}", "record.'k' => ", "list.'0' => ", "-.'k' => "}});
    }

    void Store()
    {
        QFETCH(QString, given);
        QFETCH(QString, expected);
        QStringList log;
        QVERIFY(!NewNode(given, &log, true)->Store(7));
        QCOMPARE(log.join(" "), QString("~c ~s"));
        QVERIFY(!NewNode(given, &log, false, false)->Store(7));
        QCOMPARE(NewNode(given, &log)->Store(7), !expected.isEmpty());
        QCOMPARE(log.filter("=").join(" "), expected.isEmpty() ? QString() : QString("c=%1 c=%1").arg(expected));
    }

    void Records()
    {
        const QVariant held = Record().ToVariant();
        QVERIFY(held.canConvert<VariantObject>());
        QCOMPARE(held.typeName(), "VariantObject");
        QObject parent;
        VariantObject* const record = new VariantObject(&parent);
        record->setProperty("kept", true);
        record->setProperty("text", 2);
        record->CopyProperties(VariantObject(held));
        record->CopyProperties(Reading());
        QStringList fields;
        for (const QByteArray& name : record->dynamicPropertyNames())
            fields << name + "=" + Exact(record->property(name));
        QCOMPARE(fields.join(" "), QString("kept=true text='value' k=1 unit='bar'"));
        QCOMPARE(record->objectName() + VariantObject(held).objectName(), QString());
        QCOMPARE(VariantObject(*record).parent(), &parent);
        QVERIFY(VariantObject(Named("map")).dynamicPropertyNames().isEmpty());
    }
};

QTEST_APPLESS_MAIN(tst_Selection)
#include "tst_selection.moc"
