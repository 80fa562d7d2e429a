#include <QButtonGroup>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QJsonDocument>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaProperty>
#include <QPixmap>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>

#include <memory>

#include "DeclarationForms/adapterregistry.h"
#include "DeclarationForms/adaptervalues.h"
#include "DeclarationForms/directaccess.h"
#include "DeclarationForms/formadapters.h"
#include "DeclarationForms/numberformat.h"
#include "DeclarationForms/propertyorder.h"

namespace {

const QString NarrowBlank(QChar(0x202f));

QVariant FromJson(const QByteArray& text)
{
    return QJsonDocument::fromJson(text).toVariant();
}

QByteArray ToJson(const QVariant& value)
{
    return QJsonDocument::fromVariant(value).toJson(QJsonDocument::Compact);
}

bool Write(QObject* object, const char* property, const QVariant& value)
{
    return AdapterRegistry::Find(object, property)->write(object, value);
}

QVariant Read(const QObject* object, const char* property)
{
    return AdapterRegistry::Find(object, property)->read(object);
}

/// Properties that are written in the usual way, and some that are not.
class Sample : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text MEMBER m_text)
    Q_PROPERTY(double fraction MEMBER m_fraction)
    Q_PROPERTY(int count MEMBER m_count)
    Q_PROPERTY(bool isOn MEMBER m_isOn)
    Q_PROPERTY(QString swapped READ Text WRITE SwapText)
    Q_PROPERTY(int constant READ Constant CONSTANT)
    Q_PROPERTY(Qt::Orientation orientation MEMBER m_orientation)

private:
    QString Text() const { return m_text; }
    void SwapText(QString& text) { text.swap(m_text); }
    int Constant() const { return 7; }

    QString m_text;
    double m_fraction = 0;
    int m_count = 0;
    bool m_isOn = false;
    Qt::Orientation m_orientation = Qt::Horizontal;
};

} // namespace

/// What bindings of forms are made with: number formats, the order of properties, adapters.
class FormsPartsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Apply_data();
    void Apply();
    void WrongFormats_data();
    void WrongFormats();
    void ReadNumber_data();
    void ReadNumber();
    void EveryLocale_data();
    void EveryLocale();
    void Numbers();
    void Bounds_data();
    void Bounds();
    void NoCircleOfBounds();
    void Direct_data();
    void Direct();

    void Registration();
    void Items_data();
    void Items();
    void Kept_data();
    void Kept();
    void KeptText();
    void CurrentData_data();
    void CurrentData();
    void Icons();
    void Rows_data();
    void Rows();
    void RowsAgain();
    void MapsAfterLists();
    void EditedRows();
    void CheckedValue_data();
    void CheckedValue();
    void Hostile_data();
    void Hostile();
};

void FormsPartsTest::Apply_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QVariant>("number");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* format, const QVariant& number, const QString& text, const char* locale = "C") {
        QTest::addRow("%s of %s %s in %s", format, number.typeName(), qPrintable(number.toString()), locale)
            << format << number << locale << text;
    };
    row("{:.1f} rpm", 27.972578296094497, "28.0 rpm");
    row("{:.1f}", 28, "28.0");
    row("{:.2f}", 1.5f, "1.50");
    row("{:e}", 28, "2.800000e+01");
    row("{:g}", 1e20, "1e+20");
    row("{:a}", 3, "0x1.8p+1");
    row("{}", 28.0, "28");
    row("{}", 28.5, "28.5");
    row("{}", 0.1f, "0.1");
    row("{}", 1e300, "1e+300");
    row("{}", qQNaN(), "nan");
    row("{:d}", 28.0f, "28");
    row("{}", std::numeric_limits<qlonglong>::min(), "-9223372036854775808");
    row("{}", -9223372036854775808.0, "-9223372036854775808");
    row("{}", 9223372036854775808.0, "9.223372036854776e+18");
    row("{}", std::numeric_limits<qulonglong>::max(), "18446744073709551615");
    row("{:+}", 5u, "+5");
    row("{:#x}", 255, "0xff");
    row("{:c}", 65, "A");
    row("{0}", 5, "5");
    row("{0:.1f} ({0:.0f})", 4.6, "4.6 (5)");
    row("{{{}}} }}", 5, "{5} }");
    row("{:*^7}|", 5, "***5***|");
    row("{:05}", -5, "-0005");
    row("{:\xe2\x82\xac>3} \xc2\xb0"
        "C",
        5,
        QString::fromUtf8("\xe2\x82\xac\xe2\x82\xac"
                          "5 \xc2\xb0"
                          "C"));
    row("{:L}", 1234567, "1.234.567", "de_DE");
    row("{:.2Lf}", 1234.5, "1.234,50", "de_DE");
    row("{:L}", 1234.5, "1.234,5", "de_DE");
    row("{:.1f}", 1234.5, "1234.5", "de_DE");
    row("{:L}", 1234567, "1" + NarrowBlank + "234" + NarrowBlank + "567", "fr_FR");
    row("{:>7L}", 1234, "  1" + NarrowBlank + "234", "fr_FR");
    row("{:.1Lf}", 1234.5, "1234.5", "C");
}

void FormsPartsTest::Apply()
{
    QFETCH(const QString, format);
    QFETCH(const QVariant, number);
    QFETCH(const QString, locale);

    QString text;
    QString problem;
    QVERIFY2(NumberFormat(format).Apply(number, QLocale(locale), &text, &problem), qPrintable(problem));
    QTEST(text, "text");
}

void FormsPartsTest::WrongFormats_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<double>("number");

    const auto row = [](const QString& format, const char* reason, double number = 2.5) {
        QTest::addRow("%s of %g", qPrintable(format.left(30)), number) << format << QString(reason) << number;
    };
    row("rpm", "no field");
    row("{{}}", "no field");
    row("{:.1f", "no counterpart");
    row("5}", "no counterpart");
    row("{}}", "no counterpart");
    row("{:{}}", "must be numbers");
    row("{:.{}f}", "must be numbers");
    row("{1}", "there is no \"1\"");
    row("{rpm}", "there is no \"rpm\"");
    row("{} {}", "call {0}");
    row(QString("{0}").repeated(17), "more than 16 fields");
    row("{:999999999}", "end at 1000");
    row("{:.99999999999999999999f}", "end at 1000");
    row("{:L.1f}", "describes no number");
    row("{:y}", "does not fit 2.5");
    row("{:d}", "does not fit 2.5");
    row("{:.1d}", "does not fit 2.5");
    row("{:s}", "does not fit 2.5");
    row("{:c}", "does not fit 2.5");
    row("{:c}", "ASCII", 200);
    row("{:c}", "ASCII", -1);
}

void FormsPartsTest::WrongFormats()
{
    QFETCH(const QString, format);
    QFETCH(const QString, reason);
    QFETCH(const double, number);

    QString text = "untouched";
    QString problem;
    QVERIFY(!NumberFormat(format).Apply(number, QLocale::c(), &text, &problem));
    QVERIFY2(problem.contains(reason) && problem.contains(format.left(1000)), qPrintable(problem));
    QCOMPARE(text, QString("untouched"));
}

void FormsPartsTest::ReadNumber_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QVariant>("number"); // Invalid for none.

    const auto row = [](const char* format, const QString& text, const QVariant& number, const char* locale = "C") {
        QTest::addRow("%s from %s in %s", format, qPrintable(text), locale) << format << text << locale << number;
    };
    row("n = {:.1f} rpm", "n = 28.5 rpm", 28.5);
    row("n = {:.1f} rpm", "28.5", 28.5);
    row("n = {:.1f} rpm", "28.5 rpm", 28.5);
    row("n = {:.1f} rpm", " n=28.5rpm ", 28.5);
    row("n = {:.1f} rpm", "n = 28.5 rp", QVariant());
    row("n = {:.1f} rpm", "= 28.5 rpm", QVariant());
    row("n = {:.1f} rpm", "n = rpm", QVariant());
    row("n = {:.1f} rpm", "", QVariant());
    row("n = {:.1f} rpm", "abc", QVariant());
    row("{{{}}}", "{5}", 5ll);
    row("1 x {}", "1", 1ll);
    row("{}0", "120", 12ll);
    row("{}", "28", 28ll);
    row("{}", "28.0", 28.0);
    row("{}", "1e3", 1000.0);
    row("{}", "18446744073709551615", 18446744073709551615ull);
    row("{:+}", "+5", 5ll);
    row("{:*^7}", "***5***", 5ll);
    row("{:->7}", "-5", -5ll);
    row("{:05}", "-0005", -5ll);
    row("{:x}", "ff", 255ll);
    row("{:#x}", "-0xff", -255ll);
    row("{:#x}", "0x-ff", QVariant());
    row("{:#b}", "0b101", 5ll);
    row("{:#o}", "017", 15ll);
    row("{:a}", "-0x1.8p+1", -3.0);
    row("{:a}", "0x1.8p+1z", QVariant());
    row("{}", "nan", QVariant());
    row("{}", "inf", QVariant());
    row("{}", "1,234", QVariant());
    row("{:.1f}", "12,5", QVariant(), "de_DE");
    row("{:.1Lf}", "12,5", 12.5, "de_DE");
    row("{:.1Lf}", "1.234,5", 1234.5, "de_DE");
    row("{:.1Lf}", "1.5", QVariant(), "de_DE");
    row("{:.1Lf} km", "1" + NarrowBlank + "234,5 km", 1234.5, "fr_FR");
    row("{:.1Lf} km", "1 234,5km", 1234.5, "fr_FR");
    row("{:L}", "-1" + NarrowBlank + "234", -1234ll, "fr_FR");
    row("{:L}", "-5", -5ll, "sv_SE");
    row("{:L}", "-5", -5ll, "ar_EG");
    row("{:L}", "1.234.567", 1234567ll, "es_ES");
    row("{:L}", "1.2", QVariant(), "es_ES");
    row("{:L}", "1,234,567", 1234567ll, "en_IN");
    row("{:L}", "12,34,567", 1234567ll, "en_IN");
    row("{:L}", "1234,567", QVariant(), "en_US");
    row("{:012.2Lf}", "00001,234.00", 1234.0, "en_US");
    row("{0} {0}", "5 5", QVariant());
    row("{:.1f", "5", QVariant());
}

void FormsPartsTest::ReadNumber()
{
    QFETCH(const QString, format);
    QFETCH(const QString, text);
    QFETCH(const QString, locale);
    QFETCH(const QVariant, number);

    QVariant read;
    QString problem;
    QCOMPARE(NumberFormat(format).Read(text, QLocale(locale), &read, &problem), number.isValid());
    QCOMPARE(problem.isEmpty(), number.isValid());
    if (number.isValid())
        QCOMPARE(read, number);
    if (number.isValid())
        QCOMPARE(read.userType(), number.userType());
}

void FormsPartsTest::EveryLocale_data()
{
    QTest::addColumn<QString>("format");

    for (const char* const format : {"{:L} km", "{:Ld}", "{:.2Lf} km", "{:012.2Lf}", "{:#.0Lf}", "{:.9Lg}", "{:.9Le}",
                                     "{:+L}", "{:012L}", "{:*^14L}", "{:>12L}", "{:#Lx}", "{:.9La}"})
        QTest::newRow(format) << format;
}

void FormsPartsTest::EveryLocale()
{
    QFETCH(const QString, format);

    const NumberFormat numberFormat(format);
    const QList<QLocale> locales
        = QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    for (const QLocale& locale : locales) {
        for (const int number : {0, -5, 100, 1234, -1234, 12345, 1234567}) {
            QString text;
            QVariant read;
            QString problem;
            QVERIFY(numberFormat.Apply(number, locale, &text, &problem));
            QVERIFY2(numberFormat.Read(text, locale, &read, &problem), qPrintable(locale.name() + ": " + problem));
            QCOMPARE(read.toDouble(), double(number));
        }
    }
}

void FormsPartsTest::Numbers()
{
    const QVariantList numbers = {1, 1u, 1ll, 1ull, 1.0, 1.0f, QVariant::fromValue<short>(1)};
    for (const QVariant& number : numbers)
        QVERIFY2(NumberFormat::IsNumber(number), number.typeName());
    const QVariantList others = {true, "1", QByteArray("1"), QVariant(), QVariantList{1}, QChar('1')};
    for (const QVariant& other : others)
        QVERIFY2(!NumberFormat::IsNumber(other), other.typeName());
    QVERIFY(NumberFormat().IsEmpty() && !NumberFormat("{}").IsEmpty());
}

void FormsPartsTest::Bounds_data()
{
    QTest::addColumn<QString>("properties"); // What bounds stands first.

    for (const char* const properties : {"minimum value",          "maximum value",
                                         "decimals value",         "decimals maximum",
                                         "maximum sliderPosition", "inputMask text",
                                         "maxLength text",         "inputMask maxLength",
                                         "items currentIndex",     "items currentText",
                                         "items currentData",      "items currentRow",
                                         "editable currentText",   "checkable checked",
                                         "minimumDate date",       "maximumDateTime dateTime",
                                         "maximumTime time",       "minimumDate selectedDate",
                                         "displayFormat time",     "text_format text",
                                         "digitCount value",       "rowCount rows"})
        QTest::newRow(properties) << properties;
}

void FormsPartsTest::Bounds()
{
    QFETCH(const QString, properties);
    const QString bound = properties.section(' ', 0, 0);
    const QString property = properties.section(' ', 1);

    QVERIFY(PropertyOrder::Bounds(bound, property));
    QVERIFY(!PropertyOrder::Bounds(property, bound));
    QVERIFY(!PropertyOrder::Bounds(bound, bound));
    QVERIFY(!PropertyOrder::Bounds(bound, "toolTip"));
    QVERIFY(!PropertyOrder::Bounds("toolTip", property));
}

void FormsPartsTest::NoCircleOfBounds()
{
    // Every property of the widgets that are bound most; ranks are longest ways, which a circle would not end.
    QStringList names = {"items", "rows", "currentData", "checkedValue"};
    for (const QMetaObject* const type :
         {&QComboBox::staticMetaObject, &QLineEdit::staticMetaObject, &QListWidget::staticMetaObject,
          &QTableWidget::staticMetaObject, &QGroupBox::staticMetaObject}) {
        for (int i = 0; i < type->propertyCount(); ++i)
            names.append(type->property(i).name());
    }
    names.removeDuplicates();
    QHash<QString, int> ranks;
    bool hasChanged = true;
    int rounds = 0;
    while (hasChanged && ++rounds < 20) {
        hasChanged = false;
        for (const QString& bound : qAsConst(names)) {
            for (const QString& property : qAsConst(names)) {
                if (!PropertyOrder::Bounds(bound, property) || ranks[property] > ranks[bound])
                    continue;
                ranks[property] = ranks[bound] + 1;
                hasChanged = true;
            }
        }
    }
    QVERIFY(!hasChanged);
    QVERIFY(ranks.value("text") > 0);
}

void FormsPartsTest::Direct_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isRead");
    QTest::addColumn<bool>("isWritten");

    const auto row = [](const char* name, const QVariant& value, bool isRead, bool isWritten) {
        QTest::addRow("%s, %s", name, value.typeName()) << QByteArray(name) << value << isRead << isWritten;
    };
    row("text", "held", true, true);
    row("text", 5, true, false);
    row("fraction", 2.5, true, true);
    row("count", 5, true, true);
    row("count", "5", true, false);
    row("isOn", true, true, true);
    row("swapped", "held", true, true);
    row("constant", 5, false, false);
    row("orientation", 2, false, false);
    row("objectName", "held", true, true);
    row("noSuchName", "held", false, false);
}

/// As Qt's own way, where it can do without that.
void FormsPartsTest::Direct()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, value);
    QFETCH(bool, isRead);
    QFETCH(bool, isWritten);
    Sample sample;
    const QMetaProperty property = sample.metaObject()->property(sample.metaObject()->indexOfProperty(name));
    const DirectAccess access(property);
    const QString before = value.toString();

    bool isTaken = false;
    QCOMPARE(access.Write(&sample, value, &isTaken), isWritten);
    QCOMPARE(isTaken, isWritten);
    QCOMPARE(value.toString(), before);
    QVariant held;
    QCOMPARE(access.Read(&sample, &held), isRead);
    if (!isRead)
        return;
    QCOMPARE(held, property.read(&sample));
    QCOMPARE(held.userType(), property.read(&sample).userType());
    QCOMPARE(held == value, isWritten);
}

void FormsPartsTest::Registration()
{
    const auto take = [](QObject*, const QVariant&) { return true; };
    const auto answer = [](const char* text) { return [text](const QObject*) { return QVariant(text); }; };
    QGroupBox box;
    QRadioButton button;

    FormAdapters::Register(&QWidget::staticMetaObject, "mood", answer("widget"), take, SIGNAL(destroyed()));
    FormAdapters::Register(&QGroupBox::staticMetaObject, "mood", answer("box"), take);
    QCOMPARE(Read(&box, "mood"), QVariant("box"));
    QCOMPARE(Read(&button, "mood"), QVariant("widget"));
    QCOMPARE(AdapterRegistry::Find(&button, "mood")->notifySignal, QByteArray(SIGNAL(destroyed())));
    QVERIFY(FormAdapters::IsAdapted(&button, "mood") && !FormAdapters::IsAdapted(this, "mood"));

    const PropertyAdapter* const inUse = AdapterRegistry::Find(&box, "mood");
    FormAdapters::Register(&QGroupBox::staticMetaObject, "mood", answer("box again"), take);
    QCOMPARE(Read(&box, "mood"), QVariant("box again"));
    QCOMPARE(inUse->read(&box), QVariant("box"));

    for (const char* const wrong : {"destroyed()", "2destroyd()", "1deleteLater()"}) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("\"silent\" of QGroupBox tells of no changes"));
        FormAdapters::Register(&QGroupBox::staticMetaObject, "silent", answer("box"), take, wrong);
        QVERIFY(AdapterRegistry::Find(&box, "silent")->notifySignal.isEmpty());
    }
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("\"~none\" needs a class, a name without a marker"));
    FormAdapters::Register(&QGroupBox::staticMetaObject, "~none", answer("box"), take);
    QVERIFY(!AdapterRegistry::Find(&box, "~none"));
    for (int missing = 0; missing < 4; ++missing) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("An adapter for .* needs a class"));
        FormAdapters::Register(missing == 0 ? nullptr : &QWidget::staticMetaObject, missing == 1 ? "" : "none",
                               missing == 2 ? nullptr : std::function<QVariant(const QObject*)>(answer("")),
                               missing == 3 ? nullptr : std::function<bool(QObject*, const QVariant&)>(take));
        QVERIFY(!AdapterRegistry::Find(&box, missing == 1 ? "" : "none"));
    }
}

void FormsPartsTest::Items_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("items"); // That are there after ["old"]; empty for not taken.

    const auto row
        = [](const char* value, const char* items) { QTest::newRow(value) << QByteArray(value) << QByteArray(items); };
    row(R"(["a","b"])", R"(["a","b"])");
    row("[]", "[]");
    row("[1,true,2.5]", R"(["1","true","2.5"])");
    row(R"([{"text":"a"},{"data":7,"text":"b"}])", R"(["a",{"data":7,"text":"b"}])");
    row(R"([{"data":7}])", R"([{"data":7,"text":""}])");
    row(R"(["a",["b"]])", "");
    row("[null]", "");
    row("[{}]", "");
    row(R"([{"txt":"a"}])", "");
    row(R"([{"text":["a"]}])", "");
    row(R"([{"icon":{},"text":"a"}])", "");
    row(R"({"text":"a"})", "");
}

void FormsPartsTest::Items()
{
    QFETCH(const QByteArray, value);
    QFETCH(const QByteArray, items);

    QComboBox box;
    QListWidget list;
    box.addItem("old");
    list.addItem("old");
    for (QObject* const object : {static_cast<QObject*>(&box), static_cast<QObject*>(&list)}) {
        QCOMPARE(Write(object, "items", FromJson(value)), !items.isEmpty());
        QCOMPARE(ToJson(Read(object, "items")), items.isEmpty() ? QByteArray(R"(["old"])") : items);
    }
}

void FormsPartsTest::Kept_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<int>("index"); // Before; afterwards it is that of boxes and that of lists.
    QTest::addColumn<int>("inBox");
    QTest::addColumn<int>("inList");

    const auto row = [](const char* before, const char* after, int index, int inBox, int inList) {
        QTest::addRow("%s %d %s", before, index, after)
            << QByteArray(before) << QByteArray(after) << index << inBox << inList;
    };
    row(R"(["a","b","c"])", R"(["a","b","c"])", 1, 1, 1);
    row(R"(["a","b","c"])", R"(["x","a","b"])", 1, 2, 2);
    row(R"(["a","b","c"])", R"(["b"])", 1, 0, 0);
    row(R"(["a","b","c"])", R"(["a","c"])", 1, 0, -1);
    row(R"(["a","b","c"])", "[]", 1, -1, -1);
    row(R"(["a","b","c"])", R"(["c"])", -1, -1, -1);
    row(R"(["a","a"])", R"(["a","a","a"])", 1, 1, 1);
    row("[]", R"(["a","b"])", -1, 0, -1);
    row(R"([{"text":"one","data":1},{"text":"two","data":2}])",
        R"([{"text":"zwei","data":2},{"text":"eins","data":1}])", 1, 0, 0);
}

void FormsPartsTest::Kept()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    QFETCH(const int, index);
    QFETCH(const int, inBox);
    QFETCH(const int, inList);

    QComboBox box;
    QVERIFY(Write(&box, "items", FromJson(before)));
    box.setCurrentIndex(index);
    const QString text = box.currentText();
    QSignalSpy indexSpy(&box, SIGNAL(currentIndexChanged(int)));
    QSignalSpy textSpy(&box, &QComboBox::currentTextChanged);
    QVERIFY(Write(&box, "items", FromJson(after)));
    QCOMPARE(box.currentIndex(), inBox);
    QCOMPARE(indexSpy.count(), inBox == index ? 0 : 1);
    QCOMPARE(textSpy.count(), box.currentText() == text ? 0 : 1);

    QListWidget list;
    QVERIFY(Write(&list, "items", FromJson(before)));
    list.setCurrentRow(index);
    QSignalSpy rowSpy(&list, &QListWidget::currentRowChanged);
    QVERIFY(Write(&list, "items", FromJson(after)));
    QCOMPARE(list.currentRow(), inList);
    QCOMPARE(rowSpy.count(), inList == index ? 0 : 1);
    QCOMPARE(list.selectedItems().count(), inList < 0 ? 0 : 1);
    QVERIFY(inList < 0 || list.item(inList)->isSelected());
}

void FormsPartsTest::KeptText()
{
    QComboBox box;
    box.setEditable(true);
    box.addItems({"a", "b"});
    box.setCurrentIndex(1);
    box.setEditText("half ty");
    QVERIFY(Write(&box, "items", QStringList{"c", "b", "d"}));
    QCOMPARE(box.currentText(), QString("half ty"));
    QCOMPARE(box.count(), 3);
    QVERIFY(Write(&box, "items", QStringList{"e"}));
    QCOMPARE(box.currentText(), QString("half ty"));
}

void FormsPartsTest::CurrentData_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isTaken");
    QTest::addColumn<QVariant>("data");

    QTest::newRow("a number") << QVariant(2) << true << QVariant(2);
    QTest::newRow("a number as a text") << QVariant("2") << true << QVariant(2);
    QTest::newRow("a number as a double") << QVariant(2.0) << true << QVariant(2);
    QTest::newRow("a text") << QVariant("x") << true << QVariant("x");
    QTest::newRow("none of these") << QVariant(3) << false << QVariant(1);
    QTest::newRow("nothing") << QVariant() << true << QVariant();
    QTest::newRow("a list") << QVariant(QVariantList{2}) << false << QVariant(1);
}

void FormsPartsTest::CurrentData()
{
    QFETCH(const QVariant, value);
    QFETCH(const bool, isTaken);

    QComboBox box;
    box.addItem("one", 1);
    box.addItem("two", 2);
    box.addItem("text", "x");
    QCOMPARE(Write(&box, "currentData", value), isTaken);
    const QVariant data = Read(&box, "currentData");
    QTEST(data, "data");
}

void FormsPartsTest::Icons()
{
    QPixmap image(4, 4);
    image.fill(Qt::red);
    QListWidget list;
    QVERIFY(Write(&list, "items", QVariantList{QVariantMap{{"text", "a"}, {"icon", image}}}));
    QVERIFY(!list.item(0)->icon().isNull());
    QVERIFY(!Write(&list, "items", QVariantList{QVariantMap{{"text", "b"}, {"icon", ":/no/such.png"}}}));
    QCOMPARE(list.item(0)->text(), QString("b"));
    QVERIFY(list.item(0)->icon().isNull());
}

void FormsPartsTest::Rows_data()
{
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("rows"); // Empty for not taken.
    QTest::addColumn<QStringList>("after");

    const auto row = [](const char* labels, const char* value, const char* rows, const char* after) {
        QTest::addRow("%s under %s", value, labels)
            << QString(labels).split(' ', Qt::SkipEmptyParts) << QByteArray(value) << QByteArray(rows)
            << QString(after).split(' ', Qt::SkipEmptyParts);
    };
    row("", R"([["a",1],[true,2.5]])", R"([["a",1],[true,2.5]])", "1 2");
    row("", R"([["a"],["b","c"]])", R"([["a",null],["b","c"]])", "1 2");
    row("x y z", R"([["a","b"]])", R"([["a","b",null]])", "x y z");
    row("x", R"([["a","b"]])", R"([["a","b"]])", "x 2");
    row("x y", R"([[null,"b"]])", R"([[null,"b"]])", "x y");
    row("", R"([{"b":2,"a":1},{"a":3,"c":4}])", R"([{"a":1,"b":2},{"a":3,"c":4}])", "a b c");
    row("b a", R"([{"b":2,"a":1,"hidden":0}])", R"([{"a":1,"b":2,"hidden":0}])", "b a");
    row("b a", R"([{"c":1}])", "", "b a");
    row("x y", "[]", "[]", "x y");
    row("x y", R"(["a","b"])", "", "x y");
    row("x y", R"([["a"],{"x":1}])", "", "x y");
    row("x y", R"([{"x":1},["a"]])", "", "x y");
    row("x y", R"([[["a"]]])", "", "x y");
    row("x y", R"([{"x":{"y":1}}])", "", "x y");
    row("x y", R"({"x":[1]})", "", "x y");
}

void FormsPartsTest::Rows()
{
    QFETCH(const QStringList, labels);
    QFETCH(const QByteArray, value);
    QFETCH(const QByteArray, rows);
    QFETCH(const QStringList, after);

    QTableWidget table;
    QTreeWidget tree;
    table.setColumnCount(labels.count());
    table.setHorizontalHeaderLabels(labels);
    if (!labels.isEmpty())
        tree.setHeaderLabels(labels);
    for (QAbstractItemView* const view :
         {static_cast<QAbstractItemView*>(&table), static_cast<QAbstractItemView*>(&tree)}) {
        QCOMPARE(Write(view, "rows", FromJson(value)), !rows.isEmpty());
        QCOMPARE(ToJson(Read(view, "rows")), rows.isEmpty() ? QByteArray("[]") : rows);
        QStringList shown;
        for (int column = 0; column < view->model()->columnCount(); ++column)
            shown.append(view->model()->headerData(column, Qt::Horizontal).toString());
        if (view == &table || !labels.isEmpty() || value.startsWith("[{"))
            QCOMPARE(shown, after);
    }
}

void FormsPartsTest::RowsAgain()
{
    QTableWidget table;
    QVERIFY(Write(&table, "rows", FromJson(R"([{"n":"a"},{"n":"b"},{"n":"c"}])")));
    table.setCurrentCell(1, 0);
    QSignalSpy currentSpy(&table, &QTableWidget::currentCellChanged);
    QSignalSpy cellSpy(&table, &QTableWidget::cellChanged);
    // Other keys make other headers, since nobody gave these; the row of "b" moves.
    QVERIFY(Write(&table, "rows", FromJson(R"([{"n":"x","m":0},{"n":"y","m":0}])")));
    QCOMPARE(table.horizontalHeaderItem(0)->text(), QString("m"));
    QCOMPARE(table.currentRow(), -1);
    QVERIFY(table.selectedItems().isEmpty());
    QCOMPARE(currentSpy.count(), 1);

    QVERIFY(Write(&table, "rows", FromJson(R"([{"n":"a"},{"n":"b"}])")));
    table.setCurrentCell(0, 0);
    currentSpy.clear();
    QVERIFY(Write(&table, "rows", FromJson(R"([{"n":"z"},{"n":"y"},{"n":"a"}])")));
    QCOMPARE(table.currentRow(), 2);
    QCOMPARE(table.selectedItems().count(), 1);
    QCOMPARE(currentSpy.count(), 1);
    QCOMPARE(cellSpy.count(), 0);

    table.setSortingEnabled(true);
    table.sortItems(0);
    QVERIFY(Write(&table, "rows", FromJson(R"([{"n":"q"},{"n":"p"},{"n":"a"}])")));
    QCOMPARE(ToJson(Read(&table, "rows")), QByteArray(R"([{"n":"a"},{"n":"p"},{"n":"q"}])"));
    QCOMPARE(table.currentRow(), 0);
}

/// Labels made of keys stay such, whatever lists come between.
void FormsPartsTest::MapsAfterLists()
{
    for (const char* const lists : {"[[1,2,3]]", "[[1]]", "[]"}) {
        QTableWidget table;
        for (const char* const rows : {R"([{"a":1,"b":2}])", lists, R"([{"z":9}])"})
            QVERIFY(Write(&table, "rows", FromJson(rows)));
        QCOMPARE(ToJson(Read(&table, "rows")), QByteArray(R"([{"z":9}])"));
    }
}

void FormsPartsTest::EditedRows()
{
    QTableWidget table(0, 1);
    table.setHorizontalHeaderLabels({"n"});
    QVERIFY(Write(&table, "rows", FromJson(R"([{"n":1,"id":7}])")));
    table.item(0, 0)->setData(Qt::EditRole, 2);
    QCOMPARE(ToJson(Read(&table, "rows")), QByteArray(R"([{"id":7,"n":2}])"));
}

void FormsPartsTest::CheckedValue_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isTaken");
    QTest::addColumn<QVariant>("checked");
    QTest::addColumn<int>("changes");

    QTest::newRow("another") << QVariant(2) << true << QVariant("2") << 2;
    QTest::newRow("the same") << QVariant("1") << true << QVariant(1) << 0;
    QTest::newRow("none of these") << QVariant(3) << false << QVariant(1) << 0;
    QTest::newRow("a map") << QVariant(QVariantMap{{"1", 1}}) << false << QVariant(1) << 0;
    QTest::newRow("nothing") << QVariant() << true << QVariant() << 1;
}

void FormsPartsTest::CheckedValue()
{
    QFETCH(const QVariant, value);
    QFETCH(const bool, isTaken);
    QFETCH(const QVariant, checked);
    QFETCH(const int, changes);

    qRegisterMetaType<QAbstractButton*>("QAbstractButton*");
    for (const bool isGrouped : {false, true}) {
        QGroupBox box;
        QWidget* const between = isGrouped ? new QWidget(&box) : &box;
        QRadioButton* const one = new QRadioButton(between);
        QRadioButton* const two = new QRadioButton(between);
        QRadioButton* const other = new QRadioButton(new QWidget(&box));
        one->setProperty("value", 1);
        two->setProperty("value", "2");
        QButtonGroup group;
        for (QRadioButton* const button : {one, two}) {
            if (isGrouped)
                group.addButton(button);
        }
        one->setChecked(true);
        other->setChecked(true);

        int told = 0;
        AdapterRegistry::Find(&box, "checkedValue")->watch(&box, [&told] { ++told; });
        QSignalSpy spy(&group, SIGNAL(buttonToggled(QAbstractButton*, bool)));
        QObject* const target = isGrouped ? static_cast<QObject*>(&group) : &box;
        QCOMPARE(Write(target, "checkedValue", value), isTaken);
        QCOMPARE(Read(&box, "checkedValue"), checked);
        QCOMPARE(told, changes);
        if (isGrouped)
            QCOMPARE(Read(&group, "checkedValue"), checked);
        QCOMPARE(spy.count(), isGrouped ? changes : 0);
        QVERIFY(other->isChecked());
        // Still exclusive.
        two->setChecked(true);
        one->setChecked(true);
        QVERIFY(!two->isChecked());
    }
}

void FormsPartsTest::Hostile_data()
{
    QTest::addColumn<QVariant>("value");

    QVariantList tenMillion;
    tenMillion.reserve(10000000);
    for (int i = 0; i < 10000000; ++i)
        tenMillion.append(i);
    QVariantList wide;
    for (int i = 0; i <= 1000; ++i)
        wide.append(i);
    QVariantList tooManyCells;
    for (int i = 0; i < 1001; ++i)
        tooManyCells.append(QVariant(wide.mid(1)));
    QVariantMap keys;
    for (int i = 0; i <= 1000; ++i)
        keys.insert(QString::number(i), i);
    QVariant nested = 1;
    for (int i = 0; i < 10000; ++i)
        nested = QVariantList{nested};

    QTest::newRow("ten million") << QVariant(tenMillion);
    QTest::newRow("too wide") << QVariant(QVariantList{QVariant(wide)});
    QTest::newRow("too many cells") << QVariant(tooManyCells);
    QTest::newRow("too many keys") << QVariant(QVariantList{keys});
    QTest::newRow("nested") << QVariant(QVariantList{nested});
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("null text") << QVariant(QString());
    QTest::newRow("text") << QVariant("a");
    QTest::newRow("bytes") << QVariant(QByteArray("abc"));
    QTest::newRow("object") << QVariant::fromValue<QObject*>(this);
    QTest::newRow("objects") << QVariant(QVariantList{QVariant::fromValue<QObject*>(nullptr)});
    QTest::newRow("map") << QVariant(QVariantMap{{"text", "a"}});
}

void FormsPartsTest::Hostile()
{
    QFETCH(const QVariant, value);

    QComboBox box;
    QListWidget list;
    QTableWidget table(1, 1);
    QTreeWidget tree;
    box.addItem("old");
    QVERIFY(!Write(&box, "items", value) || value.toList().first().userType() == QMetaType::QVariantMap);
    QVERIFY(!Write(&list, "items", value) || value.toList().first().userType() == QMetaType::QVariantMap);
    QVERIFY(!Write(&table, "rows", value));
    QVERIFY(!Write(&tree, "rows", value));
    QCOMPARE(table.rowCount(), 1);
    QVERIFY(box.count() == 1 && list.count() <= 1 && tree.topLevelItemCount() == 0);
    if (value.isValid())
        QVERIFY(!Write(&box, "currentData", value));
}

QTEST_MAIN(FormsPartsTest)
#include "tst_forms_parts.moc"
