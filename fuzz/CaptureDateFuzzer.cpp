// Any text as a quick-capture title, read in each interface language on a
// fixed day. A match must be a piece of the text as typed, the title what
// is left without it (blanks made single, ends trimmed) and never empty,
// and the date the start of a day. English phrases count in every language,
// so a text English reads has a date in all of them.

#include "FuzzSupport.h"

#include "capture/CaptureDateParser.h"

#include <array>

using namespace fenrow;

namespace {

const std::array<QString, 5> languages{QStringLiteral("en"), QStringLiteral("tr"), QStringLiteral("de"),
                                       QStringLiteral("es"), QStringLiteral("fr")};

bool trimmedAway(QChar c)
{
    return c == u' ' || c == u',' || c == u';' || c == u':' || c == u'-';
}

// The title a phrase at `start` leaves, worked out afresh rather than with
// the parser's own helper: a full stop that ends a sentence goes with the
// phrase, white space becomes single blanks, and the ends lose blanks and
// ",;:-".
QString titleWithout(const QString &text, qsizetype start, qsizetype length)
{
    qsizetype end = start + length;
    if (end < text.size() && text[end] == u'.' && (end + 1 == text.size() || text[end + 1].isSpace()))
        ++end;
    QString rest = (text.left(start) + text.mid(end)).simplified();
    qsizetype first = 0;
    qsizetype last = rest.size();
    while (first < last && trimmedAway(rest[first]))
        ++first;
    while (last > first && trimmedAway(rest[last - 1]))
        --last;
    return rest.sliced(first, last - first);
}

QString described(const QString &language, const QString &text, const CaptureDateParser::Match &match)
{
    return QStringLiteral("language %1, text [%2]\nphrase [%3] title [%4] date %5")
        .arg(language, text, match.phrase, match.title, match.date.toString(Qt::ISODateWithMs));
}

void check(const QString &language, const QString &text, const CaptureDateParser::Match &match)
{
    const auto detail = [&] { return described(language, text, match); };
    fuzz::require(!match.phrase.isEmpty(), "an empty phrase was taken for a date", detail);
    fuzz::require(!match.title.isEmpty(), "a date phrase left no title", detail);
    bool found = false;
    for (qsizetype at = text.indexOf(match.phrase); at >= 0 && !found; at = text.indexOf(match.phrase, at + 1))
        found = titleWithout(text, at, match.phrase.size()) == match.title;
    fuzz::require(found, "the title is not the text without the phrase", detail);

    const LocalCalendar &calendar = fuzz::berlin();
    fuzz::require(match.date.isValid() && match.date.timeSpec() == Qt::UTC, "the date is not a valid UTC time", detail);
    fuzz::require(match.date == calendar.startOfDay(calendar.dayOf(match.date)), "the date is not a day's start",
                  detail);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(fuzz::bytesOf(data, size));
    // Wednesday 10 June 2026, mid-morning, as in the parser's tests.
    static const QDateTime now(QDate(2026, 6, 10), QTime(9, 30), fuzz::berlin().zone());

    bool english = false;
    for (const QString &language : languages) {
        const std::optional<CaptureDateParser::Match> match
            = CaptureDateParser::parse(text, language, now, fuzz::berlin());
        if (language == QStringLiteral("en"))
            english = match.has_value();
        else if (english)
            fuzz::require(match.has_value(), "English reads a date that another language misses",
                          [&] { return QStringLiteral("language %1, text [%2]").arg(language, text); });
        if (match)
            check(language, text, *match);
    }
    return 0;
}
