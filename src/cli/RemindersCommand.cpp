#include "RemindersCommand.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "TextTable.h"

#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "shell/AppPreferences.h"
#include "shell/NotificationService.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace fenrow::RemindersCommand {

namespace {

// "2026-06-12 09:00" in the calendar's zone.
QString moment(const QDateTime &when, const LocalCalendar &calendar)
{
    return when.toTimeZone(calendar.zone()).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

int showReminders(CommandContext &context)
{
    const FenrowStore &store = context.store();
    const AppPreferences &preferences = context.preferences();
    const LocalCalendar &calendar = store.calendar();
    const QDateTime now = context.clock().now();
    const QList<NotificationRequest> requests = NotificationService::requests(store, preferences, now);
    // Soonest first, as they will come.
    QList<std::pair<QDateTime, NotificationRequest>> coming;
    for (const NotificationRequest &request : requests)
        coming.append({request.trigger.nextFireDate(now, calendar), request});
    std::stable_sort(coming.begin(), coming.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });

    if (context.json()) {
        QJsonArray list;
        for (const auto &[fireDate, request] : coming) {
            const bool daily = request.trigger.kind == NotificationTrigger::Kind::daily;
            list.append(QJsonObject{
                {QStringLiteral("identifier"), request.identifier},
                {QStringLiteral("title"), request.title},
                {QStringLiteral("subtitle"), request.subtitle},
                {QStringLiteral("body"), request.body},
                {QStringLiteral("fireDate"), JsonOutput::dateTime(fireDate, calendar)},
                {QStringLiteral("repeats"), daily ? QJsonValue(QStringLiteral("daily")) : QJsonValue()},
            });
        }
        context.printJson(list);
        return exitSuccess;
    }

    TextTable table;
    for (const auto &[fireDate, request] : coming) {
        const QString when = moment(fireDate, calendar);
        if (request.identifier == NotificationService::digestIdentifier)
            table.addRow({when, QStringLiteral("Morning digest, every day:"), request.body});
        else
            table.addRow({when, request.title, request.subtitle});
    }
    if (!preferences.dueRemindersEnabled())
        context.out() << "Due reminders are off (preferences.dueRemindersEnabled).\n";
    else if (requests.isEmpty() || requests.first().identifier == NotificationService::digestIdentifier)
        context.out() << "No task has a due day to come.\n";
    if (!preferences.morningDigestEnabled())
        context.out() << "The morning digest is off (preferences.morningDigestEnabled).\n";
    else if (requests.isEmpty() || requests.last().identifier != NotificationService::digestIdentifier)
        context.out() << "No morning digest: nothing is ready.\n";
    table.print(context.out());
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addCommand({
        .name = QStringLiteral("reminders"),
        .summary = QStringLiteral("List the due reminders and the morning digest Fenrow has pending now"),
        .description = QStringLiteral(
            "Each open task with a due day to come is reminded of on that day at the\n"
            "hour of preferences.dueReminderHour (the earliest 60), and the morning\n"
            "digest names the first three ready tasks every day at that hour. Fenrow\n"
            "shows them only while it runs, and lays them out again after each change.\n"
            "With --json, an array of notifications: identifier, title, subtitle,\n"
            "body, fireDate and repeats (\"daily\" or null)."),
        .run = showReminders,
    });
}

} // namespace fenrow::RemindersCommand
