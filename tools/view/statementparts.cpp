#include "view/statementparts.h"

#include <QHash>
#include <QObject>

#include <memory>

#include "DataLayer/idatapeer.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Tokens/variabletoken.h"
#include "DeclarationHandler/evaluationlistener.h"
#include "DeclarationHandler/parser.h"
#include "DeclarationHandler/parserlistener.h"

namespace {

const int MaxParts = 200;

/// Keeps why a value is missing, the first reason of each evaluation.
class ReasonKeeper : public EvaluationListener
{
public:
    QString Reason() const { return m_reason; }

private:
    void OnEvaluationProblem(const IExpression&, Problem problem, const QVariant&) override
    {
        static const QHash<int, QString> reasons{{NoCollection, "neither a list nor a map is indexed"},
                                                 {IndexNotInteger, "the index is no integer"},
                                                 {IndexOutOfBounds, "the index is out of bounds"},
                                                 {InvalidKey, "the key is empty"}};
        if (m_reason.isEmpty())
            m_reason = reasons.value(problem);
    }

    QString m_reason;
};

/// A tree whose references hold what they lead to now.
class Snapshot : private ParserListener
{
public:
    Snapshot(const QString& statement, QObject* object, QObject* form, const QString& defaultPackage, IDataPeer* data)
        : m_statement(statement), m_object(object), m_form(form), m_defaultPackage(defaultPackage), m_data(data)
    {
        Parser parser;
        parser.SetListener(this);
        parser.Tokenize(statement);
        m_tree.reset(parser.Parse(m_data, nullptr, object, form, defaultPackage, true));
        Add(m_tree.get(), 0);
    }

    const QVector<StatementPart>& Parts() const { return m_parts; }

private:
    struct Node
    {
        ParsedNode parsed;
        int first; ///< Tokens, by number.
        int last;
    };

    void OnToken(const Token& token, const TextPlace& place) override
    {
        m_places.append(place);
        m_isReference.append(dynamic_cast<const VariableToken*>(&token) != nullptr);
    }

    IExpression* CreateReference(const VariableToken& token, const TextPlace&, bool) override
    {
        const QString package = token.GetPackage(m_defaultPackage);
        const QString name = token.GetVariableName();
        if (!token.HasPackage() || !VariableToken::GetPathStarts().contains(package.section('\\', 0, 0)))
            return new ExprConstant(m_data ? m_data->GetValue({name, package}, QVariant()) : QVariant());
        const QObject* const found = token.GetObjectFromPackage(m_object, m_form);
        return new ExprConstant(found ? found->property(name.toLatin1()) : QVariant());
    }

    void OnNode(const ParsedNode& node) override
    {
        const Node left = m_nodes.value(node.left, {node, node.token, node.token});
        const Node right = m_nodes.value(node.right, left);
        const bool isBracketed = node.kind == ParsedNode::Parentheses || node.kind == ParsedNode::Subscript;
        m_nodes.insert(node.node, {node, qMin(node.token, left.first), right.last + (isBracketed ? 1 : 0)});
    }

    void Add(const IExpression* expression, int level)
    {
        const auto found = m_nodes.constFind(expression);
        if (found == m_nodes.constEnd() || m_parts.size() == MaxParts)
            return;
        const Node& node = found.value();
        const bool isPart = node.parsed.kind == ParsedNode::Operand ? m_isReference.value(node.parsed.token)
                                                                    : node.parsed.kind != ParsedNode::Parentheses;
        if (isPart)
            AddPart(node, level);
        Add(node.parsed.left, isPart ? level + 1 : level);
        Add(node.parsed.right, isPart ? level + 1 : level);
    }

    void AddPart(const Node& node, int level)
    {
        ReasonKeeper keeper;
        const EvaluationListener::Use use(&keeper);
        const QVariant value = node.parsed.node->Retrieve();
        const int start = m_places.value(node.first).offset;
        const int end = m_places.value(qMin(node.last, m_places.size() - 1)).End();
        m_parts.append(
            {level, m_statement.mid(start, end - start).simplified(), value, value.isValid() ? "" : keeper.Reason()});
    }

    const QString m_statement;
    QObject* const m_object;
    QObject* const m_form;
    const QString m_defaultPackage;
    IDataPeer* const m_data;
    QVector<TextPlace> m_places; ///< Of the tokens.
    QVector<bool> m_isReference; ///< Which tokens are.
    QHash<const IExpression*, Node> m_nodes;
    std::unique_ptr<IExpression> m_tree;
    QVector<StatementPart> m_parts;
};

} // namespace

QVector<StatementPart> EvaluateParts(const QString& statement, QObject* object, QObject* form,
                                     const QString& defaultPackage, IDataPeer* data)
{
    return Snapshot(statement, object, form, defaultPackage, data).Parts();
}
