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
    // Lines that do not cross: shallow, steep, level and a short dash.
    const QList<QLineF> apartLines{lines[0], {QPointF(100, 120), QPointF(160, 470)}, lines[3], lines[5]};
    QImage ground(QSize(320, 200), QImage::Format_RGB32);
    ground.fill(QColor(0xf4, 0xf2, 0xff));
    // Dashed as a subtask line, its pattern begun some way before each line's first end.
    ScenePainting::ThinDashes dashes{3 * 1.5, 5.5 * 1.5, {}};
    QList<QLineF> dashSegments;
    for (const QLineF &line : lines) {
        dashes.phases.append(7.0 * dashes.phases.size());
        const QPointF unit = (line.p2() - line.p1()) / line.length();
        ScenePainting::appendDashes(dashSegments, line.p1() - unit * dashes.phases.last(), unit, dashes.phases.last(),
                                    dashes.phases.last() + line.length(), ScenePainting::subtaskDashes, 1.5);
    }
    // Each picture's distance from the ground, and the largest difference between two.
    const auto ink = [&](const QImage &image) {
        double sum = 0;
        for (int y = 0; y < ground.height(); ++y)
            for (int x = 0; x < ground.width(); ++x) {
                const QRgb a = image.pixel(x, y);
                const QRgb g = ground.pixel(x, y);
                sum += std::abs(qRed(a) - qRed(g)) + std::abs(qGreen(a) - qGreen(g)) + std::abs(qBlue(a) - qBlue(g));
            }
        return sum;
    };
    const auto apart = [](const QImage &a, const QImage &b, int x, int y) {
        const QRgb p = a.pixel(x, y);
        const QRgb q = b.pixel(x, y);
        return std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)), std::abs(qBlue(p) - qBlue(q))});
    };
    const auto worst = [&](const QImage &a, const QImage &b) {
        int most = 0;
        for (int y = 0; y < ground.height(); ++y)
            for (int x = 0; x < ground.width(); ++x)
                most = std::max(most, apart(a, b, x, y));
        return most;
    };
    for (const bool dashed : {false, true}) {
        for (const QColor &color :
             {QColor(0x9a, 0x9d, 0xab), QColor(0x9a, 0x9d, 0xab, 0x40), QColor(0x6d, 0x28, 0xd9)}) {
            SCOPED_TRACE(color.name(QColor::HexArgb).toStdString() + (dashed ? " dashed" : ""));
            const ScenePainting::ThinDashes *pattern = dashed ? &dashes : nullptr;
            QImage ours = ground;
            ScenePainting::blendThinLines(ours, ours.rect(), toPixels, lines, color, 1.5 * 0.4, pattern);
            QImage theirs = ground;
            {
                QPainter painter(&theirs);
                painter.setRenderHint(QPainter::Antialiasing);
                painter.setTransform(toPixels);
                painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::FlatCap));
                const QList<QLineF> &drawn = dashed ? dashSegments : lines;
                painter.drawLines(drawn.constData(), int(drawn.size()));
            }
            ASSERT_GT(ink(theirs), 0);
            // The faintest colour's dashes round up a little more, in many short pieces.
            EXPECT_NEAR(ink(ours) / ink(theirs), 1.0, dashed ? 0.12 : 0.1) << "as strong";
            EXPECT_LE(worst(ours, theirs), 24) << "in the same places";

            // Drawn in two parts, as the layer is where the view shows it,
            // each touches only its own pixels and they meet without a seam.
            QImage parts = ground;
            for (const QRect &part : {QRect(0, 0, 40, 200), QRect(40, 0, 280, 83), QRect(40, 83, 280, 117)})
                ScenePainting::blendThinLines(parts, part, toPixels, lines, color, 1.5 * 0.4, pattern);
            EXPECT_LE(worst(parts, ours), 1) << "in parts as whole";
            // As a layer's strips are drawn: the lines mapped once, each
            // strip an image over the layer's rows from its first on.
            QImage strips = ground;
            const auto mapped = ScenePainting::ThinLineRuns::map(toPixels, lines, pattern);
            for (const auto &[from, to] : {std::pair(0, 61), std::pair(61, 64), std::pair(64, 200)}) {
                QImage rows(strips.scanLine(from), strips.width(), to - from, strips.bytesPerLine(), strips.format());
                ScenePainting::blendThinLines(rows, rows.rect(), mapped, from, color, 1.5 * 0.4, pattern);
            }
            EXPECT_LE(worst(strips, ours), 1) << "in strips as whole";

            // A filter dims every line at once from the undimmed layer:
            // as each blended faded, where lines do not cross (there a
            // quarter of their sum is not the sum of their quarters), and
            // the lines it leaves whole brought back to as they were.
            ScenePainting::ThinDashes apartDashes = dashes;
            apartDashes.phases.resize(apartLines.size());
            const ScenePainting::ThinDashes *apartPattern = dashed ? &apartDashes : nullptr;
            QImage whole = ground;
            ScenePainting::blendThinLines(whole, whole.rect(), toPixels, apartLines, color, 1.5 * 0.4, apartPattern);
            QImage faded = ground;
            ScenePainting::blendThinLines(faded, faded.rect(), toPixels, apartLines,
                                          ScenePainting::withAlpha(color, color.alphaF() * 0.25), 1.5 * 0.4,
                                          apartPattern);
            QImage dimmed(ground.size(), QImage::Format_RGB32);
            ScenePainting::dimLines(dimmed.bits(), whole.constBits(), dimmed.bytesPerLine(), dimmed.rect(),
                                    ground.pixel(0, 0));
            EXPECT_LE(worst(dimmed, faded), 2) << "dimmed at once";
            ScenePainting::blendThinLines(dimmed, dimmed.rect(), toPixels, apartLines, color, 1.5 * 0.4, apartPattern,
                                          true);
            EXPECT_LE(worst(dimmed, whole), 2) << "restored";
        }
    }
}

} // namespace
} // namespace fenrow::testing
