#include "AppTestSupport.h"

#include "quickcapture/QuickCaptureContent.h"
#include "quickcapture/QuickCapturePanel.h"
#include "capture/QuickCaptureModel.h"

#include <QCursor>
#include <QDir>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QToolButton>

namespace fenrow::testing {
namespace {

// A panel over the fixture's store, opened with the pointer in the middle
// of the screen, as the menu command or the hot key opens it.
class QuickCapturePanelTest : public WindowFixture {
protected:
    QuickCapturePanel &openPanel()
    {
        if (!panel)
            panel = std::make_unique<QuickCapturePanel>(*store, history.get(), &activeFlow, *preferences,
                                                        environment);
        QCursor::setPos(screen().availableGeometry().center());
        panel->open();
        EXPECT_TRUE(QTest::qWaitForWindowActive(panel.get()));
        return *panel;
    }
    QScreen &screen() const { return *QGuiApplication::primaryScreen(); }
    QLineEdit &field() const { return *panel->content()->field(); }
    QWidget *chip() const { return panel->findChild<QWidget *>("quickCapture.dateChip"); }
    QString chipText() const { return panel->findChild<QLabel *>("quickCapture.dateChip.text")->text(); }
    QString pickerText() const { return panel->findChild<QToolButton *>("quickCapture.flowPicker")->text(); }
    void type(const QString &text) { QTest::keyClicks(&field(), text); }
    const FlowNode *newestIn(const TaskFlow &flow) const
    {
        return flow.orderedItems().isEmpty() ? nullptr : flow.orderedItems().last();
    }

    std::unique_ptr<QuickCapturePanel> panel;
};

TEST_F(QuickCapturePanelTest, OpensCentredAndFramelessAboveOtherWindowsAndEscapeDropsWhatWasTyped)
{
    addFlow("Home");
    QuickCapturePanel &shown = openPanel();
    EXPECT_TRUE(shown.windowFlags() & Qt::FramelessWindowHint);
    EXPECT_TRUE(shown.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(shown.width(), 520);
    EXPECT_GE(shown.height(), 168);
    const QRect visible = screen().availableGeometry();
    EXPECT_LE((shown.frameGeometry().center() - visible.center()).manhattanLength(), 2);
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(pickerText().section("  ", 0, 0), "Home");

    type("Buy stamps");
    QTest::keyClick(&field(), Qt::Key_Escape);
    EXPECT_FALSE(shown.isVisible());
    EXPECT_EQ(shown.content(), nullptr);
    EXPECT_TRUE(store->flows().first()->orderedItems().isEmpty()) << "Escape saves nothing";

    // The next opening starts empty; toggling closes it again.
    openPanel();
    EXPECT_TRUE(field().text().isEmpty());
    shown.toggle();
    EXPECT_FALSE(shown.isVisible());
}

TEST_F(QuickCapturePanelTest, ReturnSavesIntoTheChosenFlowWithTheDateFromTheText)
{
    const TaskFlow &home = addFlow("Home");
    const TaskFlow &work = addFlow("Work");
    openPanel();
    auto *save = panel->findChild<QPushButton *>("quickCapture.saveButton");
    ASSERT_NE(save, nullptr);
    EXPECT_FALSE(save->isEnabled()) << "nothing to save yet";
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_TRUE(panel->isVisible()) << "a blank line keeps the panel open";

    // Another flow from the picker's menu; the open menu is no click
    // elsewhere, so the panel stays.
    auto *picker = panel->findChild<QToolButton *>("quickCapture.flowPicker");
    bool chosen = false;
    bool stayedOpen = false;
    QTimer::singleShot(0, [&] {
        QMenu *menu = nullptr;
        if (!QTest::qWaitFor([&] { return (menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())); }))
            return;
        stayedOpen = panel->isVisible();
        for (QAction *entry : menu->actions()) {
            if (entry->text() == "Work") {
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
                chosen = true;
            }
        }
        menu->close();
    });
    QTest::mouseClick(picker, Qt::LeftButton);
    ASSERT_TRUE(chosen);
    EXPECT_TRUE(stayedOpen);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(pickerText().section("  ", 0, 0), "Work");

    // Another year's date says its year.
    type("Send the invoice 2020-02-03");
    ASSERT_TRUE(chip()->isVisible());
    EXPECT_EQ(chipText(), "Due Mon, Feb 3, 2020");
    field().clear();
    type("Send the invoice tomorrow");
    EXPECT_TRUE(save->isEnabled());
    ASSERT_TRUE(chip()->isVisible());
    EXPECT_EQ(chipText(), "Due Thu, Jun 11");
    QTest::keyClick(&field(), Qt::Key_Return);

    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(home.orderedItems().isEmpty());
    const FlowNode *task = newestIn(work);
    ASSERT_NE(task, nullptr);
    EXPECT_EQ(task->title, "Send the invoice");
    ASSERT_TRUE(task->dueDate.has_value());
    EXPECT_EQ(store->calendar().dayOf(*task->dueDate), QDate(2026, 6, 11));
    ASSERT_FALSE(history->undoStack(work.id).isEmpty());
    EXPECT_EQ(history->undoStack(work.id).last().name, "Capture task");
    EXPECT_EQ(preferences->lastCaptureFlowID(), work.id) << "the next capture starts there";
}

TEST_F(QuickCapturePanelTest, ARefusedDateStaysInTheTitleAndTheButtonSaves)
{
    const TaskFlow &home = addFlow("Home");
    openPanel();
    type("Plan the trip next monday");
    ASSERT_TRUE(chip()->isVisible());
    QTest::mouseClick(panel->findChild<QToolButton *>("quickCapture.date.dismiss"), Qt::LeftButton);
    EXPECT_FALSE(chip()->isVisible());
    EXPECT_TRUE(field().hasFocus()) << "typing goes on where it was";

    QTest::mouseClick(panel->findChild<QPushButton *>("quickCapture.saveButton"), Qt::LeftButton);
    const FlowNode *task = newestIn(home);
    ASSERT_NE(task, nullptr);
    EXPECT_EQ(task->title, "Plan the trip next monday");
    EXPECT_FALSE(task->dueDate.has_value());
}

TEST_F(QuickCapturePanelTest, AClickElsewhereClosesThePanel)
{
    show();
    addFlow("Home");
    openPanel();
    type("Something half typed");
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !panel->isVisible(); }));
    EXPECT_EQ(panel->content(), nullptr);
    EXPECT_TRUE(store->flows().first()->orderedItems().isEmpty());
}

// The panel in both looks, for a reviewer; its ground follows the look.
TEST_F(QuickCapturePanelTest, Screenshots)
{
    const auto lightness = [](const QImage &image) {
        qint64 sum = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                sum += image.pixelColor(x, y).lightness();
        return sum / (qint64(image.width()) * image.height());
    };
    addFlow("Move to Leipzig");
    for (const char *theme : {"light", "dark"}) {
        preferences->setThemeRaw(theme);
        openPanel();
        type("Book the movers next friday");
        const QImage shot = saveScreenshot(*panel, QStringLiteral("quick-capture-%1").arg(theme));
        EXPECT_EQ(lightness(shot) < 128, QLatin1StringView(theme) == QLatin1StringView("dark")) << theme;
        panel->dismiss();
    }
    openPanel();
    saveScreenshot(*panel, "quick-capture-empty");
}

} // namespace
} // namespace fenrow::testing
