#include "WidgetBridge.h"

#include "AppPreferences.h"
#include "PendingCompletion.h"
#include "WidgetFiles.h"
#include "domain/Clock.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/FlowNode.h"

#include <QDir>
#include <QFileSystemWatcher>

#include <algorithm>

namespace fenrow {

namespace {

// The day timer never waits longer than this: its clock stands still
// while the machine sleeps, and a wake past midnight must not leave
// yesterday's list current for hours.
constexpr std::chrono::milliseconds dayTimerLookout = std::chrono::hours(1);

} // namespace

WidgetBridge::WidgetBridge(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences,
                           Scheduler &scheduler, QString sharedFolder, QObject *parent)
    : QObject(parent), m_store(store), m_history(history), m_preferences(preferences), m_scheduler(scheduler),
      m_sharedFolder(std::move(sharedFolder))
{
}

WidgetBridge::~WidgetBridge()
{
    m_scheduler.cancel(m_debounce);
    m_scheduler.cancel(m_dayTimer);
}

void WidgetBridge::start()
{
    if (m_started)
        return;
    m_started = true;
    connect(&m_store, &FenrowStore::changed, this, &WidgetBridge::schedulePublish);
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::readySort) || key == QLatin1StringView(PreferenceKey::accentPalette))
            schedulePublish();
    });
    watchPending();
    applyPending();
    publish(m_store.clock().now());
}

void WidgetBridge::schedulePublish()
{
    m_scheduler.cancel(m_debounce);
    m_debounce = m_scheduler.schedule(debounce, [this] {
        m_debounce = 0;
        publish(m_store.clock().now());
    });
}

void WidgetBridge::watchPending()
{
    const QString folder = WidgetFiles::pendingFolder(m_sharedFolder);
    // Without the folder there is nothing to watch; ticks parked later are
    // applied at the next start.
    if (!QDir().mkpath(folder))
        return;
    m_watch = new QFileSystemWatcher(this);
    if (!m_watch->addPath(folder)) {
        delete m_watch;
        m_watch = nullptr;
        return;
    }
    // Each file made or removed in the folder, the bridge's own removals
    // included; `m_applied` keeps a tick from counting twice.
    connect(m_watch, &QFileSystemWatcher::directoryChanged, this, &WidgetBridge::applyPending);
}

void WidgetBridge::publish(const QDateTime &now)
{
    const ReadySnapshot snapshot = ReadySnapshot::build(m_store, m_preferences.readySort(),
                                                        rawString(m_preferences.accentPalette()), now);
    armDayTimer(now, snapshot.validUntil);
    if (m_lastPublished == snapshot)
        return;
    QString error;
    if (!snapshot.write(m_sharedFolder, &error)) {
        qCWarning(fenrowWidgetLog, "Could not write the Ready snapshot: %s", qUtf8Printable(error));
        return;
    }
    m_lastPublished = snapshot;
    emit snapshotWritten();
}

void WidgetBridge::armDayTimer(const QDateTime &now, const QDateTime &validUntil)
{
    m_scheduler.cancel(m_dayTimer);
    const auto untilThen = std::chrono::milliseconds(now.msecsTo(validUntil));
    const auto wait = std::clamp(untilThen, std::chrono::milliseconds(1), dayTimerLookout);
    m_dayTimer = m_scheduler.schedule(wait, [this] {
        m_dayTimer = 0;
        publish(m_store.clock().now());
    });
}

void WidgetBridge::applyPending()
{
    for (const PendingCompletion &entry : PendingCompletion::readAll(m_sharedFolder)) {
        PendingCompletion::remove(m_sharedFolder, entry);
        if (m_applied.contains(entry.id))
            continue;
        m_applied.insert(entry.id);
        const FlowNode *node = m_store.node(entry.taskID);
        if (!node || !node->flow() || node->isDone)
            continue;
        m_history.recordFromOutside(QStringLiteral("Complete task"), *node->flow(),
                                    [&] { m_store.setStatus(NodeStatus::done, *node); });
    }
}

} // namespace fenrow
