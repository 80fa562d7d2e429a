#ifndef EXPRARRAY_H
#define EXPRARRAY_H

#include "DeclarationHandler/binaryexpression.h"

/// «collection[index]»: an element of a list by position, counted from 0, or an entry of a map by
/// key. A subscript that cannot be followed is told on the debug stream, with the value at fault;
/// null subscripts, a null collection and a missing key are not.
class DECLARATIONHANDLER_EXPORT ExprArray : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprArray(IExpression* collection, IExpression* index, bool readOnly);

    /// The element; invalid when there is none.
    QVariant Retrieve() const override;
    /// Replaces one element in a copy of the list and stores the whole list in the collection operand,
    /// whose answer it gives. Refuses maps, subscripts that are no integers, and positions outside
    /// the list.
    bool Store(const QVariant& value) override;

    /// Looks an entry up by key and puts it into \a result. True when the entry is there and not null.
    virtual bool RetrieveFromMap(QVariant& result, const QVariant& collection) const;
    /// Looks an element up by position and puts it into \a result, which stays as it is where false is
    /// returned.
    virtual bool RetrieveFromList(QVariant& result, const QVariant& collection) const;
};

#endif
