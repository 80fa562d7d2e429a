#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QCoreApplication>
#include <QLineEdit>
#include <QTimer>
#include <limits>
#include <memory>
#include <vector>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declarationhandler.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"
#include "subject.h"

// How the library's cost grows with the number of declarations and with the length of a statement.

namespace {

IDataPeer* Data()
{
    static IDataPeer* const peer = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    return peer;
}

VariableIdentifier Identifier(int index)
{
    return VariableIdentifier(QString("v%1").arg(index), QString());
}

/// Line edits in groups of ten. The text of each belongs to a variable, its tool tip follows the text by way
/// of a widget path.
class GroupedForm
{
public:
    explicit GroupedForm(int count)
    {
        QWidget* group = nullptr;
        for (int i = 0; i < count; ++i) {
            if (i % 10 == 0)
                group = new QWidget(&m_top);
            group->setObjectName("group");
            m_edits.push_back(new QLineEdit(group));
            m_edits.back()->setObjectName(QString("edit%1").arg(i));
            Data()->ChangeValue(Identifier(i), i, IDataPeer::NoFlag);
        }
    }

    void DeclareTexts()
    {
        m_handler.Clear();
        for (int i = 0; i < int(m_edits.size()); ++i)
            m_handler.AddDeclaration(&m_top, m_edits[i], "_text", Identifier(i).GetName(), QString(), false, false);
    }

    void DeclareToolTips()
    {
        for (QLineEdit* const edit : m_edits) {
            const QString statement = "@TopWidget\\" + edit->objectName() + ":text";
            m_handler.AddDeclaration(&m_top, edit, "~toolTip", statement, QString(), true, false);
        }
    }

    void Connect() { m_handler.ConnectPropertyCrossReferences(); }

    void Enter()
    {
        m_handler.Update();
        ++m_round;
        for (QLineEdit* const edit : m_edits)
            edit->setText(Entered(edit));
    }

    void Save() { m_handler.Save(&m_top, "group"); }

    /// What differs from what has been entered; else empty.
    QString Error() const
    {
        for (int i = 0; i < int(m_edits.size()); ++i) {
            const QString text = Entered(m_edits[i]);
            const QStringList texts
                = {m_edits[i]->text(), m_edits[i]->toolTip(), Data()->GetValue(Identifier(i), QVariant()).toString()};
            if (texts != QStringList{text, text, text})
                return QString("text, tool tip and variable %1 are '%2'").arg(i).arg(texts.join("', '"));
        }
        return QString();
    }

private:
    QString Entered(const QObject* edit) const { return QString("%1, %2").arg(m_round).arg(edit->objectName()); }

    int m_round = 0;
    QWidget m_top;
    std::vector<QLineEdit*> m_edits;
    DeclarationHandler m_handler;
};

// Once grown, the heap keeps its memory, so that the times are the library's and not those of the operating
// system, which hands out pages.
void KeepHeap()
{
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

using Step = void (GroupedForm::*)();

/// The life of a form, of which one step is timed.
void TimeStep(benchmark::State& state, Step timed)
{
    KeepHeap();
    GroupedForm form(int(state.range(0)));
    form.DeclareTexts();
    form.DeclareToolTips();
    for (auto _ : state) {
        state.PauseTiming();
        for (const Step step : {&GroupedForm::DeclareTexts, &GroupedForm::DeclareToolTips, &GroupedForm::Connect,
                                &GroupedForm::Enter, &GroupedForm::Save}) {
            if (step == timed)
                state.ResumeTiming();
            (form.*step)();
            if (step == timed)
                state.PauseTiming();
        }
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    Check(state, form.Error());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Qt's own part of connecting cross references: as many pairs of objects, which hear of themselves already.
void ConnectPairs(benchmark::State& state)
{
    KeepHeap();
    const auto count = size_t(state.range(0));
    std::vector<std::unique_ptr<QTimer>> timers;
    const auto renew = [&] {
        timers.clear();
        for (size_t i = 0; i < 2 * count; ++i) {
            timers.push_back(std::make_unique<QTimer>());
            QObject::connect(timers[i].get(), &QTimer::timeout, timers[i].get(), &QTimer::stop);
        }
    };
    const auto connect = [&] {
        for (size_t i = 0; i < count; ++i)
            QObject::connect(timers[i].get(), &QTimer::timeout, timers[count + i].get(), &QTimer::stop);
    };
    renew();
    connect();
    for (auto _ : state) {
        state.PauseTiming();
        renew();
        state.ResumeTiming();
        connect();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// How to make a text that consists of one thing again and again.
struct LongText
{
    const char* name;
    const char* start;
    const char* unit; ///< Repeated. Empty stands for a sum with brackets, as flat as it can be.
    const char* end;
    const char* closing; ///< Repeated as often as the unit.
    const char* message; ///< How the first complaint about a long one begins, if there is any.
};

const char* const Sound = nullptr;
const char* const Wrong = "Unknown parsing error";
const char* const TooDeep = "Expression is nested too deeply";
const char* const LeftOver = "Did not expect token";
const char* const Foreign = "Unrecognised token";

// clang-format off
const LongText longTexts[] = {
    {"balanced sum",       "",           "",       "",     "",  Sound},
    {"one text literal",   "'",          "a",      "'",    "",  Sound},
    {"one name",           "",           "a",      "",     "",  Sound},
    {"one number",         "",           "1",      "",     "",  Sound},
    {"one package",        "@A",         "\\A",    ":v0",  "",  Sound},
    {"one widget path",    "@TopWidget", "\\A",    ":v0",  "",  Wrong},
    {"blanks",             "",           " ",      "v0",   "",  Sound},
    {"text literals",      "",           "''",     "",     "",  LeftOver},
    {"numbers",            "",           "1 ",     "",     "",  LeftOver},
    {"operators",          "",           "+ ",     "",     "",  Wrong},
    {"plain sum",          "v0",         " + v0",  "",     "",  TooDeep},
    {"prefixes",           "",           "NOT ",   "v0",   "",  TooDeep},
    {"brackets",           "",           "(",      "v0",   ")", TooDeep},
    {"indexes",            "v0",         "[0]",    "",     "",  TooDeep},
    {"members",            "v0 ",        ".'a'",   "",     "",  TooDeep},
    {"foreign characters", "",           ";",      "",     "",  Foreign},
    {"open quote",         "'",          "a",      "",     "",  Foreign},
};
// clang-format on

QString Balanced(int size)
{
    QString sum = "v0";
    while (sum.size() < size / 2)
        sum = '(' + sum + " + " + sum + ')';
    return sum;
}

QString MakeText(const LongText& text, int size)
{
    if (!*text.unit)
        return Balanced(size);
    const int count = size / int(qstrlen(text.unit) + qstrlen(text.closing));
    return text.start + QString(text.unit).repeated(count) + text.end + QString(text.closing).repeated(count);
}

struct Reading
{
    QVariant value;
    QString message;
};

Reading Read(const QString& statement)
{
    const Interpreter interpreter(nullptr, nullptr, nullptr);
    IParsingResult* result = nullptr;
    const QVariant value = interpreter.Evaluate(statement, Data(), nullptr, QString(), nullptr, nullptr, &result);
    const std::unique_ptr<IParsingResult> owned(result);
    return {value, owned->GetWarningMessages().value(0)};
}

void ReadText(benchmark::State& state, const LongText& text)
{
    KeepHeap();
    Data()->ChangeValue(Identifier(0), 1.0, IDataPeer::NoFlag);
    const QString statement = MakeText(text, int(state.range(0)));
    Read(statement);
    Reading reading;
    for (auto _ : state) {
        reading = Reading();
        reading = Read(statement);
    }
    const bool isShort = statement.size() < 10000;
    if (reading.message.isEmpty() ? text.message && !isShort : !reading.message.startsWith(text.message))
        Check(state, "message: " + reading.message.left(100));
    if (!*text.unit && reading.value != statement.count("v0"))
        Check(state, "value: " + reading.value.toString());
    state.SetItemsProcessed(state.iterations() * statement.size());
}

const bool registered = [] {
    const auto add = [](const std::string& name, int size, const auto& function, auto... argument) {
        return benchmark::RegisterBenchmark(("growth/" + name).c_str(), function, argument...)
            ->Arg(size)
            ->MeasureProcessCPUTime();
    };
    for (const int size : {100, 1000, 10000}) {
        const int iterations = 10000 / size; // What is not timed takes longer than what is.
        add("AddDeclaration", size, TimeStep, &GroupedForm::DeclareToolTips)->Iterations(iterations);
        add("ConnectPropertyCrossReferences", size, TimeStep, &GroupedForm::Connect)->Iterations(iterations);
        add("QObject::connect alone", size, ConnectPairs)->Iterations(iterations);
        add("Save", size, TimeStep, &GroupedForm::Save)->Iterations(iterations);
    }
    for (const LongText& text : longTexts) {
        for (const int size : {1000, 100000, 10000000})
            add(std::string("text/") + text.name, size, ReadText, text);
    }
    return true;
}();

} // namespace
