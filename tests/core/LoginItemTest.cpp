#include "TestStore.h"

#include "shell/AppPreferences.h"
#include "shell/LoginItem.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

class LoginItemFile : public ::testing::Test {
protected:
    QByteArray entry() const
    {
        QFile file(item.entryPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void writeEntry(const QByteArray &text) const
    {
        QDir().mkpath(QFileInfo(item.entryPath()).absolutePath());
        QFile file(item.entryPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QTemporaryDir configHome;
    LoginItem item{configHome.filePath(QStringLiteral("autostart/fenrow.desktop"))};
    testing::LogCapture log{"fenrow.loginItem"};
    QStringList &loginItemMessages = testing::LogCapture::lines();
};

TEST_F(LoginItemFile, TheEntryIsWrittenWholeReadBackAndRemoved)
{
    EXPECT_FALSE(item.isEnabled());
    ASSERT_TRUE(item.setEnabled(true, QStringLiteral("/opt/fenrow/bin/fenrow")));
    EXPECT_EQ(entry(), QByteArray("[Desktop Entry]\n"
                                  "Type=Application\n"
                                  "Name=Fenrow\n"
                                  "Comment=Task flows, and what is ready to do next\n"
                                  "Exec=/opt/fenrow/bin/fenrow\n"
                                  "Icon=studio.tarnwick.Fenrow\n"
                                  "Terminal=false\n"
                                  "X-GNOME-Autostart-enabled=true\n"));
    EXPECT_TRUE(item.isEnabled());
    EXPECT_EQ(QDir(configHome.filePath("autostart")).entryList(QDir::Files), QStringList{"fenrow.desktop"})
        << "no temporary file left beside it";

    ASSERT_TRUE(item.setEnabled(false, QString()));
    EXPECT_FALSE(QFile::exists(item.entryPath()));
    EXPECT_FALSE(item.isEnabled());
    EXPECT_TRUE(item.setEnabled(false, QString())) << "nothing to remove is no failure";
    EXPECT_TRUE(loginItemMessages.isEmpty());
}

TEST_F(LoginItemFile, AnEntryTheDesktopWasToldToSkipIsOff)
{
    writeEntry("[Desktop Entry]\nType=Application\nExec=fenrow\nHidden=true\n");
    EXPECT_FALSE(item.isEnabled());
    writeEntry("[Desktop Entry]\nType=Application\nExec=fenrow\nX-GNOME-Autostart-enabled=false\n");
    EXPECT_FALSE(item.isEnabled()) << "as GNOME's startup settings leave it";
    writeEntry("[Desktop Entry]\nType=Application\nExec=fenrow\n\n[Desktop Action quit]\nHidden=true\n");
    EXPECT_TRUE(item.isEnabled()) << "only the entry's own group counts";
    ASSERT_TRUE(QFile::remove(item.entryPath()));
    ASSERT_TRUE(QDir().mkpath(item.entryPath()));
    EXPECT_FALSE(item.isEnabled()) << "a folder by that name is no entry";
}

TEST_F(LoginItemFile, TheEntryIsTheTruthForThePreference)
{
    AppPreferences preferences(
        std::make_unique<QSettings>(configHome.filePath(QStringLiteral("fenrow.conf")), QSettings::IniFormat));
    preferences.setLaunchAtLogin(true);
    // Removed in the desktop's own settings: the toggle shows it off.
    item.alignPreference(preferences);
    EXPECT_FALSE(preferences.launchAtLogin());
    ASSERT_TRUE(item.setEnabled(true, QStringLiteral("/usr/bin/fenrow")));
    item.alignPreference(preferences);
    EXPECT_TRUE(preferences.launchAtLogin());
    EXPECT_EQ(entry().count("Exec="), 1) << "aligning writes only the preference";
}

// Where the launcher entry is installed, login starts what the launcher
// starts: the nearest installed entry, copied. The widget has an entry of
// its own and a preference of its own.
TEST_F(LoginItemFile, TheInstalledLauncherEntryIsCopiedAndTheWidgetHasItsOwn)
{
    QTemporaryDir data;
    const QString nearer = data.filePath(QStringLiteral("home/applications"));
    const QString farther = data.filePath(QStringLiteral("usr/applications"));
    const auto install = [](const QString &folder, const QByteArray &text) {
        ASSERT_TRUE(QDir().mkpath(folder));
        QFile file(QDir(folder).filePath(QStringLiteral("studio.tarnwick.Fenrow.desktop")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    const QByteArray installed = "[Desktop Entry]\nType=Application\nName=Fenrow\nExec=fenrow %u\n"
                                 "Icon=studio.tarnwick.Fenrow\n\n[Desktop Action Ready]\nExec=fenrow fenrow://ready\n";
    install(farther, "[Desktop Entry]\nType=Application\nName=Fenrow\nExec=/usr/bin/fenrow\n");
    install(nearer, installed);

    const LoginItem fenrow(item.entryPath(), LoginProgram::fenrow, {nearer, farther});
    EXPECT_EQ(fenrow.installedEntry(), QDir(nearer).filePath(QStringLiteral("studio.tarnwick.Fenrow.desktop")));
    ASSERT_TRUE(fenrow.setEnabled(true, QStringLiteral("/home/ana/build/fenrow")));
    EXPECT_EQ(entry(), installed);
    EXPECT_TRUE(fenrow.isEnabled());

    // No widget entry is installed: the one written starts the program given.
    const LoginItem widget(configHome.filePath(QStringLiteral("autostart/fenrow-widget.desktop")), LoginProgram::widget,
                           {nearer, farther});
    EXPECT_TRUE(widget.installedEntry().isEmpty());
    ASSERT_TRUE(widget.setEnabled(true, QStringLiteral("/opt/fenrow/bin/fenrow-widget")));
    QFile written(widget.entryPath());
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray text = written.readAll();
    EXPECT_TRUE(text.contains("\nExec=/opt/fenrow/bin/fenrow-widget\n")) << text.constData();
    EXPECT_TRUE(text.contains("\nName=Fenrow Ready\n")) << text.constData();

    AppPreferences preferences(
        std::make_unique<QSettings>(configHome.filePath(QStringLiteral("fenrow.conf")), QSettings::IniFormat));
    widget.alignPreference(preferences);
    EXPECT_TRUE(preferences.widgetAtLogin());
    EXPECT_FALSE(preferences.launchAtLogin()) << "each entry aligns its own preference";
    ASSERT_TRUE(widget.setEnabled(false, QString()));
    widget.alignPreference(preferences);
    EXPECT_FALSE(preferences.widgetAtLogin());
    EXPECT_TRUE(fenrow.isEnabled()) << "removing one entry leaves the other";
}

TEST_F(LoginItemFile, AFailureToWriteIsLoggedAndLeavesNoEntry)
{
    // Where the folder should be, a file: no entry can go there.
    QFile blocker(configHome.filePath(QStringLiteral("autostart")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    EXPECT_FALSE(item.setEnabled(true, QStringLiteral("/usr/bin/fenrow")));
    EXPECT_FALSE(item.isEnabled());
    ASSERT_EQ(loginItemMessages.size(), 1);
    EXPECT_TRUE(loginItemMessages[0].startsWith(QStringLiteral("The autostart entry \"%1\" could not be written: ")
                                                     .arg(item.entryPath())))
        << loginItemMessages[0].toStdString();
}

TEST(LoginItemExec, TheProgramPathIsQuotedAndEscapedAsDesktopEntriesAsk)
{
    const struct {
        const char *path;
        const char *value;
    } cases[] = {
        {"/usr/bin/fenrow", "/usr/bin/fenrow"},
        {"/home/ana/My Apps/fenrow", "\"/home/ana/My Apps/fenrow\""},
        // Inside quotes ", `, $ and \ take a backslash; then the string's
        // own escaping doubles every backslash.
        {"/opt/a\"b/$x`y/fenrow", "\"/opt/a\\\\\"b/\\\\$x\\\\`y/fenrow\""},
        {"/opt/back\\slash/fenrow", "\"/opt/back\\\\\\\\slash/fenrow\""},
        {"/opt/100%/fenrow", "/opt/100%%/fenrow"},
        {"/opt/new\nline/fenrow", "\"/opt/new\\nline/fenrow\""},
        {"/opt/Görev/fenrow", "/opt/Görev/fenrow"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(LoginItem::execValue(QString::fromUtf8(c.path)), QString::fromUtf8(c.value)) << c.path;
}

} // namespace
} // namespace fenrow
