#include "CaptureDateParser.h"

#include "CaptureVocabularies.h"
#include "LocalCalendar.h"

namespace fenrow::CaptureDateParser {

namespace {

bool isTrimmedAway(QChar c)
{
    return c.isSpace() || c == u',' || c == u';' || c == u':' || c == u'-';
}

} // namespace

QList<const Vocabulary *> searchList(const QString &language)
{
    QList<const Vocabulary *> list;
    if (const Vocabulary *own = CaptureVocabularies::ownVocabulary(QStringView(language).left(2)))
        list.append(own);
    list.append(&CaptureVocabularies::english());
    return list;
}

QString foldDottedI(const QString &text)
{
    QString folded = text;
    for (QChar &c : folded) {
        if (c == QChar(0x0130))
            c = u'i';
        else if (c == u'I')
            c = QChar(0x0131);
    }
    return folded;
}

QString cleanedTitle(const QString &text, qsizetype start, qsizetype length)
{
    qsizetype end = start + length;
    // "Pay rent by june 5th." loses the stop with the phrase; "v2.5" keeps
    // its point, which is no stop.
    if (end < text.size() && text[end] == u'.' && (end + 1 == text.size() || text[end + 1].isSpace()))
        ++end;

    QString joined;
    joined.reserve(text.size() - (end - start));
    bool inGap = false;
    auto take = [&joined, &inGap](QStringView piece) {
        for (const QChar c : piece) {
            if (c.isSpace()) {
                inGap = true;
                continue;
            }
            if (inGap && !joined.isEmpty())
                joined.append(u' ');
            inGap = false;
            joined.append(c);
        }
    };
    take(QStringView(text).first(start));
    take(QStringView(text).sliced(end));

    qsizetype first = 0;
    qsizetype last = joined.size();
    while (first < last && isTrimmedAway(joined[first]))
        ++first;
    while (last > first && isTrimmedAway(joined[last - 1]))
        --last;
    return joined.sliced(first, last - first);
}

std::optional<Match> parse(const QString &text, const QString &language, const QDateTime &now,
                           const LocalCalendar &calendar)
{
    // Text that is not UTF-16 (a lone surrogate) is what no expression can
    // match. Checked once here, so that each match below need not check the
    // whole text again: with many phrases that name no day ("feb 30"), that
    // check made a long text take time in the square of its length.
    if (!text.isValidUtf16())
        return std::nullopt;
    const QDate today = calendar.dayOf(now);
    for (const Vocabulary *vocabulary : searchList(language)) {
        QString candidates[2] = {text, {}};
        int candidateCount = 1;
        if (vocabulary->foldsDottedI) {
            // Text without "I" or "İ" folds to itself and would only repeat
            // the first candidate's answers.
            QString folded = foldDottedI(text);
            if (folded != text) {
                candidates[1] = std::move(folded);
                candidateCount = 2;
            }
        }
        for (const Rule &rule : vocabulary->rules) {
            if (!rule.regex)
                continue;
            for (int c = 0; c < candidateCount; ++c) {
                const QString &candidate = candidates[c];
                qsizetype offset = 0;
                while (offset <= candidate.size()) {
                    // Matching from an offset in the whole text keeps the
                    // look-behind bounds seeing what comes before.
                    const QRegularExpressionMatch found = rule.regex->match(
                        candidate, offset, QRegularExpression::NormalMatch,
                        QRegularExpression::DontCheckSubjectStringMatchOption);
                    if (!found.hasMatch())
                        break;
                    const qsizetype start = found.capturedStart();
                    const qsizetype length = found.capturedLength();
                    offset = found.capturedEnd() + (length == 0 ? 1 : 0);
                    const std::optional<QDate> day = rule.resolve(found, today);
                    if (!day || !day->isValid())
                        continue;
                    // Folding keeps every character in place, so the range
                    // is the same in the text as typed.
                    QString title = cleanedTitle(text, start, length);
                    if (title.isEmpty())
                        continue;
                    return Match{calendar.startOfDay(*day), std::move(title), text.mid(start, length)};
                }
            }
        }
    }
    return std::nullopt;
}

} // namespace fenrow::CaptureDateParser
