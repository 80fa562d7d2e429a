#include "common/statementtypes.h"

#include <QRectF>
#include <QScopedPointer>

#include <array>
#include <cmath>
#include <map>

#include "DeclarationHandler/Expressions/exprarray.h"
#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Expressions/exprproperty.h"
#include "DeclarationHandler/evaluationlistener.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"

namespace {

/// Longer texts are not kept, or a chain of sums would keep one for each of its levels.
const int MaxTextLength = 1000;

const int KindCount = 8;
const int NoKinds = 0;

/// Nobody asked for these evaluations, so what fails in them is nobody's matter.
class Silence : public EvaluationListener
{
    void OnEvaluationProblem(const IExpression&, Problem, const QVariant&) override {}
};

QVariant Evaluated(IExpression* node)
{
    Silence silence;
    const EvaluationListener::Use use(&silence);
    return QScopedPointer<IExpression>(node)->Retrieve();
}

/// The node of an operator with values in the place of its operands; owned by the caller.
IExpression* NewOperator(const Language::Row& row, const QVariant& left, const QVariant& right)
{
    if (row.IsBinary())
        return row.createBinary(new ExprConstant(left), new ExprConstant(right));
    return row.createPrefix(new ExprConstant(left));
}

/// One value of each kind, in the order of the bits.
const std::array<QVariant, KindCount>& Examples()
{
    static const std::array<QVariant, KindCount> examples{
        QVariant(), true, 1, 1.5, "x", QVariantList{1}, QVariantMap{{"x", 1}}, QRectF()};
    return examples;
}

using ResultKinds = std::array<std::array<int, KindCount>, KindCount>;

/// The kinds of an operator's results by those of its operands.
const ResultKinds& ResultsOf(const Language::Row& row)
{
    static std::map<const Language::Row*, ResultKinds> results;
    const auto found = results.find(&row);
    if (found != results.end())
        return found->second;
    ResultKinds& table = results[&row];
    for (int left = 0; left < KindCount; ++left) {
        for (int right = 0; right < KindCount; ++right)
            table[left][right]
                = ValueType::KindOf(Evaluated(NewOperator(row, Examples().at(left), Examples().at(right))));
    }
    return table;
}

/// One side of a logic operator may decide alone, but the kind of the result is the same.
int ResultKindsOf(const Language::Row& row, int left, int right)
{
    const ResultKinds& table = ResultsOf(row);
    int kinds = NoKinds;
    for (int i = 0; i < KindCount; ++i) {
        for (int j = 0; j < KindCount; ++j) {
            if ((left >> i & 1) && (right >> j & 1))
                kinds |= table[i][j];
        }
    }
    return kinds;
}

bool SpellsNoNumber(const QVariant& value)
{
    bool isNumber = false;
    value.toDouble(&isNumber);
    return value.userType() == QMetaType::QString && !value.toString().isEmpty() && !isNumber;
}

QVariant LiteralValue(const QString& lexeme)
{
    IParsingResult* result = nullptr;
    const QVariant value = Interpreter(nullptr, nullptr, nullptr).Evaluate(lexeme, &result);
    delete result;
    return value;
}

void SetValue(const QVariant& value, ValueType* type)
{
    type->isKnown = value.userType() != QMetaType::QString || value.toString().size() <= MaxTextLength;
    if (type->isKnown)
        type->value = value;
}

} // namespace

bool IsWhole(double number)
{
    return std::floor(number) == number;
}

int ValueType::KindOf(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return Missing;
    case QMetaType::Bool:
        return Truth;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return Integer;
    case QMetaType::Double:
        return Double;
    case QMetaType::QString:
        return Text;
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return List;
    case QMetaType::QVariantMap:
        return Map;
    default:
        return Other;
    }
}

ValueType ValueType::FromExample(const QVariant& value)
{
    ValueType type;
    if (value.isValid())
        type.kinds = KindOf(value) | Missing;
    SetValue(value, &type);
    type.isKnown = type.isKnown && value.isValid();
    type.spellsNoNumber = ::SpellsNoNumber(value);
    type.hasFraction = type.IsOnly(Double);
    return type;
}

ValueType ValueType::FromConstant(const QVariant& value)
{
    ValueType type;
    type.kinds = KindOf(value);
    type.isConstant = true;
    SetValue(value, &type);
    type.spellsNoNumber
        = value.userType() == QMetaType::QString && (value.toString().isEmpty() || ::SpellsNoNumber(value));
    type.hasFraction = !IsWhole(value.toDouble());
    return type;
}

StatementTypes::StatementTypes(const StatementTree& tree, const Lookup& lookup) : m_tree(tree), m_lookup(lookup)
{
    m_types.reserve(tree.Nodes().size());
    for (const Node& node : tree.Nodes())
        m_types.append(Derive(node));
}

ValueType StatementTypes::Derive(const Node& node) const
{
    switch (node.kind) {
    case ParsedNode::Operand:
        return DeriveOperand(m_tree.TokenOf(node));
    case ParsedNode::Parentheses:
        return m_types.at(node.left);
    default:
        return DeriveOperator(node);
    }
}

ValueType StatementTypes::DeriveOperand(const StatementToken& token) const
{
    if (token.type == Token::TT_VARIABLE)
        return m_lookup(token.reference);
    return ValueType::FromConstant(LiteralValue(token.lexeme));
}

ValueType StatementTypes::DeriveOperator(const Node& node) const
{
    const ValueType& left = m_types.at(node.left);
    const ValueType& right = m_types.at(node.right < 0 ? node.left : node.right);
    const Language::Row& row = *m_tree.TokenOf(node).row;
    const bool isOperator = row.IsBinary() || row.createPrefix;
    ValueType type;
    type.isConstant = left.isConstant && right.isConstant;
    if (isOperator)
        type.kinds = ResultKindsOf(row, left.kinds, right.kinds);
    if (left.isKnown && right.isKnown) {
        const QVariant value
            = Evaluated(isOperator ? NewOperator(row, left.value, right.value)
                            : node.kind == ParsedNode::Subscript
                            ? static_cast<IExpression*>(
                                new ExprArray(new ExprConstant(left.value), new ExprConstant(right.value), true))
                            : new ExprProperty(new ExprConstant(left.value), new ExprConstant(right.value), true));
        SetValue(value, &type);
        if (!isOperator && value.isValid())
            type.kinds = ValueType::KindOf(value) | ValueType::Missing;
    }
    type.spellsNoNumber = row.type == Token::TT_PLUS && (left.spellsNoNumber || right.spellsNoNumber);
    const int kinds = isOperator
        ? ResultKindsOf(row, left.kinds & ~ValueType::Missing, right.kinds & ~ValueType::Missing)
        : type.kinds & ~ValueType::Missing;
    type.hasFraction = kinds == ValueType::Double
        && (row.type == Token::TT_DIVIDE || left.hasFraction || right.hasFraction || !isOperator);
    return type;
}
