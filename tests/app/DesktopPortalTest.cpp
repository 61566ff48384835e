#include "AppTestSupport.h"
#include "DesktopPortalProcesses.h"
#include "LineProcess.h"
#include "look/InterfaceLook.h"

#include <QDir>
#include <QUrl>

#include <csignal>

namespace fenrow::testing
{
namespace
{

// The automatic theme follows the desktop portal's light or dark choice,
// from the start and as the desktop changes it; where no portal runs, the
// desktop's settings files decide as before.
class PortalLookTest : public WindowFixture
{
protected:
    // The window rebuilt in the dark or light colours, painted with its
    // content.
    bool shows(bool dark)
    {
        const auto *root = window->findChild<QWidget *>(QStringLiteral("main.window.root"));
        if (window->look()->isDark() != dark || !root || !root->isVisible())
            return false;
        const QImage shot = window->grab().toImage();
        const int ground = QColor(shot.pixel(shot.width() - 10, shot.height() - 10)).lightness();
        return dark ? ground < 60 : ground > 200;
    }
};

TEST_F(PortalLookTest, TheAutomaticThemeFollowsTheDesktopPortal)
{
    preferences->setTheme(AppTheme::automatic);
    addFlow("Move to Leipzig", 1, 1, 3);
    // A settings file that says dark, which only counts without a portal.
    const QString gtkSettings = configHome.filePath("gtk-3.0/settings.ini");
    ASSERT_TRUE(QDir().mkpath(QFileInfo(gtkSettings).path()));
    {
        QFile file(gtkSettings);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Settings]\ngtk-application-prefer-dark-theme=true\n");
    }
    {
        DesktopPortalProcesses desktop(QStringLiteral("prefer-light"));
        ASSERT_TRUE(desktop.started());
        show();
        EXPECT_FALSE(window->look()->isDark()) << "the portal goes before the settings file";
        ASSERT_TRUE(desktop.set(QStringLiteral("prefer-dark")));
        EXPECT_TRUE(QTest::qWaitFor([&] { return shows(true); }, 15000));
        saveScreenshot(*window, "portal-followed-dark");
        ASSERT_TRUE(desktop.set(QStringLiteral("prefer-light")));
        EXPECT_TRUE(QTest::qWaitFor([&] { return shows(false); }, 15000));
        saveScreenshot(*window, "portal-followed-light");
        window.reset();
    }
    show();
    EXPECT_TRUE(window->look()->isDark()) << "without a portal, the settings file decides again";
}

// The program itself with the desktop's file dialogs: Qt's portal theme,
// chosen at start, asks the portal (a FileChooser of the test's own on the
// private bus), and the program uses the file the portal answers with.
// Without a portal, Qt's own dialog opens.
class PortalFileDialogTest : public ::testing::Test
{
protected:
    ~PortalFileDialogTest() override
    {
        if (m_program.state() != QProcess::NotRunning) {
            ::kill(pid_t(m_program.processId()), SIGTERM);
            if (!m_program.waitForFinished(30000))
                m_program.kill();
        }
    }

    // Starts the program and chooses File > Import OPML… from the keyboard.
    void startAndImport()
    {
        m_program.setProcessEnvironment(home.environment());
        m_program.start(QStringLiteral(FENROW_EXECUTABLE), {});
        ASSERT_TRUE(m_program.waitForStarted());
        const QString window =
            runTool("xdotool", {"search", "--sync", "--all", "--onlyvisible", "--pid", pid(), "--class", "fenrow"})
                .section('\n', 0, 0);
        ASSERT_FALSE(window.isEmpty());
        runTool("xdotool", {"windowfocus", "--sync", window});
        runTool("xdotool", {"key", "--window", window, "alt+f"});
        runTool("xdotool", {"key", "i"});
    }

    QString pid() const { return QString::number(m_program.processId()); }

    QStringList qtDialogs() const
    {
        return runTool("xdotool",
                       {"search", "--all", "--onlyvisible", "--pid", pid(), "--name", "^Choose an OPML outline"})
            .split('\n', Qt::SkipEmptyParts);
    }

    QString fenrow(const QStringList &arguments) const
    {
        QProcess command;
        command.setProcessEnvironment(home.environment());
        command.start(QStringLiteral(FENROW_EXECUTABLE), arguments);
        EXPECT_TRUE(command.waitForFinished(60000));
        return QString::fromUtf8(command.readAllStandardOutput());
    }

    PrivateHome home;
    QProcess m_program;
};

TEST_F(PortalFileDialogTest, WhereAPortalRunsTheProgramAsksItForTheFile)
{
    const QString outline = home.filePath("garden.opml");
    {
        QFile file(outline);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<?xml version=\"1.0\"?>\n<opml version=\"2.0\"><head><title>Garden plan</title></head>"
                   "<body><outline text=\"Dig the beds\"/></body></opml>\n");
    }
    LineProcess portal{QStringLiteral(FENROW_TEST_FILE_CHOOSER_PORTAL),
                       {QStringLiteral("--choose"), QUrl::fromLocalFile(outline).toString()}};
    ASSERT_TRUE(portal.ready());
    startAndImport();
    EXPECT_EQ(portal.next(QStringLiteral("OpenFile"), 60000),
              QStringLiteral("OpenFile | Choose an OPML outline to import as a new flow | Import | OPML :*.opml"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return fenrow({"flows"}).contains("Garden plan"); }, 30000))
        << "the outline the portal chose was imported";
    EXPECT_TRUE(qtDialogs().isEmpty());
}

TEST_F(PortalFileDialogTest, WithoutAPortalQtsOwnDialogOpens)
{
    startAndImport();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !qtDialogs().isEmpty(); }, 30000));
}

} // namespace
} // namespace fenrow::testing
