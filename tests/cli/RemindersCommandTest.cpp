#include "CommandLineTest.h"

#include "cli/ExitStatus.h"
#include "shell/AppPreferences.h"
#include "shell/SettingsFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

const QString now = QStringLiteral("2026-06-10T09:00:00");

class RemindersCommandTest : public CommandLineTest {
protected:
    RemindersCommandTest()
    {
        auto store = openStore();
        const TaskFlow &home = *store->addFlow("Home");
        const auto due = [&](const char *title, int day) {
            const FlowNode *node = store->addNode(title, home);
            store->setDueDate(QDateTime(QDate(2026, 6, day), QTime(0, 0)), *node);
            return node;
        };
        due("Pay rent", 12);
        due("Water plants", 11);
        due("Due this morning", 10);
        store->setStatus(NodeStatus::done, *due("Done already", 13));
        setReminders(true, false, 9);
    }
    ~RemindersCommandTest() override { setReminders(true, false, 9); }

    static void setReminders(bool reminders, bool digest, int hour)
    {
        AppPreferences preferences(SettingsFile::open());
        preferences.setDueRemindersEnabled(reminders);
        preferences.setMorningDigestEnabled(digest);
        preferences.setDueReminderHour(hour);
    }
};

TEST_F(RemindersCommandTest, ListsTheComingRemindersSoonestFirst)
{
    const CommandResult result = run({"reminders", "--now", now});
    EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
    EXPECT_EQ(result.out, "The morning digest is off (preferences.morningDigestEnabled).\n"
                          "2026-06-11 09:00  Water plants  Home\n"
                          "2026-06-12 09:00  Pay rent      Home\n");
}

TEST_F(RemindersCommandTest, TheDigestComesAtTheReminderHour)
{
    setReminders(false, true, 8);
    EXPECT_EQ(run({"reminders", "--now", now}).out,
              "Due reminders are off (preferences.dueRemindersEnabled).\n"
              "2026-06-11 08:00  Morning digest, every day:  Pay rent, Water plants, and Due this morning\n");

    setReminders(true, true, 10);
    const QJsonArray list = QJsonDocument::fromJson(run({"reminders", "--json", "--now", now}).out.toUtf8()).array();
    ASSERT_EQ(list.size(), 4);
    // Today at ten: the reminder of the task due today, then the digest.
    EXPECT_EQ(list[0]["title"].toString(), "Due this morning");
    EXPECT_EQ(list[0]["subtitle"].toString(), "Home");
    EXPECT_EQ(list[0]["body"].toString(), "Due today");
    EXPECT_EQ(list[0]["fireDate"].toString(), "2026-06-10T10:00:00+02:00");
    EXPECT_TRUE(list[0]["repeats"].isNull());
    EXPECT_TRUE(list[0]["identifier"].toString().startsWith("due."));
    EXPECT_EQ(list[1]["identifier"].toString(), "digest.daily");
    EXPECT_EQ(list[1]["fireDate"].toString(), "2026-06-10T10:00:00+02:00");
    EXPECT_EQ(list[1]["repeats"].toString(), "daily");
    EXPECT_EQ(list[3]["title"].toString(), "Pay rent");
}

TEST_F(RemindersCommandTest, SaysWhenNothingIsComing)
{
    EXPECT_EQ(run({"reminders", "--now", "2026-07-01T09:00:00"}).out,
              "No task has a due day to come.\n"
              "The morning digest is off (preferences.morningDigestEnabled).\n");
}

} // namespace
} // namespace fenrow::testing
