#include "TitleWords.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <algorithm>
#include <vector>

namespace fenrow {

namespace {

// Marks that never open a line break between them and a letter, whatever
// stands on either side.
bool joinsWithinWord(QChar c)
{
    static constexpr char16_t joining[] = u".,:;'\"()[]&#@%*+=_$\u2019\u2018\u201c\u201d";
    return std::find(std::begin(joining), std::end(joining) - 1, c.unicode()) != std::end(joining) - 1;
}

} // namespace

bool TitleWords::breaksOnlyAtSpaces(const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char(' ')) {
            if (i == 0 || i + 1 == text.size() || text.at(i + 1) == QLatin1Char(' '))
                return false;
            continue;
        }
        if (c.isLetter() && c.script() == QChar::Script_Latin && c.category() != QChar::Letter_Modifier)
            continue;
        if ((c.unicode() < 0x80 && c.isDigit()) || joinsWithinWord(c))
            continue;
        // A question or an exclamation may end a word, but within one it
        // opens a break.
        if ((c == QLatin1Char('?') || c == QLatin1Char('!')) &&
            (i + 1 == text.size() || text.at(i + 1) == QLatin1Char(' ')))
            continue;
        return false;
    }
    return !text.isEmpty();
}

void TitleWords::shape(const QString &key)
{
    if (m_words.contains(key))
        return;
    Word shaped;
    QTextLayout layout(key, m_font);
    // Shaped glyphs are otherwise dropped at the end of the layout, and
    // taking the runs would shape the word again.
    layout.setCacheEnabled(true);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setNumColumns(int(key.size()));
    layout.endLayout();
    const QList<QGlyphRun> runs = line.glyphRuns();
    shaped.mixed = runs.size() != 1;
    if (!shaped.mixed) {
        shaped.run = runs.first();
        const QPointF origin(line.x(), line.y() + line.ascent());
        QList<QPointF> positions = shaped.run.positions();
        for (QPointF &position : positions)
            position -= origin;
        shaped.run.setPositions(positions);
    }
    shaped.advance = line.horizontalAdvance();
    shaped.overhang = std::max(0.0, line.naturalTextWidth() - shaped.advance);
    m_words.insert(key, shaped);
}

std::optional<TitleWords::Lines> TitleWords::lines(const QString &text, double width, int maxLines)
{
    if (!breaksOnlyAtSpaces(text))
        return std::nullopt;
    if (!m_spaceAdvance)
        m_spaceAdvance = QFontMetricsF(m_font).horizontalAdvance(QLatin1Char(' '));
    const double space = *m_spaceAdvance;
    // Kept across flows: names and numbers could make it grow without end.
    if (m_words.size() >= 16384)
        m_words.clear();

    struct Placed {
        const Word *word = nullptr;
        qsizetype start = 0;
        qsizetype length = 0;
    };
    std::vector<Placed> words;
    QStringList keys;
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = text.indexOf(QLatin1Char(' '), start);
        if (end < 0)
            end = text.size();
        keys.append(text.mid(start, end - start));
        shape(keys.last());
        words.push_back({nullptr, start, end - start});
        start = end + 1;
    }
    // Taken once all are in: a word shaped may move those kept.
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const Word &word = *m_words.constFind(keys.at(i));
        // Wider than a line, it would be broken within.
        if (word.mixed || word.advance + word.overhang > width)
            return std::nullopt;
        words[std::size_t(i)].word = &word;
    }

    // Each line as far as its words fit, the first always.
    std::vector<std::size_t> lineStarts{0};
    double used = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const Word &next = *words[i].word;
        if (i > lineStarts.back() && used + space + next.advance + next.overhang > width) {
            lineStarts.push_back(i);
            used = next.advance;
        } else {
            used += (i > lineStarts.back() ? space : 0) + next.advance;
        }
    }

    Lines result;
    std::size_t shown = lineStarts.size();
    if (maxLines < 1)
        maxLines = 1;
    if (shown > std::size_t(maxLines)) {
        shown = std::size_t(maxLines) - 1;
        result.restStart = words[lineStarts[shown]].start;
    }
    for (std::size_t row = 0; row < shown; ++row) {
        const std::size_t first = lineStarts[row];
        const std::size_t end = row + 1 < lineStarts.size() ? lineStarts[row + 1] : words.size();
        Line line;
        line.textStart = words[first].start;
        line.textLength = words[end - 1].start + words[end - 1].length - line.textStart;
        QList<quint32> glyphs;
        QList<QPointF> positions;
        // Words of one font share the line's run: fewer runs to draw.
        const auto endRun = [&](const QGlyphRun &like) {
            if (glyphs.isEmpty())
                return;
            QGlyphRun run = like;
            run.setGlyphIndexes(std::exchange(glyphs, {}));
            run.setPositions(std::exchange(positions, {}));
            line.runs.append(run);
        };
        double x = 0;
        for (std::size_t i = first; i < end; ++i) {
            const QGlyphRun &run = words[i].word->run;
            if (i > first) {
                x += space;
                const QGlyphRun &before = words[i - 1].word->run;
                if (before.rawFont() != run.rawFont() || before.flags() != run.flags())
                    endRun(before);
            }
            glyphs += run.glyphIndexes();
            for (const QPointF &position : run.positions())
                positions.append(QPointF(position.x() + x, position.y()));
            x += words[i].word->advance;
        }
        endRun(words[end - 1].word->run);
        // As a whole layout measures it: the overhang only at the title's end.
        line.width = x + (end == words.size() ? words[end - 1].word->overhang : 0);
        result.lines.append(line);
    }
    return result;
}

} // namespace fenrow
