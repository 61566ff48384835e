#pragma once

#include "ReadyPopup.h"
#include "domain/Scheduler.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QSystemTrayIcon>

namespace fenrow {

class Clock;

// The tray side of the widget: reads the Ready list Fenrow writes to the
// shared folder, shows its count on the tray icon, opens the popup, parks
// ticks for Fenrow and starts Fenrow for the rest. It never opens the store.
class ReadyTray : public QObject {
    Q_OBJECT

public:
    // `fenrowProgram` is the `fenrow` executable that "Open Fenrow" and
    // "Quick capture" start.
    ReadyTray(QString sharedFolder, QString fenrowProgram, const Clock &clock, Scheduler &scheduler,
              QObject *parent = nullptr);
    ~ReadyTray() override;

    ReadyListState state() const { return m_state; }
    const std::optional<ReadySnapshot> &snapshot() const { return m_snapshot; }
    QSystemTrayIcon &trayIcon() { return m_icon; }
    ReadyPopup &popup() { return m_popup; }

    // Opens the popup beside the tray icon, or at the pointer when the tray
    // does not say where the icon is.
    void openPopup();
    // Reads the file again and redraws.
    void reload();

private:
    void redraw();
    void tick(const QUuid &task);
    void startFenrow(const QStringList &arguments);
    void watch();

    QString m_sharedFolder;
    QString m_fenrowProgram;
    const Clock &m_clock;
    Scheduler &m_scheduler;
    Scheduler::Ticket m_expiry = 0;
    QFileSystemWatcher m_watcher;
    std::optional<ReadySnapshot> m_snapshot;
    bool m_fileExists = false;
    ReadyListState m_state = ReadyListState::notWritten;
    QSet<QUuid> m_ticked;
    QString m_notice;
    QSystemTrayIcon m_icon;
    ReadyPopup m_popup;
};

} // namespace fenrow
