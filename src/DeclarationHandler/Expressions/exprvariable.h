#ifndef EXPRVARIABLE_H
#define EXPRVARIABLE_H

#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/expression.h"

class IDataObserver;
class IDataPeer;

/// A data variable.
class DECLARATIONHANDLER_EXPORT ExprVariable : public Expression
{
public:
    /// Subscribes \a observer to the variable at once; without one, tells \a dataPeer that the
    /// variable is read. The node never withdraws either; an observer unregisters itself.
    /// \a dataPeer must not be null and must outlive the node.
    ExprVariable(IDataPeer* dataPeer, const VariableIdentifier& identifier, IDataObserver* observer, bool readOnly);

    /// The variable's value; invalid when the data layer holds none.
    QVariant Retrieve() const override;
    /// Writes the variable. True for every write that is handed to the data layer, whatever it does.
    bool Store(const QVariant& value) override;

private:
    IDataPeer* m_dataPeer;
    VariableIdentifier m_identifier;
};

#endif
