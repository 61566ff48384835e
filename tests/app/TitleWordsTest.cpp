// Card titles put together from words shaped once, against the same titles
// laid out whole by QTextLayout: the same lines and the same glyphs where
// they are.
#include "canvasview/TitleWords.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QTextLayout>

#include <gtest/gtest.h>

namespace fenrow::testing {
namespace {

QFont titleFont()
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(13);
    font.setWeight(QFont::DemiBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

struct WholeLine {
    qsizetype start = 0;
    QString text;
    double naturalWidth = 0;
    QList<quint32> glyphs;
    // From the start of the line's baseline.
    QList<QPointF> positions;
};

// The lines as a whole layout breaks them, at most `maxLines`.
QList<WholeLine> wholeLayout(const QString &text, const QFont &font, double width, int maxLines)
{
    QTextLayout layout(text, font);
    layout.setCacheEnabled(true);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QList<WholeLine> lines;
    for (QTextLine line = layout.createLine(); line.isValid() && lines.size() < maxLines; line = layout.createLine()) {
        line.setLineWidth(width);
        WholeLine whole;
        whole.start = line.textStart();
        whole.naturalWidth = line.naturalTextWidth();
        whole.text = text.mid(line.textStart(), line.textLength()).trimmed();
        const QPointF origin(line.x(), line.y() + line.ascent());
        for (const QGlyphRun &run : line.glyphRuns(line.textStart(), int(whole.text.size()))) {
            // Spaces show nothing; the words leave them out.
            const quint32 space = run.rawFont().glyphIndexesForString(QStringLiteral(" ")).value(0);
            for (qsizetype g = 0; g < run.glyphIndexes().size(); ++g) {
                if (run.glyphIndexes().at(g) == space)
                    continue;
                whole.glyphs.append(run.glyphIndexes().at(g));
                whole.positions.append(run.positions().at(g) - origin);
            }
        }
        lines.append(whole);
    }
    layout.endLayout();
    return lines;
}

// Where the words put the lines, against the whole layout; an empty
// string when they agree.
QString disagreement(TitleWords &words, const QString &title, const QFont &font, double width, int maxLines)
{
    const auto fromWords = words.lines(title, width, maxLines);
    if (!fromWords)
        return QStringLiteral("not taken from words");
    const QList<WholeLine> whole = wholeLayout(title, font, width, maxLines);
    const qsizetype shown = fromWords->lines.size();
    if (fromWords->restStart ? shown != maxLines - 1 || whole.size() != maxLines : shown != whole.size())
        return QStringLiteral("%1 lines against %2").arg(shown).arg(whole.size());
    if (fromWords->restStart && *fromWords->restStart != whole.last().start)
        return QStringLiteral("the rest begins elsewhere");
    for (qsizetype i = 0; i < shown; ++i) {
        const TitleWords::Line &line = fromWords->lines.at(i);
        if (title.mid(line.textStart, line.textLength) != whole.at(i).text)
            return QStringLiteral("line %1 is \"%2\" against \"%3\"")
                .arg(i)
                .arg(title.mid(line.textStart, line.textLength), whole.at(i).text);
        QList<quint32> glyphs;
        QList<QPointF> positions;
        for (const QGlyphRun &run : line.runs) {
            glyphs += run.glyphIndexes();
            positions += run.positions();
        }
        if (glyphs != whole.at(i).glyphs)
            return QStringLiteral("line %1 has other glyphs").arg(i);
        for (qsizetype g = 0; g < positions.size(); ++g)
            if ((positions.at(g) - whole.at(i).positions.at(g)).manhattanLength() > 0.05)
                return QStringLiteral("line %1's glyph %2 stands elsewhere").arg(i).arg(g);
        if (std::abs(line.width - whole.at(i).naturalWidth) > 0.05)
            return QStringLiteral("line %1 is %2 wide against %3").arg(i).arg(line.width).arg(whole.at(i).naturalWidth);
    }
    return {};
}

TEST(TitleWordsTest, BreaksAndPlacesTitlesAsAWholeLayoutDoes)
{
    const QFont font = titleFont();
    TitleWords words(font);
    const QStringList titles{
        QStringLiteral("Plan the quarterly review"),
        QStringLiteral("Draft budget for Q3 (final)"),
        QStringLiteral("Call Jeff about the offer?"),
        QStringLiteral("Écrire le résumé du congrès"),
        QStringLiteral("Straße prüfen und Ölwechsel"),
        QStringLiteral("Añadir niño's \u201cfiesta\u201d, 25% off"),
        QStringLiteral("fly off quickly by July"),
        QStringLiteral("Wave AVA Type: Tyj, fjord; WAV"),
    };
    // Widths half a pixel apart cross every place a word could end a line;
    // each word fits in the narrowest.
    for (const QString &title : titles) {
        for (double width = 100; width <= 260; width += 0.5) {
            for (const int maxLines : {1, 2, 4}) {
                const QString why = disagreement(words, title, font, width, maxLines);
                EXPECT_TRUE(why.isEmpty()) << title.toStdString() << " at " << width << " in " << maxLines
                                           << " lines: " << why.toStdString();
            }
        }
    }
}

TEST(TitleWordsTest, TakesFromWordsOnlyTitlesThatBreakNowhereButAtSpaces)
{
    const QFont font = titleFont();
    const QFontMetricsF metrics(font);
    TitleWords words(font);
    // Every mark of ASCII and a few beyond, within a word, with the line
    // ending just after it or just before it: if the whole layout would
    // break there, the title must not be taken from words.
    QString marks;
    for (char16_t c = 0x21; c < 0x7f; ++c)
        marks.append(QChar(c));
    marks += QStringLiteral("\u00a0\u00ad\u2010\u2013\u2014\u2019\u201c\u201d\u00bf\u00a1\u2026\u00e9\u05d0\u0627\u4e2d\u0e01");
    int taken = 0;
    for (const QChar mark : std::as_const(marks)) {
        const QString title = QStringLiteral("Going over Plan") + mark + QStringLiteral("ning now");
        for (const QString &upTo : {QStringLiteral("Going over Plan"), QStringLiteral("Going over Plan") + mark}) {
            const double width = metrics.horizontalAdvance(upTo) + 1;
            if (!words.lines(title, width, 4))
                continue;
            ++taken;
            const QString why = disagreement(words, title, font, width, 4);
            EXPECT_TRUE(why.isEmpty()) << "U+" << std::hex << int(mark.unicode()) << ": " << why.toStdString();
        }
    }
    // Letters, digits and most marks are taken.
    EXPECT_GT(taken, 100);
    // Spaces other than single ones, and words wider than the line.
    EXPECT_FALSE(words.lines(QStringLiteral("Plan  twice"), 200, 4));
    EXPECT_FALSE(words.lines(QStringLiteral(" Plan"), 200, 4));
    EXPECT_FALSE(words.lines(QStringLiteral("Supercalifragilistic"), 40, 4));
    EXPECT_FALSE(words.lines(QString(), 200, 4));
}

} // namespace
} // namespace fenrow::testing
