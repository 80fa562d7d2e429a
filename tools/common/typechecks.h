#ifndef TYPECHECKS_H
#define TYPECHECKS_H

#include "common/checks.h"
#include "common/diagnosis.h"
#include "common/statementtypes.h"

/// The traps of the language that the types of the values tell.
class TypeChecks
{
public:
    /// All must outlive this object. Findings are added to \a findings; what is told there of the words of a
    /// condition already is not told again.
    TypeChecks(const Diagnosis& diagnosis, const StatementTypes& types, const CheckOptions& options,
               QVector<StatementFinding>* findings);

    /// \a wantsTruth tells whether the value is for a property that is true or false.
    void Run(bool wantsTruth);

private:
    using Node = StatementTree::Node;

    void MarkTree();
    void CheckNode(int number);
    void CheckLiteral(int number);
    void CheckSum(const Node& node);
    void CheckArithmetic(const Node& node);
    bool CheckCollections(const Node& node, const QString& consequence);
    void CheckEquality(int number);
    bool CheckLeftSide(const Node& node);
    bool CheckRightLiteral(const Node& node);
    bool CheckCollectionEquality(const Node& node);
    void CheckOrdering(int number);
    void CheckConstant(int number);
    void CheckLogic(const Node& node);
    void CheckOperandTruth(int operand);
    void CheckTruth(int operand);
    void CheckDecision(const Node& node, int decider, int other);
    void CheckPrefix(const Node& node);
    void CheckReach(const Node& node);
    void CheckElement(const Node& node);
    void CheckPosition(const Node& node);
    void CheckKey(const Node& node);
    bool IsDecided(const Node& node, const QVariant& value) const;

    bool IsCollection(int number) const { return m_types.Of(number).IsOnly(ValueType::List | ValueType::Map); }
    QString ElementHint(int collection) const;
    bool IsOperator(int number, Language::Role role) const;
    bool IsNumberLiteral(int number) const;
    bool IsQuoted(int number) const;
    bool IsTold(int number) const;
    const StatementToken& TokenOf(int number) const { return m_tree.TokenOf(m_nodes.at(number)); }
    TextPlace PlaceOf(int number) const { return m_tree.PlaceOf(number); }
    QString TextOf(int number) const;
    void Report(Check check, const TextPlace& place, const QString& message);

    const Diagnosis& m_diagnosis;
    const StatementTypes& m_types;
    const CheckOptions& m_options;
    const StatementTree& m_tree;
    const QVector<Node>& m_nodes;
    QVector<StatementFinding>* const m_findings;
    QVector<bool> m_inTree;
    QVector<bool> m_isAsked; ///< Whether it is part of what HASVALUE asks for.
};

#endif
