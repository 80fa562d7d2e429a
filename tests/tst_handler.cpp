#include <QWidget>
#include <QtTest>

#include <memory>

#include "DataLayer/idatapeerfactory.h"
#include "DeclarationHandler/declarationhandler.h"
#include "DeclarationHandler/iexpression.h"
#include "support/messagecatcher.h"
#include "support/recordingdatapeer.h"

namespace {

RecordingDataPeer s_peer;

class Factory : public IDataPeerFactory
{
public:
    IDataPeer* GetDataPeer(const qint32& peer) override
    {
        s_peer.m_calls << QString("peer %1").arg(peer);
        return &s_peer;
    }
};

} // namespace

// The host's own data layer, which takes the place of libDataLayer's.
IDataPeerFactory* Ovex_DataPeerFactory(bool flag)
{
    static Factory factory;
    s_peer.m_calls << (flag ? "factory true" : "factory false");
    return &factory;
}

class tst_Handler : public QObject
{
    Q_OBJECT

    QScopedPointer<QWidget> m_form;
    QScopedPointer<DeclarationHandler> m_handler;

    /// An object of that name in the form, whose property «v» holds the name.
    template<typename Object = QWidget>
    Object* New(const char* name, QWidget* parent = nullptr)
    {
        Object* const object = new Object(parent ? parent : m_form.data());
        object->setObjectName(name);
        object->setProperty("v", name);
        return object;
    }

    bool Add(QObject* widget, const char* property, const char* statement, bool readOnly = false,
             bool initialize = false)
    {
        return m_handler->AddDeclaration(m_form.data(), widget, property, statement, "", readOnly, initialize);
    }

    bool AddDefault(QObject* widget, const char* property, const char* statement)
    {
        return m_handler->AddDefaultDeclaration(m_form.data(), widget, property, statement, "");
    }

    /// The calls of one kind since the last time, as names of variables.
    QString TakeNames(const QString& kind)
    {
        QStringList names = s_peer.TakeCalls().split(", ").filter(kind + " ");
        return names.replaceInStrings(QRegularExpression("^" + kind + " |=.*"), "").join(" ");
    }

    QString UpdateAndTakeReads()
    {
        s_peer.TakeCalls();
        m_handler->Update();
        return TakeNames("get");
    }

    /// What is read when the variable x is announced.
    QString NotifyAndTakeReads()
    {
        s_peer.m_observers.value("x")->OnNotify(VariableIdentifier("x", ""));
        QCoreApplication::processEvents();
        return TakeNames("get");
    }

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<VariableIdentifier>("VariableIdentifier"); }

    void init()
    {
        m_handler.reset(new DeclarationHandler);
        m_form.reset(new QWidget);
        s_peer.m_values = {{"x", 1.5}, {"y", 2}};
        s_peer.TakeCalls();
    }

    void LifeOfADeclaration()
    {
        QWidget* const a = New("a");
        QVERIFY(m_handler->AddDeclaration(m_form.data(), a, "~_v", "x + @r:y", "q", false, false));
        QCOMPARE(s_peer.TakeCalls(), QString("factory false, peer 0, observe q:x, observe r:y"));
        m_handler->Clear();
        QCOMPARE(s_peer.TakeCalls(), QString("unobserve"));
        QVERIFY(Add(a, "~v", "x + y"));
        QCOMPARE(s_peer.TakeCalls(), QString("factory false, peer 0, observe x, observe y"));
        QCOMPARE(UpdateAndTakeReads(), QString("x y"));
        QCOMPARE(Exact(a->property("v")), QString("3.5"));
        s_peer.m_values["y"] = 3;
        QCOMPARE(NotifyAndTakeReads(), QString("x y"));
        QCOMPARE(Exact(a->property("v")), QString("4.5"));
        m_handler.reset();
        QCOMPARE(s_peer.TakeCalls(), QString("unobserve"));
    }

    void Refusals()
    {
        QWidget* const a = New("a");
        a->setProperty("text", "Name");
        QVERIFY(!Add(a, "text", "x", false, true) && !Add(a, "", "x") && !Add(nullptr, "~v", "x"));
        QVERIFY(!AddDefault(a, "text", "x"));
        QCOMPARE(s_peer.TakeCalls(), QString());
        QVERIFY(Add(a, "~text", "w +* x"));
        QVERIFY(AddDefault(a, "~v", "x") && Add(a, "_v", "y") && !AddDefault(a, "~v", "z") && AddDefault(a, "_w", "z"));
        QCOMPARE(UpdateAndTakeReads(), QString("x y z"));
        QCOMPARE(Exact(a->property("text")), QString("'Name'"));
        m_handler->Save(nullptr, "");
        QCOMPARE(TakeNames("set"), QString("y"));
    }

    // A property with its value before and after.
    void Initialize_data()
    {
        Rows({{"visible, true => false", "text, 'Name' => '►Name'", "text, '►' => '►►'", "loc_x, '' => '►'",
               "v, 'x' => 'x'", "Visible, true => true", "toolTip, 5 => 5", "title, ['x'] => ['x']",
               "text, {'a': 'x', 'b': {'c': 'y', 'd': ['z']}} => {'a': '►x', 'b': {'c': '►y', 'd': ['z']}}"}});
    }

    void Initialize()
    {
        QFETCH(QString, given);
        const QByteArray property = given.section(", ", 0, 0).toLatin1();
        QObject object;
        object.setProperty(property, Operands(given.section(", ", 1)).at(0));
        QVERIFY(Add(&object, "~" + property, "x", true, true));
        QTEST(Exact(object.property(property)), "expected");
        QCOMPARE(Exact(m_handler->GetUninitializedVariant(QStringList{"a", ""})), QString("QStringList['►a', '►']"));
    }

    // A reader runs inside its source's update, the one added last first. The second declaration of a's
    // property has no readers.
    void CrossReferences()
    {
        QWidget* const a = New("a");
        Add(a, "~v", "x");
        Add(New("b"), "~v", "@TopWidget\\a:v + y");
        Add(New("c"), "~v", "@TopWidget\\a:v + @TopWidget\\b:v + z + @Widget:other");
        Add(a, "~v", "w");
        QCOMPARE(UpdateAndTakeReads(), QString("x y z w"));
        MessageCatcher lines;
        for (int i = 0; i < 2; ++i) {
            m_handler->ConnectPropertyCrossReferences();
            QCOMPARE(UpdateAndTakeReads(), QString("x z y z y z z w"));
            QCOMPARE(NotifyAndTakeReads(), QString("x z y z"));
        }
        QCOMPARE(lines.Take(), QStringList());
    }

    void UnknownReferences()
    {
        New("a");
        Add(New("%2"), "~v", "@TopWidget\\a:loc_x + @TopWidget\\a:other + @TopWidget\\a:loc_x");
        Add(New("c"), "~v", "@TopWidget\\a:loc_x");
        MessageCatcher lines;
        m_handler->ConnectPropertyCrossReferences();
        m_handler->ConnectPropertyCrossReferences();
        QStringList printed = lines.Take();
        printed.replaceInStrings(QRegularExpression("\\(0x[0-9a-f]+\\)"), "(?)");
        const QString line = "Reference to unknown property: ' \"QWidget#a:loc_x\" ' from declaration : ' "
                             "DeclProperty(?) ' of widget:  \"QWidget#%1\"";
        QCOMPARE(printed.join("\n"), line.arg("c") + "\n" + line.arg("%2"));
    }

    void Cycles()
    {
        QWidget* const a = New("a");
        QWidget* const b = New("b");
        Add(a, "~v", "@TopWidget\\b:v + x");
        Add(b, "~v", "@TopWidget\\a:v + y");
        Add(New("%3%2"), "~v", "@Widget:v + z");
        m_handler->ConnectPropertyCrossReferences();
        MessageCatcher lines;
        QCOMPARE(UpdateAndTakeReads(), QString("x y y x z"));
        QStringList printed = lines.Take();
        printed.replaceInStrings(QRegularExpression(".*\"(.*)\".*"), "\\1");
        QCOMPARE(printed.join(" "), QString("QWidget#a:v QWidget#b:v QWidget#%3%2:v"));
        m_handler->Update();
        QCOMPARE(lines.Take(), QStringList());
    }

    // Scope and name => the variables that are written. Two widgets bear the name «page».
    void Save_data()
    {
        Rows({{"form, page => page edit nested deep deep", "page, page => page nested deep", "form, outside => outside",
               "form, timer => timer", "form, nobody => ", "outside, edit => edit",
               "none, page => page edit nested deep timer outside", "form,  => page edit nested deep timer outside"}});
    }

    void Save()
    {
        QWidget* const page = New("page");
        QWidget* const edit = New("edit", page);
        QWidget* const nested = New("nested", page);
        QWidget* const deep = New("deep", nested);
        QObject* const timer = New<QObject>("timer", page);
        QWidget* const outside = New("outside");
        for (QObject* const object : QObjectList{page, edit, nested, deep, timer, outside})
            Add(object, "~v", qPrintable(object->objectName()));
        Add(page, "~v", "second", true);
        nested->setObjectName("page");

        QFETCH(QString, given);
        const QHash<QString, QObject*> scopes = {{"form", m_form.data()}, {"page", page}, {"outside", outside}};
        m_handler->Save(scopes.value(given.section(", ", 0, 0)), given.section(", ", 1));
        QTEST(TakeNames("set"), "expected");
        m_handler->SaveProperty(page, "~v");
        m_handler->SaveProperty(m_form.data(), "v");
        QCOMPARE(TakeNames("set"), QString());
        m_handler->SaveProperty(page, "v");
        QCOMPARE(s_peer.TakeCalls(), QString("set page='page'"));
    }

    void ConstantMaps()
    {
        QWidget* const a = New("a");
        for (const QString entry : {"~colors[red]=1", "~colors['dark red']=2", "~colors[red]=3"})
            QVERIFY(m_handler->AddConstMapDeclaration(a, entry.section('=', 0, 0), entry.section('=', 1)));
        QVERIFY(!m_handler->AddConstMapDeclaration(a, "colors[blue]", "4"));
        QCOMPARE(Exact(a->property("colors")), QString("{'dark red': '2', 'red': '3'}"));
    }

    // A bound widget, one that others read, and both before the references are connected.
    void DestroyedWidgets()
    {
        const MessageCatcher lines;
        for (const bool connectFirst : {true, false}) {
            QWidget* const bound = New("bound");
            QWidget* const read = New("read");
            QWidget* const alive = New("alive");
            Add(bound, "_v", "x");
            Add(read, "_v", "@TopWidget\\bound:v + y");
            Add(alive, "_v", "@TopWidget\\read:loc_x");
            if (connectFirst)
                m_handler->ConnectPropertyCrossReferences();
            delete bound;
            delete read;
            m_handler->ConnectPropertyCrossReferences();
            QCOMPARE(UpdateAndTakeReads(), QString());
            m_handler->Save(nullptr, "");
            m_handler->Save(m_form.data(), "alive");
            m_handler->SaveProperty(bound, "v");
            QCOMPARE(s_peer.TakeCalls(), QString());
            QVERIFY(!alive->property("v").isValid());
            m_handler->Clear();
            delete alive;
        }
    }

    // What is known of the object before does not go for the new one: its declaration, and who reads it.
    void AddressUsedAgain()
    {
        alignas(QObject) char place[sizeof(QObject)];
        QObject* object = new (place) QObject(m_form.data());
        object->setObjectName("a");
        Add(object, "~v", "x");
        Add(New("reader"), "~v", "@TopWidget\\a:v + y");
        object->~QObject();
        object = new (place) QObject(m_form.data());
        object->setObjectName("b");
        QVERIFY(AddDefault(object, "~v", "z"));
        Add(New("other"), "~v", "@TopWidget\\b:v + w");
        m_handler->ConnectPropertyCrossReferences();
        QCOMPARE(UpdateAndTakeReads(), QString("y z w w"));
        object->~QObject();
    }

    // Objects in paths are remembered while a form is filled.
    void RenamedWhileFilling()
    {
        QWidget* const first = New("a");
        QWidget* const second = New("b");
        QWidget* const reader = New("reader");
        Add(reader, "~before", "@TopWidget\\a:v");
        first->setObjectName("c");
        second->setObjectName("a");
        Add(reader, "~after", "@TopWidget\\a:v");
        m_handler->Update();
        QCOMPARE(reader->property("before").toString() + reader->property("after").toString(), QString("ab"));
    }

    void Helpers()
    {
        QWidget* const a = New("a");
        IExpression* const tree
            = m_handler->ParseExpression(&s_peer, nullptr, m_form.data(), a, "@Widget:v + x", "p", true);
        QVERIFY(!m_handler->ParseDeclaration(a, "v", tree));
        const QScopedPointer<Declaration> declaration(m_handler->ParseDeclaration(a, "_v", tree));
        QVERIFY(declaration->Update() && !declaration->Save());
        m_handler->Update();
        QCOMPARE(s_peer.TakeCalls(), QString("refer p:x, get p:x"));
    }
};

QTEST_MAIN(tst_Handler)
#include "tst_handler.moc"
