#pragma once

#include "SheetParts.h"
#include "capture/PlanDayModel.h"

#include <QList>
#include <QUuid>

class QComboBox;
class QLineEdit;
class QScrollArea;
class QStackedWidget;
class QToolButton;

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class EmptyStateView;
class FenrowHistory;
class FenrowStore;
class ProgressRow;

// The planned tasks' durations side by side in one bar, in proportion to
// the day's budget; what is left of the budget stays empty.
class PlanDayTimeline : public QWidget {
public:
    explicit PlanDayTimeline(QWidget *parent = nullptr);
    void setPlan(qint64 budgetMinutes, const QList<qint64> &durations);
    const QList<qint64> &durations() const { return m_durations; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    qint64 m_budget = 0;
    QList<qint64> m_durations;
};

// The result as rows: the planned tasks numbered, the cut line, then what
// does not fit. A planned row is dragged by its handle to a new place; on
// the drop the whole list is fitted again, so the cut line may move.
class PlanDayList : public QWidget {
    Q_OBJECT

public:
    static constexpr int rowHeight = 44;
    static constexpr int cutHeight = 30;

    explicit PlanDayList(QWidget *parent = nullptr);
    void setRows(const QList<PlanDayModel::Row> &rows);
    const QList<PlanDayModel::Row> &rows() const { return m_rows; }

    // Where row `index` and its handle are, in the list's coordinates.
    QRect rowRect(qsizetype index) const;
    QRect handleRect(qsizetype index) const;
    QRect cutRect() const;
    std::optional<QUuid> draggingID() const;

    QSize sizeHint() const override;

signals:
    void rowMoved(qsizetype from, qsizetype to);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    qsizetype plannedCount() const;
    // The row index a drop at height `y` would give the dragged row.
    qsizetype dropIndex(int y) const;
    QString durationText(const PlannableTask &task) const;

    QList<PlanDayModel::Row> m_rows;
    qsizetype m_dragging = -1;
    qsizetype m_current = -1;
    int m_dragY = 0;
    int m_grabOffset = 0;
};

// The sheet that plans today: the time there is, an order from the model
// or the Ready list, the tasks that fit above a cut line, reordered by
// hand, and a commit that ranks them for today.
class PlanDaySheet : public SheetFrame {
    Q_OBJECT

public:
    PlanDaySheet(const QList<ReadyTask> &tasks, FenrowStore &store, FenrowHistory &history,
                 AppEnvironment &environment, AppPreferences &preferences, QWidget *parent = nullptr);

    PlanDayModel &model() const { return *m_model; }
    PlanDayList *list() const { return m_list; }
    PlanDayTimeline *timeline() const { return m_timeline; }
    QLineEdit *budgetField() const { return m_budgetField; }
    QComboBox *unitMenu() const { return m_unit; }

private:
    QWidget *makeStrip();
    void refreshStrip();
    void refreshPhase();
    void primaryClicked();

    PlanDayModel *m_model = nullptr;
    QStackedWidget *m_pages = nullptr;
    QWidget *m_setup = nullptr;
    QWidget *m_running = nullptr;
    QWidget *m_result = nullptr;
    NoticeRow *m_failed = nullptr;
    QToolButton *m_presets = nullptr;
    QLineEdit *m_budgetField = nullptr;
    QComboBox *m_unit = nullptr;
    QLabel *m_taskCount = nullptr;
    QLabel *m_summary = nullptr;
    QLabel *m_order = nullptr;
    PlanDayTimeline *m_timeline = nullptr;
    QStackedWidget *m_resultContent = nullptr;
    QScrollArea *m_scroll = nullptr;
    PlanDayList *m_list = nullptr;
    EmptyStateView *m_nothingFits = nullptr;
    qsizetype m_taskTotal = 0;
};

} // namespace fenrow
