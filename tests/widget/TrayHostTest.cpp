#include "shell/ReadySnapshot.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

// The real fenrow-widget against a real XEmbed tray host (trayer) on the
// test's X server, with data and settings in a home of its own.
class TrayHostTest : public ::testing::Test {
protected:
    TrayHostTest()
    {
        environment.insert("XDG_DATA_HOME", home.filePath("data"));
        environment.insert("XDG_CONFIG_HOME", home.filePath("config"));
        environment.insert("LC_ALL", "C.UTF-8");
        widget.setProcessEnvironment(environment);
    }
    ~TrayHostTest() override
    {
        for (QProcess *process : {&widget, &trayer}) {
            if (process->state() != QProcess::NotRunning) {
                process->terminate();
                if (!process->waitForFinished(5000))
                    process->kill();
                process->waitForFinished(5000);
            }
        }
    }

    // The window tree under trayer's panel, once the panel is up.
    static QString panelTree()
    {
        QProcess xwininfo;
        xwininfo.start("xwininfo", {"-name", "panel", "-tree"});
        xwininfo.waitForFinished(5000);
        return xwininfo.exitCode() == 0 ? QString::fromUtf8(xwininfo.readAllStandardOutput()) : QString();
    }

    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QProcess widget;
    QProcess trayer;
};

TEST_F(TrayHostTest, WithoutATrayTheWidgetSaysSoAndStops)
{
    widget.start(FENROW_WIDGET_EXECUTABLE, {});
    ASSERT_TRUE(widget.waitForFinished(15000));
    EXPECT_EQ(widget.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(widget.exitCode(), 1);
    EXPECT_TRUE(widget.readAllStandardError().contains(
        "fenrow-widget: no system tray is available on this desktop; start a tray"));
}

TEST_F(TrayHostTest, TheIconDocksInARealTray)
{
    const QString shared = QDir(home.filePath("data")).filePath("fenrow/shared");
    const ReadySnapshot snapshot{QDateTime::currentDateTimeUtc().addDays(1), 0, {}, "blue", "noTasks"};
    ASSERT_TRUE(snapshot.write(shared));

    trayer.start("trayer", {"--edge", "bottom", "--align", "right", "--widthtype", "pixel", "--width", "120",
                            "--height", "28", "--SetDockType", "false", "--SetPartialStrut", "false"});
    ASSERT_TRUE(trayer.waitForStarted(5000));
    ASSERT_TRUE(QTest::qWaitFor([] { return !panelTree().isEmpty(); }, 10000)) << "trayer's panel did not appear";
    EXPECT_FALSE(panelTree().contains("fenrow-widget"));

    widget.start(FENROW_WIDGET_EXECUTABLE, {});
    ASSERT_TRUE(widget.waitForStarted(5000));
    EXPECT_TRUE(QTest::qWaitFor([] { return panelTree().contains("\"fenrow-widget\""); }, 10000))
        << panelTree().toStdString() << widget.readAllStandardError().toStdString();
    EXPECT_EQ(widget.state(), QProcess::Running);
}

} // namespace
} // namespace fenrow
