// A command's results are printed once its changes are in the file, run
// alone or handed to the program that owns the store; a save that fails
// prints nothing of them, only the failure.
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

#include <QDir>

#include <sqlite3.h>

namespace fenrow::testing {
namespace {

// Another connection in the middle of a write: until it ends, every save
// of the store fails at once, as on a store that cannot be written.
class WriteBlocker {
public:
    explicit WriteBlocker(const QString &path)
    {
        EXPECT_EQ(sqlite3_open(qPrintable(path), &m_db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(m_db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    ~WriteBlocker()
    {
        sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(m_db);
    }

private:
    sqlite3 *m_db = nullptr;
};

class OutputAfterSaveTest : public CommandLineTest {
protected:
    QString storePath() const { return folder.filePath(QStringLiteral("default.store")); }

    // The command handed to a program that holds the store open.
    CommandResult forwarded(const QStringList &arguments)
    {
        QString reason;
        OverridableClock clock;
        auto store = FenrowStore::open(StoreDatabase::open(storePath(), &reason), clock, LocalCalendar(), &reason);
        EXPECT_NE(store, nullptr) << reason.toStdString();
        FenrowHistory history(*store);
        AppPreferences preferences(SettingsFile::open());
        AppEnvironment environment({QStringLiteral("fenrow"), AppEnvironment::uiTestArgument});
        const CommandWorkspace workspace{store.get(), &history, &preferences, &environment, &clock};

        CommandResult result;
        QTextStream out(&result.out);
        QTextStream err(&result.err);
        Console console(out, err, nullptr, false);
        ForwardedCommand::Request request;
        request.arguments = arguments;
        request.workingDirectory = folder.path();
        WriteBlocker blocker(storePath());
        result.status = CommandForwarding::forward(request, console, [&](const ForwardedCommand::Request &sent,
                                                                         QString *) {
            return std::optional(CommandForwarding::runInOwner(registry, workspace, sent));
        });
        out.flush();
        err.flush();
        return result;
    }
};

TEST_F(OutputAfterSaveTest, NothingIsReportedOfChangesThatWereNotSaved)
{
    addFlows({"Home"});
    ASSERT_EQ(run({"backup", folder.path()}).status, exitSuccess);
    const QString backup = QDir(folder.path()).entryList({"Fenrow Backup *"}).value(0);
    ASSERT_EQ(run({"flow", "delete", "Home", "--yes"}).status, exitSuccess);

    const QList<QStringList> commands{
        {"add", "Sweep", "--json"},
        {"flow", "add", "Garden"},
    };
    for (const QStringList &command : commands) {
        SCOPED_TRACE(command.join(' ').toStdString());
        CommandResult alone;
        {
            WriteBlocker blocker(storePath());
            alone = run(command);
        }
        const CommandResult handed = forwarded(command);
        for (const CommandResult &result : {alone, handed}) {
            EXPECT_EQ(result.status, exitFailure);
            EXPECT_EQ(result.out, QString());
            EXPECT_EQ(result.err, "fenrow: the changes could not be saved\n");
        }
    }

    // A restore that could not be saved says so, and never "Merged".
    CommandResult restore;
    {
        WriteBlocker blocker(storePath());
        restore = run({"restore", folder.filePath(backup), "--merge"});
    }
    EXPECT_EQ(restore.status, exitFailure);
    EXPECT_EQ(restore.out, QString());
    EXPECT_TRUE(restore.err.contains(": the store could not be saved (database is locked); nothing was changed"))
        << restore.err.toStdString();
    EXPECT_EQ(flowNames(), QStringList());

    // Saved, the same command prints what it did.
    const CommandResult saved = run({"flow", "add", "Garden"});
    EXPECT_EQ(saved.status, exitSuccess);
    EXPECT_TRUE(saved.out.startsWith("Added flow")) << saved.out.toStdString();
}

} // namespace
} // namespace fenrow::testing
