#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <chrono>
#include <thread>

#include "subject.h"

namespace {

using Maker = std::unique_ptr<Subject> (*)();

QString ValueError(Subject& subject, const Statement& statement)
{
    const QVariant value = subject.Compile(statement)();
    return value == subject.Expected(statement) ? QString() : statement.own + " yields " + value.toString();
}

void FirstValues(benchmark::State& state, Maker make)
{
    const std::unique_ptr<Subject> subject = make();
    subject->Define(TypicalVariables());
    for (auto _ : state) {
        for (const Statement& statement : TypicalStatements())
            benchmark::DoNotOptimize(subject->Compile(statement)());
    }
    for (const Statement& statement : TypicalStatements())
        Check(state, ValueError(*subject, statement));
    state.SetItemsProcessed(state.iterations() * int64_t(TypicalStatements().size()));
}

void Evaluation(benchmark::State& state, Maker make, int reads)
{
    const std::unique_ptr<Subject> subject = make();
    subject->Define(ReadingVariables(reads));
    const Compiled statement = subject->Compile(ReadingStatement(reads));
    for (auto _ : state)
        benchmark::DoNotOptimize(statement());
    Check(state, ValueError(*subject, ReadingStatement(reads)));
    state.SetItemsProcessed(state.iterations());
}

double ResidentBytes()
{
    QFile file("/proc/self/statm");
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() * sysconf(_SC_PAGESIZE) : 0;
}

std::unique_ptr<Subject> Open(Maker make, const Form& form)
{
    std::unique_ptr<Subject> subject = make();
    subject->Define(form.variables);
    subject->Prepare(form);
    return subject;
}

void ChangeAndCheck(benchmark::State& state, Subject& subject, Form& form, int variable, double value)
{
    form.variables[variable].value = value;
    subject.Change(variable, value);
    subject.Deliver();
    Check(state, form.Error());
    Check(state, subject.Error());
}

// One load, after a small one that starts what is started only once. It should be the only benchmark of its
// process: memory and time then are those of a program that opens its first form.
void LoadForm(benchmark::State& state, Maker make, Form::Targets targets, int count)
{
    const Form small(Form::Kind::Load, targets, 16);
    Open(make, small)->Load(small);
    Form form(Form::Kind::Load, targets, count);
    const std::unique_ptr<Subject> subject = Open(make, form);
    malloc_trim(0);
    const double before = ResidentBytes();
    for (auto _ : state) {
        subject->Load(form);
        subject->Deliver();
    }
    state.counters["bytes_per_item"] = (ResidentBytes() - before) / count;
    state.SetItemsProcessed(count);
    Check(state, form.Error());
    ChangeAndCheck(state, *subject, form, 3, 7.25);
}

/// That none has been evaluated more than once for each delivery, where it is counted.
void CountEvaluations(benchmark::State& state, qint64 before, qint64 after, int count)
{
    if (before < 0)
        return;
    const qint64 evaluations = after - before;
    state.counters["evaluations"] = double(evaluations) / double(state.iterations());
    if (evaluations != state.iterations() * count)
        Check(state, QString("%1 evaluations in %2 deliveries").arg(evaluations).arg(state.iterations()));
}

void ChangeVariable(benchmark::State& state, Maker make, Form::Kind kind, int count, int changes)
{
    Form form(kind, Form::Targets::Objects, count);
    const std::unique_ptr<Subject> subject = Open(make, form);
    subject->Load(form);
    double value = 1000;
    ChangeAndCheck(state, *subject, form, 0, value);
    const qint64 evaluations = subject->Evaluations();
    for (auto _ : state) {
        for (int change = 0; change < changes; ++change)
            subject->Change(0, ++value);
        subject->Deliver();
    }
    CountEvaluations(state, evaluations, subject->Evaluations(), count);
    form.variables[0].value = value;
    Check(state, form.Error());
    ChangeAndCheck(state, *subject, form, 0, value + 1);
    state.SetItemsProcessed(state.iterations());
}

/// With nothing edited.
void SaveUnedited(benchmark::State& state, Maker make, int count)
{
    const Form form(Form::Kind::Save, Form::Targets::Widgets, count);
    const std::unique_ptr<Subject> subject = Open(make, form);
    subject->Load(form);
    subject->Deliver();
    for (auto _ : state)
        subject->Save(form);
    subject->Deliver();
    for (int i = 0; i < count; ++i) {
        if (subject->Value(i) != form.variables[i].value)
            Check(state, QString("variable %1 is '%2'").arg(i).arg(subject->Value(i).toString()));
    }
    state.SetItemsProcessed(state.iterations());
}

/// Two seconds in which a thread changes each variable 100 times a second, and targets follow at most 20 times.
void Stream(benchmark::State& state, Maker make, int count)
{
    const int rounds = 200;
    Form form(Form::Kind::Watch, Form::Targets::Widgets, count);
    const std::unique_ptr<Subject> subject = Open(make, form);
    subject->Load(form);
    subject->SetDeliveryInterval(50);
    for (auto _ : state) {
        QEventLoop loop;
        std::thread writer([&] {
            auto next = std::chrono::steady_clock::now();
            for (int round = 1; round <= rounds; ++round) {
                for (int i = 0; i < count; ++i)
                    subject->Change(i, 1000.0 * round + i);
                std::this_thread::sleep_until(next += std::chrono::milliseconds(10));
            }
            QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection);
        });
        loop.exec();
        writer.join();
    }
    for (int i = 0; i < count; ++i)
        form.variables[i].value = 1000.0 * rounds + i;
    QElapsedTimer waiting;
    waiting.start();
    while (!form.Error().isEmpty() && !waiting.hasExpired(5000))
        subject->Deliver();
    Check(state, form.Error());
    Check(state, subject->Error());
    state.SetItemsProcessed(state.iterations() * rounds * count);
}

void SaveForm(benchmark::State& state, Maker make, Form::Targets targets, int count)
{
    const Form form(Form::Kind::Save, targets, count);
    const std::unique_ptr<Subject> subject = Open(make, form);
    subject->Load(form);
    subject->Deliver();
    double value = 5000;
    for (auto _ : state) {
        state.PauseTiming();
        ++value;
        for (int i = 0; i < count; ++i)
            form.bindings[i].target->setProperty(form.property, value + i);
        state.ResumeTiming();
        subject->Save(form);
        state.PauseTiming();
        subject->Deliver();
        state.ResumeTiming();
    }
    for (int i = 0; i < count; ++i) {
        if (!qFuzzyCompare(subject->Value(i).toDouble(), value + i))
            Check(state, QString("variable %1 is '%2'").arg(i).arg(subject->Value(i).toString()));
    }
    state.SetItemsProcessed(state.iterations());
}

} // namespace

void Check(benchmark::State& state, const QString& error)
{
    if (!error.isEmpty())
        state.SkipWithError(qPrintable(error));
}

bool RegisterSubject(const std::string& name, Maker make, const std::string& workloads)
{
    // 0 iterations: as many as fill the time.
    const auto add = [&](const std::string& workload, int iterations, const auto& function, auto... arguments) {
        if (workloads.find(workload.substr(0, 2)) == std::string::npos)
            return;
        auto* const added = benchmark::RegisterBenchmark((name + '/' + workload).c_str(), function, make, arguments...);
        added->MeasureProcessCPUTime();
        if (iterations > 0)
            added->Iterations(iterations);
    };
    add("W1_first", 0, FirstValues);
    for (const int reads : {1, 3, 8})
        add("W2_evaluate/" + std::to_string(reads), 0, Evaluation, reads);
    add("W3_load/objects/1000", 1, LoadForm, Form::Targets::Objects, 1000);
    add("W3_load/widgets/1000", 1, LoadForm, Form::Targets::Widgets, 1000);
    add("W3_load/widgets/10000", 1, LoadForm, Form::Targets::Widgets, 10000);
    add("W4_fan/10000", 0, ChangeVariable, Form::Kind::Fan, 10000, 1);
    add("W4_chain/1000", 0, ChangeVariable, Form::Kind::Chain, 1000, 1);
    add("W5_save/objects/1000", 0, SaveForm, Form::Targets::Objects, 1000);
    add("W5_save/widgets/1000", 0, SaveForm, Form::Targets::Widgets, 1000);
    add("W6_diamond/24", 0, ChangeVariable, Form::Kind::Diamond, 24, 1);
    add("W6_burst/1000", 0, ChangeVariable, Form::Kind::Fan, 1000, 100);
    add("W6_unedited/1000", 0, SaveUnedited, 1000);
    add("W7_stream/50", 1, Stream, 50);
    return true;
}
