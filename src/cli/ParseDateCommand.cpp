#include "ParseDateCommand.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "ExitStatus.h"
#include "PlainText.h"
#include "TaskText.h"
#include "TextTable.h"

#include "capture/CaptureDateParser.h"
#include "domain/Clock.h"
#include "domain/LocalCalendar.h"
#include "shell/InterfaceLanguage.h"

#include <QJsonObject>
#include <QRegularExpression>

namespace fenrow::ParseDateCommand {

namespace {

const QString languageOption = QStringLiteral("lang");

// "de", "DE", "de-AT" and "de_AT" all name German; anything else is no
// language the parser knows.
std::optional<QString> languageCode(const QString &text)
{
    const QString code = text.trimmed().section(QRegularExpression(QStringLiteral("[-_]")), 0, 0).toLower();
    if (!InterfaceLanguage::supportedCodes().contains(code))
        return std::nullopt;
    return code;
}

int parseDate(CommandContext &context)
{
    QString language = InterfaceLanguage::current();
    if (context.hasOption(languageOption)) {
        const std::optional<QString> chosen = languageCode(context.optionValue(languageOption));
        if (!chosen) {
            QStringList codes = InterfaceLanguage::supportedCodes();
            const QString last = codes.takeLast();
            return context.usageError(QStringLiteral("--lang takes %1 or %2, not %3")
                                          .arg(codes.join(QStringLiteral(", ")), last,
                                               PlainText::quoted(context.optionValue(languageOption))));
        }
        language = *chosen;
    }

    // The store is not opened; its calendar is the system's time zone too.
    const LocalCalendar calendar;
    const std::optional<CaptureDateParser::Match> match =
        CaptureDateParser::parse(context.argument(0).trimmed(), language, context.clock().now(), calendar);

    if (context.json()) {
        if (!match) {
            context.out() << "null\n";
            return exitSuccess;
        }
        context.printJson(QJsonObject{
            {QStringLiteral("date"), calendar.dayOf(match->date).toString(Qt::ISODate)},
            {QStringLiteral("phrase"), match->phrase},
            {QStringLiteral("title"), match->title},
        });
        return exitSuccess;
    }
    if (!match) {
        context.out() << "no date\n";
        return exitSuccess;
    }
    TextTable table;
    table.addRow({QStringLiteral("date"), TaskText::day(match->date, calendar)});
    table.addRow({QStringLiteral("phrase"), PlainText::singleLine(match->phrase)});
    table.addRow({QStringLiteral("title"), PlainText::singleLine(match->title)});
    table.print(context.out());
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addOption({.name = languageOption,
                        .valueName = QStringLiteral("CODE"),
                        .help = QStringLiteral("Language of the date words: en, tr, de, es or fr"),
                        .choices = InterfaceLanguage::supportedCodes()});
    registry.addCommand({
        .name = QStringLiteral("parse-date"),
        .argumentsSyntax = QStringLiteral("TEXT"),
        .summary = QStringLiteral("Show the due date a task title names, as add reads it"),
        .description = QStringLiteral(
            "Finds one date phrase in TEXT (\"tomorrow\", \"by june 5th\", \"next monday\",\n"
            "\"in 3 days\", \"2026-07-01\") and prints the day, the phrase and the title\n"
            "that is left without it, or \"no date\". Phrases of the interface language\n"
            "(or of --lang CODE: en, tr, de, es or fr) count first, English ones always.\n"
            "A day without a year that has passed means next year's. Text that is only\n"
            "a phrase names no date: it stays the title. --now sets today. With --json,\n"
            "an object with \"date\" (YYYY-MM-DD), \"phrase\" and \"title\", or null."),
        .options = {languageOption},
        .minArguments = 1,
        .maxArguments = 1,
        .usesStore = false,
        .run = parseDate,
    });
}

} // namespace fenrow::ParseDateCommand
