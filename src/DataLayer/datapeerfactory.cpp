#include "DataLayer/idatapeerfactory.h"

#include "DataLayer/memorydatapeer.h"

namespace {

/// There is one set of variables, whatever the number asked for.
class MemoryDataPeerFactory : public IDataPeerFactory
{
public:
    MemoryDataPeerFactory() { qRegisterMetaType<VariableIdentifier>("VariableIdentifier"); }

    IDataPeer* GetDataPeer(const qint32&) override { return &m_peer; }

private:
    MemoryDataPeer m_peer;
};

} // namespace

IDataPeerFactory* Ovex_DataPeerFactory(bool)
{
    // Never destroyed: declarations held by static objects of the host still unregister at exit.
    static MemoryDataPeerFactory* const factory = new MemoryDataPeerFactory;
    return factory;
}
