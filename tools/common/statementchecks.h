#ifndef STATEMENTCHECKS_H
#define STATEMENTCHECKS_H

#include "common/checks.h"
#include "common/diagnosis.h"
#include "common/statementtypes.h"

/// What the parser reports, and the traps of the language.
class StatementChecks
{
public:
    /// All must outlive this object.
    StatementChecks(const Diagnosis& diagnosis, const StatementTypes& types, const CheckOptions& options);

    /// Tells that the value is for a property that is true or false.
    void WantTruth() { m_wantsTruth = true; }

    /// All but the disabled ones. A trap takes the place of what the parser says about the same words.
    QVector<StatementFinding> Run();

private:
    using Node = StatementTree::Node;

    void CheckTokens();
    void CheckMinus(int token);
    void CheckText(const StatementToken& token);
    void CheckName(int token);
    void CheckVariable(int token);
    QString HintFor(int token) const;
    void CheckParser();
    bool IsExplained(const TextPlace& place) const;
    void CheckSums();
    void CheckLogic();
    void CheckComparisons();
    bool IsNumberSum(const Node& node, const QVector<bool>& sums) const;
    QVector<bool> NodesInTree() const;
    void Report(Check check, const TextPlace& place, const QString& message, const QString& fix = QString());

    const Diagnosis& m_diagnosis;
    const StatementTypes& m_types;
    const CheckOptions& m_options;
    const QVector<StatementToken>& m_tokens;
    const StatementTree& m_tree;
    QVector<bool> m_inTree;
    bool m_wantsTruth = false;
    QVector<StatementFinding> m_findings;
};

/// What a variable is like, by the data; of one that is not known there, and of properties, nothing is known.
ValueType TypeOfVariable(const Reference& reference, const CheckOptions& options);

/// Where a save through a statement ends: at a reference that takes the value, or at a node that refuses it.
struct StoreTarget
{
    int token;      ///< The reference, or the token of the node that refuses.
    QString reason; ///< Why it is refused; empty when it is not.
};

/// The statement must have a tree.
StoreTarget FindStoreTarget(const StatementTree& tree);

#endif
