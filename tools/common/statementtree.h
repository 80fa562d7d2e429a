#ifndef STATEMENTTREE_H
#define STATEMENTTREE_H

#include <QHash>

#include "DeclarationHandler/parserlistener.h"
#include "common/statementtokens.h"

/// The structure of a statement, as the library's parser tells it: its tokens, what it builds of them and what
/// it reports.
///
/// Widget paths are taken to lead to an object each; whether they do, the form must tell.
class StatementTree : private ParserListener
{
public:
    using Kind = ParsedNode::Kind;

    struct Node
    {
        Kind kind;
        int token; ///< The operand's own, the operator or the opening bracket.
        int left;  ///< A node, or -1.
        int right; ///< A node, or -1.
    };

    explicit StatementTree(const QString& statement);

    const StatementTokens& Tokens() const { return m_tokens; }
    /// -1 when nothing can be made of the statement.
    int Root() const { return m_root; }
    /// In an order in which children come before their parents. Some are in no tree: the parser gave them up
    /// again.
    const QVector<Node>& Nodes() const { return m_nodes; }
    const StatementToken& TokenOf(const Node& node) const { return m_tokens.Tokens().at(node.token); }
    /// From the first to the last token of a node.
    TextPlace PlaceOf(int node) const;
    /// The node in the parentheses, if it is one.
    int Inside(int node) const;
    /// How many tokens the tree is made of; those behind are left over.
    int TokenCount() const { return m_consumed; }
    /// In the order of the parser's messages.
    const QVector<ParserReport>& Reports() const { return m_reports; }

private:
    /// The first and the last token of a node.
    struct Span
    {
        int first;
        int last;
    };

    Span SpanOf(const Node& node) const;

    void OnToken(const Token& token, const TextPlace& place) override;
    IExpression* CreateReference(const VariableToken& token, const TextPlace& place, bool readOnly) override;
    void OnNode(const ParsedNode& node) override;
    void OnReport(const ParserReport& report) override;

    StatementTokens m_tokens;
    QVector<Node> m_nodes;
    QVector<Span> m_spans;                    ///< Of the nodes.
    QHash<const IExpression*, int> m_numbers; ///< Of the nodes.
    QVector<ParserReport> m_reports;
    int m_root;
    int m_consumed;
};

#endif
