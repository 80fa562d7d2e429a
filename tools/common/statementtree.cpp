#include "common/statementtree.h"

#include <QScopedPointer>

#include <algorithm>

#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/parser.h"

StatementTree::StatementTree(const QString& statement)
{
    Parser parser;
    parser.SetListener(this);
    parser.Tokenize(statement);
    const QScopedPointer<IExpression> expression(parser.Parse(nullptr, nullptr, nullptr, nullptr, QString(), true));
    m_root = m_numbers.value(expression.data(), -1);
    const auto leftOver = std::find_if(m_reports.begin(), m_reports.end(), [](const ParserReport& report) {
        return report.cause == ParserReport::LeftOver;
    });
    m_consumed = leftOver == m_reports.end() ? m_tokens.Tokens().size() : m_tokens.NumberAt(leftOver->place.offset);
}

TextPlace StatementTree::PlaceOf(int node) const
{
    const QVector<StatementToken>& tokens = m_tokens.Tokens();
    const int offset = tokens.at(m_spans.at(node).first).place.offset;
    return {offset, tokens.at(m_spans.at(node).last).place.End() - offset};
}

int StatementTree::Inside(int node) const
{
    while (m_nodes.at(node).kind == ParsedNode::Parentheses)
        node = m_nodes.at(node).left;
    return node;
}

void StatementTree::OnToken(const Token& token, const TextPlace& place)
{
    m_tokens.Append(token, place);
}

/// Nothing is evaluated, so that any node stands for what is read.
IExpression* StatementTree::CreateReference(const VariableToken&, const TextPlace&, bool)
{
    return new ExprConstant(QVariant());
}

void StatementTree::OnNode(const ParsedNode& node)
{
    m_numbers.insert(node.node, m_nodes.size());
    m_nodes.append({node.kind, node.token, m_numbers.value(node.left, -1), m_numbers.value(node.right, -1)});
    m_spans.append(SpanOf(m_nodes.last()));
}

void StatementTree::OnReport(const ParserReport& report)
{
    m_reports.append(report);
}

StatementTree::Span StatementTree::SpanOf(const Node& node) const
{
    const int last = m_tokens.Tokens().size() - 1;
    switch (node.kind) {
    case ParsedNode::Operand:
        return {node.token, node.token};
    case ParsedNode::Prefix:
        return {node.token, m_spans.at(node.left).last};
    case ParsedNode::Parentheses:
        return {node.token, qMin(last, m_spans.at(node.left).last + 1)};
    case ParsedNode::Subscript:
        return {m_spans.at(node.left).first, qMin(last, m_spans.at(node.right).last + 1)};
    default:
        return {m_spans.at(node.left).first, m_spans.at(node.right).last};
    }
}
