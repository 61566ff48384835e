#include "Scheduler.h"

#include <QTimer>

namespace fenrow {

Scheduler::Ticket ManualScheduler::schedule(std::chrono::milliseconds delay, Task task)
{
    const Ticket ticket = ++m_lastTicket;
    const auto due = m_now + std::max(delay, std::chrono::milliseconds(0));
    m_tasks.emplace(Key{due, ticket}, std::move(task));
    m_dueTimes.insert(ticket, due);
    return ticket;
}

void ManualScheduler::cancel(Ticket ticket)
{
    const auto due = m_dueTimes.find(ticket);
    if (due == m_dueTimes.end())
        return;
    m_tasks.erase(Key{*due, ticket});
    m_dueTimes.erase(due);
}

void ManualScheduler::advance(std::chrono::milliseconds by)
{
    const auto until = m_now + by;
    // A task may schedule or cancel others, so take them one at a time.
    while (!m_tasks.empty() && m_tasks.begin()->first.due <= until) {
        auto next = m_tasks.begin();
        m_now = next->first.due;
        Task task = std::move(next->second);
        m_dueTimes.remove(next->first.ticket);
        m_tasks.erase(next);
        task();
    }
    m_now = until;
}

TimerScheduler::~TimerScheduler()
{
    qDeleteAll(m_timers);
}

Scheduler::Ticket TimerScheduler::schedule(std::chrono::milliseconds delay, Task task)
{
    const Ticket ticket = ++m_lastTicket;
    auto *timer = new QTimer(this);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer, &QTimer::timeout, this, [this, ticket, task = std::move(task)] {
        if (QTimer *done = m_timers.take(ticket))
            done->deleteLater();
        task();
    });
    m_timers.insert(ticket, timer);
    timer->start(delay);
    return ticket;
}

void TimerScheduler::cancel(Ticket ticket)
{
    if (QTimer *timer = m_timers.take(ticket)) {
        timer->stop();
        timer->deleteLater();
    }
}

} // namespace fenrow
