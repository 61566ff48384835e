#include "ReadyPopup.h"

#include "TrayIconArt.h"

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace fenrow {

namespace {

constexpr int popupWidth = 340;
// Inside the frame and the body's margins.
constexpr int contentWidth = popupWidth - 2 - 2 - 24;
constexpr QRgb overdueRed = 0xC62828;

// The window's secondary ink, light and dark.
QColor secondaryInk(bool dark)
{
    return dark ? QColor(0xA0, 0xA2, 0xAE) : QColor(0x65, 0x68, 0x76);
}

QLabel *label(const QString &text, QWidget *parent, const QString &name)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

// A wrapped line in a popup of fixed width: its height settled now, since
// the popup's size is taken before its layout knows the width.
QLabel *paragraph(const QString &text, QWidget *parent, const QString &name)
{
    QLabel *line = label(text, parent, name);
    line->setMinimumHeight(line->heightForWidth(contentWidth));
    return line;
}

// One line, cut with an ellipsis when longer than `width`; the whole text
// in the tool tip then.
void setElided(QLabel *label, const QString &text, int width)
{
    label->setWordWrap(false);
    const QString shown = label->fontMetrics().elidedText(text, Qt::ElideRight, width);
    label->setText(shown);
    if (shown != text)
        label->setToolTip(text);
}

QPushButton *action(const QString &text, QWidget *parent, const QString &name)
{
    auto *button = new QPushButton(text, parent);
    button->setObjectName(name);
    button->setFlat(true);
    button->setCursor(Qt::PointingHandCursor);
    button->setStyleSheet(QStringLiteral("QPushButton { text-align: left; padding: 5px 8px; }"));
    return button;
}

void setColor(QWidget *widget, const QColor &color)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, color);
    widget->setPalette(palette);
}

} // namespace

ReadyPopup::ReadyPopup(QWidget *parent) : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("widget.popup"));
    setFixedWidth(popupWidth);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(1, 1, 1, 1);
    auto *frame = new QFrame(this);
    frame->setFrameShape(QFrame::StyledPanel);
    outer->addWidget(frame);
    auto *frameLayout = new QVBoxLayout(frame);
    frameLayout->setContentsMargins(0, 0, 0, 0);
    m_body = new QWidget(frame);
    frameLayout->addWidget(m_body);
    m_layout = new QVBoxLayout(m_body);
    m_layout->setContentsMargins(12, 10, 12, 8);
    m_layout->setSpacing(6);
}

void ReadyPopup::present(const ReadyPopupContent &content)
{
    // Rebuilt whole: at most eight rows, and only when the list changes.
    while (QLayoutItem *item = m_layout->takeAt(0)) {
        if (QWidget *widget = item->widget()) {
            widget->hide();
            widget->deleteLater();
        }
        delete item;
    }
    const bool dark = palette().color(QPalette::Window).lightness() < 128;
    const ReadySnapshot *snapshot = content.snapshot ? &*content.snapshot : nullptr;
    const QColor accent = TrayIconArt::accent(snapshot ? snapshot->paletteRaw : QString(), dark);

    auto *title = label(qtTrId("widget.popup.title"), m_body, QStringLiteral("widget.title"));
    QFont titleFont = title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.15);
    title->setFont(titleFont);
    setColor(title, accent);
    m_layout->addWidget(title);

    qsizetype ticked = 0;
    if (content.state == ReadyListState::current) {
        for (const ReadySnapshot::Item &item : snapshot->tasks) {
            const bool done = content.ticked.contains(item.id);
            ticked += done;
            m_layout->addWidget(taskRow(item, done, content.today, accent));
        }
    }
    const bool listed = content.state == ReadyListState::current && !snapshot->tasks.isEmpty();
    if (!listed || ticked == snapshot->tasks.size())
        m_layout->addWidget(
            paragraph(ReadyWords::summary(content.state, snapshot, ticked), m_body, QStringLiteral("widget.status")));
    if (listed && snapshot->total > snapshot->tasks.size()) {
        QPushButton *more = action(qtTrId("widget.more %1").arg(snapshot->total - snapshot->tasks.size()), m_body,
                                   QStringLiteral("widget.more"));
        more->setStyleSheet(more->styleSheet() + QStringLiteral("QPushButton { color: %1; }").arg(accent.name()));
        connect(more, &QPushButton::clicked, this, [this] {
            hide();
            emit openReadyRequested();
        });
        m_layout->addWidget(more);
    }
    if (!content.notice.isEmpty()) {
        QLabel *notice = paragraph(content.notice, m_body, QStringLiteral("widget.notice"));
        setColor(notice, QColor(overdueRed));
        m_layout->addWidget(notice);
    }

    auto *line = new QFrame(m_body);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    m_layout->addWidget(line);
    const auto addAction = [this](const QString &text, const QString &name, void (ReadyPopup::*signal)()) {
        QPushButton *button = action(text, m_body, name);
        connect(button, &QPushButton::clicked, this, [this, signal] {
            hide();
            emit(this->*signal)();
        });
        m_layout->addWidget(button);
    };
    addAction(qtTrId("widget.open"), QStringLiteral("widget.open"), &ReadyPopup::openFenrowRequested);
    addAction(qtTrId("widget.capture"), QStringLiteral("widget.capture"), &ReadyPopup::quickCaptureRequested);
    addAction(qtTrId("widget.quit"), QStringLiteral("widget.quit"), &ReadyPopup::quitRequested);
    adjustSize();
}

QWidget *ReadyPopup::taskRow(const ReadySnapshot::Item &item, bool ticked, const QDate &today, const QColor &accent)
{
    const bool dark = palette().color(QPalette::Window).lightness() < 128;
    auto *row = new QWidget(m_body);
    row->setObjectName(QStringLiteral("widget.task.") + item.id.toString(QUuid::WithoutBraces));
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 2, 0, 2);
    layout->setSpacing(8);

    auto *box = new QCheckBox(row);
    box->setObjectName(QStringLiteral("widget.tick"));
    box->setAccessibleName(item.title);
    box->setChecked(ticked);
    // Ticked here, the task waits for Fenrow to take it: no way back from
    // the tray, as the window would undo it instead.
    box->setEnabled(!ticked);
    const QUuid id = item.id;
    connect(box, &QCheckBox::toggled, this, [this, id](bool on) {
        if (on)
            emit tickRequested(id);
    });
    layout->addWidget(box, 0, Qt::AlignTop);

    const int textWidth = contentWidth - box->sizeHint().width() - layout->spacing();
    auto *text = new QVBoxLayout;
    text->setSpacing(1);
    QLabel *title = label(item.title, row, QStringLiteral("widget.task.title"));
    QFont titleFont = title->font();
    titleFont.setStrikeOut(ticked);
    title->setFont(titleFont);
    setElided(title, item.title, textWidth);
    title->setEnabled(!ticked);
    text->addWidget(title);

    QLabel *flow = label(item.flowName, row, QStringLiteral("widget.task.flow"));
    QFont small = flow->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    flow->setFont(small);
    setElided(flow, item.flowName, textWidth);
    setColor(flow, secondaryInk(dark));
    text->addWidget(flow);

    const QString dueText = ReadyWords::due(item, today);
    if (!dueText.isEmpty()) {
        QLabel *due = label(dueText, row, QStringLiteral("widget.task.due"));
        due->setFont(small);
        if (!ticked)
            setColor(due, item.isOverdue ? QColor(overdueRed) : item.isToday ? accent : secondaryInk(dark));
        due->setEnabled(!ticked);
        text->addWidget(due);
    }
    layout->addLayout(text, 1);
    return row;
}

QRect ReadyPopup::placement(const QSize &size, const QRect &anchor, const QRect &screen)
{
    QPoint corner(anchor.center().x() - size.width() / 2, anchor.bottom() + 4);
    if (corner.y() + size.height() > screen.bottom())
        corner.setY(anchor.top() - 4 - size.height());
    corner.setX(qBound(screen.left(), corner.x(), screen.right() - size.width() + 1));
    corner.setY(qBound(screen.top(), corner.y(), screen.bottom() - size.height() + 1));
    return QRect(corner, size);
}

} // namespace fenrow
