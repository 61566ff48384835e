#include "NodeInspector.h"

#include "look/EmptyStateView.h"
#include "InspectorCalendarPicker.h"
#include "NodeChecklistEditor.h"
#include "look/Theme.h"
#include "domain/Clock.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/FlowGraph.h"
#include "domain/NodeRecurrence.h"
#include "shell/AppPreferences.h"
#include "shell/EstimateDraft.h"

#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidgetAction>

namespace fenrow {

namespace {

constexpr double minimumNotesHeight = 72;
constexpr double maximumNotesHeight = 480;
constexpr int notesKeyboardStep = 24;

double clampedNotesHeight(double height)
{
    return std::clamp(height, minimumNotesHeight, maximumNotesHeight);
}

QColor swatch(NodeColor color)
{
    switch (color) {
    case NodeColor::none: return Theme::Color::track;
    case NodeColor::red: return QColor(0xe5, 0x48, 0x4d);
    case NodeColor::orange: return QColor(0xf0, 0x8c, 0x2e);
    case NodeColor::yellow: return QColor(0xe9, 0xc2, 0x2f);
    case NodeColor::green: return QColor(0x3d, 0xa8, 0x6a);
    case NodeColor::blue: return QColor(0x3f, 0x7f, 0xe0);
    case NodeColor::purple: return QColor(0x8e, 0x5b, 0xd8);
    case NodeColor::pink: return QColor(0xe0, 0x5a, 0x9a);
    case NodeColor::grey: return QColor(0x8a, 0x90, 0x99);
    }
    return Theme::Color::track;
}

QLabel *sectionLabel(const char *key, QWidget *parent)
{
    auto *label = new QLabel(qtTrId(key), parent);
    label->setFont(Theme::captionFont());
    QPalette muted = label->palette();
    muted.setColor(QPalette::WindowText, Theme::Color::secondaryText);
    label->setPalette(muted);
    return label;
}

QString statusText(NodeStatus status)
{
    switch (status) {
    case NodeStatus::pending: return qtTrId("inspector.status.pending");
    case NodeStatus::inProgress: return qtTrId("inspector.status.inProgress");
    case NodeStatus::paused: return qtTrId("inspector.status.paused");
    case NodeStatus::done: return qtTrId("inspector.status.done");
    }
    return {};
}

// A round colour button that shows a ring when chosen.
class ColorSwatch : public QToolButton {
public:
    ColorSwatch(NodeColor color, QWidget *parent) : QToolButton(parent), m_color(color)
    {
        setCheckable(true);
        setFixedSize(20, 20);
        setCursor(Qt::PointingHandCursor);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF area = QRectF(rect()).adjusted(3, 3, -3, -3);
        painter.setPen(m_color == NodeColor::none ? QPen(Theme::Color::ringOutline, 1.2) : Qt::NoPen);
        painter.setBrush(m_color == NodeColor::none ? QColor(Qt::white) : swatch(m_color));
        painter.drawEllipse(area);
        if (m_color == NodeColor::none)
            painter.drawLine(area.bottomLeft() + QPointF(3, -3), area.topRight() + QPointF(-3, 3));
        if (isChecked()) {
            painter.setPen(QPen(Theme::Color::text, 1.6));
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
        }
    }

private:
    NodeColor m_color;
};

} // namespace

// The grip under the notes: dragged, or stepped with the arrow keys.
class NotesResizeHandle : public QWidget {
public:
    NotesResizeHandle(std::function<double()> height, std::function<void(double)> resize, QWidget *parent)
        : QWidget(parent), m_height(std::move(height)), m_resize(std::move(resize))
    {
        setObjectName(QStringLiteral("inspector.notes.resize"));
        setFixedHeight(10);
        setCursor(Qt::SizeVerCursor);
        setFocusPolicy(Qt::TabFocus);
        setAccessibleName(qtTrId("inspector.notes.resize"));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(hasFocus() ? Theme::Color::accent : Theme::Color::track);
        const QRectF grip(width() / 2.0 - 16, height() / 2.0 - 1.5, 32, 3);
        painter.drawRoundedRect(grip, 1.5, 1.5);
    }
    void mousePressEvent(QMouseEvent *event) override
    {
        m_pressY = event->globalPosition().y();
        m_startHeight = m_height();
    }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (event->buttons() & Qt::LeftButton)
            m_resize(m_startHeight + event->globalPosition().y() - m_pressY);
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Up)
            m_resize(m_height() - notesKeyboardStep);
        else if (event->key() == Qt::Key_Down)
            m_resize(m_height() + notesKeyboardStep);
        else
            QWidget::keyPressEvent(event);
    }

private:
    std::function<double()> m_height;
    std::function<void(double)> m_resize;
    double m_pressY = 0;
    double m_startHeight = 0;
};

NodeInspector::NodeInspector(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences,
                             QWidget *parent)
    : QWidget(parent), m_store(store), m_history(history), m_preferences(preferences)
{
    setObjectName(QStringLiteral("inspector"));
    setAutoFillBackground(true);
    QPalette ground = palette();
    ground.setColor(QPalette::Window, Theme::Color::sidebar);
    setPalette(ground);

    m_pages = new QStackedWidget(this);
    m_empty = new EmptyStateView(QStringLiteral("inspector.empty"), m_pages);
    m_empty->setContent(Glyphs::Symbol::emptySelection, qtTrId("inspector.empty.title"),
                        qtTrId("inspector.empty.message"));
    m_pages->addWidget(m_empty);
    auto *scroll = new QScrollArea(m_pages);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(makeNodePage());
    scroll->viewport()->setAutoFillBackground(false);
    scroll->widget()->setAutoFillBackground(false);
    m_pages->addWidget(scroll);
    m_pages->addWidget(makeFilePage());

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);

    connect(&m_store, &FenrowStore::changed, this, &NodeInspector::reload);
    reload();
}

QWidget *NodeInspector::makeNodePage()
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("inspector.root"));
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(6);

    m_flowName = sectionLabel("inspector.flow", page);
    m_flowName->setObjectName(QStringLiteral("inspector.flowName"));
    column->addWidget(m_flowName);
    m_title = new QLineEdit(page);
    m_title->setObjectName(QStringLiteral("inspector.title"));
    m_title->setFont(Theme::titleFont());
    m_title->setFrame(false);
    connect(m_title, &QLineEdit::editingFinished, this, &NodeInspector::commitTitle);
    column->addWidget(m_title);
    column->addSpacing(8);

    auto *form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->setHorizontalSpacing(12);
    form->setVerticalSpacing(8);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    // In a narrow panel a wide field goes under its label instead of past
    // the panel's edge.
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);

    m_status = new QComboBox(page);
    m_status->setObjectName(QStringLiteral("inspector.status"));
    for (const NodeStatus status : {NodeStatus::pending, NodeStatus::inProgress, NodeStatus::paused, NodeStatus::done})
        m_status->addItem(statusText(status), int(status));
    connect(m_status, &QComboBox::activated, this, [this] {
        const FlowNode *node = selectedNode();
        const auto status = NodeStatus(m_status->currentData().toInt());
        if (!node || node->status() == status)
            return;
        m_history.recordAction(QStringLiteral("Change status"), *node->flow(),
                               [&] { m_store.setStatus(status, *node); });
    });
    form->addRow(sectionLabel("inspector.status.label", page), m_status);

    m_priority = new QComboBox(page);
    m_priority->setObjectName(QStringLiteral("inspector.priority"));
    m_priority->addItem(qtTrId("inspector.priority.none"), int(NodePriority::none));
    m_priority->addItem(qtTrId("inspector.priority.low"), int(NodePriority::low));
    m_priority->addItem(qtTrId("inspector.priority.medium"), int(NodePriority::medium));
    m_priority->addItem(qtTrId("inspector.priority.high"), int(NodePriority::high));
    connect(m_priority, &QComboBox::activated, this, [this] {
        const FlowNode *node = selectedNode();
        const auto priority = NodePriority(m_priority->currentData().toInt());
        if (!node || node->priority() == priority)
            return;
        m_history.recordAction(QStringLiteral("Change priority"), *node->flow(),
                               [&] { m_store.setPriority(priority, *node); });
    });
    form->addRow(sectionLabel("inspector.priority.label", page), m_priority);
    form->addRow(sectionLabel("inspector.color.label", page), makeColorRow());

    auto *estimateRow = new QWidget(page);
    auto *estimateLayout = new QHBoxLayout(estimateRow);
    estimateLayout->setContentsMargins(0, 0, 0, 0);
    m_estimate = new QLineEdit(estimateRow);
    m_estimate->setObjectName(QStringLiteral("inspector.estimate"));
    m_estimate->setPlaceholderText(qtTrId("inspector.estimate.placeholder"));
    m_estimate->setMaximumWidth(90);
    // Return commits; so does leaving the field.
    connect(m_estimate, &QLineEdit::editingFinished, this, &NodeInspector::commitEstimate);
    estimateLayout->addWidget(m_estimate);
    estimateLayout->addWidget(sectionLabel("inspector.estimate.unit", estimateRow));
    estimateLayout->addStretch();
    form->addRow(sectionLabel("inspector.estimate.label", page), estimateRow);

    form->addRow(sectionLabel("inspector.startDate.label", page),
                 makeDateRow(QStringLiteral("inspector.startDate"), &m_startPick, &m_startClear));
    m_deferred = new QLabel(page);
    m_deferred->setObjectName(QStringLiteral("inspector.deferred"));
    m_deferred->setWordWrap(true);
    m_deferred->setFont(Theme::captionFont());
    QPalette warning = m_deferred->palette();
    warning.setColor(QPalette::WindowText, Theme::Color::accent);
    m_deferred->setPalette(warning);
    form->addRow(QString(), m_deferred);
    form->addRow(sectionLabel("inspector.dueDate.label", page),
                 makeDateRow(QStringLiteral("inspector.dueDate"), &m_duePick, &m_dueClear));
    connect(m_startPick, &QPushButton::clicked, this, [this] { pickDate(true); });
    connect(m_duePick, &QPushButton::clicked, this, [this] { pickDate(false); });
    connect(m_startClear, &QToolButton::clicked, this, [this] { setDate(true, std::nullopt); });
    connect(m_dueClear, &QToolButton::clicked, this, [this] { setDate(false, std::nullopt); });

    m_repeat = new QComboBox(page);
    m_repeat->setObjectName(QStringLiteral("inspector.recurrence"));
    m_repeat->addItem(qtTrId("inspector.recurrence.never"), int(RecurrenceRule::never));
    m_repeat->addItem(qtTrId("inspector.recurrence.daily"), int(RecurrenceRule::daily));
    m_repeat->addItem(qtTrId("inspector.recurrence.weekdays"), int(RecurrenceRule::weekdays));
    m_repeat->addItem(qtTrId("inspector.recurrence.weekly"), int(RecurrenceRule::weekly));
    m_repeat->addItem(qtTrId("inspector.recurrence.monthly"), int(RecurrenceRule::monthly));
    m_repeat->addItem(qtTrId("inspector.recurrence.afterDone"), int(RecurrenceRule::afterDone));
    connect(m_repeat, &QComboBox::activated, this, &NodeInspector::commitRepeat);
    form->addRow(sectionLabel("inspector.recurrence.label", page), m_repeat);
    m_repeatInterval = new QSpinBox(page);
    m_repeatInterval->setObjectName(QStringLiteral("inspector.recurrence.interval"));
    m_repeatInterval->setRange(1, 365);
    m_repeatInterval->setSuffix(QLatin1Char(' ') + qtTrId("inspector.recurrence.interval.unit"));
    m_repeatInterval->setKeyboardTracking(false);
    connect(m_repeatInterval, &QSpinBox::valueChanged, this, [this] {
        if (!m_filling)
            commitRepeat();
    });
    auto *intervalLabel = sectionLabel("inspector.recurrence.interval.label", page);
    form->addRow(intervalLabel, m_repeatInterval);
    m_repeatIntervalRow = intervalLabel;
    column->addLayout(form);

    column->addSpacing(8);
    column->addWidget(sectionLabel("inspector.notes.label", page));
    m_notes = new QPlainTextEdit(page);
    m_notes->setObjectName(QStringLiteral("inspector.notes"));
    m_notes->setPlaceholderText(qtTrId("inspector.notes.placeholder"));
    m_notes->setTabChangesFocus(true);
    m_notes->installEventFilter(this);
    column->addWidget(m_notes);
    m_notesHandle = new NotesResizeHandle(
        [this] { return double(m_notes->height()); },
        [this](double height) {
            const double clamped = clampedNotesHeight(height);
            m_notes->setFixedHeight(int(clamped));
            m_preferences.setInspectorNotesHeight(clamped);
        },
        page);
    column->addWidget(m_notesHandle);

    column->addWidget(sectionLabel("inspector.checklist.label", page));
    m_checklist = new NodeChecklistEditor(m_store, m_history, page);
    column->addWidget(m_checklist);

    column->addSpacing(8);
    column->addWidget(sectionLabel("inspector.blockedBy.label", page));
    m_blockedBy = new QVBoxLayout;
    m_blockedBy->setSpacing(2);
    column->addLayout(m_blockedBy);
    column->addWidget(sectionLabel("inspector.blocks.label", page));
    m_blocks = new QVBoxLayout;
    m_blocks->setSpacing(2);
    column->addLayout(m_blocks);
    column->addStretch();
    return page;
}

QWidget *NodeInspector::makeColorRow()
{
    auto *row = new QWidget;
    row->setObjectName(QStringLiteral("inspector.color"));
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    // Nine swatches fit the narrowest panel.
    layout->setSpacing(1);
    for (const NodeColor color : {NodeColor::none, NodeColor::red, NodeColor::orange, NodeColor::yellow,
                                  NodeColor::green, NodeColor::blue, NodeColor::purple, NodeColor::pink,
                                  NodeColor::grey}) {
        auto *button = new ColorSwatch(color, row);
        button->setObjectName(QStringLiteral("inspector.color.") + rawString(color));
        button->setAccessibleName(rawString(color));
        connect(button, &QToolButton::clicked, this, [this, color] {
            const FlowNode *node = selectedNode();
            if (node && node->color() != color)
                m_history.recordAction(QStringLiteral("Change color"), *node->flow(),
                                       [&] { m_store.setColor(color, *node); });
            reload();
        });
        m_colors.append(button);
        layout->addWidget(button);
    }
    layout->addStretch();
    return row;
}

QWidget *NodeInspector::makeDateRow(const QString &name, QPushButton **pick, QToolButton **clear)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    *pick = new QPushButton(row);
    (*pick)->setObjectName(name);
    (*pick)->setCursor(Qt::PointingHandCursor);
    *clear = new QToolButton(row);
    (*clear)->setObjectName(name + QStringLiteral(".clear"));
    (*clear)->setText(QStringLiteral("×"));
    (*clear)->setAutoRaise(true);
    (*clear)->setToolTip(qtTrId("inspector.date.clear"));
    (*clear)->setAccessibleName(qtTrId("inspector.date.clear"));
    layout->addWidget(*pick);
    layout->addWidget(*clear);
    layout->addStretch();
    return row;
}

QWidget *NodeInspector::makeFilePage()
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("inspector.file"));
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(16, 16, 16, 16);
    column->addWidget(sectionLabel("inspector.file.label", page));
    m_fileName = new QLabel(page);
    m_fileName->setObjectName(QStringLiteral("inspector.file.name"));
    m_fileName->setFont(Theme::titleFont());
    m_fileName->setWordWrap(true);
    m_fileName->setTextFormat(Qt::PlainText);
    column->addWidget(m_fileName);
    m_fileDetails = new QLabel(page);
    m_fileDetails->setObjectName(QStringLiteral("inspector.file.details"));
    m_fileDetails->setTextFormat(Qt::PlainText);
    m_fileDetails->setWordWrap(true);
    column->addWidget(m_fileDetails);
    column->addStretch();
    return page;
}

void NodeInspector::showSelection(const QUuid &flowID, const CanvasSelection &selection)
{
    if (flowID != m_flowID || selection != m_selection) {
        // What was typed for the task shown so far belongs to that task.
        commitDrafts();
        m_title->setModified(false);
        m_estimate->setModified(false);
        m_notes->document()->setModified(false);
    }
    m_flowID = flowID;
    m_selection = selection;
    reload();
}

NodeInspector::~NodeInspector()
{
    // QWidget's own destructor takes the focus from a field, which would
    // commit through this panel's members after they are gone: what was
    // typed is kept now, and the fields stop calling back.
    commitDrafts();
    m_title->disconnect(this);
    m_estimate->disconnect(this);
    m_notes->removeEventFilter(this);
}

void NodeInspector::commitDrafts()
{
    if (m_title->isModified())
        commitTitle();
    if (m_estimate->isModified())
        commitEstimate();
    if (m_notes->document()->isModified())
        commitNotes();
}

const FlowNode *NodeInspector::selectedNode() const
{
    if (m_selection.itemIDs.size() != 1)
        return nullptr;
    const FlowNode *node = m_store.node(*m_selection.itemIDs.cbegin());
    return node && node->flow() && node->flow()->id == m_flowID ? node : nullptr;
}

NodeInspector::Page NodeInspector::page() const
{
    switch (m_pages->currentIndex()) {
    case 1: return Page::node;
    case 2: return Page::file;
    default: return Page::empty;
    }
}

void NodeInspector::reload()
{
    if (const FlowNode *node = selectedNode()) {
        m_pages->setCurrentIndex(1);
        fillNode(*node);
        return;
    }
    fillFile();
}

void NodeInspector::fillFile()
{
    const FlowFile *file = nullptr;
    if (m_selection.itemIDs.size() == 1) {
        if (const TaskFlow *flow = m_store.flow(m_flowID)) {
            for (const FlowFile *candidate : flow->files()) {
                if (candidate->id == *m_selection.itemIDs.cbegin() && !candidate->isTrashed)
                    file = candidate;
            }
        }
    }
    if (!file) {
        m_pages->setCurrentIndex(0);
        return;
    }
    m_pages->setCurrentIndex(2);
    m_fileName->setText(file->filename);
    m_fileDetails->setText(QStringLiteral("%1\n%2").arg(file->contentTypeRaw,
                                                         QLocale().formattedDataSize(file->byteCount)));
}

void NodeInspector::fillNode(const FlowNode &node)
{
    m_filling = true;
    m_flowName->setText(node.flow()->name);
    // A field being typed in keeps its draft until it is committed.
    if (!m_title->isModified())
        showTitle(node.title);
    m_status->setCurrentIndex(m_status->findData(int(node.status())));
    m_priority->setCurrentIndex(m_priority->findData(int(node.priority())));
    for (QToolButton *button : std::as_const(m_colors))
        button->setChecked(button->objectName() == QStringLiteral("inspector.color.") + rawString(node.color()));
    if (!m_estimate->isModified())
        m_estimate->setText(EstimateDraft::text(node.estimateMinutes));

    const LocalCalendar &calendar = m_store.calendar();
    auto showDate = [&](QPushButton *pick, QToolButton *clear, const std::optional<QDateTime> &date) {
        pick->setText(date ? QLocale().toString(calendar.dayOf(*date), QLocale::ShortFormat)
                           : qtTrId("inspector.date.add"));
        pick->setToolTip(qtTrId(date ? "inspector.date.pick" : "inspector.date.add"));
        clear->setVisible(date.has_value());
    };
    showDate(m_startPick, m_startClear, node.startDate);
    showDate(m_duePick, m_dueClear, node.dueDate);
    const bool deferred = node.isDeferred(m_store.clock().now(), calendar);
    m_deferred->setVisible(deferred);
    if (deferred)
        m_deferred->setText(qtTrId("inspector.deferred.note %@")
                                .arg(QLocale().toString(calendar.dayOf(*node.startDate), QLocale::LongFormat)));

    const std::optional<NodeRecurrence> recurrence = NodeRecurrence::decode(node.recurrenceRaw);
    const RecurrenceRule rule = recurrence ? recurrence->rule : RecurrenceRule::never;
    m_repeat->setCurrentIndex(m_repeat->findData(int(rule)));
    m_repeatInterval->setValue(int(recurrence ? recurrence->interval : 1));
    m_repeatInterval->setVisible(rule == RecurrenceRule::afterDone);
    m_repeatIntervalRow->setVisible(rule == RecurrenceRule::afterDone);

    if (!m_notes->document()->isModified() && m_notes->toPlainText() != node.notes)
        m_notes->setPlainText(node.notes);
    m_notes->setFixedHeight(int(clampedNotesHeight(m_preferences.inspectorNotesHeight())));
    m_checklist->showNode(&node);

    const BlockerMaps blockers = FlowGraph::blockerMaps(*node.flow());
    QList<const FlowNode *> waitsFor = blockers.prerequisites.value(node.id);
    waitsFor += blockers.subtasks.value(node.id);
    fillRelated(m_blockedBy, waitsFor, "inspector.blockedBy.empty");
    fillRelated(m_blocks, FlowGraph::dependentsOf(node), "inspector.blocks.empty");
    m_filling = false;
}

void NodeInspector::fillRelated(QVBoxLayout *list, const QList<const FlowNode *> &nodes, const char *emptyKey)
{
    while (QLayoutItem *item = list->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    if (nodes.isEmpty()) {
        auto *none = new QLabel(qtTrId(emptyKey));
        none->setObjectName(QString::fromLatin1(emptyKey));
        QPalette muted = none->palette();
        muted.setColor(QPalette::WindowText, Theme::Color::secondaryText);
        none->setPalette(muted);
        list->addWidget(none);
        return;
    }
    for (const FlowNode *node : nodes) {
        auto *row = new QPushButton;
        row->setObjectName(QStringLiteral("inspector.related.") + node->id.toString(QUuid::WithoutBraces));
        const QString mark = node->status() == NodeStatus::done ? QStringLiteral("✓ ") : QStringLiteral("○ ");
        row->setText(mark + node->title + QStringLiteral("  ›"));
        row->setFlat(true);
        row->setCursor(Qt::PointingHandCursor);
        row->setStyleSheet(QStringLiteral("text-align: left; padding: 3px 6px;"));
        connect(row, &QPushButton::clicked, this, [this, id = node->id] { emit revealRequested(id); });
        list->addWidget(row);
    }
}

void NodeInspector::commitTitle()
{
    const FlowNode *node = selectedNode();
    if (!node || m_filling)
        return;
    const QString title = m_title->text();
    if (title != node->title)
        m_history.recordAction(QStringLiteral("Rename"), *node->flow(), [&] { m_store.setTitle(*node, title); });
    if (const FlowNode *now = selectedNode())
        showTitle(now->title);
}

void NodeInspector::showTitle(const QString &title)
{
    m_title->setText(title);
    // A long title is read from its beginning, unless it is being typed.
    if (!m_title->hasFocus())
        m_title->setCursorPosition(0);
}

void NodeInspector::commitEstimate()
{
    const FlowNode *node = selectedNode();
    if (!node || m_filling)
        return;
    if (const auto value = EstimateDraft::committed(m_estimate->text(), node->estimateMinutes))
        m_history.recordAction(QStringLiteral("Set estimate"), *node->flow(),
                               [&] { m_store.setEstimate(*value, *node); });
    // Whatever was typed, the field shows what is stored.
    if (const FlowNode *now = selectedNode())
        m_estimate->setText(EstimateDraft::text(now->estimateMinutes));
}

void NodeInspector::commitNotes()
{
    const FlowNode *node = selectedNode();
    if (!node)
        return;
    const QString notes = m_notes->toPlainText();
    m_notes->document()->setModified(false);
    if (notes != node->notes)
        m_history.recordAction(QStringLiteral("Edit notes"), *node->flow(), [&] { m_store.setNotes(*node, notes); });
}

void NodeInspector::pickDate(bool start)
{
    const FlowNode *node = selectedNode();
    if (!node)
        return;
    const LocalCalendar &calendar = m_store.calendar();
    const std::optional<QDateTime> &current = start ? node->startDate : node->dueDate;
    QMenu popup(this);
    auto *picker = new InspectorCalendarPicker(current ? calendar.dayOf(*current) : QDate(),
                                               calendar.dayOf(m_store.clock().now()), &popup);
    auto *action = new QWidgetAction(&popup);
    action->setDefaultWidget(picker);
    popup.addAction(action);
    std::optional<QDate> chosen;
    connect(picker, &InspectorCalendarPicker::picked, &popup, [&](QDate day) {
        chosen = day;
        popup.close();
    });
    QPushButton *anchor = start ? m_startPick : m_duePick;
    popup.exec(InspectorCalendarPicker::popupPosition(popup.sizeHint(), *anchor));
    if (chosen)
        setDate(start, chosen);
}

void NodeInspector::setDate(bool start, std::optional<QDate> day)
{
    const FlowNode *node = selectedNode();
    if (!node)
        return;
    const std::optional<QDateTime> date =
        day ? std::optional<QDateTime>(m_store.calendar().startOfDay(*day)) : std::nullopt;
    if ((start ? node->startDate : node->dueDate) == date)
        return;
    m_history.recordAction(QStringLiteral("Set date"), *node->flow(), [&] {
        if (start)
            m_store.setStartDate(date, *node);
        else
            m_store.setDueDate(date, *node);
    });
}

void NodeInspector::commitRepeat()
{
    const FlowNode *node = selectedNode();
    if (!node || m_filling)
        return;
    const auto rule = RecurrenceRule(m_repeat->currentData().toInt());
    std::optional<NodeRecurrence> recurrence;
    if (rule != RecurrenceRule::never) {
        recurrence = NodeRecurrence{};
        recurrence->rule = rule;
        recurrence->interval = rule == RecurrenceRule::afterDone ? m_repeatInterval->value() : 1;
    }
    if (NodeRecurrence::decode(node->recurrenceRaw) != recurrence)
        m_history.recordAction(QStringLiteral("Change repeat"), *node->flow(),
                               [&] { m_store.setRecurrence(recurrence, *node); });
    reload();
}

bool NodeInspector::eventFilter(QObject *watched, QEvent *event)
{
    // Notes are committed when the editor loses the focus, not per key.
    if (watched == m_notes && event->type() == QEvent::FocusOut)
        commitNotes();
    return QWidget::eventFilter(watched, event);
}

} // namespace fenrow
