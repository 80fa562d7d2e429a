#ifndef STATEMENTTYPES_H
#define STATEMENTTYPES_H

#include <QVariant>
#include <QVector>

#include <functional>

#include "common/statementtree.h"

/// Whether the number has no fraction, however large it is.
bool IsWhole(double number);

/// What is known of a value before its statement is evaluated.
struct ValueType
{
    enum Kind
    {
        Missing = 0x01,
        Truth = 0x02,
        Integer = 0x04,
        Double = 0x08,
        Text = 0x10,
        List = 0x20,
        Map = 0x40,
        Other = 0x80, ///< Dates, colours and the like.
        Any = 0xff
    };

    int kinds = Any;             ///< All that it may be.
    bool isConstant = false;     ///< Whether it depends on no reference.
    bool isKnown = false;        ///< Whether there is a value.
    QVariant value;              ///< The value, or an example of it when it is no constant.
    bool spellsNoNumber = false; ///< Whether it is surely a text, and one that spells no number.
    bool hasFraction = false;    ///< Whether it is a number that need not be a whole one.

    /// Whether it is one of these kinds, if it is there at all.
    bool IsOnly(int allowed) const { return (kinds & ~(allowed | Missing)) == 0 && (kinds & ~Missing) != 0; }

    static int KindOf(const QVariant& value);
    /// The type of variables with values like \a value, which may be missing at times.
    static ValueType FromExample(const QVariant& value);
    /// The type of literals with that value.
    static ValueType FromConstant(const QVariant& value);
};

/// The types of all nodes of a statement, from those of what it reads. What the operators make of them, their own
/// nodes tell.
class StatementTypes
{
public:
    /// The type of a variable or a property.
    using Lookup = std::function<ValueType(const Reference& reference)>;

    StatementTypes(const StatementTree& tree, const Lookup& lookup);

    const ValueType& Of(int node) const { return m_types.at(node); }

private:
    using Node = StatementTree::Node;

    ValueType Derive(const Node& node) const;
    ValueType DeriveOperand(const StatementToken& token) const;
    ValueType DeriveOperator(const Node& node) const;

    const StatementTree& m_tree;
    const Lookup m_lookup;
    QVector<ValueType> m_types;
};

#endif
