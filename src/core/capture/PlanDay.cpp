#include "PlanDay.h"

#include "domain/Readiness.h"
#include "domain/TaskFlow.h"

#include <QSet>

#include <cmath>

namespace fenrow::PlanDay {

qint64 cost(const PlannableTask &task)
{
    return task.estimateMinutes.value_or(defaultTaskMinutes);
}

PlannedDay pack(const QList<PlannableTask> &tasks, qint64 budget)
{
    PlannedDay day;
    for (const PlannableTask &task : tasks) {
        const qint64 minutes = cost(task);
        if (budget >= 1 && day.totalMinutes + minutes <= budget) {
            day.taskIDs.append(task.id);
            day.totalMinutes += minutes;
        } else {
            day.overflowIDs.append(task.id);
        }
    }
    return day;
}

std::optional<qint64> parseBudget(const QString &text, DayPlanBudgetUnit unit, const QLocale &locale)
{
    QString number = text.trimmed();
    if (number.isEmpty())
        return std::nullopt;
    const QString separator = locale.decimalPoint();
    number.replace(separator.isEmpty() ? QStringLiteral(".") : separator, QStringLiteral("."));
    bool ok = false;
    const double value = QLocale::c().toDouble(number, &ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    const double minutes = std::round(value * (unit == DayPlanBudgetUnit::hours ? 60 : 1));
    // Beyond this, the number is no budget anyone means.
    if (std::abs(minutes) > 1e12)
        return std::nullopt;
    return static_cast<qint64>(minutes);
}

QString formatBudget(qint64 minutes, DayPlanBudgetUnit unit, const QLocale &locale)
{
    if (unit == DayPlanBudgetUnit::minutes)
        return QString::number(minutes);
    QString text = locale.toString(static_cast<double>(minutes) / 60.0, 'f', 2);
    // Up to two fraction digits: drop trailing zeros and a bare separator.
    const QString separator = locale.decimalPoint();
    if (text.contains(separator)) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(separator))
            text.chop(separator.size());
    }
    return text;
}

const char *unitLabelKey(DayPlanBudgetUnit unit)
{
    return unit == DayPlanBudgetUnit::hours ? QT_TRID_NOOP("planDay.budget.unit.hours")
                                            : QT_TRID_NOOP("planDay.budget.unit.minutes");
}

QList<PlannableTask> arrange(const QList<PlannableTask> &tasks, const QList<QUuid> &order)
{
    QHash<QUuid, qsizetype> positions;
    for (qsizetype i = 0; i < tasks.size(); ++i)
        positions.insert(tasks[i].id, i);
    QList<PlannableTask> arranged;
    QSet<QUuid> taken;
    for (const QUuid &id : order) {
        const auto found = positions.constFind(id);
        if (found == positions.cend() || taken.contains(id))
            continue;
        taken.insert(id);
        arranged.append(tasks[*found]);
    }
    for (const PlannableTask &task : tasks) {
        if (!taken.contains(task.id))
            arranged.append(task);
    }
    return arranged;
}

PlannableTask plannable(const ReadyTask &task)
{
    return {task.node->id, task.node->title, task.flow->name, task.node->estimateMinutes};
}

} // namespace fenrow::PlanDay
