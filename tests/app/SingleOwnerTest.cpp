// The running program as the one owner of the store: the real `fenrow`
// executable, started as a user would start it beside the window, hands its
// commands and second starts to this process over a private session bus.
#include "AppTestSupport.h"
#include "CommandOutputFile.h"
#include "FenrowBusHandler.h"
#include "FenrowBusService.h"
#include "domain/FenrowModelContainer.h"
#include "domain/FenrowStore.h"
#include "domain/SystemClock.h"
#include "lists/ReadyListModel.h"
#include "lists/ReadyListView.h"
#include "lists/ReadyRowDelegate.h"
#include "persistence/StoreDatabase.h"
#include "program/AppShell.h"
#include "program/DesktopProgram.h"
#include "quickcapture/QuickCapturePanel.h"
#include "shell/ReadySnapshot.h"
#include "shell/SettingsFile.h"
#include "shell/SystemIntents.h"
#include "shell/WidgetFiles.h"
#include "window/MainWindow.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QListView>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <stdexcept>

#include <sys/mman.h>
#include <unistd.h>

namespace fenrow {
namespace {

struct ProcessRun {
    int status = -1;
    QString out;
    QString err;
};

class SingleOwnerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "run this suite on a private session bus";
        QString fatal;
        session = DesktopProgram::Session::start(*qApp, &fatal);
        ASSERT_NE(session, nullptr) << fatal.toStdString();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
        // The sample flow arrives with the window's first appearance.
        ASSERT_TRUE(QTest::qWaitFor([this] { return !store().flows().isEmpty(); }));
    }

    void TearDown() override
    {
        session.reset();
    }

    MainWindow &window() const { return session->window(); }
    FenrowStore &store() const { return session->store(); }

    QProcessEnvironment fenrowEnvironment() const { return home.environment(); }

    // Runs the executable and keeps this program's event loop turning
    // meanwhile, so that it can answer what the child hands over.
    ProcessRun fenrow(const QStringList &arguments, QProcessEnvironment environment = {})
    {
        if (environment.isEmpty())
            environment = fenrowEnvironment();
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(home.path());
        QEventLoop loop;
        QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
        QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
        process.start(QStringLiteral(FENROW_EXECUTABLE), arguments);
        QTimer::singleShot(60000, &loop, &QEventLoop::quit);
        loop.exec();
        ProcessRun run;
        if (process.state() != QProcess::NotRunning) {
            ADD_FAILURE() << "fenrow did not finish: " << arguments.join(' ').toStdString();
            process.kill();
            process.waitForFinished();
            return run;
        }
        run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        run.out = QString::fromUtf8(process.readAllStandardOutput());
        run.err = QString::fromUtf8(process.readAllStandardError());
        return run;
    }

    const FlowNode *task(const QString &title) const
    {
        for (const TaskFlow *flow : store().flows())
            for (const FlowNode *node : flow->items())
                if (node->title == title)
                    return node;
        return nullptr;
    }

    QStringList readyTitles() const
    {
        QStringList titles;
        const ReadyListModel &rows = *window().readyList()->model();
        for (int row = 0; row < rows.rowCount(); ++row) {
            const QModelIndex index = rows.index(row);
            if (ReadyListModel::Kind(index.data(ReadyListModel::KindRole).toInt()) == ReadyListModel::Kind::task)
                titles << index.data().toString();
        }
        return titles;
    }

    int mainWindows() const
    {
        int count = 0;
        for (QWidget *widget : QApplication::topLevelWidgets())
            count += qobject_cast<MainWindow *>(widget) != nullptr;
        return count;
    }

    testing::PrivateHome home;
    std::unique_ptr<DesktopProgram::Session> session;
};

TEST_F(SingleOwnerTest, CommandsChangeTheWindowsStoreAndShowThereAtOnce)
{
    window().setRoute(DetailRoute::ready());
    ASSERT_TRUE(readyTitles().contains("Define the offer"));

    const ProcessRun renamed = fenrow({"edit", "Define the offer", "--title", "Define the offer, renamed"});
    ASSERT_EQ(renamed.status, 0) << renamed.err.toStdString();
    EXPECT_TRUE(renamed.out.startsWith("Define the offer, renamed\n")) << renamed.out.toStdString();
    const ProcessRun added = fenrow({"add", "Buy milk"});
    ASSERT_EQ(added.status, 0) << added.err.toStdString();
    EXPECT_TRUE(readyTitles().contains("Define the offer, renamed"));
    EXPECT_TRUE(readyTitles().contains("Buy milk"));
    testing::saveScreenshot(window(), QStringLiteral("ready-after-commands.png"));

    // Ticking the renamed task in the window works on the very same task:
    // no stale copy can bring the old title back.
    const FlowNode *offer = task("Define the offer, renamed");
    ASSERT_NE(offer, nullptr);
    QListView *list = window().readyList()->list();
    const QRect row = list->visualRect(window().readyList()->model()->indexOf(offer->id));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, ReadyRowDelegate::completeRect(row).center());
    ASSERT_TRUE(offer->isDone);
    // Undo takes back the window's tick, and only that.
    window().undo();
    EXPECT_FALSE(offer->isDone);
    EXPECT_EQ(offer->title, "Define the offer, renamed");
    window().redo();
    ASSERT_TRUE(offer->isDone);

    const ProcessRun found = fenrow({"find", "renamed"});
    EXPECT_TRUE(found.out.contains("Define the offer, renamed")) << found.out.toStdString();

    // What the file holds once the program has ended.
    session.reset();
    QString reason;
    SystemClock clock;
    const auto reopened =
        FenrowStore::open(StoreDatabase::open(FenrowModelContainer::storePath(), &reason), clock, LocalCalendar(), &reason);
    ASSERT_NE(reopened, nullptr) << reason.toStdString();
    QStringList doneTitles;
    QStringList titles;
    for (const TaskFlow *flow : reopened->flows())
        for (const FlowNode *node : flow->items()) {
            titles << node->title;
            if (node->isDone)
                doneTitles << node->title;
        }
    EXPECT_EQ(doneTitles, QStringList{"Define the offer, renamed"});
    EXPECT_TRUE(titles.contains("Buy milk"));
}

TEST_F(SingleOwnerTest, TheCommandLinesReadyListIsTheWindows)
{
    // Four more tasks in a flow of their own, three of them starting today,
    // and today's plan committed from the command line.
    window().setRoute(DetailRoute::ready());
    ReadyListModel &rows = *window().readyList()->model();
    const QStringList added{"Buy stamps", "Call the bank", "Water the plants", "File the receipts"};
    for (const QString &title : added)
        ASSERT_EQ(fenrow({"add", title, "--flow", "Errands", "--due", "none"}).status, 0);
    const QDateTime now = store().clock().now();
    for (const QString &title : added.first(3))
        store().setStartDate(now, *task(title));
    store().setPriority(NodePriority::high, *task("Water the plants"));
    store().setEstimate(5, *task("Call the bank"));
    store().setDueDate(now.addDays(2), *task("File the receipts"));
    const ProcessRun planned = fenrow({"plan", "--budget", "24h", "--commit"});
    ASSERT_EQ(planned.status, 0) << planned.err.toStdString();

    // Each row as "title inToday", in the order shown.
    const auto windowRows = [&] {
        QStringList shown;
        for (int row = 0; row < rows.rowCount(); ++row) {
            const QModelIndex index = rows.index(row);
            if (ReadyListModel::Kind(index.data(ReadyListModel::KindRole).toInt()) == ReadyListModel::Kind::task)
                shown << index.data().toString() + (index.data(ReadyListModel::InTodayRole).toBool() ? " today" : "");
        }
        return shown;
    };
    const auto commandRows = [&](const QString &sort) {
        const ProcessRun ready = fenrow({"ready", "--json", "--sort", sort});
        EXPECT_EQ(ready.status, 0) << ready.err.toStdString();
        QStringList shown;
        for (const QJsonValue &row : QJsonDocument::fromJson(ready.out.toUtf8()).array())
            shown << row["title"].toString() + (row["inToday"].toBool() ? " today" : "");
        return shown;
    };
    const auto compareEverySort = [&] {
        for (const ReadySort sort : {ReadySort::flow, ReadySort::dueDate, ReadySort::priority, ReadySort::estimate}) {
            rows.setSort(sort);
            const QStringList shown = windowRows();
            EXPECT_EQ(shown.filter(" today").size(), 3) << rawString(sort).toStdString();
            EXPECT_EQ(commandRows(rawString(sort)), shown) << rawString(sort).toStdString();
        }
    };
    compareEverySort();

    // Today's order turned round, as a drag in the window would.
    const QStringList today = windowRows().filter(" today");
    for (qsizetype i = 0; i < today.size(); ++i)
        store().setDayPlanRank(today.size() - i, *task(today[i].chopped(6)));
    rows.reload();
    ASSERT_NE(windowRows().filter(" today"), today);
    compareEverySort();
}

TEST_F(SingleOwnerTest, TwoCommandLinesAddingAtOnceLoseNothing)
{
    // Each loop is a hundred separate processes; both loops run at once.
    const QString loop = QStringLiteral("for i in $(seq 100); do \"$FENROW\" add \"Errand $i from $SIDE\" "
                                        "--flow Errands >/dev/null || exit 1; done");
    QList<QProcess *> sides;
    for (const char *side : {"left", "right"}) {
        auto *process = new QProcess(&window());
        QProcessEnvironment environment = fenrowEnvironment();
        environment.insert("FENROW", FENROW_EXECUTABLE);
        environment.insert("SIDE", side);
        process->setProcessEnvironment(environment);
        process->start("bash", {"-c", loop});
        sides << process;
    }
    const bool finished = QTest::qWaitFor(
        [&] {
            return std::all_of(sides.begin(), sides.end(),
                               [](QProcess *p) { return p->state() == QProcess::NotRunning; });
        },
        240000);
    ASSERT_TRUE(finished);
    for (QProcess *side : sides)
        EXPECT_EQ(side->exitCode(), 0) << side->readAllStandardError().toStdString();

    int errands = 0;
    int flowsNamedErrands = 0;
    for (const TaskFlow *flow : store().flows()) {
        if (flow->name != "Errands")
            continue;
        ++flowsNamedErrands;
        errands += int(flow->items().size());
    }
    EXPECT_EQ(flowsNamedErrands, 1);
    EXPECT_EQ(errands, 200);
}

TEST_F(SingleOwnerTest, ASecondStartHandsOverAndEnds)
{
    const QUuid sample = store().flows().first()->id;
    window().setRoute(DetailRoute::flow(sample));
    window().hide();
    ASSERT_EQ(fenrow({}).status, 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window().isVisible(); }));

    ASSERT_EQ(fenrow({"fenrow://somewhere"}).status, 0);
    EXPECT_EQ(window().route(), DetailRoute::flow(sample));
    ASSERT_EQ(fenrow({"fenrow://ready"}).status, 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window().route().isReady(); }));
    testing::saveScreenshot(window(), QStringLiteral("ready-from-url.png"));

    ASSERT_EQ(fenrow({"--capture"}).status, 0);
    QuickCapturePanel *panel = AppShell::current()->quickCapturePanel();
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([panel] { return panel->isVisible(); }));
    ASSERT_EQ(fenrow({"--capture"}).status, 0);
    EXPECT_TRUE(QTest::qWaitFor([panel] { return !panel->isVisible(); }));
    EXPECT_EQ(mainWindows(), 1);
}

// The tray widget's side is files only: what it parks reaches the running
// program at once, and waits in the folder while Fenrow is not running.
TEST_F(SingleOwnerTest, WidgetTicksReachTheRunningProgramAndWaitWhileItIsStopped)
{
    const QString shared = WidgetFiles::sharedFolder();
    ASSERT_TRUE(shared.startsWith(home.path()));
    std::optional<ReadySnapshot> snapshot;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        snapshot = ReadySnapshot::read(shared);
        return snapshot && !snapshot->tasks.isEmpty();
    })) << "the program publishes the Ready list when it starts";
    const QUuid first = snapshot->tasks[0].id;

    ASSERT_TRUE(TickReadyTaskIntent{first.toString()}.perform(shared, QDateTime::currentDateTime()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return store().node(first)->isDone; }, 1000));
    ASSERT_TRUE(QTest::qWaitFor([&] {
        snapshot = ReadySnapshot::read(shared);
        return snapshot && !snapshot->tasks.isEmpty() && snapshot->tasks[0].id != first;
    })) << "the list the widget draws follows";
    const QUuid second = snapshot->tasks[0].id;

    session.reset();
    ASSERT_TRUE(TickReadyTaskIntent{second.toString()}.perform(shared, QDateTime::currentDateTime()));
    const QDir pending(WidgetFiles::pendingFolder(shared));
    EXPECT_EQ(pending.entryList(QDir::Files).size(), 1);
    QString fatal;
    session = DesktopProgram::Session::start(*qApp, &fatal);
    ASSERT_NE(session, nullptr) << fatal.toStdString();
    EXPECT_TRUE(QTest::qWaitFor([&] { return store().node(second)->isDone; }));
    EXPECT_TRUE(store().node(first)->isDone);
    EXPECT_TRUE(pending.entryList(QDir::Files).isEmpty());
}

TEST_F(SingleOwnerTest, AnOwnerOutOfReachKeepsCommandsOutAndNothingChanges)
{
    const qsizetype tasksBefore = store().flows().first()->items().size();
    QProcessEnvironment environment = fenrowEnvironment();
    for (const char *name : {"DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "WAYLAND_DISPLAY"})
        environment.remove(name);
    // Nowhere to find a bus on its own either.
    environment.insert("XDG_RUNTIME_DIR", home.filePath("runtime"));
    const ProcessRun kept = fenrow({"add", "Never added"}, environment);
    EXPECT_EQ(kept.status, 1);
    EXPECT_TRUE(kept.err.contains(
        QStringLiteral("the Fenrow window (process %1)").arg(QCoreApplication::applicationPid())))
        << kept.err.toStdString();
    EXPECT_TRUE(kept.err.contains("nothing was changed")) << kept.err.toStdString();
    EXPECT_EQ(store().flows().first()->items().size(), tasksBefore);
    EXPECT_EQ(task("Never added"), nullptr);
}

// Callers on the bus other than the command line: scripts and desktop
// tools, through the interface the repository describes.
class BusCallsTest : public SingleOwnerTest {
protected:
    QDBusMessage call(const QString &method, const QVariantList &arguments = {},
                      const QString &interface = QStringLiteral("studio.tarnwick.Fenrow"))
    {
        QDBusMessage message = QDBusMessage::createMethodCall("studio.tarnwick.Fenrow", "/studio/tarnwick/Fenrow",
                                                              interface, method);
        message.setArguments(arguments);
        // A connection of its own, like another program's, answered while
        // this loop turns.
        QDBusConnection caller = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "caller");
        QDBusPendingCall pending = caller.asyncCall(message);
        QDBusPendingCallWatcher watcher(pending);
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        if (!watcher.isFinished())
            loop.exec();
        return pending.reply();
    }

    static QString errorOf(const QDBusMessage &reply)
    {
        return reply.type() == QDBusMessage::ErrorMessage ? reply.errorName() + ": " + reply.errorMessage()
                                                           : QString();
    }
};

TEST_F(BusCallsTest, IntentsActOnTheWindowsStoreAndBadCallsGetReadableErrors)
{
    // From the Ready list, Undo reaches a step taken outside the window.
    window().setRoute(DetailRoute::ready());
    const QDBusMessage added = call("AddTask", {"Water the plants tomorrow", "", ""});
    ASSERT_EQ(added.type(), QDBusMessage::ReplyMessage) << errorOf(added).toStdString();
    const QString id = added.arguments().value(0).toString();
    EXPECT_EQ(added.arguments().value(1).toString(), "Water the plants");
    EXPECT_EQ(added.arguments().value(3).toString(), "Added “Water the plants” to Sample: Launch a landing page.");
    const FlowNode *plants = task("Water the plants");
    ASSERT_NE(plants, nullptr);
    EXPECT_TRUE(plants->dueDate.has_value());
    window().undo();
    EXPECT_EQ(task("Water the plants"), nullptr);

    const QDBusMessage ready = call("ReadyTasks");
    ASSERT_EQ(ready.type(), QDBusMessage::ReplyMessage) << errorOf(ready).toStdString();
    EXPECT_EQ(ready.arguments().value(1).toString(), "Ready now (1): Define the offer");
    const QString offer = task("Define the offer")->id.toString(QUuid::WithoutBraces);
    const QDBusMessage completed = call("CompleteTask", {offer});
    EXPECT_EQ(completed.arguments().value(0).toString(), "Done: Define the offer.");
    EXPECT_TRUE(task("Define the offer")->isDone);

    const QString stranger = QUuid::createUuid().toString();
    const QList<std::pair<QDBusMessage, QString>> refusals{
        {call("CompleteTask", {stranger}), "studio.tarnwick.Fenrow.Error.NotFound"},
        {call("OpenFlow", {stranger}), "studio.tarnwick.Fenrow.Error.NotFound"},
        {call("AddTask", {"Lost", stranger, ""}), "studio.tarnwick.Fenrow.Error.NotFound"},
        {call("CompleteTask", {"not an id"}), "org.freedesktop.DBus.Error.InvalidArgs: task must be a task's id"},
        {call("AddTask", {"Lost", "", "next blue moon"}), "org.freedesktop.DBus.Error.InvalidArgs: due must be"},
        {call("AddTask", {"Lost"}),
         "org.freedesktop.DBus.Error.InvalidArgs: AddTask takes (title s, flow s, due s), not (s)"},
        {call("Fly"), "org.freedesktop.DBus.Error.UnknownMethod"},
        {call("RunCommand", {QStringList{"flows"}, home.path(), QVariantMap{{"store", "/elsewhere/default.store"}}}),
         "studio.tarnwick.Fenrow.Error.OtherStore"},
        {call("RunCommand", {QStringList{"flows"}, "relative", QVariantMap{}}),
         "org.freedesktop.DBus.Error.InvalidArgs: working_directory must be an absolute path"},
    };
    for (const auto &[reply, expected] : refusals)
        EXPECT_TRUE(errorOf(reply).startsWith(expected)) << errorOf(reply).toStdString();
    EXPECT_EQ(task("Lost"), nullptr);
    EXPECT_EQ(store().flows().size(), 1);
}

// A caller that ended (Ctrl+C) before the program came to its command:
// nobody waits for the command, and it is not carried out.
TEST_F(BusCallsTest, ACommandWhoseCallerLeftBeforeItRanIsNotRun)
{
    const QString storePath = call("StorePath").arguments().value(0).toString();
    const auto sendAdd = [&](const QString &connectionName, const QString &title) {
        QDBusMessage message = QDBusMessage::createMethodCall("studio.tarnwick.Fenrow", "/studio/tarnwick/Fenrow",
                                                              "studio.tarnwick.Fenrow", "RunCommand");
        message.setArguments({QStringList{"add", title}, home.path(), QVariantMap{{"store", storePath}}});
        QDBusConnection caller = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
        caller.asyncCall(message);
        // The bus answers in order: once it answered this, it has passed
        // the command on. Blocking, so this program has not read it yet.
        caller.call(QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                   "org.freedesktop.DBus", "GetId"),
                    QDBus::Block);
        return caller.baseService();
    };

    sendAdd("staying", "Added while its caller waits");
    const QString leaver = sendAdd("leaving", "Never run");
    QDBusConnection::disconnectFromBus("leaving");
    const QDBusMessage hasOwner = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                                 "org.freedesktop.DBus", "NameHasOwner");
    // Asked without turning this program's loop, which would run the commands.
    const auto gone = [&] {
        QDBusMessage asked = hasOwner;
        asked.setArguments({leaver});
        const QDBusMessage owned = QDBusConnection::sessionBus().call(asked, QDBus::Block);
        return owned.type() == QDBusMessage::ReplyMessage && !owned.arguments().value(0).toBool();
    };
    const QDeadlineTimer limit(5000);
    while (!gone() && !limit.hasExpired()) {
    }
    ASSERT_TRUE(gone());

    // Commands run in the order they came, so both are behind this one.
    const QDBusMessage listed =
        call("RunCommand", {QStringList{"flows"}, home.path(), QVariantMap{{"store", storePath}}});
    ASSERT_EQ(listed.type(), QDBusMessage::ReplyMessage) << errorOf(listed).toStdString();
    EXPECT_NE(task("Added while its caller waits"), nullptr);
    EXPECT_EQ(task("Never run"), nullptr);
    QDBusConnection::disconnectFromBus("staying");
}

// The caller leaves while its command runs: the command hears of it.
TEST_F(BusCallsTest, ARunningCommandHearsThatItsCallerLeft)
{
    // Stands for the program: its command waits, as one waiting for the
    // engine does, until it hears the caller went or ten seconds pass.
    struct WaitingHandler : FenrowBusHandler {
        QString storePath() const override { return QStringLiteral("/nowhere/default.store"); }
        void activate() override {}
        void toggleCapture() override {}
        void openURL(const QString &) override {}
        IntentServices &intentServices() override { throw std::logic_error("no intents here"); }
        ForwardedCommand::Reply runCommand(const ForwardedCommand::Request &request) override
        {
            // The bus answers in order, so the service's subscription is in
            // place before the caller goes.
            QDBusConnection(QStringLiteral("serving"))
                .call(QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                     "org.freedesktop.DBus", "GetId"),
                      QDBus::Block);
            QDBusConnection::disconnectFromBus("leaving");
            const QDeadlineTimer limit(10000);
            while (!(request.callerGone && request.callerGone->load()) && !limit.hasExpired())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
            heard = request.callerGone && request.callerGone->load();
            finished = true;
            return {};
        }
        bool heard = false;
        bool finished = false;
    } handler;
    FenrowBusService service(handler);
    QDBusConnection serving = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "serving");
    ASSERT_TRUE(serving.registerVirtualObject("/studio/tarnwick/Fenrow", &service, QDBusConnection::SingleNode));
    QDBusMessage message = QDBusMessage::createMethodCall(serving.baseService(), "/studio/tarnwick/Fenrow",
                                                          "studio.tarnwick.Fenrow", "RunCommand");
    message.setArguments({QStringList{"flows"}, home.path(), QVariantMap{{"store", handler.storePath()}}});
    QDBusConnection::connectToBus(QDBusConnection::SessionBus, "leaving").asyncCall(message);

    EXPECT_TRUE(QTest::qWaitFor([&] { return handler.finished; }, 15000));
    EXPECT_TRUE(handler.heard);
    serving.unregisterObject("/studio/tarnwick/Fenrow");
    QDBusConnection::disconnectFromBus("serving");
}

TEST_F(BusCallsTest, TheServiceAnswersAsItsInterfaceFileDescribesIt)
{
    // Method names and argument types, in the order given.
    const auto methods = [](const QString &xml) {
        QStringList described;
        const QRegularExpression method(R"x(<method name="(\w+)"\s*/?>)x");
        const QRegularExpression argument(R"x(<arg name="\w+" type="([^"]+)" direction="(in|out)"/>)x");
        qsizetype at = 0;
        while (true) {
            const QRegularExpressionMatch found = method.match(xml, at);
            if (!found.hasMatch())
                break;
            const qsizetype end = xml.indexOf(found.captured(0).endsWith("/>") ? "/>" : "</method>",
                                              found.capturedStart());
            QString entry = found.captured(1);
            auto arguments = argument.globalMatch(xml.mid(found.capturedEnd(), end - found.capturedEnd()));
            while (arguments.hasNext()) {
                const QRegularExpressionMatch arg = arguments.next();
                entry += ' ' + arg.captured(2) + ':' + arg.captured(1);
            }
            described << entry;
            at = found.capturedEnd();
        }
        return described;
    };
    QFile file(QStringLiteral(FENROW_SOURCE_DIR "/src/platform/bus/studio.tarnwick.Fenrow.xml"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString xml = QString::fromUtf8(file.readAll());
    const QDBusMessage introspected = call("Introspect", {}, "org.freedesktop.DBus.Introspectable");
    ASSERT_EQ(introspected.type(), QDBusMessage::ReplyMessage);
    const QString live = introspected.arguments().value(0).toString();
    const qsizetype ours = live.indexOf(R"(<interface name="studio.tarnwick.Fenrow">)");
    ASSERT_GE(ours, 0) << live.toStdString();
    const QStringList described = methods(xml);
    EXPECT_EQ(methods(live.mid(ours, live.indexOf("</interface>", ours) - ours)), described);
    EXPECT_TRUE(described.contains("RunCommand in:as in:s in:a{sv} out:i out:a(uay) out:s out:s"));

    // And it keeps that word: each method answers the types it promises.
    const QDBusMessage storePath = call("StorePath");
    EXPECT_EQ(storePath.signature(), "s");
    EXPECT_EQ(storePath.arguments().value(0).toString(), FenrowModelContainer::storePath());
    const QDBusMessage ready = call("ReadyTasks");
    EXPECT_EQ(ready.signature(), "a(sss)s");
    const QDBusMessage flows = call("RunCommand", {QStringList{"flows"}, home.path(),
                                                   QVariantMap{{"store", FenrowModelContainer::storePath()}}});
    EXPECT_EQ(flows.signature(), "ia(uay)ss");

    // The same command with its output in a file gives the same bytes.
    const QDBusMessage inFile = call("RunCommandToFile", {QStringList{"flows"}, home.path(),
                                                          QVariantMap{{"store", FenrowModelContainer::storePath()}}});
    ASSERT_EQ(inFile.signature(), "ia(ut)ssh");
    QString unread;
    ForwardedCommand::Reply fromFile;
    ASSERT_TRUE(CommandOutputFile::read(inFile.arguments().value(4).value<QDBusUnixFileDescriptor>(),
                                        qdbus_cast<QList<BusOutputLength>>(inFile.arguments().value(1)), fromFile,
                                        &unread))
        << unread.toStdString();
    EXPECT_EQ(fromFile.output, BusTypes::commandOutput(qdbus_cast<QList<BusOutput>>(flows.arguments().value(1))));
    EXPECT_FALSE(fromFile.output.isEmpty());
    EXPECT_TRUE(fromFile.outputMemory) << "the program's file is sealed, so it is read in place";

    // A file not sealed is read as a copy; one shorter than its parts is refused.
    const int plain = memfd_create("unsealed", MFD_CLOEXEC);
    ASSERT_GE(plain, 0);
    const QByteArray bytes = "ready\n";
    ASSERT_EQ(::write(plain, bytes.constData(), bytes.size()), bytes.size());
    const QDBusUnixFileDescriptor plainFile(plain);
    ::close(plain);
    ForwardedCommand::Reply copied;
    ASSERT_TRUE(CommandOutputFile::read(plainFile, {{1, 6}}, copied, &unread)) << unread.toStdString();
    EXPECT_EQ(copied.output, (QList<ForwardedCommand::Output>{{ForwardedCommand::Stream::out, bytes}}));
    EXPECT_FALSE(copied.outputMemory);
    EXPECT_FALSE(CommandOutputFile::read(plainFile, {{1, 4}, {2, 3}}, copied, &unread));
}

} // namespace
} // namespace fenrow
