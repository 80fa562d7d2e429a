#include <QTest>

#include <utility>

#include "DeclarationForms/formobserver.h"
#include "support/formfixture.h"

namespace {

/// Writes down what it is told.
class Recorder : public FormObserver
{
public:
    Recorder() { Install(this); }

    QStringList Take() { return std::exchange(m_told, {}); }

    QVector<qint64> m_times;

private:
    void OnMade(FormBinding* binding) override { m_told << (Bindings().contains(binding) ? "made" : "unknown"); }
    void OnGone(FormBinding*) override { m_told << "gone"; }
    void OnBound(FormBinding*) override { m_told << "bound"; }
    void OnMarked(FormBinding*, int place, const FormCause& cause) override
    {
        const QString variable = cause.variable.GetPackage() + ':' + cause.variable.GetName();
        const QString object = cause.object ? cause.object->objectName() : QString();
        m_told << QString("mark %1 by %2")
                      .arg(place)
                      .arg(cause.kind == FormCause::Variable       ? variable
                               : cause.kind == FormCause::Property ? object + '.' + cause.name
                                                                   : cause.name);
    }
    void OnEvaluated(FormBinding*, const FormEvaluation& evaluation) override
    {
        m_told << QString("evaluate %1 %2%3")
                      .arg(evaluation.place)
                      .arg(evaluation.object ? evaluation.object->objectName() : "-", evaluation.property);
        m_times << evaluation.nanoseconds;
    }
    void OnDelivered(FormBinding*, int evaluations, qint64 nanoseconds) override
    {
        m_told << QString("deliver %1").arg(evaluations);
        m_times << nanoseconds;
    }

    QStringList m_told;
};

} // namespace

/// What an observer of all bindings is told.
class FormObserverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Deliveries();
    void Binding();
    void Removal();
};

void FormObserverTest::Deliveries()
{
    Recorder recorder;
    Form form;
    QCheckBox* const box = form.Add<QCheckBox>("box", {{"_checked", "a"}});
    form.Add<QLabel>("label", {{"~text", "'x' + @TopWidget\\box:checked"}});
    form.m_binding->Bind();
    QCOMPARE(recorder.Take(),
             QStringList({"made", "bound", "mark 1 by Bind", "bound", "mark 2 by Bind", "evaluate 1 box_checked",
                          "evaluate 2 label~text", "deliver 2"}));
    form.m_peer.Set("a", true);
    form.Turn();
    QCOMPARE(recorder.Take(),
             QStringList({"mark 1 by :a", "mark 2 by box.checked", "evaluate 1 box_checked", "evaluate 2 label~text",
                          "deliver 2"}));
    box->click();
    form.Turn();
    QCOMPARE(recorder.Take(), QStringList({"mark 2 by box.checked", "evaluate 2 label~text", "deliver 1"}));
    form.m_binding->Revert();
    QCOMPARE(recorder.Take(),
             QStringList({"mark 1 by Revert", "mark 2 by box.checked", "evaluate 1 box_checked",
                          "evaluate 2 label~text", "deliver 2"}));
    form.m_binding->Update();
    QCOMPARE(recorder.Take(),
             QStringList({"mark 1 by Update", "mark 2 by Update", "evaluate 1 box_checked", "evaluate 2 label~text",
                          "deliver 2"}));
    // A delivery takes as long as its evaluations at least.
    const QVector<qint64> last = recorder.m_times.mid(recorder.m_times.size() - 3);
    QVERIFY(last.at(0) > 0 && last.at(1) > 0 && last.at(0) + last.at(1) <= last.at(2));
}

void FormObserverTest::Binding()
{
    Recorder recorder;
    {
        Form form;
        QLabel* const label = form.Add<QLabel>("label");
        QCOMPARE(form.m_binding->Form(), static_cast<QObject*>(label->window()));
        form.m_binding->SetDefaultPackage("p");
        QCOMPARE(form.m_binding->DefaultPackage(), QString("p"));
        QCOMPARE(form.m_binding->DataPeer(), static_cast<IDataPeer*>(&form.m_peer));
        form.m_binding->SetDataPeer(nullptr);
        QVERIFY(form.m_binding->DataPeer());
        form.m_binding->Bind(label, "~text", "a");
        form.m_binding->Bind(label, "~text", "b");
        form.m_binding->Unbind();
        form.m_binding->Bind(label, "~text", "c");
        recorder.Take();
        delete label;
        QCOMPARE(recorder.Take(), QStringList("bound"));
        form.m_binding->Bind(form.Add<QLabel>("other"), "~text", "d");
        form.m_binding->Bind(form.Add<QLabel>("reader"), "~text", "@TopWidget\\other:text");
        recorder.Take();
    }
    QCOMPARE(recorder.Take(), QStringList("gone"));
    QVERIFY(FormObserver::Bindings().isEmpty());
}

void FormObserverTest::Removal()
{
    Form form;
    QLabel* const label = form.Add<QLabel>("label", {{"~text", "a"}});
    {
        Recorder recorder;
        Recorder other;
        QCOMPARE(FormObserver::Installed(), static_cast<FormObserver*>(&other));
        form.m_binding->Bind();
        QVERIFY(recorder.Take().isEmpty() && !other.Take().isEmpty());
    }
    QVERIFY(!FormObserver::Installed());
    form.m_peer.Set("a", 1);
    form.Turn();
    QCOMPARE(label->text(), QString("1"));
}

QTEST_MAIN(FormObserverTest)
#include "tst_forms_observer.moc"
