#include "ReadySnapshot.h"

#include "WidgetFiles.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/FlowNode.h"
#include "domain/LocalCalendar.h"
#include "domain/TaskFlow.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow {

namespace {

QJsonObject toJson(const ReadySnapshot::Item &item)
{
    QJsonObject object{
        {QStringLiteral("id"), item.id.toString(QUuid::WithoutBraces).toUpper()},
        {QStringLiteral("title"), item.title},
        {QStringLiteral("flowName"), item.flowName},
        {QStringLiteral("isOverdue"), item.isOverdue},
        {QStringLiteral("isToday"), item.isToday},
        {QStringLiteral("priorityRaw"), item.priorityRaw},
    };
    if (item.dueDate)
        object.insert(QStringLiteral("dueDate"), WidgetFiles::dateText(*item.dueDate));
    return object;
}

std::optional<ReadySnapshot::Item> itemFrom(const QJsonValue &value)
{
    const QJsonObject object = value.toObject();
    const QJsonValue id = object.value(QLatin1StringView("id"));
    const QJsonValue title = object.value(QLatin1StringView("title"));
    const QJsonValue flowName = object.value(QLatin1StringView("flowName"));
    const QJsonValue overdue = object.value(QLatin1StringView("isOverdue"));
    const QJsonValue today = object.value(QLatin1StringView("isToday"));
    const QJsonValue priority = object.value(QLatin1StringView("priorityRaw"));
    if (!value.isObject() || !id.isString() || !title.isString() || !flowName.isString() || !overdue.isBool() ||
        !today.isBool() || !priority.isString())
        return std::nullopt;
    ReadySnapshot::Item item{QUuid::fromString(id.toString()), title.toString(), flowName.toString(), std::nullopt,
                             overdue.toBool(), today.toBool(), priority.toString()};
    if (item.id.isNull())
        return std::nullopt;
    const QJsonValue due = object.value(QLatin1StringView("dueDate"));
    if (!due.isUndefined() && !due.isNull()) {
        item.dueDate = WidgetFiles::readDate(due);
        if (!item.dueDate)
            return std::nullopt;
    }
    return item;
}

QString reasonText(ReadyEmptyReason reason)
{
    switch (reason) {
    case ReadyEmptyReason::noTasks:
        return QStringLiteral("noTasks");
    case ReadyEmptyReason::allDone:
        return QStringLiteral("allDone");
    case ReadyEmptyReason::allDeferred:
        return QStringLiteral("allDeferred");
    case ReadyEmptyReason::allBlocked:
        break;
    }
    return QStringLiteral("allBlocked");
}

} // namespace

ReadySnapshot ReadySnapshot::build(const FenrowStore &store, ReadySort sort, const QString &paletteRaw,
                                   const QDateTime &now)
{
    const LocalCalendar &calendar = store.calendar();
    const QList<ReadyTask> ready = Readiness::inListOrder(store.flows(), now, calendar, sort);
    const QDateTime startOfToday = calendar.startOfDay(now);
    const QDateTime startOfTomorrow = calendar.startOfNextDay(now);

    ReadySnapshot snapshot;
    snapshot.validUntil = startOfTomorrow.isValid() ? startOfTomorrow : now;
    snapshot.total = ready.size();
    for (qsizetype i = 0; i < std::min(ready.size(), taskLimit); ++i) {
        const FlowNode &node = *ready[i].node;
        Item item{node.id, node.title, ready[i].flow->displayName(), node.dueDate, false, false, node.priorityRaw};
        if (node.dueDate) {
            item.isOverdue = *node.dueDate < startOfToday;
            item.isToday = !item.isOverdue && *node.dueDate < startOfTomorrow;
        }
        snapshot.tasks.append(item);
    }
    snapshot.paletteRaw = paletteRaw;
    if (snapshot.total == 0)
        snapshot.emptyReason = reasonText(Readiness::readyEmptyReason(store.flows(), now, calendar));
    return snapshot;
}

QByteArray ReadySnapshot::encoded() const
{
    QJsonArray items;
    for (const Item &item : tasks)
        items.append(toJson(item));
    QJsonObject object{
        {QStringLiteral("validUntil"), WidgetFiles::dateText(validUntil)},
        {QStringLiteral("total"), qint64(total)},
        {QStringLiteral("tasks"), items},
        {QStringLiteral("paletteRaw"), paletteRaw},
    };
    if (emptyReason)
        object.insert(QStringLiteral("emptyReason"), *emptyReason);
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

std::optional<ReadySnapshot> ReadySnapshot::decode(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    const std::optional<QDateTime> validUntil = WidgetFiles::readDate(object.value(QLatin1StringView("validUntil")));
    const QJsonValue total = object.value(QLatin1StringView("total"));
    const QJsonValue tasks = object.value(QLatin1StringView("tasks"));
    const QJsonValue palette = object.value(QLatin1StringView("paletteRaw"));
    const QJsonValue reason = object.value(QLatin1StringView("emptyReason"));
    if (!validUntil || !total.isDouble() || total.toDouble() < 0 || !tasks.isArray() || !palette.isString() ||
        !(reason.isUndefined() || reason.isNull() || reason.isString()))
        return std::nullopt;

    ReadySnapshot snapshot;
    snapshot.validUntil = *validUntil;
    snapshot.total = qsizetype(total.toDouble());
    snapshot.paletteRaw = palette.toString();
    if (reason.isString())
        snapshot.emptyReason = reason.toString();
    for (const QJsonValue &value : tasks.toArray()) {
        std::optional<Item> item = itemFrom(value);
        if (!item)
            return std::nullopt;
        snapshot.tasks.append(*item);
    }
    return snapshot;
}

bool ReadySnapshot::write(const QString &sharedFolder, QString *error) const
{
    return WidgetFiles::writeAtomically(WidgetFiles::snapshotPath(sharedFolder), encoded(), error);
}

std::optional<ReadySnapshot> ReadySnapshot::read(const QString &sharedFolder)
{
    QFile file(WidgetFiles::snapshotPath(sharedFolder));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return decode(file.readAll());
}

} // namespace fenrow
