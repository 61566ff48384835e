#include "capture/CaptureDateParser.h"
#include "domain/LocalCalendar.h"
#include "shell/InterfaceLanguage.h"

#include <gtest/gtest.h>

namespace fenrow {
namespace {

using CaptureDateParser::Match;
using CaptureDateParser::parse;

const LocalCalendar berlin(QTimeZone("Europe/Berlin"));

// Wednesday 10 June 2026, mid-morning.
QDateTime wednesday(QTime time = QTime(9, 30))
{
    return QDateTime(QDate(2026, 6, 10), time, berlin.zone());
}

QDateTime at(int year, int month, int day)
{
    return QDateTime(QDate(year, month, day), QTime(9, 30), berlin.zone());
}

// A result as one line, so a failed case shows all of it: the day's start
// as a local time (which must be midnight), the title and the phrase.
std::string described(const std::optional<Match> &match, const LocalCalendar &calendar = berlin)
{
    if (!match)
        return "no date";
    return QStringLiteral("%1 | %2 | %3")
        .arg(match->date.toTimeZone(calendar.zone()).toString(Qt::ISODate), match->title, match->phrase)
        .toStdString();
}

std::string expected(QDate day, const QString &title, const QString &phrase, const LocalCalendar &calendar = berlin)
{
    return described(Match{calendar.startOfDay(day), title, phrase}, calendar);
}

std::string in(const QString &language, const QString &text, const QDateTime &now = wednesday())
{
    return described(parse(text, language, now, berlin));
}

// ------------------------------------------------------------ the table

struct Outcome {
    QDate day{};
    QString title{};
    QString phrase{};
};

// `languages` names the interface languages the outcome holds in ("*" for
// the others); in a language that no row for the same text covers, the
// text gives no date.
struct Case {
    QString languages;
    QString text;
    std::optional<Outcome> outcome;
};

QDate june(int day)
{
    return QDate(2026, 6, day);
}

const std::optional<Outcome> none;

const QList<Case> &cases()
{
    static const QList<Case> table{
        // English phrases count in every language.
        {"*", "Call Anna tomorrow", Outcome{june(11), "Call Anna", "tomorrow"}},
        {"*", "Appeler tomorrow", Outcome{june(11), "Appeler", "tomorrow"}},
        {"*", "tomorrow", none},
        {"*", "Pay rent by june 5th.", Outcome{QDate(2027, 6, 5), "Pay rent", "by june 5th"}},
        {"*", "Launch june 10", Outcome{june(10), "Launch", "june 10"}},
        {"*", "Launch june 9", Outcome{QDate(2027, 6, 9), "Launch", "june 9"}},
        {"*", "Taxes due dec 31st", Outcome{QDate(2026, 12, 31), "Taxes", "due dec 31st"}},
        {"*", "Party on 5th of July", Outcome{QDate(2026, 7, 5), "Party", "on 5th of July"}},
        {"*", "Sep. 3 review", Outcome{QDate(2026, 9, 3), "review", "Sep. 3"}},
        {"*", "Invoice june 30", Outcome{june(30), "Invoice", "june 30"}},
        {"*", "Invoice june 31", none},
        {"*", "Pay on april 30th", Outcome{QDate(2027, 4, 30), "Pay", "on april 30th"}},
        {"*", "Feb 30 party", none},
        {"*", "feb 29 party", none},
        {"*", "Feb 30 party, feb 28 cake", Outcome{QDate(2027, 2, 28), "Feb 30 party, cake", "feb 28"}},
        {"*", "may day parade", none},
        {"*", "Ship on 2026-02-30", none},
        {"*", "Ship on 2020-02-03", Outcome{QDate(2020, 2, 3), "Ship on", "2020-02-03"}},
        {"*", "Leap 2028-02-29", Outcome{QDate(2028, 2, 29), "Leap", "2028-02-29"}},
        {"*", "Leap 2027-02-29", none},
        {"*", "Dentist tomorrow, report 2026-07-01", Outcome{QDate(2026, 7, 1), "Dentist tomorrow, report", "2026-07-01"}},
        {"*", "wednesday standup", Outcome{june(10), "standup", "wednesday"}},
        {"*", "next wednesday standup", Outcome{june(17), "standup", "next wednesday"}},
        {"*", "Gym on friday", Outcome{june(12), "Gym", "on friday"}},
        {"*", "Plan next week", Outcome{june(15), "Plan", "next week"}},
        {"*", "Report next month", Outcome{QDate(2026, 7, 1), "Report", "next month"}},
        {"*", "Standup on the day after tomorrow", Outcome{june(12), "Standup", "on the day after tomorrow"}},
        {"*", "Call mom tonight", Outcome{june(10), "Call mom", "tonight"}},
        {"*", "Review in 0 days", none},
        {"*", "Review in 366 days", none},
        {"*", "Review in 365 days", Outcome{QDate(2027, 6, 10), "Review", "in 365 days"}},
        {"*", "Dentist in 2 weeks", Outcome{june(24), "Dentist", "in 2 weeks"}},
        {"*", "Buy milk tomorrow. Then rest", Outcome{june(11), "Buy milk Then rest", "tomorrow"}},
        {"*", "  - Call\tAnna,   tmrw: ", Outcome{june(11), "Call Anna", "tmrw"}},
        // Inside words, and before "'s" or ".com".
        {"*", "Today's report", none},
        {"*", "Tomorrowland tickets", none},
        {"*", "Buy 10 marches", none},
        {"*", "Mondays are hard", none},
        {"*", "Read monday.com docs", none},
        // The chosen vocabulary goes before English.
        {"*", "Report tomorrow or übermorgen", Outcome{june(11), "Report or übermorgen", "tomorrow"}},
        {"de", "Report tomorrow or übermorgen", Outcome{june(12), "Report tomorrow or", "übermorgen"}},

        // Turkish, also through the folded "I".
        {"tr", "Faturayı YARIN öde", Outcome{june(11), "Faturayı öde", "YARIN"}},
        {"*", "Pazar alışverişi yap", none},
        {"tr", "alışveriş pazar", Outcome{june(14), "alışveriş", "pazar"}},
        {"tr", "Pazar günü piknik", Outcome{june(14), "piknik", "Pazar günü"}},
        {"tr", "Toplantı pazartesi", Outcome{june(15), "Toplantı", "pazartesi"}},
        {"tr", "PAZARTESİ toplantı", Outcome{june(15), "toplantı", "PAZARTESİ"}},
        {"tr", "Piknik cumartesi", Outcome{june(13), "Piknik", "cumartesi"}},
        {"tr", "Rapor cumaya kadar", Outcome{june(12), "Rapor", "cumaya kadar"}},
        {"tr", "bu çarşamba toplantı", Outcome{june(10), "toplantı", "bu çarşamba"}},
        {"tr", "gelecek çarşamba toplantı", Outcome{june(17), "toplantı", "gelecek çarşamba"}},
        {"tr", "15 Mayıs'a kadar vergi", Outcome{QDate(2027, 5, 15), "vergi", "15 Mayıs'a kadar"}},
        {"tr", "Kira 30 NİSAN", Outcome{QDate(2027, 4, 30), "Kira", "30 NİSAN"}},
        {"tr", "Kira 30 KASIM", Outcome{QDate(2026, 11, 30), "Kira", "30 KASIM"}},
        {"tr", "Parti 31 şubat", none},
        {"tr", "3 gün sonra ara", Outcome{june(13), "ara", "3 gün sonra"}},
        {"tr", "2 hafta içinde bitir", Outcome{june(24), "bitir", "2 hafta içinde"}},
        {"tr", "öbür gün temizlik", Outcome{june(12), "temizlik", "öbür gün"}},
        {"tr", "Bugüne kadar bitir", Outcome{june(10), "bitir", "Bugüne kadar"}},
        {"tr", "haftaya sunum", Outcome{june(15), "sunum", "haftaya"}},
        {"tr", "gelecek aya plan", Outcome{QDate(2026, 7, 1), "plan", "gelecek aya"}},
        {"*", "yarınki toplantı", none},

        // German.
        {"*", "guten morgen Team", none},
        {"de", "morgen Team anrufen", Outcome{june(11), "Team anrufen", "morgen"}},
        {"de", "Bericht am 3. März", Outcome{QDate(2027, 3, 3), "Bericht", "am 3. März"}},
        {"de", "Steuer bis zum 31. Juli", Outcome{QDate(2026, 7, 31), "Steuer", "bis zum 31. Juli"}},
        {"de", "30. Februar feiern", none},
        {"de", "übermorgen Zahnarzt", Outcome{june(12), "Zahnarzt", "übermorgen"}},
        {"de", "Heute Abend kochen", Outcome{june(10), "kochen", "Heute Abend"}},
        {"de", "in 3 Tagen abgeben", Outcome{june(13), "abgeben", "in 3 Tagen"}},
        {"de", "nächste Woche planen", Outcome{june(15), "planen", "nächste Woche"}},
        {"de", "kommenden Monat prüfen", Outcome{QDate(2026, 7, 1), "prüfen", "kommenden Monat"}},
        {"de", "Mittwoch Meeting", Outcome{june(10), "Meeting", "Mittwoch"}},
        {"de", "nächsten Mittwoch Meeting", Outcome{june(17), "Meeting", "nächsten Mittwoch"}},
        {"de", "Sonnabend Markt", Outcome{june(13), "Markt", "Sonnabend"}},
        {"*", "Morgenrunde drehen", none},

        // Spanish.
        {"*", "Correr por la mañana", none},
        {"*", "esta mañana llamar", none},
        {"es", "Llamar mañana", Outcome{june(11), "Llamar", "mañana"}},
        {"es", "pasado mañana dentista", Outcome{june(12), "dentista", "pasado mañana"}},
        {"es", "Pagar el 15 de julio", Outcome{QDate(2026, 7, 15), "Pagar", "el 15 de julio"}},
        {"es", "Informe para el 5 de junio", Outcome{QDate(2027, 6, 5), "Informe", "para el 5 de junio"}},
        {"es", "Pagar el 31 de setiembre", none},
        {"es", "Cena esta noche", Outcome{june(10), "Cena", "esta noche"}},
        {"es", "Revisar en 3 días", Outcome{june(13), "Revisar", "en 3 días"}},
        {"es", "la semana que viene entrenar", Outcome{june(15), "entrenar", "la semana que viene"}},
        {"es", "el mes que viene pagar", Outcome{QDate(2026, 7, 1), "pagar", "el mes que viene"}},
        {"es", "Reunión el miercoles", Outcome{june(10), "Reunión", "el miercoles"}},
        {"es", "el miércoles que viene reunión", Outcome{june(17), "reunión", "el miércoles que viene"}},
        {"es", "Gimnasio sábado", Outcome{june(13), "Gimnasio", "sábado"}},

        // French.
        {"fr", "Appeler demain", Outcome{june(11), "Appeler", "demain"}},
        {"fr", "après-demain réunion", Outcome{june(12), "réunion", "après-demain"}},
        {"fr", "Aujourd’hui ranger", Outcome{june(10), "ranger", "Aujourd’hui"}},
        {"fr", "Dîner ce soir", Outcome{june(10), "Dîner", "ce soir"}},
        {"fr", "Rapport pour le 1er juillet", Outcome{QDate(2026, 7, 1), "Rapport", "pour le 1er juillet"}},
        {"fr", "jusqu'au 30 juin rendre", Outcome{june(30), "rendre", "jusqu'au 30 juin"}},
        {"fr", "Payer le 5 mai", Outcome{QDate(2027, 5, 5), "Payer", "le 5 mai"}},
        {"de", "Payer le 5 mai", Outcome{QDate(2027, 5, 5), "Payer le", "5 mai"}},
        {"fr", "Fête le 31 avril", none},
        {"fr", "Courir dans 3 jours", Outcome{june(13), "Courir", "dans 3 jours"}},
        {"fr", "la semaine prochaine réviser", Outcome{june(15), "réviser", "la semaine prochaine"}},
        {"fr", "le mois prochain payer", Outcome{QDate(2026, 7, 1), "payer", "le mois prochain"}},
        {"fr", "Réunion mercredi", Outcome{june(10), "Réunion", "mercredi"}},
        {"fr", "mercredi prochain réunion", Outcome{june(17), "réunion", "mercredi prochain"}},
        {"*", "Lundis au soleil", none},
    };
    return table;
}

std::optional<Outcome> outcomeIn(const QString &language, const QString &text)
{
    std::optional<Outcome> elsewhere;
    for (const Case &row : cases()) {
        if (row.text != text)
            continue;
        if (row.languages.split(u' ').contains(language))
            return row.outcome;
        if (row.languages == u"*")
            elsewhere = row.outcome;
    }
    return elsewhere;
}

class CaptureDateTable : public ::testing::TestWithParam<const char *> {
protected:
    void SetUp() override { ASSERT_TRUE(InterfaceLanguage::apply(QString::fromLatin1(GetParam()))); }
    void TearDown() override { InterfaceLanguage::apply(QStringLiteral("en")); }
};

TEST_P(CaptureDateTable, EveryCaseInTheInterfaceLanguage)
{
    const QString language = InterfaceLanguage::current();
    ASSERT_EQ(language, QString::fromLatin1(GetParam()));
    QSet<QString> seen;
    for (const Case &row : cases()) {
        if (seen.contains(row.text))
            continue;
        seen.insert(row.text);
        const std::optional<Outcome> outcome = outcomeIn(language, row.text);
        const std::optional<Match> match = parse(row.text, language, wednesday(), berlin);
        EXPECT_EQ(described(match), outcome ? expected(outcome->day, outcome->title, outcome->phrase) : "no date")
            << "text: " << row.text.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(AllLanguages, CaptureDateTable, ::testing::Values("en", "tr", "de", "es", "fr"),
                         [](const auto &info) { return std::string(info.param); });

// ------------------------------------------------------------ around the table

TEST(CaptureDateParserTest, VocabulariesCompileAndComeInOrder)
{
    const auto languagesOf = [](const QString &code) {
        QStringList languages;
        for (const CaptureDateParser::Vocabulary *vocabulary : CaptureDateParser::searchList(code))
            languages << vocabulary->language;
        return languages;
    };
    EXPECT_EQ(languagesOf("en"), QStringList{"en"});
    EXPECT_EQ(languagesOf("pt"), QStringList{"en"});
    EXPECT_EQ(languagesOf(""), QStringList{"en"});
    EXPECT_EQ(languagesOf("de_AT"), (QStringList{"de", "en"}));
    EXPECT_EQ(languagesOf("tr"), (QStringList{"tr", "en"}));

    // A pattern that fails to compile would only switch its rule off.
    const QHash<QString, int> ruleCounts{{"en", 11}, {"tr", 12}, {"de", 10}, {"es", 10}, {"fr", 10}};
    for (const QString &code : InterfaceLanguage::supportedCodes()) {
        const CaptureDateParser::Vocabulary &own = *CaptureDateParser::searchList(code).first();
        EXPECT_EQ(own.rules.size(), ruleCounts.value(code)) << code.toStdString();
        EXPECT_EQ(own.foldsDottedI, code == u"tr");
        for (qsizetype i = 0; i < own.rules.size(); ++i) {
            ASSERT_TRUE(own.rules[i].regex.has_value()) << code.toStdString() << " rule " << i + 1;
            EXPECT_TRUE(own.rules[i].regex->isValid()) << code.toStdString() << " rule " << i + 1;
        }
    }
}

TEST(CaptureDateParserTest, TodayIsTheDayInTheGivenCalendar)
{
    // 00:30 on 10 June in Berlin, still 9 June in New York.
    const QDateTime moment(QDate(2026, 6, 9), QTime(22, 30), Qt::UTC);
    const LocalCalendar newYork(QTimeZone("America/New_York"));

    const std::optional<Match> inBerlin = parse("Call Anna tomorrow", "en", moment, berlin);
    ASSERT_TRUE(inBerlin);
    EXPECT_EQ(inBerlin->date, QDateTime(QDate(2026, 6, 10), QTime(22, 0), Qt::UTC));
    const std::optional<Match> inNewYork = parse("Call Anna tomorrow", "en", moment, newYork);
    ASSERT_TRUE(inNewYork);
    EXPECT_EQ(inNewYork->date, QDateTime(QDate(2026, 6, 10), QTime(4, 0), Qt::UTC));

    // The last minute of the day and the first are the same today.
    EXPECT_EQ(in("en", "Gym tomorrow", wednesday(QTime(23, 59))), in("en", "Gym tomorrow", wednesday(QTime(0, 0))));
}

TEST(CaptureDateParserTest, LeapDaysAndTheTurnOfTheYear)
{
    // Before the leap day it stands; after it, next year has none and the
    // day runs on to 1 March.
    EXPECT_EQ(in("en", "feb 29 party", at(2028, 2, 10)), expected(QDate(2028, 2, 29), "party", "feb 29"));
    EXPECT_EQ(in("en", "feb 29 party", at(2028, 3, 10)), expected(QDate(2029, 3, 1), "party", "feb 29"));
    EXPECT_EQ(in("de", "Feier am 29. Februar", at(2028, 3, 10)), expected(QDate(2029, 3, 1), "Feier", "am 29. Februar"));
    EXPECT_EQ(in("en", "Leap 2028-02-29", at(2028, 3, 10)), expected(QDate(2028, 2, 29), "Leap", "2028-02-29"));

    const QDateTime newYearsEve = at(2026, 12, 31);
    EXPECT_EQ(in("en", "Party dec 31", newYearsEve), expected(QDate(2026, 12, 31), "Party", "dec 31"));
    EXPECT_EQ(in("en", "Party dec 30", newYearsEve), expected(QDate(2027, 12, 30), "Party", "dec 30"));
    EXPECT_EQ(in("en", "Party jan 1", newYearsEve), expected(QDate(2027, 1, 1), "Party", "jan 1"));
    EXPECT_EQ(in("es", "Fiesta el 1 de enero", newYearsEve), expected(QDate(2027, 1, 1), "Fiesta", "el 1 de enero"));
    EXPECT_EQ(in("en", "Sleep tomorrow", newYearsEve), expected(QDate(2027, 1, 1), "Sleep", "tomorrow"));
    EXPECT_EQ(in("en", "Budget next month", newYearsEve), expected(QDate(2027, 1, 1), "Budget", "next month"));
    EXPECT_EQ(in("fr", "Ranger dans 2 semaines", newYearsEve), expected(QDate(2027, 1, 14), "Ranger", "dans 2 semaines"));

    // Next month is its first day, also from the end of a long month.
    EXPECT_EQ(in("en", "Budget next month", at(2026, 1, 31)), expected(QDate(2026, 2, 1), "Budget", "next month"));
}

TEST(CaptureDateParserTest, NextWeekAndWeekdaysFromEveryDay)
{
    const QDateTime monday = at(2026, 6, 15);
    const QDateTime sunday = at(2026, 6, 14);
    EXPECT_EQ(in("en", "Plan next week", monday), expected(QDate(2026, 6, 22), "Plan", "next week"));
    EXPECT_EQ(in("en", "Plan next week", sunday), expected(QDate(2026, 6, 15), "Plan", "next week"));
    EXPECT_EQ(in("tr", "haftaya plan", sunday), expected(QDate(2026, 6, 15), "plan", "haftaya"));

    // A bare weekday or "this" is today; each language's "next" word is a week on.
    EXPECT_EQ(in("en", "Gym monday", monday), expected(QDate(2026, 6, 15), "Gym", "monday"));
    EXPECT_EQ(in("en", "Gym this monday", monday), expected(QDate(2026, 6, 15), "Gym", "this monday"));
    EXPECT_EQ(in("en", "Gym next monday", monday), expected(QDate(2026, 6, 22), "Gym", "next monday"));
    EXPECT_EQ(in("tr", "gelecek pazartesi spor", monday), expected(QDate(2026, 6, 22), "spor", "gelecek pazartesi"));
    EXPECT_EQ(in("de", "Sport kommenden Montag", monday), expected(QDate(2026, 6, 22), "Sport", "kommenden Montag"));
    EXPECT_EQ(in("es", "Gimnasio el próximo lunes", monday),
              expected(QDate(2026, 6, 22), "Gimnasio", "el próximo lunes"));
    EXPECT_EQ(in("fr", "Sport lundi prochain", monday), expected(QDate(2026, 6, 22), "Sport", "lundi prochain"));
    // On any other day the same words take the nearest one.
    EXPECT_EQ(in("en", "Gym next monday", sunday), expected(QDate(2026, 6, 15), "Gym", "next monday"));
    EXPECT_EQ(in("en", "Brunch sunday", monday), expected(QDate(2026, 6, 21), "Brunch", "sunday"));
    EXPECT_EQ(in("en", "Brunch saturday", sunday), expected(QDate(2026, 6, 20), "Brunch", "saturday"));
}

TEST(CaptureDateParserTest, TurkishFoldingKeepsEveryPosition)
{
    using CaptureDateParser::foldDottedI;
    const QString text = QStringLiteral("İZMİR IĞDIR ısparta");
    const QString folded = foldDottedI(text);
    EXPECT_EQ(folded, QStringLiteral("iZMiR ıĞDıR ısparta"));
    EXPECT_EQ(folded.size(), text.size());
    // Outside the basic plane nothing moves either.
    EXPECT_EQ(foldDottedI(QString::fromUtf8("\xF0\x9F\x93\x8C I")), QString::fromUtf8("\xF0\x9F\x93\x8C ı"));

    // The phrase is cut from the text as typed, after a folded match.
    EXPECT_EQ(in("tr", "İLK İŞ: YARIN İzmir'i ara"), expected(june(11), "İLK İŞ: İzmir'i ara", "YARIN"));
    EXPECT_EQ(in("tr", "Kira 1 EYLÜL İÇİN"), expected(QDate(2026, 9, 1), "Kira İÇİN", "1 EYLÜL"));
}

TEST(CaptureDateParserTest, CleaningTheTitle)
{
    using CaptureDateParser::cleanedTitle;
    // A stop right after the phrase goes when a sentence ends there.
    EXPECT_EQ(cleanedTitle("Pay rent tomorrow.", 9, 8), "Pay rent");
    EXPECT_EQ(cleanedTitle("Pay tomorrow. Then rest", 4, 8), "Pay Then rest");
    EXPECT_EQ(cleanedTitle("Ship 2026-06-12.5 build", 5, 10), "Ship .5 build");
    EXPECT_EQ(cleanedTitle("Ship today..", 5, 5), "Ship ..");
    // White space anywhere becomes single blanks; the ends lose ",;:-" too.
    EXPECT_EQ(cleanedTitle("-- Call\t\nAnna ;today: ", 15, 5), "Call Anna");
    EXPECT_EQ(cleanedTitle("a,today,b", 2, 5), "a,,b");
    EXPECT_EQ(cleanedTitle(" today ", 1, 5), "");
}

} // namespace
} // namespace fenrow
