#include <QAction>
#include <QButtonGroup>
#include <QListWidget>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include "support/formfixture.h"

/// Binding forms: what is bound, what is wrong, in what order, and what pages that come and go do.
class FormsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Statements_data();
    void Statements();
    void Walk();
    void PropertyNames_data();
    void PropertyNames();
    void Rebinding();
    void Defaults();
    void TakenLater();
    void Unbinding();
    void ToldOnce();
    void NoValue();
    void Taken_data();
    void Taken();
    void Refusals();
    void Bounds();
    void CatchingUp();
    void Follows();
    void LatePage();
    void Circle_data();
    void Circle();
    void Diamond();
    void Evaluated();
    void Formats();
    void Hostile_data();
    void Hostile();
};

/// Rows «widget, marked property = statement => told; value shown», with the variables a = 5, t = 'text',
/// list = [1, 2], map = {k: 1}, d = 2.5 and no others.
void FormsTest::Statements_data()
{
    Rows({{
        "label, ~text = a => ; '5'",
        "label, _text = t => ; 'text'",
        "label, ~text = a + => w: LeftOver ~text 2+1; 'designed'",
        "label, ~text = (a + 1 => w: Syntax ~text 6+0; 'designed'",
        "label, ~text = a b => w: LeftOver ~text 2+1; 'designed'",
        "label, ~text = a $ => w: Syntax ~text 2+1; 'designed'",
        "label, ~text =  => w: Syntax ~text 0+0; 'designed'",
        "label, ~text = @TopWidget\\no:text => w: UnknownObject ~text 0+18; 'designed'",
        "label, ~text = 'x' + @TopWidget\\no:text => w: UnknownObject ~text 6+18; 'x'",
        "label, ~frameWidth = 1 => w: ReadOnlyProperty ~frameWidth -1+0; 'designed'",
        "label, ~nothing = a => w: UnknownProperty ~nothing -1+0; 'designed'",
        "label, text = a => w: NotAStatement text -1+0; 'designed'",
        "label, ~~_ = a => w: NotAStatement ~~_ -1+0; 'designed'",
        "label, ~_text = a => ; '5'",
        "label, ~text = missing => w: NoValue ~text -1+0; 'designed'",
        "label, ~text = HASVALUE missing => ; 'false'",
        "label, ~text = list[0] => ; '1'",
        "label, ~text = list[7] => w: Evaluation ~text 4+3; 'designed'",
        "label, ~text = list['x'] => w: Evaluation ~text 4+5; 'designed'",
        "label, ~text = map[' '] => w: Evaluation ~text 3+5; 'designed'",
        "label, ~text = map['no'] => w: NoValue ~text -1+0; 'designed'",
        "label, ~text = a[0] => w: Evaluation ~text 1+3; 'designed'",
        "label, ~text = @Widget:text + '!' => w: Cycle ~text 0+12; 'designed!'",
        "label, ~colors[red] = #c00 => ; 'designed'",
    }});
}

void FormsTest::Statements()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    Form form;
    form.m_peer.m_values = {{"a", 5}, {"t", "text"}, {"list", QVariantList{1, 2}}, {"map", QVariantMap{{"k", 1}}}};
    QLabel* const label = form.Add<QLabel>("w", {{"text", "designed"}});
    const QString property = given.section(", ", 1).section(" = ", 0, 0);
    const bool isBound = form.m_binding->Bind(label, property, given.section(" = ", 1));
    const QString told = expected.section("; ", 0, 0);
    QCOMPARE(form.Told(), told);
    QCOMPARE(form.Problems(), told);
    QCOMPARE(Exact(label->text()), expected.section("; ", 1));
    const QVector<FormProblem> problems = form.m_binding->Problems();
    QCOMPARE(isBound, problems.isEmpty() || problems.first().severity == FormProblem::Warning);
    for (const FormProblem& problem : problems) {
        QVERIFY2(problem.message.contains("QLabel \"w\"") && problem.message.contains(property),
                 qPrintable(problem.message));
        QCOMPARE(problem.statement, given.section(" = ", 1));
    }
}

void FormsTest::Walk()
{
    Form form;
    form.m_peer.Set("a", 1);
    QWidget* const page = form.Add<QWidget>("page");
    QAction* const action = new QAction(&form.m_form);
    action->setProperty("~text", "'action ' + a");
    form.Add<QLabel>("last", {{"~text", "a"}, {"_q_text", "no statement"}, {"_toolTip", 7}});
    form.Add<QLabel>("inner", {{"~text", "@Widget:colors['red']"}, {"~colors[red]", "#c00"}}, page);
    new QButtonGroup(&form.m_form);
    form.m_form.setProperty("~windowTitle", "'title'");
    QVERIFY(!form.m_binding->Bind());
    QStringList order;
    for (const BoundProperty& bound : form.m_binding->BoundProperties())
        order << bound.object->objectName() + bound.property;
    QCOMPARE(order.join(", "), QString("form~windowTitle, inner~text, ~text, last~text"));
    QCOMPARE(form.Told(), QString("last: NotAStatement _toolTip -1+0"));
    QCOMPARE(form.m_form.windowTitle() + action->text(), QString("titleaction 1"));
    QCOMPARE(page->findChild<QLabel*>("inner")->text(), QString("#c00"));
    QCOMPARE(form.m_binding->BoundProperties(page).count(), 1);
}

void FormsTest::PropertyNames_data()
{
    QTest::addColumn<QByteArray>("name"); // As Qt knows it.
    QTest::addColumn<QString>("told");

    for (const char* const name : {"gr\xc3\xb6\xc3\x9f"
                                   "e",
                                   "\xe5\x90\x8d", "\xf0\x9f\x98\x80"})
        QTest::newRow(name) << QByteArray(name) << "w: UnknownProperty ~" + QString::fromUtf8(name) + " -1+0";
    QTest::newRow("Latin-1") << QByteArray("gr\xf6") << QString("w: NotAStatement ~gr\ufffd -1+0");
}

void FormsTest::PropertyNames()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, told);
    Form form;
    QLabel* const label = form.Add<QLabel>("w");
    label->setProperty("~" + name, "a");
    form.m_peer.Set("a", 5);
    const bool isBound = form.m_binding->Bind();
    QCOMPARE(form.Told(), told);
    QCOMPARE(label->property(name), isBound ? QVariant(5) : QVariant());
    QCOMPARE(label->dynamicPropertyNames().count(), isBound ? 2 : 1);
    label->setProperty(name + "_format", "{:.1f}");
    label->setProperty("~" + name, "a * 2");
    form.Turn();
    QCOMPARE(label->property(name).toString(), isBound ? QString("10.0") : QString());
    const bool isBoundAgain = form.m_binding->Bind(label, QString::fromUtf8("~" + name), "7");
    QCOMPARE(isBoundAgain, isBound);
    QCOMPARE(label->property(name).toDouble(), isBound ? 7.0 : 0.0);
}

void FormsTest::Rebinding()
{
    Form form;
    form.m_peer.m_values = {{"a", 1}, {"b", 2}};
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"text", "designed"}, {"_text", "a"}, {"~text", "b"}});
    QSpinBox* const spin = form.Add<QSpinBox>("s", {{"_value", "b"}});
    QVERIFY(!form.m_binding->Bind());
    QVERIFY(!form.m_binding->Bind());
    QCOMPARE(form.Told(), QString("e: Duplicate ~text -1+0"));
    QCOMPARE(edit->text(), QString("1"));
    edit->setText("7");
    QVERIFY(!form.m_binding->Bind(edit, "_text", "b +"));
    QCOMPARE(form.Bound(edit).statement, QString("a"));
    // The edit and the place stay.
    QVERIFY(form.m_binding->Bind(edit, "_text", "b"));
    QCOMPARE(edit->text(), QString("7"));
    QCOMPARE(form.m_binding->BoundProperties().first().object.data(), static_cast<QObject*>(edit));
    QCOMPARE(form.m_binding->Save().saved, 1);
    QCOMPARE(Exact(form.m_peer.Get("b")), QString("7"));
    // What only reads has no edits.
    spin->setValue(50);
    QVERIFY(form.m_binding->Bind(spin, "~value", "b"));
    QCOMPARE(spin->value(), 7);
    QVERIFY(!form.m_binding->IsEdited());
    // Without a value it is Designer's again, also when it was unbound in between.
    form.m_binding->Unbind(edit);
    QVERIFY(form.m_binding->Bind(edit, "~text", "missing"));
    QCOMPARE(edit->text(), QString("designed"));
    QVERIFY(!form.m_binding->Bind(nullptr, "~text", "a"));
    QVERIFY(form.Problems(edit).contains("NoValue"));
    QVERIFY(!form.Problems().contains("null"));
    QVERIFY(form.Told().contains("null: NotAStatement"));
}

void FormsTest::Defaults()
{
    Form form;
    QLabel* const label = form.Add<QLabel>("w");
    QVERIFY(form.m_binding->BindDefault(label, "~text", "'default'"));
    QVERIFY(form.m_binding->BindDefault(label, "_text", "syntax (error"));
    QCOMPARE(label->text(), QString("default"));
    QVERIFY(!form.m_binding->BindDefault(label, "~toolTip", "'"));
    QCOMPARE(form.Told(), QString("w: Syntax ~toolTip 0+1"));
    QVERIFY(form.m_binding->BindDefault(label, "~toolTip", "'tip'"));
    QCOMPARE(form.Problems(), QString());
    form.m_binding->Bind(label, "~colors[red]", "#f00");
    QVERIFY(form.m_binding->BindDefault(label, "~colors[red]", "#fff"));
    QVERIFY(form.m_binding->BindDefault(label, "~colors[green]", "#0f0"));
    QCOMPARE(Exact(label->property("colors")), QString("{'green': '#0f0', 'red': '#f00'}"));
}

/// What was refused once is tried again.
void FormsTest::TakenLater()
{
    Form form;
    form.m_peer.Set("v", 2);
    QComboBox* const combo = form.Add<QComboBox>("c", {{"~currentData", "v"}});
    combo->addItem("one", 1);
    form.m_binding->Bind();
    QCOMPARE(form.Problems(), QString("c: NotTaken ~currentData -1+0"));
    combo->addItem("two", 2);
    form.m_peer.Set("v", 2);
    form.Turn();
    QCOMPARE(combo->currentText() + form.Problems(), QString("two"));
}

void FormsTest::Unbinding()
{
    Form form;
    form.m_peer.Set("a", 1);
    QWidget* const page = form.Add<QWidget>("page");
    QLineEdit* const inner = form.Add<QLineEdit>("inner", {{"_text", "a"}, {"~toolTip", "a"}}, page);
    QLabel* const outer = form.Add<QLabel>("outer", {{"text", "–"}, {"~text", "@TopWidget\\page\\inner:text"}});
    QLabel* const other = form.Add<QLabel>("other", {{"~text", "@TopWidget\\inner:placeholderText + '.'"}});
    QLabel outside;
    QVERIFY(form.m_binding->Bind() && form.m_binding->Bind(&outside, "~text", "a"));
    QCOMPARE(form.m_peer.m_observers.count(), 1);
    inner->setText("edited");
    QVERIFY(form.m_binding->IsEdited());
    form.m_binding->Unbind(page);
    QVERIFY(!form.m_binding->IsEdited());
    form.Turn();
    QCOMPARE(inner->text(), QString("edited"));
    QCOMPARE(outer->text(), QString("–"));
    QCOMPARE(other->text(), QString("."));
    QCOMPARE(form.Problems(), QString("outer: NoValue ~text 0+26"));
    QVERIFY(form.m_binding->Bind(page));
    form.Turn();
    QCOMPARE(outer->text() + form.Problems(), QString("1"));
    delete page;
    form.Turn();
    QCOMPARE(outer->text(), QString("–"));
    QCOMPARE(form.Problems(), QString("outer: UnknownObject ~text 0+26; other: UnknownObject ~text 0+32"));
    QCOMPARE(outside.text(), QString("1"));
    form.m_binding->Unbind();
    QCOMPARE(form.m_peer.m_observers.count(), 0);
    QCOMPARE(form.Problems(), QString());
}

void FormsTest::ToldOnce()
{
    Form form;
    form.m_peer.Set("a", 500);
    QSlider* const slider = form.Add<QSlider>("s", {{"~value", "a"}});
    form.m_binding->Bind();
    QCOMPARE(form.Told(), QString("s: NotTaken ~value -1+0"));
    const QStringList values = {"600", "99", "700"};
    for (const QString& value : values) {
        form.m_peer.Set("a", value.toInt());
        form.Turn();
        const QVector<FormProblem> problems = form.m_binding->Problems();
        QVERIFY(problems.isEmpty() ? value == "99" : problems.first().message.contains(value));
        QCOMPARE(slider->value(), qMin(99, value.toInt()));
    }
    QCOMPARE(form.Told(), QString("s: NotTaken ~value -1+0"));
}

void FormsTest::NoValue()
{
    Form form;
    QLabel* const label = form.Add<QLabel>("w", {{"text", "–"}, {"~text", "list[1]"}});
    form.m_binding->Bind();
    QCOMPARE(form.Told(), QString("w: NoValue ~text -1+0"));
    QCOMPARE(label->text(), QString("–"));
    form.m_peer.Set("list", QVariantList{1});
    form.Turn();
    QCOMPARE(form.Problems(), QString("w: Evaluation ~text 4+3"));
    form.m_peer.Set("list", QVariantList{1, 2});
    form.Turn();
    QCOMPARE(form.Problems() + label->text(), QString("2"));
    form.m_peer.Set("list", QVariant());
    form.Turn();
    QCOMPARE(label->text(), QString("–"));
    QCOMPARE(form.Told(), QString("w: Evaluation ~text 4+3; w: NoValue ~text -1+0"));
}

/// Rows «widget, property, value => shown», with "!" in front where it is told as not taken.
void FormsTest::Taken_data()
{
    Rows({{
        "spin, value, 5 => 5",
        "spin, value, '5' => 5",
        "spin, value, 500 => !99",
        "spin, value, 'abc' => !0",
        "spin, value, 4.6 => 5",
        "progress, value, 33.333 => 33",
        "double, value, 12.3456 => 12.35",
        "double, value, 100.5 => !99.989999999999995",
        "slider, value, 500 => !99",
        "edit, text, 12 => '12'",
        "edit, text, 2.5 => '2.5'",
        "edit, text, true => 'true'",
        "edit, echoMode, 'Password' => 2",
        "check, checked, 1 => true",
        "check, checked, 'false' => false",
        "button, checked, true => !false",
        "combo, currentText, 'x' => !''",
        "date, date, '2024-02-28' => QDate(2024-02-28)",
        "date, date, '2024-02-31' => !QDate(2000-01-01)",
        "label, visible, false => false",
        "label, visible, true => true",
        "label, enabled, false => false",
        "label, enabled, true => true",
        "label, pixmap, '::empty' => QPixmap()",
        "label, pixmap, 'no/such.png' => !QPixmap()",
        "label, pixmap, '' => !QPixmap()",
        "label, font, 'Arial,12' => QFont[]",
        "label, indent, 3 => 3",
        "label, dynamic, [1] => [1]",
    }});
}

void FormsTest::Taken()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    Form form;
    QWidget* const widget = NewWidget(given.section(", ", 0, 0), &form.m_form);
    const QString property = given.section(", ", 1, 1);
    form.m_peer.Set("v", Operands(given.section(", ", 2)).value(0));
    QVERIFY(form.m_binding->Bind(widget, "~" + property, "v"));
    const bool isTaken = !form.Problems().contains("NotTaken");
    const QVariant shown = form.Bound(widget).shown;
    QString text = Exact(shown);
    if (shown.userType() == QMetaType::QDate)
        text = "QDate(" + shown.toDate().toString(Qt::ISODate) + ")";
    else if (shown.userType() == QMetaType::QPixmap)
        text = "QPixmap()";
    QCOMPARE((isTaken ? "" : "!") + text, expected);
    if (property == "visible")
        QCOMPARE(widget->isHidden(), !shown.toBool());
    // Nor is it an edit.
    QVERIFY(form.m_binding->Bind(widget, "_" + property, "v"));
    QVERIFY(!form.m_binding->IsEdited());
}

void FormsTest::Refusals()
{
    Form form;
    const QVariantMap item = {{"text", "a"}, {"icon", "/no/such.png"}};
    form.m_peer.Set("v", QVariantList{"b", item});
    form.Add<QListWidget>("w", {{"~items", "v"}});
    form.m_binding->Bind();
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(
            form.m_binding->Problems().value(0).message,
            QString("~items of QListWidget \"w\": \"icon\" of item 2 was given \"/no/such.png\" and holds no value."));
        form.m_binding->Update();
    }
    // The number itself, though its text is what was written.
    form.m_peer.Set("n", 2.75);
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"~text", "n"}});
    edit->setMaxLength(3);
    form.m_binding->Bind(edit);
    QCOMPARE(form.m_binding->Problems(edit).value(0).message,
             QString("~text of QLineEdit \"e\": it was given 2.75 and holds \"2.7\"."));
}

void FormsTest::Bounds()
{
    Form form;
    form.m_peer.m_values = {{"v", 1450}, {"max", 3000}};
    QSpinBox* const spin = form.Add<QSpinBox>("s", {{"_value", "v"}, {"~maximum", "max"}});
    QVERIFY(form.m_binding->Bind());
    QCOMPARE(spin->value(), 1450);
    form.m_peer.Set("max", 1000);
    form.Turn();
    QCOMPARE(spin->value(), 1000);
    QCOMPARE(form.Problems(), QString("s: NotTaken _value -1+0"));
    QVERIFY(!form.m_binding->IsEdited());
    QCOMPARE(form.m_binding->Save().saved, 0);
    form.m_peer.Set("max", 2000);
    form.Turn();
    QCOMPARE(spin->value(), 1450);
    QCOMPARE(form.Problems(), QString());
    QCOMPARE(form.Bound(spin, "_value").evaluations, quint64(1));
}

void FormsTest::CatchingUp()
{
    Form form;
    form.m_peer.Set("v", 1450);
    QSpinBox* const spin = form.Add<QSpinBox>("s", {{"value", 50}, {"_value", "v"}, {"~maximum", "@Widget:value * 2"}});
    QVERIFY(form.m_binding->Bind());
    QTRY_COMPARE(spin->maximum(), 2900);
    QCOMPARE(spin->value(), 1450);
    QCOMPARE(form.Told(), QString());
    form.m_peer.Set("v", -5);
    QTRY_COMPARE(form.Problems(), QString("s: NotTaken _value -1+0"));
}

void FormsTest::Follows()
{
    Form form;
    QCheckBox* const box = form.Add<QCheckBox>("box");
    QLabel* const label = form.Add<QLabel>("w", {{"~text", "@TopWidget\\box:checked"}});
    QVERIFY(form.m_binding->Bind());
    QCOMPARE(label->text(), QString("false"));
    box->click();
    form.Turn();
    QCOMPARE(label->text(), QString("true"));
    QCOMPARE(form.Bound(label).properties.count(), 1);
}

void FormsTest::LatePage()
{
    Form form;
    QLabel* const label = form.Add<QLabel>("w", {{"~text", "@TopWidget\\page\\late:text"}});
    QVERIFY(form.m_binding->Bind());
    QCOMPARE(form.Told(), QString("w: UnknownObject ~text 0+25"));
    for (int i = 0; i < 2; ++i) {
        QWidget* const page = form.Add<QWidget>("page");
        form.Add<QLineEdit>("late", {{"_text", "v"}}, page);
        form.m_peer.Set("v", i);
        QVERIFY(form.m_binding->Bind(page));
        QCOMPARE(label->text() + form.Problems(), QString::number(i));
        form.m_peer.Set("v", "changed");
        form.Turn();
        QCOMPARE(label->text(), QString("changed"));
        delete page;
        form.Turn();
        QCOMPARE(form.Told(), QString("w: UnknownObject ~text 0+25"));
    }
    // By one property of a page, all that is on it.
    QWidget* const page = form.Add<QWidget>("page");
    form.Add<QLineEdit>("late", {{"text", "plain"}}, page);
    form.m_binding->Bind(page, "~toolTip", "'tip'");
    QCOMPARE(label->text() + form.Problems(), QString("plain"));
}

void FormsTest::Circle_data()
{
    Rows({{
        "@TopWidget\\b:text + '!'; @TopWidget\\a:text => ab",
        "@TopWidget\\b:text; @TopWidget\\c:text; @TopWidget\\a:text => abc",
        "@TopWidget\\b:text; @Widget:text; 'x' => b",
        "@TopWidget\\b:text; @TopWidget\\c:text; 'x' => ",
    }});
}

void FormsTest::Circle()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    Form form;
    QVector<QLineEdit*> edits;
    for (const QString& statement : given.split("; "))
        edits << form.Add<QLineEdit>(QByteArray(1, char('a' + edits.count())), {{"~text", statement}});
    QVERIFY(form.m_binding->Bind());
    QString members;
    for (const FormProblem& problem : form.m_binding->Problems()) {
        QCOMPARE(int(problem.kind), int(FormProblem::Cycle));
        members += problem.object->objectName();
        for (const QChar& member : expected)
            QVERIFY2(problem.message.contains(QString("\"%1\"").arg(member)), qPrintable(problem.message));
    }
    QCOMPARE(members, expected);
    edits.last()->setText("user");
    form.Turn();
    form.Turn();
    for (QLineEdit* edit : edits)
        QVERIFY(form.Bound(edit).evaluations <= 2);
    form.m_binding->Unbind(edits.last());
    form.m_binding->Unbind(edits.at(edits.count() - 2));
    form.Turn();
    QVERIFY(!form.Problems().contains("Cycle"));
}

void FormsTest::Diamond()
{
    Form form;
    QComboBox* const combo = form.Add<QComboBox>("combo");
    QLabel* const reader = form.Add<QLabel>("reader", {{"~text", "@TopWidget\\combo:currentText"}});
    for (int i = 12; i >= 0; --i) {
        const QString statement = QString("@TopWidget\\l%1:text + @TopWidget\\r%1:text").arg(i - 1);
        for (const char* side : {"l", "r"})
            form.Add<QLabel>(qPrintable(side + QString::number(i)), {{"~text", i == 0 ? "v" : statement}});
    }
    combo->setProperty("~items", "items");
    form.m_peer.Set("v", "x");
    form.m_peer.Set("items", QStringList{"first", "second"});
    QVERIFY(form.m_binding->Bind());
    QCOMPARE(reader->text(), QString("first"));
    form.m_peer.Set("v", "y");
    form.Turn();
    for (const BoundProperty& bound : form.m_binding->BoundProperties()) {
        const bool isInDiamond = bound.object != reader && bound.object != combo;
        QCOMPARE(bound.evaluations, quint64(isInDiamond ? 2 : 1));
    }
    QCOMPARE(form.m_form.findChild<QLabel*>("l12")->text().count('y'), 4096);
}

void FormsTest::Evaluated()
{
    struct Peer : FormPeer
    {
        QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) override
        {
            m_seen << (FormBinding::EvaluatedObject() ? FormBinding::EvaluatedObject()->objectName() : "null")
                    + FormBinding::EvaluatedProperty();
            return FormPeer::GetValue(identifier, defaultValue);
        }
        QStringList m_seen;
    } peer;
    Form form;
    form.m_binding->SetDataPeer(&peer);
    form.Add<QLabel>("w", {{"~text", "a"}});
    form.m_binding->Bind();
    QCOMPARE(peer.m_seen.join(" "), QString("w~text"));
    QVERIFY(!FormBinding::EvaluatedObject() && FormBinding::EvaluatedProperty().isEmpty());
    form.m_binding->Unbind();
}

void FormsTest::Formats()
{
    Form form;
    form.m_peer.Set("rpm", 27.972578296094497);
    QLabel* const label = form.Add<QLabel>("w", {{"~text", "rpm"}, {"text_format", "{:.1f} rpm"}});
    QVERIFY(form.m_binding->Bind());
    QCOMPARE(label->text(), QString("28.0 rpm"));
    form.m_peer.Set("rpm", "text");
    form.Turn();
    QCOMPARE(label->text() + form.Told(), QString("text"));
    form.m_peer.Set("rpm", 1234567);
    label->setLocale(QLocale("de_DE"));
    label->setProperty("text_format", "{:L}");
    form.Turn();
    QCOMPARE(label->text(), QString("1.234.567"));
    label->setProperty("text_format", "{:s}");
    form.Turn();
    QCOMPARE(label->text() + "; " + form.Told(), QString("1234567; w: Evaluation ~text -1+0"));
}

/// Messages stay short, and show no control characters, whatever the form and the data hold.
void FormsTest::Hostile_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");
    const QString longText = QString("a\n").repeated(1000000);
    const QVariantList longList = QVector<QVariant>(TEST_LONGEST, 7).toList();
    const QVariantMap map = {{"a", 1}};
    const auto row = [](const char* name, const char* kind, const QString& property, const QString& statement,
                        const QVariant& value, const QString& told) {
        QTest::newRow(name) << QString(kind) << property << statement << value << (told.isEmpty() ? told : ": " + told);
    };
    row("list as items", "combo", "~items", "v", longList, "NotTaken ~items -1+0");
    row("map as items", "combo", "~items", "v", map, "NotTaken ~items -1+0");
    row("list as number", "slider", "_value", "v", longList, "NotTaken _value -1+0");
    row("list as text", "label", "~text", "v", longList, "NotTaken ~text -1+0");
    row("map as text", "label", "~text", "v", map, "NotTaken ~text -1+0");
    row("text as number", "slider", "~value", "v", longText, "NotTaken ~value -1+0");
    row("long text", "edit", "~toolTip", "v", longText, "");
    row("image", "label", "~pixmap", "v", longText, "NotTaken ~pixmap -1+0");
    row("key", "label", "~text", "v['" + longText + "']", map, "NoValue ~text -1+0");
    row("long statement", "label", "~text", "v " + longText, 1, "LeftOver ~text 2+1");
    row("long path", "label", "~text", "@Widget\\" + QString("a").repeated(1000000) + ":text", 1,
        "UnknownObject ~text 0+1000013");
    row("empty path", "label", "~text", "@TopWidget\\:text", 1, "NoValue ~text -1+0");
    row("control characters", "label", "~a\n\x01\x7f", "v", 1, "UnknownProperty ~a\n\x01\x7f -1+0");
    row("long property", "label", "~" + longText, "v", 1, "UnknownProperty ~" + longText + " -1+0");
    row("blank", "label", "~ ", "v", 1, "UnknownProperty ~  -1+0");
    row("marker alone", "label", "_", "v", 1, "NotAStatement _ -1+0");
    row("half an entry", "label", "~a[", "v", 1, "UnknownProperty ~a[ -1+0");
}

void FormsTest::Hostile()
{
    QFETCH(QString, kind);
    QFETCH(QString, property);
    QFETCH(QString, statement);
    QFETCH(QVariant, value);
    QFETCH(QString, expected);
    Form form;
    form.m_peer.Set("v", value);
    QWidget* const widget = NewWidget(kind, &form.m_form);
    form.m_binding->Bind(widget, property, statement);
    QVERIFY2(form.Told() == expected, qPrintable(form.Problems().left(200)));
    for (const FormProblem& problem : form.m_binding->Problems()) {
        const QString& message = problem.message;
        const auto isPrint = [](QChar character) { return character.isPrint(); };
        QVERIFY2(message.size() < 5000, qPrintable(message.left(1000)));
        QVERIFY2(std::all_of(message.begin(), message.end(), isPrint), qPrintable(message));
    }
    form.m_peer.Set("v", QVariant());
    form.Turn();
    form.m_binding->Save();
    form.m_binding->Unbind();
    QCOMPARE(form.m_peer.m_observers.count(), 0);
}

QTEST_MAIN(FormsTest)
#include "tst_forms.moc"
