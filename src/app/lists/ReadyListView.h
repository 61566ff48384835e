#pragma once

#include "domain/Readiness.h"

#include <QUuid>
#include <QWidget>

class QBoxLayout;
class QButtonGroup;
class QLabel;
class QListView;
class QPushButton;
class QStackedWidget;

namespace fenrow {

class AppPreferences;
class EmptyStateView;
class FenrowHistory;
class FenrowStore;
class ReadyListModel;

// The detail of the Ready route: every ready task of every flow, in the
// user's chosen sort, with today's tasks first; or, when nothing is ready,
// why not. It re-reads the store on each change (while hidden, when it next
// appears) and writes records only through store operations; a completion
// is an undoable step of its flow's history.
class ReadyListView : public QWidget {
    Q_OBJECT

public:
    // Starts with the user's sort, and keeps each choice there.
    ReadyListView(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences,
                  QWidget *parent = nullptr);

    void setSort(ReadySort sort);
    ReadySort sort() const;

    // Reads the store and the clock again.
    void reload();

    ReadyListModel *model() const { return m_model; }
    QListView *list() const { return m_list; }
    // Where a task dragged inside Today would land, as a place among
    // Today's tasks, for a point in the list's viewport.
    qsizetype todayDropPosition(const QPoint &point) const;
    EmptyStateView *emptyState() const { return m_empty; }

signals:
    // The user asked to see a task's flow.
    void flowRequested(const QUuid &flowId);
    // The user asked to plan today from the list.
    void planDayRequested();

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeSortControl();
    void complete(const QUuid &nodeId);
    // Today's order by dragging a row; true when the event was the drag's.
    bool dragInToday(QEvent *event);
    void showDropMark(qsizetype position);
    void showEmptyReason();
    // Title and sort side by side when they fit, else the sort below.
    void arrangeHeader();

    FenrowStore &m_store;
    FenrowHistory &m_history;
    AppPreferences &m_preferences;
    ReadyListModel *m_model = nullptr;
    QBoxLayout *m_header = nullptr;
    QLabel *m_title = nullptr;
    QWidget *m_sortControl = nullptr;
    QPushButton *m_planDay = nullptr;
    QListView *m_list = nullptr;
    QStackedWidget *m_content = nullptr;
    EmptyStateView *m_empty = nullptr;
    QButtonGroup *m_sortButtons = nullptr;
    // The task whose circle the mouse went down on.
    QUuid m_pressedCircle;
    // A row of Today pressed, and where; a drag once it moved far enough.
    QUuid m_pressedToday;
    QPoint m_pressPoint;
    bool m_draggingToday = false;
    QWidget *m_dropMark = nullptr;
    bool m_stale = true;
};

} // namespace fenrow
