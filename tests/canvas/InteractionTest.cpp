#include "CanvasPrinters.h"

#include "canvas/CanvasInteraction.h"
#include "domain/Scheduler.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"

#include <QTest>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

using Field = CanvasInteraction::Field;

QRectF cardAt(double x, double y)
{
    return CanvasGeometry::frame({x, y}, {210, 120});
}

TEST(Viewport, WithoutASizeNothingMovesButZoomToFitResets)
{
    CanvasInteraction interaction;
    interaction.setScale(2);
    interaction.setOffset({30, 40});
    interaction.clampOffset(QRectF(5000, 5000, 10, 10));
    interaction.centerOn({900, 900}, QRectF(0, 0, 10, 10));
    EXPECT_EQ(interaction.offset(), QPointF(30, 40));
    const std::vector<QRectF> frames{cardAt(0, 0)};
    interaction.zoomToFit(frames);
    EXPECT_EQ(interaction.scale(), 1);
    EXPECT_EQ(interaction.offset(), QPointF(0, 0));
}

TEST(Viewport, ZoomToFitNeverBlowsUpAndCentresTheContent)
{
    CanvasInteraction interaction;
    interaction.setViewportSize(1000, 800);
    const std::vector<QRectF> one{cardAt(0, 0)};
    interaction.zoomToFit(one);
    EXPECT_EQ(interaction.scale(), 1.0) << "4.2 would fit, but a small flow stays at actual size";
    EXPECT_EQ(interaction.offset(), QPointF(500, 400));

    interaction.zoomToFit({});
    EXPECT_EQ(interaction.scale(), 1.0) << "an empty flow is a 1 × 1 square at the origin";
    EXPECT_EQ(interaction.offset(), QPointF(499.5, 399.5));

    const std::vector<QRectF> wide{cardAt(0, 0), cardAt(3800, 0)};
    interaction.zoomToFit(wide);
    EXPECT_EQ(interaction.scale(), 0.4) << "held at the lower limit";

    const std::vector<QRectF> medium{cardAt(0, 0), cardAt(1000, 500)};
    interaction.zoomToFit(medium);
    EXPECT_DOUBLE_EQ(interaction.scale(), 904.0 / 1210);
}

TEST(Viewport, ClampKeepsEightyOnScreenOrCentresWhatIsTooSmall)
{
    CanvasInteraction interaction;
    interaction.setViewportSize(1000, 800);
    const QRectF bounds(0, 0, 100, 100);
    interaction.setOffset({5000, -5000});
    interaction.clampOffset(bounds);
    EXPECT_EQ(interaction.offset(), QPointF(920, -20));

    // In a view of 100 nothing can keep 80 on both sides: the content is centred.
    interaction.setViewportSize(100, 100);
    interaction.setOffset({-700, 700});
    interaction.clampOffset(QRectF(0, 0, 30, 30));
    EXPECT_EQ(interaction.offset(), QPointF(35, 35));

    interaction.setViewportSize(1000, 800);
    interaction.setOffset({});
    interaction.centerOn({100, 50}, QRectF(-2000, -2000, 4000, 4000));
    EXPECT_EQ(interaction.offset(), QPointF(400, 350));
    interaction.panBy(10, -5, QRectF(-2000, -2000, 4000, 4000));
    EXPECT_EQ(interaction.offset(), QPointF(410, 345));
}

TEST(Viewport, ZoomStaysWithinItsLimitsAndKeepsTheAnchorStill)
{
    CanvasInteraction interaction;
    interaction.setViewportSize(1000, 800);
    const QRectF everywhere(-20000, -20000, 40000, 40000);
    interaction.setScale(2.4);
    interaction.setOffset({100, 50});
    const QPointF anchor(300, 200);
    const QPointF under = interaction.toCanvas(anchor);
    interaction.zoomBy(1.25, anchor, everywhere);
    EXPECT_EQ(interaction.scale(), 2.5);
    EXPECT_NEAR(interaction.toCanvas(anchor).x(), under.x(), 1e-9);
    EXPECT_NEAR(interaction.toCanvas(anchor).y(), under.y(), 1e-9);
    interaction.zoomBy(0.01, anchor, everywhere);
    EXPECT_EQ(interaction.scale(), 0.4);

    interaction.setScale(0);
    EXPECT_EQ(interaction.toCanvas(interaction.offset() + QPointF(7, 8)), QPointF(7, 8)) << "scale 0 reads as 1";
}

TEST(Viewport, TheCentreIsNeverExactlyTheOrigin)
{
    CanvasInteraction interaction;
    interaction.setViewportSize(1000, 800);
    interaction.setOffset({500, 400});
    EXPECT_EQ(interaction.viewportCenter(), QPointF(1, 1));
    interaction.setScale(2);
    interaction.setOffset({300, 400});
    EXPECT_EQ(interaction.viewportCenter(), QPointF(100, 0));
}

TEST(InteractionState, SettersSignalOnlyRealChangesAndClampNotifiesPerAxis)
{
    CanvasInteraction interaction;
    QList<Field> notices;
    QObject::connect(&interaction, &CanvasInteraction::changed, [&](Field field) { notices << field; });
    const QUuid a = QUuid::createUuid();

    interaction.setSelectedItemIDs({a});
    interaction.setSelectedItemIDs({a});
    interaction.setNodeDrag(NodeDrag{{a}, {3, 4}});
    interaction.setNodeDrag(NodeDrag{{a}, {3, 4}});
    interaction.setMarquee(std::nullopt);
    EXPECT_EQ(notices, (QList<Field>{Field::selectedItemIDs, Field::nodeDrag}));

    notices.clear();
    interaction.setSelectedFileID(QUuid::createUuid());
    interaction.setSelectedEdgeID(QUuid::createUuid());
    interaction.clearSelection();
    EXPECT_EQ(notices, (QList<Field>{Field::selectedFileID, Field::selectedEdgeID, Field::selectedEdgeID,
                                     Field::selectedItemIDs, Field::selectedFileID}));

    notices.clear();
    interaction.setViewportSize(1000, 800);
    interaction.setOffset({5000, 5000});
    notices.clear();
    interaction.clampOffset(QRectF(0, 0, 100, 100));
    EXPECT_EQ(notices, (QList<Field>{Field::offset, Field::offset})) << "x and y are written one after the other";
}

TEST(InteractionState, GesturesDecideWhereCardsStandAndHowLargeTheyAre)
{
    CanvasInteraction interaction;
    FlowNode a;
    a.id = QUuid::createUuid();
    a.estimateMinutes = 600;
    FlowNode b;
    b.id = QUuid::createUuid();
    EXPECT_EQ(interaction.effectiveSize(a), NodeSizeResolver::defaultSize);
    interaction.setSizeResolver(NodeSizeResolver(true));
    EXPECT_EQ(interaction.effectiveSize(a), (NodeSize{330, 180}));

    interaction.setNodeDrag(NodeDrag{{a.id}, {30, -60}});
    EXPECT_EQ(interaction.effectiveCenter(a.id, {100, 100}), QPointF(130, 40));
    EXPECT_EQ(interaction.effectiveCenter(b.id, {100, 100}), QPointF(100, 100));
    interaction.setNodeResize(NodeResize{a.id, {240, 150}, {7, 8}});
    EXPECT_EQ(interaction.effectiveCenter(a.id, {100, 100}), QPointF(7, 8)) << "a resize wins over a drag";
    EXPECT_EQ(interaction.effectiveSize(a), (NodeSize{240, 150}));
    EXPECT_EQ(interaction.frame(a), QRectF(7 - 120, 8 - 75, 240, 150));

    FlowFile file;
    file.id = QUuid::createUuid();
    interaction.setFileDrag(FileDrag{file.id, {5, 5}});
    EXPECT_EQ(interaction.effectiveFileCenter(file.id, {0, 0}), QPointF(5, 5));
    interaction.setFileResize(FileResize{file.id, {300, 200}, {1, 2}});
    EXPECT_EQ(interaction.effectiveFileCenter(file.id, {0, 0}), QPointF(1, 2));
    EXPECT_EQ(interaction.effectiveFileSize(file), (NodeSize{300, 200}));

    interaction.setSelectedFileID(file.id);
    interaction.toggleSelection(a.id);
    interaction.toggleSelection(b.id);
    interaction.toggleSelection(a.id);
    EXPECT_EQ(interaction.selectedItemIDs(), QSet<QUuid>{b.id});
    EXPECT_FALSE(interaction.selectedFileID()) << "picking cards drops the file";
}

TEST(Schedulers, TasksRunInDueOrderAndCancelledOnesNever)
{
    using namespace std::chrono_literals;
    ManualScheduler manual;
    QStringList ran;
    manual.schedule(200ms, [&] { ran << "late"; });
    manual.schedule(100ms, [&] {
        ran << "early";
        // Work scheduled from a task runs in the same advance when due.
        manual.schedule(50ms, [&] { ran << "follow-up"; });
    });
    const auto dropped = manual.schedule(100ms, [&] { ran << "dropped"; });
    manual.cancel(dropped);
    manual.advance(150ms);
    EXPECT_EQ(ran, (QStringList{"early", "follow-up"}));
    manual.advance(49ms);
    EXPECT_EQ(ran.size(), 2);
    manual.advance(1ms);
    EXPECT_EQ(ran.last(), QStringLiteral("late"));
    EXPECT_EQ(manual.now(), 200ms);
    EXPECT_EQ(manual.pendingCount(), 0);

    TimerScheduler timers;
    bool kept = false;
    bool cancelled = false;
    timers.schedule(0ms, [&] { kept = true; });
    timers.cancel(timers.schedule(0ms, [&] { cancelled = true; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return kept; }, 1000));
    QCoreApplication::processEvents();
    EXPECT_FALSE(cancelled);
}

} // namespace
} // namespace fenrow
