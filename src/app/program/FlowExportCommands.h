#pragma once

#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QUuid>

#include <functional>
#include <memory>

class QAction;
class QFileDialog;
class QMenu;
class QWidget;

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class FenrowStore;
struct FenrowBackup;

// Everything that leaves or enters the program as a document, reached from
// the File menu and a flow's row menu: a flow as Markdown (to a file or the
// clipboard) or as OPML, an outline as a new flow, a backup of everything,
// and its restore by merging or replacing. Every panel and question is a
// window-modal dialog of `window`, opened without blocking, with an object
// name of its own; the command goes on when the user answers.
class FlowExportCommands : public QObject {
    Q_OBJECT

public:
    FlowExportCommands(FenrowStore &store, AppPreferences &preferences, QWidget *window);

    // The inference engine's owner; with one that has an engine, an outline
    // imported without dependencies of its own may be connected by it.
    void setEnvironment(AppEnvironment *environment) { m_environment = environment; }

    // Adds the commands to the File menu; the flow's come first and act on
    // the flow `shownFlow` names at the moment (none: they are off).
    void addTo(QMenu *file, std::function<QUuid()> shownFlow);

    QFileDialog *exportMarkdown(const QUuid &flowID);
    void copyMarkdown(const QUuid &flowID);
    QFileDialog *exportOPML(const QUuid &flowID);
    QFileDialog *importOPML();
    QFileDialog *backUp();
    QFileDialog *restoreBackup();

    QAction *exportMarkdownAction() const { return m_exportMarkdown; }
    QAction *copyMarkdownAction() const { return m_copyMarkdown; }

signals:
    // A new flow came from an outline; the window shows it.
    void flowImported(const QUuid &flowID);
    // An export's background write ended, well or not.
    void exportFinished(const QString &path, bool written);
    // The engine's connections for an imported outline arrived, or not.
    void relinkFinished(const QUuid &flowID, bool connected);

private:
    QFileDialog *saveDialog(const char *name, const QString &title, const QString &button, const QString &filter,
                            const QString &suffix, const QString &proposedName);
    QFileDialog *openDialog(const char *name, const QString &title, const QString &button, const QString &filter);
    QMessageBox *inform(const char *name, QMessageBox::Icon icon, const QString &title, const QString &text);
    void writeInBackground(const QString &path, const QByteArray &bytes, const char *failureLog);
    void askToRelink(const QUuid &flowID);
    void restoreFrom(const QString &path);
    // `path` is the file the backup came from, spared when earlier safety
    // backups are cleared away.
    void askHowToRestore(std::shared_ptr<const FenrowBackup> backup, const QString &path);
    void confirmReplace(std::shared_ptr<const FenrowBackup> backup, const QString &path);
    void runRestore(const FenrowBackup &backup, const QString &path, bool replacing);
    void applyShortcuts();

    FenrowStore &m_store;
    AppPreferences &m_preferences;
    AppEnvironment *m_environment = nullptr;
    QWidget *m_window;
    QString m_folder;
    QAction *m_exportMarkdown = nullptr;
    QAction *m_copyMarkdown = nullptr;
};

} // namespace fenrow
