#include <QApplication>
#include <QElapsedTimer>
#include <QWidget>

#include "DeclarationForms/formbinding.h"
#include "check.h"
#include "countingpeer.h"
#include "writers.h"

// Eight threads write variables at full speed while this one delivers to two forms, edits, saves and reverts them, and
// binds and unbinds a page in each. Takes the number of seconds, 10 if none is given.

namespace {

const int FormCount = 2;
const int WritesPerRound = 20000;

/// Half of the bound properties read one variable each, the others the first ones' properties. Those of the second half
/// of the variables lie on a page that comes and goes.
class Form
{
public:
    explicit Form(IDataPeer* peer) : m_page(new QWidget(&m_top)), m_binding(&m_top)
    {
        m_page->setObjectName("page");
        for (int i = 0; i < VariableCount; ++i) {
            QObject* const object = new QObject(i < VariableCount / 2 ? &m_top : m_page);
            object->setObjectName("o" + QString::number(i));
            object->setProperty("p", 0);
            object->setProperty("q", QString());
            object->setProperty("_p", "v" + QString::number(i));
            object->setProperty("~q", QString("@Widget:p + '!'"));
            m_objects.push_back(object);
        }
        m_binding.SetDataPeer(peer);
        m_binding.SetDefaultPackage("p");
        m_binding.Bind();
    }

    FormBinding& Binding() { return m_binding; }
    QWidget* Page() { return m_page; }
    QObject* Object(int number) { return m_objects[number]; }

private:
    QWidget m_top;
    QWidget* const m_page;
    std::vector<QObject*> m_objects;
    FormBinding m_binding;
};

/// What must hold once all writers rest and all that was gathered is delivered.
void CheckQuiet(Form* form, CountingPeer* peer, const Writers& writers, Checks* checks)
{
    checks->Hold(!form->Binding().IsEdited(), "without an edit nothing is edited");
    checks->Hold(form->Binding().Problems().isEmpty(), "nothing is wrong");
    for (int i = 0; i < VariableCount; ++i) {
        const QVariant value = form->Object(i)->property("p");
        checks->Hold(value == peer->GetValue(Variable(i), QVariant()), "a property holds its variable's value");
        checks->Hold(form->Object(i)->property("q") == value.toString() + "!", "its reader follows");
        // The first is saved over.
        checks->Hold(i == 0 || value.toInt() == writers.LastValue(i), "the last write is not lost");
    }
}

void Churn(Form* form)
{
    form->Binding().Unbind(form->Page());
    QCoreApplication::processEvents();
    form->Binding().Bind(form->Page());
    form->Object(0)->setProperty("p", -1);
    form->Object(1)->setProperty("p", -1);
    QCoreApplication::processEvents();
    form->Binding().Save(form->Object(0));
    form->Binding().Revert(form->Object(1));
}

/// Answers how often its properties were evaluated.
quint64 Round(Form* forms, CountingPeer* peer, Writers* writers, Checks* checks)
{
    writers->Start(WritesPerRound);
    while (!writers->AreIdle()) {
        for (int i = 0; i < FormCount; ++i)
            Churn(&forms[i]);
    }
    QCoreApplication::processEvents();
    quint64 evaluations = 0;
    for (int i = 0; i < FormCount; ++i) {
        CheckQuiet(&forms[i], peer, *writers, checks);
        for (const BoundProperty& bound : forms[i].Binding().BoundProperties())
            evaluations += bound.evaluations;
        forms[i].Binding().Unbind();
    }
    checks->Hold(peer->Observers() == 0, "nobody observes what is unbound");
    for (int i = 0; i < FormCount; ++i)
        forms[i].Binding().Bind();
    return evaluations;
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const double seconds = argc > 1 ? QByteArray(argv[1]).toDouble() : 10;
    CountingPeer peer;
    for (int i = 0; i < VariableCount; ++i)
        peer.ChangeValue(Variable(i), 0, IDataPeer::NoFlag);

    Checks checks;
    {
        Form forms[FormCount] = {Form(&peer), Form(&peer)};
        Writers writers(&peer);
        int rounds = 0;
        quint64 evaluations = 0;
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < seconds * 1000; ++rounds)
            evaluations += Round(forms, &peer, &writers, &checks);
        writers.End();
        checks.Hold(evaluations > 0, "somebody was at work");
        std::printf("%d rounds, %lld writes, %llu evaluations\n", rounds, writers.Writes(), evaluations);
    }
    checks.Hold(peer.Observers() == 0, "no form leaves an observer");
    checks.Hold(peer.LateNotifications() == 0, "nothing is delivered after RemoveObserver");
    return checks.Result();
}
