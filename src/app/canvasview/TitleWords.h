#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace fenrow {

// Card titles broken into lines from words shaped once and kept. A flow's
// titles draw on a small vocabulary, and shaping every title whole was the
// largest part of drawing a flow's cards the first time. Only titles whose
// words shape alone as they would in the line, and break only at spaces,
// take this way; the rest are laid out whole by the caller.
class TitleWords {
public:
    struct Line {
        // The line's glyphs, positioned from the start of its baseline.
        QList<QGlyphRun> runs;
        // Without the spaces it ends with.
        double width = 0;
        qsizetype textStart = 0;
        qsizetype textLength = 0;
    };
    struct Lines {
        QList<Line> lines;
        // Where the text that found no room in the last line begins.
        std::optional<qsizetype> restStart;
    };

    explicit TitleWords(const QFont &font) : m_font(font) {}

    // `text`, with single spaces between its words, in lines of `width`,
    // at most `maxLines` of them; nothing if only a whole layout can tell.
    std::optional<Lines> lines(const QString &text, double width, int maxLines);
    void clear() { m_words.clear(); }

private:
    struct Word {
        // From the start of its baseline, in one font.
        QGlyphRun run;
        // Shaped in more than one font: a whole layout decides.
        bool mixed = false;
        double advance = 0;
        // How far the last glyph reaches past the advance: a line must
        // have room for it, as a whole layout would.
        double overhang = 0;
    };
    static bool breaksOnlyAtSpaces(const QString &text);
    void shape(const QString &word);

    QFont m_font;
    QHash<QString, Word> m_words;
    std::optional<double> m_spaceAdvance;
};

} // namespace fenrow
