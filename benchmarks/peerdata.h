#ifndef PEERDATA_H
#define PEERDATA_H

#include <QCoreApplication>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "subject.h"

/// A subject whose variables are those of the data layer.
class PeerData : public Subject
{
public:
    void Define(const Variables& variables) override
    {
        for (const Variable& variable : variables) {
            m_identifiers.push_back(VariableIdentifier(variable.name, variable.package));
            Change(int(m_identifiers.size()) - 1, variable.value);
        }
    }
    void Change(int variable, const QVariant& value) override
    {
        m_peer->ChangeValue(m_identifiers[variable], value, IDataPeer::NoFlag);
    }
    void Deliver() override { QCoreApplication::processEvents(); }
    QVariant Value(int variable) const override { return m_peer->GetValue(m_identifiers[variable], QVariant()); }

protected:
    IDataPeer* const m_peer = Ovex_DataPeerFactory(false)->GetDataPeer(0);

private:
    std::vector<VariableIdentifier> m_identifiers;
};

#endif
