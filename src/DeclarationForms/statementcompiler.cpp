#include "DeclarationForms/statementcompiler.h"

#include <QStringList>

#include "DeclarationForms/formreferences.h"
#include "DeclarationForms/watchedvariable.h"
#include "DeclarationHandler/Tokens/variabletoken.h"

namespace {

bool IsWidgetPath(const QString& package)
{
    const QString first = package.section(QLatin1Char('\\'), 0, 0, QString::SectionSkipEmpty);
    return first == QLatin1String("Widget") || first == QLatin1String("TopWidget")
        || first == QLatin1String("ParentWidget");
}

QString ReasonOf(const ParserReport& report)
{
    switch (report.cause) {
    case ParserReport::EmptyStatement:
        return QStringLiteral("the statement is empty");
    case ParserReport::OperandWanted:
        return QStringLiteral("the statement wants a value here");
    case ParserReport::OperatorWanted:
        return QStringLiteral("the statement wants an operator here");
    default: {
        QString reason = report.message;
        if (reason.endsWith(QLatin1Char('.')))
            reason.chop(1);
        return QStringLiteral("the statement cannot be read: %1").arg(reason);
    }
    }
}

} // namespace

StatementCompiler::StatementCompiler(WatchedVariables* variables) : m_variables(variables)
{
    m_parser.SetListener(this);
}

bool StatementCompiler::Compile(const QString& statement, IDataPeer* peer, const QString& package, bool readOnly,
                                CompiledStatement* compiled, Fault* fault)
{
    m_tokens.clear();
    m_found.clear();
    m_variableNodes.clear();
    m_propertyNodes.clear();
    m_compiled = compiled;
    m_fault = fault;
    m_peer = peer;
    m_package = package;
    m_hasError = false;
    m_hasLeftOver = false;
    m_parser.Tokenize(statement);
    compiled->tree.reset(m_parser.Parse(peer, nullptr, nullptr, nullptr, package, readOnly));
    // Without one of these the parser has deleted none of the nodes that it asked for.
    if (compiled->tree && !m_hasError && !m_hasLeftOver) {
        compiled->variables = ReferenceChain<FormVariable>(m_variableNodes);
        compiled->properties = ReferenceChain<FormProperty>(m_propertyNodes);
        return true;
    }
    for (const WatchedVariable* const variable : m_found)
        m_variables->Discard(*variable);
    *compiled = CompiledStatement();
    return false;
}

void StatementCompiler::SplitReference(const QString& reference, QStringList* path, QString* property)
{
    const std::unique_ptr<Token> token(VariableToken::Parse(reference));
    const VariableToken& variable = *static_cast<const VariableToken*>(token.get());
    *path = variable.GetPackage(QString()).split(QLatin1Char('\\'), Qt::SkipEmptyParts);
    *property = variable.GetVariableName();
}

void StatementCompiler::OnToken(const Token& token, const TextPlace& place)
{
    m_tokens.push_back({token.GetTokenType(), place});
}

IExpression* StatementCompiler::CreateReference(const VariableToken& token, const TextPlace& place, bool readOnly)
{
    const QString package = token.GetPackage(m_package);
    if (token.HasPackage() && IsWidgetPath(package)) {
        FormProperty* const property = new FormProperty(place, readOnly);
        m_propertyNodes.push_back(property);
        return property;
    }
    const VariableIdentifier identifier(token.GetVariableName(), package);
    m_found.push_back(m_variables->Find(m_peer, identifier));
    FormVariable* const variable = new FormVariable(m_found.back(), readOnly);
    m_variableNodes.push_back(variable);
    return variable;
}

void StatementCompiler::OnNode(const ParsedNode& node)
{
    if (node.kind == ParsedNode::Subscript)
        m_compiled->subscripts.emplace_front(node.node, PlaceOfIndex(node.token));
}

void StatementCompiler::OnReport(const ParserReport& report)
{
    // The first one tells the cause of the others; what is left over counts where there is none.
    if (m_hasError || (m_hasLeftOver && !report.isError))
        return;
    m_fault->place = report.place;
    if (report.isError) {
        m_hasError = true;
        m_fault->kind = FormProblem::Syntax;
        m_fault->reason = ReasonOf(report);
        return;
    }
    m_hasLeftOver = true;
    m_fault->kind = FormProblem::LeftOver;
    m_fault->reason = QStringLiteral("text stands behind the end of the statement");
}

/// From the opening bracket to the closing one.
TextPlace StatementCompiler::PlaceOfIndex(int bracket) const
{
    int depth = 0;
    for (std::size_t i = bracket; i < m_tokens.size(); ++i) {
        if (m_tokens[i].type == Token::TT_LEFT_BRACKET)
            ++depth;
        else if (m_tokens[i].type == Token::TT_RIGHT_BRACKET && --depth == 0)
            return TextPlace(m_tokens[bracket].place.offset, m_tokens[i].place.End() - m_tokens[bracket].place.offset);
    }
    return m_tokens[bracket].place;
}
