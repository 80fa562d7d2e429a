#ifndef STATEMENTCHECKS_H
#define STATEMENTCHECKS_H

#include <QSet>
#include <QString>
#include <QVector>

#include "common/diagnosis.h"
#include "declcheck/finding.h"

class KnownVariables;

struct CheckOptions
{
    QString package;                           ///< Of variables that are named without one.
    const KnownVariables* variables = nullptr; ///< Where it is known which there are.
    QSet<int> disabled;                        ///< Values of Check.

    bool IsEnabled(Check check) const { return !disabled.contains(int(check)); }
};

/// So many are told of one statement; a generated or damaged one may be wrong in each of its words.
const int MaxFindings = 100;

/// What is wrong with a statement, whatever form it stands in.
struct StatementFinding
{
    Check check;
    TextPlace place;
    QString message;
};

/// What the parser reports, and the traps of the language.
class StatementChecks
{
public:
    StatementChecks(const Diagnosis& diagnosis, const CheckOptions& options);

    /// All but the disabled ones. A trap takes the place of what the parser says about the same words.
    QVector<StatementFinding> Run();

private:
    using Node = StatementTree::Node;

    void CheckTokens();
    void CheckMinus(int token);
    void CheckKeyword(const StatementToken& token);
    void CheckVariable(const StatementToken& token);
    void CheckParser();
    bool IsExplained(const TextPlace& place) const;
    void CheckSums();
    void CheckLogic();
    void CheckComparisons();
    bool IsNumberSum(const Node& node, const QVector<bool>& sums) const;
    bool IsText(const Node& node, const QVector<bool>& texts) const;
    bool HoldsText(const StatementToken& token) const;
    QVector<bool> NodesInTree() const;
    void Report(Check check, const TextPlace& place, const QString& message);

    const Diagnosis& m_diagnosis;
    const CheckOptions& m_options;
    const QVector<StatementToken>& m_tokens;
    const StatementTree& m_tree;
    QVector<bool> m_inTree;
    QVector<StatementFinding> m_findings;
};

/// Where a save through a statement ends: at a reference that takes the value, or at a node that refuses it.
struct StoreTarget
{
    int token;      ///< The reference, or the token of the node that refuses.
    QString reason; ///< Why it is refused; empty when it is not.
};

/// The statement must have a tree.
StoreTarget FindStoreTarget(const StatementTree& tree);

#endif
