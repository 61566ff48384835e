#pragma once

#include <QDate>
#include <QWidget>

class QCalendarWidget;

namespace fenrow {

// One month to pick a day from, with quick chips for today, tomorrow and
// a week from today. It lives in a popup; a pick closes it.
class InspectorCalendarPicker : public QWidget {
    Q_OBJECT

public:
    InspectorCalendarPicker(QDate selection, QDate today, QWidget *parent = nullptr);

    QCalendarWidget *calendar() const { return m_calendar; }

    // Where a popup of `size` opens for `anchor`, in global coordinates:
    // below it, or above it when there is no room below, and always
    // inside the anchor's window and screen.
    static QPoint popupPosition(QSize size, const QWidget &anchor);

signals:
    void picked(QDate day);

private:
    void applyLook();

    QCalendarWidget *m_calendar = nullptr;
};

} // namespace fenrow
