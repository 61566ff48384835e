#include "AppTestSupport.h"
#include "TinyModel.h"

#include "program/AppShell.h"
#include "look/BrandPalette.h"
#include "look/InterfaceLook.h"
#include "lists/ReadyListView.h"
#include "settings/SettingsDataPage.h"
#include "settings/SettingsModelPage.h"
#include "settings/SettingsShortcutsPage.h"
#include "settings/SettingsWindow.h"
#include "settings/ShortcutRecorderButton.h"
#include "sidebar/SidebarRouteRow.h"
#include "look/Theme.h"
#include "program/UuidText.h"
#include "shell/InterfaceLanguage.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QProgressBar>
#include <QScreen>
#include <QRegularExpression>
#include <QRadioButton>
#include <QSpinBox>

namespace fenrow::testing {
namespace {

class SettingsWindowTest : public WindowFixture {
protected:
    void TearDown() override { InterfaceLanguage::apply(QStringLiteral("en")); }

    SettingsWindow &openSettings(SettingsPage page = SettingsPage::general)
    {
        if (!window)
            show();
        window->openSettings(page);
        SettingsWindow *settings = window->settingsWindow();
        EXPECT_NE(settings, nullptr);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(settings));
        return *settings;
    }

    template <typename T>
    T *control(SettingsPage page, const char *name) const
    {
        T *found = window->settingsWindow()->page(page)->findChild<T *>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    // What a fresh reader of the settings file sees: the write went through.
    std::unique_ptr<AppPreferences> reread() const { return std::make_unique<AppPreferences>(SettingsFile::open()); }

    // A change of language or look rebuilds the trees from the event loop.
    void waitForRebuild(const QString &identity)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return window->look()->identity() == identity; }));
        QApplication::processEvents();
        QApplication::processEvents();
    }
};

TEST_F(SettingsWindowTest, OpensFromMenuSidebarAndOnItsAboutPage)
{
    show();
    QAction *menu = window->menuBar()->findChild<QAction *>(QStringLiteral("menu.settings"));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Comma));
    menu->trigger();
    SettingsWindow *settings = window->settingsWindow();
    ASSERT_NE(settings, nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(settings));
    EXPECT_TRUE(settings->isWindow());
    // Over the main window, and whole on the screen.
    EXPECT_LE((settings->frameGeometry().center() - window->frameGeometry().center()).manhattanLength(), 2);
    EXPECT_TRUE(window->screen()->availableGeometry().contains(settings->frameGeometry()));
    EXPECT_EQ(settings->currentPage(), SettingsPage::general);

    // Escape closes it; the sidebar's button brings the same window back.
    // Its keys reach it once it is the active window, which a slow machine
    // takes a moment to make it.
    settings->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(settings));
    // The shortcut goes by the application's active window, which follows
    // the window system's a little later.
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == settings; }));
    QTest::keyClick(settings, Qt::Key_Escape);
    EXPECT_FALSE(settings->isVisible());
    window->findChild<QAbstractButton *>(QStringLiteral("sidebar.action.settings"))->click();
    EXPECT_TRUE(settings->isVisible());
    EXPECT_EQ(window->settingsWindow(), settings);

    window->openSettings(SettingsPage::about);
    EXPECT_EQ(settings->currentPage(), SettingsPage::about);
    const auto *version = settings->page(SettingsPage::about)->findChild<QLabel *>("settings.about.version");
    ASSERT_NE(version, nullptr);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("\\d+\\.\\d+")).match(version->text()).hasMatch())
        << version->text().toStdString();
    EXPECT_TRUE(version->isVisible());
}

TEST_F(SettingsWindowTest, EachControlWritesItsPreferenceAndFollowsIt)
{
    openSettings();
    control<QCheckBox>(SettingsPage::general, "settings.general.launchAtLogin")->click();
    control<QCheckBox>(SettingsPage::general, "settings.general.morningDigest")->click();
    auto *hour = control<QComboBox>(SettingsPage::general, "settings.general.dueReminderHour");
    hour->setCurrentIndex(hour->findData(7));
    control<QCheckBox>(SettingsPage::general, "settings.general.dueReminders")->click();
    EXPECT_FALSE(hour->isEnabled()) << "no hour without reminders";
    control<QComboBox>(SettingsPage::general, "settings.general.dayPlanBudgetUnit")->setCurrentIndex(1);
    auto *budget = control<QSpinBox>(SettingsPage::general, "settings.general.dayPlanBudget");
    EXPECT_EQ(budget->value(), 4) << "240 minutes shown in hours";
    budget->setValue(3);
    control<QComboBox>(SettingsPage::general, "settings.general.filterMode")->setCurrentIndex(1);

    control<QCheckBox>(SettingsPage::appearance, "settings.appearance.grid")->click();
    control<QCheckBox>(SettingsPage::appearance, "settings.appearance.sizeByEstimate")->click();

    auto *archive = control<QComboBox>(SettingsPage::data, "settings.data.autoArchive");
    archive->setCurrentIndex(archive->findData(14));
    auto *data = static_cast<SettingsDataPage *>(window->settingsWindow()->page(SettingsPage::data));
    data->setBackupFolder(configHome.filePath("backups/"));

    const std::unique_ptr<AppPreferences> saved = reread();
    EXPECT_TRUE(saved->launchAtLogin());
    EXPECT_TRUE(saved->morningDigestEnabled());
    EXPECT_EQ(saved->dueReminderHour(), 7);
    EXPECT_FALSE(saved->dueRemindersEnabled());
    EXPECT_EQ(saved->dayPlanBudgetUnit(), DayPlanBudgetUnit::hours);
    EXPECT_EQ(saved->dayPlanBudgetMinutes(), 180);
    EXPECT_EQ(saved->filterMode(), FilterMode::hide);
    EXPECT_TRUE(saved->gridEnabled());
    EXPECT_TRUE(saved->sizeByEstimate());
    EXPECT_EQ(saved->autoArchiveDays(), 14);
    EXPECT_EQ(saved->autoBackupBookmark(), QDir::cleanPath(configHome.filePath("backups")).toUtf8());
    EXPECT_TRUE(control<QPushButton>(SettingsPage::data, "settings.data.autoBackup.off")->isEnabled());
    control<QPushButton>(SettingsPage::data, "settings.data.autoBackup.off")->click();
    EXPECT_EQ(reread()->autoBackupBookmark(), std::nullopt);

    // Changed elsewhere (the command line, another page), shown here.
    preferences->setFilterMode(FilterMode::dim);
    preferences->setAutoArchiveDays(5);
    preferences->setDueRemindersEnabled(true);
    EXPECT_EQ(control<QComboBox>(SettingsPage::general, "settings.general.filterMode")->currentIndex(), 0);
    EXPECT_EQ(archive->currentData().toInt(), 5);
    EXPECT_TRUE(hour->isEnabled());
}

TEST_F(SettingsWindowTest, TemplatesAreListedAndDeleted)
{
    const FlowTemplate *kept = store->saveAsTemplate(addFlow("Kitchen", 0, 0, 2));
    const FlowTemplate *dropped = store->saveAsTemplate(addFlow("Garden", 0, 0, 1));
    openSettings(SettingsPage::data);
    QWidget *list = window->settingsWindow()->page(SettingsPage::data)->findChild<QWidget *>("settings.data.templates");
    ASSERT_NE(list, nullptr);
    const QString droppedId = uuidText(dropped->id);
    auto *remove = list->findChild<QAbstractButton *>("settings.data.templates.delete." + droppedId);
    ASSERT_NE(remove, nullptr);
    remove->click();
    QApplication::processEvents();
    ASSERT_EQ(store->templateList().size(), 1);
    EXPECT_EQ(store->templateList().first(), kept);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return !list->findChild<QWidget *>("settings.data.templates.row." + droppedId);
    }));

    store->deleteTemplate(*kept);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto *empty = list->findChild<QLabel *>("settings.data.templates.empty");
        return empty && empty->isVisible();
    }));
}

TEST_F(SettingsWindowTest, RecorderTakesCombinationsWithAModifierAndExplainsRefusals)
{
    SettingsWindow &settings = openSettings(SettingsPage::shortcuts);
    auto *page = static_cast<SettingsShortcutsPage *>(settings.page(SettingsPage::shortcuts));
    ShortcutRecorderButton *zoomIn = page->recorder("zoomIn");
    QLabel *message = page->message("zoomIn");
    ASSERT_NE(zoomIn, nullptr);
    const QString controlEquals = QKeySequence(Qt::CTRL | Qt::Key_Equal).toString(QKeySequence::NativeText);
    EXPECT_EQ(zoomIn->text(), controlEquals);

    zoomIn->click();
    ASSERT_TRUE(zoomIn->isRecording());
    EXPECT_EQ(zoomIn->text(), qtTrId("shortcut.recorder.recording"));
    QTest::keyClick(zoomIn, Qt::Key_A);
    EXPECT_TRUE(zoomIn->isRecording()) << "a bare letter is refused and recording goes on";
    EXPECT_TRUE(message->isVisible());
    EXPECT_EQ(message->text(), qtTrId("settings.shortcuts.needsModifier"));
    QTest::keyClick(zoomIn, Qt::Key_F5, Qt::ControlModifier);
    EXPECT_EQ(message->text(), qtTrId("settings.shortcuts.unsupportedKey"));
    EXPECT_TRUE(zoomIn->isRecording());

    QTest::keyClick(zoomIn, Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(zoomIn->isRecording());
    const KeyCombo controlShiftK{40, KeyModifier::command | KeyModifier::shift};
    EXPECT_EQ(reread()->shortcut(ShortcutAction::zoomIn), controlShiftK);
    EXPECT_EQ(zoomIn->text(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K).toString(QKeySequence::NativeText));
    EXPECT_FALSE(message->isVisible());

    // Escape while recording gives up without closing the window.
    zoomIn->click();
    QTest::keyClick(zoomIn, Qt::Key_Escape);
    EXPECT_FALSE(zoomIn->isRecording());
    EXPECT_TRUE(settings.isVisible());
    EXPECT_EQ(preferences->shortcut(ShortcutAction::zoomIn), controlShiftK);

    // Undo's keys on zoom out are taken, and both rows say they are shared.
    ShortcutRecorderButton *zoomOut = page->recorder("zoomOut");
    zoomOut->click();
    QTest::keyClick(zoomOut, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(preferences->shortcut(ShortcutAction::zoomOut), defaultShortcut(ShortcutAction::undo));
    EXPECT_TRUE(page->message("zoomOut")->isVisible());
    EXPECT_TRUE(page->message("zoomOut")->text().contains(page->recorder("undo")->accessibleName()));
    EXPECT_TRUE(page->message("undo")->text().contains(zoomOut->accessibleName()));

    // Quick capture's keys are recorded the same way, into their own key.
    ShortcutRecorderButton *capture = page->recorder("globalShortcut");
    ASSERT_NE(capture, nullptr);
    capture->click();
    QTest::keyClick(capture, Qt::Key_Space, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(reread()->globalShortcut(), (KeyCombo{49, KeyModifier::command | KeyModifier::option}));

    // A key without a name shows as unknown, after its modifiers.
    EXPECT_TRUE(ShortcutRecorderButton::label({KeyCode::forwardDelete, KeyModifier::command})
                    .endsWith(qtTrId("shortcut.key.unknown")));

    settings.findChild<QPushButton *>("settings.shortcuts.reset")->click();
    EXPECT_EQ(preferences->globalShortcut(), defaultGlobalShortcut);
    EXPECT_EQ(zoomIn->text(), controlEquals);
    EXPECT_FALSE(page->message("zoomOut")->isVisible());
    EXPECT_FALSE(page->message("undo")->isVisible());
}

TEST_F(SettingsWindowTest, ThemeAndPaletteRecolourTheRunningWindow)
{
    preferences->setTheme(AppTheme::light);
    addFlow("Kitchen", 1, 1, 2);
    show();
    window->setRoute(DetailRoute::ready());
    const QColor lightSidebar = window->sidebar()->palette().color(QPalette::Window);
    EXPECT_GT(lightSidebar.lightness(), 200);
    SettingsWindow &settings = openSettings(SettingsPage::appearance);

    control<QRadioButton>(SettingsPage::appearance, "settings.appearance.theme.dark")->click();
    EXPECT_EQ(reread()->theme(), AppTheme::dark);
    waitForRebuild(QStringLiteral("en#violet#dark"));
    const BrandRamp dark = BrandPalette::ramp(AccentPalette::violet, true);
    EXPECT_EQ(window->sidebar()->palette().color(QPalette::Window), dark.brandSubtle);
    EXPECT_LT(window->readyList()->palette().color(QPalette::Window).lightness(), 60);
    EXPECT_GT(window->readyList()->palette().color(QPalette::WindowText).lightness(), 200);
    EXPECT_LT(settings.palette().color(QPalette::Window).lightness(), 60);
    // What is drawn, not only what is set: the middle of the list is dark.
    const QImage shot = window->grab().toImage();
    EXPECT_LT(QColor(shot.pixel(shot.width() * 3 / 4, shot.height() - 20)).lightness(), 60);

    control<QAbstractButton>(SettingsPage::appearance, "settings.appearance.palette.green")->click();
    EXPECT_EQ(reread()->accentPalette(), AccentPalette::green);
    waitForRebuild(QStringLiteral("en#green#dark"));
    EXPECT_EQ(Theme::Color::accent, BrandPalette::ramp(AccentPalette::green, true).brand);
    EXPECT_EQ(window->sidebar()->palette().color(QPalette::Window),
              BrandPalette::ramp(AccentPalette::green, true).brandSubtle);

    // The page itself is built again, on the same page, with the choices shown.
    EXPECT_EQ(settings.currentPage(), SettingsPage::appearance);
    EXPECT_TRUE(control<QRadioButton>(SettingsPage::appearance, "settings.appearance.theme.dark")->isChecked());
    EXPECT_TRUE(control<QAbstractButton>(SettingsPage::appearance, "settings.appearance.palette.green")->isChecked());

    control<QRadioButton>(SettingsPage::appearance, "settings.appearance.theme.light")->click();
    waitForRebuild(QStringLiteral("en#green#light"));
    EXPECT_GT(window->sidebar()->palette().color(QPalette::Window).lightness(), 200);
}

TEST_F(SettingsWindowTest, LanguageSwitchRetranslatesWithoutRestart)
{
    addFlow("Kitchen", 0, 0, 1);
    show();
    window->setRoute(DetailRoute::ready());
    const QString englishReady = window->sidebar()->readyRow()->text();
    SettingsWindow &settings = openSettings(SettingsPage::language);
    const QString englishTitle = settings.windowTitle();

    control<QRadioButton>(SettingsPage::language, "settings.language.de")->click();
    EXPECT_EQ(reread()->uiLanguageRaw(), "de");
    waitForRebuild(QStringLiteral("de#violet#light"));
    ASSERT_EQ(InterfaceLanguage::current(), "de");
    // The texts now come from the German catalogue, and differ from before.
    EXPECT_EQ(window->sidebar()->readyRow()->text(), qtTrId("sidebar.route.ready"));
    EXPECT_NE(window->sidebar()->readyRow()->text(), englishReady);
    EXPECT_EQ(window->windowTitle(), qtTrId("ready.title"));
    EXPECT_EQ(window->route(), DetailRoute::ready()) << "the user stays where they were";
    EXPECT_EQ(settings.windowTitle(), qtTrId("settings.title"));
    EXPECT_NE(settings.windowTitle(), englishTitle);
    EXPECT_EQ(settings.currentPage(), SettingsPage::language);
    EXPECT_EQ(settings.findChild<QListWidget *>("settings.pages")->item(0)->text(), qtTrId("settings.page.general"));
    EXPECT_EQ(window->menuBar()->findChild<QMenu *>("menu.file")->title(), qtTrId("menu.file"));
    EXPECT_EQ(window->menuBar()->findChild<QAction *>("menu.settings")->text(), qtTrId("menu.settings"));

    control<QRadioButton>(SettingsPage::language, "settings.language.en")->click();
    waitForRebuild(QStringLiteral("en#violet#light"));
    EXPECT_EQ(window->sidebar()->readyRow()->text(), englishReady);
}

TEST_F(SettingsWindowTest, BackUpNowWritesIntoTheFolderAndSaysWhenItFailed)
{
    // The program's shell holds the maintenance the page's button runs.
    AppEnvironment shellEnvironment({AppEnvironment::uiTestArgument});
    AppShell shell(*store, *history, activeFlow, *preferences, shellEnvironment);
    addFlow("Kitchen", 1, 0, 2);
    const QString folder = configHome.filePath(QStringLiteral("backups"));
    ASSERT_TRUE(QDir().mkpath(folder));
    preferences->setAutoBackupBookmark(folder.toUtf8());
    openSettings(SettingsPage::data);
    auto *backUp = control<QPushButton>(SettingsPage::data, "settings.data.autoBackup.now");
    auto *failed = control<QLabel>(SettingsPage::data, "settings.data.autoBackup.failed");
    auto *last = control<QLabel>(SettingsPage::data, "settings.data.autoBackup.last");
    ASSERT_TRUE(backUp && failed && last);
    EXPECT_TRUE(backUp->isVisible());
    EXPECT_TRUE(backUp->isEnabled());
    EXPECT_FALSE(failed->isVisible());
    EXPECT_EQ(last->text(), qtTrId("settings.data.autoBackup.never"));

    QTest::mouseClick(backUp, Qt::LeftButton);
    const QString written = QDir(folder).filePath(QStringLiteral("Fenrow Auto Backup 2026-06-10.fenrowbackup"));
    EXPECT_TRUE(QFileInfo::exists(written));
    EXPECT_EQ(preferences->lastAutoBackup(), clock.now());
    EXPECT_NE(last->text(), qtTrId("settings.data.autoBackup.never"));
    EXPECT_FALSE(failed->isVisible());

    // The folder vanished: the page says so, and the last good backup
    // keeps its date.
    ASSERT_TRUE(QDir(folder).removeRecursively());
    clock.advanceSeconds(3600);
    QTest::mouseClick(backUp, Qt::LeftButton);
    EXPECT_TRUE(failed->isVisible());
    EXPECT_EQ(failed->text(), qtTrId("settings.data.autoBackup.failed"));
    EXPECT_EQ(preferences->lastAutoBackup(), clock.now().addSecs(-3600));
    QApplication::processEvents();
    saveScreenshot(*window->settingsWindow(), "settings-data-backup-failed");

    // Back again, the next backup clears the warning.
    ASSERT_TRUE(QDir().mkpath(folder));
    QTest::mouseClick(backUp, Qt::LeftButton);
    EXPECT_FALSE(failed->isVisible());
    EXPECT_EQ(preferences->lastAutoBackup(), clock.now());

    // Without a folder there is nothing to back up into.
    control<QPushButton>(SettingsPage::data, "settings.data.autoBackup.off")->click();
    EXPECT_FALSE(backUp->isEnabled());
}

TEST_F(SettingsWindowTest, LaunchAtLoginWritesTheAutostartEntryOrGoesBack)
{
    const QString entry = configHome.filePath(QStringLiteral("autostart/fenrow.desktop"));
    openSettings();
    auto *login = control<QCheckBox>(SettingsPage::general, "settings.general.launchAtLogin");
    auto *failed = control<QLabel>(SettingsPage::general, "settings.general.launchAtLogin.failed");
    ASSERT_TRUE(login && failed);
    login->click();
    EXPECT_TRUE(QFileInfo(entry).isFile());
    login->click();
    EXPECT_FALSE(QFileInfo::exists(entry));
    EXPECT_FALSE(failed->isVisible());

    // Where the autostart folder should be, a file: the toggle goes back
    // and says where it could not write.
    ASSERT_TRUE(QDir(configHome.filePath(QStringLiteral("autostart"))).removeRecursively());
    QFile blocker(configHome.filePath(QStringLiteral("autostart")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    login->click();
    EXPECT_FALSE(login->isChecked());
    EXPECT_FALSE(reread()->launchAtLogin());
    EXPECT_TRUE(failed->isVisible());
    EXPECT_TRUE(failed->text().contains(configHome.filePath(QStringLiteral("autostart"))));
}

// The widget's toggle is there only where the widget program is, and it
// writes the widget's own autostart entry.
TEST_F(SettingsWindowTest, WidgetAtLoginIsOfferedOnlyWhereTheWidgetIs)
{
    environment.setWidgetProgram(QString());
    openSettings();
    EXPECT_EQ(window->settingsWindow()->page(SettingsPage::general)->findChild<QCheckBox *>(
                  QStringLiteral("settings.general.widgetAtLogin")),
              nullptr);
    window.reset();

    environment.setWidgetProgram(QStringLiteral("/opt/fenrow/bin/fenrow-widget"));
    openSettings();
    auto *widget = control<QCheckBox>(SettingsPage::general, "settings.general.widgetAtLogin");
    ASSERT_NE(widget, nullptr);
    widget->click();
    EXPECT_TRUE(QFileInfo(configHome.filePath(QStringLiteral("autostart/fenrow-widget.desktop"))).isFile());
    EXPECT_FALSE(QFileInfo::exists(configHome.filePath(QStringLiteral("autostart/fenrow.desktop"))));
    EXPECT_TRUE(reread()->widgetAtLogin());
    EXPECT_FALSE(reread()->launchAtLogin());
}

// The page writes only the preference; the model follows it here as the
// program makes it follow. A real helper loads a tiny model.
TEST_F(SettingsWindowTest, TheModelPageChoosesLoadsAndTriesAModelAndRefusesAFileThatIsNone)
{
    QString problem;
    const QString tiny = testing::tinyModel(&problem);
    ASSERT_FALSE(tiny.isEmpty()) << problem.toStdString();
    QTemporaryDir models;
    LanguageModel model;
    ASSERT_EQ(LanguageModel::current(), &model);
    QObject::connect(preferences.get(), &AppPreferences::changed, &model, [&](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::languageModelPath))
            model.choose(preferences->languageModelPath());
    });

    openSettings(SettingsPage::languageModel);
    auto *page = static_cast<SettingsModelPage *>(window->settingsWindow()->page(SettingsPage::languageModel));
    auto *state = control<QLabel>(SettingsPage::languageModel, "settings.model.state");
    auto *progress = control<QProgressBar>(SettingsPage::languageModel, "settings.model.progress");
    auto *tryIt = control<QPushButton>(SettingsPage::languageModel, "settings.model.try");
    auto *trial = control<QLabel>(SettingsPage::languageModel, "settings.model.trial");
    auto *refused = control<QLabel>(SettingsPage::languageModel, "settings.model.refused");
    ASSERT_TRUE(state && progress && tryIt && trial && refused);
    EXPECT_EQ(state->text(), qtTrId("settings.model.state.none"));
    EXPECT_FALSE(tryIt->isEnabled());

    // What the page showed at each step of the loading.
    QStringList shown;
    bool progressShown = false;
    auto *remove = control<QPushButton>(SettingsPage::languageModel, "settings.model.remove");
    QObject::connect(&model, &LanguageModel::statusChanged, state, [&] {
        shown << state->text();
        // Loading is given up with the same button that removes the model.
        if (progress->isVisible())
            shown << remove->text();
        progressShown = progressShown || progress->isVisible();
    });
    page->chooseFile(tiny);
    EXPECT_EQ(reread()->languageModelPath(), tiny);
    EXPECT_EQ(control<QLabel>(SettingsPage::languageModel, "settings.model.file")->text(), "tiny.gguf");
    ASSERT_TRUE(QTest::qWaitFor([&] { return model.status().state == ModelStatus::State::Ready; }, 120000))
        << state->text().toStdString();
    QApplication::processEvents();
    EXPECT_TRUE(shown.contains(qtTrId("settings.model.state.loading"))) << shown.join(" | ").toStdString();
    EXPECT_TRUE(progressShown);
    EXPECT_TRUE(shown.contains("Stop Loading")) << shown.join(" | ").toStdString();
    EXPECT_EQ(remove->text(), "Remove");
    EXPECT_FALSE(progress->isVisible());
    EXPECT_TRUE(state->text().startsWith("Loaded: ")) << state->text().toStdString();
    EXPECT_TRUE(state->text().contains(QLocale(QLocale::English).toString(model.status().model.contextSize)))
        << state->text().toStdString();

    ASSERT_TRUE(tryIt->isEnabled());
    QTest::mouseClick(tryIt, Qt::LeftButton);
    EXPECT_FALSE(tryIt->isEnabled()) << "one trial at a time";
    const QRegularExpression speed(QStringLiteral("^\\d+ tokens in \\d+\\.\\d s \\(\\d+\\.\\d tokens per second\\)$"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return tryIt->isEnabled(); }, 120000));
    EXPECT_TRUE(speed.match(trial->text()).hasMatch()) << trial->text().toStdString();
    saveScreenshot(*window->settingsWindow(), "settings-model-loaded");

    // Text with a model's name stays out, and the choice stays.
    const QString notes = models.filePath(QStringLiteral("notes.gguf"));
    QFile file(notes);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("These are notes, not a model.\n");
    file.close();
    page->chooseFile(notes);
    EXPECT_TRUE(refused->isVisible());
    EXPECT_EQ(refused->text(), "notes.gguf is not a GGUF model file. The chosen model stays as it was.");
    EXPECT_EQ(reread()->languageModelPath(), tiny);
    EXPECT_EQ(model.status().state, ModelStatus::State::Ready);
    QApplication::processEvents();
    saveScreenshot(*window->settingsWindow(), "settings-model-refused");

    remove->click();
    EXPECT_EQ(reread()->languageModelPath(), std::nullopt);
    EXPECT_EQ(state->text(), qtTrId("settings.model.state.none"));
    EXPECT_FALSE(tryIt->isEnabled());
}

} // namespace
} // namespace fenrow::testing
