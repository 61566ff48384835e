#include "InspectorCalendarPicker.h"

#include "look/Theme.h"

#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

namespace
{

// A month arrow: a chevron in the text colour, as the program's other
// glyphs are drawn.
QIcon chevron(bool back, const QColor &color)
{
    constexpr int side = 16;
    QPixmap pixmap(side * 2, side * 2);
    pixmap.setDevicePixelRatio(2);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const double tip = back ? 5.5 : 10.5;
    const double tail = back ? 10.5 : 5.5;
    QPainterPath path;
    path.moveTo(tail, 3.5);
    path.lineTo(tip, 8);
    path.lineTo(tail, 12.5);
    painter.drawPath(path);
    return QIcon(pixmap);
}

} // namespace

InspectorCalendarPicker::InspectorCalendarPicker(QDate selection, QDate today, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("inspector.calendar"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(8);

    auto *chips = new QHBoxLayout;
    chips->setSpacing(6);
    auto addChip = [&](const char *key, QDate day) {
        auto *chip = new QPushButton(qtTrId(key), this);
        chip->setObjectName(QString::fromLatin1(key));
        chip->setCursor(Qt::PointingHandCursor);
        connect(chip, &QPushButton::clicked, this, [this, day] { emit picked(day); });
        chips->addWidget(chip);
    };
    addChip("inspector.calendar.today", today);
    addChip("inspector.calendar.tomorrow", today.addDays(1));
    addChip("inspector.calendar.nextWeek", today.addDays(7));
    chips->addStretch();
    column->addLayout(chips);

    m_calendar = new QCalendarWidget(this);
    m_calendar->setGridVisible(false);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendar->setSelectedDate(selection.isValid() ? selection : today);
    // The month arrows carry the names the rest of the program uses.
    if (auto *previous = m_calendar->findChild<QToolButton *>(QStringLiteral("qt_calendar_prevmonth")))
        previous->setObjectName(QStringLiteral("inspector.calendar.previousMonth"));
    if (auto *next = m_calendar->findChild<QToolButton *>(QStringLiteral("qt_calendar_nextmonth")))
        next->setObjectName(QStringLiteral("inspector.calendar.nextMonth"));
    connect(m_calendar, &QCalendarWidget::clicked, this, &InspectorCalendarPicker::picked);
    connect(m_calendar, &QCalendarWidget::activated, this, &InspectorCalendarPicker::picked);
    column->addWidget(m_calendar);
    applyLook();
    // Today stands out from the other days without looking picked.
    QTextCharFormat todayFormat = m_calendar->dateTextFormat(today);
    todayFormat.setFontWeight(QFont::Bold);
    todayFormat.setForeground(Theme::Color::accent);
    m_calendar->setDateTextFormat(today, todayFormat);
}

void InspectorCalendarPicker::applyLook()
{
    // Weekends like the other days: a red Sunday reads as a warning the
    // program does not mean.
    m_calendar->setWeekdayTextFormat(Qt::Saturday, QTextCharFormat());
    m_calendar->setWeekdayTextFormat(Qt::Sunday, QTextCharFormat());
    QTextCharFormat header;
    header.setForeground(Theme::Color::secondaryText);
    header.setFont(Theme::captionFont());
    m_calendar->setHeaderTextFormat(header);
    if (auto *previous = m_calendar->findChild<QToolButton *>(QStringLiteral("inspector.calendar.previousMonth")))
        previous->setIcon(chevron(true, Theme::Color::text));
    if (auto *next = m_calendar->findChild<QToolButton *>(QStringLiteral("inspector.calendar.nextMonth")))
        next->setIcon(chevron(false, Theme::Color::text));
    m_calendar->setStyleSheet(
        QStringLiteral("QWidget#qt_calendar_navigationbar { background: %1; border-radius: 6px; }"
                       " QCalendarWidget QToolButton { color: %2; background: transparent; border: none;"
                       " border-radius: 5px; padding: 4px 8px; font-weight: 600; }"
                       " QCalendarWidget QToolButton:hover, QCalendarWidget QToolButton:pressed { background: %3; }"
                       " QCalendarWidget QToolButton::menu-indicator { image: none; width: 0; }"
                       " QCalendarWidget QSpinBox { color: %2; background: %5; selection-background-color: %4;"
                       " selection-color: %6; }"
                       " QCalendarWidget QAbstractItemView { background: %5; color: %2; outline: 0;"
                       " selection-background-color: %4; selection-color: %6; }"
                       " QCalendarWidget QAbstractItemView:disabled { color: %7; }")
            .arg(Theme::Color::sidebar.name(), Theme::Color::text.name(), Theme::Color::hover.name(),
                 Theme::Color::accent.name(), Theme::Color::field.name(), Theme::Color::onAccent.name(),
                 Theme::Color::secondaryText.name()));
}

QPoint InspectorCalendarPicker::popupPosition(QSize size, const QWidget &anchor)
{
    QRect room = anchor.window()->geometry();
    if (const QScreen *screen = anchor.screen())
        room &= screen->availableGeometry();
    const QRect field(anchor.mapToGlobal(QPoint(0, 0)), anchor.size());
    QPoint position(field.left(), field.bottom() + 1);
    if (position.y() + size.height() > room.bottom() + 1 && field.top() - size.height() >= room.top())
        position.setY(field.top() - size.height());
    // Clamped left and top last: a popup larger than the window keeps its
    // top left corner, where its navigation is, in view.
    position.setX(std::max(std::min(position.x(), room.right() + 1 - size.width()), room.left()));
    position.setY(std::max(std::min(position.y(), room.bottom() + 1 - size.height()), room.top()));
    return position;
}

} // namespace fenrow
