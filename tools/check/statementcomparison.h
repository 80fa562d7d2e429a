#ifndef STATEMENTCOMPARISON_H
#define STATEMENTCOMPARISON_H

#include <QHash>
#include <QPair>

#include "common/diagnosis.h"
#include "common/statementtypes.h"

/// Compares a translated statement with what it translates. Texts that are shown may differ, and the order of what
/// "+" joins; nothing else.
class StatementComparison
{
public:
    struct Difference
    {
        TextPlace place; ///< In the translation.
        QString message;
        QString fix; ///< What certainly belongs in the place, or empty.
    };

    struct Options
    {
        StatementTypes::Lookup lookup; ///< Of what both read.
        QString package;               ///< Of variables that are named without one.
        bool showsTexts;               ///< Whether anybody reads the texts of the bound property.
    };

    /// Both must parse.
    StatementComparison(const Diagnosis& original, const Diagnosis& translation, const Options& options);

    QVector<Difference> Run();

    /// What a reference reads, the same for all that read the same.
    static QString NameOf(const Reference& reference, const QString& package);
    /// Whether there is anything for a translator to do in a statement that parses.
    static bool HasShownText(const Diagnosis& statement, const StatementTypes::Lookup& lookup);

private:
    using Node = StatementTree::Node;
    /// Numbers of equal expressions, by what they are made of.
    using Numbers = QHash<QPair<QPair<int, int>, QString>, int>;

    /// One of the two statements.
    class Side
    {
    public:
        Side(const Diagnosis& statement, const Options& options, Numbers* numbers);

        const StatementTree& Tree() const { return m_statement.Tree(); }
        const Node& At(int node) const { return Tree().Nodes().at(node); }
        const StatementToken& TokenOf(int node) const { return Tree().TokenOf(At(node)); }
        bool IsOperand(int node) const { return At(node).kind == ParsedNode::Operand; }
        /// As written, with the middle left out where it is long.
        QString TextOf(int node) const;
        /// Equal for expressions that mean the same.
        int NumberOf(int node) const { return node < 0 ? -1 : m_numbers.at(node); }
        /// What the statement joins in the end, or all of it.
        QVector<int> Parts() const;
        bool IsShown(int part) const { return m_options.showsTexts && IsOperand(part) && TokenOf(part).IsQuoted(); }

    private:
        bool IsText(int node) const { return m_types.Of(node).IsOnly(ValueType::Text); }
        bool IsNumber(int node) const;
        bool Joins(int node) const;
        int MakeNumber(int node, Numbers* numbers) const;

        const Diagnosis& m_statement;
        const Options& m_options;
        const StatementTypes m_types;
        QVector<int> m_numbers; ///< Of the nodes.
    };

    /// Two nodes, one of each statement, and where they stand.
    struct Pair
    {
        int original;
        int translated;
        const char* reason; ///< Why they may not differ there; null where nothing is known of the place.
    };

    void RemoveCommon(QVector<int>* originals, QVector<int>* translated) const;
    bool TakeSplitSum(int original, QVector<int>* translated);
    int TakeCounterpart(int translated, QVector<int>* originals) const;
    Pair FindDifference(int original, int translated) const;
    void Report(const Pair& pair, bool isOnly);
    QString ReasonFor(const Pair& pair) const;

    Options m_options;
    Numbers m_numbers;
    const Side m_original;
    const Side m_translation;
    QVector<Difference> m_differences;
};

#endif
