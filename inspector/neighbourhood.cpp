#include "neighbourhood.h"

#include <QHash>

#include "view/declarationsource.h"

namespace {

const int MaxSteps = 2;
const int MaxNodes = 200; ///< A variable may have thousands of readers.

class Walk
{
public:
    explicit Walk(const DeclarationSource& source) : m_source(source)
    {
        const QVector<ViewedProperty>& properties = source.Properties();
        for (int i = 0; i < properties.size(); ++i)
            m_positions.insert({properties.at(i).object.data(), properties.at(i).name}, i);
    }

    Neighbourhood From(int position)
    {
        AddDeclaration(position, 0);
        for (int node = 0; node < m_found.nodes.size(); ++node) {
            const Neighbour from = m_found.nodes.at(node);
            if (from.position < 0 || qAbs(from.step) == MaxSteps)
                continue;
            if (from.step <= 0)
                AddReads(node, from);
            if (from.step >= 0)
                AddReaders(node, from);
        }
        return m_found;
    }

private:
    void AddReads(int reader, const Neighbour& from)
    {
        const BoundProperty bound = m_source.Bound(from.position);
        for (const VariableIdentifier& variable : bound.variables)
            Connect(Add(variable.GetPackage() + ':' + variable.GetName(), from.step - 1, -1), reader);
        for (const auto& read : bound.properties) {
            const int position = m_positions.value({read.first.data(), read.second}, -1);
            if (position >= 0)
                Connect(AddDeclaration(position, from.step - 1), reader);
            else if (read.first)
                Connect(Add(WidgetPath(read.first, m_source.Form()) + ':' + read.second, from.step - 1, -1), reader);
        }
    }

    void AddReaders(int read, const Neighbour& from)
    {
        const QVector<int> readers = m_source.ReadersOf(from.position);
        for (const int position : readers)
            Connect(read, AddDeclaration(position, from.step + 1));
    }

    int AddDeclaration(int position, int step)
    {
        const ViewedProperty& property = m_source.Properties().at(position);
        return Add(property.path + ':' + property.name, step, position);
    }

    /// The node of that, which is new or there already; -1 where there are too many.
    int Add(const QString& label, int step, int position)
    {
        const QPair<QString, int> key(label, position);
        const auto known = m_nodes.constFind(key);
        if (known != m_nodes.constEnd())
            return known.value();
        if (m_found.nodes.size() == MaxNodes)
            return -1;
        m_nodes.insert(key, m_found.nodes.size());
        m_found.nodes.append({label, step, position});
        return m_found.nodes.size() - 1;
    }

    void Connect(int from, int to)
    {
        if (from >= 0 && to >= 0 && !m_found.arrows.contains({from, to}))
            m_found.arrows.append({from, to});
    }

    const DeclarationSource& m_source;
    QHash<QPair<const QObject*, QString>, int> m_positions;
    QHash<QPair<QString, int>, int> m_nodes;
    Neighbourhood m_found;
};

} // namespace

Neighbourhood NeighbourhoodOf(const DeclarationSource& source, int position)
{
    if (position < 0 || position >= source.Properties().size())
        return Neighbourhood();
    return Walk(source).From(position);
}
