#include "AppTestSupport.h"

#include "look/DesktopColorScheme.h"
#include "settings/SettingsWindow.h"
#include "shell/InterfaceLanguage.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

namespace fenrow::testing {
namespace {

// The settings window in each language: every page's texts fit, and each
// page is saved as a picture for review.
class SettingsLookTest : public WindowFixture, public ::testing::WithParamInterface<const char *> {
protected:
    void SetUp() override { ASSERT_TRUE(InterfaceLanguage::apply(GetParam())); }
    void TearDown() override { InterfaceLanguage::apply("en"); }
};

TEST_P(SettingsLookTest, EveryPageFits)
{
    const QString code = QString::fromLatin1(GetParam());
    store->saveAsTemplate(addFlow("Kitchen", 0, 0, 2));
    preferences->setAutoBackupBookmark(configHome.filePath("backups").toUtf8());
    preferences->setShortcut(defaultShortcut(ShortcutAction::undo), ShortcutAction::zoomToFit);
    // The General page with every toggle it can have.
    environment.setWidgetProgram(QStringLiteral("/usr/bin/fenrow-widget"));
    show();
    for (SettingsPage page : {SettingsPage::general, SettingsPage::shortcuts, SettingsPage::appearance,
                              SettingsPage::language, SettingsPage::languageModel, SettingsPage::data,
                              SettingsPage::about}) {
        window->openSettings(page);
        SettingsWindow &settings = *window->settingsWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&settings));
        QApplication::processEvents();
        QWidget &content = *settings.page(page);
        SCOPED_TRACE(content.objectName().toStdString());
        expectNothingClipped(content);
        // Pages fit the window's width: no sideways scrolling.
        auto *scroll = qobject_cast<QScrollArea *>(content.parentWidget()->parentWidget());
        ASSERT_NE(scroll, nullptr);
        EXPECT_FALSE(scroll->horizontalScrollBar()->isVisible());
        saveScreenshot(settings, content.objectName().replace('.', '-') + '-' + code);
    }
}

// Where the desktop refused the quick-capture key, the Shortcuts page says
// so in place of its promise, and points to `fenrow --capture`.
TEST_P(SettingsLookTest, TheRefusedKeysLineFits)
{
    environment.setGlobalHotkeyState(GlobalHotkeyState::failed);
    show();
    window->openSettings(SettingsPage::shortcuts);
    SettingsWindow &settings = *window->settingsWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&settings));
    QApplication::processEvents();
    QWidget &content = *settings.page(SettingsPage::shortcuts);
    auto *line = content.findChild<QLabel *>(QStringLiteral("settings.shortcuts.globalUnavailable"));
    ASSERT_NE(line, nullptr);
    EXPECT_TRUE(line->isVisible());
    EXPECT_TRUE(line->text().contains(QStringLiteral("fenrow --capture")));
    expectNothingClipped(content);
    saveScreenshot(settings, QStringLiteral("settings-page-shortcuts-refused-") + QString::fromLatin1(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Languages, SettingsLookTest, ::testing::Values("en", "de", "tr", "es", "fr"));

class DarkLookTest : public WindowFixture {};

TEST_F(DarkLookTest, ReadyListAndCanvasInDark)
{
    preferences->setTheme(AppTheme::dark);
    const TaskFlow &move = addFlow("Move to Leipzig", 1, 1, 3);
    const FlowNode &late = *store->addNode("Book the movers", move);
    store->setDueDate(clock.now().addDays(-2), late);
    store->setPriority(NodePriority::high, late);
    store->setEstimate(45, late);
    addFlow("Tax return 2025", 0, 0, 2);
    show();
    window->setRoute(DetailRoute::ready());
    const QImage shot = saveScreenshot(*window, "ready-list-dark-en");
    // Dark ground, light text somewhere on it.
    EXPECT_LT(QColor(shot.pixel(shot.width() - 10, shot.height() - 10)).lightness(), 60);
    window->selectFlow(move.id);
    const QImage flow = saveScreenshot(*window, "main-window-dark-en");
    EXPECT_LT(QColor(flow.pixel(flow.width() - 10, flow.height() - 10)).lightness(), 60);
}

// What the desktop's configuration files say about dark windows.
class DesktopColorSchemeTest : public ::testing::Test {
protected:
    void write(const QString &path, const QByteArray &text)
    {
        ASSERT_TRUE(QFileInfo(home.filePath(path)).dir().mkpath("."));
        QFile file(home.filePath(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    }
    std::optional<bool> read(const QByteArray &gtkTheme = {}) const
    {
        return DesktopColorScheme::fromConfiguration(home.path(), gtkTheme);
    }

    QTemporaryDir home;
};

TEST_F(DesktopColorSchemeTest, ReadsGtkAndKdeSettings)
{
    EXPECT_EQ(read(), std::nullopt) << "nothing configured says nothing";
    EXPECT_EQ(read("Adwaita:dark"), true);
    EXPECT_EQ(read("Adwaita"), false);

    write("kdeglobals", "[Colors:Window]\nBackgroundNormal=32,35,38\n");
    EXPECT_EQ(read(), true);
    write("kdeglobals", "[Colors:Window]\nBackgroundNormal=239,240,241\n");
    EXPECT_EQ(read(), false);
    write("kdeglobals", "[General]\nColorScheme=BreezeDark\n[Colors:Window]\nBackgroundNormal=239,240,241\n");
    EXPECT_EQ(read(), true) << "the scheme's name goes before its colours";

    // GTK's own settings go before KDE's, GTK 4 before GTK 3.
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita\n");
    EXPECT_EQ(read(), false);
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-application-prefer-dark-theme=true\n");
    EXPECT_EQ(read(), true);
    write("gtk-4.0/settings.ini", "[Settings]\ngtk-application-prefer-dark-theme=0\n");
    EXPECT_EQ(read(), false);
    write("gtk-4.0/settings.ini", "[Settings]\ngtk-theme-name=Yaru-dark\n");
    EXPECT_EQ(read(), true);
    write("gtk-4.0/settings.ini", "[Settings]\n");
    EXPECT_EQ(read(), true) << "an empty GTK 4 file leaves it to GTK 3";
    EXPECT_EQ(read("Adwaita"), false) << "the variable overrides the files";
}

} // namespace
} // namespace fenrow::testing
