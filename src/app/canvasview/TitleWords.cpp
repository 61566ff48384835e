#include "TitleWords.h"

#include <QFontMetricsF>
#include <QRawFont>

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

QTextLine TitleWords::oneLine(QTextLayout &layout)
{
    // Shaped glyphs are otherwise dropped at the end of the layout, and
    // taking the runs would shape the text again.
    layout.setCacheEnabled(true);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setNumColumns(int(layout.text().size()));
    layout.endLayout();
    return line;
}

bool TitleWords::learn(const QString &text, const QStringList &words)
{
    // The title is shaped whole, on one line, and its words cut out of it
    // at the spaces: a layout of its own for each word cost more than its
    // glyphs, and a title's words are often all new in the first flow.
    QTextLayout layout(text, m_font);
    const QTextLine line = oneLine(layout);
    const QList<QGlyphRun> runs = line.glyphRuns();
    // In more than one font, or in another than the title's own, a whole
    // layout decides: the overhangs are kept by the title font's glyphs.
    if (!m_rawFont)
        m_rawFont = QRawFont::fromFont(m_font);
    if (runs.size() != 1 || runs.first().rawFont() != *m_rawFont)
        return false;
    const QGlyphRun &run = runs.first();
    if (!m_flags)
        m_flags = run.flags();
    if (run.flags() != *m_flags)
        return false;
    const QRawFont &font = *m_rawFont;
    const quint32 space = font.glyphIndexesForString(QStringLiteral(" ")).value(0);
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> positions = run.positions();
    const double baseline = line.y() + line.ascent();
    const double end = line.x() + line.horizontalAdvance();
    QList<Word> cut;
    qsizetype first = 0;
    for (qsizetype g = 0; g <= glyphs.size(); ++g) {
        if (g < glyphs.size() && glyphs.at(g) != space)
            continue;
        if (g == first || cut.size() == words.size())
            return false;
        Word word;
        const double left = positions.at(first).x();
        word.glyphs.reserve(g - first);
        for (qsizetype i = first; i < g; ++i)
            word.glyphs.append({glyphs.at(i), positions.at(i) - QPointF(left, baseline)});
        word.advance = (g < glyphs.size() ? positions.at(g).x() : end) - left;
        // As a whole layout reckons it, by the word's last glyph: the
        // title's end tells it for the last word, a layout of the word
        // alone for a glyph not met before.
        const quint32 last = glyphs.at(g - 1);
        auto overhang = m_overhangs.constFind(last);
        if (overhang == m_overhangs.cend()) {
            double reach = line.naturalTextWidth() - line.horizontalAdvance();
            if (g < glyphs.size()) {
                QTextLayout alone(words.at(cut.size()), m_font);
                const QTextLine only = oneLine(alone);
                reach = only.naturalTextWidth() - only.horizontalAdvance();
            }
            overhang = m_overhangs.insert(last, std::max(0.0, reach));
        }
        word.overhang = *overhang;
        cut.append(word);
        first = g + 1;
    }
    if (cut.size() != words.size())
        return false;
    for (qsizetype i = 0; i < words.size(); ++i)
        if (!m_words.contains(words.at(i)))
            m_words.insert(words.at(i), cut.at(i));
    return true;
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
    bool known = true;
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = text.indexOf(QLatin1Char(' '), start);
        if (end < 0)
            end = text.size();
        keys.append(text.mid(start, end - start));
        const auto found = m_words.constFind(keys.last());
        known = known && found != m_words.cend();
        words.push_back({known ? &*found : nullptr, start, end - start});
        start = end + 1;
    }
    if (!known) {
        if (!learn(text, keys))
            return std::nullopt;
        // Taken again once all are in: a word kept may move those kept before.
        for (qsizetype i = 0; i < keys.size(); ++i)
            words[std::size_t(i)].word = &*m_words.constFind(keys.at(i));
    }
    // Wider than a line, a word would be broken within.
    for (const Placed &placed : words)
        if (placed.word->advance + placed.word->overhang > width)
            return std::nullopt;

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
        // All of one font: the line is one run.
        qsizetype count = 0;
        for (std::size_t i = first; i < end; ++i)
            count += words[i].word->glyphs.size();
        QList<quint32> glyphs;
        QList<QPointF> positions;
        glyphs.reserve(count);
        positions.reserve(count);
        double x = 0;
        for (std::size_t i = first; i < end; ++i) {
            const Word &word = *words[i].word;
            if (i > first)
                x += space;
            for (const Word::Glyph &glyph : word.glyphs) {
                glyphs.append(glyph.index);
                positions.append(QPointF(glyph.position.x() + x, glyph.position.y()));
            }
            x += word.advance;
        }
        QGlyphRun run;
        run.setRawFont(*m_rawFont);
        run.setFlags(*m_flags);
        run.setGlyphIndexes(glyphs);
        run.setPositions(positions);
        line.runs.append(run);
        // As a whole layout measures it: the overhang only at the title's end.
        line.width = x + (end == words.size() ? words[end - 1].word->overhang : 0);
        result.lines.append(line);
    }
    return result;
}

} // namespace fenrow
