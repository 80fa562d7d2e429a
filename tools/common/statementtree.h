#ifndef STATEMENTTREE_H
#define STATEMENTTREE_H

#include "common/statementtokens.h"

/// The structure of a statement, with the tokens that the nodes stem from. It follows the grammar of the
/// library's parser step by step and notes the place of everything that the parser reports.
class StatementTree
{
public:
    enum Kind
    {
        Leaf,        ///< A literal or reference.
        Binary,      ///< Left and right are the operands.
        Prefix,      ///< NOT or HASVALUE; left is the operand.
        Parentheses, ///< Left is what they enclose.
        Subscript,   ///< Left is the collection, right the index.
        Member       ///< Left is the object, right the member.
    };

    struct Node
    {
        Kind kind;
        int token; ///< The leaf's token, the operator or the opening bracket.
        int left;  ///< A node, or -1.
        int right; ///< A node, or -1.
    };

    /// What the parser reports at one place.
    struct Report
    {
        Place place;
        QString detail; ///< What the parser's message leaves open, or empty.
        bool isError;   ///< Tokens that are left over are a warning.
    };

    explicit StatementTree(const StatementTokens& statement);

    /// -1 when nothing can be made of the statement.
    int Root() const { return m_root; }
    /// In an order in which children come before their parents.
    const QVector<Node>& Nodes() const { return m_nodes; }
    const StatementToken& TokenOf(const Node& node) const { return m_tokens.at(node.token); }
    /// How many tokens the tree is made of; those behind are left over.
    int TokenCount() const { return m_consumed; }
    /// One for each message of the parser, in the same order. None, or too few, where the statement is
    /// nested more deeply than the parser allows.
    const QVector<Report>& Reports() const { return m_reports; }

private:
    // As the members of Parser with these names; they answer a node, or -1.
    int CreateExpression(int* position, int minPrecedence);
    int CreateOperand(int* position, int minPrecedence);
    int CreateBinary(int* position, int left);
    int CreateParenthesised(int* position);
    int CreatePrefix(int* position, int minPrecedence);
    int CreateAtomic(int* position);
    int CreateSelectors(int* position, int base);
    int CreateSubscripts(int* position, int base);
    int CreateIndex(int* position);
    int CreateMember(int* position, int base);

    bool HasTokens(int position, int count) const { return position + count <= m_tokens.size(); }
    bool IsAt(int position, Token::TOKEN_TYPE type) const { return m_tokens.at(position).type == type; }
    bool IsRefused() const;
    bool ExpectClosing(int position, Token::TOKEN_TYPE type);
    int Add(Kind kind, int token, int left, int right = -1);
    QString FailureDetail() const;
    Place PlaceOf(int token) const;
    void Fail(int position, const char* detail);

    const QVector<StatementToken> m_tokens;
    Place m_end;
    QVector<Node> m_nodes;
    QVector<Report> m_reports;
    int m_root;
    int m_consumed;
    int m_nesting = 0;
    int m_failedIndexes = 0;
    int m_failure = -1; ///< The last token that was none of those that the grammar allows there.
    const char* m_failureDetail = "";
};

#endif
