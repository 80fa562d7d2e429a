#include <QComboBox>
#include <QProcess>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include "common/datarecording.h"
#include "formpage.h"
#include "inspectedform.h"
#include "inspectorwindow.h"
#include "neighbourhood.h"
#include "support/formfixture.h"

namespace {

const char* const HostArgument = "--host";

/// A form that reads a, in a chain over two labels, with an unbound check box.
class Chain : public Form
{
public:
    Chain()
    {
        m_box = Add<QCheckBox>("box");
        m_spin = Add<QSpinBox>("spin", {{"_value", "a"}});
        m_first = Add<QLabel>("first", {{"~text", "'x' + @TopWidget\\spin:value + b"}});
        m_second = Add<QLabel>("second", {{"~text", "@TopWidget\\first:text + @TopWidget\\box:checked"}});
        m_peer.Set("a", 1);
        m_peer.Set("b", 2);
        m_binding->Bind();
    }

    QCheckBox* m_box;
    QSpinBox* m_spin;
    QLabel* m_first;
    QLabel* m_second;
};

QString Figures(const InspectedForm& form, int position)
{
    const EvaluationFigures figures = form.FiguresOf(position);
    return QString("%1 %2 %3 by %4")
        .arg(form.Properties().at(position).evaluations)
        .arg(figures.evaluations)
        .arg(figures.lastSecond)
        .arg(figures.cause);
}

QStringList Labels(const Neighbourhood& neighbourhood)
{
    QStringList labels;
    for (const Neighbour& node : neighbourhood.nodes)
        labels << QString("%1 %2").arg(node.step).arg(node.label.section('\\', -1));
    labels.sort();
    return labels;
}

QTableView* Table(const InspectorWindow& window, const QString& name)
{
    return window.CurrentPage()->findChild<QTableView*>(name);
}

} // namespace

class InspectorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Counting();
    void Timeline();
    void Replacing();
    void Neighbours();
    void Window();
    void Data_data();
    void Data();
    void DataStayWhileTyped();
    void Recording();
    void Picking_data();
    void Picking();
    void Flashing();
    void FlashedWidgetMoves();
    void FormsThatGo();
    void PeersThatGo();
    void WhatIsNotBound();
    void NestedDeliveries();
    void NestedForms();
    void Keyboard();
    void Environment_data();
    void Environment();
};

void InspectorTest::Counting()
{
    Chain form;
    Inspection inspection;
    QCOMPARE(inspection.Forms().size(), 1);
    InspectedForm* const inspected = inspection.Forms().first();
    inspected->Refresh();
    QCOMPARE(inspected->Properties().size(), 3);
    QCOMPARE(Figures(*inspected, 0), QString("1 0 0 by "));
    form.m_peer.Set("a", 5);
    form.Turn();
    inspected->Refresh();
    QCOMPARE(Figures(*inspected, 0), QString("2 1 0 by variable :a"));
    QCOMPARE(Figures(*inspected, 1), QString("2 1 0 by property value of spin"));
    form.m_box->click();
    form.Turn();
    inspected->EndSecond();
    QCOMPARE(Figures(*inspected, 1), QString("2 1 1 by property value of spin"));
    QCOMPARE(Figures(*inspected, 2), QString("3 2 2 by property checked of box"));
    QVERIFY(inspected->FiguresOf(2).nanoseconds > 0);
    form.m_binding->Update();
    inspected->EndSecond();
    QCOMPARE(Figures(*inspected, 2), QString("4 3 1 by Update"));
    inspected->EndSecond();
    QCOMPARE(inspected->FiguresOf(2).lastSecond, 0);

    form.m_spin->setValue(7);
    form.m_peer.Set("b", QVariant());
    form.m_binding->Bind(form.m_box, "~text", "missing");
    inspected->EndSecond();
    QVERIFY(inspected->Properties().at(0).edited);
    QVERIFY(inspected->Properties().at(3).problem.contains("no value"));
    form.m_peer.Set("missing", "there");
    form.Turn();
    inspected->EndSecond();
    QVERIFY(inspected->Properties().at(3).Problem().startsWith("no more: "));
}

void InspectorTest::Timeline()
{
    Chain form;
    Inspection inspection;
    const InspectedForm& inspected = *inspection.Forms().first();
    for (int i = 0; i < InspectedForm::MaxDeliveries + 3; ++i) {
        form.m_peer.Set(i == 0 ? "b" : "a", i + 10);
        form.Turn();
    }
    QCOMPARE(int(inspected.Deliveries().size()), InspectedForm::MaxDeliveries);
    QCOMPARE(inspected.DeliveryCount(), quint64(InspectedForm::MaxDeliveries + 3));
    QCOMPARE(inspected.Deliveries().back().cause, QString("variable :a"));
    QVERIFY(inspected.Deliveries().back().nanoseconds > 0);
}

void InspectorTest::Replacing()
{
    Chain form;
    Inspection inspection;
    InspectedForm& inspected = *inspection.Forms().first();
    form.m_peer.Set("a", 5);
    form.Turn();
    inspected.Refresh();
    form.m_binding->Bind(form.m_spin, "~value", "a + 1");
    delete form.m_first;
    inspected.Refresh();
    QCOMPARE(inspected.Properties().size(), 2);
    QCOMPARE(inspected.Properties().at(0).statement, QString("a + 1"));
    QCOMPARE(Figures(inspected, 0), QString("3 2 0 by Bind"));
    form.Turn();
    inspected.Refresh();
    QCOMPARE(inspected.FiguresOf(1).evaluations, quint64(3));
    QVERIFY(inspected.ReadersOf(0).isEmpty());
}

void InspectorTest::Neighbours()
{
    Chain form;
    Inspection inspection;
    InspectedForm& inspected = *inspection.Forms().first();
    inspected.Refresh();
    QCOMPARE(Labels(NeighbourhoodOf(inspected, 0)),
             QStringList({"-1 :a", "0 spin:value", "1 first:text", "2 second:text"}));
    const Neighbourhood last = NeighbourhoodOf(inspected, 2);
    QCOMPARE(Labels(last), QStringList({"-1 box:checked", "-1 first:text", "-2 :b", "-2 spin:value", "0 second:text"}));
    QCOMPARE(last.arrows.size(), 4);
    QVERIFY(NeighbourhoodOf(inspected, 3).nodes.isEmpty());
}

void InspectorTest::Window()
{
    Chain form;
    Chain other;
    InspectorWindow window;
    window.show();
    QCOMPARE(window.findChild<QComboBox*>()->count(), 2);
    form.m_peer.Set("a", 5);
    form.Turn();
    window.Refresh();
    const QAbstractItemModel* const table = Table(window, "declarations")->model();
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(table->index(1, InspectionModel::Cause).data().toString(), QString("property value of spin"));
    QVERIFY(table->index(1, InspectionModel::Time).data().toDouble() > 0);
    window.ShowWidget(other.m_second);
    QCOMPARE(window.findChild<QComboBox*>()->currentIndex(), 1);
    QCOMPARE(Table(window, "declarations")->currentIndex().row(), 2);
    // The selection stays where other declarations come.
    other.m_binding->Bind(other.m_box, "~text", "a");
    other.m_binding->Bind(other.m_spin, "~value", "a");
    window.Refresh();
    QCOMPARE(Table(window, "declarations")->model()->rowCount(), 4);
    QCOMPARE(Table(window, "declarations")->currentIndex().row(), 2);
}

void InspectorTest::Data_data()
{
    QTest::addColumn<QVariant>("present");
    QTest::addColumn<QString>("entered");
    QTest::addColumn<QVariant>("value"); // Invalid where it is refused.
    QTest::newRow("number") << QVariant(1) << "42" << QVariant(42);
    QTest::newRow("fraction") << QVariant(5.0) << "6" << QVariant(6.0);
    QTest::newRow("text of digits") << QVariant("abc") << "12" << QVariant("12");
    QTest::newRow("date") << QVariant(QDate(2026, 1, 2)) << "2026-02-03" << QVariant(QDate(2026, 2, 3));
    QTest::newRow("no date") << QVariant(QDate(2026, 1, 2)) << "soon" << QVariant();
    QTest::newRow("fraction for a whole number") << QVariant(1) << "1.5" << QVariant();
    QTest::newRow("text for a number") << QVariant(1) << "one" << QVariant();
    QTest::newRow("no JSON") << QVariant(1) << "[1" << QVariant();
    QTest::newRow("missing before") << QVariant() << "[1]" << QVariant(QVariantList{1});
}

void InspectorTest::Data()
{
    QFETCH(QVariant, present);
    QFETCH(QString, entered);
    QFETCH(QVariant, value);
    Chain form;
    InspectorWindow window;
    window.Refresh();
    QAbstractItemModel* const data = Table(window, "data")->model();
    QCOMPARE(data->rowCount(), 2);
    const QModelIndex cell = data->index(0, HostDataModel::Value);
    form.m_peer.Set("a", present);
    const VariableIdentifier identifier("a", QString());
    QCOMPARE(data->setData(cell, entered), value.isValid());
    const QVariant now = form.m_peer.GetValue(identifier, QVariant());
    QCOMPARE(now, value.isValid() ? value : present);
    QCOMPARE(now.userType(), (value.isValid() ? value : present).userType());
    form.m_peer.m_refused << "a";
    QVERIFY(!data->setData(cell, "77"));
}

void InspectorTest::DataStayWhileTyped()
{
    Form form;
    form.Add<QSpinBox>("spin", {{"_value", "a"}});
    form.m_peer.Set("a", 1);
    form.m_binding->Bind();
    InspectorWindow window;
    window.show();
    for (QTabWidget* const tabs : window.findChildren<QTabWidget*>())
        tabs->setCurrentIndex(2);
    window.Refresh();
    QTableView* const table = Table(window, "data");
    table->setCurrentIndex(table->model()->index(0, HostDataModel::Value));
    table->edit(table->currentIndex());
    auto* const editor = table->viewport()->findChild<QLineEdit*>();
    QVERIFY(editor);
    editor->setText("12345");
    form.m_peer.Set("a", 2);
    window.Refresh();
    form.Add<QLabel>("late");
    form.m_binding->Bind(&form.m_form, "~toolTip", "a");
    window.Refresh();
    QCOMPARE(editor->text(), QString("12345"));
}

void InspectorTest::Recording()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("host.jsonl");
    auto form = std::make_unique<Chain>();
    InspectorWindow window;
    window.Refresh();
    QVERIFY(!window.StartRecording(folder.filePath("none/host.jsonl")));
    QVERIFY(window.StartRecording(file));
    form->m_peer.Set("b", "text");
    form.reset();
    DataRecording recording;
    QString error;
    QVERIFY2(recording.Read(file, &error), qPrintable(error));
    QCOMPARE(recording.Problems(), QStringList());
    QCOMPARE(recording.Changes().size(), 3);
    QCOMPARE(recording.Changes().last().identifier, VariableIdentifier("b", QString()));
    QCOMPARE(recording.Changes().last().value, QVariant("text"));
}

void InspectorTest::Picking_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("isPicked");
    QTest::newRow("click") << "click" << true;
    QTest::newRow("Enter") << "enter" << true;
    QTest::newRow("Escape") << "escape" << false;
    QTest::newRow("given up") << "stop" << false;
}

void InspectorTest::Picking()
{
    QFETCH(QString, way);
    QFETCH(bool, isPicked);
    Chain form;
    form.m_spin->window()->show();
    QPushButton* const button = form.Add<QPushButton>("button");
    button->show();
    form.m_binding->Bind(button, "~text", "a");
    InspectorWindow window;
    window.show();
    int clicks = 0;
    connect(button, &QPushButton::clicked, this, [&] { ++clicks; });
    window.Picker().Start();
    if (way == "click")
        QTest::mouseClick(button, Qt::LeftButton);
    else if (way == "stop")
        window.Picker().Stop();
    else
        QTest::keyClick(button, way == "enter" ? Qt::Key_Return : Qt::Key_Escape);
    QVERIFY(!window.Picker().IsPicking());
    QCOMPARE(Table(window, "declarations")->currentIndex().row(), isPicked ? 3 : -1);
    QCOMPARE(clicks, 0);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(clicks, 1);
}

void InspectorTest::Flashing()
{
    Chain form;
    QWidget* const hidden = form.Add<QWidget>("hidden");
    QLabel* const inner = form.Add<QLabel>("inner", {}, hidden);
    QWidget* const top = form.m_spin->window();
    top->show();
    form.m_spin->show();
    InspectorWindow window;
    window.ShowWidget(form.m_spin);
    QCOMPARE(window.Flash().Target(), static_cast<QWidget*>(form.m_spin));
    QVERIFY(top->findChild<WidgetHighlight*>()->Shows());
    QTRY_VERIFY_WITH_TIMEOUT(!window.Flash().Target(), 10000);
    QVERIFY(!top->findChild<WidgetHighlight*>());
    hidden->hide();
    QCOMPARE(WidgetFlash::WidgetOf(inner), top);
    window.Flash().Start(form.m_spin);
    delete form.m_spin;
    QTRY_VERIFY_WITH_TIMEOUT(!top->findChild<WidgetHighlight*>(), 10000);
}

void InspectorTest::FlashedWidgetMoves()
{
    Chain form;
    QWidget other;
    form.m_spin->window()->show();
    form.m_spin->show();
    InspectorWindow window;
    window.Flash().Start(form.m_spin);
    form.m_spin->setParent(&other);
    other.show();
    form.m_spin->show();
    QVERIFY(!form.m_first->window()->findChild<WidgetHighlight*>()->isVisible());
}

/// A host may delete its peer once nothing is bound over it.
void InspectorTest::PeersThatGo()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("host.jsonl");
    Form form;
    form.Add<QLabel>("label", {{"~text", "a"}});
    auto peer = std::make_unique<FormPeer>();
    peer->Set("a", 1);
    form.m_binding->SetDataPeer(peer.get());
    form.m_binding->Bind();
    InspectorWindow window;
    window.show();
    window.Refresh();
    QVERIFY(window.StartRecording(file));
    QAbstractItemModel* const data = Table(window, "data")->model();
    form.m_binding->Unbind();
    peer.reset();
    QCOMPARE(data->index(0, HostDataModel::Value).data().toString(), QString("missing"));
    window.Refresh();
    QVERIFY(window.IsRecording());
    form.m_binding->SetDataPeer(&form.m_peer);
    form.m_peer.Set("a", 2);
    form.m_binding->Bind();
    window.Refresh();
    form.m_peer.Set("a", 3);
    window.StopRecording();
    DataRecording recording;
    QString error;
    QVERIFY2(recording.Read(file, &error), qPrintable(error));
    QVariantList values;
    for (const RecordedChange& change : recording.Changes())
        values << change.value;
    QCOMPARE(values, QVariantList({1, 2, 3}));
}

void InspectorTest::WhatIsNotBound()
{
    Chain form;
    Inspection inspection;
    InspectedForm& inspected = *inspection.Forms().first();
    inspected.Refresh();
    QVERIFY(!form.m_binding->Bind(form.m_box, "~text", "1 +"));
    inspected.EndSecond();
    inspected.Refresh();
    QCOMPARE(inspected.Properties().size(), 4);
    QCOMPARE(inspected.Properties().last().statement, QString("1 +"));
    QVERIFY(!inspected.Properties().last().problem.isEmpty());
    QVERIFY(inspected.Has(form.m_box));
    QVERIFY(form.m_binding->Bind(form.m_box, "~text", "1"));
    inspected.EndSecond();
    QCOMPARE(inspected.Properties().size(), 4);
    QCOMPARE(inspected.Properties().last().problem, QString());
}

void InspectorTest::NestedDeliveries()
{
    Chain form;
    Inspection inspection;
    const InspectedForm& inspected = *inspection.Forms().first();
    connect(form.m_spin, QOverload<int>::of(&QSpinBox::valueChanged), form.m_binding, &FormBinding::Update);
    form.m_peer.Set("a", 5);
    form.Turn();
    QCOMPARE(int(inspected.Deliveries().size()), 1);
    QCOMPARE(inspected.Deliveries().back().cause, QString("variable :a"));
}

/// The nearest declarations are shown, whichever form they are of.
void InspectorTest::NestedForms()
{
    Form outer;
    QLabel* const label = outer.Add<QLabel>("label", {{"~text", "1"}});
    FormBinding around(&outer.m_form);
    QVERIFY(around.Bind(&outer.m_form, "~windowTitle", "'title'"));
    outer.m_binding->Bind();
    InspectorWindow window;
    window.show();
    window.ShowWidget(label);
    const QModelIndex current = Table(window, "declarations")->currentIndex();
    QCOMPARE(current.siblingAtColumn(InspectionModel::Widget).data().toString(), QString("label"));
    // A filter does not hide what is picked.
    auto* const filter = window.CurrentPage()->findChild<QLineEdit*>();
    // Its button appears slowly, which Qt does not end with the window.
    filter->setClearButtonEnabled(false);
    filter->setText("nothing of this name");
    window.ShowWidget(label);
    QCOMPARE(Table(window, "declarations")->model()->rowCount(), 1);
    QVERIFY(Table(window, "declarations")->currentIndex().isValid());
}

void InspectorTest::FormsThatGo()
{
    auto form = std::make_unique<Chain>();
    InspectorWindow window;
    window.show();
    window.ShowWidget(form->m_second);
    delete form->m_second;
    QCoreApplication::processEvents();
    window.Refresh();
    window.ShowWidget(form->m_first);
    form.reset();
    QVERIFY(!window.CurrentPage());
    window.Refresh();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(window.findChildren<FormPage*>().size(), 0);
    form = std::make_unique<Chain>();
    window.Refresh();
    QCOMPARE(Table(window, "declarations")->model()->rowCount(), 3);
}

/// All that takes the keyboard has a name.
void InspectorTest::Keyboard()
{
    Chain form;
    InspectorWindow window;
    window.show();
    int count = 0;
    for (const QWidget* const widget : window.CurrentPage()->findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy() || widget->inherits("QTabBar")
            || widget->inherits("QHeaderView"))
            continue;
        QVERIFY2(!widget->accessibleName().isEmpty(), widget->metaObject()->className());
        ++count;
    }
    QVERIFY(count >= 8);
    QVERIFY(!window.findChild<QComboBox*>()->accessibleName().isEmpty());
}

void InspectorTest::Environment_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("asked") << "1" << true;
    QTest::newRow("not asked") << "0" << false;
}

/// This program once more, as a host that knows nothing of the inspector.
void InspectorTest::Environment()
{
    QFETCH(QString, variable);
    QFETCH(bool, isShown);
    QProcess host;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DECLARATIONFORMS_INSPECT", variable);
    host.setProcessEnvironment(environment);
    host.start(QCoreApplication::applicationFilePath(), {HostArgument});
    QVERIFY(host.waitForFinished());
    QCOMPARE(host.exitStatus(), QProcess::NormalExit);
    QCOMPARE(host.exitCode(), isShown ? 1 : 0);
}

/// How many windows of an inspector there are once a form is bound.
int RunHost()
{
    Chain form;
    QCoreApplication::processEvents();
    int windows = 0;
    for (const QWidget* const widget : QApplication::topLevelWidgets())
        windows += widget->inherits("InspectorWindow") && widget->isVisible();
    return windows;
}

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    if (application.arguments().contains(HostArgument))
        return RunHost();
    InspectorTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_inspector.moc"
