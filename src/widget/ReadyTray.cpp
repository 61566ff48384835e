#include "ReadyTray.h"

#include "TrayIconArt.h"
#include "domain/Clock.h"
#include "shell/SystemIntents.h"
#include "shell/WidgetFiles.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>

namespace fenrow {

ReadyTray::ReadyTray(QString sharedFolder, QString fenrowProgram, const Clock &clock, Scheduler &scheduler,
                     QObject *parent)
    : QObject(parent), m_sharedFolder(std::move(sharedFolder)), m_fenrowProgram(std::move(fenrowProgram)),
      m_clock(clock), m_scheduler(scheduler)
{
    connect(&m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        // No menu of its own: a right click opens the same popup.
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::Context)
            openPopup();
    });
    connect(&m_popup, &ReadyPopup::tickRequested, this, &ReadyTray::tick);
    connect(&m_popup, &ReadyPopup::openFenrowRequested, this, [this] { startFenrow({}); });
    connect(&m_popup, &ReadyPopup::quickCaptureRequested, this,
            [this] { startFenrow({QStringLiteral("--capture")}); });
    connect(&m_popup, &ReadyPopup::openReadyRequested, this,
            [this] { startFenrow({QStringLiteral("fenrow://ready")}); });
    connect(&m_popup, &ReadyPopup::quitRequested, qApp, &QCoreApplication::quit, Qt::QueuedConnection);

    // The file is replaced by a rename, which a watch on the file alone
    // loses: the folder says when a new one arrives.
    QDir().mkpath(m_sharedFolder);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &ReadyTray::reload);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &ReadyTray::reload);
    m_watcher.addPath(m_sharedFolder);
    reload();
    m_icon.show();
}

ReadyTray::~ReadyTray()
{
    m_scheduler.cancel(m_expiry);
}

void ReadyTray::watch()
{
    const QString path = WidgetFiles::snapshotPath(m_sharedFolder);
    if (m_fileExists && !m_watcher.files().contains(path))
        m_watcher.addPath(path);
}

void ReadyTray::reload()
{
    const QString path = WidgetFiles::snapshotPath(m_sharedFolder);
    m_fileExists = QFileInfo::exists(path);
    std::optional<ReadySnapshot> snapshot = ReadySnapshot::read(m_sharedFolder);
    watch();
    if (snapshot == m_snapshot)
        return redraw();
    m_snapshot = std::move(snapshot);
    // A tick shows until the list Fenrow writes next has dropped its task.
    QSet<QUuid> listed;
    if (m_snapshot)
        for (const ReadySnapshot::Item &item : m_snapshot->tasks)
            listed.insert(item.id);
    m_ticked.intersect(listed);
    m_notice.clear();
    redraw();
}

void ReadyTray::redraw()
{
    const QDateTime now = m_clock.now();
    if (!m_snapshot)
        m_state = m_fileExists ? ReadyListState::outOfDate : ReadyListState::notWritten;
    else
        m_state = now < m_snapshot->validUntil ? ReadyListState::current : ReadyListState::outOfDate;

    // Flip to out of date when the list's day ends, without waiting for a
    // file that a stopped Fenrow will not write.
    m_scheduler.cancel(m_expiry);
    m_expiry = 0;
    if (m_state == ReadyListState::current)
        m_expiry = m_scheduler.schedule(std::chrono::milliseconds(qMax<qint64>(0, now.msecsTo(m_snapshot->validUntil))),
                                        [this] {
                                            m_expiry = 0;
                                            redraw();
                                        });

    const ReadySnapshot *snapshot = m_snapshot ? &*m_snapshot : nullptr;
    const qsizetype ticked = m_state == ReadyListState::current ? m_ticked.size() : 0;
    const QString summary = ReadyWords::summary(m_state, snapshot, ticked);
    m_icon.setToolTip(qtTrId("widget.tooltip %1").arg(summary));
    const bool current = m_state == ReadyListState::current;
    const QColor color = current ? TrayIconArt::accent(snapshot->paletteRaw) : QColor(0x8E, 0x90, 0x9B);
    m_icon.setIcon(TrayIconArt::icon(color, current ? std::optional(snapshot->total - ticked) : std::nullopt));

    m_popup.present({m_state, m_snapshot, current ? m_ticked : QSet<QUuid>(), now.toLocalTime().date(), m_notice});
}

void ReadyTray::openPopup()
{
    redraw();
    const QRect iconPlace = m_icon.geometry();
    const QRect anchor = iconPlace.isValid() ? iconPlace : QRect(QCursor::pos(), QSize(1, 1));
    QScreen *screen = QGuiApplication::screenAt(anchor.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    m_popup.setGeometry(ReadyPopup::placement(m_popup.sizeHint(), anchor, screen->availableGeometry()));
    m_popup.show();
    m_popup.raise();
    m_popup.activateWindow();
}

void ReadyTray::tick(const QUuid &task)
{
    if (TickReadyTaskIntent{task.toString(QUuid::WithoutBraces)}.perform(m_sharedFolder, m_clock.now())) {
        m_ticked.insert(task);
        m_notice.clear();
    } else {
        m_notice = qtTrId("widget.tick.failed");
    }
    redraw();
}

void ReadyTray::startFenrow(const QStringList &arguments)
{
    if (QProcess::startDetached(m_fenrowProgram, arguments)) {
        m_notice.clear();
        return redraw();
    }
    qCWarning(fenrowWidgetLog, "Could not start Fenrow (%s)", qUtf8Printable(m_fenrowProgram));
    m_notice = qtTrId("widget.open.failed");
    redraw();
    openPopup();
}

} // namespace fenrow
