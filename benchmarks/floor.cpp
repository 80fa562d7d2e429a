#include <QCoreApplication>

#include "handwired.h"
#include "relay.h"

// What hand-written C++ pays for the same work: the least that a library can hope for.

namespace {

template<typename Function>
class CompiledFunction : public Compiled
{
public:
    explicit CompiledFunction(Function function) : m_function(std::move(function)) {}
    QVariant Evaluate() override { return m_function(); }

private:
    const Function m_function;
};

template<typename Function>
std::unique_ptr<Compiled> MakeCompiled(Function function)
{
    return std::make_unique<CompiledFunction<Function>>(std::move(function));
}

struct ScanNode
{
    virtual ~ScanNode() = default;
    int kind = 0;
    QVariant value;
    const QVariant* variable = nullptr;
};

/// One pass over the characters, one node on the heap for each token, one look-up for each name: no tree, no
/// checks. Its value is the number of tokens.
class Scan : public Compiled
{
public:
    Scan(const QString& text, const QHash<DataName, QVariant>& store) : m_text(text), m_store(store)
    {
        for (SkipBlanks(); m_position < m_text.size(); SkipBlanks())
            m_nodes.push_back(ReadToken(m_text[m_position]));
    }
    QVariant Evaluate() override { return int(m_nodes.size()); }

private:
    template<typename Predicate>
    QString Take(Predicate belongs)
    {
        const int start = m_position;
        while (m_position < m_text.size() && belongs(m_text[m_position]))
            ++m_position;
        return m_text.mid(start, m_position - start);
    }

    void SkipBlanks()
    {
        while (m_position < m_text.size() && m_text[m_position].isSpace())
            ++m_position;
    }

    std::unique_ptr<ScanNode> ReadToken(QChar first)
    {
        auto node = std::make_unique<ScanNode>();
        if (first == '\'') {
            ++m_position;
            node->value = Take([](QChar c) { return c != '\''; });
            ++m_position;
        } else if (first.isDigit()) {
            node->value = Take([](QChar c) { return c.isDigit() || c == '.'; });
        } else if (first.isLetter() || first == '@') {
            node->variable = FindVariable();
        } else {
            node->kind = first.unicode();
            ++m_position;
            if (m_position < m_text.size() && m_text[m_position] == '=')
                ++m_position;
        }
        return node;
    }

    const QVariant* FindVariable()
    {
        const QString path = Take(
            [](QChar c) { return c.isLetterOrNumber() || c == '.' || c == '_' || c == '@' || c == ':' || c == '\\'; });
        const int colon = path.indexOf(':');
        const DataName name
            = colon < 0 ? DataName{path, QString()} : DataName{path.mid(colon + 1), path.mid(1, colon - 1)};
        const auto found = m_store.constFind(name);
        return found == m_store.constEnd() ? nullptr : &*found;
    }

    const QString m_text;
    const QHash<DataName, QVariant>& m_store;
    int m_position = 0;
    std::vector<std::unique_ptr<ScanNode>> m_nodes;
};

/// Direct connections to functions that look their variables up by name.
class DirectFloor : public HandWired
{
public:
    std::unique_ptr<Compiled> Compile(const Statement& statement) override
    {
        if (statement.reads == 0)
            return std::make_unique<Scan>(statement.own, m_store);
        const auto number = [this, names = m_names](int i) { return Number(names[i]); };
        if (statement.reads == 1)
            return MakeCompiled([number] { return QVariant(number(0) * 2 > 100); });
        if (statement.reads == 3) {
            return MakeCompiled([this, number, name = m_names[2]] {
                return QVariant(number(0) * 2 > number(1) && !m_store.value(name).toBool());
            });
        }
        return MakeCompiled([number] {
            return QVariant((number(0) + number(1) * number(2) - number(3)) / number(4) > number(5)
                            && number(6) < number(7));
        });
    }

    QVariant Expected(const Statement& statement) const override
    {
        return statement.reads > 0 ? statement.value : statement.tokens;
    }

protected:
    Expression MakeExpression(const Form& form, int index) override
    {
        const Binding& binding = form.bindings[index];
        if (binding.source)
            return [source = binding.source] { return source->property("value").toDouble() - 1; };
        const DataName a = m_names[binding.reads[0]];
        if (form.kind == Form::Kind::Chain)
            return [this, a] { return Number(a) - 1; };
        if (form.kind == Form::Kind::Fan)
            return [this, a, index] { return Number(a) * 2 - index; };
        const DataName b = m_names[binding.reads[1]];
        const DataName c = m_names[binding.reads[2]];
        return [this, a, b, c] { return Number(a) * 2 + Number(b) - Number(c); };
    }

private:
    double Number(const DataName& name) const { return m_store.value(name).toDouble(); }
};

/// The same functions, each in a Relay.
class RelayFloor : public DirectFloor
{
public:
    void Deliver() override { QCoreApplication::processEvents(); }

protected:
    void Bind(const Binding& binding, Expression expression) override
    {
        m_observers.resize(m_names.size());
        Relay* const previous = binding.source ? m_relays.back().get() : nullptr;
        m_relays.push_back(std::make_unique<Relay>(binding.target, m_form->property, std::move(expression)));
        Relay* const relay = m_relays.back().get();
        for (const int variable : binding.reads)
            m_observers[variable].push_back(relay);
        if (previous)
            QObject::connect(previous, &Relay::Updated, relay, &Relay::Update);
        relay->Update();
    }

    void Notify(int variable) override
    {
        for (Relay* const relay : m_observers[variable])
            relay->OnNotify(m_names[variable]);
    }

private:
    std::vector<std::unique_ptr<Relay>> m_relays;
    std::vector<std::vector<Relay*>> m_observers;
};

const bool registered = RegisterSubject("floor_direct", MakeSubject<DirectFloor>)
    && RegisterSubject("floor_relay", MakeSubject<RelayFloor>);

} // namespace
