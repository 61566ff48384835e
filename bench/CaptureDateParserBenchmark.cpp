// The capture date parser on short task titles in the five languages. Quick
// capture runs it on every key typed, so one call must stay far below what
// a person notices between two keys.
#include "BenchmarkMain.h"

#include "LocalCalendar.h"
#include "capture/CaptureDateParser.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <vector>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

// One title and the phrase the parser must find in it (empty for none).
struct Title {
    QString language;
    QString text;
    QString phrase;
};

// Task stems as people type them, some with capitals (Turkish "I" and "İ"
// send the text through the folded second pass), numbers, apostrophes and
// words that come close to date words without being any ("Mayday",
// "Pazar alışverişi", "guten Morgen", "la mañana").
struct Words {
    const char *language;
    QStringList stems;
    QStringList phrases;
};

const QList<Words> &words()
{
    static const QList<Words> all{
        {"en",
         {"Call Anna", "Pay rent", "Send invoice to ACME", "Review Q3 budget", "Book flights to Lisbon",
          "Fix login bug #4821", "Mayday drill prep", "Renew passport", "Water the plants", "Write blog post draft",
          "Today's standup notes", "Order 12 chairs", "Email Bob about the contract", "Update README", "Buy milk",
          "Plan team offsite", "Backup the NAS", "Call the dentist", "Finish chapter 3", "Clean the garage",
          "Submit expense report", "Read Mondays notes", "Prepare slides for demo", "Cancel gym membership",
          "Pick up dry cleaning"},
         {"tomorrow", "by june 5th", "next monday", "in 3 days", "on friday", "next week", "2026-07-01",
          "day after tomorrow", "Dec 24"}},
        {"tr",
         {"Faturayı öde", "IŞIK faturası", "İzmir ofisini ara", "Raporu bitir", "Pazar alışverişi yap",
          "Anneme telefon et", "Sunumu hazırla", "Kira ödemesi", "Toplantı notlarını gönder", "ISPARTA gezisi planla",
          "Araba muayenesi", "Doktor randevusu al", "Kitap oku", "Vergi beyannamesi", "Ekip yemeği",
          "Yarınki toplantı için hazırlık", "Çiçekleri sula", "Bilet al", "Projeyi teslim et", "Evi temizle",
          "İLK İŞ: e-postalar", "Bankaya git", "Market listesi yaz", "Kod incelemesi", "Spor salonu üyeliği"},
         {"yarın", "YARIN", "15 Mayıs'a kadar", "gelecek pazartesi", "3 gün sonra", "haftaya", "cumaya kadar",
          "Pazar günü", "bugün"}},
        {"de",
         {"Bericht schreiben", "Team anrufen", "guten Morgen sagen", "Rechnung bezahlen", "Steuererklärung",
          "Zahnarzt Termin", "Auto waschen", "Präsentation vorbereiten", "Blumen gießen", "Einkaufsliste",
          "Vertrag unterschreiben", "Mama anrufen", "Keller aufräumen", "Morgenrunde drehen", "Flug buchen",
          "Angebot an Müller", "Projektplan prüfen", "Fahrrad reparieren", "Miete überweisen", "Buch lesen",
          "Code Review", "Server neu starten", "Paket abholen", "Geschenk kaufen", "Urlaub planen"},
         {"morgen", "am 3. März", "übermorgen", "nächste Woche", "bis zum 31. Juli", "in 3 Tagen", "Freitag",
          "kommenden Monat", "heute Abend"}},
        {"es",
         {"Llamar a Ana", "Pagar el alquiler", "Correr por la mañana", "Enviar factura", "Revisar presupuesto",
          "Comprar leche", "Reservar vuelos", "Limpiar la casa", "Preparar la presentación", "Ir al médico",
          "Escribir informe", "Regar las plantas", "Renovar pasaporte", "Cena con amigos", "Estudiar español",
          "Lavar el coche", "Recoger paquete", "Actualizar la web", "Leer capítulo 3", "Reunión de equipo",
          "Hacer la compra", "Pintar la valla", "Cortar el pelo", "Pagar impuestos", "Organizar armario"},
         {"mañana", "pasado mañana", "el 15 de julio", "la semana que viene", "el próximo lunes", "en 3 días",
          "esta noche", "el mes que viene", "viernes"}},
        {"fr",
         {"Appeler Anne", "Payer le loyer", "Envoyer la facture", "Préparer la réunion", "Acheter du pain",
          "Réserver les billets", "Nettoyer la cuisine", "Écrire le rapport", "Aller chez le médecin",
          "Arroser les plantes", "Renouveler le passeport", "Dîner avec Paul", "Lire le chapitre 3", "Réviser le code",
          "Laver la voiture", "Récupérer le colis", "Mettre à jour le site", "Faire les courses", "Ranger le garage",
          "Lundis au soleil", "Payer les impôts", "Couper la haie", "Organiser le placard", "Appeler maman",
          "Sortir le chien"},
         {"demain", "après-demain", "pour le 1er juillet", "la semaine prochaine", "lundi prochain", "dans 3 jours",
          "ce soir", "le mois prochain", "vendredi"}},
    };
    return all;
}

// Every stem alone, then with each phrase before or after it: 25 stems ×
// 10 forms × 5 languages = 1,250 titles, in a fixed mixed order.
const std::vector<Title> &corpus()
{
    static const std::vector<Title> titles = [] {
        std::vector<Title> list;
        for (const Words &language : words()) {
            const QString code = QString::fromLatin1(language.language);
            for (qsizetype s = 0; s < language.stems.size(); ++s) {
                const QString &stem = language.stems[s];
                list.push_back({code, stem, {}});
                for (qsizetype p = 0; p < language.phrases.size(); ++p) {
                    const QString &phrase = language.phrases[p];
                    const bool before = (s + p) % 3 == 0;
                    list.push_back({code, before ? phrase + u' ' + stem : stem + u' ' + phrase, phrase});
                }
            }
        }
        // Interleave the languages, as a session that switches would.
        std::vector<Title> mixed;
        const std::size_t perLanguage = list.size() / std::size_t(words().size());
        for (std::size_t i = 0; i < perLanguage; ++i) {
            for (std::size_t l = 0; l < std::size_t(words().size()); ++l)
                mixed.push_back(list[l * perLanguage + i]);
        }
        return mixed;
    }();
    return titles;
}

const LocalCalendar &calendar()
{
    static const LocalCalendar berlin(QTimeZone("Europe/Berlin"));
    return berlin;
}

// A Wednesday, so that no weekday phrase is today.
QDateTime now()
{
    return QDateTime(QDate(2026, 6, 10), QTime(9, 30), calendar().zone());
}

// Finds the phrase each title was built with, and none where it has none.
std::optional<QString> wrongResult(const Title &title)
{
    const std::optional<CaptureDateParser::Match> match =
        CaptureDateParser::parse(title.text, title.language, now(), calendar());
    const QString found = match ? match->phrase : QString();
    if (found == title.phrase)
        return std::nullopt;
    return QStringLiteral("[%1] \"%2\": found \"%3\", wanted \"%4\"")
        .arg(title.language, title.text, found, title.phrase);
}

void reportMicroseconds(benchmark::State &state, std::vector<double> &seconds)
{
    if (seconds.empty())
        return;
    std::sort(seconds.begin(), seconds.end());
    auto at = [&seconds](double quantile) {
        return seconds[std::size_t(quantile * double(seconds.size() - 1))] * 1e6;
    };
    state.counters["median_us"] = at(0.5);
    state.counters["p90_us"] = at(0.9);
    state.counters["p99_us"] = at(0.99);
    state.counters["max_us"] = seconds.back() * 1e6;
}

// The first call in each language builds its vocabulary: once per process.
void firstUse(benchmark::State &state)
{
    static std::vector<double> buildSeconds;
    if (buildSeconds.empty()) {
        for (const char *code : {"en", "tr", "de", "es", "fr"}) {
            const Clock::time_point start = Clock::now();
            benchmark::DoNotOptimize(CaptureDateParser::searchList(QString::fromLatin1(code)));
            buildSeconds.push_back(secondsSince(start));
        }
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(CaptureDateParser::searchList(QStringLiteral("fr")));
    state.counters["build_en_ms"] = buildSeconds[0] * 1e3;
    state.counters["build_tr_ms"] = buildSeconds[1] * 1e3;
    state.counters["build_de_ms"] = buildSeconds[2] * 1e3;
    state.counters["build_es_ms"] = buildSeconds[3] * 1e3;
    state.counters["build_fr_ms"] = buildSeconds[4] * 1e3;
}

// One call per iteration, each on the next title of `language` (all five
// when empty), each title in its own language as the interface language.
// Titles without a date take the longest path: every rule of both
// vocabularies runs to the end of the text, and most keys typed into quick
// capture leave such a title.
void parse(benchmark::State &state, const QString &language, bool onlyWithoutDate)
{
    std::vector<const Title *> titles;
    for (const Title &title : corpus()) {
        if ((language.isEmpty() || title.language == language) && (!onlyWithoutDate || title.phrase.isEmpty()))
            titles.push_back(&title);
    }
    int withDate = 0;
    for (const Title *title : titles) {
        if (const std::optional<QString> problem = wrongResult(*title)) {
            fail(state, *problem);
            return;
        }
        withDate += title->phrase.isEmpty() ? 0 : 1;
    }

    const QDateTime moment = now();
    std::vector<double> seconds;
    std::size_t next = 0;
    for (auto _ : state) {
        const Title &title = *titles[next];
        next = (next + 1) % titles.size();
        const Clock::time_point start = Clock::now();
        benchmark::DoNotOptimize(CaptureDateParser::parse(title.text, title.language, moment, calendar()));
        const double elapsed = secondsSince(start);
        state.SetIterationTime(elapsed);
        seconds.push_back(elapsed);
    }
    state.counters["titles"] = double(titles.size());
    state.counters["with_date"] = double(withDate);
    reportMicroseconds(state, seconds);
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::RegisterBenchmark("FirstUse", firstUse)->Iterations(1)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("Parse/all", parse, QString(), false)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("Parse/allWithoutDate", parse, QString(), true)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
    for (const char *code : {"en", "tr", "de", "es", "fr"}) {
        benchmark::RegisterBenchmark((std::string("Parse/") + code).c_str(), parse, QString::fromLatin1(code), false)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
    return runBenchmarks(argc, argv);
}
