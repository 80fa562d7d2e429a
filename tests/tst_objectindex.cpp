#include <QtTest>

#include <functional>

#include "Common/objectindex.h"

namespace {

QObject* AddChild(QObject* parent, const QString& name)
{
    QObject* const child = new QObject(parent);
    child->setObjectName(name);
    return child;
}

/// A window with two pages; "field" stands on both, the first page holds one more of that name further down.
struct Form
{
    QObject window;
    QObject* first = AddChild(&window, "first");
    QObject* second = AddChild(&window, "second");
    QObject* box = AddChild(first, "box");
    QObject* deepField = AddChild(box, "field");
    QObject* field = AddChild(first, "field");
    QObject* otherField = AddChild(second, "field");
};

typedef std::function<void(Form*)> Change;

} // namespace

Q_DECLARE_METATYPE(Change)

class tst_ObjectIndex : public QObject
{
    Q_OBJECT

private slots:
    void FindsWhatQtFinds_data();
    void FindsWhatQtFinds();
    void KeepsAnObjectThatIsStillThere();
    void ForgetsAParentOfTheSameAddress();
};

void tst_ObjectIndex::FindsWhatQtFinds_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("name");

    QTest::newRow("nothing changes") << Change([](Form*) {}) << "field";
    QTest::newRow("no such name") << Change([](Form*) {}) << "fields";
    QTest::newRow("the empty name") << Change([](Form*) {}) << "";
    QTest::newRow("the first of the name goes") << Change([](Form* form) { delete form->field; }) << "field";
    QTest::newRow("its page goes") << Change([](Form* form) { delete form->first; }) << "field";
    QTest::newRow("all of the name go") << Change([](Form* form) {
        delete form->first;
        delete form->second;
    }) << "field";
    QTest::newRow("it is called otherwise")
        << Change([](Form* form) { form->field->setObjectName("cell"); }) << "field";
    QTest::newRow("another takes a name") << Change([](Form* form) { form->box->setObjectName("cell"); }) << "cell";
    QTest::newRow("it leaves the form") << Change([](Form* form) {
        form->field->setParent(nullptr);
        form->field->deleteLater();
    }) << "field";
    QTest::newRow("it leaves with its page, which lives on") << Change([](Form* form) {
        form->first->setParent(nullptr);
        form->first->deleteLater();
    }) << "field";
    QTest::newRow("a new one far down") << Change([](Form* form) { AddChild(form->box, "cell"); }) << "cell";
    QTest::newRow("one is replaced by one") << Change([](Form* form) {
        delete form->second;
        AddChild(&form->window, "field");
    }) << "second";
}

void tst_ObjectIndex::FindsWhatQtFinds()
{
    QFETCH(Change, change);
    QFETCH(QString, name);

    Form form;
    ObjectIndex index;
    QCOMPARE(index.FindChild(&form.window, "field"), form.field);
    QCOMPARE(index.FindChild(form.second, "field"), form.otherField);
    change(&form);
    QCOMPARE(index.FindChild(&form.window, name), form.window.findChild<QObject*>(name));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(index.FindChild(&form.window, name), form.window.findChild<QObject*>(name));
}

void tst_ObjectIndex::KeepsAnObjectThatIsStillThere()
{
    Form form;
    ObjectIndex index;
    QCOMPARE(index.FindChild(form.first, "box"), form.box);
    QCOMPARE(index.FindChild(&form.window, "box"), form.box);
    form.second->setObjectName("box");
    QCOMPARE(index.FindChild(&form.window, "box"), form.box);
    AddChild(&form.window, "third");
    QCOMPARE(index.FindChild(&form.window, "box"), form.second);
}

void tst_ObjectIndex::ForgetsAParentOfTheSameAddress()
{
    alignas(QObject) char place[sizeof(QObject)];
    ObjectIndex index;
    for (int i = 0; i < 2; ++i) {
        QObject* const parent = new (place) QObject;
        QObject* const field = AddChild(parent, "field");
        QCOMPARE(index.FindChild(parent, "field"), field);
        parent->~QObject();
    }
}

QTEST_GUILESS_MAIN(tst_ObjectIndex)
#include "tst_objectindex.moc"
