#include "ReadyListView.h"

#include "look/EmptyStateView.h"
#include "ListViewPlaces.h"
#include "ReadyListModel.h"
#include "ReadyRowDelegate.h"
#include "look/Theme.h"
#include "domain/Clock.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "shell/AppPreferences.h"
#include "shell/TodayOrder.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QPainter>
#include <QScrollBar>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

namespace {

using namespace Theme;

// Room between the view's edge and a row's own padding; titles and rows
// line up on it.
constexpr int marginX = 24;
// The scroll bar takes part of the right margin when it shows.
constexpr int listRightMargin = 16;
// The padding of a row's content inside its hover background.
constexpr int rowInset = 12;
// Between the title and the Plan Day button beside it.
constexpr int planDayGap = 14;

// A list whose rows keep clear of the window's edge while its scroll bar
// stays at the edge.
class InsetListView : public QListView {
public:
    InsetListView(int left, int right, QWidget *parent) : QListView(parent) { setViewportMargins(left, 0, right, 0); }
};

// The options side by side on a soft track; the chosen one is raised.
class SegmentedControl : public QWidget {
public:
    explicit SegmentedControl(QWidget *parent) : QWidget(parent)
    {
        auto *row = new QHBoxLayout(this);
        row->setContentsMargins(2, 2, 2, 2);
        row->setSpacing(0);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        setStyleSheet(QStringLiteral("QToolButton { border: 1px solid transparent; border-radius: 6px;"
                                     " padding: 3px 10px; color: %1; background: transparent; }"
                                     " QToolButton:hover:!checked { color: %2; }"
                                     " QToolButton:checked { background: %3; color: %2; border-color: %4; }")
                          .arg(Color::secondaryText.name(), Color::text.name(), Color::window.name(),
                               Color::track.name()));
    }

    QToolButton *addSegment(const QString &name, const QString &text)
    {
        auto *button = new QToolButton(this);
        button->setObjectName(name);
        button->setText(text);
        button->setCheckable(true);
        button->setFont(captionFont());
        button->setCursor(Qt::PointingHandCursor);
        button->setFocusPolicy(Qt::TabFocus);
        layout()->addWidget(button);
        return button;
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Color::hover);
        painter.drawRoundedRect(QRectF(rect()), 8, 8);
    }
};

QString sortTitle(ReadySort sort)
{
    switch (sort) {
    case ReadySort::flow:
        return qtTrId("ready.sort.flow");
    case ReadySort::dueDate:
        return qtTrId("ready.sort.dueDate");
    case ReadySort::priority:
        return qtTrId("ready.sort.priority");
    case ReadySort::estimate:
        return qtTrId("ready.sort.estimate");
    }
    return {};
}

} // namespace

ReadyListView::ReadyListView(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences,
                             QWidget *parent)
    : QWidget(parent), m_store(store), m_history(history), m_preferences(preferences)
{
    setObjectName(QStringLiteral("ready.root"));
    setAutoFillBackground(true);

    m_model = new ReadyListModel(store, this);
    m_model->setSort(m_preferences.readySort());

    m_title = new QLabel(qtTrId("ready.title"), this);
    m_title->setObjectName(QStringLiteral("ready.title"));
    m_title->setFont(largeTitleFont());
    m_sortControl = makeSortControl();
    // Planning the day starts from the list as it stands: its button goes
    // with the title, and with the tasks.
    m_planDay = new QPushButton(qtTrId("ready.action.planDay"), this);
    m_planDay->setObjectName(QStringLiteral("ready.action.planDay"));
    m_planDay->setFont(captionFont());
    m_planDay->setCursor(Qt::PointingHandCursor);
    m_planDay->setStyleSheet(filledButtonStyle(Color::accent));
    connect(m_planDay, &QPushButton::clicked, this, &ReadyListView::planDayRequested);

    // Both edges line up with the rows' content below.
    m_header = new QBoxLayout(QBoxLayout::LeftToRight);
    m_header->setContentsMargins(marginX + rowInset, 0, listRightMargin + rowInset, 0);
    m_header->setSpacing(16);
    auto *titleRow = new QHBoxLayout;
    titleRow->setSpacing(planDayGap);
    titleRow->addWidget(m_title);
    titleRow->addWidget(m_planDay, 0, Qt::AlignVCenter);
    titleRow->addStretch(1);
    m_header->addLayout(titleRow, 1);
    m_header->addWidget(m_sortControl, 0, Qt::AlignVCenter);

    m_list = new InsetListView(marginX, listRightMargin, this);
    m_list->setObjectName(QStringLiteral("ready.list"));
    m_list->setAccessibleName(qtTrId("ready.title"));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new ReadyRowDelegate(m_list));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setUniformItemSizes(false);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setMouseTracking(true);
    m_list->setStyleSheet(QStringLiteral("QListView { background: transparent; outline: none; }"));
    m_list->verticalScrollBar()->setStyleSheet(thinScrollBarStyle());
    m_list->viewport()->installEventFilter(this);
    m_dropMark = new QWidget(m_list->viewport());
    m_dropMark->setObjectName(QStringLiteral("ready.today.dropMark"));
    m_dropMark->setAutoFillBackground(true);
    QPalette markColour = m_dropMark->palette();
    markColour.setColor(QPalette::Window, Color::accent);
    m_dropMark->setPalette(markColour);
    m_dropMark->hide();
    m_list->installEventFilter(this);
    connect(m_list, &QListView::doubleClicked, this, [this](const QModelIndex &index) {
        const QUuid flow = index.data(ReadyListModel::FlowIdRole).toUuid();
        if (!flow.isNull())
            emit flowRequested(flow);
    });

    m_empty = new EmptyStateView(QStringLiteral("ready.empty"), this);
    m_content = new QStackedWidget(this);
    m_content->addWidget(m_list);
    m_content->addWidget(m_empty);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 30, 0, 0);
    column->setSpacing(0);
    column->addLayout(m_header);
    column->addSpacing(20);
    column->addWidget(m_content, 1);

    connect(&m_store, &FenrowStore::changed, this, &ReadyListView::reload);
}

QWidget *ReadyListView::makeSortControl()
{
    auto *control = new SegmentedControl(this);
    control->setObjectName(QStringLiteral("ready.sort"));
    m_sortButtons = new QButtonGroup(control);
    m_sortButtons->setExclusive(true);
    for (std::size_t i = 0; i < rawCaseCount<ReadySort>(); ++i) {
        const auto sort = ReadySort(i);
        QToolButton *button = control->addSegment(QStringLiteral("ready.sort.") + rawString(sort), sortTitle(sort));
        m_sortButtons->addButton(button, int(i));
    }
    m_sortButtons->button(int(m_model->sort()))->setChecked(true);
    connect(m_sortButtons, &QButtonGroup::idClicked, this, [this](int id) { setSort(ReadySort(id)); });
    return control;
}

ReadySort ReadyListView::sort() const
{
    return m_model->sort();
}

void ReadyListView::setSort(ReadySort sort)
{
    m_sortButtons->button(int(sort))->setChecked(true);
    if (m_preferences.readySortRaw() != rawString(sort))
        m_preferences.setReadySort(sort);
    if (sort == m_model->sort())
        return;
    m_model->setSort(sort);
    m_list->scrollToTop();
    showEmptyReason();
}

void ReadyListView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_stale)
        reload();
    arrangeHeader();
}

void ReadyListView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrangeHeader();
}

void ReadyListView::arrangeHeader()
{
    const QMargins margins = m_header->contentsMargins();
    const int room = width() - margins.left() - margins.right();
    const int sideBySide = m_title->sizeHint().width() + planDayGap + m_planDay->sizeHint().width() + 16
        + m_sortControl->sizeHint().width();
    const bool stacked = !m_sortControl->isHidden() && sideBySide > room;
    ListViewPlaces::arrangeHeader(*m_header, *m_sortControl, stacked);
}

void ReadyListView::reload()
{
    // Nobody looks at a hidden list: it catches up when it appears.
    if (!isVisible()) {
        m_stale = true;
        return;
    }
    m_stale = false;
    // A completed task leaves the list; the rest should not jump.
    ListViewPlaces::reloadKeepingPlace(*m_list, *m_model, &ReadyListModel::nodeIdAt);
    showEmptyReason();
}

void ReadyListView::showEmptyReason()
{
    // Nothing to sort, nothing to offer sorting for.
    m_sortControl->setVisible(m_model->taskCount() > 0);
    m_planDay->setVisible(m_model->taskCount() > 0);
    arrangeHeader();
    if (m_model->taskCount() > 0) {
        m_content->setCurrentWidget(m_list);
        return;
    }
    switch (Readiness::readyEmptyReason(m_store.flows(), m_store.clock().now(), m_store.calendar())) {
    case ReadyEmptyReason::noTasks:
        m_empty->setContent(Glyphs::Symbol::emptySelection, qtTrId("ready.empty.noTasks.title"),
                            qtTrId("ready.empty.noTasks.message"));
        break;
    case ReadyEmptyReason::allDone:
        m_empty->setContent(Glyphs::Symbol::allDone, qtTrId("ready.empty.allDone.title"),
                            qtTrId("ready.empty.allDone.message"));
        break;
    case ReadyEmptyReason::allBlocked:
        m_empty->setContent(Glyphs::Symbol::allBlocked, qtTrId("ready.empty.allBlocked.title"),
                            qtTrId("ready.empty.allBlocked.message"));
        break;
    case ReadyEmptyReason::allDeferred:
        m_empty->setContent(Glyphs::Symbol::allDeferred, qtTrId("ready.empty.allDeferred.title"),
                            qtTrId("ready.empty.allDeferred.message"));
        break;
    }
    m_content->setCurrentWidget(m_empty);
}

void ReadyListView::complete(const QUuid &nodeId)
{
    const FlowNode *node = m_store.node(nodeId);
    if (!node || node->isDone || !node->flow())
        return;
    // No canvas shows the flow here: the step is borrowed, so the menu's
    // Undo finds it from this list too.
    m_history.recordBorrowedAction(QStringLiteral("Change status"), *node->flow(),
                                   [&] { m_store.setStatus(NodeStatus::done, *node); });
}

qsizetype ReadyListView::todayDropPosition(const QPoint &point) const
{
    const QList<QUuid> today = m_model->todayNodeIds();
    for (qsizetype i = 0; i < today.size(); ++i) {
        const QRect row = m_list->visualRect(m_model->indexOf(today[i]));
        if (point.y() < row.center().y())
            return i;
    }
    return today.size();
}

void ReadyListView::showDropMark(qsizetype position)
{
    const QList<QUuid> today = m_model->todayNodeIds();
    if (today.isEmpty())
        return;
    const QRect row = m_list->visualRect(m_model->indexOf(today[std::min(position, today.size() - 1)]));
    const int y = position < today.size() ? row.top() : row.bottom() + 1;
    m_dropMark->setGeometry(row.left() + rowInset, y - 1, row.width() - 2 * rowInset, 2);
    m_dropMark->show();
    m_dropMark->raise();
}

bool ReadyListView::dragInToday(QEvent *event)
{
    const auto type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove && type != QEvent::MouseButtonRelease)
        return false;
    const auto *mouse = static_cast<QMouseEvent *>(event);
    const QPoint at = mouse->position().toPoint();
    if (type == QEvent::MouseButtonPress) {
        const QModelIndex index = m_list->indexAt(at);
        const bool onCircle = ReadyRowDelegate::completeHitRect(m_list->visualRect(index)).contains(at);
        m_pressedToday = mouse->button() == Qt::LeftButton && !onCircle
                && index.data(ReadyListModel::InTodayRole).toBool()
            ? m_model->nodeIdAt(index)
            : QUuid();
        m_pressPoint = at;
        m_draggingToday = false;
        return false;
    }
    if (m_pressedToday.isNull())
        return false;
    if (type == QEvent::MouseMove) {
        if (!(mouse->buttons() & Qt::LeftButton))
            return false;
        if (!m_draggingToday && (at - m_pressPoint).manhattanLength() < QApplication::startDragDistance())
            return false;
        m_draggingToday = true;
        m_list->viewport()->setCursor(Qt::ClosedHandCursor);
        showDropMark(todayDropPosition(at));
        return true;
    }
    // The release: a drag ends with the new order, a click is left to the list.
    const bool dragged = m_draggingToday;
    const QUuid node = m_pressedToday;
    m_pressedToday = QUuid();
    m_draggingToday = false;
    m_dropMark->hide();
    m_list->viewport()->unsetCursor();
    if (!dragged)
        return false;
    const QList<QUuid> today = m_model->todayNodeIds();
    const QList<QUuid> order = TodayOrder::moved(today, node, todayDropPosition(at));
    if (order != today)
        TodayOrder::apply(m_store, m_history, order);
    return true;
}

bool ReadyListView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        // Space ticks the current task, as a click on its circle does.
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Space) {
            complete(m_model->nodeIdAt(m_list->currentIndex()));
            return true;
        }
        return false;
    }
    if (watched != m_list->viewport())
        return false;
    if (dragInToday(event))
        return true;

    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick: {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        const QPoint at = mouse->position().toPoint();
        const QModelIndex index = m_list->indexAt(at);
        const QUuid node = m_model->nodeIdAt(index);
        if (node.isNull() || mouse->button() != Qt::LeftButton ||
            !ReadyRowDelegate::completeHitRect(m_list->visualRect(index)).contains(at)) {
            m_pressedCircle = QUuid();
            return false;
        }
        // The circle is a button of its own: it neither selects nor opens
        // the row. A task completes when press and release both land on its
        // circle, so the second click of a double click, which lands on the
        // row that moved up into the place, completes nothing.
        if (event->type() == QEvent::MouseButtonPress) {
            m_pressedCircle = node;
        } else if (event->type() == QEvent::MouseButtonRelease) {
            if (m_pressedCircle == node)
                complete(node);
            m_pressedCircle = QUuid();
        } else {
            m_pressedCircle = QUuid();
        }
        return true;
    }
    case QEvent::MouseMove:
        // The circle lights up under the pointer, not only the row.
        m_list->viewport()->update(m_list->visualRect(m_list->indexAt(static_cast<QMouseEvent *>(event)->position().toPoint())));
        return false;
    default:
        return false;
    }
}

} // namespace fenrow
