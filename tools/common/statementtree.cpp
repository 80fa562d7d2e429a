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
}

void StatementTree::OnReport(const ParserReport& report)
{
    m_reports.append(report);
}
