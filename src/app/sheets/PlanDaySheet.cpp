#include "PlanDaySheet.h"

#include "look/EmptyStateView.h"
#include "look/Theme.h"
#include "shell/AppEnvironment.h"
#include "shell/DurationText.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

using namespace Theme;

namespace {

constexpr int sheetWidth = 560;
// The list scrolls beyond this many rows' height.
constexpr int visibleRows = 7;

QColor muted(QColor color, float alpha)
{
    color.setAlphaF(alpha);
    return color;
}

QLabel *secondaryLabel(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setWordWrap(true);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Color::secondaryText);
    label->setPalette(palette);
    return label;
}

} // namespace

// --- timeline

PlanDayTimeline::PlanDayTimeline(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("planDay.timeline"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PlanDayTimeline::setPlan(qint64 budgetMinutes, const QList<qint64> &durations)
{
    m_budget = budgetMinutes;
    m_durations = durations;
    update();
}

QSize PlanDayTimeline::sizeHint() const
{
    return QSize(200, 12);
}

void PlanDayTimeline::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bar = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath track;
    track.addRoundedRect(bar, bar.height() / 2, bar.height() / 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Color::hover);
    painter.drawPath(track);
    qint64 total = 0;
    for (const qint64 minutes : m_durations)
        total += minutes;
    // A plan never exceeds its budget; the scale takes the larger anyway.
    const double scale = bar.width() / double(std::max<qint64>({m_budget, total, 1}));
    painter.setClipPath(track);
    double x = bar.left();
    for (qsizetype i = 0; i < m_durations.size(); ++i) {
        const double width = double(m_durations[i]) * scale;
        // Neighbours alternate in strength, with a hair of white between them.
        painter.setBrush(i % 2 == 0 ? Color::accent : Color::accent.lighter(135));
        painter.drawRect(QRectF(x, bar.top(), std::max(width - 1.5, 1.0), bar.height()));
        x += width;
    }
}

// --- list

PlanDayList::PlanDayList(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("planDay.list"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PlanDayList::setRows(const QList<PlanDayModel::Row> &rows)
{
    m_rows = rows;
    m_dragging = -1;
    m_current = std::min(m_current, m_rows.size() - 1);
    setFixedHeight(sizeHint().height());
    update();
}

qsizetype PlanDayList::plannedCount() const
{
    qsizetype count = 0;
    for (const PlanDayModel::Row &row : m_rows)
        count += row.placement.kind == PlanDayRowPlacement::Kind::planned ? 1 : 0;
    return count;
}

QSize PlanDayList::sizeHint() const
{
    const bool cut = plannedCount() < m_rows.size();
    return QSize(300, int(m_rows.size()) * rowHeight + (cut ? cutHeight : 0));
}

QRect PlanDayList::rowRect(qsizetype index) const
{
    const int below = index >= plannedCount() ? cutHeight : 0;
    return QRect(0, int(index) * rowHeight + below, width(), rowHeight);
}

QRect PlanDayList::handleRect(qsizetype index) const
{
    const QRect row = rowRect(index);
    return QRect(row.left() + 2, row.top() + (rowHeight - 24) / 2, 24, 24);
}

QRect PlanDayList::cutRect() const
{
    if (plannedCount() == m_rows.size())
        return {};
    return QRect(0, int(plannedCount()) * rowHeight, width(), cutHeight);
}

std::optional<QUuid> PlanDayList::draggingID() const
{
    if (m_dragging < 0)
        return std::nullopt;
    return m_rows[m_dragging].task.id;
}

QString PlanDayList::durationText(const PlannableTask &task) const
{
    return DurationText::compact(PlanDay::cost(task));
}

qsizetype PlanDayList::dropIndex(int y) const
{
    // The cut line takes no place of its own: below it, rows count on.
    const QRect cut = cutRect();
    int flat = y;
    if (!cut.isNull() && y >= cut.top())
        flat = std::max(cut.top(), y - cutHeight);
    return std::clamp<qsizetype>(flat / rowHeight, 0, m_rows.size() - 1);
}

void PlanDayList::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics body(bodyFont());
    const QFontMetrics caption(captionFont());

    const auto paintRow = [&](qsizetype index, QRect row, bool lifted) {
        const PlanDayModel::Row &entry = m_rows[index];
        const bool planned = entry.placement.kind == PlanDayRowPlacement::Kind::planned;
        const QRectF card = QRectF(row).adjusted(0.5, 2.5, -0.5, -2.5);
        if (lifted) {
            painter.setPen(QPen(Color::accent, 1));
            painter.setBrush(Color::window);
            painter.drawRoundedRect(card.translated(0, 1), 8, 8);
        } else if (index == m_current && hasFocus()) {
            painter.setPen(QPen(muted(Color::accent, 0.6f), 1));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(card, 8, 8);
        }
        painter.setPen(Qt::NoPen);
        if (planned) {
            QRect handle = handleRect(index);
            handle.moveTop(row.top() + (rowHeight - handle.height()) / 2);
            SheetGlyphs::paint(painter, QRectF(handle).adjusted(5, 5, -5, -5), SheetGlyphs::Glyph::handle,
                               Color::ringOutline);
            // The position in a filled circle.
            const QRectF badge(row.left() + 32, row.top() + (rowHeight - 22) / 2.0, 22, 22);
            painter.setBrush(Color::accentSoft);
            painter.drawEllipse(badge);
            painter.setPen(Color::accent);
            painter.setFont(sectionFont());
            painter.drawText(badge, Qt::AlignCenter, QString::number(entry.placement.position));
        }
        const int textLeft = row.left() + 64;
        const QString duration = durationText(entry.task);
        const int durationWidth = caption.horizontalAdvance(duration) + 4;
        const int textRight = row.right() - 12 - durationWidth - 10;
        const QColor ink = planned ? Color::text : Color::secondaryText;
        painter.setPen(ink);
        painter.setFont(bodyFont());
        const int titleTop = row.top() + 5;
        painter.drawText(QRect(textLeft, titleTop, textRight - textLeft, body.height()), Qt::AlignLeft | Qt::AlignVCenter,
                         body.elidedText(entry.task.title, Qt::ElideRight, textRight - textLeft));
        painter.setPen(Color::secondaryText);
        painter.setFont(captionFont());
        painter.drawText(QRect(textLeft, titleTop + body.height() + 1, textRight - textLeft, caption.height()),
                         Qt::AlignLeft | Qt::AlignVCenter,
                         caption.elidedText(entry.task.flowName, Qt::ElideRight, textRight - textLeft));
        painter.setPen(ink);
        painter.drawText(QRect(row.right() - 12 - durationWidth, row.top(), durationWidth, rowHeight),
                         Qt::AlignRight | Qt::AlignVCenter, duration);
    };

    const QRect cut = cutRect();
    if (!cut.isNull()) {
        // A dashed rule with its words in the middle of it.
        const QString label = qtTrId("planDay.cut.label");
        painter.setFont(captionFont());
        const int labelWidth = caption.horizontalAdvance(label) + 16;
        const int middle = cut.center().y();
        painter.setPen(QPen(Color::warning, 1, Qt::DashLine));
        painter.drawLine(cut.left() + 2, middle, cut.center().x() - labelWidth / 2, middle);
        painter.drawLine(cut.center().x() + labelWidth / 2, middle, cut.right() - 2, middle);
        painter.setPen(Color::warning);
        painter.drawText(QRect(cut.center().x() - labelWidth / 2, cut.top(), labelWidth, cut.height()),
                         Qt::AlignCenter, label);
    }

    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        if (i == m_dragging)
            continue;
        paintRow(i, rowRect(i), false);
    }
    if (m_dragging >= 0) {
        // Where the row would land, then the row itself under the pointer.
        const QRect target = rowRect(dropIndex(m_dragY - m_grabOffset + rowHeight / 2));
        painter.setPen(QPen(Color::accent, 2));
        const int line = dropIndex(m_dragY - m_grabOffset + rowHeight / 2) > m_dragging ? target.bottom() : target.top();
        painter.drawLine(target.left() + 4, line, target.right() - 4, line);
        QRect lifted = rowRect(m_dragging);
        lifted.moveTop(std::clamp(m_dragY - m_grabOffset, 0, std::max(0, height() - rowHeight)));
        paintRow(m_dragging, lifted, true);
    }
}

void PlanDayList::mousePressEvent(QMouseEvent *event)
{
    const QPoint at = event->position().toPoint();
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        if (!rowRect(i).contains(at))
            continue;
        m_current = i;
        if (event->button() == Qt::LeftButton && m_rows[i].placement.kind == PlanDayRowPlacement::Kind::planned &&
            handleRect(i).contains(at)) {
            m_dragging = i;
            m_grabOffset = at.y() - rowRect(i).top();
            m_dragY = at.y();
            setCursor(Qt::ClosedHandCursor);
        }
        update();
        break;
    }
    setFocus(Qt::MouseFocusReason);
}

void PlanDayList::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint at = event->position().toPoint();
    if (m_dragging >= 0) {
        m_dragY = at.y();
        update();
        return;
    }
    bool overHandle = false;
    for (qsizetype i = 0; i < plannedCount(); ++i)
        overHandle = overHandle || handleRect(i).contains(at);
    setCursor(overHandle ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void PlanDayList::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_dragging < 0)
        return;
    const qsizetype from = m_dragging;
    const qsizetype to = dropIndex(event->position().toPoint().y() - m_grabOffset + rowHeight / 2);
    m_dragging = -1;
    setCursor(Qt::OpenHandCursor);
    update();
    if (to != from) {
        m_current = to;
        emit rowMoved(from, to);
    }
}

void PlanDayList::keyPressEvent(QKeyEvent *event)
{
    if (m_rows.isEmpty() || (event->key() != Qt::Key_Up && event->key() != Qt::Key_Down)) {
        QWidget::keyPressEvent(event);
        return;
    }
    const int step = event->key() == Qt::Key_Up ? -1 : 1;
    const qsizetype current = std::max<qsizetype>(m_current, 0);
    const qsizetype next = std::clamp<qsizetype>(current + step, 0, m_rows.size() - 1);
    // Alt with an arrow moves a planned task, as a drag by its handle does.
    if ((event->modifiers() & Qt::AltModifier) &&
        m_rows[current].placement.kind == PlanDayRowPlacement::Kind::planned) {
        m_current = next;
        if (next != current)
            emit rowMoved(current, next);
        return;
    }
    m_current = next;
    update();
}

// --- sheet

PlanDaySheet::PlanDaySheet(const QList<ReadyTask> &tasks, FenrowStore &store, FenrowHistory &history,
                           AppEnvironment &environment, AppPreferences &preferences, QWidget *parent)
    : SheetFrame(QStringLiteral("planDay.sheet"), sheetWidth, parent), m_taskTotal(tasks.size())
{
    m_model = new PlanDayModel(tasks, store, environment, preferences, &history, this);
    title()->setText(qtTrId("planDay.title"));
    subtitle()->setText(qtTrId(m_model->subtitleKey()));
    cancelButton()->setText(qtTrId("planDay.cancel"));
    cancelButton()->setObjectName(QStringLiteral("planDay.cancel"));
    primaryButton()->setObjectName(QStringLiteral("planDay.primary"));

    body()->addWidget(new ManualOnlyBannerBar(environment, this));
    m_pages = new QStackedWidget(this);

    m_setup = new QWidget(m_pages);
    auto *setup = new QVBoxLayout(m_setup);
    setup->setContentsMargins(0, 0, 0, 0);
    setup->setSpacing(10);
    setup->addWidget(makeStrip());
    m_taskCount = secondaryLabel(m_setup);
    m_taskCount->setObjectName(QStringLiteral("planDay.taskCount"));
    m_taskCount->setText(qtTrId("planDay.taskCount %lld").arg(m_taskTotal));
    setup->addWidget(m_taskCount);

    m_running = new ProgressRow("planDay.running", m_pages);

    m_result = new QWidget(m_pages);
    auto *result = new QVBoxLayout(m_result);
    result->setContentsMargins(0, 0, 0, 0);
    result->setSpacing(10);
    auto *heading = new QHBoxLayout;
    heading->setSpacing(12);
    m_summary = new QLabel(m_result);
    m_summary->setObjectName(QStringLiteral("planDay.summary"));
    m_summary->setFont(sectionFont());
    m_summary->setWordWrap(true);
    m_order = new QLabel(m_result);
    m_order->setObjectName(QStringLiteral("planDay.order"));
    m_order->setFont(captionFont());
    m_order->setStyleSheet(QStringLiteral("QLabel { color: %1; background: %2; border-radius: 9px;"
                                          " padding: 2px 9px; }")
                               .arg(Color::accent.name(), Color::accentSoft.name()));
    heading->addWidget(m_summary, 1);
    heading->addWidget(m_order, 0, Qt::AlignTop);
    result->addLayout(heading);
    m_timeline = new PlanDayTimeline(m_result);
    result->addWidget(m_timeline);
    m_resultContent = new QStackedWidget(m_result);
    m_list = new PlanDayList;
    m_scroll = new QScrollArea(m_resultContent);
    m_scroll->setObjectName(QStringLiteral("planDay.scroll"));
    m_scroll->setWidget(m_list);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->verticalScrollBar()->setStyleSheet(thinScrollBarStyle());
    m_scroll->setStyleSheet(QStringLiteral("QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; }"));
    m_nothingFits = new EmptyStateView(QStringLiteral("planDay.nothingFits"), m_resultContent);
    m_nothingFits->setContent(Glyphs::Symbol::allBlocked, qtTrId("planDay.nothingFits.title"),
                              qtTrId("planDay.nothingFits.message"));
    m_resultContent->addWidget(m_scroll);
    m_resultContent->addWidget(m_nothingFits);
    result->addWidget(m_resultContent);

    m_failed = new NoticeRow(QStringLiteral("planDay.failed"), SheetGlyphs::Glyph::warning, m_pages);
    m_failed->setTexts(qtTrId("planDay.failed.title"), qtTrId("planDay.failed.message"));

    for (QWidget *page : {m_setup, static_cast<QWidget *>(m_running), m_result, static_cast<QWidget *>(m_failed)})
        m_pages->addWidget(page);
    body()->addWidget(m_pages);

    connect(primaryButton(), &QPushButton::clicked, this, &PlanDaySheet::primaryClicked);
    connect(m_list, &PlanDayList::rowMoved, m_model, &PlanDayModel::moveRow);
    connect(m_model, &PlanDayModel::phaseChanged, this, &PlanDaySheet::refreshPhase);
    connect(m_model, &PlanDayModel::rowsChanged, this, &PlanDaySheet::refreshPhase);
    connect(m_model, &PlanDayModel::budgetChanged, this, &PlanDaySheet::refreshStrip);
    connect(m_model, &PlanDayModel::committed, this, &SheetFrame::closeRequested);
    refreshStrip();
    refreshPhase();
}

QWidget *PlanDaySheet::makeStrip()
{
    auto *strip = new QWidget(m_setup);
    strip->setObjectName(QStringLiteral("planDay.budget"));
    auto *column = new QVBoxLayout(strip);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(5);

    m_budgetField = new QLineEdit(strip);
    m_budgetField->setObjectName(QStringLiteral("planDay.budget.custom"));
    m_budgetField->setFixedWidth(90);
    m_budgetField->setAlignment(Qt::AlignRight);
    QLabel *label = fieldLabel(qtTrId("planDay.budget.custom.label"), strip);
    label->setBuddy(m_budgetField);
    m_budgetField->setAccessibleName(label->text());
    column->addWidget(label);

    m_unit = new QComboBox(strip);
    m_unit->setObjectName(QStringLiteral("planDay.budget.unit"));
    m_unit->setAccessibleName(qtTrId("planDay.budget.unit.label"));
    m_unit->setToolTip(qtTrId("planDay.budget.unit.label"));
    for (const DayPlanBudgetUnit unit : {DayPlanBudgetUnit::minutes, DayPlanBudgetUnit::hours})
        m_unit->addItem(qtTrId(PlanDay::unitLabelKey(unit)), int(unit));

    m_presets = new QToolButton(strip);
    m_presets->setObjectName(QStringLiteral("planDay.budget.presets"));
    m_presets->setText(qtTrId("planDay.budget.presets"));
    m_presets->setPopupMode(QToolButton::InstantPopup);
    m_presets->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_presets->setCursor(Qt::PointingHandCursor);
    m_presets->setStyleSheet(QStringLiteral("QToolButton { color: %1; background: %2; border: none;"
                                            " border-radius: 5px; padding: 4px 10px; }"
                                            " QToolButton:hover { background: %3; }"
                                            " QToolButton::menu-indicator { image: none; width: 0; }")
                                 .arg(Color::text.name(), Color::hover.name(), Color::track.name()));
    auto *menu = new QMenu(m_presets);
    menu->setObjectName(QStringLiteral("planDay.budget.presets.menu"));
    m_presets->setMenu(menu);
    // The labels follow the unit, so the menu is filled when it opens.
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        for (const int minutes : PlanDay::budgetPresets) {
            QAction *action = menu->addAction(m_model->budgetLabel(minutes));
            action->setObjectName(QStringLiteral("planDay.budget.preset.%1").arg(minutes));
            action->setCheckable(true);
            action->setChecked(m_model->budgetMinutes() == minutes);
            connect(action, &QAction::triggered, this, [this, minutes] { m_model->setBudgetMinutes(minutes); });
        }
    });

    auto *row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(m_budgetField);
    row->addWidget(m_unit);
    row->addSpacing(4);
    row->addWidget(m_presets);
    row->addStretch(1);
    column->addLayout(row);

    // A typed budget counts when the field is left or Return is pressed;
    // text that reads as no number puts the budget back.
    connect(m_budgetField, &QLineEdit::editingFinished, this, [this] {
        if (!m_model->setBudgetText(m_budgetField->text()))
            refreshStrip();
    });
    connect(m_unit, &QComboBox::activated, this,
            [this](int index) { m_model->setBudgetUnit(DayPlanBudgetUnit(m_unit->itemData(index).toInt())); });
    return strip;
}

void PlanDaySheet::refreshStrip()
{
    m_budgetField->setText(PlanDay::formatBudget(m_model->budgetMinutes(), m_model->budgetUnit(), m_model->locale()));
    m_unit->setCurrentIndex(m_unit->findData(int(m_model->budgetUnit())));
}

void PlanDaySheet::refreshPhase()
{
    using Kind = PlanDayPhase::Kind;
    const PlanDayPhase &phase = m_model->phase();
    switch (phase.kind) {
    case Kind::setup:
        m_pages->setCurrentWidget(m_setup);
        primaryButton()->setText(qtTrId(m_model->primaryButtonKey()));
        primaryButton()->setEnabled(true);
        break;
    case Kind::running:
        m_pages->setCurrentWidget(m_running);
        primaryButton()->setText(qtTrId(m_model->primaryButtonKey()));
        primaryButton()->setEnabled(false);
        break;
    case Kind::result: {
        m_pages->setCurrentWidget(m_result);
        primaryButton()->setText(qtTrId("planDay.commit"));
        primaryButton()->setEnabled(true);
        m_summary->setText(m_model->summary());
        m_order->setText(qtTrId(m_model->orderLabelKey()));
        const QList<PlanDayModel::Row> rows = m_model->rows();
        QList<qint64> durations;
        for (const PlanDayModel::Row &row : rows)
            if (row.placement.kind == PlanDayRowPlacement::Kind::planned)
                durations.append(PlanDay::cost(row.task));
        m_timeline->setPlan(m_model->budgetMinutes(), durations);
        m_timeline->setAccessibleName(qtTrId("planDay.timeline.label %@ %@")
                                          .arg(m_model->budgetLabel(phase.plan.totalMinutes),
                                               m_model->budgetLabel(m_model->budgetMinutes())));
        m_timeline->setVisible(!phase.plan.taskIDs.isEmpty());
        m_list->setRows(rows);
        m_scroll->setFixedHeight(std::min(m_list->sizeHint().height(),
                                          visibleRows * PlanDayList::rowHeight + PlanDayList::cutHeight));
        m_resultContent->setCurrentWidget(phase.plan.taskIDs.isEmpty() ? static_cast<QWidget *>(m_nothingFits)
                                                                       : m_scroll);
        m_resultContent->setFixedHeight(phase.plan.taskIDs.isEmpty() ? m_nothingFits->sizeHint().height()
                                                                     : m_scroll->height());
        break;
    }
    case Kind::failed:
        m_pages->setCurrentWidget(m_failed);
        primaryButton()->setText(qtTrId("planDay.back"));
        primaryButton()->setEnabled(true);
        break;
    }
    // A stacked widget asks for its tallest page; the sheet fits the one shown.
    for (int i = 0; i < m_pages->count(); ++i)
        m_pages->widget(i)->setSizePolicy(QSizePolicy::Preferred, m_pages->widget(i) == m_pages->currentWidget()
                                                                      ? QSizePolicy::Preferred
                                                                      : QSizePolicy::Ignored);
    m_pages->adjustSize();
    updateGeometry();
}

void PlanDaySheet::primaryClicked()
{
    switch (m_model->phase().kind) {
    case PlanDayPhase::Kind::setup:
        // A budget typed but not yet confirmed counts.
        if (!m_model->setBudgetText(m_budgetField->text()))
            refreshStrip();
        m_model->plan();
        break;
    case PlanDayPhase::Kind::running:
        break;
    case PlanDayPhase::Kind::result:
        m_model->commit();
        break;
    case PlanDayPhase::Kind::failed:
        m_model->backToSetup();
        break;
    }
}

} // namespace fenrow
