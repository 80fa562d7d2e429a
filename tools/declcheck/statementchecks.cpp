#include "declcheck/statementchecks.h"

#include <algorithm>

#include "DeclarationHandler/Tokens/variabletoken.h"
#include "declcheck/knownvariables.h"

namespace {

bool IsLogic(const StatementToken& token)
{
    return token.HasRole(Language::LogicOperator);
}

bool IsOrdering(const StatementToken& token)
{
    return token.HasRole(Language::OrderingOperator);
}

bool IsQuoted(const StatementToken& token)
{
    return token.type == Token::TT_SINGLE_QUOTE || token.type == Token::TT_DOUBLE_QUOTE;
}

QString Content(const StatementToken& quoted)
{
    return quoted.lexeme.mid(1, quoted.lexeme.size() - 2);
}

bool EndsOperand(const StatementToken& token)
{
    return !token.row || token.HasRole(Language::Literal) || token.HasRole(Language::ClosingBracket);
}

/// The one of the words that differs from the name in upper and lower case only, or nothing.
QString InOtherCase(const QStringList& words, const QString& name)
{
    for (const QString& word : words) {
        if (word != name && word.compare(name, Qt::CaseInsensitive) == 0)
            return word;
    }
    return QString();
}

bool IsPosition(const StatementToken& literal)
{
    bool isWhole = false;
    if (literal.type == Token::TT_NUMBER) {
        const double number = literal.lexeme.toDouble(&isWhole);
        return isWhole && number >= 0 && number == qRound64(number);
    }
    return !IsQuoted(literal) || (Content(literal).toInt(&isWhole) >= 0 && isWhole);
}

} // namespace

StatementChecks::StatementChecks(const Diagnosis& diagnosis, const CheckOptions& options)
    : m_diagnosis(diagnosis),
      m_options(options),
      m_tokens(diagnosis.Tokens().Tokens()),
      m_tree(diagnosis.Tree()),
      m_inTree(NodesInTree())
{
}

QVector<StatementFinding> StatementChecks::Run()
{
    CheckTokens();
    CheckParser();
    CheckSums();
    CheckLogic();
    CheckComparisons();
    return m_findings;
}

void StatementChecks::CheckTokens()
{
    for (int i = 0; i < m_tokens.size(); ++i) {
        CheckMinus(i);
        if (m_tokens.at(i).type == Token::TT_VARIABLE)
            CheckKeyword(m_tokens.at(i));
    }
}

void StatementChecks::CheckMinus(int token)
{
    const StatementToken& number = m_tokens.at(token);
    if (token == 0 || number.type != Token::TT_NUMBER || !number.lexeme.startsWith('-')
        || !EndsOperand(m_tokens.at(token - 1)))
        return;
    Report(Check::MinusSign, number.place,
           QString("\"%1\" is a number of its own here; a subtraction has a space behind the minus: \"- %2\"")
               .arg(number.lexeme, number.lexeme.mid(1)));
}

void StatementChecks::CheckKeyword(const StatementToken& token)
{
    static const QStringList keywords = StatementTokens::Keywords();
    static const QStringList starts = VariableToken::GetPathStarts();
    const Reference& reference = token.reference;
    if (reference.IsProperty())
        return;
    const KnownVariables* const variables = m_options.variables;
    if (variables && variables->Find(reference.Package(m_options.package), reference.name))
        return;
    const QString package = reference.package.section('\\', 0, 0, QString::SectionSkipEmpty);
    const QString keyword = reference.hasPackage ? QString() : InOtherCase(keywords, reference.name);
    const QString start = InOtherCase(starts, package);
    if (!keyword.isEmpty())
        Report(Check::KeywordCase, token.place,
               QString("\"%1\" is the name of a variable here; the keyword is \"%2\"").arg(reference.name, keyword));
    else if (!start.isEmpty())
        Report(Check::KeywordCase, token.place,
               QString("\"%1\" is the name of a package here; a widget path starts with \"%2\"").arg(package, start));
    else
        CheckVariable(token);
}

void StatementChecks::CheckVariable(const StatementToken& token)
{
    if (!m_options.variables)
        return;
    const Reference& reference = token.reference;
    const QString package = reference.Package(m_options.package);
    const QString where
        = package.isEmpty() ? QString("without a package") : QString("in the package \"%1\"").arg(package);
    Report(Check::UnknownVariable, reference.namePlace,
           QString("The data have no \"%1\" %2%3")
               .arg(reference.name, where, m_options.variables->Hint(package, reference.name)));
}

void StatementChecks::CheckParser()
{
    if (m_diagnosis.Messages().isEmpty())
        return;
    const Diagnosis::Message& first = m_diagnosis.Messages().first();
    const Check check = m_diagnosis.HasError() || !m_diagnosis.HasExpression() ? Check::ParseError : Check::LeftOver;
    if (!IsExplained(first.place))
        Report(check, first.place, first.Whole());
}

/// Whether a trap was found at the token where the parser stopped, or right before it.
bool StatementChecks::IsExplained(const TextPlace& place) const
{
    const auto stop = std::find_if(m_tokens.begin(), m_tokens.end(),
                                   [&](const StatementToken& token) { return token.place.offset >= place.offset; });
    const int from = stop == m_tokens.begin() ? place.offset : (stop - 1)->place.offset;
    return std::any_of(m_findings.begin(), m_findings.end(), [&](const StatementFinding& finding) {
        return finding.check != Check::UnknownVariable && finding.place.offset >= from
            && finding.place.offset <= place.offset;
    });
}

void StatementChecks::CheckSums()
{
    const QVector<Node>& nodes = m_tree.Nodes();
    QVector<bool> sums(nodes.size());
    for (int i = 0; i < nodes.size(); ++i)
        sums[i] = IsNumberSum(nodes.at(i), sums);
    // Of sums in sums the outermost is told.
    QVector<bool> told(nodes.size());
    for (int i = nodes.size() - 1; i >= 0; --i) {
        const Node& node = nodes.at(i);
        const bool isSum = sums.at(i) && node.kind == ParsedNode::Binary;
        if (isSum && m_inTree.at(i) && !told.at(i))
            Report(Check::LiteralSum, m_tree.TokenOf(node).place,
                   "\"+\" joins the texts of number literals; to add, subtract the negative: \"1 - -2\"");
        for (const int child : {node.left, node.right}) {
            if (child >= 0)
                told[child] = told.at(child) || told.at(i) || isSum;
        }
    }
}

bool StatementChecks::IsNumberSum(const Node& node, const QVector<bool>& sums) const
{
    const Token::TOKEN_TYPE type = m_tree.TokenOf(node).type;
    if (node.kind == ParsedNode::Operand)
        return type == Token::TT_NUMBER;
    if (node.kind == ParsedNode::Parentheses)
        return sums.at(node.left);
    return node.kind == ParsedNode::Binary && type == Token::TT_PLUS && sums.at(node.left) && sums.at(node.right);
}

void StatementChecks::CheckLogic()
{
    const QVector<Node>& nodes = m_tree.Nodes();
    QVector<bool> mixed(nodes.size());
    for (int i = 0; i < nodes.size(); ++i) {
        const Node& node = nodes.at(i);
        if (node.kind != ParsedNode::Binary || !IsLogic(m_tree.TokenOf(node)))
            continue;
        const Node& left = nodes.at(node.left);
        const StatementToken& before = m_tree.TokenOf(left);
        const StatementToken& token = m_tree.TokenOf(node);
        if (left.kind != ParsedNode::Binary || !IsLogic(before))
            continue;
        mixed[i] = mixed.at(node.left) || before.type != token.type;
        if (mixed.at(i) && !mixed.at(node.left) && m_inTree.at(i))
            Report(Check::MixedLogic, token.place,
                   QString("\"%1\" and \"%2\" group from left to right; parentheses tell what is meant")
                       .arg(before.lexeme, token.lexeme));
    }
}

void StatementChecks::CheckComparisons()
{
    const QVector<Node>& nodes = m_tree.Nodes();
    QVector<bool> texts(nodes.size());
    for (int i = 0; i < nodes.size(); ++i) {
        const Node& node = nodes.at(i);
        texts[i] = IsText(node, texts);
        if (m_inTree.at(i) && node.kind == ParsedNode::Binary && IsOrdering(m_tree.TokenOf(node))
            && (texts.at(node.left) || texts.at(node.right)))
            Report(Check::TextComparison, m_tree.TokenOf(node).place,
                   QString("\"%1\" compares numbers; a text that spells none counts as 0")
                       .arg(m_tree.TokenOf(node).lexeme));
    }
}

/// Whether the value is surely a text that spells no number.
bool StatementChecks::IsText(const Node& node, const QVector<bool>& texts) const
{
    switch (node.kind) {
    case ParsedNode::Operand:
        return HoldsText(m_tree.TokenOf(node));
    case ParsedNode::Parentheses:
        return texts.at(node.left);
    case ParsedNode::Binary:
        return m_tree.TokenOf(node).type == Token::TT_PLUS && (texts.at(node.left) || texts.at(node.right));
    default:
        return false;
    }
}

bool StatementChecks::HoldsText(const StatementToken& token) const
{
    bool isNumber = false;
    if (IsQuoted(token)) {
        Content(token).toDouble(&isNumber);
        return !isNumber;
    }
    if (!m_options.variables || token.type != Token::TT_VARIABLE || token.reference.IsProperty())
        return false;
    const Variable* const variable
        = m_options.variables->Find(token.reference.Package(m_options.package), token.reference.name);
    if (!variable || variable->value.userType() != QMetaType::QString || variable->value.toString().isEmpty())
        return false;
    variable->value.toDouble(&isNumber);
    return !isNumber;
}

/// Nodes that the parser gave up again are in no tree, and without an expression none is.
QVector<bool> StatementChecks::NodesInTree() const
{
    const QVector<Node>& nodes = m_tree.Nodes();
    QVector<bool> inTree(nodes.size());
    if (m_tree.Root() < 0 || !m_diagnosis.HasExpression())
        return inTree;
    inTree[m_tree.Root()] = true;
    for (int i = m_tree.Root(); i >= 0; --i) {
        for (const int child : {nodes.at(i).left, nodes.at(i).right}) {
            if (child >= 0 && inTree.at(i))
                inTree[child] = true;
        }
    }
    return inTree;
}

void StatementChecks::Report(Check check, const TextPlace& place, const QString& message)
{
    if (m_options.IsEnabled(check) && m_findings.size() < MaxFindings)
        m_findings.append({check, place, message});
}

StoreTarget FindStoreTarget(const StatementTree& tree)
{
    int number = tree.Root();
    for (;;) {
        const StatementTree::Node& node = tree.Nodes().at(number);
        const StatementToken& token = tree.TokenOf(node);
        const bool isReference = token.type == Token::TT_VARIABLE;
        const bool isIndexed = node.kind == ParsedNode::Subscript;
        if (node.kind == ParsedNode::Operand)
            return {node.token, isReference ? QString() : QString("a literal takes no value")};
        if (node.kind == ParsedNode::Binary || (token.row && token.row->isOperandReadOnly))
            return {node.token, QString("\"%1\" passes no value on").arg(token.lexeme)};
        if (isIndexed && tree.Nodes().at(node.right).kind == ParsedNode::Operand
            && !IsPosition(tree.TokenOf(tree.Nodes().at(node.right))))
            return {tree.Nodes().at(node.right).token, "an entry of a map is saved as a member, with \".\""};
        number = node.left;
    }
}
