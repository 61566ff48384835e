#include "AppTestSupport.h"
#include "program/DesktopProgram.h"
#include "window/MainWindow.h"
#include "window/OnboardingView.h"
#include "domain/FenrowModelContainer.h"
#include "shell/InterfaceLanguage.h"
#include "shell/SettingsFile.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace fenrow {
namespace {

// Runs the program with its data in a folder of the test's own, and answers
// whatever window it shows with `respond` once that appears.
class DesktopProgramTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        storeFile = QDir(home.filePath("data/fenrow")).filePath(FenrowModelContainer::storeFileName);
    }
    void TearDown() override { InterfaceLanguage::apply("en"); }

    int runAnswering(const std::function<bool()> &respond)
    {
        QTimer poll;
        poll.setInterval(10);
        const QDeadlineTimer deadline(10000);
        QObject::connect(&poll, &QTimer::timeout, [&] {
            if (respond()) {
                poll.stop();
            } else if (deadline.hasExpired()) {
                // Never hang the suite on a window that didn't come.
                ADD_FAILURE() << "the expected window did not appear";
                if (QWidget *modal = QApplication::activeModalWidget())
                    modal->close();
                QApplication::exit(99);
                poll.stop();
            }
        });
        poll.start();
        return DesktopProgram::run(*qApp);
    }

    // The welcome is where a first start begins.
    testing::PrivateHome home{false};
    QString storeFile;
};

TEST_F(DesktopProgramTest, AStoreThatCannotBeOpenedStopsWithAnAlertAndLeavesTheFileAlone)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(storeFile).absolutePath()));
    const QByteArray notAStore = QByteArray("These are somebody's notes, not a Fenrow store.\n").repeated(200);
    {
        QFile file(storeFile);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(notAStore);
    }

    QString title, text;
    const int status = runAnswering([&] {
        auto *alert = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!alert || !alert->isVisible())
            return false;
        title = alert->windowTitle();
        text = alert->text();
        alert->accept();
        return true;
    });

    EXPECT_EQ(status, 1);
    EXPECT_EQ(title, "Fenrow cannot open its data");
    EXPECT_TRUE(text.startsWith("Failed to create the Fenrow ModelContainer: ")) << text.toStdString();
    QFile file(storeFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), notAStore);
    EXPECT_FALSE(QFile::exists(storeFile + "-wal"));
}

TEST_F(DesktopProgramTest, AStoreThatOpensShowsTheMainWindowWithTheSampleFlowForANewUser)
{
    QString title;
    QUuid shown;
    bool welcomed = false;
    const int status = runAnswering([&] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *window = qobject_cast<MainWindow *>(widget);
            if (window && window->isVisible()) {
                title = window->windowTitle();
                shown = window->selectedFlow();
                welcomed = window->onboarding() && window->onboarding()->isVisible();
                window->close();
                return true;
            }
        }
        return false;
    });

    EXPECT_EQ(status, 0);
    EXPECT_FALSE(shown.isNull()) << "the sample flow waits behind the welcome";
    EXPECT_TRUE(welcomed) << "a new user is welcomed first";
    EXPECT_EQ(title, "Fenrow") << "and the title gives no flow away meanwhile";
    EXPECT_TRUE(QFile::exists(storeFile)) << "the store lives in the user's data folder";
}

} // namespace
} // namespace fenrow
