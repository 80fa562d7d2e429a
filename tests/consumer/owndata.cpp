// The host's own data layer, in the place of the one that comes with the library: every value is 42.
#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"

namespace {

class OwnData : public IDataPeer, public IDataPeerFactory
{
public:
    OwnData() { qRegisterMetaType<VariableIdentifier>("VariableIdentifier"); }
    IDataPeer* GetDataPeer(const qint32&) override { return this; }
    QVariant GetValue(const VariableIdentifier&, const QVariant&) override { return 42; }
    bool ChangeValue(const VariableIdentifier&, const QVariant&, ChangeValueFlags) override { return false; }
    bool AddObserver(const VariableIdentifier&, IDataObserver*) override { return true; }
    void RemoveObserver(IDataObserver*) override {}
    bool AddReference(const VariableIdentifier&) override { return true; }
};

} // namespace

IDataPeerFactory* Ovex_DataPeerFactory(bool)
{
    static OwnData data;
    return &data;
}
