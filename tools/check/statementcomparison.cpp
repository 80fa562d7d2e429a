#include "check/statementcomparison.h"

#include <algorithm>

namespace {

const int MaxQuoted = 60;

QString LabelOf(const StatementToken& token, const QString& package)
{
    if (token.IsQuoted())
        return '\'' + token.Content();
    return token.type == Token::TT_VARIABLE ? '@' + StatementComparison::NameOf(token.reference, package)
                                            : token.lexeme;
}

} // namespace

StatementComparison::Side::Side(const Diagnosis& statement, const Options& options, Numbers* numbers)
    : m_statement(statement), m_options(options), m_types(statement.Tree(), options.lookup)
{
    for (int i = 0; i < Tree().Nodes().size(); ++i)
        m_numbers.append(MakeNumber(i, numbers));
}

QString StatementComparison::Side::TextOf(int node) const
{
    const TextPlace place = Tree().PlaceOf(node);
    const QString text = m_statement.Statement().mid(place.offset, place.length);
    return text.size() <= MaxQuoted ? text : text.left(MaxQuoted / 2) + "..." + text.right(MaxQuoted / 4);
}

QVector<int> StatementComparison::Side::Parts() const
{
    QVector<int> parts;
    QVector<int> open{Tree().Root()};
    while (!open.isEmpty()) {
        const int node = Tree().Inside(open.takeLast());
        if (m_options.showsTexts && Joins(node))
            open << At(node).right << At(node).left;
        else
            parts.append(node);
    }
    return parts;
}

bool StatementComparison::Side::IsNumber(int node) const
{
    return m_types.Of(node).IsOnly(ValueType::Truth | ValueType::Integer | ValueType::Double);
}

/// Whether it joins texts, as far as the types tell. Two operands of which nothing is known are taken for texts, as
/// names are.
bool StatementComparison::Side::Joins(int node) const
{
    if (At(node).kind != ParsedNode::Binary || TokenOf(node).type != Token::TT_PLUS)
        return false;
    const int left = At(node).left;
    const int right = At(node).right;
    return IsText(left) || IsText(right) || (!IsNumber(left) && !IsNumber(right));
}

int StatementComparison::Side::MakeNumber(int node, Numbers* numbers) const
{
    if (At(node).kind == ParsedNode::Parentheses)
        return m_numbers.at(At(node).left);
    QPair<int, int> children(-1, -1);
    if (At(node).left >= 0)
        children.first = m_numbers.at(At(node).left);
    if (At(node).right >= 0)
        children.second = m_numbers.at(At(node).right);
    const bool adds = TokenOf(node).type == Token::TT_PLUS && !Joins(node);
    if (adds && children.first > children.second)
        std::swap(children.first, children.second);
    const auto key = qMakePair(children, LabelOf(TokenOf(node), m_options.package));
    const auto known = numbers->constFind(key);
    return known != numbers->constEnd() ? *known : *numbers->insert(key, numbers->size());
}

StatementComparison::StatementComparison(const Diagnosis& original, const Diagnosis& translation,
                                         const Options& options)
    : m_options(options), m_original(original, m_options, &m_numbers), m_translation(translation, m_options, &m_numbers)
{
}

QVector<StatementComparison::Difference> StatementComparison::Run()
{
    QVector<int> missing = m_original.Parts();
    QVector<int> added = m_translation.Parts();
    RemoveCommon(&missing, &added);
    const auto isSplit = [&](int part) { return TakeSplitSum(part, &added); };
    missing.erase(std::remove_if(missing.begin(), missing.end(), isSplit), missing.end());
    const bool isOnly = missing.size() == 1 && added.size() == 1;
    for (const int part : qAsConst(added)) {
        const int counterpart = TakeCounterpart(part, &missing);
        if (counterpart >= 0)
            Report(FindDifference(counterpart, part), isOnly);
        else
            Report({-1, part, nullptr}, false);
    }
    for (const int part : qAsConst(missing))
        Report({part, -1, nullptr}, false);
    return m_differences;
}

QString StatementComparison::NameOf(const Reference& reference, const QString& package)
{
    return reference.IsProperty() ? reference.path.join('\\') + ':' + reference.name
                                  : ':' + reference.Package(package) + ':' + reference.name;
}

bool StatementComparison::HasShownText(const Diagnosis& statement, const StatementTypes::Lookup& lookup)
{
    const Options options{lookup, QString(), true};
    Numbers numbers;
    const Side side(statement, options, &numbers);
    const QVector<int> parts = side.Parts();
    return std::any_of(parts.begin(), parts.end(),
                       [&](int part) { return side.IsShown(part) && !side.TokenOf(part).Content().isEmpty(); });
}

/// Leaves what only one of the statements has, without texts that are shown.
void StatementComparison::RemoveCommon(QVector<int>* originals, QVector<int>* translated) const
{
    QHash<int, int> counts;
    for (const int part : qAsConst(*originals))
        ++counts[m_original.NumberOf(part)];
    const auto isCommon
        = [&](int part) { return m_translation.IsShown(part) || counts[m_translation.NumberOf(part)]-- > 0; };
    translated->erase(std::remove_if(translated->begin(), translated->end(), isCommon), translated->end());
    const auto isTaken = [&](int part) { return m_original.IsShown(part) || counts[m_original.NumberOf(part)]-- <= 0; };
    originals->erase(std::remove_if(originals->begin(), originals->end(), isTaken), originals->end());
}

/// Tells of a sum whose operands the translation joins one by one.
bool StatementComparison::TakeSplitSum(int original, QVector<int>* translated)
{
    const Node& sum = m_original.At(original);
    if (sum.kind != ParsedNode::Binary || m_original.TokenOf(original).type != Token::TT_PLUS)
        return false;
    const auto take = [&](int operand, QVector<int>* parts) {
        const auto found = std::find_if(parts->begin(), parts->end(), [&](int part) {
            return m_translation.NumberOf(part) == m_original.NumberOf(operand);
        });
        const bool isFound = found != parts->end();
        if (isFound)
            parts->erase(found);
        return isFound;
    };
    QVector<int> rest = *translated;
    if (!take(sum.left, &rest) || !take(sum.right, &rest))
        return false;
    const auto first = std::mismatch(rest.begin(), rest.end(), translated->begin()).second;
    const TextPlace place = m_translation.Tree().PlaceOf(*first);
    *translated = rest;
    m_differences.append({place,
                          QString("\"%1\" is a sum in the statement, and joined as texts here; put it in parentheses")
                              .arg(m_original.TextOf(original)),
                          QString()});
    return true;
}

/// What a part of the translation most likely stands for, which is taken out of \a originals; -1 when none is left.
int StatementComparison::TakeCounterpart(int translated, QVector<int>* originals) const
{
    const auto isAlike = [&](int original) {
        return m_original.At(original).kind == m_translation.At(translated).kind
            && m_original.TokenOf(original).type == m_translation.TokenOf(translated).type;
    };
    auto found = std::find_if(originals->begin(), originals->end(), isAlike);
    if (found == originals->end())
        found = originals->begin();
    if (found == originals->end())
        return -1;
    const int original = *found;
    originals->erase(found);
    return original;
}

/// The innermost nodes that differ alone.
StatementComparison::Pair StatementComparison::FindDifference(int original, int translated) const
{
    const char* reason = nullptr;
    for (;;) {
        original = m_original.Tree().Inside(original);
        translated = m_translation.Tree().Inside(translated);
        const Node& left = m_original.At(original);
        const Node& right = m_translation.At(translated);
        const bool isSame = left.kind == right.kind && left.kind != ParsedNode::Operand
            && m_original.TokenOf(original).type == m_translation.TokenOf(translated).type;
        const bool differsFirst = m_original.NumberOf(left.left) != m_translation.NumberOf(right.left);
        const bool differsSecond = m_original.NumberOf(left.right) != m_translation.NumberOf(right.right);
        if (!isSame || differsFirst == differsSecond)
            return {original, translated, reason};
        const bool isElement = left.kind == ParsedNode::Subscript || left.kind == ParsedNode::Member;
        const StatementToken& token = m_original.TokenOf(original);
        if (isElement && differsSecond)
            reason = "a key is not shown, so it stays as it is";
        else if (token.HasRole(Language::EqualityOperator) || token.HasRole(Language::OrderingOperator))
            reason = "what is compared is not shown, so it stays as it is";
        original = differsFirst ? left.left : left.right;
        translated = differsFirst ? right.left : right.right;
    }
}

void StatementComparison::Report(const Pair& pair, bool isOnly)
{
    const QString reason = ReasonFor(pair);
    if (pair.translated < 0) {
        const TextPlace all = m_translation.Tree().PlaceOf(m_translation.Tree().Root());
        m_differences.append({all,
                              QString("The translation lacks \"%1\"; %2").arg(m_original.TextOf(pair.original), reason),
                              QString()});
        return;
    }
    const TextPlace place = m_translation.Tree().PlaceOf(pair.translated);
    const QString text = m_translation.TextOf(pair.translated);
    if (pair.original < 0) {
        m_differences.append({place, QString("\"%1\" is not in the statement; %2").arg(text, reason), QString()});
        return;
    }
    const bool isCertain = isOnly && m_original.IsOperand(pair.original) && m_translation.IsOperand(pair.translated);
    m_differences.append(
        {place, QString("\"%1\" stands in the place of \"%2\"; %3").arg(text, m_original.TextOf(pair.original), reason),
         isCertain ? m_original.TokenOf(pair.original).lexeme : QString()});
}

QString StatementComparison::ReasonFor(const Pair& pair) const
{
    const auto isType = [&](Token::TOKEN_TYPE type) {
        return (pair.original >= 0 && m_original.IsOperand(pair.original)
                && m_original.TokenOf(pair.original).type == type)
            || (pair.translated >= 0 && m_translation.IsOperand(pair.translated)
                && m_translation.TokenOf(pair.translated).type == type);
    };
    if (isType(Token::TT_VARIABLE) && pair.original < 0)
        return "what a statement reads stays as it is, and a text stands in quotes";
    if (isType(Token::TT_VARIABLE))
        return "what a statement reads stays as it is";
    if (pair.reason)
        return pair.reason;
    if (isType(Token::TT_NUMBER))
        return "a number stays as it is";
    if (!m_options.showsTexts)
        return "texts of this property are not shown, so they stay as they are";
    return "only texts that are shown may differ, and the order of what \"+\" joins";
}
