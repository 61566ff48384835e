// The canvas's thin lines, blended into its line layer by hand, against
// the raster engine's own antialiased stroke of the same lines.
#include "canvasview/CanvasScenePainting.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>

namespace fenrow::testing {
namespace {

TEST(CanvasLinesTest, ThinLinesFallWhereAndAsStrongAsTheRasterEnginesStroke)
{
    // At the lowest zoom, as the layer is drawn: 1.5 units wide at 0.4.
    const QTransform toPixels = QTransform::fromScale(0.4, 0.4).translate(-35, 20);
    const QList<QLineF> lines{
        {QPointF(60, 10), QPointF(700, 90)},      // shallow, across several bands of rows
        {QPointF(100, -40), QPointF(180, 470)},   // steep, from above the image to below it
        {QPointF(800, 30), QPointF(120, 420)},    // drawn from its right end
        {QPointF(300, 200), QPointF(520, 200)},   // level
        {QPointF(640, 20), QPointF(640, 380)},    // upright
        {QPointF(420, 300), QPointF(424.5, 303)}, // a dash shorter than two pixels
    };
    QImage ground(QSize(320, 200), QImage::Format_RGB32);
    ground.fill(QColor(0xf4, 0xf2, 0xff));
    for (const QColor &color : {QColor(0x9a, 0x9d, 0xab), QColor(0x9a, 0x9d, 0xab, 0x40), QColor(0x6d, 0x28, 0xd9)}) {
        QImage ours = ground;
        ScenePainting::blendThinLines(ours, toPixels, lines, color, 1.5 * 0.4);
        QImage theirs = ground;
        {
            QPainter painter(&theirs);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setTransform(toPixels);
            painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::FlatCap));
            painter.drawLines(lines.constData(), int(lines.size()));
        }
        // How far each picture moved from the ground, and where they disagree.
        double oursInk = 0;
        double theirsInk = 0;
        int worst = 0;
        for (int y = 0; y < ground.height(); ++y) {
            for (int x = 0; x < ground.width(); ++x) {
                const QRgb g = ground.pixel(x, y);
                const QRgb a = ours.pixel(x, y);
                const QRgb b = theirs.pixel(x, y);
                oursInk +=
                    std::abs(qRed(a) - qRed(g)) + std::abs(qGreen(a) - qGreen(g)) + std::abs(qBlue(a) - qBlue(g));
                theirsInk +=
                    std::abs(qRed(b) - qRed(g)) + std::abs(qGreen(b) - qGreen(g)) + std::abs(qBlue(b) - qBlue(g));
                worst = std::max({worst, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                  std::abs(qBlue(a) - qBlue(b))});
            }
        }
        SCOPED_TRACE(color.name(QColor::HexArgb).toStdString());
        ASSERT_GT(theirsInk, 0);
        EXPECT_NEAR(oursInk / theirsInk, 1.0, 0.1) << "as strong";
        EXPECT_LE(worst, 24) << "in the same places";
    }
}

} // namespace
} // namespace fenrow::testing
