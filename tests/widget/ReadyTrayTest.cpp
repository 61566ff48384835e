#include "ReadyTray.h"
#include "domain/FixedClock.h"
#include "shell/PendingCompletion.h"
#include "shell/WidgetFiles.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

using namespace std::chrono_literals;

// A tray over a shared folder of its own, at 9:00 on a fixed day, with time
// moved by hand. "Open Fenrow" starts a stand-in that notes its arguments.
class ReadyTrayTest : public ::testing::Test {
protected:
    ReadyTrayTest() : clock(QDateTime(QDate(2026, 6, 10), QTime(9, 0)))
    {
        QFile program(home.filePath(QStringLiteral("fenrow")));
        program.open(QIODevice::WriteOnly);
        program.write("#!/bin/sh\necho \"run $*\" >> \"$(dirname \"$0\")/started\"\n");
        program.close();
        program.setPermissions(program.permissions() | QFileDevice::ExeOwner);
    }

    QString folder() const { return home.filePath(QStringLiteral("shared")); }

    ReadyTray &makeTray()
    {
        tray = std::make_unique<ReadyTray>(folder(), home.filePath(QStringLiteral("fenrow")), clock, scheduler);
        return *tray;
    }

    static ReadySnapshot::Item item(const QString &title, const QString &flow, std::optional<QDate> due = {})
    {
        ReadySnapshot::Item item{QUuid::createUuid(), title, flow, {}, false, false, QStringLiteral("none")};
        if (due) {
            item.dueDate = QDateTime(*due, QTime(0, 0)).toUTC();
            item.isOverdue = *due < QDate(2026, 6, 10);
            item.isToday = *due == QDate(2026, 6, 10);
        }
        return item;
    }

    ReadySnapshot snapshot(QList<ReadySnapshot::Item> tasks, qsizetype total) const
    {
        return {QDateTime(QDate(2026, 6, 11), QTime(0, 0)).toUTC(), total, std::move(tasks), QStringLiteral("green"),
                total ? std::nullopt : std::optional<QString>(QStringLiteral("allDone"))};
    }

    // A redraw takes the old rows out of the popup's layout at once and
    // deletes them later: only what the layout holds is drawn now.
    static bool drawn(const QWidget *widget)
    {
        const QWidget *parent = widget->parentWidget();
        return parent && parent->layout() && parent->layout()->indexOf(widget) >= 0;
    }

    template <typename T = QWidget>
    T *shown(const QString &name) const
    {
        for (T *child : tray->popup().findChildren<T *>(name))
            if (drawn(child))
                return child;
        return nullptr;
    }

    QWidget *row(const QUuid &id) const
    {
        return shown(QStringLiteral("widget.task.") + id.toString(QUuid::WithoutBraces));
    }

    qsizetype rowCount() const
    {
        const auto rows = tray->popup().findChildren<QWidget *>(
            QRegularExpression(QStringLiteral("^widget\\.task\\.[0-9a-f-]+$")));
        return std::count_if(rows.begin(), rows.end(), drawn);
    }

    QString status() const
    {
        const QLabel *label = shown<QLabel>(QStringLiteral("widget.status"));
        return label ? label->text() : QString();
    }

    QStringList started() const
    {
        QFile file(home.filePath(QStringLiteral("started")));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    // Open, painted, and with rows made while it was open shown too.
    void showPopup()
    {
        tray->openPopup();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&tray->popup()));
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const QWidget *title = shown(QStringLiteral("widget.title"));
            return title && title->isVisible();
        }));
    }

    void saveScreenshot(const QString &name) const
    {
        QDir().mkpath(QStringLiteral(FENROW_SCREENSHOT_DIR));
        EXPECT_TRUE(tray->popup().grab().save(QStringLiteral(FENROW_SCREENSHOT_DIR "/%1.png").arg(name)));
    }

    QTemporaryDir home;
    FixedClock clock;
    ManualScheduler scheduler;
    std::unique_ptr<ReadyTray> tray;
};

TEST_F(ReadyTrayTest, ListsTheSnapshotFollowsItsFileAndParksTicks)
{
    ReadyTray &tray = makeTray();
    EXPECT_EQ(tray.state(), ReadyListState::notWritten);
    EXPECT_EQ(status(), "Fenrow has not written the Ready list yet. Open Fenrow to make it.");

    const auto invoice = item("Send the invoice", "Studio", QDate(2026, 6, 8));
    const auto printer = item("Call the printer", "Studio", QDate(2026, 6, 10));
    const auto plants = item("Water the plants", "Home");
    ASSERT_TRUE(snapshot({invoice, printer, plants}, 11).write(folder()));
    // The file arrives by a rename: the folder's watch sees it.
    EXPECT_TRUE(QTest::qWaitFor([&] { return tray.state() == ReadyListState::current; }, 5000));
    EXPECT_EQ(tray.trayIcon().toolTip(), "Fenrow · 11 tasks ready");
    ASSERT_NE(row(plants.id), nullptr);
    EXPECT_EQ(row(invoice.id)->findChild<QLabel *>("widget.task.due")->text(), "Overdue · Jun 8");
    EXPECT_EQ(row(printer.id)->findChild<QLabel *>("widget.task.due")->text(), "Due today");
    EXPECT_EQ(row(plants.id)->findChild<QLabel *>("widget.task.due"), nullptr);
    EXPECT_EQ(row(plants.id)->findChild<QLabel *>("widget.task.flow")->text(), "Home");
    ASSERT_NE(shown<QPushButton>("widget.more"), nullptr);
    EXPECT_EQ(shown<QPushButton>("widget.more")->text(), "and 8 more");
    EXPECT_TRUE(status().isEmpty()) << "the tasks say it all";

    showPopup();
    saveScreenshot(QStringLiteral("widget-popup"));

    QCheckBox *box = row(printer.id)->findChild<QCheckBox *>("widget.tick");
    QTest::mouseClick(box, Qt::LeftButton, {}, box->rect().center());
    const QList<PendingCompletion> parked = PendingCompletion::readAll(folder());
    ASSERT_EQ(parked.size(), 1);
    EXPECT_EQ(parked[0].taskID, printer.id);
    EXPECT_EQ(parked[0].requestedAt, clock.now());
    EXPECT_EQ(QFileInfo(parked[0].path).fileName(), parked[0].id.toString(QUuid::WithoutBraces).toUpper() + ".json");
    // Ticked at once, and no way to tick it twice from here.
    QWidget *ticked = row(printer.id);
    EXPECT_TRUE(ticked->findChild<QLabel *>("widget.task.title")->font().strikeOut());
    EXPECT_FALSE(ticked->findChild<QCheckBox *>("widget.tick")->isEnabled());
    EXPECT_TRUE(ticked->findChild<QCheckBox *>("widget.tick")->isChecked());
    EXPECT_EQ(tray.trayIcon().toolTip(), "Fenrow · 10 tasks ready");
    EXPECT_TRUE(tray.trayIcon().icon().pixmap(64).save(QStringLiteral(FENROW_SCREENSHOT_DIR "/widget-tray-icon.png")));

    // Fenrow takes the tick and writes the list without it.
    ASSERT_TRUE(snapshot({invoice, plants}, 10).write(folder()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return row(printer.id) == nullptr; }, 5000));
    EXPECT_NE(row(invoice.id), nullptr);
    EXPECT_EQ(tray.trayIcon().toolTip(), "Fenrow · 10 tasks ready");
}

TEST_F(ReadyTrayTest, TheListGoesOutOfDateWhenItsDayEnds)
{
    ASSERT_TRUE(snapshot({item("Send the invoice", "Studio")}, 1).write(folder()));
    ReadyTray &tray = makeTray();
    EXPECT_EQ(tray.state(), ReadyListState::current);
    EXPECT_EQ(tray.trayIcon().toolTip(), "Fenrow · 1 task ready");

    clock.set(QDateTime(QDate(2026, 6, 10), QTime(23, 59, 59)));
    scheduler.advance(14h + 59min + 59s);
    EXPECT_EQ(tray.state(), ReadyListState::current);
    clock.set(QDateTime(QDate(2026, 6, 11), QTime(0, 0)));
    scheduler.advance(1s);
    EXPECT_EQ(tray.state(), ReadyListState::outOfDate);
    EXPECT_EQ(status(), "Open Fenrow to bring this list up to date");
    EXPECT_EQ(tray.trayIcon().toolTip(), "Fenrow · Open Fenrow to bring this list up to date");
    EXPECT_EQ(rowCount(), 0) << "no stale tasks to tick";

    // A file that cannot be read is no list either.
    clock.set(QDateTime(QDate(2026, 6, 10), QTime(10, 0)));
    QFile broken(WidgetFiles::snapshotPath(folder()));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
    broken.write("{\"total\":");
    broken.close();
    tray.reload();
    EXPECT_EQ(tray.state(), ReadyListState::outOfDate);
}

TEST_F(ReadyTrayTest, EmptyListsSayWhyAndTheActionsStartFenrow)
{
    ASSERT_TRUE(snapshot({}, 0).write(folder()));
    ReadyTray &tray = makeTray();
    EXPECT_EQ(status(), "Nothing ready: all done");
    EXPECT_EQ(tray.trayIcon().toolTip(), "Fenrow · Nothing ready: all done");

    const auto longTitle = item("Write the long letter to the council about the footpath behind the allotments, "
                                "with the photographs from last winter and the neighbours' signatures",
                                "Neighbourhood association and other long-running matters", QDate(2027, 1, 4));
    ASSERT_TRUE(snapshot({longTitle, item("Pay rent", "Home")}, 30).write(folder()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return row(longTitle.id) != nullptr; }, 5000));
    showPopup();
    EXPECT_EQ(row(longTitle.id)->findChild<QLabel *>("widget.task.due")->text(), "Jan 4, 2027");
    saveScreenshot(QStringLiteral("widget-popup-long-title"));
    // A tray icon in the bottom right corner: the popup opens above it,
    // inside the screen.
    const QRect screen(0, 0, 1600, 1000);
    const QRect place = ReadyPopup::placement(tray.popup().size(), QRect(1580, 976, 22, 22), screen);
    EXPECT_TRUE(screen.contains(place)) << place.x() << "," << place.y();
    EXPECT_LT(place.bottom(), 976);

    QTest::mouseClick(shown<QPushButton>("widget.more"), Qt::LeftButton);
    EXPECT_FALSE(tray.popup().isVisible());
    tray.openPopup();
    QTest::mouseClick(shown<QPushButton>("widget.capture"), Qt::LeftButton);
    tray.openPopup();
    QTest::mouseClick(shown<QPushButton>("widget.open"), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return started().size() == 3; }, 5000)) << started().join('|').toStdString();
    EXPECT_TRUE(started().contains("run fenrow://ready"));
    EXPECT_TRUE(started().contains("run --capture"));
    EXPECT_TRUE(started().contains("run "));
}

} // namespace
} // namespace fenrow
