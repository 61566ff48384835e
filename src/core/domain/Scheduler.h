#pragma once

#include <QHash>
#include <QObject>

#include <chrono>
#include <functional>
#include <map>

class QTimer;

namespace fenrow {

// Delayed work on the UI thread (the canvas's viewport save and banners,
// the debounces and timers of the background services). Behind an
// interface so that tests move time by hand instead of sleeping.
class Scheduler {
public:
    using Task = std::function<void()>;
    // 0 never names a task.
    using Ticket = quint64;

    virtual ~Scheduler() = default;
    // Runs `task` once after `delay`, unless cancelled before.
    virtual Ticket schedule(std::chrono::milliseconds delay, Task task) = 0;
    // Cancelling a task that ran or never existed does nothing.
    virtual void cancel(Ticket ticket) = 0;
};

// Time stands still until `advance`; tasks then run in the order of their
// due times, equal times in the order they were scheduled.
class ManualScheduler final : public Scheduler {
public:
    Ticket schedule(std::chrono::milliseconds delay, Task task) override;
    void cancel(Ticket ticket) override;

    void advance(std::chrono::milliseconds by);
    std::chrono::milliseconds now() const { return m_now; }
    int pendingCount() const { return int(m_tasks.size()); }

private:
    struct Key {
        std::chrono::milliseconds due;
        Ticket ticket;
        auto operator<=>(const Key &) const = default;
    };
    std::chrono::milliseconds m_now{0};
    Ticket m_lastTicket = 0;
    std::map<Key, Task> m_tasks;
    QHash<Ticket, std::chrono::milliseconds> m_dueTimes;
};

// The program's scheduler: one precise single-shot timer per task, on a
// monotonic clock, so a change of the wall clock does not stretch a wait.
class TimerScheduler final : public QObject, public Scheduler {
    Q_OBJECT

public:
    using QObject::QObject;
    ~TimerScheduler() override;

    Ticket schedule(std::chrono::milliseconds delay, Task task) override;
    void cancel(Ticket ticket) override;

private:
    Ticket m_lastTicket = 0;
    QHash<Ticket, QTimer *> m_timers;
};

} // namespace fenrow
