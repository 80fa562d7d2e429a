#ifndef IDATAPEERFACTORY_H
#define IDATAPEERFACTORY_H

#include <QtGlobal>

#include "DataLayer/datalayer_export.h"

class IDataPeer;

/// Hands out data peers.
class DATALAYER_EXPORT IDataPeerFactory
{
public:
    /// The data peer of that number, which stays the data layer's; declarations ask for number 0.
    virtual IDataPeer* GetDataPeer(const qint32& peer) = 0;

protected:
    ~IDataPeerFactory() {}
};

/// The data layer's factory, which lives to the end of the process. May be called from any thread.
///
/// A host with a data layer of its own defines this function itself and registers VariableIdentifier
/// with qRegisterMetaType<VariableIdentifier>("VariableIdentifier") before it makes the first
/// declaration. The definition stands in the program, or in a shared library that comes before
/// libDataLayer in link order and that the program itself uses (a linker may leave out others). The
/// argument is for such data layers; declarations pass false.
DATALAYER_EXPORT IDataPeerFactory* Ovex_DataPeerFactory(bool);

#endif
