#include "CanvasScenePainter.h"

#include "CanvasScenePainting.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasGeometry.h"
#include "domain/DependencyEdge.h"
#include "domain/FileLink.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"

#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <functional>
#include <latch>
#include <optional>
#include <thread>
#include <type_traits>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace fenrow {

using namespace CanvasGeometry;
using namespace ScenePainting;

namespace {

// The part of the segment from a to b inside `rect` (Liang and Barsky), as
// fractions along it. A long line that crosses the view is stroked only
// where it shows: dashes along a line thousands of units long cost more
// than everything else on screen.
std::optional<std::pair<double, double>> clipSegment(QPointF a, QPointF b, const QRectF &rect)
{
    double t0 = 0;
    double t1 = 1;
    const QPointF d = b - a;
    const std::array<std::pair<double, double>, 4> sides{{{-d.x(), a.x() - rect.left()},
                                                          {d.x(), rect.right() - a.x()},
                                                          {-d.y(), a.y() - rect.top()},
                                                          {d.y(), rect.bottom() - a.y()}}};
    for (const auto &[p, q] : sides) {
        if (p == 0) {
            if (q < 0)
                return std::nullopt;
            continue;
        }
        const double t = q / p;
        if (p < 0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1)
            return std::nullopt;
    }
    return std::pair(t0, t1);
}

// Lines gathered by pen and stroked in one call per pen, with their
// arrowheads filled as one path per colour (in a layer, per strip of it),
// rather than a call and a stroker's set-up for each of thousands of lines
// and dashes. A dashed line is kept whole with where its pattern stands at
// its first end: blended, its dashes are drawn in one pass along it;
// stroked, they are cut here.
class LineBatches
{
public:
    // The part of the line from a to b inside `visible`.
    void add(const QPen &pen, QPointF a, QPointF b, const QRectF &visible, std::span<const double> dashes = {})
    {
        const auto part = clipSegment(a, b, visible);
        if (!part)
            return;
        const QPointF d = b - a;
        Batch &batch = find(pen, dashes);
        batch.lines.append(QLineF(a + d * part->first, a + d * part->second));
        if (!dashes.empty())
            batch.phases.append(part->first * std::hypot(d.x(), d.y()));
    }

    void addHead(const QColor &color, QPointF tip, QPointF source)
    {
        Batch *owner = nullptr;
        for (Batch &batch : m_batches)
            if (!owner && batch.pen.color() == color)
                owner = &batch;
        // Arrowheads of a colour no line has, as for a line too short to show.
        if (!owner)
            owner = &find(QPen(color, 0, Qt::NoPen), {});
        owner->heads.append(Arrowhead{tip, source}.triangle());
    }

    // Lines under arrowheads, as when each line was drawn with its head.
    void draw(QPainter &painter) const
    {
        drawLines(painter, nullptr, {});
        drawHeads(painter);
    }

    // The thin lines mapped once to the pixels of a layer that `toPixels`
    // maps to, for all the strips it is drawn in.
    void mapThinLines(const QTransform &toPixels)
    {
        for (Batch &batch : m_batches) {
            if (!blendsThin(batch, toPixels))
                continue;
            batch.thin = thinDashes(batch);
            batch.mapped = ThinLineRuns::map(toPixels, batch.lines, batch.dashes.empty() ? nullptr : &batch.thin);
        }
        m_mappedTo = toPixels;
    }

    // Into an opaque layer, lines at most a pixel wide are blended directly,
    // within `clip`, its pixels the painter is clipped to; the layer's first
    // row is row `firstRow` of the pixels the lines were mapped to. Only
    // reads what was gathered, so two threads may draw two parts of a layer
    // at once.
    void drawLines(QPainter &painter, QImage *layer, const QRect &clip, int firstRow = 0) const
    {
        const QTransform &transform = painter.transform();
        const double pixelRatio = layer ? layer->devicePixelRatio() : 1;
        const QTransform toPixels = transform * QTransform::fromScale(pixelRatio, pixelRatio);
        const bool direct = layer && layer->format() == QImage::Format_RGB32 &&
                            transform.type() <= QTransform::TxScale && qFuzzyCompare(toPixels.m11(), toPixels.m22());
        for (const Batch &batch : m_batches) {
            if (batch.lines.isEmpty())
                continue;
            const double pixels = batch.pen.widthF() * toPixels.m11();
            const double width = std::max(batch.pen.widthF(), 1.0);
            if (direct && blendsThin(batch, toPixels)) {
                if (batch.mapped && toPixels == m_mappedTo * QTransform::fromTranslate(0, -firstRow)) {
                    blendThinLines(*layer, clip, *batch.mapped, firstRow, batch.pen.color(), pixels,
                                   batch.dashes.empty() ? nullptr : &batch.thin, m_restore);
                    continue;
                }
                const ThinDashes dashes = thinDashes(batch);
                blendThinLines(*layer, clip, toPixels, batch.lines, batch.pen.color(), pixels,
                               batch.dashes.empty() ? nullptr : &dashes, m_restore);
                continue;
            }
            painter.setPen(batch.pen);
            if (batch.dashes.empty()) {
                painter.drawLines(batch.lines.constData(), int(batch.lines.size()));
                continue;
            }
            QList<QLineF> segments;
            for (qsizetype i = 0; i < batch.lines.size(); ++i) {
                const QLineF &line = batch.lines[i];
                const double length = line.length();
                if (length < degenerateLength)
                    continue;
                const QPointF unit = (line.p2() - line.p1()) / length;
                appendDashes(segments, line.p1() - unit * batch.phases[i], unit, batch.phases[i],
                             batch.phases[i] + length, batch.dashes, width);
            }
            painter.drawLines(segments.constData(), int(segments.size()));
        }
    }

    // The layer already holds these lines dimmed: thin ones are brought
    // back to full strength rather than blended again.
    void restoreDimmed() { m_restore = true; }

    // Given an `area`, in the lines' units, only the heads that reach into
    // it: a strip of a layer fills its own, so both threads share the work.
    void drawHeads(QPainter &painter, const std::optional<QRectF> &area = std::nullopt) const
    {
        for (const Batch &batch : m_batches) {
            // Overlapping heads are one shape, not holes in each other.
            QPainterPath heads;
            heads.setFillRule(Qt::WindingFill);
            for (const std::array<QPointF, 3> &corners : batch.heads) {
                if (area) {
                    const auto [left, right] = std::minmax({corners[0].x(), corners[1].x(), corners[2].x()});
                    const auto [top, bottom] = std::minmax({corners[0].y(), corners[1].y(), corners[2].y()});
                    if (right < area->left() || left > area->right() || bottom < area->top() || top > area->bottom())
                        continue;
                }
                heads.moveTo(corners[0]);
                heads.lineTo(corners[1]);
                heads.lineTo(corners[2]);
                heads.closeSubpath();
            }
            if (!heads.isEmpty())
                painter.fillPath(heads, batch.pen.color());
        }
    }

private:
    struct Batch {
        QPen pen;
        std::span<const double> dashes;
        QList<QLineF> lines;
        // Per line of a dashed batch: how far its first end is from where the pattern began.
        QList<double> phases;
        QList<std::array<QPointF, 3>> heads;
        // Its pattern in the lines' units, for blending them thin.
        ThinDashes thin;
        std::optional<ThinLineRuns> mapped;
    };

    // Whether a batch is blended by hand rather than stroked: plain or
    // simply dashed lines at most a pixel wide.
    static bool blendsThin(const Batch &batch, const QTransform &toPixels)
    {
        return batch.pen.style() == Qt::SolidLine && batch.dashes.size() <= 2 &&
               batch.pen.widthF() * toPixels.m11() <= 1;
    }

    // A dashed batch's pattern in the lines' units, for blending it thin.
    static ThinDashes thinDashes(const Batch &batch)
    {
        if (batch.dashes.empty())
            return {};
        const double width = std::max(batch.pen.widthF(), 1.0);
        return ThinDashes{batch.dashes[0] * width, (batch.dashes[0] + batch.dashes[1]) * width, batch.phases};
    }

    Batch &find(const QPen &pen, std::span<const double> dashes)
    {
        for (Batch &batch : m_batches)
            if (batch.pen == pen && batch.dashes.data() == dashes.data() && batch.dashes.size() == dashes.size())
                return batch;
        m_batches.append(Batch{pen, dashes, {}, {}, {}, {}, {}});
        return m_batches.last();
    }

    QList<Batch> m_batches;
    bool m_restore = false;
    QTransform m_mappedTo;
};

QColor dimmed(QColor color, double opacity)
{
    if (opacity < 1)
        color.setAlphaF(float(color.alphaF() * opacity));
    return color;
}

} // namespace

namespace ScenePainting {

void appendDashes(QList<QLineF> &segments, QPointF a, QPointF unit, double from, double to,
                  std::span<const double> dashes, double width)
{
    double period = 0;
    for (const double dash : dashes)
        period += dash * width;
    // Whole periods before `from` are skipped at once.
    double at = std::floor(from / period) * period;
    for (std::size_t i = 0; at < to; i = (i + 1) % dashes.size()) {
        const double next = at + dashes[i] * width;
        if (i % 2 == 0 && next > from)
            segments.append(QLineF(a + unit * std::max(at, from), a + unit * std::min(next, to)));
        at = next;
    }
}

void appendClippedLine(QList<QLineF> &segments, QPointF a, QPointF b, const QRectF &visible,
                       std::span<const double> dashes, double penWidth)
{
    const auto part = clipSegment(a, b, visible);
    if (!part)
        return;
    const QPointF d = b - a;
    if (dashes.empty()) {
        segments.append(QLineF(a + d * part->first, a + d * part->second));
        return;
    }
    const double length = std::hypot(d.x(), d.y());
    if (length < degenerateLength)
        return;
    appendDashes(segments, a, d / length, part->first * length, part->second * length, dashes, std::max(penWidth, 1.0));
}

void drawClippedLine(QPainter &painter, QPointF a, QPointF b, const QRectF &visible, std::span<const double> dashes)
{
    QList<QLineF> segments;
    appendClippedLine(segments, a, b, visible, dashes, painter.pen().widthF());
    painter.drawLines(segments.constData(), int(segments.size()));
}

// The compiler leaves `std::fill_n` a loop of single stores at the
// optimisation level the program is built with: filling a whole view took
// two to three times as long.
void fillPixels(QRgb *row, int count, QRgb color)
{
    int x = 0;
#ifdef __SSE2__
    const __m128i four = _mm_set1_epi32(int(color));
    for (; x + 4 <= count; x += 4)
        _mm_storeu_si128(reinterpret_cast<__m128i *>(row + x), four);
#endif
    for (; x < count; ++x)
        row[x] = color;
}

void dimLines(uchar *target, const uchar *lines, qsizetype stride, const QRect &rect, QRgb ground)
{
    static_assert(dimmedLineStrength == 0.25, "the blend below takes a quarter of the lines");
    // Each byte the rounded mean of the ground and the mean of ground and
    // line: three parts ground to one part line, within a level. SSE2's
    // byte mean does sixteen at once; the scalar rest gives the same bytes.
    const auto dim = [](uint g, uint l) -> uint { return (g + ((g + l + 1) >> 1) + 1) >> 1; };
    const qsizetype bytes = qsizetype(rect.width()) * 4;
#ifdef __SSE2__
    const __m128i g = _mm_set1_epi32(int(ground));
#endif
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        uchar *to = target + y * stride + qsizetype(rect.left()) * 4;
        const uchar *from = lines + y * stride + qsizetype(rect.left()) * 4;
        qsizetype i = 0;
#ifdef __SSE2__
        for (; i + 16 <= bytes; i += 16) {
            const __m128i l = _mm_loadu_si128(reinterpret_cast<const __m128i *>(from + i));
            _mm_storeu_si128(reinterpret_cast<__m128i *>(to + i), _mm_avg_epu8(g, _mm_avg_epu8(g, l)));
        }
#endif
        for (; i < bytes; i += 4) {
            const QRgb l = *reinterpret_cast<const QRgb *>(from + i);
            *reinterpret_cast<QRgb *>(to + i) =
                qRgb(int(dim(qRed(ground), qRed(l))), int(dim(qGreen(ground), qGreen(l))),
                     int(dim(qBlue(ground), qBlue(l))));
        }
    }
}

// A column or row at a time, two pixels shared by how near each lies to
// the line. The raster engine's stroker sends every pixel of such a line
// through its blending on its own, which made a new layer of long lines
// take 60 to 140 ms. The image is walked in bands of rows that stay in the
// cache: a layer is larger than it, and a steep line meets a new row at
// every pixel. Dashes are a share of each column rather than lines of their
// own: zoomed out, a dash is two pixels long, and its own set-up cost more
// than its pixels.
void blendThinLines(QImage &image, const QRect &clip, const QTransform &toPixels, const QList<QLineF> &lines,
                    QColor color, double strength, const ThinDashes *dashes, bool restore)
{
    if (!(clip & image.rect()).isEmpty())
        blendThinLines(image, clip, ThinLineRuns::map(toPixels, lines, dashes), 0, color, strength, dashes, restore);
}

ThinLineRuns ThinLineRuns::map(const QTransform &toPixels, const QList<QLineF> &lines, const ThinDashes *dashes)
{
    ThinLineRuns mapped;
    mapped.pixelsPerUnit = std::abs(toPixels.m11());
    mapped.runs.reserve(std::size_t(lines.size()));
    for (qsizetype n = 0; n < lines.size(); ++n) {
        QPointF a = toPixels.map(lines[n].p1());
        QPointF b = toPixels.map(lines[n].p2());
        Run line;
        line.firstRow = int(std::floor(std::min(a.y(), b.y()))) - 1;
        line.lastRow = int(std::ceil(std::max(a.y(), b.y()))) + 1;
        line.leftmost = std::min(a.x(), b.x());
        line.rightmost = std::max(a.x(), b.x());
        line.steep = std::abs(b.y() - a.y()) > std::abs(b.x() - a.x());
        if (line.steep) {
            a = a.transposed();
            b = b.transposed();
        }
        const bool reversed = a.x() > b.x();
        if (reversed)
            std::swap(a, b);
        const double run = b.x() - a.x();
        // A point draws nothing, as with flat caps.
        if (run <= 0)
            continue;
        line.a = a;
        line.b = b;
        line.slope = (b.y() - a.y()) / run;
        if (dashes) {
            const double length = std::hypot(run, b.y() - a.y());
            const double phase = dashes->phases[n] * mapped.pixelsPerUnit;
            line.patternAtA = reversed ? phase + length : phase;
            line.patternPerStep = (reversed ? -length : length) / run;
        }
        mapped.runs.push_back(line);
    }
    return mapped;
}

void blendThinLines(QImage &image, const QRect &clip, const ThinLineRuns &lines, int firstRow, QColor color,
                    double strength, const ThinDashes *dashes, bool restore)
{
    using Run = ThinLineRuns::Run;
    constexpr int bandRows = 32;
    // In the rows of the image the lines were mapped to.
    const QRect area = (clip & image.rect()).translated(0, firstRow);
    if (area.isEmpty())
        return;
    const int left = area.left();
    const int right = area.right() + 1;
    const int top = area.top();
    const int bottom = area.bottom() + 1;
    // Row y of the mapped image, which is this image's row y - firstRow.
    uchar *const bits = image.bits();
    const qsizetype stride = image.bytesPerLine();
    const auto row = [bits, stride, firstRow](int y) { return bits + qsizetype(y - firstRow) * stride; };
    const int alpha = int(std::lround(std::clamp(color.alphaF() * strength, 0.0, 1.0) * 256));
    const uint source = color.rgb();
    // A pixel moved towards the colour by f of 256.
    const auto towards = [source](QRgb d, int f) -> QRgb {
        const uint rb = ((source & 0xff00ff) * uint(f) + (d & 0xff00ff) * uint(256 - f)) >> 8;
        const uint ag = ((source >> 8) & 0xff00ff) * uint(f) + ((d >> 8) & 0xff00ff) * uint(256 - f);
        return (rb & 0xff00ff) | (ag & 0xff00ff00);
    };
    // Two at once, each channel in sixteen bits: the same bytes.
#ifdef __SSE2__
    const __m128i ink16 = _mm_unpacklo_epi8(_mm_set1_epi32(int(source)), _mm_setzero_si128());
#endif
    const auto towardsPair = [&](QRgb &first, QRgb &second, int f, int g) {
#ifdef __SSE2__
        const __m128i both = _mm_unpacklo_epi32(_mm_cvtsi32_si128(int(first)), _mm_cvtsi32_si128(int(second)));
        const __m128i pixels = _mm_unpacklo_epi8(both, _mm_setzero_si128());
        const __m128i shares = _mm_unpacklo_epi64(_mm_set1_epi16(short(f)), _mm_set1_epi16(short(g)));
        const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(256), shares);
        const __m128i mixed =
            _mm_srli_epi16(_mm_add_epi16(_mm_mullo_epi16(ink16, shares), _mm_mullo_epi16(pixels, rest)), 8);
        const __m128i packed = _mm_packus_epi16(mixed, mixed);
        first = QRgb(_mm_cvtsi128_si32(packed));
        second = QRgb(_mm_cvtsi128_si32(_mm_srli_si128(packed, 4)));
#else
        first = towards(first, f);
        second = towards(second, g);
#endif
    };
    const double toPixelLength = lines.pixelsPerUnit;
    const double dash = dashes ? dashes->dash * toPixelLength : 0;
    const double period = dashes ? dashes->period * toPixelLength : 0;
    // How much of the pattern is ink up to a distance along the line.
    const auto inkTo = [&](double s) {
        const double periods = std::floor(s / period);
        return periods * dash + std::min(s - periods * period, dash);
    };

    // The lines that reach this part, in the bands of rows each reaches.
    std::vector<std::vector<const Run *>> bands(std::size_t((bottom - top + bandRows - 1) / bandRows));
    for (const Run &line : lines.runs) {
        const int from = std::max(line.firstRow, top);
        const int to = std::min(line.lastRow, bottom - 1);
        if (from > to || line.rightmost < left - 1 || line.leftmost > right + 1)
            continue;
        for (int band = (from - top) / bandRows; band <= (to - top) / bandRows; ++band)
            bands[std::size_t(band)].push_back(&line);
    }

    // Restoring, a pixel that holds a line's share f dimmed, g + d·f·(c − g)
    // with d the dimmed strength, takes k of what is left towards the colour
    // so that it ends at g + f·(c − g): k = (1 − d)·f / (1 − d·f).
    std::array<int, 257> restored{};
    if (restore)
        for (int f = 0; f <= 256; ++f)
            restored[std::size_t(f)] =
                int(std::lround((1 - dimmedLineStrength) * f / (1 - dimmedLineStrength * f / 256.0)));

    for (std::size_t band = 0; band < bands.size(); ++band) {
        const int rowFrom = top + int(band) * bandRows;
        const int rowTo = std::min(rowFrom + bandRows, bottom);
        // A pixel moved towards the colour by f of 256.
        const auto plot = [&](int x, int y, int f) {
            if (x < left || y < rowFrom || x >= right || y >= rowTo || f <= 0)
                return;
            if (restore)
                f = restored[std::size_t(std::min(f, 256))];
            QRgb &pixel = reinterpret_cast<QRgb *>(row(y))[x];
            pixel = towards(pixel, f);
        };
        // The two pixels a column of a line shares between, `near` and the
        // one after it across the line, moved by f and g of 256: no bounds
        // are checked along the line, whose columns lie within the band.
        const auto plotPair = [&](bool steep, int along, int near, int f, int g) {
            const int acrossEnd = steep ? right : rowTo;
            if (near < (steep ? left : rowFrom) || near + 1 >= acrossEnd) {
                if (steep) {
                    plot(near, along, f);
                    plot(near + 1, along, g);
                } else {
                    plot(along, near, f);
                    plot(along, near + 1, g);
                }
                return;
            }
            if (restore) {
                f = restored[std::size_t(std::clamp(f, 0, 256))];
                g = restored[std::size_t(std::clamp(g, 0, 256))];
            }
            QRgb *const first =
                steep ? reinterpret_cast<QRgb *>(row(along)) + near : reinterpret_cast<QRgb *>(row(near)) + along;
            QRgb *const second =
                steep ? first + 1 : reinterpret_cast<QRgb *>(reinterpret_cast<uchar *>(first) + stride);
            towardsPair(*first, *second, f, g);
        };
        // The columns from `from` to `to` that a line crosses whole, `across`
        // where it stands in the first, in 1/65536ths of a pixel. A new
        // layer spends most of its time here, so whether the line is steep,
        // stepped through a dash pattern or restored is settled once for
        // the line rather than asked again at every column.
        const auto wholeColumns =
            [&]<bool steep, bool stepped, bool restoring>(int from, int to, qint64 across, const qint64 step, double at,
                                                          const double patternStep, const double inkScale) {
                const int acrossFirst = steep ? left : rowFrom;
                const int acrossLast = (steep ? right : rowTo) - 2;
                // Where the pattern stands at `at`, counted in ink from the period's start.
                double inkAt = stepped ? std::min(at, dash) : 0;
                for (int x = from; x < to; ++x, across += step) {
                    int ink = alpha;
                    if constexpr (stepped) {
                        // The ink up to the next place, whose period is this one,
                        // the one before or the one after.
                        const double next = at + patternStep;
                        const double turn = double(next >= period) - double(next < 0);
                        const double inkNext = turn * dash + std::min(next - turn * period, dash);
                        ink = int(std::abs(inkNext - inkAt) * inkScale + 0.5);
                        at = next - turn * period;
                        inkAt = inkNext - turn * dash;
                    }
                    const int near = int(across >> 16);
                    int g = (int((across >> 8) & 255) * ink) >> 8;
                    int f = ink - g;
                    if (near < acrossFirst || near > acrossLast) [[unlikely]] {
                        plotPair(steep, x, near, f, g);
                        continue;
                    }
                    if constexpr (restoring) {
                        f = restored[std::size_t(std::clamp(f, 0, 256))];
                        g = restored[std::size_t(std::clamp(g, 0, 256))];
                    }
                    QRgb *first;
                    QRgb *second;
                    if constexpr (steep) {
                        first = reinterpret_cast<QRgb *>(row(x)) + near;
                        second = first + 1;
                    } else {
                        first = reinterpret_cast<QRgb *>(row(near)) + x;
                        second = reinterpret_cast<QRgb *>(reinterpret_cast<uchar *>(first) + stride);
                    }
                    towardsPair(*first, *second, f, g);
                }
            };
        for (const Run *run : bands[band]) {
            const Run &line = *run;
            const QPointF &a = line.a;
            const QPointF &b = line.b;
            // Of the columns from x to x + share along the axis, the part in ink.
            const auto inked = [&](double x, double share) {
                if (!dashes)
                    return share;
                const double s0 = line.patternAtA + (x - a.x()) * line.patternPerStep;
                const double s1 = s0 + share * line.patternPerStep;
                return std::abs(inkTo(s1) - inkTo(s0)) / std::abs(line.patternPerStep);
            };
            int first = std::max(int(std::floor(a.x())), line.steep ? rowFrom : left);
            int last = std::min(int(std::ceil(b.x())), line.steep ? rowTo : right);
            if (!line.steep && line.slope != 0) {
                // The columns where the line is within a pixel of the band.
                const double x1 = a.x() + (rowFrom - 1 - a.y()) / line.slope;
                const double x2 = a.x() + (rowTo + 1 - a.y()) / line.slope;
                first = std::max(first, int(std::floor(std::min(x1, x2))) - 1);
                last = std::min(last, int(std::ceil(std::max(x1, x2))) + 1);
            }
            // Columns the line crosses whole are stepped in 1/65536ths of a
            // pixel; the two ends share their column with what is beside them.
            const int wholeFrom = int(std::ceil(a.x()));
            const int wholeTo = int(std::floor(b.x()));
            for (int i = first; i < last;) {
                if (i >= wholeFrom && i < wholeTo) {
                    const int end = std::min(wholeTo, last);
                    qint64 across = qint64(std::floor((a.y() + (i + 0.5 - a.x()) * line.slope - 0.5) * 65536));
                    const qint64 step = std::llround(line.slope * 65536);
                    // A dashed line's place in its pattern, stepped a column
                    // at a time while a column spans less than a period.
                    const double patternStep = line.patternPerStep;
                    const bool stepped = dashes && std::abs(patternStep) < period;
                    double at = 0;
                    if (stepped) {
                        const double s = line.patternAtA + (i - a.x()) * patternStep;
                        at = s - std::floor(s / period) * period;
                    }
                    const double inkScale = dashes ? alpha / std::abs(patternStep) : 0;
                    if (dashes && !stepped) {
                        for (; i < end; ++i, across += step) {
                            const int ink = int(inked(i, 1) * alpha + 0.5);
                            const int below = (int((across >> 8) & 255) * ink) >> 8;
                            plotPair(line.steep, i, int(across >> 16), ink - below, below);
                        }
                        continue;
                    }
                    const auto columns = [&](auto steepKind, auto steppedKind, auto restoreKind) {
                        wholeColumns.template operator()<decltype(steepKind)::value, decltype(steppedKind)::value,
                                                         decltype(restoreKind)::value>(i, end, across, step, at,
                                                                                       patternStep, inkScale);
                    };
                    const auto restoring = [&](auto steepKind, auto steppedKind) {
                        if (restore)
                            columns(steepKind, steppedKind, std::true_type());
                        else
                            columns(steepKind, steppedKind, std::false_type());
                    };
                    const auto stepping = [&](auto steepKind) {
                        if (stepped)
                            restoring(steepKind, std::true_type());
                        else
                            restoring(steepKind, std::false_type());
                    };
                    if (line.steep)
                        stepping(std::true_type());
                    else
                        stepping(std::false_type());
                    i = end;
                    continue;
                }
                // The part of this column the line spans, and its height at the middle.
                const double from = std::max(a.x(), double(i));
                const double to = std::min(b.x(), double(i + 1));
                const int column = i++;
                if (to <= from)
                    continue;
                // In 256ths of a pixel: the row or column above, and how near the one below is.
                const int across = int(std::floor((a.y() + ((from + to) / 2 - a.x()) * line.slope - 0.5) * 256));
                const int coverage = int(inked(from, to - from) * alpha + 0.5);
                const int below = ((across & 255) * coverage) >> 8;
                if (line.steep) {
                    plot(across >> 8, column, coverage - below);
                    plot((across >> 8) + 1, column, below);
                } else {
                    plot(column, across >> 8, coverage - below);
                    plot(column, (across >> 8) + 1, below);
                }
            }
        }
    }
}

void addArrowhead(QPainterPath &path, QPointF tip, QPointF source)
{
    const auto corners = Arrowhead{tip, source}.triangle();
    path.moveTo(corners[0]);
    path.lineTo(corners[1]);
    path.lineTo(corners[2]);
    path.closeSubpath();
}

void drawArrowhead(QPainter &painter, QPointF tip, QPointF source, const QColor &color)
{
    QPainterPath path;
    addArrowhead(path, tip, source);
    painter.fillPath(path, color);
}

} // namespace ScenePainting

// --- lines between cards and files

void CanvasScenePainter::paintLines(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors,
                                    const QRectF &visible, const QSet<QUuid> &moving, bool onlyMoving,
                                    LineDimming dimming, QImage *layer, const QRect &layerClip,
                                    const std::function<void(QPainter &, const QRect &)> &ground) const
{
    const TaskFlow &flow = *editor.flow();
    const CanvasInteraction &interaction = editor.interaction();
    const auto center = [&](const FlowNode &node) { return interaction.effectiveCenter(node.id, {node.posX, node.posY}); };
    const auto fileCenter = [&](const FlowFile &file) {
        return interaction.effectiveFileCenter(file.id, {file.posX, file.posY});
    };
    // Either the lines of moving cards, or all the others.
    const auto wanted = [&](const QUuid &a, const QUuid &b) {
        return onlyMoving == (moving.contains(a) || moving.contains(b));
    };

    // Whether a line between these cards is dimmed, and whether it is drawn at all.
    const bool dims = dimming != LineDimming::ignored && editor.dimsByFilter();
    const auto isDimmed = [&](const FlowNode &node) { return dims && editor.isDimmed(node); };
    const auto skipped = [&](bool dimmed) { return dimming == LineDimming::undimmedOnly && dimmed; };

    LineBatches batches;
    if (dimming == LineDimming::undimmedOnly)
        batches.restoreDimmed();

    // Into a layer, a strip of rows at a time, its ground drawn just before
    // its lines, so that the pixels are still in the cache when the lines
    // are blended into them: from memory, reading them cost more than the
    // blending. Strips are drawn on two threads, each into an image over
    // the same pixels: a new flow or a filter draws the whole view's lines.
    constexpr int stripRows = 64;
    const QTransform scene = painter.transform();
    const QPainter::RenderHints hints = painter.renderHints();
    const int end = layerClip.bottom() + 1;
    const int strips = (layerClip.height() + stripRows - 1) / stripRows;
    const bool split = layer && strips >= 4 && std::thread::hardware_concurrency() > 1;
    // Drawing only the ground, the second thread begins before the lines
    // are gathered, and takes the larger part.
    const int upper = dimming == LineDimming::undimmedOnly ? strips * 3 / 8 : strips / 2;
    const int middle = split ? layerClip.top() + upper * stripRows : end;
    uchar *const bits = layer ? layer->bits() : nullptr;
    // The strips from row `from` to `to` into `target`, whose first row is
    // the layer's row `first`, with their lines or only their ground.
    const auto drawGround = [&](QPainter &on, QImage &target, int from, int to, int first, bool lines) {
        const QTransform down = QTransform::fromTranslate(0, -first);
        for (int top = from; top < to; top += stripRows) {
            const QRect strip(layerClip.left(), top, layerClip.width(), std::min(stripRows, to - top));
            on.setTransform(down);
            on.setClipRect(strip);
            if (ground)
                ground(on, strip);
            if (!lines)
                continue;
            on.setTransform(scene * down);
            batches.drawLines(on, &target, strip.translated(0, -first), first);
            // A pixel's reach around the strip, for the heads' soft edges.
            batches.drawHeads(on, scene.inverted().mapRect(QRectF(strip).adjusted(-1, -1, 1, 1)));
        }
    };
    const auto drawLowerGround = [&] {
        QImage lower(bits + qsizetype(middle) * layer->bytesPerLine(), layer->width(), end - middle,
                     layer->bytesPerLine(), layer->format());
        QPainter on(&lower);
        on.setRenderHints(hints);
        drawGround(on, lower, middle, end, middle, false);
    };
    // The lines between the cards are found in the editor's scene where it
    // is kept (hit tests made it, and a filter that dims leaves it), and
    // the scene is made for a filter's few whole lines: read from the
    // records, the places of every line's cards cost more than the rest of
    // such a frame. A gesture's frames read the records: the scene goes
    // with each of its steps.
    const bool fromScene = moving.isEmpty() && (editor.hasScene() || dimming == LineDimming::undimmedOnly);
    const auto gather = [&] {
        for (const FileLink *link : flow.fileLinks()) {
            if (!editor.isDrawn(*link) || !wanted(link->file()->id, link->node()->id))
                continue;
            const FlowFile &file = *link->file();
            const FlowNode &node = *link->node();
            if (skipped(isDimmed(node)))
                continue;
            const EdgeLine line = EdgeLine::between(fileCenter(file), interaction.effectiveFileSize(file), center(node),
                                                    interaction.effectiveSize(node));
            if (!visible.intersects(QRectF(line.start, line.end).normalized().adjusted(-1, -1, 1, 1)))
                continue;
            const bool selected = interaction.selectedFileLinkID() == link->id;
            const QColor color = selected ? colors.ramp.brand : withAlpha(colors.secondaryText, 0.6);
            batches.add(QPen(dimmed(color, isDimmed(node) ? dimmedLineStrength : 1), fileLinkStroke, Qt::SolidLine,
                             Qt::FlatCap),
                        line.start, line.end, visible, linkDashes);
        }

        const std::optional<EdgeReconnect> &reconnect = interaction.edgeReconnect();
        const auto addEdge = [&](const DependencyEdge &edge, const FlowNode &from, const FlowNode &to,
                                 QPointF fromCenter, NodeSize fromSize, QPointF toCenter, NodeSize toSize) {
            const bool dimmedEdge = isDimmed(from) || isDimmed(to);
            if (skipped(dimmedEdge))
                return;
            const EdgeLine line = EdgeLine::between(fromCenter, fromSize, toCenter, toSize);
            if (!visible.intersects(QRectF(line.start, line.end).normalized().adjusted(-10, -10, 10, 10)))
                return;
            const bool selected = interaction.selectedEdgeID() == edge.id;
            double opacity = dimmedEdge ? dimmedLineStrength : 1;
            if (reconnect && reconnect->edgeID == edge.id)
                opacity = 0.3;
            // Faded through the colour: a painter's opacity takes every line
            // off the raster engine's fast path.
            const QColor color = dimmed(selected ? colors.ramp.brand : colors.edge, opacity);
            // Flat caps keep plain lines on the raster engine's fast path.
            const double width = selected ? selectedEdgeStroke : edgeStroke;
            // The line stops at the arrowhead's base, so it does not poke out.
            const QPointF d = line.end - line.start;
            const double length = std::max(std::hypot(d.x(), d.y()), degenerateLength);
            const QPointF base = line.end - d / length * std::min(arrowheadLength * 0.8, length);
            // A subtask line reads as belonging rather than following.
            batches.add(QPen(color, width, Qt::SolidLine, Qt::FlatCap), line.start, base, visible,
                        edge.isSubtask() ? std::span<const double>(subtaskDashes) : std::span<const double>());
            if (visible.contains(line.end))
                batches.addHead(color, line.end, line.start);
        };
        // A line runs between its cards' centres, past them by at most half
        // a card where cards overlap: most of a large flow's lines are passed
        // over on that box, before the look-ups and the cut at the cards.
        const auto mayShow = [&](const QRectF &centres, NodeSize a, NodeSize b) {
            const double reach = std::max({a.width, a.height, b.width, b.height}) / 2 + 10;
            return visible.intersects(centres.adjusted(-reach, -reach, reach, reach));
        };
        if (fromScene) {
            // The editor's flat list of drawn lines: the records of the few
            // in view are read, not those of every line of the flow.
            const CanvasScene &drawn = editor.scene();
            const QList<const FlowNode *> &nodes = editor.visibleNodes();
            const auto &edges = flow.edges();
            for (const CanvasScene::Line &line : drawn.edges) {
                const CanvasScene::Card &a = drawn.nodes[std::size_t(line.from)];
                const CanvasScene::Card &b = drawn.nodes[std::size_t(line.to)];
                if (!mayShow(line.shownBox, a.size, b.size) || !wanted(a.id, b.id))
                    continue;
                addEdge(*edges[std::size_t(line.listed)], *nodes[line.from], *nodes[line.to], a.center, a.size,
                        b.center, b.size);
            }
            return;
        }
        for (const DependencyEdge *edge : flow.edges()) {
            if (!edge->fromItem() || !edge->toItem())
                continue;
            const FlowNode &from = *edge->fromItem();
            const FlowNode &to = *edge->toItem();
            if (!wanted(from.id, to.id))
                continue;
            const QPointF fromCenter = center(from);
            const QPointF toCenter = center(to);
            const NodeSize fromSize = interaction.effectiveSize(from);
            const NodeSize toSize = interaction.effectiveSize(to);
            if (!mayShow(QRectF(fromCenter, toCenter).normalized(), fromSize, toSize) || !editor.isDrawn(*edge))
                continue;
            addEdge(*edge, from, to, fromCenter, fromSize, toCenter, toSize);
        }
    };
    if (!layer) {
        gather();
        batches.draw(painter);
        return;
    }
    // Over every line dimmed, the lines go on after the ground of both
    // halves: they touch few pixels.
    const bool inStrips = dimming != LineDimming::undimmedOnly;
    if (split && inStrips) {
        // The second thread gathers the lines while this one does the work
        // handed to it for meanwhile, a new view's card contents and
        // pictures; then both take strips in turn.
        std::latch known(1);
        std::latch gathered(1);
        std::atomic<int> next{0};
        const auto takeStrips = [&] {
            for (int strip = next++; strip < strips; strip = next++) {
                const int from = layerClip.top() + strip * stripRows;
                const int to = std::min(from + stripRows, end);
                QImage rows(bits + qsizetype(from) * layer->bytesPerLine(), layer->width(), to - from,
                            layer->bytesPerLine(), layer->format());
                QPainter on(&rows);
                on.setRenderHints(hints);
                drawGround(on, rows, from, to, from, true);
            }
        };
        std::thread helper([&] {
            // Worked out first, so that both threads only read it then.
            editor.visibleNodes();
            known.count_down();
            gather();
            batches.mapThinLines(scene);
            gathered.count_down();
            takeStrips();
        });
        const LinesMeanwhile meanwhile = std::exchange(m_whileLinesDraw, {});
        if (meanwhile.first)
            meanwhile.first();
        known.wait();
        if (meanwhile.then)
            meanwhile.then();
        gathered.wait();
        takeStrips();
        // Before what it shares with this block goes.
        helper.join();
    } else {
        // The few lines a filter leaves whole are drawn over the rest dimmed
        // at once: the lower half's ground begins while they are gathered.
        std::thread helper;
        if (split)
            helper = std::thread(drawLowerGround);
        gather();
        batches.mapThinLines(scene);
        drawGround(painter, *layer, layerClip.top(), middle, 0, inStrips);
        if (helper.joinable())
            helper.join();
    }
    painter.resetTransform();
    painter.setClipRect(layerClip);
    painter.setTransform(scene);
    if (!inStrips) {
        batches.drawLines(painter, layer, layerClip);
        batches.drawHeads(painter);
    }
}

void CanvasScenePainter::paintLineLayer(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors,
                                        const ViewState &view, const QSet<QUuid> &moving, const QRectF &exposed)
{
    const CanvasInteraction &interaction = editor.interaction();
    const double scale = view.scale > 0 ? view.scale : 1;
    const double pixelRatio = painter.device() ? painter.device()->devicePixelRatioF() : 1;
    // While a filter dims, the layer kept aside is the one without it,
    // which the dimmed layer is made from.
    const bool dims = editor.dimsByFilter();
    // A version neither layer was drawn at is drawn anew whatever the
    // cards' places: their hash comes from the cards' contents, worked out
    // while the second thread gathers the lines, and is put in the key then.
    bool geometryLater = !dims && m_version != m_lines.key.version && m_version != m_spareLines.key.version;
    const TaskFlow &flow = *editor.flow();
    const auto settleGeometry = [&] {
        if (std::exchange(geometryLater, false))
            m_lines.key.geometry = m_contents.geometrySerial(flow);
    };
    const auto settled = qScopeGuard([&] {
        m_whileLinesDraw.first = nullptr;
        settleGeometry();
    });
    if (geometryLater)
        m_whileLinesDraw.first = settleGeometry;
    LineLayer::Key key;
    key.version = m_version;
    key.linesVersion = m_linesVersion;
    key.colorFilter = interaction.colorFilter().colors;
    key.geometry = geometryLater ? 0 : m_contents.geometrySerial(flow);
    key.selectedEdge = interaction.selectedEdgeID();
    key.selectedLink = interaction.selectedFileLinkID();
    key.reconnecting = interaction.edgeReconnect() ? std::optional(interaction.edgeReconnect()->edgeID) : std::nullopt;
    key.moving = moving;
    key.brand = colors.ramp.brand.rgba();
    key.dark = colors.dark;
    key.grid = view.grid;
    key.pixelRatio = pixelRatio;

    const QSizeF viewport = interaction.viewportSize().isEmpty() ? exposed.size() : interaction.viewportSize();
    const QRectF viewArea(-view.offset / scale, viewport / scale);
    const auto fits = [&](const LineLayer &layer) {
        return layer.key == key && !layer.image.isNull() &&
               (view.zooming || (std::abs(layer.scale - scale) < 1e-9 && layer.area.contains(viewArea)));
    };
    LineLayer::Key undimmedKey = key;
    undimmedKey.colorFilter = 0;
    bool reusable = fits(m_lines);
    if (!reusable && !(m_lines.key == key)) {
        // The layer of another key is kept aside, and the one kept before
        // is used if it is this key's, else its image is drawn over; but
        // a dimmed layer of another filter is drawn over, and the undimmed
        // one stays.
        if (!(dims && m_spareLines.key == undimmedKey))
            std::swap(m_lines, m_spareLines);
        reusable = fits(m_lines);
    }
    const bool sameScale = std::abs(m_lines.scale - scale) < 1e-9;
    if (!reusable) {
        // The layer reaches a stretch beyond the view, so a pan reuses it.
        const double reach = layerReach / scale;
        m_lines.key = key;
        m_lines.scale = scale;
        m_lines.area = viewArea.adjusted(-reach, -reach, reach, reach);
        const QSize pixels = (m_lines.area.size() * scale * pixelRatio).toSize().expandedTo(QSize(1, 1));
        // Opaque, so that copying it is a plain copy rather than a blend.
        if (m_lines.image.size() != pixels)
            m_lines.image = QImage(pixels, QImage::Format_RGB32);
        m_lines.image.setDevicePixelRatio(pixelRatio);
        m_lines.drawn = QRegion();
    }
    const auto complete = [&](const QRegion &wanted) {
        const QRegion missing = wanted - m_lines.drawn;
        if (missing.isEmpty())
            return;
        if (!dims) {
            for (const QRect &pixels : missing)
                drawLineLayer(m_lines, editor, colors, view, moving, pixels, LineDimming::asFiltered);
            m_lines.drawn += missing;
            return;
        }
        // The undimmed layer over the same pixels first: the dimmed one is
        // made from it, and a filter of another colour is made from it again.
        LineLayer &undimmed = m_spareLines;
        if (!(undimmed.key == undimmedKey) || undimmed.scale != m_lines.scale || undimmed.area != m_lines.area ||
            undimmed.image.size() != m_lines.image.size()) {
            undimmed.key = undimmedKey;
            undimmed.scale = m_lines.scale;
            undimmed.area = m_lines.area;
            if (undimmed.image.size() != m_lines.image.size())
                undimmed.image = QImage(m_lines.image.size(), QImage::Format_RGB32);
            undimmed.image.setDevicePixelRatio(pixelRatio);
            undimmed.drawn = QRegion();
        }
        const QRegion undrawn = missing - undimmed.drawn;
        for (const QRect &pixels : undrawn)
            drawLineLayer(undimmed, editor, colors, view, moving, pixels, LineDimming::ignored);
        undimmed.drawn += undrawn;
        for (const QRect &pixels : missing)
            drawLineLayer(m_lines, editor, colors, view, moving, pixels, LineDimming::undimmedOnly, &undimmed.image);
        m_lines.drawn += missing;
    };
    // The layer's corner where it falls now, stretched if the zoom moved
    // on since it was drawn.
    const QRectF target(m_lines.area.topLeft() * scale + view.offset, m_lines.area.size() * scale);
    painter.resetTransform();
    painter.setOpacity(1);
    if (sameScale || !reusable) {
        // The view's pixels are drawn, so that the small repaints of a drag
        // that follow only copy; the rest when a pan brings them in.
        const QPointF corner(std::round(target.left() * pixelRatio), std::round(target.top() * pixelRatio));
        const auto inLayer = [&](const QRectF &onScreen) {
            return QRectF(onScreen.topLeft() * pixelRatio - corner, onScreen.size() * pixelRatio).toAlignedRect() &
                   m_lines.image.rect();
        };
        const QRect shown = inLayer(exposed);
        if (shown.isEmpty())
            return;
        complete(QRegion(inLayer(QRectF(QPointF(), viewport))) + shown);
        painter.drawImage((corner + shown.topLeft()) / pixelRatio, m_lines.image, shown);
    } else {
        // Drawn at another scale while the zoom moves: the ground under it
        // shows where the stretched layer does not reach.
        complete(m_lines.image.rect());
        painter.fillRect(exposed, colors.ramp.brandSubtle);
        if (view.grid)
            paintGrid(painter, colors, view, exposed);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, m_lines.image);
    }
}

void CanvasScenePainter::drawLineLayer(LineLayer &layer, const CanvasEditor &editor, const CanvasColors &colors,
                                       const ViewState &view, const QSet<QUuid> &moving, const QRect &pixels,
                                       LineDimming dimming, const QImage *undimmed)
{
    // Drawn in the image's own pixels, so the clip falls on whole ones.
    const double pixelRatio = layer.image.devicePixelRatio();
    layer.image.setDevicePixelRatio(1);
    {
        QPainter into(&layer.image);
        into.setRenderHint(QPainter::Antialiasing);
        const double toPixels = layer.scale * pixelRatio;
        into.setTransform(QTransform::fromScale(toPixels, toPixels).translate(-layer.area.left(), -layer.area.top()));
        ViewState groundView = view;
        groundView.offset = -layer.area.topLeft() * layer.scale;
        // Filled by hand: the raster engine hands a fill this large to its
        // thread pool and waits for it, which costs more on a busy machine.
        // Strips may be drawn on two threads: the pixels are found once, here.
        const QRgb fill = colors.ramp.brandSubtle.rgb();
        uchar *const bits = layer.image.bits();
        const qsizetype stride = layer.image.bytesPerLine();
        const uchar *const lines = undimmed ? undimmed->constBits() : nullptr;
        Q_ASSERT(!undimmed || (undimmed->size() == layer.image.size() && undimmed->bytesPerLine() == stride));
        // Over a layer of every line dimmed, the grid's dots are drawn
        // last, whole, as no line's quarter strength over them would show.
        const auto ground = [&, bits, stride](QPainter &painter, const QRect &strip) {
            if (lines) {
                dimLines(bits, lines, stride, strip, fill);
            } else {
                for (int y = strip.top(); y <= strip.bottom(); ++y)
                    fillPixels(reinterpret_cast<QRgb *>(bits + y * stride) + strip.left(), strip.width(), fill);
            }
            if (view.grid) {
                painter.scale(pixelRatio, pixelRatio);
                paintGrid(painter, colors, groundView,
                          QRectF(QPointF(strip.topLeft()) / pixelRatio, QSizeF(strip.size()) / pixelRatio));
            }
        };
        // Lines are cut a little past these pixels, so that their cut ends do
        // not show, and arrowheads whose tips lie past them still reach in.
        const double margin = arrowheadLength + 2 / toPixels;
        const QRectF visible(layer.area.topLeft() + QPointF(pixels.topLeft()) / toPixels,
                             QSizeF(pixels.size()) / toPixels);
        paintLines(into, editor, colors, visible.adjusted(-margin, -margin, margin, margin), moving, false, dimming,
                   &layer.image, pixels, ground);
    }
    layer.image.setDevicePixelRatio(pixelRatio);
}

} // namespace fenrow
