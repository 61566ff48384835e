#pragma once

#include "LargeStoreShape.h"

#include "FenrowStore.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <set>
#include <string>

namespace fenrow::bench {

// An opened working copy of a generated store, kept for the whole process:
// the library calls each benchmark several times, and opening a large store
// each time would cost more than everything measured.
struct LiveStore {
    QTemporaryDir folder;
    QString path;
    std::unique_ptr<FenrowStore> store;
    // Benchmarks that have already checked their writes on a reopened store.
    std::set<std::string> verified;

    // The live store of `shape`, opened on first use; null, with a reason,
    // on failure.
    static LiveStore *of(const LargeStoreShape &shape, QString *error);
    // Opens a store file with the generator's clock and calendar.
    static std::unique_ptr<FenrowStore> open(const QString &path, QString *error);

    // Closes and reopens the store, so that what a benchmark wrote is read
    // back from the file.
    bool reopen(QString *error);
};

} // namespace fenrow::bench
