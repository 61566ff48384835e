// Commands handed to the program that owns the store: run there on its
// store, history and clock, with the caller's terminal and folder, and
// printing what the same command prints when it runs alone.
#include "CommandLineTest.h"

#include "cli/CommandForwarding.h"
#include "cli/CommandWorkspace.h"
#include "cli/Console.h"
#include "cli/ExitStatus.h"

#include "domain/FenrowHistory.h"
#include "domain/OverridableClock.h"
#include "persistence/StoreDatabase.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/SettingsFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <memory>

namespace fenrow::testing {
namespace {

const QString now = QStringLiteral("2026-06-10T09:00:00");

// The running program's side: the store held open for the whole test, its
// history, preferences and engine, as the desktop program holds them.
class ForwardingTest : public CommandLineTest {
protected:
    void startOwner()
    {
        QString reason;
        store = FenrowStore::open(StoreDatabase::open(folder.filePath(QStringLiteral("default.store")), &reason),
                                  clock, LocalCalendar(), &reason);
        ASSERT_NE(store, nullptr) << reason.toStdString();
        history = std::make_unique<FenrowHistory>(*store);
        preferences = std::make_unique<AppPreferences>(SettingsFile::open());
        environment = std::make_unique<AppEnvironment>(QStringList{"fenrow", AppEnvironment::uiTestArgument});
    }

    // Runs `arguments` as a caller would: handed to the owner, asked again
    // for each question or the input it wants.
    CommandResult forwarded(const QStringList &arguments, const QString &typed = {}, bool interactive = false,
                            const QString &workingDirectory = {})
    {
        ForwardedCommand::Request request;
        request.arguments = arguments;
        request.workingDirectory = workingDirectory.isEmpty() ? folder.path() : workingDirectory;
        request.interactive = interactive;
        const CommandWorkspace workspace{store.get(), history.get(), preferences.get(), environment.get(), &clock};
        return runOnConsole(typed, interactive, [&](Console &console) {
            return CommandForwarding::forward(request, console, [&](const ForwardedCommand::Request &sent, QString *) {
                ++rounds;
                return std::optional(CommandForwarding::runInOwner(registry, workspace, sent));
            });
        });
    }

    QStringList ownerFlowNames() const
    {
        QStringList names;
        for (const TaskFlow *flow : store->flows())
            names.append(flow->name);
        return names;
    }

    OverridableClock clock;
    std::unique_ptr<FenrowStore> store;
    std::unique_ptr<FenrowHistory> history;
    std::unique_ptr<AppPreferences> preferences;
    std::unique_ptr<AppEnvironment> environment;
    int rounds = 0;
};

TEST_F(ForwardingTest, PrintsWhatTheSameCommandPrintsAlone)
{
    addFlows({"Work", "Home"});
    addTasks("Work", {NodeStatus::pending, NodeStatus::done, NodeStatus::inProgress});
    const QList<QStringList> commands{
        {"ready", "--now", now},
        {"flows", "--json", "--now", now},
        {"find", "task", "--now", now},
        {"export", "markdown", "Work", "--now", now},
        {"edit", "nothing like it", "--title", "x"},
        {"plan", "--budget", "soon"},
        {"flow", "delete", "Home"},
    };
    QList<CommandResult> alone;
    for (const QStringList &command : commands)
        alone.append(run(command));

    startOwner();
    for (qsizetype i = 0; i < commands.size(); ++i) {
        SCOPED_TRACE(commands[i].join(' ').toStdString());
        const CommandResult handed = forwarded(commands[i]);
        EXPECT_EQ(handed.status, alone[i].status);
        EXPECT_EQ(handed.out, alone[i].out);
        EXPECT_EQ(handed.err, alone[i].err);
    }
    // Failures of every kind were among them: not found, a usage mistake,
    // a question nobody could answer.
    EXPECT_EQ(alone[4].status, exitFailure);
    EXPECT_EQ(alone[5].status, exitUsage);
    EXPECT_EQ(alone[6].status, exitFailure);
    EXPECT_EQ(ownerFlowNames(), (QStringList{"Work", "Home"}));
}

TEST_F(ForwardingTest, QuestionsAndStandardInputAreTheCallers)
{
    addFlows({"Work", "Home"});
    startOwner();

    // A question goes back to the caller's terminal; until it is answered
    // nothing changes, and what the command wrote before is not doubled.
    const CommandResult refused = forwarded({"flow", "delete", "Home"}, QStringLiteral("n\n"), true);
    EXPECT_EQ(refused.status, exitFailure);
    EXPECT_EQ(refused.err.count("Delete flow \"Home\""), 1) << refused.err.toStdString();
    EXPECT_EQ(ownerFlowNames(), (QStringList{"Work", "Home"}));
    EXPECT_EQ(rounds, 2);

    const CommandResult confirmed = forwarded({"flow", "delete", "Home"}, QStringLiteral("yes\n"), true);
    EXPECT_EQ(confirmed.status, exitSuccess) << confirmed.err.toStdString();
    EXPECT_TRUE(confirmed.out.startsWith("Deleted flow \"Home\"")) << confirmed.out.toStdString();
    EXPECT_EQ(ownerFlowNames(), QStringList{"Work"});

    // "-" reads the caller's standard input, not the program's.
    const CommandResult drafted = forwarded({"new-flow", "--from-text", "-", "--name", "Trip", "--ui-test"},
                                            QStringLiteral("Book the train. Pack the bags. Water the plants."));
    EXPECT_EQ(drafted.status, exitSuccess) << drafted.err.toStdString();
    EXPECT_EQ(ownerFlowNames(), (QStringList{"Work", "Trip"}));
    EXPECT_FALSE(store->flows().last()->items().empty());
}

// Ctrl+C ends a caller waiting for the engine: the program stops the
// engine's work, makes nothing, and is free for the next command.
TEST_F(ForwardingTest, ACallerThatLeavesStopsTheEnginesWorkAndNothingIsMade)
{
    addFlows({"Work"});
    startOwner();
    const auto callerGone = std::make_shared<std::atomic_bool>(false);
    ForwardedCommand::Request request;
    request.arguments = {"new-flow", "--from-text", "-", "--name", "Trip", "--ui-test"};
    request.workingDirectory = folder.path();
    // The scripted engine holds this text until its work is cancelled.
    request.input = QStringLiteral("((held)) Book the train. Pack the bags.");
    request.callerGone = callerGone;
    // Runs once the command waits for the engine.
    QTimer::singleShot(0, [callerGone] { callerGone->store(true); });
    const CommandWorkspace workspace{store.get(), history.get(), preferences.get(), environment.get(), &clock};
    const ForwardedCommand::Reply reply = CommandForwarding::runInOwner(registry, workspace, request);

    EXPECT_EQ(reply.status, exitFailure);
    QByteArray err;
    for (const ForwardedCommand::Output &part : reply.output)
        err += part.stream == ForwardedCommand::Stream::err ? part.utf8 : QByteArray();
    EXPECT_TRUE(err.contains("went away; no flow was made")) << err.toStdString();
    // Held for a minute unless cancelled.
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone(10000));
    QCoreApplication::processEvents();
    EXPECT_EQ(ownerFlowNames(), QStringList{"Work"});
}

TEST_F(ForwardingTest, PathsStartFromTheCallersFolderAndTheMomentFromItsNow)
{
    addFlows({"Work"});
    addTasks("Work", {NodeStatus::pending});
    startOwner();
    const QString callerFolder = folder.filePath(QStringLiteral("caller"));
    ASSERT_TRUE(QDir().mkpath(callerFolder));

    const CommandResult exported =
        forwarded({"export", "opml", "Work", "-o", "work.opml"}, {}, false, callerFolder);
    ASSERT_EQ(exported.status, exitSuccess) << exported.err.toStdString();
    EXPECT_TRUE(QFile::exists(QDir(callerFolder).filePath("work.opml")));
    EXPECT_FALSE(QFile::exists(QDir::current().filePath("work.opml")));
    EXPECT_TRUE(exported.out.contains(QDir(callerFolder).filePath("work.opml"))) << exported.out.toStdString();

    const CommandResult missing = forwarded({"import", "nowhere.opml"}, {}, false, callerFolder);
    EXPECT_EQ(missing.err, "fenrow: cannot import: there is no file \"nowhere.opml\"\n");

    const CommandResult imported = forwarded({"import", "work.opml", "--now", now}, {}, false, callerFolder);
    EXPECT_EQ(imported.status, exitSuccess) << imported.err.toStdString();
    ASSERT_EQ(store->flows().size(), 2);
    EXPECT_EQ(store->flows().last()->createdAt, QDateTime::fromString(now, Qt::ISODate));
    // The program's clock is its own again once the command is done.
    EXPECT_NE(clock.now(), QDateTime::fromString(now, Qt::ISODate));
}

TEST_F(ForwardingTest, EachChangeIsOneNamedStepOfTheProgramsUndo)
{
    addFlows({"Work"});
    startOwner();
    const QUuid work = store->flows().first()->id;

    ASSERT_EQ(forwarded({"add", "Pay rent by june 5th", "--flow", "Work", "--now", now}).status, exitSuccess);
    ASSERT_EQ(forwarded({"edit", "Pay rent", "--title", "Pay the rent", "--due", "2026-06-04"}).status, exitSuccess);
    ASSERT_EQ(forwarded({"done", "Pay the rent"}).status, exitSuccess);
    QStringList names;
    for (const FenrowHistory::Entry &entry : history->undoStack(work))
        names.append(entry.name);
    EXPECT_EQ(names, (QStringList{"Capture task", "Rename", "Complete task"}));

    // No canvas shows the flow, so Edit ▸ Undo reaches the steps from
    // anywhere, newest first.
    history->undo();
    const FlowNode *task = store->flows().first()->orderedItems().value(0);
    ASSERT_NE(task, nullptr);
    EXPECT_FALSE(task->isDone);
    history->undo();
    EXPECT_EQ(task->title, "Pay rent");
    history->undo();
    EXPECT_TRUE(store->flows().first()->items().empty());

    // With the flow on the canvas the step is the canvas's, not borrowed.
    history->setActiveFlowID(work);
    const qsizetype borrowed = history->borrowedUndo().size();
    ASSERT_EQ(forwarded({"add", "Call the bank", "--flow", "Work"}).status, exitSuccess);
    EXPECT_EQ(history->borrowedUndo().size(), borrowed);
    EXPECT_EQ(history->undoStack(work).last().name, "Capture task");
}

TEST_F(ForwardingTest, GraphAndChecklistChangesAreTheCanvasesNamedSteps)
{
    addFlows({"Work", "Home"});
    {
        auto setup = openStore();
        setup->addNode("Plan", *setup->flows()[0]);
        setup->addNode("Build", *setup->flows()[0]);
        setup->addNode("Sweep", *setup->flows()[1]);
    }
    startOwner();
    const QUuid work = store->flows().first()->id;
    const QList<QStringList> commands{
        {"connect", "Plan", "Build"},
        // Refused: no step.
        {"connect", "Build", "Plan"},
        {"subtask", "Build", "Test"},
        {"checklist", "Test", "add", "Unit"},
        {"checklist", "Test", "add", "Load"},
        {"checklist", "Test", "tick", "1"},
        {"checklist", "Test", "move", "2", "1"},
        {"checklist", "Test", "remove", "1"},
        {"disconnect", "Plan", "Build"},
        {"delete", "Build", "--yes"},
    };
    for (const QStringList &command : commands)
        forwarded(command);
    QStringList names;
    for (const FenrowHistory::Entry &entry : history->undoStack(work))
        names.append(entry.name);
    EXPECT_EQ(names, (QStringList{"Connect", "Add subtask", "Add step", "Add step", "Edit step", "Reorder steps",
                                  "Delete step", "Delete connection", "Delete tasks"}));

    // One undo brings the deleted task back with its subtask.
    history->undo();
    EXPECT_EQ(store->flows().first()->items().size(), 3u);
    // Moved between flows, the task is in neither flow's old snapshots:
    // undo must not replay them.
    ASSERT_EQ(forwarded({"move", "Sweep", "Work"}).status, exitSuccess);
    EXPECT_FALSE(history->canUndo(work));
    EXPECT_FALSE(history->canRedo(work));
}

TEST_F(ForwardingTest, UndoAndRedoTakeTheWindowsStepsByName)
{
    addFlows({"Work", "Home"});
    {
        auto setup = openStore();
        setup->addNode("Plan", *setup->flows()[0]);
        setup->addNode("Build", *setup->flows()[0]);
        setup->addNode("Sweep", *setup->flows()[1]);
        setup->attachFile({"brief.txt", {}, 5, "brief"}, 0, 0, *setup->flows()[0]);
    }
    // Alone, there is no history to take a step from.
    const CommandResult alone = run({"undo"});
    EXPECT_EQ(alone.status, exitUsage);
    EXPECT_TRUE(alone.err.startsWith("fenrow: nothing to undo: no Fenrow window is running")) << alone.err.toStdString();

    startOwner();
    const TaskFlow &work = *store->flows()[0];
    const FlowFile &brief = *work.files()[0];
    for (const QStringList &command : QList<QStringList>{{"connect", "Plan", "Build"},
                                                         {"link", "brief", "Build"},
                                                         {"file", "trash", "brief"},
                                                         {"subtask", "Sweep", "Mop"}})
        ASSERT_EQ(forwarded(command).status, exitSuccess) << command.join(' ').toStdString();

    // The latest step of any flow, then Work's own, newest first.
    EXPECT_EQ(forwarded({"undo"}).out, "Undid \"Add subtask\" in flow \"Home\".\n");
    EXPECT_EQ(forwarded({"undo", "work"}).out, "Undid \"Delete file\" in flow \"Work\".\n");
    EXPECT_FALSE(brief.isTrashed);
    EXPECT_TRUE(forwarded({"undo", "work", "--json"}).out.contains("\"name\": \"Link file\""));
    EXPECT_TRUE(brief.links().isEmpty());
    EXPECT_EQ(forwarded({"redo", "work"}).out, "Redid \"Link file\" in flow \"Work\".\n");
    EXPECT_EQ(brief.links().size(), 1);

    // With Home on the canvas, the canvas's flow alone counts.
    history->setActiveFlowID(store->flows()[1]->id);
    const CommandResult none = forwarded({"undo"});
    EXPECT_EQ(none.status, exitUsage);
    EXPECT_TRUE(none.err.contains("nothing to undo in flow \"Home\", the flow on the window's canvas"))
        << none.err.toStdString();
    EXPECT_EQ(forwarded({"redo"}).out, "Redid \"Add subtask\" in flow \"Home\".\n");
    EXPECT_EQ(store->flows()[1]->items().size(), 2u);
}

} // namespace
} // namespace fenrow::testing
