#ifndef SETTINGSPAGE_H
#define SETTINGSPAGE_H

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QLineEdit>
#include <QWidget>
#include <vector>

#include "subject.h"

/// A page of a settings dialog: line edits whose names begin with a prefix.
class SettingsPage : public QWidget
{
public:
    static const int Count = 1000;

    explicit SettingsPage(const QString& prefix)
    {
        setObjectName("page");
        for (int i = 0; i < Count; ++i) {
            edits.push_back(new QLineEdit(this));
            edits.back()->setObjectName(prefix + QString::number(i));
        }
    }

    static QString InitialText(int i) { return QString("value %1").arg(i); }

    void Edit(int turn)
    {
        for (int i = 0; i < Count; ++i)
            edits[i]->setText(QString("edited %1, %2").arg(turn).arg(i));
    }

    std::vector<QLineEdit*> edits;
};

/// That the data and the page hold the texts of a turn, before the first edit those of the beginning.
template<typename Settings>
QString SettingsError(const Settings& settings, int turn)
{
    for (int i = 0; i < SettingsPage::Count; ++i) {
        const QString text = turn < 0 ? SettingsPage::InitialText(i) : QString("edited %1, %2").arg(turn).arg(i);
        if (settings.Value(i) != text || settings.page.edits[i]->text() != text)
            return QString("text %1 is '%2', its data '%3'")
                .arg(i)
                .arg(settings.page.edits[i]->text(), settings.Value(i));
    }
    return QString();
}

template<typename Settings>
void LoadSettings(benchmark::State& state)
{
    std::unique_ptr<Settings> settings;
    for (auto _ : state) {
        state.PauseTiming();
        settings = nullptr;
        settings = std::make_unique<Settings>();
        state.ResumeTiming();
        settings->Load();
    }
    Check(state, SettingsError(*settings, -1));
    state.SetItemsProcessed(state.iterations());
}

template<typename Settings>
void SaveSettings(benchmark::State& state)
{
    Settings settings;
    settings.Load();
    int turn = -1;
    for (auto _ : state) {
        state.PauseTiming();
        settings.page.Edit(++turn);
        QCoreApplication::processEvents();
        state.ResumeTiming();
        settings.Save();
    }
    Check(state, SettingsError(settings, turn));
    state.SetItemsProcessed(state.iterations());
}

template<typename Settings>
void SaveUneditedSettings(benchmark::State& state)
{
    Settings settings;
    settings.Load();
    QCoreApplication::processEvents();
    for (auto _ : state)
        settings.Save();
    Check(state, SettingsError(settings, -1));
    state.SetItemsProcessed(state.iterations());
}

/// Registers the workloads of a way to bind such a page, which has \a page, and with it Load(), Save() and Value().
template<typename Settings>
bool RegisterSettings(const std::string& name)
{
    const auto add = [&](const std::string& workload, void (*function)(benchmark::State&)) {
        return benchmark::RegisterBenchmark((name + "/W8_" + workload).c_str(), function)->MeasureProcessCPUTime();
    };
    add("load/1000", LoadSettings<Settings>)->Iterations(30);
    add("save/1000", SaveSettings<Settings>)->Iterations(30);
    add("unedited/1000", SaveUneditedSettings<Settings>);
    return true;
}

#endif
