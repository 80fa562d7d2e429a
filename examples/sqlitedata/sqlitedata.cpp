#include "sqlitedata.h"

#include <QCoreApplication>

#include "DataLayer/idatapeerfactory.h"
#include "sqlitedatapeer.h"

namespace {

//! [factory]
class SqliteDataPeerFactory : public IDataPeerFactory
{
public:
    SqliteDataPeerFactory() { qRegisterMetaType<VariableIdentifier>("VariableIdentifier"); }

    IDataPeer* GetDataPeer(const qint32&) override { return &peer; }

    SqliteDataPeer peer;
};
//! [factory]

/// Never destroyed: declarations held by static objects still unregister at exit.
SqliteDataPeerFactory* Factory()
{
    static auto* const factory = new SqliteDataPeerFactory;
    return factory;
}

} // namespace

QString SqliteData::Open(const QString& file)
{
    // The peer's thread must end while Qt's SQL module is still there.
    static const bool closesAtExit = [] {
        qAddPostRoutine([] { Factory()->peer.Close(); });
        return true;
    }();
    Q_UNUSED(closesAtExit)
    return Factory()->peer.Open(file);
}

//! [function]
IDataPeerFactory* Ovex_DataPeerFactory(bool)
{
    return Factory();
}
//! [function]
