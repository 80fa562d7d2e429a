#include <QCoreApplication>
#include <QHash>
#include <QLineEdit>

#include "subject.h"

// What hand-written C++ pays for the same work: the least that a library can hope for.

namespace {

// Not the library's own class, so that the floor stays what it is when that one is made faster.
struct DataName
{
    QString name;
    QString package;
};

bool operator==(const DataName& left, const DataName& right)
{
    return left.name == right.name && left.package == right.package;
}

uint qHash(const DataName& name, uint seed = 0)
{
    return qHash(name.name, seed) ^ (qHash(name.package, seed) * 31u);
}

using Store = QHash<DataName, QVariant>;

/// The least that a binding costs which is an object of its own and is called back by the data layer: it
/// sends itself the variable's name through a queued signal, and on delivery evaluates, compares with
/// what the property holds, writes, and tells that it has.
class Relay : public QObject
{
    Q_OBJECT

public:
    Relay(QObject* target, const char* property, Compiled expression)
        : m_target(target), m_property(property), m_expression(std::move(expression))
    {
        connect(this, &Relay::Notified, this, &Relay::Update, Qt::QueuedConnection);
    }

    void OnNotify(const DataName& name) { Q_EMIT Notified(name); }

    void Update()
    {
        const QVariant value = m_expression();
        if (!m_written || m_target->property(m_property) != value) {
            m_written = true;
            m_target->setProperty(m_property, value);
        }
        Q_EMIT Updated();
    }

Q_SIGNALS:
    void Notified(const DataName& name);
    void Updated();

private:
    QObject* const m_target;
    const char* const m_property;
    const Compiled m_expression;
    bool m_written = false;
};

struct ScanNode
{
    virtual ~ScanNode() = default;
    int kind = 0;
    QVariant value;
    const QVariant* variable = nullptr;
};

/// One pass over the characters, one node on the heap for each token, one look-up for each name: no tree, no
/// checks. Its value is the number of tokens.
class Scan
{
public:
    Scan(const QString& text, const Store& store) : m_text(text)
    {
        while (m_position < text.size()) {
            if (text[m_position].isSpace())
                ++m_position;
            else
                m_nodes.push_back(ReadToken(text[m_position], store));
        }
    }
    int CountTokens() const { return int(m_nodes.size()); }

private:
    template<typename Predicate>
    QString Take(Predicate belongs)
    {
        const int start = m_position;
        while (m_position < m_text.size() && belongs(m_text[m_position]))
            ++m_position;
        return m_text.mid(start, m_position - start);
    }

    std::unique_ptr<ScanNode> ReadToken(QChar first, const Store& store)
    {
        auto node = std::make_unique<ScanNode>();
        if (first == '\'') {
            ++m_position;
            node->value = Take([](QChar c) { return c != '\''; });
            ++m_position;
        } else if (first.isDigit()) {
            node->value = Take([](QChar c) { return c.isDigit() || c == '.'; });
        } else if (first.isLetter() || first == '@') {
            const auto found = store.constFind(ReadName());
            node->variable = found == store.constEnd() ? nullptr : &*found;
        } else {
            node->kind = first.unicode();
            ++m_position;
            if (m_position < m_text.size() && m_text[m_position] == '=')
                ++m_position;
        }
        return node;
    }

    DataName ReadName()
    {
        const QString path = Take(
            [](QChar c) { return c.isLetterOrNumber() || c == '.' || c == '_' || c == '@' || c == ':' || c == '\\'; });
        const int colon = path.indexOf(':');
        return colon < 0 ? DataName{path, QString()} : DataName{path.mid(colon + 1), path.mid(1, colon - 1)};
    }

    const QString m_text;
    int m_position = 0;
    std::vector<std::unique_ptr<ScanNode>> m_nodes;
};

/// Functions that look their variables up by name; those of bindings in a Relay each.
class Floor : public Subject
{
public:
    Floor() { qRegisterMetaType<DataName>("DataName"); }

    void Define(const Variables& variables) override
    {
        for (const Variable& variable : variables) {
            m_names.push_back({variable.name, variable.package});
            m_store.insert(m_names.back(), variable.value);
        }
        m_observers.resize(m_names.size());
    }

    Compiled Compile(const Statement& statement) override
    {
        if (statement.reads == 0) {
            const auto scan = std::make_shared<Scan>(statement.own, m_store);
            return [scan] { return scan->CountTokens(); };
        }
        const auto number = [this, names = m_names](int i) { return Number(names[i]); };
        if (statement.reads == 1)
            return [number] { return number(0) * 2 > 100; };
        if (statement.reads == 3) {
            return [this, number, name = m_names[2]] {
                return number(0) * 2 > number(1) && !m_store.value(name).toBool();
            };
        }
        return [number] {
            return (number(0) + number(1) * number(2) - number(3)) / number(4) > number(5) && number(6) < number(7);
        };
    }

    QVariant Expected(const Statement& statement) const override
    {
        return statement.reads == 0 ? statement.tokens : statement.value;
    }

    void Load(const Form& form) override
    {
        if (form.kind != Form::Kind::Save)
            Bind(form);
    }

    void Change(int variable, const QVariant& value) override
    {
        QVariant& stored = m_store[m_names[variable]];
        if (stored == value)
            return;
        stored = value;
        for (Relay* const relay : m_observers[variable])
            relay->OnNotify(m_names[variable]);
    }

    void Deliver() override { QCoreApplication::processEvents(); }

    void Save(const Form& form) override
    {
        for (int i = 0; i < int(m_names.size()); ++i)
            m_store[m_names[i]] = form.bindings[i].target->property(form.property);
    }

    QVariant Value(int variable) const override { return m_store.value(m_names[variable]); }

protected:
    void Bind(const Form& form)
    {
        for (int i = 0; i < int(form.bindings.size()); ++i) {
            const Binding& binding = form.bindings[i];
            auto relay = std::make_unique<Relay>(binding.target, form.property, MakeExpression(form, i));
            for (const int variable : binding.reads)
                m_observers[variable].push_back(relay.get());
            if (binding.source)
                QObject::connect(m_relays.back().get(), &Relay::Updated, relay.get(), &Relay::Update);
            relay->Update();
            m_relays.push_back(std::move(relay));
        }
    }

    Compiled MakeExpression(const Form& form, int index) const
    {
        const Binding& binding = form.bindings[index];
        const auto held = [](const Item* item) { return item->property("value").toDouble(); };
        if (form.kind == Form::Kind::Diamond && binding.source)
            return [=] { return held(binding.source) / 2 + held(binding.secondSource) / 2 - 1; };
        if (binding.source)
            return [=] { return held(binding.source) - 1; };
        const DataName a = m_names[binding.reads[0]];
        if (form.kind == Form::Kind::Chain || form.kind == Form::Kind::Diamond)
            return [this, a] { return Number(a) - 1; };
        if (form.kind == Form::Kind::Save)
            return [this, a] { return m_store.value(a); };
        if (form.kind == Form::Kind::Fan)
            return [this, a, index] { return Number(a) * 2 - index; };
        const DataName b = m_names[binding.reads[1]];
        const DataName c = m_names[binding.reads[2]];
        return [this, a, b, c] { return Number(a) * 2 + Number(b) - Number(c); };
    }

    Store m_store;
    std::vector<DataName> m_names;

private:
    double Number(const DataName& name) const { return m_store.value(name).toDouble(); }

    std::vector<std::vector<Relay*>> m_observers; ///< By variable.
    std::vector<std::unique_ptr<Relay>> m_relays;
};

/// What a save costs where, as the contract of the data layer has it, whoever shows a variable hears that it was
/// written: a Relay for each target.
class Relays : public Floor
{
public:
    void Load(const Form& form) override { Bind(form); }

    void Save(const Form& form) override
    {
        for (int i = 0; i < int(form.bindings.size()); ++i)
            Change(i, form.bindings[i].target->property(form.property));
    }
};

/// The least that a form costs which is bound as a whole: changes are gathered, delivered by one event, and evaluated
/// once for each target, after what it reads. What a property holds is compared before it is written and read back
/// afterwards. Targets that tell of their changes are heard, so that an edit is known at once. A save writes what is
/// changed and not as it was shown, keeps the type of the data, and is delivered once.
class Coalesced : public Floor
{
public:
    void Load(const Form& form) override
    {
        QHash<const QObject*, int> places;
        for (int i = 0; i < int(form.bindings.size()); ++i) {
            const Binding& binding = form.bindings[i];
            places.insert(binding.target, i);
            m_targets.push_back({binding.target, form.property, MakeExpression(form, i)});
            for (const int variable : binding.reads)
                m_variableReaders[m_names[variable]].push_back(i);
            for (const Item* const source : {binding.source, binding.secondSource}) {
                if (source)
                    m_targets[places.value(source)].readers.push_back(i);
            }
            WatchEdits(i);
            Show(&m_targets.back());
        }
    }

    void Change(int variable, const QVariant& value) override
    {
        QVariant& stored = m_store[m_names[variable]];
        if (stored == value)
            return;
        stored = value;
        for (const int reader : m_variableReaders.value(m_names[variable]))
            m_targets[reader].isWaiting = true;
        if (!m_isPosted)
            QMetaObject::invokeMethod(
                &m_receiver, [this] { ShowAll(); }, Qt::QueuedConnection);
        m_isPosted = true;
    }

    qint64 Evaluations() const override { return m_evaluations; }

    void Save(const Form&) override
    {
        for (int i = 0; i < int(m_targets.size()); ++i) {
            Target& target = m_targets[i];
            if (!target.isChanged)
                continue;
            target.isChanged = false;
            const QVariant held = target.object->property(target.property);
            if (held == target.shown)
                continue;
            bool isNumber = false;
            const double number = held.toDouble(&isNumber);
            if (m_store.value(m_names[i]).userType() != QMetaType::Double || !isNumber)
                continue;
            target.shown = held;
            Change(i, number);
        }
    }

private:
    struct Target
    {
        QObject* object;
        const char* property;
        Compiled expression;
        std::vector<int> readers = {};
        QVariant shown = {};
        bool isTaken = false;
        bool isWaiting = true;
        bool isChanged = false;
    };

    void WatchEdits(int place)
    {
        const auto note = [this, place] {
            if (m_written != &m_targets[place])
                m_targets[place].isChanged = true;
        };
        QObject* const target = m_targets[place].object;
        if (const Item* const item = qobject_cast<Item*>(target))
            QObject::connect(item, &Item::ValueChanged, &m_receiver, note);
        else if (const QLineEdit* const edit = qobject_cast<QLineEdit*>(target))
            QObject::connect(edit, &QLineEdit::textChanged, &m_receiver, note);
    }

    /// Those that are read stand before their readers.
    void ShowAll()
    {
        m_isPosted = false;
        for (Target& target : m_targets) {
            if (target.isWaiting)
                Show(&target);
        }
    }

    void Show(Target* target)
    {
        ++m_evaluations;
        target->isWaiting = false;
        const QVariant value = target->expression();
        const QVariant held = target->object->property(target->property);
        if (held == value)
            return;
        m_written = target;
        target->object->setProperty(target->property, value);
        m_written = nullptr;
        target->shown = target->object->property(target->property);
        target->isTaken = target->shown == value;
        for (const int reader : target->readers)
            m_targets[reader].isWaiting = true;
    }

    QObject m_receiver;
    bool m_isPosted = false;
    qint64 m_evaluations = 0;
    std::vector<Target> m_targets;
    const Target* m_written = nullptr; ///< While its property is.
    QHash<DataName, std::vector<int>> m_variableReaders;
};

const bool registered = RegisterSubject("floor", MakeSubject<Floor>)
    && RegisterSubject("relay", MakeSubject<Relays>, "W5")
    && RegisterSubject("coalesced", MakeSubject<Coalesced>, "W4 W5 W6");

} // namespace

#include "floor.moc"
