#pragma once

#include "InferenceTypes.h"
#include "shell/PreferenceChoices.h"

#include <QList>
#include <QLocale>
#include <QString>
#include <QUuid>

#include <array>
#include <optional>

namespace fenrow {

struct ReadyTask;

// Tasks fitted into a day's budget: those that fit in working order, those
// that do not in the order they came, and what the planned ones cost.
struct PlannedDay {
    QList<QUuid> taskIDs;
    QList<QUuid> overflowIDs;
    qint64 totalMinutes = 0;

    friend bool operator==(const PlannedDay &, const PlannedDay &) = default;
};

// Fitting ready tasks into a time budget, and reading and showing budgets.
namespace PlanDay {

// What a task with no estimate is taken to cost.
inline constexpr qint64 defaultTaskMinutes = 30;
inline constexpr std::array<int, 9> budgetPresets{30, 45, 60, 90, 120, 180, 240, 360, 480};

qint64 cost(const PlannableTask &task);

// Walks the tasks in order and keeps each one that still fits (equal to
// the rest of the budget fits); one that does not goes to overflow and the
// walk goes on, so a later, shorter task can still fit.
PlannedDay pack(const QList<PlannableTask> &tasks, qint64 budget);

// A typed budget in whole minutes: a decimal number in the locale's way
// (a full stop always works), in `unit`. None for blank or unreadable text.
std::optional<qint64> parseBudget(const QString &text, DayPlanBudgetUnit unit, const QLocale &locale);
// Minutes as the plain integer; hours with up to two fraction digits.
QString formatBudget(qint64 minutes, DayPlanBudgetUnit unit, const QLocale &locale);
const char *unitLabelKey(DayPlanBudgetUnit unit);

// The tasks in the engine's order: unknown and repeated ids are skipped,
// tasks it left out follow in their own order. No task is lost or doubled.
QList<PlannableTask> arrange(const QList<PlannableTask> &tasks, const QList<QUuid> &order);

PlannableTask plannable(const ReadyTask &task);

} // namespace PlanDay

} // namespace fenrow
