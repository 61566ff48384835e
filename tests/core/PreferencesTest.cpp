#include "shell/AppPreferences.h"

#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <functional>

namespace fenrow {
namespace {

// Settings files written by hand, as a user or an older version leaves
// them, each under a name of its own: QSettings keeps what it parsed per
// path for the life of the process.
class PreferencesFile : public ::testing::Test {
protected:
    QString write(const QByteArray &lines)
    {
        const QString path = folder.filePath(QStringLiteral("fenrow-%1.conf").arg(++m_files));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[General]\n" + lines);
        return path;
    }

    static std::unique_ptr<AppPreferences> load(const QString &path)
    {
        return std::make_unique<AppPreferences>(std::make_unique<QSettings>(path, QSettings::IniFormat));
    }

    std::unique_ptr<AppPreferences> loadLines(const QByteArray &lines) { return load(write(lines)); }

    // The file as a fresh process would parse it: copied to a new name.
    std::unique_ptr<AppPreferences> reloadFromDisk(const QString &path)
    {
        const QString copy = folder.filePath(QStringLiteral("copy-%1.conf").arg(++m_files));
        EXPECT_TRUE(QFile::copy(path, copy));
        return load(copy);
    }

    static QByteArray contents(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;

private:
    int m_files = 0;
};

TEST_F(PreferencesFile, NoFileGivesTheDefaultsAndStaysUnwritten)
{
    const QString path = folder.filePath(QStringLiteral("absent.conf"));
    {
        const auto preferences = load(path);
        // Defaults the damaged-value cases below do not already pin down.
        EXPECT_FALSE(preferences->hasCompletedOnboarding());
        EXPECT_TRUE(preferences->dueRemindersEnabled());
        EXPECT_FALSE(preferences->morningDigestEnabled());
        EXPECT_EQ(preferences->themeRaw(), "auto");
        EXPECT_EQ(preferences->readySortRaw(), "flow");
        EXPECT_EQ(preferences->lastAutoBackup(), std::nullopt);
    }
    EXPECT_FALSE(QFile::exists(path)) << "reading alone creates no file";
}

// One stored text per row, and what the field loads as.
struct NumberCase {
    const char *line;
    std::function<double(const AppPreferences &)> field;
    double expected;
};

TEST_F(PreferencesFile, NumbersAreHeldToTheirLimitsAndOtherTypesGiveTheDefault)
{
    const auto sidebar = [](const AppPreferences &p) { return p.sidebarWidth(); };
    const auto inspector = [](const AppPreferences &p) { return p.inspectorWidth(); };
    const auto notes = [](const AppPreferences &p) { return p.inspectorNotesHeight(); };
    const auto budget = [](const AppPreferences &p) { return double(p.dayPlanBudgetMinutes()); };
    const auto hour = [](const AppPreferences &p) { return double(p.dueReminderHour()); };
    const auto archive = [](const AppPreferences &p) { return double(p.autoArchiveDays()); };
    const std::vector<NumberCase> cases{
        {"preferences.sidebarWidth=100", sidebar, 216},
        {"preferences.sidebarWidth=1000", sidebar, 420},
        {"preferences.sidebarWidth=300.5", sidebar, 300.5},
        {"preferences.sidebarWidth=216", sidebar, 216},
        {"preferences.sidebarWidth=wide", sidebar, 260},
        {"preferences.sidebarWidth=nan", sidebar, 260},
        {"preferences.sidebarWidth=true", sidebar, 260},
        {"preferences.sidebarWidth=300, 310", sidebar, 260},
        {"preferences.sidebarWidth=@Point(300 310)", sidebar, 260},
        {"preferences.sidebarWidth=", sidebar, 260},
        {"preferences.inspectorWidth=10", inspector, 220},
        {"preferences.inspectorWidth=9999", inspector, 560},
        {"preferences.inspectorWidth=\"333\"", inspector, 333},
        {"preferences.inspectorWidth=narrow", inspector, 280},
        {"preferences.inspectorNotesHeight=-5", notes, 72},
        {"preferences.inspectorNotesHeight=481", notes, 480},
        {"preferences.inspectorNotesHeight=inf", notes, 120},
        {"preferences.dayPlanBudget=90", budget, 90},
        {"preferences.dayPlanBudget=-30", budget, -30},
        {"preferences.dayPlanBudget=1.5", budget, 240},
        {"preferences.dayPlanBudget=lots", budget, 240},
        {"preferences.dayPlanBudget=99999999999", budget, 240},
        {"preferences.dueReminderHour=0", hour, 0},
        {"preferences.dueReminderHour=23", hour, 23},
        {"preferences.dueReminderHour=24", hour, 9},
        {"preferences.dueReminderHour=-1", hour, 9},
        {"preferences.dueReminderHour=7.5", hour, 9},
        {"preferences.dueReminderHour=noon", hour, 9},
        {"preferences.autoArchiveDays=14", archive, 14},
        {"preferences.autoArchiveDays=-3", archive, 0},
        {"preferences.autoArchiveDays=2.9", archive, 2},
        {"preferences.autoArchiveDays=soon", archive, 0},
    };
    for (const NumberCase &row : cases) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(row.field(*loadLines(QByteArray(row.line) + '\n')), row.expected);
    }
}

TEST_F(PreferencesFile, DamagedValuesFallBackAndTheFileIsLeftAsItWas)
{
    const QString path = write("preferences.hasCompletedOnboarding=yes\n"
                               "preferences.hasSeededSampleFlow=1\n"
                               "preferences.launchAtLogin=perhaps\n"
                               "preferences.gridEnabled=0\n"
                               "preferences.sidebarCollapsed=TRUE\n"
                               "preferences.globalShortcut=@ByteArray({\"keyCode\": 49)\n"
                               "preferences.commandShortcuts=not json\n"
                               "preferences.theme=purple\n"
                               "preferences.accentPalette=1, 2\n"
                               "preferences.filterMode=hide\n"
                               "preferences.uiLanguage=tlh\n"
                               "preferences.lastCaptureFlowID=flow-42\n"
                               "preferences.readySort=dueDate\n"
                               "preferences.dayPlanBudgetUnit=days\n"
                               "preferences.dueRemindersEnabled=maybe\n"
                               "preferences.morningDigestEnabled=2\n"
                               "preferences.autoBackupBookmark=/home/someone/backups\n"
                               "preferences.lastAutoBackup=last tuesday\n"
                               "preferences.futureSetting=kept\n");
    const QByteArray before = contents(path);
    {
        const auto preferences = load(path);
        EXPECT_TRUE(preferences->hasCompletedOnboarding());
        EXPECT_TRUE(preferences->hasSeededSampleFlow());
        EXPECT_FALSE(preferences->launchAtLogin());
        EXPECT_FALSE(preferences->gridEnabled());
        EXPECT_TRUE(preferences->sidebarCollapsed());
        EXPECT_EQ(preferences->globalShortcut(), defaultGlobalShortcut);
        EXPECT_TRUE(preferences->commandShortcuts().isEmpty());
        // Unknown raw text is kept as it stands and read as the first case.
        EXPECT_EQ(preferences->themeRaw(), "purple");
        EXPECT_EQ(preferences->theme(), AppTheme::automatic);
        EXPECT_EQ(preferences->accentPaletteRaw(), "violet") << "a list is not text";
        EXPECT_EQ(preferences->filterMode(), FilterMode::hide);
        EXPECT_EQ(preferences->uiLanguageRaw(), "tlh");
        EXPECT_EQ(preferences->uiLanguage(), UiLanguage::automatic);
        EXPECT_EQ(preferences->lastCaptureFlowID(), std::nullopt);
        EXPECT_EQ(preferences->readySort(), ReadySort::dueDate);
        EXPECT_EQ(preferences->dayPlanBudgetUnitRaw(), "days");
        EXPECT_EQ(preferences->dayPlanBudgetUnit(), DayPlanBudgetUnit::minutes);
        EXPECT_TRUE(preferences->dueRemindersEnabled()) << "not a yes or no";
        EXPECT_TRUE(preferences->morningDigestEnabled());
        EXPECT_EQ(preferences->autoBackupBookmark(), std::nullopt) << "text is not a bookmark";
        EXPECT_EQ(preferences->lastAutoBackup(), std::nullopt);
    }
    EXPECT_EQ(contents(path), before);
}

TEST_F(PreferencesFile, ValidHandWrittenValuesAreRead)
{
    const auto preferences = loadLines("preferences.dueRemindersEnabled=false\n"
                                       "preferences.lastCaptureFlowID={6f1c2a4e-8d3b-4c5a-9e7f-0a1b2c3d4e5f}\n"
                                       "preferences.lastAutoBackup=2026-06-07T03:00:00Z\n"
                                       "preferences.autoBackupBookmark=@ByteArray(/home/someone/backups)\n"
                                       "preferences.uiLanguage=tr\n"
                                       "preferences.globalShortcut=\"{\\\"keyCode\\\": 40, \\\"modifierFlags\\\": 786432}\"\n");
    EXPECT_FALSE(preferences->dueRemindersEnabled());
    EXPECT_EQ(preferences->lastCaptureFlowID(), QUuid("{6f1c2a4e-8d3b-4c5a-9e7f-0a1b2c3d4e5f}"));
    EXPECT_EQ(preferences->lastAutoBackup(), QDateTime(QDate(2026, 6, 7), QTime(3, 0), Qt::UTC));
    EXPECT_EQ(preferences->autoBackupBookmark(), QByteArray("/home/someone/backups"));
    EXPECT_EQ(preferences->uiLanguage(), UiLanguage::tr);
    EXPECT_EQ(preferences->globalShortcut(), (KeyCombo{40, KeyModifier::control | KeyModifier::option}))
        << "JSON given as quoted text";
}

TEST_F(PreferencesFile, DamagedShortcutJsonGivesTheDefaultsUntilTheNextWrite)
{
    const std::vector<QByteArray> damaged{
        "[1, 2]",
        "{\"zoomIn\": {\"keyCode\": \"24\", \"modifierFlags\": 1048576}}",
        "{\"zoomIn\": {\"keyCode\": 70000, \"modifierFlags\": 1048576}}",
        "{\"zoomIn\": {\"keyCode\": 24}}",
        "{\"zoomIn\": {\"keyCode\": 24, \"modifierFlags\": -1}}",
        "{\"zoomIn\": {\"keyCode\": 24.5, \"modifierFlags\": 1048576}}",
        // One bad entry spoils the whole set, the good one included.
        "{\"undo\": {\"keyCode\": 7, \"modifierFlags\": 1048576}, \"zoomIn\": 24}",
    };
    for (const QByteArray &json : damaged) {
        SCOPED_TRACE(json.toStdString());
        // Quoted and escaped the way QSettings writes bytes itself.
        const QByteArray value = "\"@ByteArray(" + QByteArray(json).replace('"', "\\\"") + ")\"\n";
        const QString path = write("preferences.commandShortcuts=" + value + "preferences.globalShortcut=" + value);
        const auto preferences = load(path);
        EXPECT_TRUE(preferences->commandShortcuts().isEmpty());
        EXPECT_EQ(preferences->shortcut(ShortcutAction::undo), defaultShortcut(ShortcutAction::undo));
        EXPECT_EQ(preferences->globalShortcut(), defaultGlobalShortcut);

        preferences->setShortcut({46, KeyModifier::command}, ShortcutAction::zoomIn);
        const auto again = reloadFromDisk(path);
        EXPECT_EQ(again->shortcut(ShortcutAction::zoomIn), (KeyCombo{46, KeyModifier::command}));
        EXPECT_EQ(again->commandShortcuts().size(), 1);
    }
}

TEST_F(PreferencesFile, ShortcutsDefaultPerActionAndKeepEntriesOfOtherVersions)
{
    const QString path = write("preferences.commandShortcuts=\"{\\\"zoomIn\\\": {\\\"keyCode\\\": 34, "
                               "\\\"modifierFlags\\\": 1179648}, \\\"laterAction\\\": {\\\"keyCode\\\": 1, "
                               "\\\"modifierFlags\\\": 262144}}\"\n");
    const auto preferences = load(path);
    EXPECT_EQ(preferences->shortcut(ShortcutAction::zoomIn), (KeyCombo{34, 0x120000}));
    for (std::size_t i = 0; i < rawCaseCount<ShortcutAction>(); ++i) {
        const auto action = ShortcutAction(i);
        if (action != ShortcutAction::zoomIn) {
            EXPECT_EQ(preferences->shortcut(action), defaultShortcut(action)) << rawString(action).toStdString();
        }
    }

    preferences->setShortcut({12, KeyModifier::command | KeyModifier::option}, ShortcutAction::undo);
    const auto again = reloadFromDisk(path);
    EXPECT_EQ(again->shortcut(ShortcutAction::undo), (KeyCombo{12, 0x180000}));
    EXPECT_EQ(again->shortcut(ShortcutAction::zoomIn), (KeyCombo{34, 0x120000}));
    EXPECT_EQ(again->commandShortcuts().value("laterAction"), (KeyCombo{1, KeyModifier::control}))
        << "an action this version does not know survives the rewrite";

    again->setGlobalShortcut({0, KeyModifier::control});
    QSignalSpy changed(again.get(), &AppPreferences::changed);
    again->resetShortcuts();
    EXPECT_TRUE(again->commandShortcuts().isEmpty());
    EXPECT_EQ(again->globalShortcut(), (KeyCombo{49, 0x120000}));
    ASSERT_EQ(changed.size(), 2);
    EXPECT_EQ(changed[0][0].toString(), "preferences.commandShortcuts");
    EXPECT_EQ(changed[1][0].toString(), "preferences.globalShortcut");
    const auto reset = reloadFromDisk(again->defaults().fileName());
    EXPECT_TRUE(reset->commandShortcuts().isEmpty());
    EXPECT_EQ(reset->globalShortcut(), defaultGlobalShortcut);
}

TEST_F(PreferencesFile, SettersWriteThroughUnclampedAndSignalChangesOnly)
{
    const QString path = write("");
    const auto preferences = load(path);
    QSignalSpy changed(preferences.get(), &AppPreferences::changed);
    const QUuid flow("{0b7e4d52-1f3a-4c8e-b2d9-6a5f3e1c7d90}");
    const QDateTime backup(QDate(2026, 6, 7), QTime(3, 0, 0, 250), QTimeZone("Europe/Berlin"));

    preferences->setHasCompletedOnboarding(true);
    preferences->setHasSeededSampleFlow(true);
    preferences->setGlobalShortcut({40, KeyModifier::control | KeyModifier::shift});
    preferences->setLaunchAtLogin(true);
    preferences->setGridEnabled(true);
    preferences->setSidebarCollapsed(true);
    preferences->setSidebarWidth(1000);
    preferences->setInspectorWidth(100);
    preferences->setInspectorNotesHeight(300.25);
    preferences->setTheme(AppTheme::dark);
    preferences->setSizeByEstimate(true);
    preferences->setAccentPalette(AccentPalette::graphite);
    preferences->setFilterMode(FilterMode::hide);
    preferences->setUiLanguage(UiLanguage::de);
    preferences->setLastCaptureFlowID(flow);
    preferences->setReadySort(ReadySort::estimate);
    preferences->setDayPlanBudgetMinutes(-15);
    preferences->setDayPlanBudgetUnit(DayPlanBudgetUnit::hours);
    preferences->setDueRemindersEnabled(false);
    preferences->setMorningDigestEnabled(true);
    preferences->setDueReminderHour(30);
    preferences->setAutoArchiveDays(-2);
    preferences->setAutoBackupBookmark(QByteArray("/media/backup drive"));
    preferences->setLastAutoBackup(backup);
    EXPECT_EQ(changed.size(), 24) << "one signal for each field that changed";
    EXPECT_EQ(preferences->sidebarWidth(), 1000) << "setters do not clamp";
    EXPECT_EQ(preferences->dueReminderHour(), 30);

    // In the file as written, before any reader's limits.
    const QByteArray text = contents(path);
    EXPECT_TRUE(text.contains("preferences.sidebarWidth=1000\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("preferences.dueReminderHour=30\n"));
    EXPECT_TRUE(text.contains("preferences.lastCaptureFlowID=0b7e4d52-1f3a-4c8e-b2d9-6a5f3e1c7d90\n"));
    EXPECT_TRUE(text.contains("preferences.lastAutoBackup=2026-06-07T01:00:00.250Z\n"));
    EXPECT_TRUE(text.contains(R"(@ByteArray({\"keyCode\":40,\"modifierFlags\":393216}))"));

    const auto loaded = reloadFromDisk(path);
    EXPECT_TRUE(loaded->hasCompletedOnboarding());
    EXPECT_TRUE(loaded->hasSeededSampleFlow());
    EXPECT_EQ(loaded->globalShortcut(), (KeyCombo{40, 0x60000}));
    EXPECT_TRUE(loaded->launchAtLogin());
    EXPECT_TRUE(loaded->gridEnabled());
    EXPECT_TRUE(loaded->sidebarCollapsed());
    EXPECT_EQ(loaded->sidebarWidth(), 420) << "the load clamps";
    EXPECT_EQ(loaded->inspectorWidth(), 220);
    EXPECT_EQ(loaded->inspectorNotesHeight(), 300.25);
    EXPECT_EQ(loaded->themeRaw(), "dark");
    EXPECT_TRUE(loaded->sizeByEstimate());
    EXPECT_EQ(loaded->accentPaletteRaw(), "graphite");
    EXPECT_EQ(loaded->filterModeRaw(), "hide");
    EXPECT_EQ(loaded->uiLanguageRaw(), "de");
    EXPECT_EQ(loaded->lastCaptureFlowID(), flow);
    EXPECT_EQ(loaded->readySortRaw(), "estimate");
    EXPECT_EQ(loaded->dayPlanBudgetMinutes(), -15);
    EXPECT_EQ(loaded->dayPlanBudgetUnitRaw(), "hours");
    EXPECT_FALSE(loaded->dueRemindersEnabled());
    EXPECT_TRUE(loaded->morningDigestEnabled());
    EXPECT_EQ(loaded->dueReminderHour(), 9);
    EXPECT_EQ(loaded->autoArchiveDays(), 0);
    EXPECT_EQ(loaded->autoBackupBookmark(), QByteArray("/media/backup drive"));
    EXPECT_EQ(loaded->lastAutoBackup(), backup);

    // The same value again is written but is no change.
    changed.clear();
    preferences->setReadySort(ReadySort::estimate);
    preferences->setSidebarWidth(1000);
    EXPECT_EQ(changed.size(), 0);
    preferences->setSidebarWidth(300);
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toString(), "preferences.sidebarWidth");

    // None clears the key.
    preferences->setLastCaptureFlowID(std::nullopt);
    preferences->setAutoBackupBookmark(std::nullopt);
    preferences->setLastAutoBackup(std::nullopt);
    const QByteArray cleared = contents(path);
    EXPECT_FALSE(cleared.contains("lastCaptureFlowID"));
    EXPECT_FALSE(cleared.contains("autoBackupBookmark"));
    EXPECT_FALSE(cleared.contains("lastAutoBackup"));
    EXPECT_TRUE(cleared.contains("preferences.sidebarWidth=300\n"));
}

} // namespace
} // namespace fenrow
