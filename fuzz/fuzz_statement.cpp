#include <QObject>

#include <memory>

#include "DataLayer/idataobserver.h"
#include "DataLayer/idatapeer.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/parser.h"
#include "fuzzing.h"

// The whole road of a statement. The first line of the input chooses the values that the variables have, one
// after the other; the rest is the statement, in UTF-16 if the line starts with "w", else in UTF-8.

namespace {

class ChoosingPeer : public IDataPeer
{
public:
    explicit ChoosingPeer(const QByteArray& choices) : m_choices(choices), m_next(0), m_writes(0) {}

    QVariant Next() { return ChosenValue(m_choices.isEmpty() ? 0 : m_choices.at(m_next++ % m_choices.size())); }
    int Writes() const { return m_writes; }

    QVariant GetValue(const VariableIdentifier&, const QVariant&) override { return Next(); }
    bool ChangeValue(const VariableIdentifier&, const QVariant&, ChangeValueFlags) override { return ++m_writes; }
    bool AddObserver(const VariableIdentifier& identifier, IDataObserver* observer) override
    {
        observer->OnNotify(identifier);
        return false;
    }
    void RemoveObserver(IDataObserver*) override {}
    bool AddReference(const VariableIdentifier&) override { return false; }

private:
    const QByteArray m_choices;
    int m_next;
    int m_writes;
};

class SilentObserver : public IDataObserver
{
public:
    void OnNotify(const VariableIdentifier&) override {}
};

QString Decode(const QByteArray& text, bool wide)
{
    return wide ? QString(reinterpret_cast<const QChar*>(text.constData()), text.size() / 2) : QString::fromUtf8(text);
}

void CheckResult(const IExpression* tree, const IParsingResult& result)
{
    const QString error = result.GetErrorMessage();
    Require(!tree == error.startsWith("Unknown parsing error"), "there is a tree, or else the general error");
    Require(result.HasSucceeded() == error.isEmpty(), "success means no error");
    Require(error.isEmpty() || result.GetWarningMessages().contains(error), "the messages hold the error");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    SilenceMessages();
    Input input(data, size);
    const QByteArray choices = input.TakeLine();
    const QString statement = Decode(input.TakeRest(), choices.startsWith('w'));

    ChoosingPeer peer(choices);
    SilentObserver observer;
    QObject top;
    QObject widget(&top);
    widget.setObjectName("a");
    Parser parser;
    for (const bool readOnly : {true, false}) {
        widget.setProperty("v", peer.Next());
        parser.Tokenize(statement);
        const std::unique_ptr<IExpression> tree(parser.Parse(&peer, &observer, &widget, &top, "p", readOnly));
        const std::unique_ptr<IParsingResult> result(parser.CopyResult());
        CheckResult(tree.get(), *result);
        if (!tree)
            continue;
        const QVariant value = tree->Retrieve();
        Require(peer.Writes() == 0, "evaluating writes nothing");
        const bool stored = tree->Store(value);
        Require(!readOnly || (!stored && peer.Writes() == 0), "a read-only tree writes nothing");
    }
    return 0;
}
