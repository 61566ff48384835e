#include "CommandLineTest.h"

#include "cli/CommandCatalog.h"
#include "cli/CommandDispatcher.h"
#include "cli/Console.h"
#include "platform/ThumbnailMaker.h"

#include "persistence/StoreDatabase.h"

#include <QTextStream>

namespace fenrow::testing {

CommandLineTest::CommandLineTest() : setupClock(QDateTime(QDate(2026, 5, 1), QTime(8, 0)))
{
    CommandCatalog::registerAll(registry);
}

CommandResult runOnConsole(const QString &typed, bool interactive, const std::function<int(Console &)> &command)
{
    CommandResult result;
    QString input = typed;
    QTextStream out(&result.out);
    QTextStream err(&result.err);
    QTextStream in(&input);
    Console console(out, err, &in, interactive);
    result.status = command(console);
    out.flush();
    err.flush();
    return result;
}

CommandResult CommandLineTest::run(const QStringList &arguments, const QString &typed, bool interactive)
{
    const QString path = folder.filePath(QStringLiteral("default.store"));
    CommandDispatcher dispatcher(registry, [&](const Clock &clock) {
        CommandDispatcher::StoreAccess access;
        ++storeOpenings;
        if (!fatalMessage.isEmpty()) {
            access.fatalMessage = fatalMessage;
            return access;
        }
        access.store =
            FenrowStore::open(StoreDatabase::open(path, &access.fatalMessage), clock, LocalCalendar(), &access.fatalMessage);
        // As in the desktop program, which runs the commands that draw previews.
        if (access.store)
            access.store->setThumbnailMaker(&ThumbnailMaker::make);
        return access;
    });

    return runOnConsole(typed, interactive, [&](Console &console) { return dispatcher.run(arguments, console); });
}

std::unique_ptr<FenrowStore> CommandLineTest::openStore()
{
    QString reason;
    auto store = FenrowStore::open(StoreDatabase::open(folder.filePath(QStringLiteral("default.store")), &reason),
                                   setupClock, LocalCalendar(), &reason);
    if (!store)
        ADD_FAILURE() << "cannot open the test store: " << reason.toStdString();
    return store;
}

QStringList CommandLineTest::flowNames()
{
    QStringList names;
    const auto store = openStore();
    for (const TaskFlow *flow : store->flows())
        names.append(flow->name);
    return names;
}

void CommandLineTest::addFlows(const QStringList &names)
{
    auto store = openStore();
    for (const QString &name : names) {
        setupClock.advanceSeconds(60);
        store->addFlow(name);
    }
}

void CommandLineTest::addTasks(const QString &flowName, const QList<NodeStatus> &statuses)
{
    auto store = openStore();
    for (const TaskFlow *flow : store->flows()) {
        if (flow->name != flowName)
            continue;
        for (NodeStatus status : statuses) {
            const FlowNode *node = store->addNode(QStringLiteral("Task"), *flow);
            if (status != NodeStatus::pending)
                store->setStatus(status, *node);
        }
        return;
    }
    ADD_FAILURE() << "no flow named " << flowName.toStdString();
}

} // namespace fenrow::testing
