#include "common/statementchecks.h"

#include <QRegularExpression>

#include <algorithm>

#include "DeclarationHandler/Tokens/variabletoken.h"
#include "common/knownvariables.h"
#include "common/slips.h"
#include "common/typechecks.h"

namespace {

bool IsLogic(const StatementToken& token)
{
    return token.HasRole(Language::LogicOperator);
}

bool IsOrdering(const StatementToken& token)
{
    return token.HasRole(Language::OrderingOperator);
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
    if (literal.IsNumber()) {
        const double number = literal.lexeme.toDouble(&isWhole);
        return isWhole && number >= 0 && IsWhole(number);
    }
    return !literal.IsQuoted() || (literal.Content().toInt(&isWhole) >= 0 && isWhole);
}

} // namespace

StatementChecks::StatementChecks(const Diagnosis& diagnosis, const StatementTypes& types, const CheckOptions& options)
    : m_diagnosis(diagnosis),
      m_types(types),
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
    TypeChecks(m_diagnosis, m_types, m_options, &m_findings).Run(m_wantsTruth);
    return m_findings;
}

void StatementChecks::CheckTokens()
{
    for (int i = 0; i < m_tokens.size(); ++i) {
        CheckMinus(i);
        if (m_tokens.at(i).type == Token::TT_VARIABLE)
            CheckName(i);
        else if (m_tokens.at(i).IsQuoted())
            CheckText(m_tokens.at(i));
    }
}

void StatementChecks::CheckMinus(int token)
{
    const StatementToken& number = m_tokens.at(token);
    if (token == 0 || !number.IsNumber() || !number.lexeme.startsWith('-') || !EndsOperand(m_tokens.at(token - 1)))
        return;
    Report(Check::MinusSign, number.place,
           QString("\"%1\" is a number of its own here; a subtraction has a space behind the minus: \"- %2\"")
               .arg(number.lexeme, number.lexeme.mid(1)),
           (m_tokens.at(token - 1).place.End() == number.place.offset ? " - " : "- ") + number.lexeme.mid(1));
}

/// A backslash is a character like others, as in the paths of files.
void StatementChecks::CheckText(const StatementToken& token)
{
    static const QRegularExpression escape(R"(\\[nt](?![A-Za-z0-9_.]))");
    static const QRegularExpression path(R"(^[A-Za-z]:\\|\\\\|\\[^nt])");
    const QRegularExpressionMatch match = escape.match(token.lexeme);
    if (match.hasMatch() && !path.match(token.lexeme).hasMatch())
        Report(Check::Escape, {token.place.offset + int(match.capturedStart()), 2},
               QString("There are no escapes in quotes, so \"%1\" is shown as it is; a text may hold line breaks")
                   .arg(match.captured()));
}

void StatementChecks::CheckName(int number)
{
    const StatementToken& token = m_tokens.at(number);
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
               QString("\"%1\" is the name of a variable here; the keyword is \"%2\"").arg(reference.name, keyword),
               keyword);
    else if (!start.isEmpty())
        Report(Check::KeywordCase, token.place,
               QString("\"%1\" is the name of a package here; a widget path starts with \"%2\"").arg(package, start),
               QString(token.lexeme).replace(token.lexeme.indexOf(package), package.size(), start));
    else if (!reference.hasPackage && !ForeignWordHint(reference.name).isEmpty())
        Report(
            Check::KeywordCase, token.place,
            QString("\"%1\" is the name of a variable here; %2").arg(reference.name, ForeignWordHint(reference.name)));
    else
        CheckVariable(number);
}

void StatementChecks::CheckVariable(int token)
{
    if (!m_options.variables)
        return;
    const Reference& reference = m_tokens.at(token).reference;
    const QString package = reference.Package(m_options.package);
    if (m_options.IsHostVariable(package, reference.name))
        return;
    const QString where
        = package.isEmpty() ? QString("without a package") : QString("in the package \"%1\"").arg(package);
    Report(Check::UnknownVariable, reference.namePlace,
           QString("The data have no \"%1\" %2%3").arg(reference.name, where, HintFor(token)),
           m_options.variables->OnlyNear(package, reference.name));
}

/// What was probably meant by a variable that does not exist.
QString StatementChecks::HintFor(int token) const
{
    const Reference& reference = m_tokens.at(token).reference;
    const QString package = reference.Package(m_options.package);
    if (token > 0 && m_tokens.at(token - 1).type == Token::TT_DOT)
        return QString("; the name of a member stands in quotes: \".'%1'\"").arg(reference.name);
    const QString map = reference.name.section('.', 0, 0);
    if (map != reference.name && m_options.variables->Find(package, map))
        return QString("; a member stands behind a blank, in quotes: \"%1 .'%2'\"")
            .arg(map, reference.name.section('.', 1));
    static const QStringList keywords = StatementTokens::Keywords();
    for (const QString& keyword : keywords) {
        if (reference.name.startsWith(keyword)
            && m_options.variables->Find(package, reference.name.mid(keyword.size())))
            return QString("; a blank stands behind \"%1\"").arg(keyword);
    }
    return m_options.variables->Hint(package, reference.name);
}

void StatementChecks::CheckParser()
{
    if (m_diagnosis.Messages().isEmpty())
        return;
    const Diagnosis::Message& first = m_diagnosis.Messages().first();
    if (IsExplained(first.place))
        return;
    const StatementFinding slip = FindSlip(m_diagnosis);
    const bool isSlip = !slip.message.isEmpty() && m_options.IsEnabled(slip.check);
    const Check check = m_diagnosis.HasError() || !m_diagnosis.HasExpression() ? Check::ParseError : Check::LeftOver;
    if (!isSlip)
        return Report(check, first.place, first.Whole());
    // The words of a slip are no names of variables.
    const auto isWordOfIt = [&](const StatementFinding& finding) {
        const int from = slip.check == Check::Escape ? finding.place.End() : finding.place.offset;
        return finding.check == Check::UnknownVariable && from >= slip.place.offset;
    };
    m_findings.erase(std::remove_if(m_findings.begin(), m_findings.end(), isWordOfIt), m_findings.end());
    Report(slip.check, slip.place, slip.message);
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
        return m_tree.TokenOf(node).IsNumber();
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
    for (int i = 0; i < nodes.size(); ++i) {
        const Node& node = nodes.at(i);
        if (m_inTree.at(i) && node.kind == ParsedNode::Binary && IsOrdering(m_tree.TokenOf(node))
            && (m_types.Of(node.left).spellsNoNumber || m_types.Of(node.right).spellsNoNumber))
            Report(Check::TextComparison, m_tree.TokenOf(node).place,
                   QString("\"%1\" compares numbers; a text that spells none counts as 0")
                       .arg(m_tree.TokenOf(node).lexeme));
    }
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

void StatementChecks::Report(Check check, const TextPlace& place, const QString& message, const QString& fix)
{
    if (m_options.IsEnabled(check) && m_findings.size() < MaxFindings)
        m_findings.append({check, place, message, fix});
}

ValueType TypeOfVariable(const Reference& reference, const CheckOptions& options)
{
    if (!options.variables || reference.IsProperty())
        return ValueType();
    const Variable* const variable = options.variables->Find(reference.Package(options.package), reference.name);
    return variable ? ValueType::FromExample(variable->value) : ValueType();
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
