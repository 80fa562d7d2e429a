#include "DeclarationForms/readingorder.h"

#include <algorithm>
#include <unordered_map>

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formreferences.h"
#include "DeclarationForms/propertyorder.h"
#include "DeclarationForms/watchedproperty.h"

namespace {

const std::size_t LongestWay = 9;

typedef std::vector<int> Numbers;
/// For each node those that come before it.
typedef std::vector<Numbers> Graph;

/// Tarjan's algorithm, without recursion: chains are as long as a form is large.
class Components
{
public:
    explicit Components(const Graph& graph)
        : m_graph(graph), m_index(graph.size(), 0), m_low(graph.size(), 0), m_isOpen(graph.size(), false)
    {
        for (int node = 0; node < static_cast<int>(graph.size()); ++node) {
            if (m_index[node] == 0)
                Search(node);
        }
    }

    /// What comes before stands before.
    std::vector<Numbers> result;

private:
    struct Step
    {
        int node;
        std::size_t next;
    };

    void Search(int root)
    {
        Open(root);
        while (!m_path.empty()) {
            const int node = m_path.back().node;
            if (m_path.back().next < m_graph[node].size()) {
                Follow(node, m_graph[node][m_path.back().next++]);
                continue;
            }
            m_path.pop_back();
            if (!m_path.empty())
                m_low[m_path.back().node] = std::min(m_low[m_path.back().node], m_low[node]);
            if (m_low[node] == m_index[node])
                Close(node);
        }
    }

    void Open(int node)
    {
        m_index[node] = m_low[node] = ++m_count;
        m_isOpen[node] = true;
        m_open.push_back(node);
        m_path.push_back({node, 0});
    }

    void Follow(int node, int other)
    {
        if (m_index[other] == 0)
            Open(other);
        else if (m_isOpen[other])
            m_low[node] = std::min(m_low[node], m_index[other]);
    }

    void Close(int node)
    {
        Numbers component;
        int member = -1;
        while (member != node) {
            member = m_open.back();
            m_open.pop_back();
            m_isOpen[member] = false;
            component.push_back(member);
        }
        std::sort(component.begin(), component.end());
        result.push_back(std::move(component));
    }

    const Graph& m_graph;
    Numbers m_index;
    Numbers m_low;
    std::vector<bool> m_isOpen;
    Numbers m_open;
    std::vector<Step> m_path;
    int m_count = 0;
};

/// A bound that reads the value it bounds comes first all the same.
bool IsBoundOf(const BoundStatement& statement, const WatchedProperty& property)
{
    return statement.property->owner == property.owner && PropertyOrder::Bounds(statement.Name(), *property.name);
}

/// The statement that writes what the reference reads, if that makes the reader wait.
BoundStatement* WriterOf(const BoundStatement& reader, const FormProperty& reference)
{
    const WatchedProperty* const property = reference.Property();
    if (!property || !property->statement || IsBoundOf(reader, *property))
        return nullptr;
    return property->statement.get();
}

/// What is left out where it would make a circle, least first.
enum Level
{
    WithObjects,
    WithBounds,
    WithReferences
};

class Ranking
{
public:
    explicit Ranking(const std::vector<BoundStatement*>& statements) : m_statements(statements) {}

    /// The numbers of statements, ordered.
    Numbers Order()
    {
        Numbers all(m_statements.size());
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = static_cast<int>(i);
        Append(all, WithObjects);
        return m_order;
    }

private:
    void Append(const Numbers& members, Level level)
    {
        for (const Numbers& component : Components(MakeGraph(members, level)).result) {
            Numbers statements;
            for (const int number : component) {
                if (number < static_cast<int>(members.size()))
                    statements.push_back(members[number]);
            }
            if (component.size() > 1 && level != WithReferences)
                Append(statements, static_cast<Level>(level + 1));
            else
                m_order.insert(m_order.end(), statements.begin(), statements.end());
        }
    }

    Graph MakeGraph(const Numbers& members, Level level)
    {
        m_nodes.clear();
        m_objects.clear();
        for (std::size_t i = 0; i < members.size(); ++i)
            m_nodes[m_statements[members[i]]] = static_cast<int>(i);
        Graph graph(members.size());
        for (std::size_t i = 0; i < members.size(); ++i)
            AddEdges(*m_statements[members[i]], static_cast<int>(i), level, &graph);
        return graph;
    }

    void AddEdges(const BoundStatement& statement, int node, Level level, Graph* graph)
    {
        for (const FormProperty* const reference : statement.compiled.properties) {
            if (BoundStatement* const writer = WriterOf(statement, *reference))
                AddEdge(node, *writer, graph);
            if (level == WithObjects && reference->Property() && reference->Property()->owner->boundCount > 0)
                AddObject(node, *reference->Property()->owner, graph);
        }
        if (level == WithReferences || statement.property->owner->boundCount < 2)
            return;
        for (const WatchedProperty& sibling : statement.property->owner->properties) {
            if (sibling.statement && PropertyOrder::Bounds(*sibling.name, statement.Name()))
                AddEdge(node, *sibling.statement, graph);
        }
    }

    void AddEdge(int node, const BoundStatement& before, Graph* graph)
    {
        const auto found = m_nodes.find(&before);
        if (found != m_nodes.end())
            (*graph)[node].push_back(found->second);
    }

    /// A node stands for all statements of the object, so that its readers need not be joined with each.
    void AddObject(int node, const WatchedObject& object, Graph* graph)
    {
        const auto inserted = m_objects.emplace(&object, static_cast<int>(graph->size()));
        (*graph)[node].push_back(inserted.first->second);
        if (!inserted.second)
            return;
        graph->emplace_back();
        for (const WatchedProperty& property : object.properties) {
            if (property.statement)
                AddEdge(inserted.first->second, *property.statement, graph);
        }
    }

    const std::vector<BoundStatement*>& m_statements;
    std::unordered_map<const BoundStatement*, int> m_nodes;
    std::unordered_map<const WatchedObject*, int> m_objects;
    Numbers m_order;
};

bool ReadsItself(const BoundStatement& statement)
{
    const ReferenceChain<FormProperty>& references = statement.compiled.properties;
    return std::any_of(references.begin(), references.end(), [&statement](const FormProperty* reference) {
        return WriterOf(statement, *reference) == &statement;
    });
}

Graph ReferenceGraph(const std::vector<BoundStatement*>& statements)
{
    std::unordered_map<const BoundStatement*, int> numbers;
    for (std::size_t i = 0; i < statements.size(); ++i)
        numbers[statements[i]] = static_cast<int>(i);
    Graph graph(statements.size());
    for (std::size_t i = 0; i < statements.size(); ++i) {
        for (const FormProperty* const reference : statements[i]->compiled.properties) {
            if (const BoundStatement* const writer = WriterOf(*statements[i], *reference))
                graph[i].push_back(numbers.at(writer));
        }
    }
    return graph;
}

/// Puts numbers into the members of circles, and answers how many there are.
int MarkCircles(const std::vector<BoundStatement*>& statements)
{
    int count = 0;
    for (const Numbers& component : Components(ReferenceGraph(statements)).result) {
        const bool isCircle = component.size() > 1 || ReadsItself(*statements[component.front()]);
        if (isCircle)
            ++count;
        for (const int member : component)
            statements[member]->circle = isCircle ? count : 0;
    }
    return count;
}

} // namespace

void ReadingOrder::Append(BoundStatement* statement)
{
    const WatchedObject& object = *statement->property->owner;
    const bool isRead = std::any_of(object.properties.begin(), object.properties.end(),
                                    [](const WatchedProperty& property) { return !property.readers.empty(); });
    if (isRead || object.boundCount > 1)
        m_isValid = false;
    statement->rank = ++m_lastRank;
    statement->circle = 0;
}

void ReadingOrder::Compute(const Statements& statements)
{
    std::vector<BoundStatement*> bound;
    for (const std::shared_ptr<BoundStatement>& statement : statements) {
        if (statement->property)
            bound.push_back(statement.get());
    }
    m_circleCount = MarkCircles(bound);
    m_lastRank = 0;
    for (const int number : Ranking(bound).Order())
        bound[number]->rank = ++m_lastRank;
    m_isValid = true;
}

std::vector<const BoundStatement*> ReadingOrder::WayRound(const BoundStatement& statement)
{
    // The shortest way back, by what each reads.
    std::unordered_map<const BoundStatement*, const BoundStatement*> cameFrom;
    std::vector<const BoundStatement*> found = {&statement};
    const BoundStatement* last = nullptr;
    for (std::size_t i = 0; i < found.size() && !last && i < LongestWay * LongestWay; ++i) {
        for (const FormProperty* const reference : found[i]->compiled.properties) {
            const BoundStatement* const writer = WriterOf(*found[i], *reference);
            if (writer == &statement)
                last = found[i];
            else if (writer && writer->circle == statement.circle && cameFrom.emplace(writer, found[i]).second)
                found.push_back(writer);
        }
    }
    std::vector<const BoundStatement*> way = {&statement};
    for (const BoundStatement* step = last ? last : found.back(); step != &statement; step = cameFrom.at(step))
        way.insert(way.begin() + 1, step);
    if (last)
        way.push_back(&statement);
    return way;
}
