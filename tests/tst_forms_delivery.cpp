#include <QElapsedTimer>
#include <QMainWindow>
#include <QTest>
#include <QTextEdit>

#include <atomic>
#include <functional>
#include <thread>

#include "support/formfixture.h"

/// When changes arrive, what a change of language does, and who may be destroyed when.
class FormDeliveryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Burst();
    void ReadOnce();
    void Interval();
    void Threads();
    void Translation_data();
    void Translation();
    void TranslatedStatements();
    void TranslationIsNoEdit();
    void TranslationShowsDataAgain();
    void TranslationWithNewData();
    void TranslationEndsBinding_data();
    void TranslationEndsBinding();
    void TranslationUnbinds();
    void Destruction_data();
    void Destruction();
    void Getters_data();
    void Getters();
};

void FormDeliveryTest::Burst()
{
    Form form;
    QVector<QLabel*> labels;
    for (int i = 0; i < 50; ++i)
        labels << form.Add<QLabel>("w", {{"~text", "a + b"}});
    form.m_binding->Bind();
    QCOMPARE(form.m_peer.m_observers.count(), 2);
    for (int i = 0; i < 100; ++i) {
        form.m_peer.Set("a", double(i));
        form.m_peer.Set("b", double(i));
    }
    QCOMPARE(labels.last()->text(), QString());
    form.Turn();
    QCOMPARE(labels.last()->text(), QString("198"));
    form.m_peer.Set("a", 0);
    form.m_binding->Update();
    form.Turn();
    for (const BoundProperty& bound : form.m_binding->BoundProperties())
        QCOMPARE(bound.evaluations, quint64(3));
    QCOMPARE(labels.last()->text(), QString("99"));
}

/// A variable is asked for once in a delivery, and again when it changes meanwhile.
void FormDeliveryTest::ReadOnce()
{
    Form form;
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"~text", "a"}});
    form.Add<QLabel>("first", {{"~text", "a + b"}});
    QLabel* const last = form.Add<QLabel>("last", {{"~text", "b + a"}});
    form.m_binding->Bind();
    form.m_peer.m_reads.clear();
    form.m_peer.Set("a", 1);
    form.m_peer.Set("b", 2.0);
    form.Turn();
    QCOMPARE(form.m_peer.m_reads, QString("ab"));
    connect(edit, &QLineEdit::textChanged, [&] { form.m_peer.Set("a", 5); });
    form.m_peer.Set("a", 3);
    form.Turn();
    QCOMPARE(last->text(), QString("7"));
}

void FormDeliveryTest::Interval()
{
    Form form;
    const int interval = 60;
    form.m_binding->SetDeliveryInterval(interval);
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"~text", "a"}});
    form.m_binding->Bind();
    QElapsedTimer timer;
    timer.start();
    QVector<qint64> times;
    connect(edit, &QLineEdit::textChanged, [&] { times << timer.elapsed(); });
    form.m_peer.Set("a", 1);
    form.Turn();
    QCOMPARE(edit->text(), QString("1"));
    for (int i = 2; i < 5; ++i) {
        form.m_peer.Set("a", i);
        form.Turn();
        QCOMPARE(edit->text(), QString::number(i - 1));
        QTRY_COMPARE(edit->text(), QString::number(i));
        QVERIFY(times.at(i - 1) - times.at(i - 2) >= interval - 2);
    }
    form.m_peer.Set("a", 9);
    form.m_binding->SetDeliveryInterval(0);
    form.Turn();
    QCOMPARE(edit->text(), QString("9"));
}

void FormDeliveryTest::Threads()
{
    Form form;
    QLabel* const label = form.Add<QLabel>("w", {{"~text", "a + b + c"}});
    form.m_binding->Bind();
    const int last = 3000;
    std::atomic<int> running(3);
    std::vector<std::thread> threads;
    for (const QString name : {"a", "b", "c"}) {
        threads.emplace_back([&form, &running, name] {
            for (int i = 0; i <= last; ++i)
                form.m_peer.Set(name, double(i));
            --running;
        });
    }
    QWidget* const page = form.Add<QWidget>("page");
    form.Add<QLabel>("inner", {{"~text", "a"}}, page);
    while (running > 0) {
        form.m_binding->Bind(page);
        form.Turn();
        form.m_binding->Unbind(page);
    }
    for (std::thread& thread : threads)
        thread.join();
    form.Turn();
    QCOMPARE(label->text(), QString::number(3 * last));
    form.m_binding->Unbind();
    QCOMPARE(form.m_peer.m_observers.count(), 0);
}

/// A window with a form whose retranslateUi() is given.
class TranslatedWindow : public QMainWindow
{
public:
    void changeEvent(QEvent* event) override
    {
        if (event->type() == QEvent::LanguageChange)
            m_retranslate();
        QMainWindow::changeEvent(event);
    }

    std::function<void()> m_retranslate;
};

/// Rows «statement; typed; written by the translation, its statement => shown; edited; problems; without a value».
void FormDeliveryTest::Translation_data()
{
    Rows({{
        "v; -; plain, v => data; false; ; plain",
        "v; typed; plain, v => typed; true; ; plain",
        "v; typed; -, v => typed; true; ; designed",
        "v; -; plain, 'new' + v => newdata; false; ; plain",
        "v; typed; plain, 'new' + v => typed; true; ; plain",
        "v; -; plain, v + => data; false; e: LeftOver _text 2+1; plain",
        "v; -; -,  => data; false; ; data",
    }});
}

void FormDeliveryTest::Translation()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    const QStringList steps = given.split("; ");
    const QString plain = steps.at(2).section(", ", 0, 0);
    Form form;
    TranslatedWindow window;
    window.setCentralWidget(&form.m_form);
    form.m_peer.Set("v", "data");
    form.m_binding->SetSavePolicy(FormBinding::SaveOnRequest);
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"text", "designed"}, {"_text", steps.at(0)}});
    QVERIFY(form.m_binding->Bind());
    if (steps.at(1) != "-")
        edit->setText(steps.at(1));
    form.m_binding->SetSavePolicy(FormBinding::SaveAtOnce);
    window.m_retranslate = [&] {
        edit->setProperty("_text", steps.at(2).section(", ", 1));
        if (plain != "-")
            edit->setText(plain);
    };
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &change);
    QCOMPARE(form.m_binding->IsEdited(), steps.at(1) != "-");
    form.Turn();
    const QString shown = edit->text();
    const bool isEdited = form.m_binding->IsEdited();
    const QString problems = form.Problems();
    QCOMPARE(form.m_peer.Get("v").toString(), QString("data"));
    form.m_binding->Revert();
    form.m_peer.Set("v", QVariant());
    form.m_binding->Bind(edit, "_text", form.Bound(edit).object ? "v" : "'data'");
    QCOMPARE((QStringList{shown, QVariant(isEdited).toString(), problems, edit->text()}.join("; ")), expected);
    form.m_form.setParent(nullptr);
}

void FormDeliveryTest::TranslatedStatements()
{
    Form form;
    form.m_peer.Set("v", 1);
    QLabel* const label = form.Add<QLabel>("w", {{"text", "designed"}, {"~text", "'speed ' + v"}});
    form.m_binding->Bind();
    form.m_binding->SetDefaultPackage("later");
    label->setProperty("~text", "'Drehzahl ' + v");
    label->setProperty("~toolTip", "v");
    form.Turn();
    QCOMPARE(label->text() + label->toolTip(), QString("Drehzahl 11"));
    QStringList packages;
    for (const BoundProperty& bound : form.m_binding->BoundProperties())
        packages << bound.variables.first().GetPackage();
    QCOMPARE(packages, QStringList({"", "later"}));
    label->setProperty("_text", "v");
    form.Turn();
    QCOMPARE(form.Problems(), QString("w: Duplicate _text -1+0"));
    label->setProperty("~text", QVariant());
    label->setProperty("_text", "v + 0");
    form.Turn();
    QCOMPARE(label->text() + form.Problems(), QString("10"));
    label->setProperty("_text", "");
    label->setProperty("~toolTip", "");
    form.Turn();
    QCOMPARE(form.m_binding->BoundProperties().count(), 0);
    QCOMPARE(form.m_peer.m_observers.count(), 0);
    QCOMPARE(label->text(), QString("10"));
}

/// Whatever the handler of the event writes, into other bound properties too.
void FormDeliveryTest::TranslationIsNoEdit()
{
    Form form;
    TranslatedWindow window;
    window.setCentralWidget(&form.m_form);
    form.m_peer.Set("v", 2);
    form.m_binding->SetSavePolicy(FormBinding::SaveAtOnce);
    QSpinBox* const spin = form.Add<QSpinBox>("s", {{"_value", "v"}});
    QLabel* const label = form.Add<QLabel>("w", {{"~text", "@TopWidget\\s:value"}});
    form.m_binding->Bind();
    window.m_retranslate = [&] {
        spin->setValue(7);
        label->setText("plain");
    };
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &change);
    form.Turn();
    QCOMPARE(spin->value(), 2);
    QCOMPARE(label->text(), QString("2"));
    QCOMPARE(form.m_peer.m_writes, 1);
    QCOMPARE(form.Told(), QString());
    form.m_form.setParent(nullptr);
}

/// What new data brought between the change of language and the end of its turn is not Designer's.
void FormDeliveryTest::TranslationWithNewData()
{
    Form form;
    TranslatedWindow window;
    window.m_retranslate = [] {};
    window.setCentralWidget(&form.m_form);
    form.m_peer.Set("v", "data");
    form.m_binding->SetEditPolicy(FormBinding::TakeData);
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"text", "designed"}, {"_text", "v"}});
    form.m_binding->Bind();
    edit->setText("typed");
    form.Turn();
    QCoreApplication::postEvent(&window, new QEvent(QEvent::LanguageChange));
    form.m_peer.Set("v", "newer");
    form.Turn();
    QCOMPARE(edit->text(), QString("newer"));
    form.m_peer.Set("v", QVariant());
    form.Turn();
    QCOMPARE(edit->text(), QString("designed"));
    form.m_form.setParent(nullptr);
}

/// What is compared by its values alone, and statements that were none in the language before.
void FormDeliveryTest::TranslationShowsDataAgain()
{
    Form form;
    TranslatedWindow window;
    window.setCentralWidget(&form.m_form);
    form.m_peer.Set("v", "data");
    form.m_peer.Set("l", QVariantList{"one", "two"});
    QComboBox* const combo = form.Add<QComboBox>("c", {{"~items", "l"}});
    QTextEdit* const text = form.Add<QTextEdit>("t", {{"~html", "v"}});
    QLabel* const wrong = form.Add<QLabel>("w", {{"~text", "v + ("}, {"~toolTip", ""}});
    form.m_binding->Bind();
    window.m_retranslate = [&] {
        combo->setItemText(0, "plain");
        text->setHtml("plain");
        wrong->setProperty("~text", "v");
        wrong->setProperty("~toolTip", "v + v");
    };
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &change);
    form.Turn();
    QCOMPARE(combo->itemText(0), QString("one"));
    QCOMPARE(text->toPlainText(), QString("data"));
    QCOMPARE(wrong->text() + ", " + wrong->toolTip() + form.Problems(), QString("data, datadata"));
    form.m_form.setParent(nullptr);
}

/// A write that puts an edit back is told by the widget, and whoever hears of it may end the binding.
void FormDeliveryTest::TranslationEndsBinding_data()
{
    QTest::addColumn<QString>("operation");
    for (const char* const operation : {"bind", "bind one", "update", "revert", "save", "turn"})
        QTest::newRow(operation) << operation;
}

void FormDeliveryTest::TranslationEndsBinding()
{
    QFETCH(QString, operation);
    Form form;
    TranslatedWindow window;
    window.setCentralWidget(&form.m_form);
    form.m_peer.Set("v", "data");
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"_text", "v"}});
    QLabel* const label = form.Add<QLabel>("w", {{"~text", "v"}});
    form.m_binding->Bind();
    edit->setText("typed");
    window.m_retranslate = [&] {
        edit->setText("plain");
        label->setProperty("~text", "v + v");
        connect(edit, &QLineEdit::textChanged, [&] { delete std::exchange(form.m_binding, nullptr); });
    };
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &change);
    FormBinding* const binding = form.m_binding;
    if (operation == "bind")
        binding->Bind();
    else if (operation == "bind one")
        binding->Bind(label, "~toolTip", "v");
    else if (operation == "update")
        binding->Update();
    else if (operation == "revert")
        binding->Revert();
    else if (operation == "save")
        binding->Save();
    form.Turn();
    QVERIFY(!form.m_binding);
    QCOMPARE(form.m_peer.m_observers.count(), 0);
    form.m_peer.Set("v", "later");
    form.m_form.setParent(nullptr);
}

/// When the edit is put back that the handler of the event wrote over.
void FormDeliveryTest::TranslationUnbinds()
{
    Form form;
    TranslatedWindow window;
    window.setCentralWidget(&form.m_form);
    QLineEdit* const edit = form.Add<QLineEdit>("e", {{"_text", "'data'"}});
    form.m_binding->Bind();
    edit->setText("typed");
    window.m_retranslate = [edit] { edit->setText("plain"); };
    connect(edit, &QLineEdit::textChanged,
            [&](const QString& text) { text == "typed" ? form.m_binding->Unbind(edit) : void(); });
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &change);
    form.Turn();
    QCOMPARE(edit->text(), QString("typed"));
    QCOMPARE(form.Told(), QString("edited; not edited"));
    form.m_form.setParent(nullptr);
}

/// Every operation is interrupted by every destruction, from slots of every signal.
void FormDeliveryTest::Destruction_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("destruction");
    for (const char* signal : {"ProblemFound", "Edits", "Saved", "valueChanged", "textChanged", "slider", "peer"}) {
        for (const char* operation :
             {"bind", "data", "edit", "leave", "save", "revert", "update", "bind one", "unbind", "language"}) {
            for (const char* destruction :
                 {"binding", "form", "page", "widget", "slider", "reader", "unbind", "rebind", "update"})
                QTest::addRow("%s %s %s", signal, operation, destruction) << signal << operation << destruction;
        }
    }
}

void FormDeliveryTest::Destruction()
{
    struct Peer : FormPeer
    {
        QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) override
        {
            m_called();
            return FormPeer::GetValue(identifier, defaultValue);
        }
        bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                         QFlags<IDataPeer::ChangeValueFlag> flags) override
        {
            const bool isTaken = FormPeer::ChangeValue(identifier, value, flags);
            m_called();
            return isTaken;
        }
        std::function<void()> m_called = [] {};
    } peer;
    QFETCH(QString, signal);
    QFETCH(QString, operation);
    QFETCH(QString, destruction);
    QPointer<QWidget> form = new QWidget;
    QPointer<FormBinding> binding = new FormBinding(form);
    binding->SetDataPeer(&peer);
    QPointer<QSpinBox> spin = new QSpinBox(form);
    spin->setObjectName("spin");
    spin->setProperty("_value", "v");
    spin->setProperty("~maximum", "@Widget:value * 2 + 10");
    QPointer<QLineEdit> edit = new QLineEdit(form);
    edit->setProperty("_text", "@TopWidget\\spin:value");
    edit->setProperty("~toolTip", "missing");
    QPointer<QWidget> page = new QWidget(form);
    QPointer<QSlider> slider = new QSlider(page);
    slider->setProperty("_value", "v");
    slider->setProperty("~maximum", "@TopWidget\\spin:value * 2");
    peer.Set("v", 500);

    int depth = 0;
    const auto interrupt = [&] {
        if (++depth > 1)
            return;
        if (destruction == "binding")
            delete binding;
        else if (destruction == "form" && !signal.endsWith("Changed")) // Qt's own code goes on in these widgets.
            delete form;
        else if (destruction == "page")
            delete page;
        else if (destruction == "slider")
            delete slider;
        else if (destruction == "widget")
            delete spin;
        else if (destruction == "reader" && signal != "textChanged")
            delete edit;
        else if (destruction == "unbind" && binding)
            binding->Unbind();
        else if (destruction == "rebind" && binding && spin)
            binding->Bind(spin, "_value", "v + 0");
        else if (destruction == "update" && binding)
            binding->Update();
    };
    const auto connectSlots = [&] {
        connect(binding, &FormBinding::ProblemFound, [&] { signal == "ProblemFound" ? interrupt() : void(); });
        connect(binding, &FormBinding::EditedChanged, [&] { signal == "Edits" ? interrupt() : void(); });
        connect(binding, &FormBinding::Saved, [&] { signal == "Saved" ? interrupt() : void(); });
        connect(edit.data(), &QLineEdit::textChanged, [&] { signal == "textChanged" ? interrupt() : void(); });
        connect(spin.data(), QOverload<int>::of(&QSpinBox::valueChanged),
                [&] { signal == "valueChanged" && destruction != "widget" ? interrupt() : void(); });
        connect(slider.data(), &QSlider::valueChanged, [&] { signal == "slider" ? interrupt() : void(); });
        peer.m_called = [&] { signal == "peer" ? interrupt() : void(); };
    };
    const auto leave = [&] {
        binding->SetSavePolicy(FormBinding::SaveOnEditingFinished);
        QCoreApplication::sendEvent(slider, std::make_unique<QFocusEvent>(QEvent::FocusOut).get());
    };
    if (operation == "bind")
        connectSlots();
    binding->Bind();
    if (!binding || !form || !spin || !edit || !slider)
        return peer.m_called = [] {}, void(delete binding), delete form;
    if (operation != "bind") {
        spin->setValue(operation == "data" ? spin->value() : 7);
        edit->setText("8");
        slider->setValue(6);
        connectSlots();
    }
    if (operation == "data")
        peer.Set("v", 12);
    else if (operation == "edit")
        spin->setValue(9), slider ? slider->setValue(9) : void();
    else if (operation == "leave")
        leave();
    else if (operation == "save")
        binding->Save();
    else if (operation == "revert")
        binding->Revert();
    else if (operation == "update")
        binding->Update();
    else if (operation == "bind one")
        binding->Bind(edit, "~toolTip", "missing + 'x'");
    else if (operation == "unbind")
        binding->Unbind(page);
    else if (operation == "language")
        QCoreApplication::sendEvent(form, std::make_unique<QEvent>(QEvent::LanguageChange).get());
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    peer.m_called = [] {};
    delete binding;
    delete form;
    QCOMPARE(peer.m_observers.count(), 0);
}

/// An object whose getter runs anything, once.
class Meddler : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ Text WRITE SetText)

public:
    using QObject::QObject;
    QString Text() const
    {
        if (m_meddle)
            std::exchange(m_meddle, nullptr)();
        return QString();
    }
    void SetText(const QString&) {}

    mutable std::function<void()> m_meddle;
};

/// What a getter does when it is called first: by a binding, or by a format that is set later.
void FormDeliveryTest::Getters_data()
{
    QTest::addColumn<bool>("isBound");
    QTest::addColumn<QString>("action");
    for (const char* action : {"object", "form", "binding", "unbind", "bind", "bind and unbind"}) {
        QTest::addRow("bind, %s", action) << false << action;
        QTest::addRow("format, %s", action) << true << action;
    }
}

void FormDeliveryTest::Getters()
{
    QFETCH(bool, isBound);
    QFETCH(QString, action);
    FormPeer peer;
    QPointer<QWidget> form = new QWidget;
    QPointer<FormBinding> binding = new FormBinding(form);
    binding->SetDataPeer(&peer);
    const QPointer<Meddler> meddler = new Meddler(form);
    QLabel* const other = new QLabel(form);
    meddler->setProperty("_text", "v");
    const auto meddle = [&] {
        if (action == "object")
            delete meddler;
        else if (action == "form")
            delete form;
        else if (action == "binding")
            delete binding;
        if (action.startsWith("bind "))
            binding->Bind(other, "~text", "v");
        else if (action == "bind")
            binding->Bind(meddler, "_text", "v + 0");
        if (action.endsWith("unbind"))
            binding->Unbind();
    };
    if (isBound)
        binding->Bind();
    meddler->m_meddle = meddle;
    if (isBound)
        meddler->setProperty("text_format", "{:.1f}");
    else
        QCOMPARE(binding->Bind(), action != "binding");
    QCoreApplication::processEvents();
    peer.Set("v", 1);
    QCoreApplication::processEvents();
    const bool hasReader = binding && meddler && (isBound ? !action.endsWith("unbind") : true);
    QCOMPARE(peer.m_observers.count(), int(hasReader));
    delete binding;
    delete form;
    QCOMPARE(peer.m_observers.count(), 0);
}

QTEST_MAIN(FormDeliveryTest)
#include "tst_forms_delivery.moc"
