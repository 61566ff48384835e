#include "FlowExportCommands.h"

#include "look/Theme.h"
#include "capture/GeneratedFlows.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "formats/DocumentInput.h"
#include "formats/FenrowBackup.h"
#include "formats/OPMLCodec.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/ShortcutKeys.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMenu>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QSaveFile>
#include <QStandardPaths>
#include <QThread>

Q_LOGGING_CATEGORY(fenrowExchangeLog, "fenrow.exchange")

namespace fenrow {

namespace {

// A flow's name as a file name: a slash would make it a path.
QString fileNameOf(const QString &name)
{
    return QString(name).replace(QLatin1Char('/'), QLatin1Char('-'));
}

// Writes the whole file or nothing; the reason on failure.
QString writeWhole(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return {};
    return file.errorString().isEmpty() ? QStringLiteral("cannot write %1").arg(path) : file.errorString();
}

} // namespace

FlowExportCommands::FlowExportCommands(FenrowStore &store, AppPreferences &preferences, QWidget *window)
    : QObject(window), m_store(store), m_preferences(preferences), m_window(window),
      m_folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
{
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::commandShortcuts))
            applyShortcuts();
    });
}

void FlowExportCommands::addTo(QMenu *file, std::function<QUuid()> shownFlow)
{
    const auto add = [&](const char *name, auto &&run) {
        QAction *action = file->addAction(qtTrId(name));
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, this, std::forward<decltype(run)>(run));
        return action;
    };
    m_exportMarkdown = add("menu.exportMarkdown", [this, shownFlow] { exportMarkdown(shownFlow()); });
    m_copyMarkdown = add("menu.copyMarkdown", [this, shownFlow] { copyMarkdown(shownFlow()); });
    QAction *outline = add("menu.exportOPML", [this, shownFlow] { exportOPML(shownFlow()); });
    file->addSeparator();
    add("menu.importOPML", [this] { importOPML(); });
    file->addSeparator();
    add("menu.backUp", [this] { backUp(); });
    add("menu.restoreBackup", [this] { restoreBackup(); });
    // The flow's commands ask for a flow on screen.
    connect(file, &QMenu::aboutToShow, this, [this, shownFlow, outline] {
        const bool hasFlow = m_store.flow(shownFlow()) != nullptr;
        for (QAction *action : {m_exportMarkdown, m_copyMarkdown, outline})
            action->setEnabled(hasFlow);
    });
    applyShortcuts();
}

void FlowExportCommands::applyShortcuts()
{
    if (!m_exportMarkdown)
        return;
    for (const auto &[action, command] : {std::pair{m_exportMarkdown, ShortcutAction::exportMarkdown},
                                          std::pair{m_copyMarkdown, ShortcutAction::copyMarkdown}})
        action->setShortcut(QKeySequence(ShortcutKeys::keyboardShortcut(m_preferences.shortcut(command), command)));
}

QFileDialog *FlowExportCommands::saveDialog(const char *name, const QString &title, const QString &button,
                                            const QString &filter, const QString &suffix, const QString &proposedName)
{
    auto *dialog = new QFileDialog(m_window, title, m_folder, filter);
    dialog->setObjectName(QString::fromLatin1(name));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setDefaultSuffix(suffix);
    dialog->setLabelText(QFileDialog::Accept, button);
    dialog->selectFile(proposedName);
    return dialog;
}

QFileDialog *FlowExportCommands::openDialog(const char *name, const QString &title, const QString &button,
                                            const QString &filter)
{
    auto *dialog = new QFileDialog(m_window, title, m_folder, filter);
    dialog->setObjectName(QString::fromLatin1(name));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setLabelText(QFileDialog::Accept, button);
    return dialog;
}

QMessageBox *FlowExportCommands::inform(const char *name, QMessageBox::Icon icon, const QString &title,
                                        const QString &text)
{
    auto *box = new QMessageBox(icon, title, title, QMessageBox::Ok, m_window);
    box->setObjectName(QString::fromLatin1(name));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    // Titles may carry file and flow names: never read them as markup.
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(text);
    box->setStyleSheet(Theme::messageBoxStyle());
    box->open();
    return box;
}

void FlowExportCommands::writeInBackground(const QString &path, const QByteArray &bytes, const char *failureLog)
{
    // The text is complete; only the bytes cross to the worker, and the
    // answer comes back here.
    auto failure = std::make_shared<QString>();
    QThread *writer = QThread::create([path, bytes, failure] { *failure = writeWhole(path, bytes); });
    connect(writer, &QThread::finished, this, [this, path, failure, failureLog] {
        if (failure->isEmpty()) {
            emit exportFinished(path, true);
            return;
        }
        qCCritical(fenrowExchangeLog, failureLog, qUtf8Printable(*failure));
        inform("export.failed", QMessageBox::Information, qtTrId("export.markdown.failed.title"),
               qtTrId("export.markdown.failed.message"));
        emit exportFinished(path, false);
    });
    connect(writer, &QThread::finished, writer, &QObject::deleteLater);
    writer->start();
}

QFileDialog *FlowExportCommands::exportMarkdown(const QUuid &flowID)
{
    const TaskFlow *flow = m_store.flow(flowID);
    if (!flow)
        return nullptr;
    const QByteArray text = m_store.markdown(*flow).toUtf8();
    QFileDialog *dialog =
        saveDialog("export.markdown.panel", qtTrId("export.markdown.panel.title"),
                   qtTrId("export.markdown.panel.button"), QStringLiteral("Markdown (*.md);;Text (*.txt)"),
                   QStringLiteral("md"), fileNameOf(flow->displayName()) + QStringLiteral(".md"));
    connect(dialog, &QFileDialog::fileSelected, this, [this, text](const QString &path) {
        m_folder = QFileInfo(path).absolutePath();
        writeInBackground(path, text, "Markdown export failed: %s");
    });
    dialog->open();
    return dialog;
}

void FlowExportCommands::copyMarkdown(const QUuid &flowID)
{
    if (const TaskFlow *flow = m_store.flow(flowID))
        QGuiApplication::clipboard()->setText(m_store.markdown(*flow));
}

QFileDialog *FlowExportCommands::exportOPML(const QUuid &flowID)
{
    const TaskFlow *flow = m_store.flow(flowID);
    if (!flow)
        return nullptr;
    const QByteArray text = m_store.exportOPML(*flow).toUtf8();
    QFileDialog *dialog = saveDialog("export.opml.panel", qtTrId("export.opml.panel.title"),
                                     qtTrId("export.markdown.panel.button"), QStringLiteral("OPML (*.opml)"),
                                     QStringLiteral("opml"), fileNameOf(flow->displayName()));
    connect(dialog, &QFileDialog::fileSelected, this, [this, text](const QString &path) {
        m_folder = QFileInfo(path).absolutePath();
        writeInBackground(path, text, "OPML export failed: %s");
    });
    dialog->open();
    return dialog;
}

QFileDialog *FlowExportCommands::importOPML()
{
    QFileDialog *dialog = openDialog("import.opml.panel", qtTrId("import.opml.panel.message"),
                                     qtTrId("import.opml.panel.button"), QStringLiteral("OPML (*.opml)"));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) {
        m_folder = QFileInfo(path).absolutePath();
        // What is wrong, and where, below the sentence: in the terms of the
        // file, which are the same in every language.
        QString detail;
        std::optional<OPMLCodec::Document> document;
        const auto read = DocumentInput::read(path, DocumentInput::outlineLimit);
        if (const auto *refusal = std::get_if<DocumentInput::Refusal>(&read)) {
            detail = DocumentInput::describe(*refusal, QFileInfo(path).fileName());
        } else {
            OPMLCodec::Reading reading = OPMLCodec::read(std::get<QByteArray>(read), m_store.calendar());
            if (auto *found = std::get_if<OPMLCodec::Document>(&reading))
                document = std::move(*found);
            else if (const auto &refusal = std::get<OPMLCodec::Refusal>(reading);
                     refusal.reason != OPMLCodec::Refusal::Reason::notAnOutline)
                // "Not an outline" is the sentence itself; a limit has a place.
                detail = refusal.text();
        }
        if (!document) {
            QString text = qtTrId("import.opml.failed.message");
            if (!detail.isEmpty())
                text += QStringLiteral("\n\n") + detail;
            inform("import.opml.failed", QMessageBox::Information, qtTrId("import.opml.failed.title"), text);
            return;
        }
        const FenrowStore::ImportedFlow imported =
            m_store.importOPML(document->title, document->roots, QFileInfo(path).completeBaseName());
        m_window->raise();
        m_window->activateWindow();
        emit flowImported(imported.flow->id);
        // A file that brought its own graph keeps it; a bare outline may be
        // connected by the engine, if the user wants, once told what of the
        // outline stayed out.
        const bool mayRelink = !imported.hasDependencies && OPMLCodec::outlineCount(document->roots) >= 2
            && m_environment && m_environment->hasEngine();
        const QUuid flowID = imported.flow->id;
        if (document->entriesLeftOut > 0 || document->datesLeftOut > 0) {
            QMessageBox *box = inform("import.opml.leftOut", QMessageBox::Information,
                                      qtTrId("import.opml.leftOut.title"),
                                      qtTrId("import.opml.leftOut %1 %2")
                                          .arg(document->entriesLeftOut)
                                          .arg(document->datesLeftOut));
            if (mayRelink)
                connect(box, &QMessageBox::finished, this, [this, flowID] { askToRelink(flowID); });
        } else if (mayRelink) {
            askToRelink(flowID);
        }
    });
    dialog->open();
    return dialog;
}

void FlowExportCommands::askToRelink(const QUuid &flowID)
{
    auto *box = new QMessageBox(m_window);
    box->setObjectName(QStringLiteral("import.opml.relink"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setIcon(QMessageBox::Question);
    box->setWindowTitle(qtTrId("import.opml.relink.title"));
    box->setText(qtTrId("import.opml.relink.title"));
    box->setInformativeText(qtTrId("import.opml.relink.message"));
    box->setStyleSheet(Theme::messageBoxStyle());
    QPushButton *connectButton = box->addButton(qtTrId("import.opml.relink.connect"), QMessageBox::AcceptRole);
    connectButton->setObjectName(QStringLiteral("import.opml.relink.connect"));
    connectButton->setStyleSheet(Theme::filledButtonStyle(Theme::Color::accent));
    QPushButton *keep = box->addButton(qtTrId("import.opml.relink.keep"), QMessageBox::RejectRole);
    keep->setObjectName(QStringLiteral("import.opml.relink.keep"));
    box->setDefaultButton(connectButton);
    box->setEscapeButton(keep);
    connect(box, &QMessageBox::buttonClicked, this, [this, flowID, connectButton](QAbstractButton *button) {
        if (button != connectButton || !m_environment)
            return;
        // The answer comes back on this thread; it fails quietly, in the log.
        // A long outline takes a model call per batch: the user sees how far
        // it has come once it takes more than a moment, and may stop it.
        auto *progress = new QProgressDialog(qtTrId("import.opml.relink.progress"), qtTrId("engine.stop"), 0, 0,
                                             m_window);
        progress->setObjectName(QStringLiteral("import.opml.relink.progress"));
        progress->setWindowTitle(qtTrId("import.opml.relink.title"));
        progress->setWindowModality(Qt::NonModal);
        progress->setAutoClose(false);
        progress->setAutoReset(false);
        progress->setMinimumDuration(1500);
        GeneratedFlows::RelinkControl control;
        control.progress = [progress = QPointer<QProgressDialog>(progress)](int done, int total) {
            if (progress) {
                progress->setMaximum(total);
                progress->setValue(done);
            }
        };
        connect(progress, &QProgressDialog::canceled, progress, [cancel = control.cancel] { cancel.cancel(); });
        QPointer<FlowExportCommands> self(this);
        GeneratedFlows::relinkImported(
            m_store, *m_environment, flowID,
            [self, flowID, progress = QPointer<QProgressDialog>(progress)](bool connected) {
                if (progress)
                    progress->deleteLater();
                if (self)
                    emit self->relinkFinished(flowID, connected);
            },
            control);
    });
    box->open();
}

QFileDialog *FlowExportCommands::backUp()
{
    const QString name =
        FenrowBackup::fileName(FenrowBackup::manualPrefix, m_store.clock().now(), m_store.calendar());
    QFileDialog *dialog = saveDialog("backup.savePanel", qtTrId("backup.save.panel.message"),
                                     qtTrId("backup.save.panel.button"),
                                     QStringLiteral("Fenrow (*.%1)").arg(FenrowBackup::fileExtension),
                                     FenrowBackup::fileExtension, name);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) {
        m_folder = QFileInfo(path).absolutePath();
        // Built and written here and now: a backup is of this moment.
        QStringList adjusted;
        QString unwritable;
        const std::optional<QByteArray> bytes =
            m_store.makeBackup(m_store.clock().now(), &adjusted).encoded(&unwritable);
        const QString failure = bytes ? writeWhole(path, *bytes) : unwritable;
        if (failure.isEmpty()) {
            // What the document could not carry as it was is told, not hidden.
            if (!adjusted.isEmpty())
                inform("backup.adjusted", QMessageBox::Information, qtTrId("backup.adjusted.title"),
                       qtTrId("backup.adjusted.message") + QStringLiteral("\n\n") + adjusted.join(QLatin1Char('\n')));
            return;
        }
        qCCritical(fenrowExchangeLog, "Backup failed: %s", qUtf8Printable(failure));
        inform("backup.failed", QMessageBox::Information, qtTrId("backup.failed.title"),
               qtTrId("backup.failed.message"));
    });
    dialog->open();
    return dialog;
}

QFileDialog *FlowExportCommands::restoreBackup()
{
    QFileDialog *dialog =
        openDialog("backup.openPanel", qtTrId("backup.open.panel.message"), qtTrId("backup.open.panel.button"),
                   QStringLiteral("Fenrow (*.%1)").arg(FenrowBackup::fileExtension));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) {
        m_folder = QFileInfo(path).absolutePath();
        restoreFrom(path);
    });
    dialog->open();
    return dialog;
}

void FlowExportCommands::restoreFrom(const QString &path)
{
    const auto read = DocumentInput::read(path, DocumentInput::backupLimit);
    const QByteArray *bytes = std::get_if<QByteArray>(&read);
    const auto decoded = bytes ? FenrowBackup::decoded(*bytes)
                               : std::variant<FenrowBackup, BackupProblem>(BackupProblem{
                                     BackupError::unreadable,
                                     DocumentInput::describe(std::get<DocumentInput::Refusal>(read),
                                                             QFileInfo(path).fileName())});
    if (const BackupProblem *refused = std::get_if<BackupProblem>(&decoded)) {
        // Where and what, as the reader found it, below the sentence: in
        // the terms of the file, which are the same in every language.
        QString text = qtTrId(refused->kind == BackupError::newerVersion ? "backup.restore.newer.message"
                                                                         : "backup.restore.unreadable.message");
        if (!refused->detail.isEmpty())
            text += QStringLiteral("\n\n") + refused->detail;
        inform("backup.restore.unreadable", QMessageBox::Information, qtTrId("backup.restore.unreadable.title"),
               text);
        return;
    }
    askHowToRestore(std::make_shared<const FenrowBackup>(std::get<FenrowBackup>(decoded)), path);
}

void FlowExportCommands::askHowToRestore(std::shared_ptr<const FenrowBackup> backup, const QString &path)
{
    auto *box = new QMessageBox(m_window);
    box->setObjectName(QStringLiteral("backup.restore.mode"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setIcon(QMessageBox::Information);
    box->setWindowTitle(qtTrId("backup.restore.mode.title"));
    box->setText(qtTrId("backup.restore.mode.title"));
    box->setInformativeText(qtTrId("backup.restore.mode.message %lld").arg(backup->flows.size()));
    box->setStyleSheet(Theme::messageBoxStyle());
    QPushButton *merge = box->addButton(qtTrId("backup.restore.mode.merge"), QMessageBox::AcceptRole);
    merge->setObjectName(QStringLiteral("backup.restore.mode.merge"));
    merge->setStyleSheet(Theme::filledButtonStyle(Theme::Color::accent));
    QPushButton *replace = box->addButton(qtTrId("backup.restore.mode.replace"), QMessageBox::DestructiveRole);
    replace->setObjectName(QStringLiteral("backup.restore.mode.replace"));
    QPushButton *cancel = box->addButton(qtTrId("sidebar.row.delete.confirm.cancel"), QMessageBox::RejectRole);
    cancel->setObjectName(QStringLiteral("backup.restore.mode.cancel"));
    // Return takes the choice that loses nothing.
    box->setDefaultButton(merge);
    box->setEscapeButton(cancel);
    connect(box, &QMessageBox::buttonClicked, this, [this, backup, path, merge, replace](QAbstractButton *button) {
        if (button == merge)
            runRestore(*backup, path, false);
        else if (button == replace)
            confirmReplace(backup, path);
    });
    box->open();
}

void FlowExportCommands::confirmReplace(std::shared_ptr<const FenrowBackup> backup, const QString &path)
{
    auto *box = new QMessageBox(m_window);
    box->setObjectName(QStringLiteral("backup.restore.replaceConfirmation"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setIcon(QMessageBox::Critical);
    box->setWindowTitle(qtTrId("backup.restore.replace.confirm.title"));
    box->setText(qtTrId("backup.restore.replace.confirm.title"));
    box->setInformativeText(qtTrId("backup.restore.replace.confirm.message"));
    box->setStyleSheet(Theme::messageBoxStyle());
    QPushButton *replace = box->addButton(qtTrId("backup.restore.mode.replace"), QMessageBox::DestructiveRole);
    replace->setObjectName(QStringLiteral("backup.restore.confirmReplace"));
    replace->setStyleSheet(Theme::filledButtonStyle(Theme::Color::destructive));
    QPushButton *cancel = box->addButton(qtTrId("sidebar.row.delete.confirm.cancel"), QMessageBox::RejectRole);
    cancel->setObjectName(QStringLiteral("backup.restore.confirmCancel"));
    // Return must not throw everything away.
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    connect(box, &QMessageBox::buttonClicked, this, [this, backup, path, replace](QAbstractButton *button) {
        if (button == replace)
            runRestore(*backup, path, true);
    });
    box->open();
}

void FlowExportCommands::runRestore(const FenrowBackup &backup, const QString &path, bool replacing)
{
    const FenrowStore::RestoreOutcome outcome =
        m_store.restore(backup, replacing ? RestoreMode::replace : RestoreMode::merge, path);
    if (!outcome.restored) {
        inform("backup.restore.failed", QMessageBox::Warning, qtTrId("backup.restore.failed.title"),
               qtTrId("backup.restore.failed.message") + QStringLiteral("\n\n") + outcome.problem);
        return;
    }
    const int added = outcome.flowsAdded;
    QString text = replacing || added > 0 ? qtTrId("backup.restore.done.message %lld").arg(added)
                                          : qtTrId("backup.restore.done.nothing");
    if (outcome.edgesLeftOut > 0)
        text += QLatin1Char(' ') + qtTrId("backup.restore.done.edgesLeftOut %lld").arg(outcome.edgesLeftOut);
    // Where to turn if the replace is regretted.
    if (!outcome.safetyBackup.isEmpty())
        text += QStringLiteral("\n\n")
            + qtTrId("backup.restore.done.safety %@").arg(QDir::toNativeSeparators(outcome.safetyBackup));
    inform("backup.restore.done", QMessageBox::Information, qtTrId("backup.restore.done.title"), text);
}

} // namespace fenrow
