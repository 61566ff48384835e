#include "InspectorCalendarPicker.h"

#include "look/Theme.h"

#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

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
}

} // namespace fenrow
