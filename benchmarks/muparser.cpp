#include <muParser.h>

#include <deque>
#include <functional>

#include "subject.h"

namespace {

mu::value_type Not(mu::value_type value)
{
    return value == 0;
}

/// A parser for each binding, and a list of the bindings that read it for each variable, called at once. It
/// knows numbers alone; they stand at addresses that the parsers are told.
class MuParser : public Subject
{
public:
    void Define(const Variables& variables) override
    {
        for (const Variable& variable : variables) {
            m_names.push_back(variable.script.toStdString());
            m_values.push_back(variable.value.toDouble());
        }
        m_readers.resize(m_names.size());
    }

    Compiled Compile(const Statement& statement) override
    {
        std::vector<int> reads;
        for (int i = 0; i < statement.reads; ++i)
            reads.push_back(i);
        const auto parser = NewParser(statement.script, reads);
        return [parser] { return QVariant(parser->Eval()); };
    }
    QVariant Expected(const Statement& statement) const override { return statement.value.toDouble(); }

    void Load(const Form& form) override
    {
        for (const Binding& binding : form.bindings) {
            const auto parser = NewParser(binding.script, binding.reads);
            const auto update = [parser, target = binding.target, property = form.property] {
                target->setProperty(property, parser->Eval());
            };
            for (const int variable : binding.reads)
                m_readers[variable].push_back(update);
            if (binding.source)
                FollowSource(*parser, binding, update);
            update();
        }
    }

    void Change(int variable, const QVariant& value) override
    {
        m_values[variable] = value.toDouble();
        for (const std::function<void()>& update : m_readers[variable])
            update();
    }

    QVariant Value(int variable) const override { return m_values[variable]; }

private:
    std::shared_ptr<mu::Parser> NewParser(const QString& text, const std::vector<int>& reads)
    {
        auto parser = std::make_shared<mu::Parser>();
        parser->DefineInfixOprt("!", Not);
        // The point in o1.value is a part of the name.
        parser->DefineNameChars("0123456789_.abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
        for (const int variable : reads)
            parser->DefineVar(m_names[variable], &m_values[variable]);
        parser->SetExpr(text.toStdString());
        return parser;
    }

    void FollowSource(mu::Parser& parser, const Binding& binding, const std::function<void()>& update)
    {
        double* const value = &m_sources.emplace_back();
        const auto read = [value, source = binding.source] { *value = source->property("value").toDouble(); };
        read();
        parser.DefineVar(binding.source->objectName().toStdString() + ".value", value);
        QObject::connect(binding.source, &Item::ValueChanged, binding.target, [read, update] {
            read();
            update();
        });
    }

    std::vector<std::string> m_names;
    std::deque<double> m_values;  ///< Of variables; parsers keep the addresses, as of the following.
    std::deque<double> m_sources; ///< Of targets that others read.
    std::vector<std::vector<std::function<void()>>> m_readers; ///< By variable.
};

// Half of the statements of W1 are not about numbers, and nothing in it saves.
const bool registered = RegisterSubject("muParser", MakeSubject<MuParser>, "W2 W3 W4");

} // namespace
