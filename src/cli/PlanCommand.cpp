#include "PlanCommand.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "EngineSupport.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "PlainText.h"
#include "TaskText.h"
#include "TextTable.h"

#include "capture/PlanDayModel.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/Readiness.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <limits>

namespace fenrow::PlanCommand {

namespace {

const QString budgetOption = QStringLiteral("budget");
const QString commitOption = QStringLiteral("commit");

struct Budget {
    qint64 minutes = 0;
    DayPlanBudgetUnit unit = DayPlanBudgetUnit::minutes;
};

// "90m", "1.5h", "2 hours", or a bare number in the unit last used. The
// number reads in the system's way or with a full stop.
std::optional<Budget> readBudget(const QString &text, DayPlanBudgetUnit savedUnit)
{
    static const QRegularExpression withUnit(QStringLiteral(R"(^(.*?)\s*(m|min|mins|minutes?|h|hrs?|hours?)$)"),
                                              QRegularExpression::CaseInsensitiveOption);
    QString number = text.trimmed();
    Budget budget{0, savedUnit};
    const QRegularExpressionMatch match = withUnit.match(number);
    if (match.hasMatch()) {
        number = match.captured(1);
        budget.unit = match.captured(2).startsWith(QLatin1Char('h'), Qt::CaseInsensitive) ? DayPlanBudgetUnit::hours
                                                                                           : DayPlanBudgetUnit::minutes;
    }
    const std::optional<qint64> minutes = PlanDay::parseBudget(number, budget.unit, QLocale());
    if (!minutes || *minutes < 0 || *minutes > std::numeric_limits<int>::max())
        return std::nullopt;
    budget.minutes = *minutes;
    return budget;
}

QString budgetText(qint64 minutes, DayPlanBudgetUnit unit)
{
    const QString amount = PlanDay::formatBudget(minutes, unit, QLocale::c());
    if (unit == DayPlanBudgetUnit::hours)
        return amount + (amount == QLatin1String("1") ? QStringLiteral(" hour") : QStringLiteral(" hours"));
    return amount + (minutes == 1 ? QStringLiteral(" minute") : QStringLiteral(" minutes"));
}

QStringList rowCells(const PlanDayModel::Row &row)
{
    const QString position = row.placement.kind == PlanDayRowPlacement::Kind::planned
        ? QString::number(row.placement.position)
        : QString();
    const QString cost = row.task.estimateMinutes
        ? TaskText::estimate(*row.task.estimateMinutes)
        : TaskText::estimate(PlanDay::defaultTaskMinutes) + QStringLiteral(" (no estimate)");
    return {position, PlainText::singleLine(row.task.title), PlainText::singleLine(row.task.flowName), cost};
}

QJsonArray jsonRows(const QList<PlanDayModel::Row> &rows, PlanDayRowPlacement::Kind kind, const FenrowStore &store,
                    const QDateTime &now)
{
    QJsonArray list;
    for (const PlanDayModel::Row &row : rows) {
        const FlowNode *node = store.node(row.task.id);
        if (row.placement.kind != kind || !node)
            continue;
        QJsonObject task = JsonOutput::readyTask(*node, now, store.calendar());
        if (kind == PlanDayRowPlacement::Kind::planned)
            task.insert(QStringLiteral("position"), row.placement.position);
        list.append(task);
    }
    return list;
}

void printPlan(CommandContext &context, const PlanDayModel &model, const AppEnvironment &environment,
               bool committed)
{
    const PlannedDay &day = model.phase().plan;
    const QList<PlanDayModel::Row> rows = model.rows();
    QTextStream &out = context.out();
    const DayPlanBudgetUnit unit = model.budgetUnit();
    out << "Today's plan: " << budgetText(day.totalMinutes, unit) << " of " << budgetText(model.budgetMinutes(), unit)
        << (model.isEngineOrder() ? ", in the order the inference engine suggests.\n"
                                  : ", in the order of the Ready list.\n");
    out << EngineSupport::engineLine(environment) << '\n';

    TextTable table({TextTable::Alignment::right}, QStringLiteral("  "));
    bool cut = false;
    for (const PlanDayModel::Row &row : rows) {
        if (row.placement.kind == PlanDayRowPlacement::Kind::overflow && !cut) {
            cut = true;
            table.addHeading(day.taskIDs.isEmpty()
                                 ? QStringLiteral("Nothing fits in %1:").arg(budgetText(model.budgetMinutes(), unit))
                                 : QStringLiteral("--- %1 ends here; these do not fit:")
                                       .arg(budgetText(model.budgetMinutes(), unit)));
        }
        table.addRow(rowCells(row));
    }
    table.print(out);

    if (committed)
        out << "Saved as today's order: the Ready list puts these tasks first among today's.\n";
    else if (!day.taskIDs.isEmpty())
        out << "Run again with --commit to save this as today's order.\n";
}

int planDay(CommandContext &context)
{
    FenrowStore &store = context.store();
    AppPreferences &preferences = context.preferences();
    std::optional<Budget> budget;
    if (context.hasOption(budgetOption)) {
        budget = readBudget(context.optionValue(budgetOption), preferences.dayPlanBudgetUnit());
        if (!budget)
            return context.usageError(QStringLiteral("--budget takes minutes or hours such as 90m or 1.5h, not %1")
                                          .arg(PlainText::quoted(context.optionValue(budgetOption))));
    }

    const QDateTime now = context.clock().now();
    const QList<ReadyTask> tasks = Readiness::inListOrder(store.flows(), now, store.calendar(), preferences.readySort());
    AppEnvironment &environment = context.environment();
    PlanDayModel model(tasks, store, environment, preferences, &context.history());
    // Like the window's budget strip: the next plan starts from it.
    if (budget) {
        model.setBudgetUnit(budget->unit);
        model.setBudgetMinutes(budget->minutes);
    }
    if (tasks.isEmpty()) {
        if (context.json()) {
            context.printJson(QJsonObject{{QStringLiteral("budgetMinutes"), model.budgetMinutes()},
                                          {QStringLiteral("totalMinutes"), 0},
                                          {QStringLiteral("planned"), QJsonArray()},
                                          {QStringLiteral("overflow"), QJsonArray()},
                                          {QStringLiteral("committed"), false}});
            return exitSuccess;
        }
        context.out() << "Nothing is ready to plan.\n";
        return exitSuccess;
    }

    model.plan();
    if (!EngineSupport::waitUntil(context, [&] { return model.phase().kind != PlanDayPhase::Kind::running; }))
        return context.fail(QStringLiteral("the command's caller went away before the engine answered; "
                                           "nothing was changed"));
    if (model.phase().kind == PlanDayPhase::Kind::failed)
        return context.fail(QStringLiteral("the inference engine could not order the day, and nothing was changed"));

    const bool commit = context.hasOption(commitOption);
    if (commit)
        model.commit();

    if (context.json()) {
        const QList<PlanDayModel::Row> rows = model.rows();
        context.printJson(QJsonObject{
            {QStringLiteral("budgetMinutes"), model.budgetMinutes()},
            {QStringLiteral("totalMinutes"), model.phase().plan.totalMinutes},
            {QStringLiteral("order"), model.isEngineOrder() ? QStringLiteral("engine") : QStringLiteral("list")},
            {QStringLiteral("planned"), jsonRows(rows, PlanDayRowPlacement::Kind::planned, store, now)},
            {QStringLiteral("overflow"), jsonRows(rows, PlanDayRowPlacement::Kind::overflow, store, now)},
            {QStringLiteral("committed"), commit},
        });
        return exitSuccess;
    }
    printPlan(context, model, environment, commit);
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addOption({budgetOption, {}, QStringLiteral("BUDGET"),
                        QStringLiteral("Time for the plan: minutes or hours, such as 90m or 1.5h")});
    registry.addOption({commitOption, {}, {}, QStringLiteral("Save the plan as today's order")});

    registry.addCommand({
        .name = QStringLiteral("plan"),
        .summary = QStringLiteral("Fit the ready tasks into the time you have today"),
        .description = QStringLiteral(
            "Takes the Ready list in its order (today's tasks first), or the order an\n"
            "inference engine suggests when one is available, and keeps each task that\n"
            "still fits into the budget; a task without an estimate counts 30 minutes.\n"
            "A task that does not fit goes below the cut line and a later, shorter one\n"
            "can still fit.\n\n"
            "--budget sets the time (90m, 1.5h; a bare number is in the unit used\n"
            "last) and, as in the window, becomes the budget the next plan starts\n"
            "from; the default is preferences.dayPlanBudget (240 minutes).\n"
            "--commit saves the planned tasks as today's order (ranks 1, 2, ...) and\n"
            "clears the rank of every other ready task. With --json, an object with\n"
            "budgetMinutes, totalMinutes, order, planned, overflow and committed."),
        .options = {budgetOption, commitOption},
        .run = planDay,
    });
}

} // namespace fenrow::PlanCommand
