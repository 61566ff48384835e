#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QList>
#include <QRawFont>
#include <QString>
#include <QStringList>
#include <QTextLayout>

#include <optional>

namespace fenrow {

// Card titles broken into lines from words shaped once and kept. A flow's
// titles draw on a small vocabulary, and shaping every title whole was the
// largest part of drawing a flow's cards the first time. A title with a
// word not met before is shaped whole once, on one line, and its words cut
// out of it. Only titles in the title font's own glyphs that break only at
// spaces take this way; the rest are laid out whole by the caller.
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
    // `layout`'s text shaped on one line, however long, its glyphs kept
    // for the line's runs.
    static QTextLine oneLine(QTextLayout &layout);
    void clear()
    {
        m_words.clear();
        m_overhangs.clear();
    }

private:
    struct Word {
        // In the title's font, from the start of its baseline.
        struct Glyph {
            quint32 index = 0;
            QPointF position;
        };
        QList<Glyph> glyphs;
        double advance = 0;
        // How far the last glyph reaches past the advance: a line must
        // have room for it, as a whole layout would.
        double overhang = 0;
    };
    static bool breaksOnlyAtSpaces(const QString &text);
    // Keeps the words of `text` not kept yet; false if they could not be
    // told apart in its glyphs.
    bool learn(const QString &text, const QStringList &words);

    QFont m_font;
    QHash<QString, Word> m_words;
    // By a word's last glyph, how far its ink reaches past the word.
    QHash<quint32, double> m_overhangs;
    std::optional<double> m_spaceAdvance;
    std::optional<QRawFont> m_rawFont;
    std::optional<QGlyphRun::GlyphRunFlags> m_flags;
};

} // namespace fenrow
