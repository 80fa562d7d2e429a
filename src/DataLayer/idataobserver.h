#ifndef IDATAOBSERVER_H
#define IDATAOBSERVER_H

#include "DataLayer/datalayer_export.h"

class VariableIdentifier;

/// Hears of changes of the variables that it was registered for with IDataPeer::AddObserver().
class DATALAYER_EXPORT IDataObserver
{
public:
    virtual ~IDataObserver() {}

    /// Called after the variable has changed, once for each change, in the thread that changed it.
    virtual void OnNotify(const VariableIdentifier& identifier) = 0;
};

#endif
