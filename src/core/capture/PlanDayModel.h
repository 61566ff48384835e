#pragma once

#include "EngineCancel.h"
#include "PlanDay.h"

#include "domain/Readiness.h"

#include <QList>
#include <QObject>

#include <functional>

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class FenrowHistory;
class FenrowStore;

struct PlanDayPhase {
    enum class Kind { setup, running, result, failed };
    Kind kind = Kind::setup;
    // Only in `result`.
    PlannedDay plan;

    friend bool operator==(const PlanDayPhase &, const PlanDayPhase &) = default;
};

struct PlanDayRowPlacement {
    enum class Kind { planned, overflow };
    Kind kind = Kind::planned;
    // From 1, only for planned rows.
    int position = 0;
};

// The Plan Day sheet without its widgets: the ready tasks, in the Ready
// list's present order, go through setup, an optional engine run and a
// result that can be reordered by hand and committed as today's ranks.
class PlanDayModel : public QObject {
    Q_OBJECT

public:
    struct Row {
        PlannableTask task;
        PlanDayRowPlacement placement;
    };

    // Without `history` the commit is not undoable (a command-line run).
    PlanDayModel(const QList<ReadyTask> &tasks, FenrowStore &store, AppEnvironment &environment,
                 AppPreferences &preferences, FenrowHistory *history = nullptr, QObject *parent = nullptr);
    // An engine run nobody will see the end of is stopped.
    ~PlanDayModel() override;

    const PlanDayPhase &phase() const { return m_phase; }
    bool usesEngine() const;
    bool isReordered() const { return m_isReordered; }
    // Whether the order came from the engine or from the list and the hand.
    bool isEngineOrder() const { return m_engineOrdered && !m_isReordered; }

    // The budget in minutes and its unit, kept in the preferences at every
    // change so the next plan starts from them.
    qint64 budgetMinutes() const;
    void setBudgetMinutes(qint64 minutes);
    DayPlanBudgetUnit budgetUnit() const;
    void setBudgetUnit(DayPlanBudgetUnit unit);
    // A typed budget in the present unit; unreadable text keeps the budget.
    bool setBudgetText(const QString &text);
    QString budgetLabel(qint64 minutes) const;
    QLocale locale() const;

    // Setup's primary button: packs in the given order at once without an
    // engine, else asks the engine and comes back to `result` (or `failed`).
    void plan();
    // From `failed`.
    void backToSetup();

    // The result as shown: planned rows in working order, then overflow.
    QList<Row> rows() const;
    // A drop in the result: the row at `from` goes to `to` and the whole list
    // is packed again, so the cut line can move.
    void moveRow(qsizetype from, qsizetype to);

    // The result's primary button: today's ranks for the planned tasks, none
    // for every other ready task of the sheet. Only changed ranks are written.
    void commit();

    const char *subtitleKey() const;
    const char *primaryButtonKey() const;
    const char *orderLabelKey() const;
    QString summary() const;

signals:
    void phaseChanged();
    void rowsChanged();
    void budgetChanged();
    void committed();

private:
    void showResult(QList<PlannableTask> order, bool engineOrdered);
    void setPhase(PlanDayPhase phase);

    FenrowStore &m_store;
    AppEnvironment &m_environment;
    AppPreferences &m_preferences;
    FenrowHistory *m_history;
    PlanDayPhase m_phase;
    // Every task in the present working order.
    QList<PlannableTask> m_order;
    bool m_engineOrdered = false;
    bool m_isReordered = false;
    // Counts engine runs, so an answer for an earlier run is ignored.
    int m_run = 0;
    EngineCancel m_cancel;
};

} // namespace fenrow
