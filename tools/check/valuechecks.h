#ifndef VALUECHECKS_H
#define VALUECHECKS_H

#include "check/formfindings.h"
#include "common/formloader.h"
#include "common/statementtypes.h"

/// Checks what becomes of a statement's value: in the bound property, and when it is saved.
class ValueChecks
{
public:
    /// Both must outlive this object.
    ValueChecks(const FormModel& model, FormFindings* findings);

    /// Whether the bound property takes the value. The statement must parse.
    void CheckValue(const Declaration& declaration, const StatementTypes& types);
    /// Whether a save through the statement ends anywhere. It must have a tree.
    void CheckStore(const Declaration& declaration);
    /// Whether values come after their limits, for hosts that add the statements of a form in its order.
    void CheckOrder();

private:
    void CheckRange(const Declaration& declaration, const ValueType& type);
    void CheckChecked(const Declaration& declaration, const ValueType& type);
    void CheckOrder(const QVector<const Declaration*>& declarations);
    bool IsLimitBound(const Declaration& declaration) const;

    const FormModel& m_model;
    FormFindings* const m_findings;
    FormLoader m_loader; ///< One for all, since it looks for plugins each time.
};

#endif
