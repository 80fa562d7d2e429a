#include "common/typechecks.h"

#include <QScopedPointer>

#include <algorithm>

#include "DeclarationHandler/Expressions/exprconstant.h"
#include "common/nearestname.h"

namespace {

const int MaxQuoted = 80;
const int Numbers = ValueType::Truth | ValueType::Integer | ValueType::Double;

bool SpellsTruth(const QString& text)
{
    return text.isEmpty() || text == "0" || text == "1" || text.compare("true", Qt::CaseInsensitive) == 0
        || text.compare("false", Qt::CaseInsensitive) == 0;
}

QString NameOf(int kinds)
{
    if (kinds & ValueType::List)
        return "a list";
    if (kinds & ValueType::Map)
        return "a map";
    if (kinds & ValueType::Text)
        return "a text";
    return kinds & ValueType::Truth ? "a truth value" : "a number";
}

} // namespace

TypeChecks::TypeChecks(const Diagnosis& diagnosis, const StatementTypes& types, const CheckOptions& options,
                       QVector<StatementFinding>* findings)
    : m_diagnosis(diagnosis),
      m_types(types),
      m_options(options),
      m_tree(diagnosis.Tree()),
      m_nodes(diagnosis.Tree().Nodes()),
      m_findings(findings)
{
    MarkTree();
}

void TypeChecks::Run(bool wantsTruth)
{
    // Outer nodes last, so that a condition is not told of when one of its operands is the reason.
    for (int i = 0; i < m_nodes.size(); ++i) {
        if (m_inTree.at(i))
            CheckNode(i);
    }
    if (wantsTruth && m_tree.Root() >= 0)
        CheckTruth(m_tree.Root());
}

void TypeChecks::MarkTree()
{
    m_inTree.resize(m_nodes.size());
    m_isAsked.resize(m_nodes.size());
    if (m_tree.Root() < 0)
        return;
    m_inTree[m_tree.Root()] = true;
    for (int i = m_tree.Root(); i >= 0; --i) {
        const Node& node = m_nodes.at(i);
        for (const int child : {node.left, node.right}) {
            if (child < 0 || !m_inTree.at(i))
                continue;
            m_inTree[child] = true;
            m_isAsked[child] = m_isAsked.at(i) || TokenOf(i).type == Token::TT_HASVALUE;
        }
    }
}

void TypeChecks::CheckNode(int number)
{
    const Node& node = m_nodes.at(number);
    switch (node.kind) {
    case ParsedNode::Operand:
        return CheckLiteral(number);
    case ParsedNode::Prefix:
        return CheckPrefix(node);
    case ParsedNode::Subscript:
    case ParsedNode::Member:
        return CheckElement(node);
    default:
        break;
    }
    if (IsOperator(number, Language::LogicOperator))
        CheckLogic(node);
    else if (IsOperator(number, Language::EqualityOperator))
        CheckEquality(number);
    else if (IsOperator(number, Language::OrderingOperator))
        CheckOrdering(number);
    else if (TokenOf(number).type == Token::TT_PLUS)
        CheckSum(node);
    else if (node.kind == ParsedNode::Binary)
        CheckArithmetic(node);
}

void TypeChecks::CheckLiteral(int number)
{
    const StatementToken& token = TokenOf(number);
    const QString kept = m_types.Of(number).value.toString();
    if (token.type == Token::TT_NUMBER && m_types.Of(number).isKnown && token.lexeme.toDouble() != kept.toDouble())
        Report(Check::LiteralDigits, token.place,
               QString("A number literal keeps six digits, so \"%1\" is %2; as a text, '%1', it keeps them all")
                   .arg(token.lexeme, kept));
}

void TypeChecks::CheckSum(const Node& node)
{
    const ValueType& left = m_types.Of(node.left);
    const ValueType& right = m_types.Of(node.right);
    const bool isLeftLiteral = IsNumberLiteral(node.left);
    const int literal = isLeftLiteral ? node.left : node.right;
    const int other = isLeftLiteral ? node.right : node.left;
    const int valueless = ValueType::Truth | ValueType::Integer | ValueType::List | ValueType::Map;
    const TextPlace place = m_tree.TokenOf(node).place;
    if (IsNumberLiteral(literal) && m_types.Of(other).IsOnly(Numbers)) {
        const QString number = TokenOf(literal).lexeme;
        const QString negative = number.startsWith('-') ? number.mid(1) : '-' + number;
        Report(Check::LiteralSum, place,
               QString("\"+\" joins texts here, since the literal \"%1\" is one; to add, subtract the negative: "
                       "\"%2 - %3\"")
                   .arg(number, TextOf(other), negative));
    } else if (left.IsOnly(valueless) && right.IsOnly(valueless)) {
        Report(Check::IntegerSum, place,
               QString("The sum has no value: \"+\" wants a text or a double on one side; whole numbers add as "
                       "\"%1 * 1 + %2\"")
                   .arg(TextOf(node.left), TextOf(node.right)));
    } else {
        CheckCollections(node, "has neither text nor number");
    }
}

/// Of the operators that want numbers on both sides.
void TypeChecks::CheckArithmetic(const Node& node)
{
    const ValueType& left = m_types.Of(node.left);
    const ValueType& right = m_types.Of(node.right);
    if (CheckCollections(node, "counts as 0") || (!left.spellsNoNumber && !right.spellsNoNumber))
        return;
    const int text = left.spellsNoNumber ? node.left : node.right;
    Report(Check::OperandKind, PlaceOf(text),
           QString("\"%1\" wants numbers; %2 spells none and counts as 0")
               .arg(m_tree.TokenOf(node).lexeme, IsQuoted(text) ? TextOf(text) : '"' + TextOf(text) + '"'));
}

/// Tells of an operand that is a list or a map.
bool TypeChecks::CheckCollections(const Node& node, const QString& consequence)
{
    for (const int operand : {node.left, node.right}) {
        if (!IsCollection(operand))
            continue;
        Report(Check::OperandKind, PlaceOf(operand),
               QString("\"%1\" is %2, which %3 for \"%4\"; %5")
                   .arg(TextOf(operand), NameOf(m_types.Of(operand).kinds), consequence, m_tree.TokenOf(node).lexeme,
                        ElementHint(operand)));
        return true;
    }
    return false;
}

QString TypeChecks::ElementHint(int collection) const
{
    const bool isList = m_types.Of(collection).IsOnly(ValueType::List);
    return QString(isList ? "an element is \"%1[0]\"" : "a member is \"%1 .'name'\"").arg(TextOf(collection));
}

void TypeChecks::CheckEquality(int number)
{
    const Node& node = m_nodes.at(number);
    if (!CheckLeftSide(node) && !CheckRightLiteral(node) && !CheckCollectionEquality(node))
        CheckConstant(number);
}

/// Whether a list or a map is compared with a single value.
bool TypeChecks::CheckCollectionEquality(const Node& node)
{
    const int collection = IsCollection(node.left) ? node.left : node.right;
    const int other = collection == node.left ? node.right : node.left;
    if (!IsCollection(collection) || !m_types.Of(other).IsOnly(Numbers | ValueType::Text))
        return false;
    Report(Check::ConstantCondition, PlaceOf(collection),
           QString("\"%1\" is %2, which never equals %3; %4")
               .arg(TextOf(collection), NameOf(m_types.Of(collection).kinds), NameOf(m_types.Of(other).kinds),
                    ElementHint(collection)));
    return true;
}

/// A text on the left makes a text of what it is compared with.
bool TypeChecks::CheckLeftSide(const Node& node)
{
    const bool isText = IsNumberLiteral(node.left) || IsQuoted(node.left);
    if (!isText || !m_types.Of(node.right).IsOnly(ValueType::Truth))
        return false;
    Report(
        Check::LiteralLeft, PlaceOf(node.left),
        QString("The left side's type decides, and %1 is a text, so it differs from a truth value; put \"%2\" on the "
                "left")
            .arg(TextOf(node.left), TextOf(node.right)));
    return true;
}

/// A literal on the right is a text, which must spell a value of the left side's type.
bool TypeChecks::CheckRightLiteral(const Node& node)
{
    const ValueType& left = m_types.Of(node.left);
    const bool isQuoted = IsQuoted(node.right);
    if ((!isQuoted && !IsNumberLiteral(node.right)) || !m_types.Of(node.right).isKnown || IsTold(node.right))
        return false;
    const QString text = m_types.Of(node.right).value.toString();
    bool isNumber = false;
    text.toDouble(&isNumber);
    bool isWhole = false;
    text.toLongLong(&isWhole);
    if (left.IsOnly(ValueType::Truth) && !SpellsTruth(text)) {
        Report(Check::TextTruth, PlaceOf(node.right),
               QString("%1 counts as true here; compare with TRUE or FALSE").arg(TextOf(node.right)));
        return true;
    }
    if (!left.IsOnly(ValueType::Integer | ValueType::Double) || isWhole || (isNumber && left.IsOnly(ValueType::Double)))
        return false;
    Report(Check::ConstantCondition, PlaceOf(node.right),
           QString("%1 is no %2 as \"%3\" is, so the two always differ%4")
               .arg(TextOf(node.right), left.IsOnly(ValueType::Integer) ? "whole number" : "number", TextOf(node.left),
                    isNumber && isQuoted && IsWhole(text.toDouble()) ? "; write the number without quotes" : ""));
    return true;
}

void TypeChecks::CheckOrdering(int number)
{
    const Node& node = m_nodes.at(number);
    for (const int operand : {node.left, node.right}) {
        if (!IsOperator(operand, Language::OrderingOperator) && !IsOperator(operand, Language::EqualityOperator))
            continue;
        return Report(Check::ChainedComparison, m_tree.TokenOf(node).place,
                      QString("\"%1\" compares the truth value of \"%2\" as 0 or 1; join two comparisons with \"AND\"")
                          .arg(m_tree.TokenOf(node).lexeme, TextOf(operand)));
    }
    if (!CheckCollections(node, "counts as 0"))
        CheckConstant(number);
}

void TypeChecks::CheckConstant(int number)
{
    const Node& node = m_nodes.at(number);
    const ValueType& type = m_types.Of(number);
    const bool isSame
        = !type.isConstant && PlaceOf(number).length <= MaxQuoted && TextOf(node.left) == TextOf(node.right);
    if (IsTold(number) || (!isSame && !(type.isConstant && type.isKnown && type.value.isValid())))
        return;
    const Token::TOKEN_TYPE sign = m_tree.TokenOf(node).type;
    const bool isTrue = isSame
        ? sign == Token::TT_EQUAL || sign == Token::TT_EQUAL_OR_SMALLER || sign == Token::TT_EQUAL_OR_GREATER
        : type.value.toBool();
    Report(Check::ConstantCondition, PlaceOf(number),
           QString("\"%1\" is always %2: %3")
               .arg(TextOf(number), isTrue ? "true" : "false",
                    isSame ? "both sides are the same" : "both sides are literals; write the variable that is meant"));
}

void TypeChecks::CheckLogic(const Node& node)
{
    CheckOperandTruth(node.left);
    CheckOperandTruth(node.right);
    CheckDecision(node, node.left, node.right);
    CheckDecision(node, node.right, node.left);
}

void TypeChecks::CheckOperandTruth(int operand)
{
    const int inside = m_tree.Inside(operand);
    if (!IsCollection(inside))
        return CheckTruth(inside);
    Report(Check::OperandKind, PlaceOf(inside),
           QString("\"%1\" is %2, which counts as false; %3, and whether it is there \"HASVALUE\" asks")
               .arg(TextOf(inside), NameOf(m_types.Of(inside).kinds), ElementHint(inside)));
}

/// What a value counts as where one is wanted that is true or false.
void TypeChecks::CheckTruth(int operand)
{
    const int inside = m_tree.Inside(operand);
    const ValueType& type = m_types.Of(inside);
    if (IsQuoted(inside) && type.isKnown && !SpellsTruth(type.value.toString()))
        Report(Check::TextTruth, PlaceOf(inside),
               QString("%1 counts as true: only '0', 'false' and the empty text are false; write TRUE or FALSE")
                   .arg(TextOf(inside)));
    if (type.hasFraction && !type.isConstant)
        Report(Check::FractionTruth, PlaceOf(inside),
               QString("A number is rounded for its truth value, so that 0.25 is false; write \"%1 != 0\"")
                   .arg(TextOf(inside)));
}

void TypeChecks::CheckDecision(const Node& node, int decider, int other)
{
    const ValueType& type = m_types.Of(decider);
    if (!type.isConstant || !type.isKnown || m_types.Of(other).isConstant || !IsDecided(node, type.value))
        return;
    Report(Check::UnusedReference, PlaceOf(other),
           QString("\"%1\" decides \"%2\" alone, so the value of \"%3\" is never used")
               .arg(TextOf(decider), m_tree.TokenOf(node).lexeme, TextOf(other)));
}

/// Whether one operand with that value leaves the other no say. All but XOR are symmetric.
bool TypeChecks::IsDecided(const Node& node, const QVariant& value) const
{
    const auto result = [&](bool other) {
        const auto create = m_tree.TokenOf(node).row->createBinary;
        return QScopedPointer<IExpression>(create(new ExprConstant(value), new ExprConstant(other)))->Retrieve();
    };
    return result(true) == result(false);
}

void TypeChecks::CheckPrefix(const Node& node)
{
    const StatementToken& token = m_tree.TokenOf(node);
    const bool asksForValue = token.type == Token::TT_HASVALUE;
    const bool takesAll = asksForValue ? m_nodes.at(node.left).kind == ParsedNode::Binary
                                       : IsOperator(node.left, Language::LogicOperator);
    if (takesAll)
        return CheckReach(node);
    if (!asksForValue)
        return CheckOperandTruth(node.left);
    if (!(m_types.Of(node.left).kinds & ValueType::Missing))
        Report(Check::ConstantCondition, token.place,
               QString("\"%1\" has always a value, so \"%2\" is always true").arg(TextOf(node.left), token.lexeme));
}

/// Tells that the operator takes the whole of what stands behind it as its operand.
void TypeChecks::CheckReach(const Node& node)
{
    const StatementToken& token = m_tree.TokenOf(node);
    int first = node.left;
    while (m_nodes.at(first).kind == ParsedNode::Binary
           && (token.type == Token::TT_HASVALUE || IsOperator(first, Language::LogicOperator)))
        first = m_nodes.at(first).left;
    const QString all = TextOf(node.left);
    Report(Check::PrefixReach, token.place,
           QString("\"%1\" applies to all of \"%2\"; write \"(%1 %3)\" for the first operand alone, or \"%1 (...)\" if "
                   "all is meant")
               .arg(token.lexeme, all, TextOf(first)));
}

void TypeChecks::CheckElement(const Node& node)
{
    const ValueType& collection = m_types.Of(node.left);
    const bool isMember = node.kind == ParsedNode::Member;
    if (m_isAsked.at(node.left))
        return;
    if (collection.IsOnly(Numbers | ValueType::Text))
        Report(Check::MissingElement, PlaceOf(node.right),
               QString("There is no element: \"%1\" is %2, no list or map")
                   .arg(TextOf(node.left), NameOf(collection.kinds)));
    else if (collection.IsOnly(ValueType::Map) && m_types.Of(node.right).isConstant)
        CheckKey(node);
    else if (collection.IsOnly(ValueType::List) && isMember)
        Report(Check::MissingElement, PlaceOf(node.right),
               QString("A list has no members; an element stands in brackets, as \"%1[0]\"").arg(TextOf(node.left)));
    else if (collection.IsOnly(ValueType::List))
        CheckPosition(node);
}

void TypeChecks::CheckPosition(const Node& node)
{
    const ValueType& index = m_types.Of(node.right);
    const ValueType& list = m_types.Of(node.left);
    const TextPlace place = PlaceOf(node.right);
    const QString text = TextOf(node.right);
    const int size = list.isKnown ? list.value.toList().size() : 0;
    if (!index.isConstant) {
        if (TokenOf(node.right).type == Token::TT_VARIABLE && index.IsOnly(ValueType::Double))
            Report(Check::MissingElement, place, QString("\"%1\" is rounded to a whole position").arg(text));
        return;
    }
    bool isWhole = false;
    const int position = index.value.toInt(&isWhole);
    if (!isWhole || position < 0)
        Report(Check::MissingElement, place,
               QString("There is no element %1: a position is a whole number, counted from 0").arg(text));
    else if (size > 0 && position >= size)
        Report(Check::MissingElement, place,
               QString("There is no element %1: the list in the data ends at %2, counted from 0")
                   .arg(text, QString::number(size - 1)));
}

void TypeChecks::CheckKey(const Node& node)
{
    const QVariantMap map = m_types.Of(node.left).value.toMap();
    const QString key = m_types.Of(node.right).value.toString();
    if (!map.isEmpty() && !map.contains(key))
        Report(Check::MissingElement, PlaceOf(node.right),
               QString("The map in the data has no \"%1\"%2").arg(key, NearestName(map.keys()).Hint(key)));
}

bool TypeChecks::IsOperator(int number, Language::Role role) const
{
    return m_nodes.at(number).kind == ParsedNode::Binary && TokenOf(number).HasRole(role);
}

bool TypeChecks::IsNumberLiteral(int number) const
{
    return m_nodes.at(number).kind == ParsedNode::Operand && TokenOf(number).IsNumber();
}

bool TypeChecks::IsQuoted(int number) const
{
    return m_nodes.at(number).kind == ParsedNode::Operand && TokenOf(number).IsQuoted();
}

/// Whether anything was found in the words of the node.
bool TypeChecks::IsTold(int number) const
{
    const TextPlace place = PlaceOf(number);
    return std::any_of(m_findings->begin(), m_findings->end(), [&](const StatementFinding& finding) {
        return finding.place.offset >= place.offset && finding.place.offset < place.End();
    });
}

/// As written, with the middle left out where it is long.
QString TypeChecks::TextOf(int number) const
{
    const TextPlace place = PlaceOf(number);
    if (place.length <= MaxQuoted)
        return m_diagnosis.Statement().mid(place.offset, place.length);
    return m_diagnosis.Statement().mid(place.offset, MaxQuoted / 2) + "..."
        + m_diagnosis.Statement().mid(place.End() - MaxQuoted / 4, MaxQuoted / 4);
}

void TypeChecks::Report(Check check, const TextPlace& place, const QString& message)
{
    if (m_options.IsEnabled(check) && m_findings->size() < MaxFindings)
        m_findings->append({check, place, message, QString()});
}
