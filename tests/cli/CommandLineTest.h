#pragma once

#include "QtPrinters.h"

#include "cli/CommandRegistry.h"

#include "domain/FenrowStore.h"
#include "domain/FixedClock.h"

#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace fenrow {
class Console;
}

namespace fenrow::testing {

struct CommandResult {
    int status = -1;
    QString out;
    QString err;
};

// Runs `command` on a console that keeps what it writes; `typed` is what
// the user answers on the terminal; without `interactive` there is none.
CommandResult runOnConsole(const QString &typed, bool interactive, const std::function<int(Console &)> &command);

// Runs command lines in-process, each on the store file of this test opened
// afresh, as separate runs of the program would.
class CommandLineTest : public ::testing::Test {
protected:
    CommandLineTest();

    // `typed` is what the user answers on the terminal; without
    // `interactive` there is no terminal.
    CommandResult run(const QStringList &arguments, const QString &typed = {}, bool interactive = false);

    // The store as the next run will find it; close it before running.
    std::unique_ptr<FenrowStore> openStore();
    // Flow names in sidebar order, read from the file.
    QStringList flowNames();
    void addFlows(const QStringList &names);
    // Adds tasks to the named flow: one per status, in order.
    void addTasks(const QString &flowName, const QList<NodeStatus> &statuses);

    QTemporaryDir folder;
    FixedClock setupClock;
    CommandRegistry registry;
    int storeOpenings = 0;
    // When set, opening the store fails with this message.
    QString fatalMessage;
};

} // namespace fenrow::testing
