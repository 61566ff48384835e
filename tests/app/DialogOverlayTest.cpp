#include "AppTestSupport.h"

#include "canvasview/CanvasView.h"
#include "sheets/DismissableDialogOverlay.h"
#include "window/FlowDetailView.h"
#include "canvas/CanvasEditor.h"
#include "canvas/DialogPresence.h"

#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace fenrow::testing {
namespace {

class DialogOverlayTest : public WindowFixture {
protected:
    // An overlay over the window with a field and a button on its panel.
    DismissableDialogOverlay *makeOverlay()
    {
        auto *overlay = new DismissableDialogOverlay(window.get());
        auto *content = new QWidget;
        content->setFixedSize(320, 160);
        auto *column = new QVBoxLayout(content);
        auto *field = new QLineEdit(content);
        field->setObjectName(QStringLiteral("field"));
        auto *button = new QPushButton(QStringLiteral("Go"), content);
        button->setObjectName(QStringLiteral("button"));
        column->addWidget(field);
        column->addWidget(button);
        overlay->setContent(content);
        return overlay;
    }
};

TEST_F(DialogOverlayTest, CountsWhileShownAndNestedOnesCountTwice)
{
    show();
    const int before = DialogPresence::depth();
    DismissableDialogOverlay *outer = makeOverlay();
    DismissableDialogOverlay *inner = makeOverlay();
    QSignalSpy dismissed(outer, &DismissableDialogOverlay::dismissed);

    outer->present();
    EXPECT_EQ(DialogPresence::depth(), before + 1);
    // Presenting again is no second dialog.
    outer->present();
    EXPECT_EQ(DialogPresence::depth(), before + 1);
    inner->present();
    EXPECT_EQ(DialogPresence::depth(), before + 2);
    EXPECT_EQ(inner->geometry(), window->rect());
    // The panel is centred on the window and sized by its content.
    EXPECT_EQ(inner->panelRect().size(), QSize(320, 160));
    EXPECT_LE(std::abs(inner->panelRect().center().x() - window->rect().center().x()), 1);
    EXPECT_LE(std::abs(inner->panelRect().center().y() - window->rect().center().y()), 1);
    // The keyboard goes to the content's first field.
    EXPECT_EQ(QApplication::focusWidget(), inner->content()->findChild<QLineEdit *>("field"));

    inner->dismiss();
    EXPECT_EQ(DialogPresence::depth(), before + 1);
    EXPECT_FALSE(inner->isVisible());
    delete outer;
    // An overlay that goes while shown stops counting too.
    EXPECT_EQ(DialogPresence::depth(), before);
    EXPECT_EQ(dismissed.count(), 0);
    delete inner;
}

TEST_F(DialogOverlayTest, ScrimClickAndEscapeDismissButThePanelDoesNot)
{
    show();
    const int before = DialogPresence::depth();
    DismissableDialogOverlay *overlay = makeOverlay();
    QSignalSpy dismissed(overlay, &DismissableDialogOverlay::dismissed);
    overlay->present();

    // A click on the panel's own background leaves it open.
    const QPoint onPanel = overlay->panelRect().topLeft() + QPoint(4, 4);
    QTest::mouseClick(overlay, Qt::LeftButton, Qt::NoModifier, onPanel);
    EXPECT_TRUE(overlay->isPresented());
    // A press on the panel that is released over the scrim is no tap on it.
    QTest::mousePress(overlay, Qt::LeftButton, Qt::NoModifier, onPanel);
    QTest::mouseRelease(overlay, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_TRUE(overlay->isPresented());

    QTest::mouseClick(overlay, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_FALSE(overlay->isPresented());
    EXPECT_EQ(dismissed.count(), 1);
    EXPECT_EQ(DialogPresence::depth(), before);

    overlay->present();
    // Escape in a field of the content closes it, as it does on the panel.
    QTest::keyClick(overlay->content()->findChild<QLineEdit *>("field"), Qt::Key_Escape);
    EXPECT_FALSE(overlay->isPresented());
    EXPECT_EQ(dismissed.count(), 2);
    EXPECT_EQ(DialogPresence::depth(), before);
    delete overlay;
}

TEST_F(DialogOverlayTest, TabGoesRoundThePanel)
{
    show();
    DismissableDialogOverlay *overlay = makeOverlay();
    overlay->present();
    auto *field = overlay->content()->findChild<QLineEdit *>("field");
    auto *button = overlay->content()->findChild<QPushButton *>("button");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), button);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), field);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), button);
    delete overlay;
}

TEST_F(DialogOverlayTest, TheCanvasTakesNoKeysWhileOneIsUp)
{
    const TaskFlow &flow = *store->addFlow(QStringLiteral("Move house"));
    const FlowNode &task = *store->addNode(QStringLiteral("Book the van"), flow);
    show();
    window->selectFlow(flow.id);
    QApplication::processEvents();
    CanvasView &canvas = *window->flowDetail()->canvas();
    ASSERT_NE(canvas.editor(), nullptr);
    canvas.editor()->interaction().setSelectedItemIDs({task.id});
    ASSERT_EQ(QApplication::focusWidget(), &canvas);

    // Content with nothing to type into: the overlay itself has the keys,
    // and Delete there is no Delete on the canvas behind it.
    auto *overlay = new DismissableDialogOverlay(window.get());
    overlay->setContent(new QLabel(QStringLiteral("Nothing to type here")));
    overlay->present();
    EXPECT_EQ(QApplication::focusWidget(), overlay);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    EXPECT_NE(store->node(task.id), nullptr);
    // Even with the canvas focused, its commands wait while a dialog is open.
    canvas.setFocus();
    QTest::keyClick(&canvas, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_FALSE(task.isDone);

    // Dismissed, it hands the keys back to the canvas, which hears them again.
    overlay->dismiss();
    EXPECT_EQ(QApplication::focusWidget(), &canvas);
    QTest::keyClick(&canvas, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(task.isDone);
    delete overlay;
}

} // namespace
} // namespace fenrow::testing
