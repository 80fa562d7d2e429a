#ifndef EXPRCONSTANT_H
#define EXPRCONSTANT_H

#include "DeclarationHandler/expression.h"

/// A literal. Cannot be written.
class DECLARATIONHANDLER_EXPORT ExprConstant : public Expression
{
public:
    /// Keeps a copy of \a value, which may be invalid.
    explicit ExprConstant(const QVariant& value);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;

private:
    QVariant m_value;
};

#endif
