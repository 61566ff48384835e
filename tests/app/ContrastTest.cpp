#include "AppTestSupport.h"

#include "inspector/InspectorCalendarPicker.h"
#include "inspector/NodeInspector.h"
#include "look/Theme.h"
#include "look/ThemeFocusRing.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QDir>
#include <QStyleOptionButton>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

namespace fenrow::testing
{
namespace
{

double luminance(const QColor &color)
{
    auto channel = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    const QColor rgb = color.toRgb();
    return 0.2126 * channel(rgb.redF()) + 0.7152 * channel(rgb.greenF()) + 0.0722 * channel(rgb.blueF());
}

// WCAG's contrast ratio, 1 to 21.
double contrast(const QColor &a, const QColor &b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// Puts an appearance in force for one test and the default back after.
class Appearance
{
public:
    Appearance(AccentPalette palette, bool dark) { Theme::setColors(Theme::Colors::make(palette, dark)); }
    ~Appearance() { Theme::setColors(Theme::Colors::make(AccentPalette::violet, false)); }
};

TEST(ContrastTest, EveryPaletteMeetsAAInBothAppearances)
{
    for (int index = 0; index <= int(AccentPalette::graphite); ++index) {
        for (const bool dark : {false, true}) {
            const auto c = Theme::Colors::make(AccentPalette(index), dark);
            SCOPED_TRACE(::testing::Message() << "palette " << index << (dark ? " dark" : " light"));
            for (const auto &[name, ground] :
                 {std::pair{"window", c.window}, {"sidebar", c.sidebar}, {"field", c.field}}) {
                SCOPED_TRACE(name);
                EXPECT_GE(contrast(c.text, ground), 4.5);
                EXPECT_GE(contrast(c.secondaryText, ground), 4.5);
                // The focus ring, selection and check marks are accent.
                EXPECT_GE(contrast(c.accent, ground), 3.0);
                EXPECT_GE(contrast(c.controlBorder, ground), 3.0);
            }
            EXPECT_GE(contrast(c.onAccent, c.accent), 4.5);
        }
    }
}

// The drawn edge of a check box, not the colour meant for it: the style
// decides what reaches the screen.
TEST(ContrastTest, CheckBoxesStandOutOnADarkWindow)
{
    const Appearance appearance(AccentPalette::violet, true);
    QWidget ground;
    auto *column = new QVBoxLayout(&ground);
    auto *unchecked = new QCheckBox(QStringLiteral("Open"), &ground);
    auto *checked = new QCheckBox(QStringLiteral("Done"), &ground);
    checked->setChecked(true);
    column->addWidget(unchecked);
    column->addWidget(checked);
    ground.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&ground));
    const QImage image = ground.grab().toImage();
    const QColor window = image.pixelColor(1, 1);
    EXPECT_EQ(window, Theme::Color::window);
    for (QCheckBox *box : {unchecked, checked}) {
        SCOPED_TRACE(box->text().toStdString());
        QStyleOptionButton option;
        option.initFrom(box);
        const QRect indicator = box->style()
                                    ->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box)
                                    .translated(box->mapTo(&ground, QPoint(0, 0)));
        // From the middle of each side inward, the strongest pixel is the edge.
        const QPoint centre = indicator.center();
        const QList<std::pair<QPoint, QPoint>> sides = {{{indicator.left(), centre.y()}, {1, 0}},
                                                        {{indicator.right(), centre.y()}, {-1, 0}},
                                                        {{centre.x(), indicator.top()}, {0, 1}},
                                                        {{centre.x(), indicator.bottom()}, {0, -1}}};
        for (const auto &[start, step] : sides) {
            double best = 1;
            for (int inward = 0; inward < 4; ++inward)
                best = std::max(best, contrast(image.pixelColor(start + step * inward), window));
            EXPECT_GE(best, 3.0) << "side at " << start.x() << "," << start.y();
        }
    }
    saveImage(image, QStringLiteral("check-boxes-dark"));
}

class FocusRingTest : public WindowFixture
{
};

// Pixels of the accent in the band a few pixels either side of `rect`'s edge.
int accentAround(const QImage &image, const QRect &rect)
{
    const QRect outer = rect.adjusted(-4, -4, 4, 4) & image.rect();
    const QRect inner = rect.adjusted(4, 4, -4, -4);
    int count = 0;
    for (int y = outer.top(); y <= outer.bottom(); ++y)
        for (int x = outer.left(); x <= outer.right(); ++x) {
            if (inner.contains(x, y))
                continue;
            const QColor pixel = image.pixelColor(x, y);
            const QColor accent = Theme::Color::accent;
            if (std::abs(pixel.red() - accent.red()) + std::abs(pixel.green() - accent.green()) +
                    std::abs(pixel.blue() - accent.blue()) <
                30)
                ++count;
        }
    return count;
}

TEST_F(FocusRingTest, EveryTabStopShowsTheRing)
{
    addFlow(QStringLiteral("Garden"), 1, 1, 2);
    addFlow(QStringLiteral("Taxes"));
    show();
    window->resize(1320, 840);
    window->selectFlow(store->flows().first()->id);
    QApplication::processEvents();
    auto *ring = QApplication::instance()->findChild<ThemeFocusRing *>();
    ASSERT_NE(ring, nullptr);

    // From the sidebar's list, once round the window.
    window->sidebar()->flowList()->setFocus(Qt::OtherFocusReason);
    QList<QWidget *> stops;
    bool saved = false;
    for (int press = 0; press < 30; ++press) {
        QWidget *before = QApplication::focusWidget();
        QTest::keyClick(before ? before : window.get(), Qt::Key_Tab);
        QWidget *focused = QApplication::focusWidget();
        ASSERT_NE(focused, nullptr);
        const std::string name =
            (focused->metaObject()->className() + QStringLiteral(" ") + focused->objectName()).toStdString();
        SCOPED_TRACE(::testing::Message() << "stop " << press << ": " << name);
        if (stops.contains(focused))
            break; // round the window once
        stops << focused;
        EXPECT_TRUE(focused->isVisible());
        EXPECT_GT(focused->width(), 4);
        EXPECT_GT(focused->height(), 4);
        ASSERT_TRUE(QTest::qWaitFor([&] { return ring->ringedWidget() == focused; }));
        const QRect place(focused->mapTo(window.get(), QPoint(0, 0)), focused->size());
        EXPECT_TRUE(window->rect().intersects(place));
        QImage image;
        // The ring shows once the window has painted it.
        const bool shown = QTest::qWaitFor([&] {
            image = window->grab().toImage();
            return accentAround(image, place) >= std::min(place.width(), place.height());
        });
        EXPECT_TRUE(shown) << accentAround(image, place) << " accent pixels around " << place.x() << "," << place.y()
                           << " " << place.width() << "x" << place.height();
        if (!saved && focused->objectName().startsWith(QStringLiteral("toolbar."))) {
            saveImage(image, QStringLiteral("focus-ring-main-window"));
            saved = true;
        }
    }
    QStringList names;
    for (const QWidget *stop : stops)
        names << stop->objectName();
    for (const char *name :
         {"sidebar.flows", "sidebar.route.ready", "canvas.view", "toolbar.addTask", "toolbar.zoomIn"})
        EXPECT_TRUE(names.contains(QLatin1StringView(name))) << name << " is no Tab stop";
}

TEST_F(FocusRingTest, AClickLeavesNoRing)
{
    show();
    auto *ring = QApplication::instance()->findChild<ThemeFocusRing *>();
    ASSERT_NE(ring, nullptr);
    QTest::keyClick(window.get(), Qt::Key_Tab);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ring->ringedWidget() != nullptr; }));
    auto *field = window->findChild<QLineEdit *>();
    QWidget *target = field && field->isVisible() ? static_cast<QWidget *>(field) : window->sidebar()->flowList();
    QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_EQ(ring->ringedWidget(), nullptr);
}

class CalendarPickerTest : public WindowFixture
{
};

TEST_F(CalendarPickerTest, StaysInsideTheWindowInBothAppearances)
{
    const TaskFlow *flow = store->addFlow(QStringLiteral("Move house"));
    const FlowNode *task = store->addNode(QStringLiteral("Pack books"), *flow);
    for (const bool dark : {false, true}) {
        SCOPED_TRACE(dark ? "dark" : "light");
        const Appearance appearance(AccentPalette::violet, dark);
        NodeInspector inspector(*store, *history, *preferences);
        // A narrow panel near the screen's corner: the month would spill
        // past its right edge below the field.
        inspector.resize(300, 420);
        inspector.move(1200, 560);
        inspector.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&inspector));
        CanvasSelection selection;
        selection.itemIDs.insert(task->id);
        inspector.showSelection(flow->id, selection);
        auto *due = inspector.findChild<QPushButton *>(QStringLiteral("inspector.dueDate"));
        ASSERT_NE(due, nullptr);
        QRect popupFrame;
        QRect windowFrame;
        QImage picture;
        QTimer::singleShot(0, &inspector, [&] {
            QWidget *popup = nullptr;
            if (QTest::qWaitFor([&] { return (popup = QApplication::activePopupWidget()) && popup->isVisible(); })) {
                QTest::qWait(0);
                popupFrame = popup->frameGeometry();
                windowFrame = inspector.frameGeometry();
                picture = popup->grab().toImage();
                popup->close();
            }
        });
        due->click();
        ASSERT_FALSE(popupFrame.isNull()) << "the picker did not open";
        EXPECT_TRUE(windowFrame.contains(popupFrame))
            << popupFrame.x() << "," << popupFrame.y() << " " << popupFrame.width() << "x" << popupFrame.height();
        // Weekends are not drawn red: no strongly red pixel in the month.
        int red = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                red += pixel.red() > 180 && pixel.green() < 80 && pixel.blue() < 80;
            }
        EXPECT_EQ(red, 0);
        saveImage(picture,
                  dark ? QStringLiteral("inspector-calendar-dark") : QStringLiteral("inspector-calendar-light"));
    }
}

} // namespace
} // namespace fenrow::testing
