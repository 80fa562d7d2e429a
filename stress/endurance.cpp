#include <QApplication>
#include <QFile>
#include <QLabel>

#include <unistd.h>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formbinding.h"
#include "DeclarationHandler/declarationhandler.h"
#include "check.h"

// Pushes notifications, ten million unless another number is given, through a form of 500 bindings, which is loaded
// anew a thousand times on the way, and prints the resident memory at ten points. After the first it must be flat.
// The form is loaded into a handler, or with "forms" as a page that is bound and unbound.

namespace {

const int BindingCount = 500;
const int PointCount = 10;
const int ReloadsPerPoint = 100;
const int Burst = 1000; ///< Notifications that wait at once.

/// What the allocator keeps back may differ from point to point. One block of the smallest size (32 bytes) lost with
/// each notification makes 32 MB between two points of a full run, and one lost with each binding that is loaded
/// 14 MB until the last.
const qint64 Tolerance = 512 * 1024;

qint64 ResidentBytes()
{
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

VariableIdentifier Variable(int number)
{
    return VariableIdentifier("v" + QString::number(number), "p");
}

/// What labels are loaded into.
struct Host
{
    QWidget form;
    DeclarationHandler handler;
    FormBinding binding{&form};
};

/// Every second binding reads a variable, the others what the one before shows.
class Labels
{
public:
    explicit Labels(QWidget* form) : m_page(new QWidget(form))
    {
        for (int i = 0; i < BindingCount; ++i)
            (new QLabel(m_page))->setObjectName("l" + QString::number(i));
    }
    ~Labels() { delete m_page; }

    QWidget* Page() const { return m_page; }
    QLabel* At(int number) const { return static_cast<QLabel*>(m_page->children().at(number)); }
    static QString Statement(int number)
    {
        return number % 2 == 0 ? QString("'n ' + v%1 + ' of ' + limit").arg(number)
                               : QString("@ParentWidget\\l%1:text + '!'").arg(number - 1);
    }

private:
    QWidget* const m_page;
};

/// Declarations of the handler, while they live.
class HandledLabels : public Labels
{
public:
    explicit HandledLabels(Host* host) : Labels(&host->form), m_handler(host->handler)
    {
        for (int i = 0; i < BindingCount; ++i)
            m_handler.AddDeclaration(&host->form, At(i), "~text", Statement(i), "p", true, true);
        m_handler.ConnectPropertyCrossReferences();
        m_handler.Update();
    }
    ~HandledLabels() { m_handler.Clear(); }

private:
    DeclarationHandler& m_handler;
};

/// A page that is bound in the form, while it lives.
class BoundLabels : public Labels
{
public:
    explicit BoundLabels(Host* host) : Labels(&host->form), m_binding(host->binding)
    {
        for (int i = 0; i < BindingCount; ++i)
            At(i)->setProperty("~text", Statement(i));
        m_binding.Bind(Page());
    }
    ~BoundLabels() { m_binding.Unbind(Page()); }

private:
    FormBinding& m_binding;
};

/// The number of the last notification.
template<typename LoadedLabels>
qint64 Notify(IDataPeer* peer, Host* host, qint64 first, qint64 count)
{
    const LoadedLabels labels(host);
    for (qint64 i = first; i < first + count; ++i) {
        peer->ChangeValue(Variable(i * 2 % BindingCount), i, IDataPeer::ForceNotification);
        if (i % Burst == 0)
            QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    const qint64 last = first + count - 1;
    return labels.At(last * 2 % BindingCount + 1)->text() == QString("n %1 of 9!").arg(last) ? last : -1;
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const qint64 count = argc > 1 ? QByteArray(argv[1]).toLongLong() : 10000000;
    IDataPeer* const peer = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    peer->ChangeValue(VariableIdentifier("limit", "p"), 9, IDataPeer::NoFlag);

    Host host;
    host.binding.SetDefaultPackage("p");
    const auto notify = argc > 2 && QByteArray(argv[2]) == "forms" ? Notify<BoundLabels> : Notify<HandledLabels>;
    Checks checks;
    qint64 done = 0;
    qint64 first = 0;
    for (int point = 1; point <= PointCount; ++point) {
        for (int i = 0; i < ReloadsPerPoint; ++i) {
            const qint64 part = count / (PointCount * ReloadsPerPoint);
            checks.Hold(notify(peer, &host, done + 1, part) == done + part, "the form shows the last change");
            done += part;
        }
        const qint64 resident = ResidentBytes();
        std::printf("%10lld notifications  %8.2f MiB\n", done, resident / 1048576.0);
        std::fflush(stdout);
        first = point == 1 ? resident : first;
        checks.Hold(resident > 0 && resident <= first + Tolerance, "resident memory is flat after the first point");
    }
    return checks.Result();
}
