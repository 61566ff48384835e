#pragma once

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace fenrow {

class LocalCalendar;

// Finds one natural-language date phrase ("tomorrow", "by june 5th",
// "gelecek pazartesi", "am 3. März") in a short task title and gives the day
// with the title that remains once the phrase is cut out. Quick capture is
// to run it on every key typed, so every pattern is compiled once per
// process.
namespace CaptureDateParser {

struct Match {
    // The start of the day in the calendar that was passed in (as UTC).
    QDateTime date;
    // The rest of the text, cut and cleaned.
    QString title;
    // The matched piece of the text, as it was typed.
    QString phrase;

    friend bool operator==(const Match &, const Match &) = default;
};

struct Rule {
    // The day the match stands for, if any. `today` is in the caller's
    // calendar; days are plain Gregorian dates from there on.
    using Resolver = std::function<std::optional<QDate>(const QRegularExpressionMatch &match, QDate today)>;

    // Empty when the pattern did not compile; the rule then does nothing.
    std::optional<QRegularExpression> regex;
    Resolver resolve;
};

struct Vocabulary {
    QString language;
    QList<Rule> rules;
    // Turkish: the text is also tried with "İ" and "I" folded to "i" and
    // "ı", which case-insensitive matching does not do by itself.
    bool foldsDottedI = false;
};

// The vocabularies tried for `language`, in order: the language's own
// ("tr", "de", "es" and "fr", chosen by the first two characters), then
// English, which therefore applies in every language. Built on first use,
// immutable afterwards, safe to share between threads.
QList<const Vocabulary *> searchList(const QString &language);

// The first rule, in vocabulary and rule order, that yields a day and leaves
// a non-empty title decides; not the earliest or longest phrase. A text that
// is nothing but a date phrase gives no match, so it stays a title.
std::optional<Match> parse(const QString &text, const QString &language, const QDateTime &now,
                           const LocalCalendar &calendar);

// "İ" to "i" and "I" to "ı"; every other character stays, so positions in
// the result are positions in `text`.
QString foldDottedI(const QString &text);

// `text` without the given range (and a full stop right after it that ends
// a sentence), with runs of white space made single blanks and the ends
// trimmed of white space and ",;:-".
QString cleanedTitle(const QString &text, qsizetype start, qsizetype length);

} // namespace CaptureDateParser

} // namespace fenrow
