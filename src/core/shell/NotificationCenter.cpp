#include "NotificationCenter.h"

#include "domain/Clock.h"

#include <algorithm>

namespace fenrow {

namespace {

// Timers take their wait in an int of milliseconds; a wait is cut to a day
// and taken up again from there.
constexpr std::chrono::milliseconds longestWait{std::chrono::hours(24)};

} // namespace

NotificationCenter::NotificationCenter(const Clock &clock, LocalCalendar calendar, Scheduler &scheduler,
                                       NotificationPresenter &presenter)
    : m_clock(clock), m_calendar(std::move(calendar)), m_scheduler(scheduler), m_presenter(presenter)
{
    armClockCheck();
}

NotificationCenter::~NotificationCenter()
{
    m_scheduler.cancel(m_delivery);
    m_scheduler.cancel(m_clockCheck);
    m_presenter.setOpenedHandler({});
}

bool NotificationCenter::add(const NotificationRequest &request)
{
    if (request.identifier.isEmpty())
        return false;
    const QDateTime now = m_clock.now();
    const QDateTime nextFire = request.trigger.nextFireDate(now, m_calendar);
    if (!nextFire.isValid())
        return false;
    const auto same = std::find_if(m_pending.begin(), m_pending.end(), [&](const Pending &pending) {
        return pending.request.identifier == request.identifier;
    });
    if (same == m_pending.end() && m_pending.size() >= pendingLimit)
        return false;
    const quint64 soonest = m_pending.isEmpty() ? 0 : m_pending.first().sequence;
    if (same != m_pending.end())
        m_pending.erase(same);
    // The list stays in order; later requests of one time after earlier.
    const auto place = std::upper_bound(m_pending.begin(), m_pending.end(), nextFire,
                                        [](const QDateTime &fire, const Pending &pending) {
                                            return fire < pending.nextFire;
                                        });
    m_pending.insert(place, {request, nextFire, ++m_lastSequence});
    // The timer waits for the soonest request only.
    if (m_pending.first().sequence != soonest)
        armDelivery();
    return true;
}

void NotificationCenter::removeAllPending()
{
    deliverDue(m_clock.now());
    m_pending.clear();
    armDelivery();
}

QList<NotificationRequest> NotificationCenter::pendingRequests() const
{
    QList<NotificationRequest> requests;
    requests.reserve(m_pending.size());
    for (const Pending &pending : m_pending)
        requests.append(pending.request);
    return requests;
}

std::optional<QDateTime> NotificationCenter::nextFireDate(const QString &identifier) const
{
    for (const Pending &pending : m_pending)
        if (pending.request.identifier == identifier)
            return pending.nextFire;
    return std::nullopt;
}

void NotificationCenter::removeDelivered(const QString &identifier)
{
    if (m_delivered.removeAll(identifier) > 0)
        m_presenter.close(identifier);
}

void NotificationCenter::removeAllDelivered(std::function<void()> done)
{
    m_delivered.clear();
    m_presenter.closeAll(std::move(done));
}

void NotificationCenter::setOpenedHandler(NotificationPresenter::Opened handler)
{
    m_presenter.setOpenedHandler(std::move(handler));
}

void NotificationCenter::setClockChangedHandler(std::function<void()> handler)
{
    m_clockChanged = std::move(handler);
}

void NotificationCenter::sortPending()
{
    std::sort(m_pending.begin(), m_pending.end(), [](const Pending &a, const Pending &b) {
        return std::tie(a.nextFire, a.sequence) < std::tie(b.nextFire, b.sequence);
    });
}

void NotificationCenter::deliverDue(const QDateTime &now)
{
    QList<NotificationRequest> due;
    for (auto pending = m_pending.begin(); pending != m_pending.end();) {
        if (pending->nextFire > now) {
            ++pending;
            continue;
        }
        due.append(pending->request);
        if (pending->request.trigger.kind == NotificationTrigger::Kind::once) {
            pending = m_pending.erase(pending);
        } else {
            pending->nextFire = pending->request.trigger.nextFireDate(now, m_calendar);
            ++pending;
        }
    }
    if (due.isEmpty())
        return;
    sortPending();
    // Shown after the list is settled: showing may lead to a re-arming.
    for (const NotificationRequest &request : std::as_const(due)) {
        if (!m_delivered.contains(request.identifier))
            m_delivered.append(request.identifier);
        m_presenter.show(request);
    }
}

void NotificationCenter::armDelivery()
{
    m_scheduler.cancel(m_delivery);
    m_delivery = 0;
    if (m_pending.isEmpty())
        return;
    const qint64 untilDue = std::max<qint64>(0, m_clock.now().msecsTo(m_pending.first().nextFire));
    const auto wait = std::min(std::chrono::milliseconds(untilDue), longestWait);
    m_delivery = m_scheduler.schedule(wait, [this] {
        m_delivery = 0;
        deliverDue(m_clock.now());
        armDelivery();
    });
}

void NotificationCenter::armClockCheck()
{
    m_expectedAtCheck = m_clock.now().addSecs(clockCheckInterval.count());
    m_clockCheck = m_scheduler.schedule(clockCheckInterval, [this] { checkClock(); });
}

void NotificationCenter::checkClock()
{
    const QDateTime now = m_clock.now();
    const qint64 drift = m_expectedAtCheck.msecsTo(now);
    armClockCheck();
    if (std::abs(drift) <= std::chrono::milliseconds(clockJumpTolerance).count())
        return;
    // What came due while the machine slept, or what the clock skipped.
    deliverDue(now);
    // Back in time: a daily request comes at the next occurrence from here.
    for (Pending &pending : m_pending)
        if (pending.request.trigger.kind == NotificationTrigger::Kind::daily)
            pending.nextFire = pending.request.trigger.nextFireDate(now, m_calendar);
    sortPending();
    armDelivery();
    if (m_clockChanged)
        m_clockChanged();
}

} // namespace fenrow
