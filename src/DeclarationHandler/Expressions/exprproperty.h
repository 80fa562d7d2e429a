#ifndef EXPRPROPERTY_H
#define EXPRPROPERTY_H

#include "DeclarationHandler/binaryexpression.h"

/// «object .member»: an entry of a map, or a field of a VariantObject, named by the text of the
/// member operand's value.
class DECLARATIONHANDLER_EXPORT ExprProperty : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprProperty(IExpression* object, IExpression* member, bool readOnly);

    /// The entry or field; invalid when there is none. The member operand is evaluated only when the
    /// object's value can have members.
    QVariant Retrieve() const override;
    /// Sets the entry in a copy of the map, adding it where it is new, and stores the whole map in the
    /// object operand, whose answer it gives. Refuses everything but maps.
    bool Store(const QVariant& value) override;
};

#endif
