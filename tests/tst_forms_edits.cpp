#include <QFocusEvent>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTest>
#include <QUuid>

#include "support/formfixture.h"

/// What users edit: what stays, what is saved when and as what, and what is refused.
class FormEditsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Edits_data();
    void Edits();
    void TakesData();
    void EditAfterSave();
    void NoNotifier();
    void BoundKeepsEdit();
    void SavedAs_data();
    void SavedAs();
    void NoIdentifier();
    void Refusals();
    void SavesInOrder();
    void SavesThrough_data();
    void SavesThrough();
    void Policies_data();
    void Policies();
    void TypedAsData();
    void CheckedValue();
    void PolicyProperty();
    void SideEffects_data();
    void SideEffects();
    void FormattedEdits_data();
    void FormattedEdits();
};

/// Steps over a line edit with «_text» = v, which is 'old' at first: "type x", "data x", "save", "revert", "turn",
/// each followed by what the edit shows and, in parentheses, whether it is edited.
void FormEditsTest::Edits_data()
{
    Rows({{
        "type new => new (edited)",
        "type new, type old => old",
        "type new, data x, turn => new (edited)",
        "type new, data new => new",
        "type new, data x, turn, type old, turn => x",
        "type new, data x, turn, revert => x",
        "type new, revert => old",
        "type new, save, turn => new",
        "type new, save, data x, turn => x",
        "type new, save, type old => old (edited)",
        "data x, turn, type y, data x, turn => y (edited)",
        "data x, type y, turn => y (edited)",
    }});
}

void FormEditsTest::Edits()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    Form form;
    form.m_peer.Set("v", "old");
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"_text", "v"}});
    QVERIFY(form.m_binding->Bind());
    bool wasEdited = false;
    for (const QString& step : given.split(", ")) {
        const QString value = step.section(' ', 1);
        if (step.startsWith("type"))
            edit->setText(value);
        else if (step.startsWith("data"))
            form.m_peer.Set("v", value);
        else if (step == "save")
            QCOMPARE(form.m_binding->Save().saved, 1);
        else if (step == "revert")
            form.m_binding->Revert();
        form.Turn();
        // Told with the turn at the latest.
        const bool isEdited = form.m_told.isEmpty() ? wasEdited : form.m_told.last() == "edited";
        form.m_told.removeAll("saved 1");
        QCOMPARE(form.m_binding->IsEdited(), isEdited);
        wasEdited = isEdited;
    }
    QCOMPARE(edit->text() + (form.m_binding->IsEdited() ? " (edited)" : ""), expected);
    QCOMPARE(form.Bound(edit).value, form.m_peer.Get("v"));
}

void FormEditsTest::TakesData()
{
    Form form;
    form.m_binding->SetEditPolicy(FormBinding::TakeData);
    QSpinBox* const spin = form.Add<QSpinBox>("s", {{"_value", "v"}});
    form.m_peer.Set("v", 1);
    form.m_binding->Bind();
    spin->setValue(5);
    QVERIFY(form.m_binding->IsEdited());
    form.m_peer.Set("v", 2);
    form.Turn();
    QCOMPARE(spin->value(), 2);
    QCOMPARE(form.Told(), QString("edited; not edited"));
}

void FormEditsTest::EditAfterSave()
{
    Form form;
    form.m_peer.Set("v", 1);
    QSpinBox* const spin = form.Add<QSpinBox>("s", {{"_value", "v"}});
    form.m_binding->Bind();
    // Back to what the last evaluation gave, before the next.
    for (const int value : {5, 1}) {
        spin->setValue(value);
        QCOMPARE(form.m_binding->Save().saved, 1);
    }
    QCOMPARE(Exact(form.m_peer.Get("v")), QString("1"));
    form.Turn();
    QVERIFY(!form.m_binding->IsEdited());
    // In the type that the data have by now, delivered or not.
    form.m_peer.Set("v", "1");
    spin->setValue(7);
    QCOMPARE(form.m_binding->Save().saved, 1);
    QCOMPARE(Exact(form.m_peer.Get("v")), QString("'7'"));
}

void FormEditsTest::NoNotifier()
{
    Form form;
    form.m_peer.Set("v", "old");
    QLabel* const label = form.Add<QLabel>("w", {{"_text", "v"}});
    QSpinBox* const spin = form.Add<QSpinBox>("s", {{"_value", "n"}, {"value", 7}});
    QLabel* const reader = form.Add<QLabel>("r", {{"~text", "@TopWidget\\w:text"}});
    QLineEdit* const through = form.Add<QLineEdit>("t", {{"_text", "@TopWidget\\w:text"}});
    form.m_binding->Bind();
    label->setText("new");
    QCOMPARE(form.Bound(label).edited, true);
    form.Turn();
    QCOMPARE(form.Told(), QString("s: NoValue _value -1+0; edited"));
    QCOMPARE(form.m_binding->Save().saved, 1);
    QCOMPARE(form.m_peer.Get("v").toString(), QString("new"));
    form.Turn();
    QCOMPARE(reader->text(), QString("new"));
    through->setText("other");
    QCOMPARE(form.m_binding->Save(through).saved, 1);
    form.Turn();
    QCOMPARE(label->text() + ", " + reader->text(), QString("other, other"));
    form.m_binding->Revert(label);
    {
        const QSignalBlocker blocker(spin);
        spin->setValue(8);
    }
    QVERIFY(form.m_binding->IsEdited(spin) && !form.m_binding->IsEdited(label));
    QCOMPARE(form.m_binding->Save(label).saved, 0);
    QCOMPARE(form.m_binding->Save(spin).saved, 1);
    QCOMPARE(Exact(form.m_peer.Get("n")), QString("8"));
}

void FormEditsTest::BoundKeepsEdit()
{
    Form form;
    form.m_peer.m_values = {{"items", QStringList{"a", "b"}}, {"v", "a"}};
    QComboBox* const combo = form.Add<QComboBox>("c", {{"_currentText", "v"}, {"~items", "items"}});
    QVERIFY(form.m_binding->Bind());
    QCOMPARE(combo->currentText(), QString("a"));
    combo->setCurrentText("b");
    form.m_peer.Set("items", QStringList{"x", "b", "a"});
    form.Turn();
    QCOMPARE(combo->currentText(), QString("b"));
    QVERIFY(form.m_binding->IsEdited());
    form.m_binding->Revert();
    QCOMPARE(combo->currentText(), QString("a"));
    form.m_peer.Set("items", QStringList{"a"});
    form.Turn();
    QVERIFY(!form.m_binding->IsEdited());
    QCOMPARE(form.Problems(), QString());
}

/// Rows «present value; widget, property, entered => stored», or «!» for a refusal.
void FormEditsTest::SavedAs_data()
{
    Rows({{
        "5; edit, text, '7' => 7",
        "5; edit, text, 'abc' => !",
        "5; edit, text, '7.5' => !",
        "5; edit, text, '99999999999' => !",
        "5; edit, text, '' => !",
        "5.0; edit, text, '7' => 7.0",
        "5.0; spin, value, 7 => 7.0",
        "5; double, value, 7.0 => 7",
        "5; double, value, 7.5 => !",
        "'5'; spin, value, 7 => '7'",
        "true; edit, text, 'false' => false",
        "true; edit, text, 'x' => !",
        "1; check, checked, false => 0",
        "0; check, checked, true => 1",
        "false; check, checked, true => true",
        "-; spin, value, 7 => 7",
        "12.3456; double, value, 12.35 => 12.345599999999999",
        "12.3456; double, value, 12.36 => 12.359999999999999",
    }});
}

void FormEditsTest::SavedAs()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    const QString parameters = given.section("; ", 1);
    Form form;
    QWidget* const widget = NewWidget(parameters.section(", ", 0, 0), &form.m_form);
    form.m_peer.Set("v", Operands(given.section("; ", 0, 0)).value(0));
    const QString property = parameters.section(", ", 1, 1);
    QVERIFY(form.m_binding->Bind(widget, "_" + property, "v"));
    widget->setProperty(property.toLatin1(), Operands(parameters.section(", ", 2)).value(0));
    const QString before = Exact(form.m_peer.Get("v"));
    const FormSaveResult result = form.m_binding->Save();
    const QString after = Exact(form.m_peer.Get("v"));
    QCOMPARE(result.refused.isEmpty() ? after : "!", expected);
    QCOMPARE(result.saved, int(before != after));
    QCOMPARE(form.m_binding->IsEdited(), !result.refused.isEmpty());
    QVERIFY(result.refused.isEmpty() || before == after);
}

/// What is no such value is not saved as an empty one.
void FormEditsTest::NoIdentifier()
{
    Form form;
    const QUuid identifier = QUuid::createUuid();
    form.m_peer.Set("v", identifier);
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"_text", "v"}});
    form.m_binding->Bind();
    edit->setText("abc");
    QCOMPARE(form.m_binding->Save().refused.count(), 1);
    QCOMPARE(form.m_peer.Get("v").toUuid(), identifier);
}

void FormEditsTest::Refusals()
{
    Form form;
    form.m_peer.m_values = {{"v", 1}, {"r", 1}};
    form.m_peer.m_refused << "r";
    QLineEdit* const text = form.Add<QLineEdit>("text", {{"_text", "v"}});
    QSpinBox* const sum = form.Add<QSpinBox>("sum", {{"_value", "v + 1"}});
    QSpinBox* const refused = form.Add<QSpinBox>("refused", {{"_value", "r"}});
    form.m_binding->Bind();
    text->setText("abc");
    sum->setValue(8);
    refused->setValue(8);
    form.m_told.clear();
    const QString all = "text: NotStored _text -1+0; sum: NotStored _value -1+0; refused: NotStored _value -1+0";
    for (int i = 0; i < 2; ++i) {
        const FormSaveResult result = form.m_binding->Save();
        QCOMPARE(result.saved, 0);
        QCOMPARE(result.refused.count(), 3);
        QCOMPARE(result.refused.at(0).message,
                 QString("_text of QLineEdit \"text\": \"abc\" cannot be saved as an integer."));
        QCOMPARE(form.Problems(), all);
    }
    QCOMPARE(form.Told(), all + "; saved 0; saved 0");
    text->setText("abcd");
    QCOMPARE(form.Problems(), all.section("; ", 1));
    form.m_binding->Revert(sum);
    QCOMPARE(form.Problems(), all.section("; ", 2));
    form.m_peer.m_refused.clear();
    text->setText("3");
    QCOMPARE(form.m_binding->Save().saved, 2);
    QCOMPARE(form.Problems(), QString());
    QVERIFY(!form.m_binding->IsEdited());
}

void FormEditsTest::SavesInOrder()
{
    struct Peer : FormPeer
    {
        bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                         QFlags<IDataPeer::ChangeValueFlag> flags) override
        {
            m_order << identifier.GetName();
            return FormPeer::ChangeValue(identifier, value, flags);
        }
        QStringList m_order;
    } peer;
    Form form;
    form.m_binding->SetDataPeer(&peer);
    QVector<QLineEdit*> edits;
    for (const char* name : {"c", "a", "b"})
        edits << form.Add<QLineEdit>(name, {{"_text", name}});
    form.m_binding->Bind();
    for (int i = 2; i >= 0; --i)
        edits.at(i)->setText("x");
    QCOMPARE(form.m_binding->Save().saved, 3);
    QCOMPARE(peer.m_order.join(""), QString("cab"));
    QCOMPARE(form.m_binding->Save().saved, 0);
    form.m_binding->Unbind();
}

/// Rows «statement of the first; of the second => data», where the first is edited and «other» is the second.
void FormEditsTest::SavesThrough_data()
{
    Rows({{
        "_text = @TopWidget\\other:text; _text = v => 'new'; saved 2",
        "_text = @TopWidget\\other:text; ~text = v => 'old'; first: NotStored _text -1+0",
        "_text = @TopWidget\\other:placeholderText; _text = v => 'old'; saved 1",
        "_text = (v); ~text = v => 'new'; saved 1",
        "_text = v .'key'; ~text = v => 'old'; first: NotStored _text -1+0",
    }});
}

void FormEditsTest::SavesThrough()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    Form form;
    form.m_peer.Set("v", "old");
    QLineEdit* const first = form.Add<QLineEdit>("first");
    QLineEdit* const other = form.Add<QLineEdit>("other");
    const QString one = given.section("; ", 0, 0);
    const QString two = given.section("; ", 1);
    QVERIFY(form.m_binding->Bind(first, one.section(" = ", 0, 0), one.section(" = ", 1)));
    QVERIFY(form.m_binding->Bind(other, two.section(" = ", 0, 0), two.section(" = ", 1)));
    form.m_told.clear();
    first->setText("new");
    const int saved = form.m_binding->Save().saved;
    const QString result = saved > 0 ? QString("saved %1").arg(saved) : form.m_told.value(1);
    QCOMPARE(Exact(form.m_peer.Get("v")) + "; " + result, expected);
    form.Turn();
    QCOMPARE(other->text(), form.m_peer.Get("v").toString());
}

/// Rows «widget, property; policy; steps => how often it was saved after each».
void FormEditsTest::Policies_data()
{
    Rows({{
        "edit, text; 0; set, finish => 0, 0",
        "edit, text; 1; set, set, finish, finish => 0, 0, 1, 1",
        "edit, text; 2; set, set, finish => 1, 2, 2",
        "edit, placeholderText; 1; set, finish => 0, 1",
        "edit, placeholderText; 2; set, finish => 0, 1",
        "spin, value; 1; set, finish => 0, 1",
        "slider, value; 1; set, finish => 0, 1",
        "check, checked; 1; click, click => 1, 2",
        "check, checked; 2; click => 1",
        "combo, currentIndex; 1; set, finish => 0, 1",
        "combo, currentText; 1; set, return, return => 0, 1, 1",
        "label, text; 1; set, leave => 0, 1",
        "label, text; 2; set, leave => 0, 1",
        "slider, value; 1; set, leave => 0, 1",
        "progress, value; 1; set, set => 1, 2",
    }});
}

void FormEditsTest::Policies()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    Form form;
    form.m_binding->SetSavePolicy(static_cast<FormBinding::SavePolicy>(given.section("; ", 1, 1).toInt()));
    QWidget* const widget = NewWidget(given.section(", ", 0, 0), &form.m_form);
    const QByteArray property = given.section("; ", 0, 0).section(", ", 1).toLatin1();
    if (QComboBox* const combo = qobject_cast<QComboBox*>(widget)) {
        combo->addItems({"a", "b", "c"});
        combo->setEditable(property == "currentText");
        combo->setInsertPolicy(QComboBox::NoInsert);
    }
    form.m_peer.Set("v", property == "checked" ? QVariant(false) : QVariant(0));
    QVERIFY(form.m_binding->Bind(widget, "_" + property, "v"));
    QStringList saves;
    int value = 0;
    form.m_peer.m_writes = 0;
    for (const QString& step : given.section("; ", 2).split(", ")) {
        if (step == "set")
            widget->setProperty(property, ++value);
        else if (step == "click")
            QMetaObject::invokeMethod(widget, "click");
        else if (step == "return")
            QTest::keyClick(widget, Qt::Key_Return);
        else if (step == "leave")
            QCoreApplication::sendEvent(widget, std::make_unique<QFocusEvent>(QEvent::FocusOut).get());
        else if (QSlider* const slider = qobject_cast<QSlider*>(widget))
            Q_EMIT slider->sliderReleased();
        else if (QComboBox* const combo = qobject_cast<QComboBox*>(widget))
            Q_EMIT combo->activated(1);
        else
            QMetaObject::invokeMethod(widget, "editingFinished");
        form.Turn();
        saves << QString::number(form.m_peer.m_writes);
    }
    QCOMPARE(saves.join(", "), expected);
    QCOMPARE(form.m_told.filter("saved 1").count(), form.m_peer.m_writes);
    QCOMPARE(form.m_told.filter("saved").count(), form.m_peer.m_writes);
}

/// What one write of a delivery does to other widgets is no edit, and is not saved.
void FormEditsTest::SideEffects_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("the one that is unchecked is first") << "v = 1"
                                                        << "v = 2";
    QTest::newRow("the one that is checked is first") << "v = 2"
                                                      << "v = 1";
    QTest::newRow("each has its variable") << "a"
                                           << "b";
    QTest::newRow("each has the other's variable") << "b"
                                                   << "a";
}

void FormEditsTest::SideEffects()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    Form form;
    const auto set = [&form](int number) {
        form.m_peer.Set("v", number);
        form.m_peer.Set("a", number == 1);
        form.m_peer.Set("b", number == 2);
    };
    set(1);
    form.m_binding->SetSavePolicy(FormBinding::SaveAtOnce);
    QRadioButton* const left = form.Add<QRadioButton>("l", {{"_checked", first}});
    QRadioButton* const right = form.Add<QRadioButton>("r", {{"_checked", second}});
    QSlider* const slider = form.Add<QSlider>("s", {{"_value", "v"}});
    QSpinBox* const spin = form.Add<QSpinBox>("n", {{"_value", "v"}});
    connect(slider, &QSlider::valueChanged, spin, &QSpinBox::setValue);
    form.m_binding->Bind();
    form.m_peer.m_writes = 0;
    const bool wasLeft = left->isChecked();
    set(2);
    form.Turn();
    QVERIFY(left->isChecked() != wasLeft && right->isChecked() == wasLeft);
    QCOMPARE(spin->value(), 2);
    QCOMPARE(form.Told() + form.Problems(), QString());
    QCOMPARE(form.m_peer.m_writes, 3);
    QVERIFY(!form.m_binding->IsEdited());
}

/// What the data hold meanwhile is no edit.
void FormEditsTest::TypedAsData()
{
    Form form;
    form.m_peer.Set("v", "old");
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"_text", "v"}});
    form.m_binding->Bind();
    edit->setText("typed");
    form.m_peer.Set("v", "new");
    form.Turn();
    QCOMPARE(form.Told() + edit->text(), QString("editedtyped"));
    edit->setText("new");
    form.Turn();
    QCOMPARE(form.Told(), QString("not edited"));
    QCOMPARE(form.m_binding->Save().saved, 0);
}

/// The buttons tell of what their container has no signal for.
void FormEditsTest::CheckedValue()
{
    Form form;
    form.m_peer.Set("mode", 1);
    QGroupBox* const box = form.Add<QGroupBox>("box", {{"_checkedValue", "mode"}});
    QRadioButton* const one = form.Add<QRadioButton>("one", {{"value", 1}}, box);
    QRadioButton* const two = form.Add<QRadioButton>("two", {{"value", 2}}, box);
    QLabel* const label = form.Add<QLabel>("label", {{"~text", "@TopWidget\\box:checkedValue"}});
    QVERIFY(form.m_binding->Bind());
    QCOMPARE(form.Told() + label->text(), QString("1"));
    two->click();
    form.Turn();
    QCOMPARE(form.Told() + label->text(), QString("edited2"));
    QCOMPARE(form.m_binding->Save().saved, 1);
    QCOMPARE(form.m_peer.Get("mode"), QVariant(2));
    form.m_binding->SetSavePolicy(FormBinding::SaveOnEditingFinished);
    one->click();
    QCOMPARE(form.m_peer.Get("mode"), QVariant(1));
    form.m_binding->Unbind();
    two->click();
    delete std::exchange(form.m_binding, nullptr);
    one->click();
    two->click();
    QCOMPARE(form.m_peer.Get("mode"), QVariant(1));
}

void FormEditsTest::PolicyProperty()
{
    Form form;
    QWidget* const page = form.Add<QWidget>("page", {{"savePolicy", "atOnce"}});
    QGroupBox* const group = form.Add<QGroupBox>("group", {}, page);
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"_text", "v"}}, group);
    form.m_binding->Bind();
    const struct
    {
        const char* policy;
        bool isSaved;
    } steps[]
        = {{"", true}, {"onRequest", false}, {"nonsense\n", true}, {"atOnce", true}, {"onEditingFinished", false}};
    for (const auto& step : steps) {
        group->setProperty("savePolicy", *step.policy ? QVariant(step.policy) : QVariant());
        if (QByteArray(step.policy) == "nonsense\n")
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("QGroupBox \"group\".*nonsense\\?"));
        edit->setText(edit->text() + "x");
        QCOMPARE(form.m_peer.Get("v").toString() == edit->text(), step.isSaved);
    }
}

/// Rows «format, present value, typed text => stored», or «!» for a refusal.
void FormEditsTest::FormattedEdits_data()
{
    Rows({{
        "{:.1f} rpm, 27.97, 30.5 rpm => 30.5",
        "{:.1f} rpm, 27.97, 30.5 => 30.5",
        "{:.1f} rpm, 27.97, 30.5 rp => !",
        "{} rpm, 27, 30 rpm => 30",
        "{} rpm, 27, 30.5 rpm => !",
        "{} rpm, 27, rpm => !",
        "{} rpm, 'text', 30 rpm => '30 rpm'",
        "{:.1f, 27, 30 => 30",
        "{:.1f, 27, x => !",
        "{:x}, 2.5, 3.5 => 3.5",
    }});
}

void FormEditsTest::FormattedEdits()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    Form form;
    form.m_peer.Set("v", Operands(given.section(", ", 1, 1)).value(0));
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"_text", "v"}, {"text_format", given.section(", ", 0, 0)}});
    QVERIFY(form.m_binding->Bind());
    QVERIFY(!form.m_binding->IsEdited());
    edit->setText(given.section(", ", 2));
    const FormSaveResult result = form.m_binding->Save();
    QCOMPARE(result.refused.isEmpty() ? Exact(form.m_peer.Get("v")) : "!", expected);
    form.m_binding->Revert();
    QVERIFY(!form.m_binding->IsEdited());
}

QTEST_MAIN(FormEditsTest)
#include "tst_forms_edits.moc"
