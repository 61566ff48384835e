#pragma once

#include "NotificationPresenter.h"
#include "NotificationRequest.h"
#include "domain/LocalCalendar.h"
#include "domain/Scheduler.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

namespace fenrow {

class Clock;

// The list of pending local notifications, kept in this process because the
// Linux desktop keeps no schedule for a program: requests with an
// identifier and a one-shot or daily trigger, at most 64 of them. When one
// comes due it goes to the presenter; a one-shot request then leaves the
// list, a daily one waits for the next day.
//
// Time is read from the clock and waited for on the scheduler, whose timers
// run on a monotonic clock. A wake from suspend or a change of the wall
// clock therefore shows as a wall clock that stands elsewhere than the wait
// expected: a check every minute notices that, shows what came due in the
// meantime and tells the clock-change handler, which lays the list out
// again. UI thread only.
class NotificationCenter {
public:
    static constexpr qsizetype pendingLimit = 64;
    static constexpr std::chrono::seconds clockCheckInterval{60};
    // Further off than this, the wall clock has jumped (or the loop was held
    // up that long, and laying out again does no harm).
    static constexpr std::chrono::seconds clockJumpTolerance{2};

    NotificationCenter(const Clock &clock, LocalCalendar calendar, Scheduler &scheduler,
                       NotificationPresenter &presenter);
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter &) = delete;
    NotificationCenter &operator=(const NotificationCenter &) = delete;

    // Adds the request in place of a pending one of the same identifier.
    // False, and nothing changes, for an empty identifier, for a one-shot
    // request whose time is not after now, and when 64 others are pending.
    bool add(const NotificationRequest &request);
    // Empties the list. What came due and waits for a late timer (after a
    // wake from suspend) is shown first, so nothing due is dropped unseen.
    void removeAllPending();
    // Soonest first; equal times in the order they were added.
    QList<NotificationRequest> pendingRequests() const;
    // When the pending request comes due next; none when it is not pending.
    std::optional<QDateTime> nextFireDate(const QString &identifier) const;

    // The identifiers shown by this centre and not taken away by it since,
    // in the order they were first shown. (The user may have closed them.)
    QStringList deliveredIdentifiers() const { return m_delivered; }
    void removeDelivered(const QString &identifier);
    // Takes every delivered notification away; `done` as in
    // NotificationPresenter::closeAll.
    void removeAllDelivered(std::function<void()> done);

    void setOpenedHandler(NotificationPresenter::Opened handler);
    void setClockChangedHandler(std::function<void()> handler);

private:
    struct Pending {
        NotificationRequest request;
        QDateTime nextFire;
        quint64 sequence = 0;
    };

    void deliverDue(const QDateTime &now);
    void armDelivery();
    void armClockCheck();
    void checkClock();
    void sortPending();

    const Clock &m_clock;
    LocalCalendar m_calendar;
    Scheduler &m_scheduler;
    NotificationPresenter &m_presenter;
    std::function<void()> m_clockChanged;
    QList<Pending> m_pending;
    QStringList m_delivered;
    quint64 m_lastSequence = 0;
    Scheduler::Ticket m_delivery = 0;
    Scheduler::Ticket m_clockCheck = 0;
    // Where the wall clock should stand when the clock check runs.
    QDateTime m_expectedAtCheck;
};

} // namespace fenrow
