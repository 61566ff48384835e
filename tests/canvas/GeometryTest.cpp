#include "CanvasPrinters.h"

#include <gtest/gtest.h>

#include "canvas/CanvasGeometry.h"
#include "canvas/NodeSizeResolver.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"

#include <cmath>

namespace fenrow {
namespace {

using namespace CanvasGeometry;

TEST(CardSizes, EstimateTiersManualSizesAndFileCards)
{
    const NodeSizeResolver byEstimate(true);
    const NodeSizeResolver plain;
    struct Case {
        qint64 minutes;
        NodeSize size;
    };
    for (const Case &c : {Case{30, {180, 90}}, Case{31, {210, 120}}, Case{120, {210, 120}}, Case{480, {270, 150}},
                          Case{481, {330, 180}}}) {
        FlowNode node;
        node.estimateMinutes = c.minutes;
        EXPECT_EQ(byEstimate.resolve(node), c.size) << c.minutes;
        EXPECT_EQ(plain.resolve(node), NodeSizeResolver::defaultSize) << "estimates count only when asked";
    }

    FlowNode node;
    node.estimateMinutes = 10;
    node.manualWidth = 400;
    EXPECT_EQ(byEstimate.resolve(node), (NodeSize{180, 90})) << "a width alone is no manual size";
    node.manualHeight = 10;
    node.manualWidth = 1000;
    EXPECT_EQ(byEstimate.resolve(node), (NodeSize{480, 90}));

    FlowFile file;
    EXPECT_EQ(NodeSizeResolver::resolveFile(file), NodeSizeResolver::defaultSize);
    file.thumbnail.set(QByteArray("png"));
    EXPECT_EQ(NodeSizeResolver::resolveFile(file), (NodeSize{270, 180})) << "a file with a picture shows it larger";
    file.manualWidth = 100;
    file.manualHeight = 500;
    EXPECT_EQ(NodeSizeResolver::resolveFile(file), (NodeSize{150, 360}));
}

TEST(Grid, PitchCoarsensWhenDotsCrowdButSnappingStaysAtThirty)
{
    EXPECT_EQ(displayPitch(1.0), 30);
    EXPECT_EQ(displayPitch(0.6), 30) << "18 on screen is still wide enough";
    EXPECT_EQ(displayPitch(0.4), 60) << "12 on screen would crowd; 60 gives 24";
    EXPECT_EQ(displayPitch(0.1), 240);
    EXPECT_EQ(displayPitch(0.001), 1920) << "none of the listed pitches reaches 16";
    EXPECT_EQ(displayPitch(0), 0);
    EXPECT_FALSE(gridLayout({}, 0).has_value()) << "no pitch, no grid";

    // The first column is the first grid point right of the view's edge.
    const auto layout = gridLayout({-45, 20}, 1.0);
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->firstPoint, QPointF(15, 20));
    const auto zoomedOut = gridLayout({-45, 20}, 0.4);
    ASSERT_TRUE(zoomedOut);
    EXPECT_DOUBLE_EQ(zoomedOut->screenPitch, 24);
    EXPECT_DOUBLE_EQ(zoomedOut->firstPoint.x(), 3);

    const std::vector<QPointF> dots = gridPoints({0, 0}, 1.0, {100, 50});
    EXPECT_EQ(dots.size(), 8u) << "columns 0, 30, 60, 90 on rows 0 and 30";
    EXPECT_EQ(dots.back(), QPointF(90, 30));
}

TEST(Snapping, HalvesGoAwayFromZeroAndTheCardsCornerLandsOnTheGrid)
{
    EXPECT_EQ(snap(45), 60);
    EXPECT_EQ(snap(-45), -60);
    EXPECT_EQ(snap(15), 30);
    EXPECT_EQ(snap(-15), -30);
    EXPECT_EQ(snap(14.9), 0);

    // A 210 × 120 card at (100, 100) has its corner at (-5, 40).
    const QPointF t = snappedTranslation({100, 100}, {210, 120}, {12, 7});
    EXPECT_EQ(t, QPointF(5, 20)) << "corner to (0, 60)";
    const QPointF corner = QPointF(100, 100) + t - QPointF(105, 60);
    EXPECT_EQ(std::fmod(corner.x(), 30), 0);
    EXPECT_EQ(std::fmod(corner.y(), 30), 0);

    EXPECT_EQ(resizedSize({210, 120}, {40, 44}, false), (NodeSize{250, 164}));
    EXPECT_EQ(resizedSize({210, 120}, {40, 44}, true), (NodeSize{240, 150}));
    EXPECT_EQ(resizedSize({210, 120}, {500, -100}, true), (NodeSize{480, 90})) << "limits after the snap";
    const QPointF center = resizedCenter({0, 0}, {210, 120}, {480, 90});
    EXPECT_EQ(frame(center, {480, 90}).topLeft(), QPointF(-105, -60)) << "the top left corner stays";
}

TEST(EdgeShapes, ClippingArrowheadsHitBandsAndPorts)
{
    const NodeSize card{210, 120};
    EXPECT_EQ(clipToCard({0, 0}, {500, 0}, card), QPointF(105, 0));
    EXPECT_EQ(clipToCard({0, 0}, {0, -500}, card), QPointF(0, -60));
    EXPECT_EQ(clipToCard({0, 0}, {100, 100}, card), QPointF(60, 60)) << "the nearer border wins";
    EXPECT_EQ(clipToCard({5, 5}, {5, 5}, card), QPointF(5, 5)) << "no direction, no clipping";
    const EdgeLine stacked = EdgeLine::between({5, 5}, card, {5, 5}, card);
    EXPECT_EQ(stacked.start, QPointF(5, 5));
    EXPECT_EQ(stacked.end, QPointF(5, 5));
    const EdgeLine line = EdgeLine::between({0, 0}, card, {400, 0}, {180, 90});
    EXPECT_EQ(line, (EdgeLine{{105, 0}, {310, 0}}));

    const auto triangle = Arrowhead{{100, 0}, {0, 0}}.triangle();
    EXPECT_EQ(triangle[0], QPointF(100, 0));
    EXPECT_EQ(triangle[1], QPointF(91, 5));
    EXPECT_EQ(triangle[2], QPointF(91, -5));
    for (const QPointF &corner : Arrowhead{{3, 3}, {3, 3}}.triangle())
        EXPECT_TRUE(std::isfinite(corner.x()) && std::isfinite(corner.y())) << "a zero-length edge stays finite";

    const EdgeHitShape band{{0, 0}, {100, 0}};
    const auto corners = band.corners();
    EXPECT_EQ(corners[0], QPointF(0, 12));
    EXPECT_EQ(corners[2], QPointF(100, -12));
    EXPECT_TRUE(band.contains({50, 11.9}));
    EXPECT_TRUE(band.contains({100, -12}));
    EXPECT_FALSE(band.contains({50, 12.5}));
    EXPECT_FALSE(band.contains({-1, 0})) << "no caps beyond the ends";
    const EdgeHitShape diagonal{{0, 0}, {100, 100}};
    EXPECT_TRUE(diagonal.contains({50 - 8, 50 + 8}));
    EXPECT_FALSE(diagonal.contains({50 - 9, 50 + 9}));
    EXPECT_FALSE((EdgeHitShape{{7, 7}, {7, 7}}.contains({7, 7}))) << "a point has no band";

    EXPECT_EQ(portAnchor({10, 20}, card), QPointF(115, 20));
}

TEST(Marquee, ClosedCardTestHalfOpenEndsAndSideCrossings)
{
    const QRectF card = frame({0, 0}, {210, 120});
    EXPECT_TRUE(overlapsClosed(QRectF(105, 0, 10, 10), card)) << "touching counts";
    EXPECT_FALSE(overlapsClosed(QRectF(105.5, 0, 10, 10), card));
    EXPECT_TRUE(overlapsClosed(QRectF(0, -200, 0, 400), card)) << "a band of no width still catches";

    const QRectF rect(0, 0, 100, 100);
    EXPECT_TRUE(containsHalfOpen(rect, {0, 0}));
    EXPECT_FALSE(containsHalfOpen(rect, {100, 50}));
    EXPECT_FALSE(containsHalfOpen(rect, {50, 100}));
    EXPECT_EQ(spanningRect({50, 80}, {10, 20}), QRectF(10, 20, 40, 60));

    EXPECT_TRUE(segmentsIntersect({0, 0}, {10, 10}, {0, 10}, {10, 0})) << "a plain crossing";
    EXPECT_FALSE(segmentsIntersect({0, 0}, {10, 0}, {0, 1}, {10, 1})) << "parallel";
    EXPECT_TRUE(segmentsIntersect({0, 0}, {10, 0}, {5, 0}, {15, 0})) << "overlapping on one line";
    EXPECT_FALSE(segmentsIntersect({0, 0}, {10, 0}, {11, 0}, {15, 0})) << "one line, apart";
    EXPECT_TRUE(segmentsIntersect({0, 0}, {10, 0}, {5, 0}, {5, 8})) << "an end on the other segment";
    EXPECT_FALSE(segmentsIntersect({0, 0}, {10, 0}, {5, 1}, {5, 8}));

    EXPECT_TRUE(edgeCaught(rect, {20, 20}, {80, 80})) << "inside entirely: caught by its ends";
    EXPECT_TRUE(edgeCaught(rect, {-50, 50}, {150, 50})) << "straight through, no end inside";
    EXPECT_FALSE(edgeCaught(rect, {-50, -50}, {-10, 150}));
    EXPECT_TRUE(edgeCaught(QRectF(50, 0, 0, 100), {0, 50}, {100, 50})) << "a marquee of no width";

    EXPECT_EQ(contentRectangle({}), QRectF(0, 0, 1, 1));
    const std::vector<QRectF> frames{frame({0, 0}, {210, 120}), frame({400, 300}, {180, 90}), QRectF(-50, 0, 0, 0)};
    EXPECT_EQ(contentRectangle(frames), QRectF(-105, -60, 595, 405));
    const std::vector<QRectF> flat{QRectF(10, 20, 0, 0)};
    EXPECT_EQ(contentRectangle(flat), QRectF(10, 20, 1, 1));
}

} // namespace
} // namespace fenrow
