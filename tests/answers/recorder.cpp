#include "recorder.h"

#include <QRegularExpression>
#include <QScopedPointer>

#include <memory>
#include <utility>

#include "DataLayer/idataobserver.h"
#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declaration.h"
#include "DeclarationHandler/declarationhandler.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"
#include "random.h"
#include "randomstatement.h"
#include "randomvalue.h"
#include "target.h"

namespace {

const char* const BoundProperties[]
    = {"number", "count",  "big",         "real",      "small", "flag",   "visible", "text",
       "texts",  "bytes",  "letter",      "date",      "time",  "moment", "url",     "size",
       "color",  "pixmap", "orientation", "alignment", "any",   "list",   "map",     "free"};

QStringList lines;

/// What Qt prints of a QVariant is Qt's own, and for a type that is none of Qt's own Qt 5 prints the name of another.
void NoteMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    const auto dots = QRegularExpression::DotMatchesEverythingOption;
    static const QRegularExpression value("QVariant\\(.*?(?=' to property: |$)", dots);
    static const QRegularExpression current(" value:  .*", dots);
    static const QRegularExpression ownType("QVariant::(QWidget\\*|Qt::Axis|QSizePolicy|Amount|Note|VariantObject)");
    QString text = message;
    lines << "debug " + text.remove(value).remove(current).replace(ownType, "own type");
}

QString NameOf(const VariableIdentifier& identifier)
{
    return identifier.GetPackage() + ":" + identifier.GetName();
}

/// Notes the calls on their way to the data layer in memory.
class NotingPeer : public IDataPeer
{
public:
    QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) override
    {
        lines << "get " + NameOf(identifier);
        return Peer()->GetValue(identifier, defaultValue);
    }

    bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                     QFlags<ChangeValueFlag> flags) override
    {
        lines << "set " + NameOf(identifier) + " " + Describe(value);
        return Peer()->ChangeValue(identifier, value, flags);
    }

    bool AddObserver(const VariableIdentifier& identifier, IDataObserver* observer) override
    {
        lines << "observe " + NameOf(identifier);
        m_used << identifier;
        return Peer()->AddObserver(identifier, observer);
    }

    void RemoveObserver(IDataObserver* observer) override { Peer()->RemoveObserver(observer); }

    bool AddReference(const VariableIdentifier& identifier) override
    {
        lines << "refer " + NameOf(identifier);
        m_used << identifier;
        return Peer()->AddReference(identifier);
    }

    /// Leaves nothing for the next record.
    void Empty() const
    {
        for (const VariableIdentifier& identifier : m_used)
            Peer()->ChangeValue(identifier, QVariant(), NoFlag);
    }

    static IDataPeer* Peer() { return Ovex_DataPeerFactory(false)->GetDataPeer(0); }

private:
    QList<VariableIdentifier> m_used;
};

class NotingObserver : public IDataObserver
{
public:
    ~NotingObserver() override { NotingPeer::Peer()->RemoveObserver(this); }
    void OnNotify(const VariableIdentifier& identifier) override
    {
        lines << "changed " + NameOf(identifier) + " " + Describe(NotingPeer::Peer()->GetValue(identifier, QVariant()));
    }
};

VariableIdentifier Variable(int number)
{
    return VariableIdentifier("v" + QString::number(number), number == VariableCount - 1 ? "Other\\Part" : "Own");
}

/// Each variable gets two values, the second at times one that another variable has: whoever observes it
/// hears of it if that is a change.
void SetVariables(NotingObserver& observer, Random& random)
{
    for (int i = 0; i < VariableCount; ++i) {
        const VariableIdentifier variable = Variable(i);
        NotingPeer::Peer()->ChangeValue(variable, RandomValue(random), IDataPeer::NoFlag);
        NotingPeer::Peer()->AddObserver(variable, &observer);
        const VariableIdentifier source = Variable(random.Below(i + 1));
        const QVariant value = random.OneIn(2) ? RandomValue(random) : NotingPeer::Peer()->GetValue(source, QVariant());
        lines << "set " + NameOf(variable) + " " + Describe(value);
        NotingPeer::Peer()->ChangeValue(variable, value, IDataPeer::NoFlag);
    }
}

struct Form
{
    Form()
    {
        m_top.setObjectName("top");
        m_target.setObjectName("target");
        m_target.setParent(&m_top);
    }

    QObject m_top;
    Target m_target;
};

void NoteResult(const IParsingResult& result)
{
    lines << (result.HasSucceeded() ? "parsed" : "error " + result.GetErrorMessage());
    for (const QString& message : result.GetWarningMessages())
        lines << "warning " + message;
}

/// Through the interpreter: the value, a value written back, and the value then.
void Interpret(const QString& statement, NotingPeer& peer, NotingObserver& observer, Form& form, Random& random)
{
    const std::unique_ptr<IInterpreter> interpreter(new Interpreter(&peer, nullptr, nullptr));
    IParsingResult* result = nullptr;
    const std::unique_ptr<IExpression> tree(interpreter->CreateStatement(
        statement, &peer, random.OneIn(2) ? &observer : nullptr, false, "Own", &form.m_target, &form.m_top, &result));
    if (result)
        NoteResult(*result);
    delete result;
    const QVariant stored = RandomValue(random);
    if (!tree)
        return;
    lines << "value " + Describe(tree->Retrieve());
    lines << (tree->Store(stored) ? "stored " : "refused ") + Describe(stored);
    lines << "value " + Describe(tree->Retrieve());
}

/// The property as statements read it.
QString DescribeProperty(const QString& property, Form& form)
{
    const std::unique_ptr<IInterpreter> interpreter(new Interpreter(nullptr, nullptr, nullptr));
    return property + " "
        + Describe(interpreter->Evaluate("@Widget:" + property, NotingPeer::Peer(), nullptr, "", &form.m_target,
                                         &form.m_top, nullptr));
}

std::unique_ptr<Declaration> Declare(const QString& property, const QString& statement, Form& form)
{
    DeclarationHandler handler;
    return std::unique_ptr<Declaration>(
        handler.CreateDeclaration(&form.m_target, property, &form.m_top, statement, "Own", false));
}

/// Through a declaration: a property that had a value of its own, updated twice, then after a change.
void Bind(const QString& statement, Form& form, Random& random)
{
    const QString property = random.Of(BoundProperties);
    const auto note = [&](const char* what) { lines << what + DescribeProperty(property, form); };
    const VariableIdentifier initial("initial", "Own");
    NotingPeer::Peer()->ChangeValue(initial, RandomValue(random), IDataPeer::NoFlag);
    Declare(property, "initial", form)->Update(true);
    note("before ");
    const std::unique_ptr<Declaration> declaration = Declare(property, statement, form);
    for (int i = 0; i < 2; ++i)
        note(declaration->Update(true) ? "written " : "left ");
    NotingPeer::Peer()->ChangeValue(Variable(random.Below(VariableCount)), RandomValue(random), IDataPeer::NoFlag);
    note(declaration->Update(random.OneIn(2)) ? "written " : "left ");
    note(declaration->Save() ? "saved " : "not saved ");
    note(declaration->Update(true) ? "written " : "left ");
}

} // namespace

QStringList Record(quint64 seed, int number)
{
    Random random(Random(seed + static_cast<quint64>(number)).Next());
    const QtMessageHandler previous = qInstallMessageHandler(NoteMessage);
    lines = QStringList("#" + QString::number(number));
    NotingPeer peer;
    NotingObserver observer;
    Form form;
    SetVariables(observer, random);
    const QString statement = RandomStatement(random);
    lines << "statement " + statement;
    Interpret(statement, peer, observer, form, random);
    Bind(statement, form, random);
    QStringList record = std::exchange(lines, QStringList());
    peer.Empty();
    qInstallMessageHandler(previous);
    return record;
}
