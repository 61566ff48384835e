#include "CaptureVocabularies.h"

#include <array>

namespace fenrow::CaptureVocabularies {

namespace {

using CaptureDateParser::Rule;
using CaptureDateParser::Vocabulary;

// One entry per month or weekday, in calendar order; an entry's aliases
// stand together ("sep", "set").
using WordTable = QList<QStringList>;

// A phrase may neither start nor end inside a word, and a full stop or
// apostrophe followed by a letter ("Jan.x", "today's") also ends none.
QString bounded(const QString &core)
{
    return QStringLiteral(R"((?<![\p{L}\p{N}])(?:)") + core + QStringLiteral(R"()(?![\p{L}\p{N}]|['’.]\p{L}))");
}

std::optional<int> wholeNumber(const QString &digits)
{
    bool ok = false;
    const int value = digits.toInt(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

// The 1-based place of the entry with the longest alias that begins `word`,
// so "pazartesi" is Monday and not "pazar", Sunday. 0 when none does.
int placeIn(const WordTable &table, const QString &word)
{
    int place = 0;
    qsizetype longest = 0;
    for (qsizetype entry = 0; entry < table.size(); ++entry) {
        for (const QString &alias : table[entry]) {
            if (alias.size() > longest && word.startsWith(alias)) {
                longest = alias.size();
                place = int(entry) + 1;
            }
        }
    }
    return place;
}

// Sunday 1 to Saturday 7, the numbering the weekday tables follow.
int weekdayNumber(QDate day)
{
    return day.dayOfWeek() % 7 + 1;
}

// ------------------------------------------------------------ resolvers

Rule::Resolver daysAhead(int days)
{
    return [days](const QRegularExpressionMatch &, QDate today) -> std::optional<QDate> {
        return today.addDays(days);
    };
}

// "in N days" and "in N weeks": N from 1 to 365, so "in 0 days" and typing
// mistakes of a thousand days give no date.
Rule::Resolver countedDays(int daysPerUnit)
{
    return [daysPerUnit](const QRegularExpressionMatch &match, QDate today) -> std::optional<QDate> {
        const std::optional<int> count = wholeNumber(match.captured(1));
        if (!count || *count < 1 || *count > 365)
            return std::nullopt;
        return today.addDays(qint64(*count) * daysPerUnit);
    };
}

// The coming Monday; on a Monday, the one a week ahead.
Rule::Resolver nextWeek()
{
    return [](const QRegularExpressionMatch &, QDate today) -> std::optional<QDate> {
        const int days = (9 - weekdayNumber(today)) % 7;
        return today.addDays(days == 0 ? 7 : days);
    };
}

Rule::Resolver nextMonth()
{
    return [](const QRegularExpressionMatch &, QDate today) -> std::optional<QDate> {
        return QDate(today.year(), today.month(), 1).addMonths(1);
    };
}

// A day without a year: this year's, or next year's once it has passed.
Rule::Resolver monthAndDay(int dayGroup, int monthGroup, WordTable months)
{
    return [dayGroup, monthGroup, months](const QRegularExpressionMatch &match, QDate today) -> std::optional<QDate> {
        const std::optional<int> day = wholeNumber(match.captured(dayGroup));
        if (!day || *day < 1 || *day > 31)
            return std::nullopt;
        const int month = placeIn(months, match.captured(monthGroup).toLower());
        if (month == 0)
            return std::nullopt;
        const QDate thisYear(today.year(), month, *day);
        if (!thisYear.isValid())
            return std::nullopt;
        if (thisYear >= today)
            return thisYear;
        // Counted from the first of the month rather than checked again:
        // 29 February, once this year's has passed, becomes 1 March.
        return QDate(today.year() + 1, month, 1).addDays(*day - 1);
    };
}

// Words that push a weekday that is today a week ahead; shared by all
// languages, so "next friday" works in a German title too.
bool saysNext(const QString &lowerCasedPhrase)
{
    static const std::array<QString, 7> markers{
        QStringLiteral("next"),      QStringLiteral("gelecek"), QStringLiteral("nächsten"),
        QStringLiteral("kommenden"), QStringLiteral("próximo"), QStringLiteral("que viene"),
        QStringLiteral("prochain"),
    };
    for (const QString &marker : markers) {
        if (lowerCasedPhrase.contains(marker))
            return true;
    }
    return false;
}

// The nearest such weekday from today on: a bare weekday that is today
// means today, and only a "next" word moves it a week.
Rule::Resolver weekday(WordTable weekdays)
{
    return [weekdays](const QRegularExpressionMatch &match, QDate today) -> std::optional<QDate> {
        const int target = placeIn(weekdays, match.captured(1).toLower());
        if (target == 0)
            return std::nullopt;
        int days = (target - weekdayNumber(today) + 7) % 7;
        if (days == 0 && saysNext(match.captured(0).toLower()))
            days = 7;
        return today.addDays(days);
    };
}

// The one rule whose year comes from the text, so a past day stays past.
Rule::Resolver isoDate()
{
    return [](const QRegularExpressionMatch &match, QDate) -> std::optional<QDate> {
        const std::optional<int> year = wholeNumber(match.captured(1));
        const std::optional<int> month = wholeNumber(match.captured(2));
        const std::optional<int> day = wholeNumber(match.captured(3));
        if (!year || !month || !day || *month < 1 || *month > 12)
            return std::nullopt;
        const QDate date(*year, *month, *day);
        return date.isValid() ? std::optional(date) : std::nullopt;
    };
}

// ------------------------------------------------------------ vocabularies

Rule rule(const QString &core, Rule::Resolver resolve)
{
    QRegularExpression regex(bounded(core),
                             QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    if (!regex.isValid())
        return Rule{std::nullopt, std::move(resolve)};
    // Compiles now, so that matching later only reads and threads can share it.
    regex.optimize();
    return Rule{std::move(regex), std::move(resolve)};
}

// Shared by every vocabulary: the copies share one compiled pattern.
const Rule &isoRule()
{
    static const Rule shared = rule(QStringLiteral(R"((\d{4})-(\d{1,2})-(\d{1,2}))"), isoDate());
    return shared;
}

Vocabulary buildEnglish()
{
    const WordTable months{{QStringLiteral("jan")}, {QStringLiteral("feb")}, {QStringLiteral("mar")},
                           {QStringLiteral("apr")}, {QStringLiteral("may")}, {QStringLiteral("jun")},
                           {QStringLiteral("jul")}, {QStringLiteral("aug")}, {QStringLiteral("sep")},
                           {QStringLiteral("oct")}, {QStringLiteral("nov")}, {QStringLiteral("dec")}};
    const WordTable weekdays{{QStringLiteral("sunday")},   {QStringLiteral("monday")}, {QStringLiteral("tuesday")},
                             {QStringLiteral("wednesday")}, {QStringLiteral("thursday")}, {QStringLiteral("friday")},
                             {QStringLiteral("saturday")}};
    const QString lead = QStringLiteral(R"((?:(?:on|by|due|until|before)\s+)?)");
    const QString month = QStringLiteral(
        R"((jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?|sep(?:t(?:ember)?)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?))");
    return Vocabulary{
        QStringLiteral("en"),
        {
            isoRule(),
            rule(lead + month + QStringLiteral(R"(\.?\s+(\d{1,2})(?:st|nd|rd|th)?)"), monthAndDay(2, 1, months)),
            rule(lead + QStringLiteral(R"((\d{1,2})(?:st|nd|rd|th)?\s+(?:of\s+)?)") + month, monthAndDay(1, 2, months)),
            rule(lead + QStringLiteral(R"((?:the\s+)?day\s+after\s+tomorrow)"), daysAhead(2)),
            rule(lead + QStringLiteral(R"((?:today|tonight|this\s+evening))"), daysAhead(0)),
            rule(lead + QStringLiteral(R"((?:tomorrow|tmrw))"), daysAhead(1)),
            rule(QStringLiteral(R"(in\s+(\d{1,3})\s+days?)"), countedDays(1)),
            rule(QStringLiteral(R"(in\s+(\d{1,2})\s+weeks?)"), countedDays(7)),
            rule(lead + QStringLiteral(R"(next\s+week)"), nextWeek()),
            rule(lead + QStringLiteral(R"(next\s+month)"), nextMonth()),
            rule(lead + QStringLiteral(R"((?:this\s+|next\s+)?(sunday|monday|tuesday|wednesday|thursday|friday|saturday))"),
                 weekday(weekdays)),
        },
        false,
    };
}

// The endings carry case and postpositions ("Mayıs'a kadar", "cumaya").
// The bare "pazar" is also "market", so alone it counts only at the end of
// the text or before "günü".
Vocabulary buildTurkish()
{
    const WordTable months{{QStringLiteral("ocak")},    {QStringLiteral("şubat")},   {QStringLiteral("mart")},
                           {QStringLiteral("nisan")},   {QStringLiteral("mayıs")},   {QStringLiteral("haziran")},
                           {QStringLiteral("temmuz")},  {QStringLiteral("ağustos")}, {QStringLiteral("eylül")},
                           {QStringLiteral("ekim")},    {QStringLiteral("kasım")},   {QStringLiteral("aralık")}};
    const WordTable weekdays{{QStringLiteral("pazar")},    {QStringLiteral("pazartesi")}, {QStringLiteral("salı")},
                             {QStringLiteral("çarşamba")}, {QStringLiteral("perşembe")},  {QStringLiteral("cuma")},
                             {QStringLiteral("cumartesi")}};
    return Vocabulary{
        QStringLiteral("tr"),
        {
            isoRule(),
            rule(QStringLiteral(
                     R"((\d{1,2})\s+(ocak|şubat|mart|nisan|mayıs|haziran|temmuz|ağustos|eylül|ekim|kasım|aralık)(?:'?[a-zçğıöşü]{1,3})?(?:\s+kadar)?)"),
                 monthAndDay(1, 2, months)),
            rule(QStringLiteral(R"((?:yarından\s+sonra|öbür\s+gün))"), daysAhead(2)),
            rule(QStringLiteral(R"((?:bugün|bu\s+akşam)(?:e kadar|e)?)"), daysAhead(0)),
            rule(QStringLiteral(R"(yarın(?:a kadar|a)?)"), daysAhead(1)),
            rule(QStringLiteral(R"((\d{1,3})\s+gün\s+(?:sonra|içinde))"), countedDays(1)),
            rule(QStringLiteral(R"((\d{1,2})\s+hafta\s+(?:sonra|içinde))"), countedDays(7)),
            rule(QStringLiteral(R"((?:gelecek|önümüzdeki)\s+hafta(?:ya)?|haftaya)"), nextWeek()),
            rule(QStringLiteral(R"((?:gelecek|önümüzdeki)\s+ay(?:a)?)"), nextMonth()),
            rule(QStringLiteral(
                     R"((?:bu\s+|gelecek\s+)?(pazartesi|cumartesi|çarşamba|perşembe|salı|cuma|pazar)(?:'?(?:ya kadar|ye kadar|a kadar|e kadar|ya|ye|a|e))?\s+günü)"),
                 weekday(weekdays)),
            rule(QStringLiteral(
                     R"((?:bu\s+|gelecek\s+)?(pazartesi|cumartesi|çarşamba|perşembe|salı|cuma)(?:'?(?:ya|ye|a|e))?(?:\s+kadar)?)"),
                 weekday(weekdays)),
            rule(QStringLiteral(R"((?:bu\s+|gelecek\s+)?(pazar)(?:'?a)?(?:\s+kadar)?(?=\s*$))"), weekday(weekdays)),
        },
        true,
    };
}

// "morgen" is not tomorrow in "guten Morgen".
Vocabulary buildGerman()
{
    const WordTable months{{QStringLiteral("jan")}, {QStringLiteral("feb")},
                           {QStringLiteral("mär"), QStringLiteral("mar")},
                           {QStringLiteral("apr")}, {QStringLiteral("mai")}, {QStringLiteral("jun")},
                           {QStringLiteral("jul")}, {QStringLiteral("aug")}, {QStringLiteral("sep")},
                           {QStringLiteral("okt")}, {QStringLiteral("nov")}, {QStringLiteral("dez")}};
    const WordTable weekdays{{QStringLiteral("sonntag")},    {QStringLiteral("montag")},
                             {QStringLiteral("dienstag")},   {QStringLiteral("mittwoch")},
                             {QStringLiteral("donnerstag")}, {QStringLiteral("freitag")},
                             {QStringLiteral("samstag"), QStringLiteral("sonnabend")}};
    const QString lead = QStringLiteral(R"((?:(?:am|bis|bis\s+zum|bis\s+zur|zum|vor)\s+)?)");
    return Vocabulary{
        QStringLiteral("de"),
        {
            isoRule(),
            rule(lead
                     + QStringLiteral(
                         R"((\d{1,2})\.?\s+(jan(?:uar)?|feb(?:ruar)?|märz|mär|apr(?:il)?|mai|juni?|juli?|aug(?:ust)?|sep(?:t(?:ember)?)?|okt(?:ober)?|nov(?:ember)?|dez(?:ember)?))"),
                 monthAndDay(1, 2, months)),
            rule(lead + QStringLiteral("übermorgen"), daysAhead(2)),
            rule(lead + QStringLiteral(R"((?:heute(?:\s+abend)?))"), daysAhead(0)),
            rule(QStringLiteral(R"((?<!guten\s))") + lead + QStringLiteral("morgen"), daysAhead(1)),
            rule(QStringLiteral(R"(in\s+(\d{1,3})\s+tag(?:en)?)"), countedDays(1)),
            rule(QStringLiteral(R"(in\s+(\d{1,2})\s+wochen?)"), countedDays(7)),
            rule(lead + QStringLiteral(R"((?:nächste|kommende)\s+woche)"), nextWeek()),
            rule(lead + QStringLiteral(R"((?:nächsten|kommenden)\s+monat)"), nextMonth()),
            rule(lead
                     + QStringLiteral(
                         R"((?:diesen\s+|nächsten\s+|kommenden\s+)?(sonntag|montag|dienstag|mittwoch|donnerstag|freitag|samstag|sonnabend))"),
                 weekday(weekdays)),
        },
        false,
    };
}

// "mañana" is not tomorrow in "la mañana" or "esta mañana" (the morning).
Vocabulary buildSpanish()
{
    const WordTable months{{QStringLiteral("ene")}, {QStringLiteral("feb")}, {QStringLiteral("mar")},
                           {QStringLiteral("abr")}, {QStringLiteral("may")}, {QStringLiteral("jun")},
                           {QStringLiteral("jul")}, {QStringLiteral("ago")},
                           {QStringLiteral("sep"), QStringLiteral("set")},
                           {QStringLiteral("oct")}, {QStringLiteral("nov")}, {QStringLiteral("dic")}};
    const WordTable weekdays{{QStringLiteral("domingo")},
                             {QStringLiteral("lunes")},
                             {QStringLiteral("martes")},
                             {QStringLiteral("miércoles"), QStringLiteral("miercoles")},
                             {QStringLiteral("jueves")},
                             {QStringLiteral("viernes")},
                             {QStringLiteral("sábado"), QStringLiteral("sabado")}};
    const QString lead = QStringLiteral(R"((?:(?:el|para\s+el|hasta\s+el|antes\s+del|para|hasta)\s+)?)");
    return Vocabulary{
        QStringLiteral("es"),
        {
            isoRule(),
            rule(lead
                     + QStringLiteral(
                         R"((\d{1,2})\s+de\s+(enero|febrero|marzo|abril|mayo|junio|julio|agosto|septiembre|setiembre|octubre|noviembre|diciembre))"),
                 monthAndDay(1, 2, months)),
            rule(QStringLiteral(R"((?:para\s+)?pasado\s+mañana)"), daysAhead(2)),
            rule(QStringLiteral(R"((?:para\s+)?(?:hoy|esta\s+noche))"), daysAhead(0)),
            rule(QStringLiteral(R"((?<!la\s)(?<!esta\s)(?:para\s+)?mañana)"), daysAhead(1)),
            rule(QStringLiteral(R"(en\s+(\d{1,3})\s+días?)"), countedDays(1)),
            rule(QStringLiteral(R"(en\s+(\d{1,2})\s+semanas?)"), countedDays(7)),
            rule(QStringLiteral(R"((?:para\s+)?(?:la\s+)?(?:próxima\s+semana|semana\s+que\s+viene))"), nextWeek()),
            rule(QStringLiteral(R"((?:para\s+)?(?:el\s+)?(?:próximo\s+mes|mes\s+que\s+viene))"), nextMonth()),
            rule(lead
                     + QStringLiteral(
                         R"((?:este\s+|próximo\s+)?(domingo|lunes|martes|miércoles|miercoles|jueves|viernes|sábado|sabado)(?:\s+que\s+viene)?)"),
                 weekday(weekdays)),
        },
        false,
    };
}

Vocabulary buildFrench()
{
    const WordTable months{{QStringLiteral("jan")},
                           {QStringLiteral("fév"), QStringLiteral("fev")},
                           {QStringLiteral("mars")},
                           {QStringLiteral("avr")},
                           {QStringLiteral("mai")},
                           {QStringLiteral("juin")},
                           {QStringLiteral("juil")},
                           {QStringLiteral("août"), QStringLiteral("aout")},
                           {QStringLiteral("sep")},
                           {QStringLiteral("oct")},
                           {QStringLiteral("nov")},
                           {QStringLiteral("déc"), QStringLiteral("dec")}};
    const WordTable weekdays{{QStringLiteral("dimanche")}, {QStringLiteral("lundi")},    {QStringLiteral("mardi")},
                             {QStringLiteral("mercredi")}, {QStringLiteral("jeudi")},    {QStringLiteral("vendredi")},
                             {QStringLiteral("samedi")}};
    const QString lead = QStringLiteral(R"((?:(?:pour\s+le|pour|d['’]ici|avant|jusqu['’]à|jusqu['’]au|le)\s+)?)");
    return Vocabulary{
        QStringLiteral("fr"),
        {
            isoRule(),
            rule(lead
                     + QStringLiteral(
                         R"((\d{1,2})(?:er)?\s+(janvier|janv|février|fevrier|févr|fevr|mars|avril|avr|mai|juin|juillet|juil|août|aout|septembre|sept|octobre|oct|novembre|nov|décembre|decembre|déc|dec))"),
                 monthAndDay(1, 2, months)),
            rule(QStringLiteral(R"((?:pour\s+|d['’]ici\s+)?après-demain)"), daysAhead(2)),
            rule(QStringLiteral(R"((?:pour\s+)?(?:aujourd['’]hui|ce\s+soir))"), daysAhead(0)),
            rule(QStringLiteral(R"((?:pour\s+|d['’]ici\s+|avant\s+)?demain)"), daysAhead(1)),
            rule(QStringLiteral(R"((?:dans|sous)\s+(\d{1,3})\s+jours?)"), countedDays(1)),
            rule(QStringLiteral(R"((?:dans|sous)\s+(\d{1,2})\s+semaines?)"), countedDays(7)),
            rule(QStringLiteral(R"((?:pour\s+)?(?:la\s+)?semaine\s+prochaine)"), nextWeek()),
            rule(QStringLiteral(R"((?:pour\s+)?(?:le\s+)?mois\s+prochain)"), nextMonth()),
            rule(lead
                     + QStringLiteral(
                         R"((?:ce\s+)?(dimanche|lundi|mardi|mercredi|jeudi|vendredi|samedi)(?:\s+prochain)?)"),
                 weekday(weekdays)),
        },
        false,
    };
}

} // namespace

const Vocabulary &english()
{
    static const Vocabulary vocabulary = buildEnglish();
    return vocabulary;
}

const Vocabulary *ownVocabulary(QStringView code)
{
    // Each on first use only: an English session never compiles the others.
    if (code == u"tr") {
        static const Vocabulary turkish = buildTurkish();
        return &turkish;
    }
    if (code == u"de") {
        static const Vocabulary german = buildGerman();
        return &german;
    }
    if (code == u"es") {
        static const Vocabulary spanish = buildSpanish();
        return &spanish;
    }
    if (code == u"fr") {
        static const Vocabulary french = buildFrench();
        return &french;
    }
    return nullptr;
}

} // namespace fenrow::CaptureVocabularies
