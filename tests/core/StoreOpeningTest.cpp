#include "TestStore.h"

#include "domain/FenrowModelContainer.h"
#include "domain/SystemClock.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>

#include <sqlite3.h>

namespace fenrow {
namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void runSql(const QString &path, const char *sql)
{
    sqlite3 *db = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    sqlite3_close(db);
}

// Points the data folder somewhere else for one test.
class DataHome {
public:
    explicit DataHome(const QString &path) : m_previous(qgetenv("XDG_DATA_HOME"))
    {
        qputenv("XDG_DATA_HOME", path.toUtf8());
    }
    ~DataHome() { qputenv("XDG_DATA_HOME", m_previous); }

private:
    QByteArray m_previous;
};

TEST(StoreOpening, RefusesFilesThatAreNotItsOwnAndLeavesThemAlone)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("default.store"));

    struct Case {
        const char *name;
        std::function<void()> prepare;
        const char *reason;
    };
    const std::vector<Case> cases{
        {"text file", [&] { writeFile(path, QByteArray(4096, 'x')); }, "not a database"},
        {"foreign database", [&] { runSql(path, "CREATE TABLE notes(body TEXT); INSERT INTO notes VALUES ('mine')"); },
         "not a Fenrow store"},
        {"newer store", [&] { runSql(path, "CREATE TABLE t(x); PRAGMA user_version = 99"); }, "newer version"},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        QFile::remove(path);
        testCase.prepare();
        const QByteArray before = readAll(path);

        QString error;
        EXPECT_EQ(StoreDatabase::open(path, &error), nullptr);
        EXPECT_TRUE(error.contains(QLatin1StringView(testCase.reason))) << error.toStdString();
        EXPECT_EQ(readAll(path), before);
        EXPECT_FALSE(QFile::exists(path + QStringLiteral("-wal")));
        EXPECT_FALSE(QFile::exists(path + QStringLiteral("-journal")));
    }
}

TEST(StoreOpening, FatalMessageWhenTheFolderCannotBeMade)
{
    QTemporaryDir folder;
    // A regular file where the data folder's parent should be: nothing can
    // be created below it, whoever runs the test.
    const QString blocker = folder.filePath(QStringLiteral("blocker"));
    writeFile(blocker, "x");
    DataHome home(blocker + QStringLiteral("/data"));

    SystemClock clock;
    QString fatal;
    EXPECT_EQ(FenrowModelContainer::openStore({QStringLiteral("fenrow")}, clock, LocalCalendar(), &fatal), nullptr);
    EXPECT_TRUE(fatal.startsWith(QStringLiteral("Failed to create the Fenrow ModelContainer: "))) << fatal.toStdString();
    EXPECT_GT(fatal.size(), 45) << "the reason follows the prefix";
    EXPECT_EQ(readAll(blocker), QByteArray("x"));
}

TEST(StoreOpening, DefaultFileInTheDataFolderOrMemoryForScriptedRuns)
{
    QTemporaryDir folder;
    DataHome home(folder.filePath(QStringLiteral("nested/share")));
    const QString expected = folder.filePath(QStringLiteral("nested/share/fenrow/default.store"));
    EXPECT_EQ(FenrowModelContainer::storePath(), expected);

    SystemClock clock;
    QString fatal;
    {
        auto inMemory = FenrowModelContainer::openStore({QStringLiteral("fenrow"), QStringLiteral("--ui-test")},
                                                        clock, LocalCalendar(), &fatal);
        ASSERT_NE(inMemory, nullptr) << fatal.toStdString();
        inMemory->addFlow(QStringLiteral("Scratch"));
        EXPECT_FALSE(QFile::exists(expected));
    }
    // A file opens only for the process that holds its lock.
    EXPECT_EQ(FenrowModelContainer::openStore({QStringLiteral("fenrow")}, clock, LocalCalendar(), &fatal), nullptr);
    EXPECT_TRUE(fatal.startsWith(QLatin1String(FenrowModelContainer::failurePrefix))) << fatal.toStdString();
    const StoreOwnership::Claim claim = FenrowModelContainer::claim({}, {});
    ASSERT_NE(claim.lock, nullptr) << claim.problem.toStdString();
    {
        auto onDisk = FenrowModelContainer::openStore({QStringLiteral("fenrow")}, clock, LocalCalendar(), &fatal);
        ASSERT_NE(onDisk, nullptr) << fatal.toStdString();
        EXPECT_TRUE(onDisk->flows().isEmpty());
        onDisk->addFlow(QStringLiteral("Kept"));
    }
    EXPECT_TRUE(QFile::exists(expected));
    auto again = FenrowModelContainer::openStore({QStringLiteral("fenrow")}, clock, LocalCalendar(), &fatal);
    ASSERT_NE(again, nullptr);
    ASSERT_EQ(again->flows().size(), 1);
    EXPECT_EQ(again->flows()[0]->name, QStringLiteral("Kept"));
}

TEST(StoreOpening, SchemaVersionIsRecordedInTheFile)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("default.store"));
    QString error;
    ASSERT_NE(StoreDatabase::open(path, &error), nullptr) << error.toStdString();

    sqlite3 *db = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &db), SQLITE_OK);
    auto close = qScopeGuard([&] { sqlite3_close(db); });
    sqlite3_stmt *query = nullptr;
    sqlite3_prepare_v2(db, "PRAGMA user_version", -1, &query, nullptr);
    ASSERT_EQ(sqlite3_step(query), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(query, 0), 1);
    sqlite3_finalize(query);

    // Opening an up-to-date store again changes nothing and succeeds.
    EXPECT_NE(StoreDatabase::open(path, &error), nullptr);
}

} // namespace
} // namespace fenrow
