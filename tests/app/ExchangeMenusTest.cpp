#include "AppTestSupport.h"
#include "HeldEngine.h"

#include "program/FlowExportCommands.h"
#include "formats/FenrowBackup.h"
#include "persistence/StoreDatabase.h"
#include "shell/AppEnvironment.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMenuBar>
#include <QProgressDialog>
#include <QSignalSpy>

namespace fenrow::testing {
namespace {

class ExchangeMenusTest : public WindowFixture {
protected:
    // The visible dialog of `name`, once it is there.
    template <typename Dialog>
    Dialog *dialog(const char *name)
    {
        Dialog *found = nullptr;
        const bool shown = QTest::qWaitFor([&] {
            for (Dialog *candidate : window->findChildren<Dialog *>(QString::fromLatin1(name)))
                found = candidate->isVisible() ? candidate : found;
            return found != nullptr;
        });
        EXPECT_TRUE(shown) << name;
        return shown ? found : nullptr;
    }

    // Answers a file panel with `path`, as typing it and pressing the
    // panel's button would.
    void choose(const char *panel, const QString &path)
    {
        QFileDialog *files = dialog<QFileDialog>(panel);
        ASSERT_NE(files, nullptr);
        auto *name = files->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(name, nullptr);
        name->setText(path);
        // Public as a dialog's, the file panel's own behind it.
        static_cast<QDialog *>(files)->accept();
    }

    void click(QMessageBox *box, const char *button)
    {
        ASSERT_NE(box, nullptr);
        auto *target = box->findChild<QPushButton *>(QString::fromLatin1(button));
        ASSERT_NE(target, nullptr) << button;
        target->click();
    }

    QAction *fileAction(const char *name)
    {
        QMenu *file = window->menuBar()->findChild<QMenu *>(QStringLiteral("menu.file"));
        return file ? file->findChild<QAction *>(QString::fromLatin1(name)) : nullptr;
    }

    QByteArray readFile(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }

    QTemporaryDir files;
};

TEST_F(ExchangeMenusTest, RowMenuExportsAndCopiesAFlow)
{
    const TaskFlow &garden = addFlow("Garden", 1, 1, 1);
    show();

    chooseFromRowMenu(garden.id, "sidebar.row.action.copyMarkdown");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), store->markdown(garden));

    QSignalSpy written(window->exportCommands(), &FlowExportCommands::exportFinished);
    chooseFromRowMenu(garden.id, "sidebar.row.action.exportMarkdown");
    QFileDialog *panel = dialog<QFileDialog>("export.markdown.panel");
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->windowTitle(), "Export as Markdown");
    EXPECT_EQ(panel->labelText(QFileDialog::Accept), "Export");
    EXPECT_EQ(panel->findChild<QLineEdit *>("fileNameEdit")->text(), "Garden.md");
    saveScreenshot(*panel, "export-markdown-panel");
    choose("export.markdown.panel", files.filePath("garden.md"));
    ASSERT_TRUE(written.wait());
    EXPECT_EQ(written.first(), (QVariantList{files.filePath("garden.md"), true}));
    EXPECT_EQ(QString::fromUtf8(readFile(files.filePath("garden.md"))), store->markdown(garden));

    chooseFromRowMenu(garden.id, "sidebar.context.exportOPML");
    EXPECT_EQ(dialog<QFileDialog>("export.opml.panel")->windowTitle(), "Export as OPML");
    choose("export.opml.panel", files.filePath("garden.opml"));
    ASSERT_TRUE(written.wait());
    EXPECT_EQ(QString::fromUtf8(readFile(files.filePath("garden.opml"))), store->exportOPML(garden));

    // A folder that is not there: the failure is told, and nothing is left.
    chooseFromRowMenu(garden.id, "sidebar.row.action.exportMarkdown");
    panel = dialog<QFileDialog>("export.markdown.panel");
    ASSERT_NE(panel, nullptr);
    const QString nowhere = files.filePath("gone/garden.md");
    emit panel->fileSelected(nowhere);
    panel->close();
    ASSERT_TRUE(written.wait());
    EXPECT_EQ(written.last().at(1).toBool(), false);
    QMessageBox *failed = dialog<QMessageBox>("export.failed");
    ASSERT_NE(failed, nullptr);
    EXPECT_EQ(failed->text(), "Export failed");
    EXPECT_TRUE(failed->informativeText().startsWith("The file could not be written."));
    EXPECT_FALSE(QFile::exists(nowhere));
}

TEST_F(ExchangeMenusTest, FileMenuImportsAnOutlineAsANewFlow)
{
    addFlow("Home");
    show();
    QMenu *file = window->menuBar()->findChild<QMenu *>(QStringLiteral("menu.file"));
    ASSERT_NE(file, nullptr);
    QStringList entries;
    for (QAction *action : file->actions())
        entries << (action->isSeparator() ? QStringLiteral("|") : action->objectName());
    EXPECT_EQ(entries.join(' ').toStdString(), "menu.newFlowFromText menu.planDay | "
                                               "menu.exportMarkdown menu.copyMarkdown menu.exportOPML | "
                                               "menu.importOPML | menu.backUp menu.restoreBackup | menu.settings menu.quit");
    EXPECT_EQ(fileAction("menu.exportMarkdown")->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
    EXPECT_EQ(fileAction("menu.copyMarkdown")->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    // The flow's commands need a flow on screen.
    emit file->aboutToShow();
    EXPECT_FALSE(fileAction("menu.copyMarkdown")->isEnabled());
    EXPECT_TRUE(fileAction("menu.importOPML")->isEnabled());

    fileAction("menu.importOPML")->trigger();
    EXPECT_EQ(dialog<QFileDialog>("import.opml.panel")->labelText(QFileDialog::Accept), "Import");
    choose("import.opml.panel", QStringLiteral(FENROW_SOURCE_DIR "/tests/core/fixtures/opml/states.opml"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return store->flows().size() == 2; }));
    const TaskFlow &states = *store->flows().last();
    EXPECT_EQ(states.name, "States");
    EXPECT_EQ(states.items().size(), 59);
    EXPECT_EQ(window->selectedFlow(), states.id) << "the new flow is shown";
    emit file->aboutToShow();
    EXPECT_TRUE(fileAction("menu.copyMarkdown")->isEnabled());
    fileAction("menu.copyMarkdown")->trigger();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("# States\n"));

    fileAction("menu.importOPML")->trigger();
    choose("import.opml.panel", QStringLiteral(FENROW_SOURCE_DIR "/tests/core/fixtures/opml/malformed.opml"));
    QMessageBox *failed = dialog<QMessageBox>("import.opml.failed");
    ASSERT_NE(failed, nullptr);
    EXPECT_EQ(failed->text(), "This file can’t be imported");
    saveScreenshot(*failed, "import-failed");
    EXPECT_EQ(store->flows().size(), 2);
    failed->close();

    // What an outline brings that cannot be kept is told, not lost quietly.
    const QString partly = files.filePath("partly.opml");
    QFile outline(partly);
    ASSERT_TRUE(outline.open(QIODevice::WriteOnly));
    outline.write(R"(<?xml version="1.0"?><opml version="2.0"><head><title>Partly</title></head><body>)"
                  R"(<outline text="Kept" fenrowDue="20260-06-01"/><outline text="  "/><outline text="Also kept"/>)"
                  R"(</body></opml>)");
    outline.close();
    fileAction("menu.importOPML")->trigger();
    choose("import.opml.panel", partly);
    QMessageBox *leftOut = dialog<QMessageBox>("import.opml.leftOut");
    ASSERT_NE(leftOut, nullptr);
    EXPECT_EQ(leftOut->informativeText(), "Entries without text left out: 1. Dates outside the calendar left out: 1. "
                                          "Everything else was imported.");
    EXPECT_EQ(store->flows().last()->items().size(), 2);
}

TEST_F(ExchangeMenusTest, ABareOutlineMayBeConnectedByTheEngine)
{
    const TaskFlow &garden = addFlow("Garden", 0, 0, 2);
    store->addEdge(*garden.orderedItems()[0], *garden.orderedItems()[1], EdgeSource::manual, EdgeKind::dependency);
    show();
    AppEnvironment scripted({QStringLiteral("--ui-test")});
    window->exportCommands()->setEnvironment(&scripted);
    const QString states = QStringLiteral(FENROW_SOURCE_DIR "/tests/core/fixtures/opml/states.opml");
    const auto machineEdges = [](const TaskFlow &flow) {
        return std::count_if(flow.edges().begin(), flow.edges().end(),
                             [](const DependencyEdge *edge) { return edge->source == EdgeSource::ai; });
    };

    fileAction("menu.importOPML")->trigger();
    choose("import.opml.panel", states);
    QMessageBox *question = dialog<QMessageBox>("import.opml.relink");
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->text(), "Connect the imported tasks?");
    saveScreenshot(*question, "import-relink-question");
    click(question, "import.opml.relink.keep");
    EXPECT_EQ(machineEdges(*store->flows().last()), 0);

    QSignalSpy relinked(window->exportCommands(), &FlowExportCommands::relinkFinished);
    fileAction("menu.importOPML")->trigger();
    choose("import.opml.panel", states);
    click(dialog<QMessageBox>("import.opml.relink"), "import.opml.relink.connect");
    ASSERT_TRUE(relinked.wait());
    EXPECT_EQ(relinked.first().at(0).toUuid(), store->flows().last()->id);
    EXPECT_TRUE(relinked.first().at(1).toBool());
    EXPECT_GT(machineEdges(*store->flows().last()), 0);

    // A relink that takes a while shows how far it has come, and Stop gives
    // it up with nothing applied.
    auto engine = std::make_shared<HeldEngine>();
    AppEnvironment held({QStringLiteral("--ui-test")}, heldFactories(engine));
    window->exportCommands()->setEnvironment(&held);
    fileAction("menu.importOPML")->trigger();
    choose("import.opml.panel", states);
    click(dialog<QMessageBox>("import.opml.relink"), "import.opml.relink.connect");
    QProgressDialog *progress = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        progress = window->findChild<QProgressDialog *>("import.opml.relink.progress");
        return progress && progress->isVisible();
    }));
    EXPECT_EQ(engine->waiting(), 1);
    EXPECT_EQ(progress->labelText(), "Connecting the imported tasks…");
    saveScreenshot(*progress, "import-relink-progress");
    QPushButton *stop = progress->findChild<QPushButton *>();
    ASSERT_NE(stop, nullptr);
    EXPECT_EQ(stop->text(), "Stop");
    QTest::mouseClick(stop, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return relinked.size() == 2; }));
    EXPECT_FALSE(relinked.last().at(1).toBool());
    EXPECT_EQ(machineEdges(*store->flows().last()), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->findChild<QProgressDialog *>("import.opml.relink.progress"); }));
    window->exportCommands()->setEnvironment(&scripted);

    // A file with dependencies of its own is not asked about, and neither
    // is anything when no engine is there.
    const QString own = files.filePath("garden.opml");
    QFile file(own);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(store->exportOPML(garden).toUtf8());
    file.close();
    const auto asked = [&] {
        for (QMessageBox *box : window->findChildren<QMessageBox *>("import.opml.relink"))
            if (box->isVisible())
                return true;
        return false;
    };
    fileAction("menu.importOPML")->trigger();
    choose("import.opml.panel", own);
    EXPECT_EQ(store->flows().last()->name, "Garden");
    EXPECT_FALSE(asked());
    AppEnvironment unavailable({QStringLiteral("--ui-test"), QStringLiteral("--ui-test-engine-unavailable")});
    window->exportCommands()->setEnvironment(&unavailable);
    fileAction("menu.importOPML")->trigger();
    choose("import.opml.panel", states);
    EXPECT_EQ(store->flows().size(), 6);
    EXPECT_FALSE(asked());
    window->exportCommands()->setEnvironment(nullptr);
}

TEST_F(ExchangeMenusTest, BackUpThenRestoreByMergingOrReplacing)
{
    addFlow("Home", 1, 0, 1);
    addFlow("Work");
    show();

    fileAction("menu.backUp")->trigger();
    QFileDialog *save = dialog<QFileDialog>("backup.savePanel");
    ASSERT_NE(save, nullptr);
    EXPECT_EQ(save->findChild<QLineEdit *>("fileNameEdit")->text(), "Fenrow Backup 2026-06-10.fenrowbackup");
    EXPECT_EQ(save->labelText(QFileDialog::Accept), "Back Up");
    const QString path = files.filePath("Fenrow Backup 2026-06-10.fenrowbackup");
    choose("backup.savePanel", path);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(path); }));
    const auto backup = FenrowBackup::decoded(readFile(path));
    ASSERT_TRUE(std::holds_alternative<FenrowBackup>(backup));
    EXPECT_EQ(std::get<FenrowBackup>(backup).flows.size(), 2);

    const auto restore = [&] {
        fileAction("menu.restoreBackup")->trigger();
        EXPECT_EQ(dialog<QFileDialog>("backup.openPanel")->labelText(QFileDialog::Accept), "Restore");
        choose("backup.openPanel", path);
        return dialog<QMessageBox>("backup.restore.mode");
    };
    addFlow("Garden");

    // Merging what is all here already adds nothing, and says so.
    QMessageBox *mode = restore();
    ASSERT_NE(mode, nullptr);
    EXPECT_EQ(mode->text(), "Restore backup");
    EXPECT_TRUE(mode->informativeText().startsWith("Flows in the backup: 2. Merge adds"));
    EXPECT_EQ(mode->defaultButton()->objectName(), "backup.restore.mode.merge");
    saveScreenshot(*mode, "restore-mode");
    click(mode, "backup.restore.mode.merge");
    QMessageBox *done = dialog<QMessageBox>("backup.restore.done");
    ASSERT_NE(done, nullptr);
    EXPECT_EQ(done->informativeText(), "Every flow in the backup is already here. Nothing was added.");
    done->accept();
    EXPECT_EQ(flowNames(), (QStringList{"Home", "Work", "Garden"}));

    // Replace asks a second time, and Cancel is the safe default.
    click(restore(), "backup.restore.mode.replace");
    QMessageBox *confirm = dialog<QMessageBox>("backup.restore.replaceConfirmation");
    ASSERT_NE(confirm, nullptr);
    EXPECT_EQ(confirm->icon(), QMessageBox::Critical);
    EXPECT_EQ(confirm->defaultButton()->objectName(), "backup.restore.confirmCancel");
    saveScreenshot(*confirm, "restore-replace-confirmation");
    click(confirm, "backup.restore.confirmCancel");
    EXPECT_EQ(flowNames(), (QStringList{"Home", "Work", "Garden"}));

    click(restore(), "backup.restore.mode.replace");
    click(dialog<QMessageBox>("backup.restore.replaceConfirmation"), "backup.restore.confirmReplace");
    done = dialog<QMessageBox>("backup.restore.done");
    ASSERT_NE(done, nullptr);
    EXPECT_EQ(done->informativeText(), "Flows restored: 2.");
    EXPECT_EQ(flowNames(), (QStringList{"Home", "Work"}));
    done->accept();

    // A file that is no backup changes nothing.
    fileAction("menu.restoreBackup")->trigger();
    choose("backup.openPanel", QStringLiteral(FENROW_SOURCE_DIR "/tests/core/fixtures/opml/states.opml"));
    QMessageBox *refused = dialog<QMessageBox>("backup.restore.unreadable");
    ASSERT_NE(refused, nullptr);
    EXPECT_EQ(refused->text(), "This backup can’t be restored");
    EXPECT_TRUE(refused->informativeText().startsWith("The file is not a Fenrow backup"));
    EXPECT_EQ(flowNames(), (QStringList{"Home", "Work"}));
}

TEST_F(ExchangeMenusTest, RestoreTellsWhereTheOldStoreWentAndWhereAFileIsDamaged)
{
    show();
    // A store in a file, as the program's is: a replace keeps it beside it.
    QString problem;
    const std::unique_ptr<FenrowStore> onDisk = FenrowStore::open(
        StoreDatabase::open(files.filePath("default.store"), &problem), clock, LocalCalendar(), &problem);
    ASSERT_NE(onDisk, nullptr) << problem.toStdString();
    onDisk->addFlow(QStringLiteral("Before"));
    FlowExportCommands commands(*onDisk, *preferences, window.get());

    FenrowBackup backup;
    backup.createdAt = clock.now();
    backup.flows.append({.id = QUuid::createUuid(), .name = "After", .createdAt = clock.now()});
    for (int i = 0; i < 2; ++i)
        backup.flows[0].items.append({.id = QUuid::createUuid(), .title = QStringLiteral("Task %1").arg(i),
                                      .createdAt = clock.now()});
    const QUuid first = backup.flows[0].items[0].id, second = backup.flows[0].items[1].id;
    backup.flows[0].edges = {{QUuid::createUuid(), first, second, "manual", "dependency", clock.now()},
                             {QUuid::createUuid(), second, first, "manual", "dependency", clock.now()}};
    const QString path = files.filePath("after.fenrowbackup");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(*backup.encoded());
    file.close();

    commands.restoreBackup();
    choose("backup.openPanel", path);
    click(dialog<QMessageBox>("backup.restore.mode"), "backup.restore.mode.replace");
    click(dialog<QMessageBox>("backup.restore.replaceConfirmation"), "backup.restore.confirmReplace");
    QMessageBox *done = dialog<QMessageBox>("backup.restore.done");
    ASSERT_NE(done, nullptr);
    const QStringList kept = QDir(files.path()).entryList({"Fenrow Safety Backup *"});
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(done->informativeText(),
              QStringLiteral("Flows restored: 1. Connections left out because they would have led a task back to "
                             "itself or repeated another: 1.\n\nWhat Fenrow held before is kept in “%1”. Restore "
                             "that file with Replace to undo this.")
                  .arg(files.filePath(kept[0])));
    saveScreenshot(*done, "restore-done-safety-backup");
    done->accept();

    QByteArray damaged = *backup.encoded();
    damaged.replace("\"title\":\"Task 1\"", "\"title\":1");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(damaged);
    file.close();
    commands.restoreBackup();
    choose("backup.openPanel", path);
    QMessageBox *refused = dialog<QMessageBox>("backup.restore.unreadable");
    ASSERT_NE(refused, nullptr);
    EXPECT_TRUE(refused->informativeText().endsWith(".\n\nflows[0].items[1].title: not a string"))
        << refused->informativeText().toStdString();
}

} // namespace
} // namespace fenrow::testing
