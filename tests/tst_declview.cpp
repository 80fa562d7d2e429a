// The window of declview, driven as its user would.

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

#include <thread>

#include "check/formchecker.h"
#include "common/jsondata.h"
#include "declview/formsession.h"
#include "declview/mainwindow.h"
#include "support/messagecatcher.h"
#include "view/widgethighlight.h"

namespace {

QString Property(const QString& name, const QString& statement)
{
    return QString("<property name=\"%1\" stdset=\"0\"><string notr=\"true\">%2</string></property>")
        .arg(name, statement.toHtmlEscaped());
}

QString Widget(const QString& className, const QString& name, const QString& content)
{
    return QString("<widget class=\"%1\" name=\"%2\">%3</widget>").arg(className, name, content);
}

QByteArray Form(const QString& content)
{
    return QString("<ui version=\"4.0\"><class>Form</class>%1</ui>").arg(Widget("QWidget", "Form", content)).toUtf8();
}

/// Two pages, a label that reads, and spin boxes that write back.
const QByteArray Settings
    = Form(Widget("QLabel", "title", Property("~text", "'Limit ' + limits[0]") + Property("~toolTip", "@Other:missing"))
           + Widget("QTabWidget", "pages",
                    Widget("QWidget", "first", Widget("QSpinBox", "upper", Property("_value", "limits[0]")))
                        + Widget("QWidget", "second", Widget("QSpinBox", "lower", Property("_value", "limits[1]")))));
const QByteArray Data = "{ \"Main\": { \"limits\": [30, 20], \"name\": \"x\" } }";

/// A window for a form in a folder of its own.
struct Viewer
{
    explicit Viewer(const QByteArray& form)
    {
        Write("form.ui", form);
        Write("data.json", Data);
        session.reset(new FormSession({dir.filePath("form.ui"), dir.filePath("data.json"), "Main", "pump.ui"}));
        window.reset(new MainWindow(session.data()));
        window->Reload();
        window->FitToForm(QSize(2000, 1000));
        window->show();
    }

    /// As editors do: the file is put in the place of the old one.
    void Write(const QString& name, const QByteArray& contents) const
    {
        QSaveFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size() && file.commit());
    }

    template<typename Type>
    Type* Find(const QString& name) const
    {
        return session->Form()->findChild<Type*>(name);
    }

    QAbstractItemModel* Table(const QString& name) const { return window->findChild<QTableView*>(name)->model(); }

    /// What stands in a column of the row in which another column has that text.
    QString Cell(const QString& table, int keyColumn, const QString& key, int column) const
    {
        const QModelIndexList found = Table(table)->match(Table(table)->index(0, keyColumn), Qt::DisplayRole, key);
        return found.isEmpty() ? "no such row" : found.first().siblingAtColumn(column).data().toString();
    }

    QString Value(const QString& variable) const { return Cell("variables", VariablesModel::Name, variable, 3); }

    void Edit(const QString& variable, const QString& json) const
    {
        QAbstractItemModel* const model = Table("variables");
        const QModelIndex found
            = model->match(model->index(0, VariablesModel::Name), Qt::DisplayRole, variable).value(0);
        model->setData(found.siblingAtColumn(VariablesModel::Value), json);
    }

    void Trigger(const QString& action) const
    {
        const QList<QAction*> actions = window->findChildren<QAction*>();
        for (QAction* const candidate : actions) {
            if (candidate->text() != action)
                continue;
            QTRY_VERIFY(candidate->isEnabled());
            candidate->trigger();
        }
    }

    QTemporaryDir dir;
    QScopedPointer<FormSession> session; ///< Outlives the window.
    QScopedPointer<MainWindow> window;
};

} // namespace

class TestDeclView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FormAndVariablesFollowEachOther()
    {
        const Viewer viewer(Settings);
        viewer.Edit("limits", "[50, 20]");
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 50"));
        QTRY_COMPARE(viewer.Cell("declarations", DeclarationsModel::Widget, "title", DeclarationsModel::Evaluations),
                     QString("2"));
        viewer.Edit("limits", "[50,");
        QCOMPARE(viewer.Value("limits"), QString("[50,20]"));

        viewer.Find<QSpinBox>("upper")->setValue(60);
        viewer.Find<QSpinBox>("lower")->setValue(10);
        QCOMPARE(viewer.Value("limits"), QString("[50,20]"));
        auto* const scopes = viewer.window->findChild<QComboBox*>();
        scopes->setCurrentIndex(scopes->findText("second"));
        QSignalSpy changes(viewer.Table("variables"), &QAbstractItemModel::dataChanged);
        viewer.Trigger("Save");
        QTRY_COMPARE(changes.size(), 1);
        QCOMPARE(viewer.Value("limits"), QString("[50,10]"));

        // The page that was not saved is edited still.
        QCOMPARE(viewer.Find<QSpinBox>("upper")->value(), 60);
        scopes->setCurrentIndex(0);
        viewer.Trigger("Save");
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 60"));

        viewer.Trigger("Save data");
        JsonData data;
        QString error;
        QVERIFY(data.Read(viewer.dir.filePath("data.json"), &error));
        QCOMPARE(data.Find("Main", "limits")->value, QVariant(QVariantList{60, 10}));
        QCOMPARE(data.Variables().size(), 2);
    }

    void EditsAreSavedOrReverted()
    {
        const Viewer viewer(Form(Widget("QSpinBox", "box", Property("_value", "limits[0]"))
                                 + Widget("QSpinBox", "other", Property("_value", "limits[0] * 2"))));
        QVERIFY(!viewer.window->isWindowModified());
        viewer.Find<QSpinBox>("box")->setValue(5);
        QTRY_VERIFY(viewer.window->isWindowModified());
        viewer.Trigger("Revert");
        QTRY_VERIFY(!viewer.window->isWindowModified());
        QCOMPARE(viewer.Find<QSpinBox>("box")->value(), 30);

        viewer.Find<QSpinBox>("other")->setValue(5);
        viewer.Trigger("Save");
        QTRY_COMPARE(viewer.Cell("declarations", DeclarationsModel::Widget, "other", DeclarationsModel::Diagnostic),
                     QString("_value of QSpinBox \"other\": the statement passes no value on."));
    }

    void ProblemsStandUntilTheyGo()
    {
        const Viewer viewer(Form(Widget("QSpinBox", "box", Property("~value", "limits[0] * 10"))));
        QCOMPARE(viewer.window->windowTitle(), QString("pump.ui[*] - declview"));
        const auto problem = [&viewer] {
            return viewer.Cell("declarations", DeclarationsModel::Widget, "box", DeclarationsModel::Diagnostic);
        };
        QVERIFY2(problem().contains("300") && problem().contains("99"), qPrintable(problem()));
        viewer.Edit("limits", "[3]");
        QTRY_COMPARE(problem(), QString());
    }

    void FindingsStandWithTheirDeclarations()
    {
        const Viewer viewer(Form(Widget("QLabel", "one", Property("~text", "limits[0] + 1"))
                                 + Widget("QLabel", "two", Property("~text", "name")) + Widget("Odd", "odd", "")));
        const auto remark = [&viewer](const QString& name) {
            return viewer.Cell("declarations", DeclarationsModel::Widget, name, DeclarationsModel::Diagnostic);
        };
        const auto tells = [&viewer](const QString& text) {
            viewer.session->Log().Flush();
            const QAbstractItemModel* const model = viewer.Table("messages");
            return model->match(model->index(0, 2), Qt::DisplayRole, text, -1, Qt::MatchContains).size();
        };
        QTRY_VERIFY2(remark("one").endsWith("[literal-sum]"), qPrintable(remark("one")));
        QCOMPARE(remark("two"), QString());
        QCOMPARE(tells("[unknown-class]"), 1);
        // What building the form for the checker prints is not told again.
        QCOMPARE(tells("the class Odd is unknown"), 1);

        viewer.Write("declcheck.json", R"({ "disable": ["literal-sum"] })");
        viewer.Trigger("Reload");
        QTRY_COMPARE(tells("[unknown-class]"), 2);
        QCOMPARE(remark("one"), QString());
        viewer.Write("declcheck.json", "{");
        viewer.Trigger("Reload");
        QTRY_COMPARE(tells("The form is not checked."), 1);
    }

    void ACheckLeavesTheEventsOfOthers()
    {
        QObject other;
        bool isReached = false;
        QMetaObject::invokeMethod(
            &other, [&isReached] { isReached = true; }, Qt::QueuedConnection);
        const CheckOptions options;
        FormChecker checker("form.ui", options);
        QString error;
        QVERIFY2(checker.Run(Settings, &error), qPrintable(error));
        QCoreApplication::processEvents();
        QVERIFY(isReached);
    }

    void DetailsOfADeclaration()
    {
        const Viewer viewer(
            Form(Widget("QLabel", "one", Property("~text", "'Limit ' + (limits[0] + @Widget:objectName)"))
                 + Widget("QLabel", "two", Property("~text", "@TopWidget\\one:text + limits[8]"))));
        auto* const detail = viewer.window->findChild<QTreeWidget*>("detail");
        const auto lines = [detail] {
            QStringList found;
            for (QTreeWidgetItemIterator it(detail); *it; ++it)
                found.append((*it)->text(0) + " | " + (*it)->text(1));
            return found;
        };
        const auto* const view = viewer.window->findChild<QTableView*>("declarations");
        view->selectionModel()->select(view->model()->index(0, 0),
                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        QCOMPARE(lines(),
                 (QStringList{"'Limit ' + (limits[0] + @Widget:objectName) | \"Limit 30one\"",
                              "limits[0] + @Widget:objectName | \"30one\"", "limits[0] | 30", "limits | [30,20]",
                              "@Widget:objectName | \"one\"", "Reads | ", "Main:limits | [30,20]",
                              "TopWidget\\one:objectName | \"one\"", "Is read by | ",
                              "TopWidget\\two:text | \"Limit 30one\""}));
        viewer.Edit("limits", "[7]");
        QTRY_VERIFY(lines().contains("limits[0] | 7"));

        view->selectionModel()->select(view->model()->index(1, 0),
                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        QVERIFY2(lines().contains("limits[8] | no value: the index is out of bounds"), qPrintable(lines().join('\n')));
    }

    void MissingVariablesAreListed()
    {
        const Viewer viewer(Settings);
        QCOMPARE(viewer.Table("variables")->index(0, VariablesModel::Name).data().toString(), QString("missing"));
        QCOMPARE(viewer.Cell("variables", VariablesModel::Name, "missing", VariablesModel::Package), QString("Other"));
        QCOMPARE(viewer.Cell("variables", VariablesModel::Name, "missing", VariablesModel::Type), QString("missing"));
        viewer.Edit("missing", "no JSON");
        QTRY_COMPARE(viewer.Find<QLabel>("title")->toolTip(), QString("no JSON"));
        QCOMPARE(viewer.Cell("variables", VariablesModel::Name, "missing", VariablesModel::Type), QString("text"));
    }

    void ReloadKeepsEditedVariables()
    {
        const Viewer viewer(Settings);
        viewer.Edit("limits", "[50,20]");
        viewer.Write("form.ui", QByteArray(Settings).replace("Limit", "Up to"));
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Up to 50"));
        viewer.Write("data.json", R"({ "Main": { "limits": [1, 2], "name": "y", "more": true } })");
        QTRY_COMPARE(viewer.Value("name"), QString("\"y\""));
        QCOMPARE(viewer.Value("limits"), QString("[50,20]"));

        // Now without putting a new file there.
        QFile file(viewer.dir.filePath("data.json"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(R"({ "Main": { "name": "z" } })") > 0);
        file.close();
        QTRY_COMPARE(viewer.Value("name"), QString("\"z\""));
        QCOMPARE(viewer.Value("more"), QString("no such row"));

        const auto* const banner = viewer.window->findChild<QLabel*>("banner");
        QVERIFY(!banner->isVisible());
        viewer.Write("form.ui", "<ui><widget");
        QTRY_VERIFY(banner->isVisible());
        QCOMPARE(viewer.Find<QLabel>("title")->text(), QString("Up to 50"));
        viewer.Write("form.ui", Settings);
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 50"));
        QVERIFY(!banner->isVisible());
    }

    void Generators_data()
    {
        QTest::addColumn<QByteArray>("generator");
        QTest::addColumn<double>("time");
        QTest::addColumn<QVariant>("value");
        const QByteArray ramp = R"({ "$ramp": { "from": 10, "to": 20, "seconds": 4 } })";
        QTest::newRow("ramp, start") << ramp << 0.0 << QVariant(10.0);
        QTest::newRow("ramp, rounded") << ramp << 1.111 << QVariant(12.78);
        QTest::newRow("ramp, anew") << ramp << 5.0 << QVariant(12.5);
        QTest::newRow("ramp, back") << QByteArray(
            R"({ "$ramp": { "from": 0, "to": 9, "seconds": 1, "back": true, "decimals": 0 } })")
                                    << 1.5 << QVariant(5);
        QTest::newRow("sine, half") << QByteArray(R"({ "$sine": { "from": -1, "to": 1, "seconds": 2 } })") << 1.0
                                    << QVariant(1.0);
        QTest::newRow("large") << QByteArray(R"({ "$sine": { "from": 0, "to": 4e9, "seconds": 2, "decimals": 0 } })")
                               << 1.0 << QVariant(4000000000LL);
        QTest::newRow("random, always the same")
            << QByteArray(R"({ "$random": { "from": 0, "to": 100, "seconds": 2 } })") << 3.0 << QVariant(90.53);
        QTest::newRow("toggle") << QByteArray(R"({ "$toggle": { "seconds": 2 } })") << 6.5 << QVariant(true);
        QTest::newRow("toggle, texts") << QByteArray(R"({ "$toggle": { "seconds": 2, "values": ["a", "b", "c"] } })")
                                       << 10.0 << QVariant("c");
        QTest::newRow("plain data") << QByteArray(R"({ "$ref": "a" })") << 3.0 << QVariant(QVariantMap{{"$ref", "a"}});
        QTest::newRow("two members") << QByteArray(R"({ "$ramp": {}, "a": 1 })") << 3.0
                                     << QVariant(QVariantMap{{"$ramp", QVariantMap()}, {"a", 1}});
    }

    void Generators()
    {
        QFETCH(QByteArray, generator);
        QFETCH(double, time);
        QFETCH(QVariant, value);
        JsonData data;
        QString error;
        QVERIFY2(data.Parse("{ \"P\": { \"a\": " + generator + " } }", "data", &error), qPrintable(error));
        const Variable* const variable = data.Find("P", "a");
        const QVariant found = variable->generator ? variable->generator->Value(time) : variable->value;
        QCOMPARE(found.typeName(), value.typeName());
        QCOMPARE(found, value);
        // Written as it was.
        JsonData again;
        QVERIFY(again.Parse(data.ToJson(), "data", &error));
        QCOMPARE(again.ToJson(), data.ToJson());
        QCOMPARE(bool(again.Find("P", "a")->generator), bool(variable->generator));
    }

    void WrongGenerators_data()
    {
        QTest::addColumn<QByteArray>("generator");
        QTest::addColumn<QString>("reason");
        QTest::newRow("unknown") << QByteArray(R"({ "$ramb": {} })") << R"(there is no generator "$ramb")";
        QTest::newRow("no object") << QByteArray(R"({ "$ramp": 5 })") << R"("$ramp" wants an object with "from", "to")";
        QTest::newRow("missing") << QByteArray(R"({ "$sine": { "from": 1, "seconds": 1 } })")
                                 << R"("$sine" wants "to", a number)";
        QTest::newRow("no time") << QByteArray(R"({ "$toggle": { "seconds": 0 } })")
                                 << R"(wants "seconds", a number from 0.01)";
        QTest::newRow("too large") << QByteArray(R"({ "$ramp": { "from": 0, "to": 1e300, "seconds": 1 } })")
                                   << R"(wants "to")";
        QTest::newRow("misspelt") << QByteArray(R"({ "$toggle": { "seconds": 1, "value": [1, 2] } })")
                                  << R"(knows no "value")";
        QTest::newRow("one value") << QByteArray(R"({ "$toggle": { "seconds": 1, "values": [1] } })")
                                   << R"(a list of two values)";
        QTest::newRow("decimals") << QByteArray(R"({ "$ramp": { "from": 0, "to": 1, "seconds": 1, "decimals": 99 } })")
                                  << R"(wants "decimals", a whole number from 0 to 9)";
    }

    void WrongGenerators()
    {
        QFETCH(QByteArray, generator);
        JsonData data;
        QString error;
        QVERIFY(!data.Parse("{ \"P\": { \"a\": " + generator + " } }", "data", &error));
        QFETCH(QString, reason);
        QVERIFY2(error.startsWith("data: P:a: ") && error.contains(reason), qPrintable(error));
    }

    void VariablesMove()
    {
        const Viewer viewer(Settings);
        viewer.Write("data.json", R"({ "Main": { "limits": { "$toggle": { "seconds": 2, "values": [[1, 2], [3, 4]] } },
            "name": { "$ramp": { "from": 0, "to": 9, "seconds": 0.1 } } } })");
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 1"));
        viewer.session->Motion().SetTime(3);
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 3"));
        viewer.session->Motion().SetTime(4.02);
        QTRY_COMPARE(viewer.Value("name"), QString("1.8"));
        viewer.Trigger("Run");
        QTRY_VERIFY(viewer.Value("name") != "1.8");
        viewer.Trigger("Pause");

        // An edit stops its variable, and goes into the file in the place of the generator.
        viewer.Edit("limits", "[7, 8]");
        viewer.session->Motion().SetTime(2);
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 7"));
        viewer.Trigger("Save data");
        JsonData data;
        QString error;
        QVERIFY(data.Read(viewer.dir.filePath("data.json"), &error));
        QVERIFY(!data.Find("Main", "limits")->generator && data.Find("Main", "name")->generator);
    }

    void ControlClickSelectsDeclarations()
    {
        const Viewer viewer(Settings);
        const auto* const view = viewer.window->findChild<QTableView*>("declarations");
        const auto* const highlight = viewer.window->findChild<WidgetHighlight*>();
        QTest::mouseClick(viewer.Find<QLabel>("title"), Qt::LeftButton);
        QVERIFY(!view->selectionModel()->hasSelection());
        QTest::mouseClick(viewer.Find<QLabel>("title"), Qt::LeftButton, Qt::ControlModifier);
        QCOMPARE(view->selectionModel()->selectedRows().size(), 2);
        const auto* const title = viewer.Find<QLabel>("title");
        QVERIFY(highlight->geometry().contains(
            QRect(title->mapTo(highlight->parentWidget(), QPoint(0, 0)), title->size())));

        // A page that is not in front comes to the front.
        for (const char* const name : {"lower", "upper", "lower"})
            view->selectionModel()->select(
                view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, name).value(0),
                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        QVERIFY(viewer.Find<QWidget>("lower")->isVisible());
        QVERIFY(highlight->Shows());
    }

    void MessagesNameTheirDeclaration()
    {
        MessageCatcher before;
        const Viewer viewer(Form(Widget("QLabel", "one", Property("~text", "limits[9]"))
                                 + Widget("QLabel", "two", Property("~text", "limits[0] limits"))
                                 + Widget("QLabel", "three", Property("~styleSheet", "'{'"))));
        std::thread([] { qWarning("from elsewhere"); }).join();
        const auto declaration = [&](const QString& part) {
            const QAbstractItemModel* const model = viewer.Table("messages");
            const QModelIndex found
                = model->match(model->index(0, 2), Qt::DisplayRole, part, 1, Qt::MatchContains).value(0);
            return found.isValid() ? found.siblingAtColumn(1).data().toString() : "no such message";
        };
        QTRY_COMPARE(declaration("from elsewhere"), QString());
        QCOMPARE(declaration("\"one\""), QString("one:text"));
        QCOMPARE(declaration("\"two\""), QString("two:text"));
        QCOMPARE(declaration("Could not parse stylesheet"), QString("three:styleSheet"));
        QVERIFY(before.Take().contains("from elsewhere"));
        QVERIFY(viewer.Cell("declarations", DeclarationsModel::Widget, "two", DeclarationsModel::Diagnostic)
                    .contains("two"));

        // Told again once it has been right in between.
        viewer.Edit("limits", "[0, 1, 2, 3, 4, 5, 6, 7, 8, 9]");
        QTRY_COMPARE(viewer.Find<QLabel>("one")->text(), QString("9"));
        viewer.Edit("limits", "[1]");
        QTRY_COMPARE(viewer.Find<QLabel>("one")->text(), QString());
        viewer.session->Log().Flush();
        QCOMPARE(viewer.Table("messages")
                     ->match(viewer.Table("messages")->index(0, 1), Qt::DisplayRole, "one:text", -1)
                     .size(),
                 2);
    }

    void QualifiedValues()
    {
        const Viewer viewer(Form(Widget("QLabel", "label",
                                        "<property name=\"alignment\"><set>Qt::AlignmentFlag::AlignRight|"
                                        "Qt::AlignmentFlag::AlignBottom</set></property><property name=\"frameShape\">"
                                        "<enum>QFrame::Shape::Box</enum></property><property name=\"textFormat\">"
                                        "<enum>Qt::PlainText</enum></property>")));
        const auto* const label = viewer.Find<QLabel>("label");
        QCOMPARE(label->alignment(), Qt::AlignRight | Qt::AlignBottom);
        QCOMPARE(label->frameShape(), QFrame::Box);
        QCOMPARE(label->textFormat(), Qt::PlainText);
    }

    void CustomWidgetsAreOutlined()
    {
        const QByteArray classes
            = "</widget><customwidgets><customwidget><class>Gauge</class><extends>QWidget</extends>"
              "</customwidget></customwidgets></ui>";
        const QString size
            = "<property name=\"minimumSize\"><size><width>90</width><height>60</height></size></property>";
        const Viewer viewer(Form("<layout class=\"QVBoxLayout\">"
                                 + (QString("<item>%1</item>").arg(Widget("Gauge", "gauge", size))
                                    + QString("<item>%1</item>").arg(Widget("Unheard", "a", size)).repeated(2)
                                    + QString("<item>%1</item>").arg(Widget("QWidget", "plain", size)))
                                 + "</layout>")
                                .replace("</widget></ui>", classes));
        const auto colors = [&viewer](const QString& name) {
            const QImage image = viewer.Find<QWidget>(name)->grab().toImage();
            QSet<QRgb> found;
            for (int x = 0; x < image.width(); ++x)
                found.insert(image.pixel(x, 0));
            return found.size();
        };
        QCOMPARE(colors("gauge"), 2);
        QCOMPARE(colors("a"), 2);
        QCOMPARE(colors("plain"), 1);
        viewer.session->Log().Flush();
        const QAbstractItemModel* const messages = viewer.Table("messages");
        QCOMPARE(messages->match(messages->index(0, 2), Qt::DisplayRole, "a: the class Unheard", -1).size(), 1);
        QVERIFY(messages->match(messages->index(0, 2), Qt::DisplayRole, "(2 times)", 1, Qt::MatchContains).size() == 1);
    }

    void MessagesOfOneKindAreOneLine()
    {
        const Viewer viewer(Form(Widget("Odd", "a", "") + Widget("Odd", "b", "") + Widget("Odd", "c", "")));
        viewer.session->Log().Flush();
        const QAbstractItemModel* const model = viewer.Table("messages");
        const QModelIndexList found
            = model->match(model->index(0, 2), Qt::DisplayRole, "the class Odd is unknown", -1, Qt::MatchContains);
        QCOMPARE(found.size(), 1);
        QVERIFY(found.first().data().toString().endsWith("(and 2 like this)"));
        QVERIFY(found.first().data(Qt::ToolTipRole).toString().contains("c: the class Odd"));
    }

    // Each change goes round once more.
    void CirclesAreNamed()
    {
        const Viewer viewer(Form(Widget("QLineEdit", "a", Property("~text", "@TopWidget\\b:text + name"))
                                 + Widget("QLineEdit", "b", Property("~text", "@TopWidget\\a:text + 'y'"))));
        for (int i = 0; i < 200; ++i) {
            viewer.Edit("name", QString::number(i));
            QTRY_VERIFY(viewer.Find<QLineEdit>("b")->text().endsWith(QString("%1y").arg(i)));
        }
        QVERIFY(viewer.Find<QLineEdit>("b")->text().size() > 600);
        QTRY_COMPARE(
            viewer.Cell("declarations", DeclarationsModel::Widget, "b", DeclarationsModel::Diagnostic),
            QString("~text of QLineEdit \"b\": the statement reads in a circle, ~text of QLineEdit \"b\" reads "
                    "~text of QLineEdit \"a\" reads ~text of QLineEdit \"b\"."));
    }

    void DataAreRecordedAndReplayed()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath("data.jsonl");
        QString error;
        {
            const Viewer viewer(Settings);
            QVERIFY(!viewer.window->Record(dir.path(), &error));
            QVERIFY(viewer.window->Record(file, &error));
            viewer.Edit("name", "\"changed\"");
            QTRY_COMPARE(viewer.Value("name"), QString("\"changed\""));
            QTest::qWait(20);
            viewer.Edit("limits", "[50, 20]");
            QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 50"));
            viewer.Edit("limits", "null");
            QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit "));
        }
        DataRecording recording;
        QVERIFY2(recording.Read(file, &error), qPrintable(error));
        QCOMPARE(recording.Problems(), QStringList());
        // Behind what all variables were at the start.
        const RecordedChange change = recording.Changes().value(recording.Changes().size() - 2);
        QCOMPARE(change.value, QVariant(QVariantList{50, 20}));
        QVERIFY(!recording.Changes().last().value.isValid());

        const Viewer viewer(Settings);
        viewer.Edit("name", "\"mine\"");
        QVERIFY(viewer.window->Replay(file, &error));
        viewer.session->Motion().SetTime(change.seconds);
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 50"));
        viewer.session->Motion().SetTime(0);
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 30"));
        viewer.session->Motion().SetRunning(true);
        QTRY_COMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit "));
        // What the user has changed stays.
        QCOMPARE(viewer.Value("name"), QString("\"mine\""));
    }

    void FormLeavesTheStage()
    {
        const auto tells = [](const Viewer& viewer, const QString& text) {
            const QList<QLabel*> labels = viewer.window->findChildren<QLabel*>();
            return std::any_of(labels.begin(), labels.end(),
                               [&text](const QLabel* label) { return label->text() == text; });
        };
        const Viewer viewer(Settings);
        QWidget host;
        viewer.session->Form()->setParent(&host);
        QVERIFY(tells(viewer, "The form has been moved elsewhere."));
        viewer.session->Form()->setParent(nullptr);
        viewer.Trigger("Reload");
        QVERIFY(!tells(viewer, "The form has been moved elsewhere."));
        delete viewer.session->Form();
        QVERIFY(tells(viewer, "The form has been deleted."));
        viewer.Edit("limits", "[1]");
        QTRY_COMPARE(viewer.Value("limits"), QString("[1]"));
        viewer.Trigger("Reload");
        QCOMPARE(viewer.Find<QLabel>("title")->text(), QString("Limit 1"));
    }

    void TwoThousandDeclarations()
    {
        QString labels;
        for (int i = 0; i < 2000; ++i)
            labels += Widget("QLabel", QString("label%1").arg(i), Property("~text", QString("name + ' %1'").arg(i)));
        const Viewer viewer(Form(labels));
        QSignalSpy resets(viewer.Table("declarations"), &QAbstractItemModel::modelReset);
        QSignalSpy changes(viewer.Table("declarations"), &QAbstractItemModel::dataChanged);
        viewer.Edit("name", "\"new\"");
        QTRY_COMPARE(viewer.Cell("declarations", DeclarationsModel::Widget, "label1999", DeclarationsModel::Value),
                     QString("\"new 1999\""));
        QTRY_VERIFY(!changes.isEmpty());
        QCOMPARE(resets.size(), 0);
        QVERIFY(changes.size() < 100);
    }

    void RunsWithoutAPerson_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("output");
        QTest::newRow("text") << QStringList{"--print"} << 0 << QByteArray("TopWidget\\title\ttext\t\"Limit 30\"\n");
        QTest::newRow("JSON") << QStringList{"--json", "--set", "limits=[7]"} << 0
                              << QByteArray(R"({"property":"text","value":"Limit 7","widget":"TopWidget\\title"})");
        QTest::newRow("picture") << QStringList{"--screenshot", "picture.png"} << 0 << QByteArray();
        QTest::newRow("time") << QStringList{"--print", "--at", "2.5", "--data", "moving.json"} << 0
                              << QByteArray("\"Limit 4\"");
        QTest::newRow("no time") << QStringList{"--print", "--at", "nan"} << 2 << QByteArray();
        QTest::newRow("form alone") << QStringList{"--screenshot", "form.png", "--size", "500x300", "--scale", "2"} << 0
                                    << QByteArray();
        QTest::newRow("no size") << QStringList{"--screenshot", "a.png", "--size", "500"} << 2 << QByteArray();
        QTest::newRow("no scale") << QStringList{"--screenshot", "a.png", "--scale", "x"} << 2 << QByteArray();
        QTest::newRow("size of nothing") << QStringList{"--print", "--size", "500x300"} << 2 << QByteArray();
        QTest::newRow("watch and exit") << QStringList{"--print", "--watch"} << 2 << QByteArray();
        QTest::newRow("no translation") << QStringList{"--print", "--translation", "form.ui"} << 2 << QByteArray();
        QTest::newRow("no JSON") << QStringList{"--print", "--set", "limits=x"} << 2 << QByteArray();
        QTest::newRow("no data") << QStringList{"--print", "--data", "form.ui"} << 2 << QByteArray();
        QTest::newRow("no such form") << QStringList{"--print", "other.ui"} << 2 << QByteArray();
        QTest::newRow("picture nowhere") << QStringList{"--screenshot", "no/folder.png"} << 2 << QByteArray();
    }

    void RunsWithoutAPerson()
    {
        QFETCH(QStringList, options);
        const Viewer viewer(Settings);
        viewer.Write("moving.json",
                     R"({ "Main": { "limits": { "$toggle": { "seconds": 1, "values": [[3], [9], [4]] } } } })");
        QProcess program;
        program.setWorkingDirectory(viewer.dir.path());
        program.start(DECLVIEW, QStringList{"form.ui", "--data", "data.json", "--package", "Main"} + options);
        QVERIFY(program.waitForFinished());
        QTEST(program.exitCode(), "status");
        QFETCH(QByteArray, output);
        QVERIFY2(program.readAllStandardOutput().contains(output), program.readAllStandardError());
        if (options.contains("picture.png"))
            QVERIFY(QImage(viewer.dir.filePath("picture.png")).width() > 800);
        if (options.contains("form.png"))
            QCOMPARE(QImage(viewer.dir.filePath("form.png")).size(), QSize(1000, 600));
    }

    void ChangesArePrinted()
    {
        const Viewer viewer(Settings);
        QProcess program;
        program.setWorkingDirectory(viewer.dir.path());
        program.start(DECLVIEW, {"form.ui", "--data", "data.json", "--package", "Main", "--watch"});
        QByteArray output;
        const auto prints = [&](const QByteArray& line) {
            output += program.readAllStandardOutput();
            return output.contains(line);
        };
        QTRY_VERIFY(prints("TopWidget\\title\ttext\t\"Limit 30\"\n"));
        viewer.Write("data.json", R"({ "Main": { "limits": [31, 20] } })");
        QTRY_VERIFY(prints("TopWidget\\title\ttext\t\"Limit 31\"\n"));
        QCOMPARE(output.count("lower"), 1);
        program.kill();
        program.waitForFinished();
    }

    // Qt's loader crashes on each of them.
    void MalformedForms_data()
    {
        QTest::addColumn<QByteArray>("form");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("message");
        const QString plain = Widget("QWidget", "plain", "");
        const QString layout = "<layout class=\"%1\" name=\"layout\"/>";
        const QByteArray cycle
            = "</widget><customwidgets><customwidget><class>A</class><extends>B</extends></customwidget>"
              "<customwidget><class>B</class><extends>A</extends></customwidget></customwidgets></ui>";
        QTest::newRow("layout refused") << Form(Widget("QToolBar", "bar", plain + layout.arg("QVBoxLayout"))) << 0
                                        << QByteArray("Attempt to add a layout to a widget 'bar'");
        QTest::newRow("layout unknown") << Form(Widget("QWidget", "page", layout.arg("A"))) << 0
                                        << QByteArray("layout: the class A is unknown");
        const QString items = "<layout class=\"QVBoxLayout\" name=\"layout\">"
            + QString("<item>%1</item>").arg(plain).repeated(2) + "</layout>";
        QTest::newRow("layout of a scroll area")
            << Form(Widget("QScrollArea", "area", items)) << 0 << QByteArray("layout: a scroll area takes no layout.");
        QTest::newRow("classes that extend each other") << Form(Widget("A", "a", "")).replace("</widget></ui>", cycle)
                                                        << 0 << QByteArray("a: the class A is unknown");
        QTest::newRow("deep") << Form(QString("<widget class=\"QWidget\">").repeated(100000)) << 2
                              << QByteArray("form.ui:1:7274: The elements are nested more than 300 deep.");
    }

    void MalformedForms()
    {
        QFETCH(QByteArray, form);
        const QTemporaryDir dir;
        QFile file(dir.filePath("form.ui"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(form) == form.size());
        file.close();
        QProcess program;
        program.setWorkingDirectory(dir.path());
        program.start(DECLVIEW, {"form.ui", "--print"});
        QVERIFY(program.waitForFinished());
        const QByteArray errors = program.readAllStandardError();
        QFETCH(QByteArray, message);
        QVERIFY2(errors.contains(message), errors);
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QTEST(program.exitCode(), "status");
    }
};

QTEST_MAIN(TestDeclView)

#include "tst_declview.moc"
