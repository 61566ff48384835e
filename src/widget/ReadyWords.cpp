#include "ReadyWords.h"

#include "shell/InterfaceLanguage.h"

#include <QCoreApplication>
#include <QLocale>

namespace fenrow::ReadyWords {

QString count(qsizetype ready)
{
    return ready == 1 ? qtTrId("widget.count.one") : qtTrId("widget.count %1").arg(ready);
}

QString emptyReason(const std::optional<QString> &reason)
{
    if (reason == QLatin1StringView("allDone"))
        return qtTrId("widget.empty.allDone");
    if (reason == QLatin1StringView("allBlocked"))
        return qtTrId("widget.empty.allBlocked");
    if (reason == QLatin1StringView("allDeferred"))
        return qtTrId("widget.empty.allDeferred");
    return qtTrId("widget.empty.noTasks");
}

QString summary(ReadyListState state, const ReadySnapshot *snapshot, qsizetype ticked)
{
    switch (state) {
    case ReadyListState::notWritten:
        return qtTrId("widget.notWritten");
    case ReadyListState::outOfDate:
        return qtTrId("widget.outOfDate");
    case ReadyListState::current:
        break;
    }
    const qsizetype ready = snapshot->total - ticked;
    if (ready > 0)
        return count(ready);
    // Everything ticked here: Fenrow has not said yet what is left.
    return snapshot->total > 0 ? qtTrId("widget.empty.allTicked") : emptyReason(snapshot->emptyReason);
}

QString due(const ReadySnapshot::Item &item, const QDate &today)
{
    if (!item.dueDate)
        return {};
    if (item.isToday)
        return qtTrId("ready.row.due.today");
    const QDate day = item.dueDate->toLocalTime().date();
    if (day == today.addDays(1))
        return qtTrId("ready.row.due.tomorrow");
    const QLocale locale(InterfaceLanguage::current());
    const QString date = locale.toString(day, day.year() == today.year() ? qtTrId("ready.row.dateFormat")
                                                                         : qtTrId("ready.row.dateFormat.withYear"));
    return item.isOverdue ? qtTrId("ready.row.overdue %@").arg(date) : date;
}

} // namespace fenrow::ReadyWords
