#pragma once

#include "LocalCalendar.h"
#include "persistence/StoreOwnership.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace fenrow {

class Clock;
class FenrowStore;
class StoreDatabase;

// Where the store lives and how it is opened: "default.store" in the user's
// data folder, or in memory for scripted runs ("--ui-test"). Failing to open
// it is the program's one fatal stop; the file is then left untouched.
class FenrowModelContainer {
public:
    static constexpr const char *storeFileName = "default.store";
    static constexpr const char *failurePrefix = "Failed to create the Fenrow ModelContainer: ";

    static bool usesMemory(const QStringList &arguments);
    // The data folder follows XDG_DATA_HOME; the application name must be
    // set before asking.
    static QString storePath();

    static std::unique_ptr<StoreDatabase> create(const QStringList &arguments, QString *error);

    // Takes the store on disk for this process, making its folder first
    // (see StoreOwnership::claim). A store in memory needs no claim.
    static StoreOwnership::Claim claim(const StoreLockHolder &self, const std::function<bool()> &ownerReachable);

    // Opens the database and loads the store. On failure returns null and
    // puts the whole fatal message in `fatalMessage`. A store on disk opens
    // only in the process that holds its lock (StoreOwnership::claim): two
    // writers would lose each other's changes.
    static std::unique_ptr<FenrowStore> openStore(const QStringList &arguments, const Clock &clock,
                                                  LocalCalendar calendar, QString *fatalMessage);
};

} // namespace fenrow
