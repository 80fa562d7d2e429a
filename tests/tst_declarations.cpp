#include <QPixmap>
#include <QtTest>

#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "DeclarationHandler/Declarations/declproperty.h"
#include "qtversion.h"
#include "support/messagecatcher.h"
#include "support/recordingdatapeer.h"
#include "support/spyexpression.h"

namespace {

/// Counts the writes of its one number, which goes by two names.
class Target : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int number READ Number WRITE Write)
    Q_PROPERTY(int visible READ Number WRITE Write)
    Q_PROPERTY(QDate date MEMBER m_date)
    Q_PROPERTY(QTime time MEMBER m_time)
    Q_PROPERTY(QDateTime moment MEMBER m_moment)

public:
    int Number() const { return m_number; }
    void Write(int number)
    {
        m_number = number;
        ++m_writes;
        if (m_written)
            m_written();
    }

    int m_number = 5;
    int m_writes = 0;
    QDate m_date;
    QTime m_time;
    QDateTime m_moment;
    std::function<void()> m_written;
};

} // namespace

class tst_Declarations : public QObject
{
    Q_OBJECT

    QScopedPointer<Target> m_target;
    QStringList m_log;

    SpyExpression* Spy(const QVariant& value = 5, bool accepts = true)
    {
        return new SpyExpression("tree", value, &m_log, accepts);
    }

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<VariableIdentifier>("VariableIdentifier"); }

    void init()
    {
        m_target.reset(new Target);
        m_log.clear();
    }

    void MetaObject()
    {
        QStringList methods;
        for (const QMetaObject* type : {&Declaration::staticMetaObject, &DeclProperty::staticMetaObject}) {
            for (int i = type->methodOffset(); i < type->methodCount(); ++i)
                methods << type->method(i).typeName() + (" " + type->method(i).methodSignature());
        }
        QCOMPARE(
            methods.join(", "),
            QString("void Updated(), bool Update(bool), bool Update(), void DoNotifyDeclaration(VariableIdentifier), "
                    "void OnNotifyDeclaration(VariableIdentifier), bool Update(bool), bool Update()"));
        DeclProperty declaration(m_target.data(), "number");
        QCOMPARE(declaration.qt_metacast("IDataObserver"), static_cast<IDataObserver*>(&declaration));
    }

    // Without a tree, without an object, and when the object is gone.
    void Incomplete()
    {
        DeclProperty treeless(m_target.data(), "number");
        DeclProperty objectless(Spy(), nullptr, "number");
        Target* const target = new Target;
        DeclProperty orphaned(Spy(), target, "number");
        QCOMPARE(orphaned.GetActiveObject(), target);
        delete target;
        for (DeclProperty* const declaration : {&treeless, &objectless, &orphaned}) {
            const QSignalSpy updated(declaration, &Declaration::Updated);
            QVERIFY(!declaration->Update() && !declaration->Save());
            QVERIFY(declaration->GetActiveObject() || (!declaration->SetProperty(7) && !declaration->SetPixmap("p")));
            QCOMPARE(updated.count() + m_log.size() + m_target->m_writes, 0);
        }
    }

    // The property, and what four updates answer and how many writes there are by then. Before the third,
    // somebody else changes the value.
    void Writes_data()
    {
        Rows({{"number => true 1, false 1, true 2, false 2", "visible => true 1, true 2, true 3, true 4"}});
    }

    void Writes()
    {
        QFETCH(QString, given);
        DeclProperty declaration(Spy(), m_target.data(), given);
        const QSignalSpy updated(&declaration, &Declaration::Updated);
        QStringList answers;
        for (const int present : {5, 5, 6, 5}) {
            m_target->m_number = present;
            const QString answer = declaration.Update() ? "true" : "false";
            answers << answer + " " + QString::number(m_target->m_writes);
        }
        QTEST(answers.join(", "), "expected");
        QCOMPARE(updated.count(), 4);
        QCOMPARE(m_log.join(" "), QString("tree tree tree tree"));
    }

    // Qt's versions read texts more or less strictly; what is written is the same with all.
    void Moments_data()
    {
        Rows({{"date 2024-02-29 => 2024-02-29", "date 2024-+2-+9 => 2024-02-09", "date 2023-02-29 => ",
               "date 2024-2-9 => "},
              {"time 12:30:5 => 12:30:05", "time 12:30:15.2506 => 12:30:15.251", "time 12:30:59,9999 => 12:30:59.999",
               "time 12:30:15. => 12:30:15", "time 12:30:15z7 => 12:30:15", "time 12:30.25 => 12:30:15",
               "time 12:30.-25 => ", "time -0:30 => 00:30", "time 1 :30 => ", "time 12,5 => ", "time 12 => ",
               "time 24:01 => "},
              {"moment 2024-02-03T12:30:5 => 2024-02-03T12:30:05", "moment 2024-02-03 12:30:15. => 2024-02-03T12:30:15",
               "moment 2024-02-03T24:00 => 2024-02-04T00:00", "moment 2024-02-+3T01:02.5Z => 2024-02-03T01:02:30Z",
               "moment 2024-02-03T01:02:3+02 => 2024-02-03T01:02:03+02:00", "moment 2024-02-03T01+02 => ",
               "moment 2024-02-03 => 2024-02-03T00:00", "moment 2024-02-03T => "}});
    }

    void Moments()
    {
        QFETCH(QString, given);
        QFETCH(QString, expected);
        DeclProperty declaration(Spy(given.section(' ', 1)), m_target.data(), given.section(' ', 0, 0));
        declaration.Update();
        QCOMPARE(m_target->m_date, QDate::fromString(given.startsWith("date") ? expected : QString(), Qt::ISODate));
        QCOMPARE(m_target->m_time, QTime::fromString(given.startsWith("time") ? expected : QString(), Qt::ISODate));
        QCOMPARE(m_target->m_moment,
                 QDateTime::fromString(given.startsWith("moment") ? expected : QString(), Qt::ISODate));
    }

    void InvalidValue()
    {
        DeclProperty declaration(Spy(QVariant()), m_target.data(), "number");
        const QSignalSpy updated(&declaration, &Declaration::Updated);
        QVERIFY(!declaration.Update(false) && updated.count() + m_target->m_writes == 0);
        QVERIFY(declaration.Update() && updated.count() + m_target->m_writes == 2);
    }

    // The value that the property holds, and the one that is written => the line.
    void IllegalAssignment_data()
    {
        Rows({{"5, LIST => Illegal assignment?: ' QVariant(QStringList, (\"a\")) ' to property:  \"p\"  with type:  "
               "QVariant::int  value:  QVariant(int, 5)",
               "'x', 5 => ", "-, LIST => ", "5, NULL => ", "NULL, 5 => "}});
    }

    void IllegalAssignment()
    {
        const auto value = [](const QString& text) {
            return text == "LIST" ? QStringList("a")
                : text == "NULL"  ? QtVersion::NullOf(QMetaType::QStringList)
                                  : Operands(text).at(0);
        };
        QFETCH(QString, given);
        QObject object;
        object.setProperty("p", value(given.section(", ", 0, 0)));
        DeclProperty declaration(Spy(value(given.section(", ", 1))), &object, "p");
        MessageCatcher lines;
        QVERIFY(declaration.Update());
        // Qt 6 prints lists of texts by another name.
        QTEST(lines.Take().join("|").replace("QList(", "("), "expected");
        QCOMPARE(Exact(object.property("p")), Exact(value(given.section(", ", 1))));
    }

    // Property and value => answer, what the property holds then, and the line.
    void Pixmaps_data()
    {
        Rows(
            {{"pixmap, 'FILE' => true 3x2 ", "statusIcon, 'FILE' => true 3x2 ", "Pixmap, 'FILE' => true 'FILE' ",
              "pixmap, '::empty' => true 0x0 ", "pixmap, 5 => true 0x0 Pixmap file does not exist \"5\"",
              "statusIcon, '/no' => true 0x0 Pixmap file does not exist \"/no\"", "pixmap, - => true - ",
              "pixmap, PIXMAP => true 4x4 ",
              "pixmap, '' => false - Pixmap in widget  \"name\" has invalid type for pixmap QVariant(QString, \"\")"}});
    }

    void Pixmaps()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("3x2.png");
        QVERIFY(QImage(3, 2, QImage::Format_RGB32).save(file));
        QFETCH(QString, given);
        const QByteArray property = given.section(", ", 0, 0).toLatin1();
        const QString text = given.section(", ", 1).replace("FILE", file);
        QObject object;
        object.setObjectName("name");
        DeclProperty declaration(Spy(text == "PIXMAP" ? QPixmap(4, 4) : Operands(text).at(0)), &object, property);
        const QSignalSpy updated(&declaration, &Declaration::Updated);
        MessageCatcher lines;
        QStringList actual(declaration.Update() ? "true" : "false");
        const QVariant held = object.property(property);
        const QSize size = held.value<QPixmap>().size();
        actual << (held.userType() == QMetaType::QPixmap ? QString("%1x%2").arg(size.width()).arg(size.height())
                                                         : Exact(held).replace(file, "FILE"));
        QTEST((actual << lines.Take().join("|")).join(" "), "expected");
        QCOMPARE(updated.count(), 1);
    }

    // Each is a queued call of its own, in the declaration's thread.
    void Notifications()
    {
        DeclProperty declaration(m_target.data(), "number");
        declaration.SetCondition(Spy());
        DeclProperty deaf(Spy(), m_target.data(), "number");
        QList<QThread*> threads;
        connect(
            &declaration, &Declaration::Updated, this, [&] { threads << QThread::currentThread(); },
            Qt::DirectConnection);
        std::thread worker([&] {
            for (IDataObserver* const observer : QList<IDataObserver*>{&declaration, &deaf, &declaration})
                observer->OnNotify(VariableIdentifier("a", "p"));
        });
        worker.join();
        QCOMPARE(m_log, QStringList());
        QCoreApplication::processEvents();
        QCOMPARE(m_log.join(" "), QString("tree tree"));
        QCOMPARE(threads, (QList<QThread*>{thread(), thread()}));

        // One that arrives while the property is being written waits for the end of that update.
        m_target->m_written = [&] {
            m_target->m_written = nullptr;
            declaration.OnNotify(VariableIdentifier("a", "p"));
            QCoreApplication::processEvents();
            m_log << "written";
        };
        m_target->m_number = 6;
        declaration.Update();
        QCoreApplication::processEvents();
        QCOMPARE(m_log.join(" "), QString("tree tree tree written tree"));
    }

    // Each runs the next inside its own update, up to a depth of 1,000; then the event loop goes on.
    void NestedUpdates()
    {
        std::vector<std::unique_ptr<DeclProperty>> chain;
        for (int i = 0; i < 1002; ++i) {
            chain.emplace_back(new DeclProperty(Spy(), m_target.data(), "number"));
            if (i > 0)
                connect(chain[i - 1].get(), &Declaration::Updated, chain[i].get(),
                        QOverload<>::of(&DeclProperty::Update));
        }
        QVERIFY(chain.front()->Update());
        QCOMPARE(m_log.size(), 1000);
        QCoreApplication::processEvents();
        QCOMPARE(m_log.size(), 1002);
    }

    void SaveAndEnd()
    {
        RecordingDataPeer peer;
        {
            DeclProperty declaration(Spy(), m_target.data(), "number");
            SpyExpression* const tree = new SpyExpression("new", 2, &peer.m_calls, false);
            declaration.SetDataPeer(&peer);
            QVERIFY(declaration.Save());
            declaration.SetCondition(tree);
            declaration.SetCondition(tree);
            QVERIFY(!declaration.Save());
        }
        QCOMPARE(m_log.join(" "), QString("tree=5 ~tree"));
        QCOMPARE(peer.TakeCalls(), QString("new=5, unobserve, ~new"));
    }
};

QTEST_MAIN(tst_Declarations)
#include "tst_declarations.moc"
