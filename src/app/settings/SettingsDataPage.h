#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace fenrow {

class AppPreferences;
class FenrowStore;
class MaintenanceScheduler;

// Housekeeping: after how many days done tasks go to the archive, the
// folder automatic backups are written to (with a backup on demand, and
// word when the last one failed), and the saved templates, each of which
// can be deleted here.
class SettingsDataPage : public QWidget {
    Q_OBJECT

public:
    SettingsDataPage(FenrowStore &store, AppPreferences &preferences, QWidget *parent = nullptr);

    // What choosing a folder in the dialog does; an empty path turns
    // automatic backups off.
    void setBackupFolder(const QString &path);

private:
    void showAutoArchive();
    void showBackup();
    void showTemplates();
    // The program's maintenance, which writes the backups; none outside
    // the desktop program.
    static MaintenanceScheduler *maintenance();

    FenrowStore &m_store;
    AppPreferences &m_preferences;
    QComboBox *m_autoArchive = nullptr;
    QLabel *m_backupFolder = nullptr;
    QLabel *m_lastBackup = nullptr;
    QPushButton *m_backupNow = nullptr;
    QPushButton *m_backupOff = nullptr;
    QLabel *m_backupFailed = nullptr;
    QWidget *m_templates = nullptr;
    QVBoxLayout *m_templateRows = nullptr;
};

} // namespace fenrow
