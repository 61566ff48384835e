#pragma once

#include "domain/FenrowStore.h"
#include "domain/FixedClock.h"
#include "persistence/StoreDatabase.h"

#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace fenrow::testing {

inline QTimeZone berlin()
{
    return QTimeZone("Europe/Berlin");
}

inline QDateTime berlinTime(int year, int month, int day, int hour = 0, int minute = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute), berlin());
}

// A store in a real file of a temporary folder, which tests can close and
// open again to see what really reached the disk.
class TestStore {
public:
    TestStore() : clock(berlinTime(2026, 6, 10, 9, 0)) { reopen(); }

    QString path() const { return folder.filePath(QStringLiteral("default.store")); }

    FenrowStore &reopen()
    {
        store.reset();
        QString error;
        store = FenrowStore::open(StoreDatabase::open(path(), &error), clock, LocalCalendar(berlin()), &error);
        if (!store)
            ADD_FAILURE() << "cannot open the test store: " << error.toStdString();
        return *store;
    }

    FenrowStore *operator->() { return store.get(); }
    FenrowStore &operator*() { return *store; }

    QTemporaryDir folder;
    FixedClock clock;
    std::unique_ptr<FenrowStore> store;
};

} // namespace fenrow::testing
