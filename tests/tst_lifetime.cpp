#include <QWidget>
#include <QtTest>

#include <functional>
#include <memory>
#include <thread>

#include "DataLayer/idataobserver.h"
#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declarationhandler.h"

namespace {

/// Calls its observers at once, from inside ChangeValue() and already from inside AddObserver().
class HastyPeer : public IDataPeer
{
public:
    QVariant GetValue(const VariableIdentifier& id, const QVariant&) override
    {
        ++m_reads;
        return m_values.value(id.GetName());
    }

    bool ChangeValue(const VariableIdentifier& id, const QVariant& value, ChangeValueFlags) override
    {
        m_values[id.GetName()] = value;
        for (IDataObserver* const observer : m_observers.values(id.GetName())) {
            if (m_observers.contains(id.GetName(), observer))
                observer->OnNotify(id);
        }
        m_changed();
        return true;
    }

    bool AddObserver(const VariableIdentifier& id, IDataObserver* observer) override
    {
        m_observers.insert(id.GetName(), observer);
        observer->OnNotify(id);
        return true;
    }

    void RemoveObserver(IDataObserver* observer) override
    {
        for (const QString& name : m_observers.uniqueKeys())
            m_observers.remove(name, observer);
    }

    bool AddReference(const VariableIdentifier&) override { return true; }

    QHash<QString, QVariant> m_values;
    QMultiHash<QString, IDataObserver*> m_observers;
    std::function<void()> m_changed;
    int m_reads = 0;
};

HastyPeer s_peer;

class Factory : public IDataPeerFactory
{
public:
    IDataPeer* GetDataPeer(const qint32&) override { return &s_peer; }
};

class Target : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QVariant v MEMBER m_v NOTIFY Written)

public:
    using QWidget::QWidget;

Q_SIGNALS:
    void Written();

private:
    QVariant m_v;
};

} // namespace

IDataPeerFactory* Ovex_DataPeerFactory(bool)
{
    static Factory factory;
    return &factory;
}

// A form lives through all that can happen to it, and at one moment of this life something is done to it.
class tst_Lifetime : public QObject
{
    Q_OBJECT

    std::unique_ptr<DeclarationHandler> m_handler;
    QPointer<Target> m_form;
    QPointer<Target> m_page;
    QPointer<Target> m_source;
    QPointer<Target> m_reader;
    std::unique_ptr<Declaration> m_watch; ///< Not the handler's, and run by the source's.
    QString m_moment;
    bool m_ended = false; ///< Nothing may be evaluated any more.

    Target* New(const QString& name, QWidget* parent)
    {
        Target* const target = new Target(parent);
        target->setObjectName(name);
        connect(target, &Target::Written, this, [=] { Reach("written to " + name); });
        return target;
    }

    void Add(QObject* object, const char* statement)
    {
        m_handler->AddDeclaration(m_form, object, "_v", statement, "", false, false);
    }

    void Fill()
    {
        Add(m_source, "x");
        Add(m_reader, "@TopWidget\\source:v + y");
        Add(m_page, "@TopWidget\\reader:v + y");
        Add(m_form, "y");
    }

    /// Does it, if this is the moment.
    void Reach(const QString& moment)
    {
        QFETCH(QString, given);
        if (moment != given.section(": ", 0, 0) || m_moment == moment)
            return;
        m_moment = moment;
        const QHash<QString, std::function<void()>> deeds = {
            {"source dies", [this] { delete m_source; }},
            {"reader dies", [this] { delete m_reader; }},
            {"page dies", [this] { delete m_page; }},
            {"form dies", [this] { delete m_form; }},
            {"watch dies", [this] { m_watch.reset(); }},
            {"cleared", [this] { End([this] { m_handler->Clear(); }); }},
            {"handler dies", [this] { End([this] { m_handler.reset(); }); }},
            {"refilled", [this] { m_handler->Clear(), Fill(), m_handler->ConnectPropertyCrossReferences(); }},
            {"moved", [this] { m_source->setObjectName("other"), m_source->setParent(nullptr); }},
            {"variable thrown out", [this] { s_peer.m_values.remove("x"), s_peer.m_observers.remove("x"); }},
            {"events run", [] { QCoreApplication::processEvents(); }},
        };
        deeds.value(given.section(": ", 1))();
    }

    void End(const std::function<void()>& end)
    {
        end();
        m_watch.reset();
        s_peer.m_reads = 0;
        m_ended = true;
    }

    void Live()
    {
        Fill();
        m_watch.reset(m_handler->CreateDeclaration(m_page, "w", m_form, "@TopWidget\\source:v + y", "", false));
        connect(m_watch.get(), &Declaration::Updated, this, [this] { Reach("announced"); });
        Reach("filled");
        if (m_handler)
            m_handler->ConnectPropertyCrossReferences();
        Reach("connected");
        if (m_handler)
            m_handler->Update();
        Reach("updated");
        std::thread([] { s_peer.ChangeValue(VariableIdentifier("x", ""), 2.5, IDataPeer::NoFlag); }).join();
        Reach("queued");
        QCoreApplication::processEvents();
        s_peer.m_changed = [this] { Reach("saving"); };
        if (m_handler)
            m_handler->Save(m_form, m_page ? m_page->objectName() : "page");
        if (m_handler)
            m_handler->SaveProperty(m_form, "v");
        s_peer.ChangeValue(VariableIdentifier("y", ""), 7.5, IDataPeer::NoFlag);
        QCoreApplication::processEvents();
    }

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<VariableIdentifier>("VariableIdentifier"); }

    void Lives_data()
    {
        QTest::addColumn<QString>("given");
        for (const QString moment : {"filled", "connected", "written to source", "written to reader", "announced",
                                     "written to form", "updated", "queued", "saving"}) {
            for (const QString deed : {"source dies", "reader dies", "page dies", "form dies", "watch dies", "cleared",
                                       "handler dies", "refilled", "moved", "variable thrown out", "events run"})
                QTest::newRow(qPrintable(moment + ": " + deed)) << moment + ": " + deed;
        }
    }

    void Lives()
    {
        m_handler.reset(new DeclarationHandler);
        m_form = New("form", nullptr);
        m_page = New("page", m_form);
        m_source = New("source", m_page);
        m_reader = New("reader", m_page);
        s_peer.m_values = {{"x", 1.5}, {"y", 2.5}};
        s_peer.m_changed = [] {};
        m_moment.clear();
        m_ended = false;

        Live();
        QVERIFY(!m_moment.isEmpty());
        if (m_ended)
            QCOMPARE(s_peer.m_reads, 0);
        else if (m_form)
            QCOMPARE(m_form->property("v"), QVariant(7.5));
        if (m_source && m_reader && !m_ended && !s_peer.m_observers.values("x").isEmpty())
            QCOMPARE(m_reader->property("v").toDouble(), m_source->property("v").toDouble() + 7.5);
        m_watch.reset();
        m_handler.reset();
        QVERIFY(s_peer.m_observers.isEmpty());
        delete m_form;
        delete m_source;
    }

    // The slot runs inside the updates of a chain that is longer than what is loaded then.
    void SmallerFormLoadedInASlot()
    {
        s_peer.m_changed = [] {};
        DeclarationHandler handler;
        Target targets[5];
        const auto add = [&](int number, const char* statement) {
            QObject* const before = number > 0 ? &targets[number - 1] : nullptr;
            handler.AddDeclaration(before, &targets[number], "~v", statement, "", true, false);
        };
        for (int i = 0; i < 5; ++i)
            add(i, i == 0 ? "x" : "@TopWidget:v");
        handler.ConnectPropertyCrossReferences();
        connect(&targets[4], &Target::Written, this, [&] {
            handler.Clear();
            add(0, "7");
            add(1, "@TopWidget:v");
            handler.ConnectPropertyCrossReferences();
            handler.Update();
        });
        handler.Update();
        QCOMPARE(targets[1].property("v"), QVariant("7"));
    }

    // Each reads the one before. At the second change the handler is cleared halfway.
    void LongChain()
    {
        DeclarationHandler handler;
        Target middle;
        s_peer.m_changed = [] {};
        const std::unique_ptr<QObject[]> objects(new QObject[TEST_CHAIN]);
        QObject* before = nullptr;
        for (int i = 0; i < TEST_CHAIN; ++i) {
            QObject* const object = i == TEST_CHAIN / 2 ? &middle : &objects[i];
            handler.AddDeclaration(before, object, "~v", before ? "@TopWidget:v" : "x", "", true, false);
            before = object;
        }
        handler.ConnectPropertyCrossReferences();
        const auto change = [](double value) {
            s_peer.ChangeValue(VariableIdentifier("x", ""), value, IDataPeer::NoFlag);
            for (int parts = 0; parts <= TEST_CHAIN / 1000; ++parts)
                QCoreApplication::processEvents();
        };
        change(3.5);
        QCOMPARE(before->property("v"), QVariant(3.5));

        connect(&middle, &Target::Written, this, [&] { handler.Clear(); });
        change(4.5);
        QCOMPARE(middle.property("v"), QVariant(4.5));
        QCOMPARE(before->property("v"), QVariant(3.5));
    }
};

QTEST_MAIN(tst_Lifetime)
#include "tst_lifetime.moc"
