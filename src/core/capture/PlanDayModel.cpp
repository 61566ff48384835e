#include "PlanDayModel.h"

#include "CaptureLog.h"

#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/DurationText.h"
#include "shell/InterfaceLanguage.h"

#include <QSet>

#include <algorithm>
#include <limits>

namespace fenrow {

PlanDayModel::PlanDayModel(const QList<ReadyTask> &tasks, FenrowStore &store, AppEnvironment &environment,
                           AppPreferences &preferences, FenrowHistory *history, QObject *parent)
    : QObject(parent), m_store(store), m_environment(environment), m_preferences(preferences),
      m_history(history)
{
    for (const ReadyTask &task : tasks)
        m_order.append(PlanDay::plannable(task));
}

bool PlanDayModel::usesEngine() const
{
    return m_environment.engineSelection() != EngineSelection::unavailable;
}

qint64 PlanDayModel::budgetMinutes() const
{
    return m_preferences.dayPlanBudgetMinutes();
}

void PlanDayModel::setBudgetMinutes(qint64 minutes)
{
    const int clamped = static_cast<int>(std::clamp<qint64>(minutes, std::numeric_limits<int>::min(),
                                                            std::numeric_limits<int>::max()));
    if (clamped == m_preferences.dayPlanBudgetMinutes())
        return;
    m_preferences.setDayPlanBudgetMinutes(clamped);
    emit budgetChanged();
}

DayPlanBudgetUnit PlanDayModel::budgetUnit() const
{
    return m_preferences.dayPlanBudgetUnit();
}

void PlanDayModel::setBudgetUnit(DayPlanBudgetUnit unit)
{
    if (m_preferences.dayPlanBudgetUnitRaw() == rawString(unit))
        return;
    m_preferences.setDayPlanBudgetUnit(unit);
    emit budgetChanged();
}

bool PlanDayModel::setBudgetText(const QString &text)
{
    const std::optional<qint64> minutes = PlanDay::parseBudget(text, budgetUnit(), locale());
    if (!minutes)
        return false;
    setBudgetMinutes(*minutes);
    return true;
}

QLocale PlanDayModel::locale() const
{
    return QLocale(InterfaceLanguage::current());
}

QString PlanDayModel::budgetLabel(qint64 minutes) const
{
    // As estimates read, whatever unit the budget is typed in: a number
    // followed by the unit's name would say "1 hours".
    return DurationText::compact(minutes);
}

void PlanDayModel::setPhase(PlanDayPhase phase)
{
    if (phase == m_phase)
        return;
    m_phase = std::move(phase);
    emit phaseChanged();
    emit rowsChanged();
}

void PlanDayModel::showResult(QList<PlannableTask> order, bool engineOrdered)
{
    m_order = std::move(order);
    m_engineOrdered = engineOrdered;
    m_isReordered = false;
    setPhase({PlanDayPhase::Kind::result, PlanDay::pack(m_order, budgetMinutes())});
}

PlanDayModel::~PlanDayModel()
{
    m_cancel.cancel();
}

void PlanDayModel::plan()
{
    if (m_phase.kind != PlanDayPhase::Kind::setup)
        return;
    if (!usesEngine()) {
        showResult(m_order, false);
        return;
    }
    setPhase({PlanDayPhase::Kind::running, {}});
    const int run = ++m_run;
    m_cancel = EngineCancel();
    EngineCall::whenDone(m_environment.engine()->planDay(m_order, budgetMinutes(), contentLanguage(), m_cancel), this,
                         [this, run](EngineResult<QList<QUuid>> answer) {
                             if (run != m_run || m_phase.kind != PlanDayPhase::Kind::running)
                                 return;
                             if (!answer.ok()) {
                                 qCCritical(fenrowCaptureLog, "Plan Day failed: %s",
                                           qUtf8Printable(engineErrorDescription(answer.error())));
                                 setPhase({PlanDayPhase::Kind::failed, {}});
                                 return;
                             }
                             showResult(PlanDay::arrange(m_order, answer.value()), true);
                         });
}

void PlanDayModel::backToSetup()
{
    if (m_phase.kind == PlanDayPhase::Kind::failed)
        setPhase({PlanDayPhase::Kind::setup, {}});
}

QList<PlanDayModel::Row> PlanDayModel::rows() const
{
    if (m_phase.kind != PlanDayPhase::Kind::result)
        return {};
    QHash<QUuid, const PlannableTask *> byID;
    for (const PlannableTask &task : m_order)
        byID.insert(task.id, &task);
    QList<Row> rows;
    int position = 0;
    for (const QUuid &id : m_phase.plan.taskIDs)
        rows.append({*byID.value(id), {PlanDayRowPlacement::Kind::planned, ++position}});
    for (const QUuid &id : m_phase.plan.overflowIDs)
        rows.append({*byID.value(id), {PlanDayRowPlacement::Kind::overflow, 0}});
    return rows;
}

void PlanDayModel::moveRow(qsizetype from, qsizetype to)
{
    QList<Row> shown = rows();
    if (from < 0 || from >= shown.size() || to < 0 || to >= shown.size() || from == to)
        return;
    shown.move(from, to);
    QList<PlannableTask> order;
    for (const Row &row : shown)
        order.append(row.task);
    m_order = order;
    m_isReordered = true;
    setPhase({PlanDayPhase::Kind::result, PlanDay::pack(m_order, budgetMinutes())});
}

void PlanDayModel::commit()
{
    if (m_phase.kind != PlanDayPhase::Kind::result)
        return;
    const QList<QUuid> &planned = m_phase.plan.taskIDs;
    const QSet<QUuid> plannedSet(planned.begin(), planned.end());

    // Ranks live on nodes of several flows, and each flow keeps its own
    // history: one "Plan today" step per flow touched. Nodes are looked up
    // afresh, as some may have gone while the sheet was open.
    QList<const TaskFlow *> flows;
    for (const PlannableTask &task : std::as_const(m_order)) {
        const FlowNode *node = m_store.node(task.id);
        if (node && node->flow() && !flows.contains(node->flow()))
            flows.append(node->flow());
    }
    for (const TaskFlow *flow : std::as_const(flows)) {
        auto writeRanks = [&] {
            for (const PlannableTask &task : std::as_const(m_order)) {
                const FlowNode *node = m_store.node(task.id);
                if (node && node->flow() == flow && !plannedSet.contains(task.id))
                    m_store.setDayPlanRank(std::nullopt, *node);
            }
            for (qsizetype i = 0; i < planned.size(); ++i) {
                const FlowNode *node = m_store.node(planned[i]);
                if (node && node->flow() == flow)
                    m_store.setDayPlanRank(i + 1, *node);
            }
        };
        if (m_history)
            m_history->recordBorrowedAction(QStringLiteral("Plan today"), *flow, writeRanks);
        else
            writeRanks();
    }
    emit committed();
}

const char *PlanDayModel::subtitleKey() const
{
    return usesEngine() ? QT_TRID_NOOP("planDay.subtitle") : QT_TRID_NOOP("planDay.subtitle.manual");
}

const char *PlanDayModel::primaryButtonKey() const
{
    return usesEngine() ? QT_TRID_NOOP("planDay.plan") : QT_TRID_NOOP("planDay.planManual");
}

const char *PlanDayModel::orderLabelKey() const
{
    return isEngineOrder() ? QT_TRID_NOOP("planDay.order.ai") : QT_TRID_NOOP("planDay.order.custom");
}

QString PlanDayModel::summary() const
{
    const PlannedDay &plan = m_phase.plan;
    QString text = qtTrId("planDay.summary").arg(budgetLabel(plan.totalMinutes), budgetLabel(budgetMinutes()));
    if (!plan.overflowIDs.isEmpty())
        text += QStringLiteral(" · ") + qtTrId("planDay.summary.overflow %lld").arg(plan.overflowIDs.size());
    return text;
}

} // namespace fenrow
