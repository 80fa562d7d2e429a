#ifndef FORMPARTS_H
#define FORMPARTS_H

#include <QApplication>
#include <QDynamicPropertyChangeEvent>
#include <QPointer>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "DataLayer/variableidentifier.h"

/// Runs functions in another thread; one for all, since to start a thread costs more than an input.
class Worker
{
public:
    Worker() { std::thread(&Worker::Loop, this).detach(); }

    void Run(const std::function<void()>& task)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_task = task;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_task; });
    }

private:
    [[noreturn]] void Loop()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return bool(m_task); });
            m_task();
            m_task = nullptr;
            m_changed.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::function<void()> m_task;
};

/// Waits for its end.
inline void RunInAnotherThread(const std::function<void()>& task)
{
    static Worker* const worker = new Worker; // Its thread never ends.
    worker->Run(task);
}

/// Has a typed property that announces its writes, and may be destroyed meanwhile. Texts that grow with every update
/// are cut off.
class Target : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int number MEMBER m_number NOTIFY Changed)

public:
    using QObject::QObject;

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::DynamicPropertyChange)
            return QObject::event(event);
        const int longestText = 1000;
        const QByteArray name = static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName();
        if (property(name).toString().size() > longestText)
            setProperty(name, QString());
        Q_EMIT Changed();
        return true;
    }

Q_SIGNALS:
    void Changed();

private:
    int m_number = 0;
};

/// Once for all inputs.
inline void StartApplication()
{
    if (QCoreApplication::instance())
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    static const QApplication application(argc, argv);
    qRegisterMetaType<VariableIdentifier>("VariableIdentifier");
}

#endif
