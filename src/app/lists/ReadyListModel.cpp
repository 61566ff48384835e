#include "ReadyListModel.h"

#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/FileLink.h"
#include "domain/FlowFile.h"
#include "domain/NodeStatus.h"
#include "program/UuidText.h"
#include "shell/DurationText.h"
#include "shell/InterfaceLanguage.h"

#include <QLocale>

namespace fenrow {

namespace {

QString priorityText(NodePriority priority)
{
    switch (priority) {
    case NodePriority::high:
        return qtTrId("ready.row.priority.high");
    case NodePriority::medium:
        return qtTrId("ready.row.priority.medium");
    case NodePriority::low:
        return qtTrId("ready.row.priority.low");
    case NodePriority::none:
        break;
    }
    return {};
}

// A due day said the short way: today, tomorrow, or the date, with the year
// only when it is not this one. Overdue says so in words as well as in colour.
QString dueText(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar)
{
    if (!node.dueDate)
        return {};
    const QDate today = calendar.dayOf(now);
    const QDate due = calendar.dayOf(*node.dueDate);
    if (due == today)
        return qtTrId("ready.row.due.today");
    if (due == today.addDays(1))
        return qtTrId("ready.row.due.tomorrow");
    const QLocale locale(InterfaceLanguage::current());
    const QString date = locale.toString(due, due.year() == today.year() ? qtTrId("ready.row.dateFormat")
                                                                         : qtTrId("ready.row.dateFormat.withYear"));
    return node.isOverdue(now, calendar) ? qtTrId("ready.row.overdue %@").arg(date) : date;
}

} // namespace

ReadyListModel::ReadyListModel(FenrowStore &store, QObject *parent) : SectionedRowsModel(parent), m_store(store) {}

void ReadyListModel::setSort(ReadySort sort)
{
    if (sort == m_sort)
        return;
    m_sort = sort;
    reload();
}

ReadyListModel::Row ReadyListModel::headerRow(const QString &title, const QString &identifier, qsizetype count)
{
    Row row;
    row.kind = Kind::header;
    row.title = title;
    row.identifier = identifier;
    row.count = count;
    return row;
}

ReadyListModel::Row ReadyListModel::taskRow(const ReadyTask &task, bool showFlow) const
{
    const FlowNode &node = *task.node;
    const QDateTime now = m_store.clock().now();
    Row row;
    row.kind = Kind::task;
    row.title = node.title;
    row.identifier = QStringLiteral("ready.row.") + uuidText(node.id);
    row.nodeId = node.id;
    row.flowId = task.flow->id;
    row.flow = task.flow->name;
    if (showFlow)
        row.flowName = row.flow;
    row.inProgress = readRaw<NodeStatus>(node.statusRaw) == NodeStatus::inProgress;
    row.dueText = dueText(node, now, m_store.calendar());
    row.overdue = node.isOverdue(now, m_store.calendar());
    row.priority = node.priority();
    if (node.estimateMinutes && *node.estimateMinutes > 0)
        row.estimateText = DurationText::compact(*node.estimateMinutes);
    row.hasNotes = node.hasNotes();
    // A file in the bin no longer counts as attached.
    for (const FileLink *link : node.fileLinks())
        row.references += link->file() && !link->file()->isTrashed;
    return row;
}

QList<ReadyListModel::Row> ReadyListModel::buildRows() const
{
    const QDateTime now = m_store.clock().now();
    const QList<ReadyTask> sorted = Readiness::sortedReady(m_store.readyTasks(now), m_sort);
    const TodayGroups groups = Readiness::todayGroups(sorted, now, m_store.calendar());

    QList<Row> rows;
    rows.reserve(sorted.size() + m_store.flows().size() + 2);
    if (!groups.today.isEmpty()) {
        rows.append(headerRow(qtTrId("ready.group.today"), QStringLiteral("ready.group.today"), groups.today.size()));
        if (groups.hasRanks)
            rows.last().orderNote = qtTrId("ready.order.today");
        for (const ReadyTask &task : groups.today) {
            rows.append(taskRow(task, true));
            rows.last().inToday = true;
        }
    }
    if (m_sort == ReadySort::flow) {
        // The rest arrives flow by flow; each run of one flow gets its header.
        for (qsizetype start = 0; start < groups.rest.size();) {
            const TaskFlow *flow = groups.rest[start].flow;
            qsizetype end = start;
            while (end < groups.rest.size() && groups.rest[end].flow == flow)
                ++end;
            rows.append(headerRow(flow->name, QStringLiteral("ready.group.") + uuidText(flow->id), end - start));
            for (qsizetype i = start; i < end; ++i)
                rows.append(taskRow(groups.rest[i], false));
            start = end;
        }
    } else {
        // One plain list; it needs a header only to set it apart from Today.
        if (!groups.today.isEmpty() && !groups.rest.isEmpty())
            rows.append(headerRow(qtTrId("ready.group.other"), QStringLiteral("ready.group.other"), groups.rest.size()));
        for (const ReadyTask &task : groups.rest)
            rows.append(taskRow(task, true));
    }
    return rows;
}

void ReadyListModel::reload()
{
    QList<Row> rows = buildRows();
    qsizetype tasks = 0;
    for (const Row &row : rows)
        tasks += row.kind == Kind::task;
    m_taskCount = tasks;

    replaceRows(m_rows, std::move(rows));
}

int ReadyListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QModelIndex ReadyListModel::indexOf(const QUuid &nodeId) const
{
    if (nodeId.isNull())
        return {};
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].kind == Kind::task && m_rows[i].nodeId == nodeId)
            return index(int(i));
    }
    return {};
}

QUuid ReadyListModel::nodeIdAt(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this || index.row() >= m_rows.size())
        return {};
    return m_rows[index.row()].nodeId;
}

QList<QUuid> ReadyListModel::todayNodeIds() const
{
    QList<QUuid> ids;
    for (const Row &row : m_rows)
        if (row.inToday)
            ids.append(row.nodeId);
    return ids;
}

Qt::ItemFlags ReadyListModel::flags(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= m_rows.size() || m_rows[index.row()].kind == Kind::header)
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

QVariant ReadyListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.model() != this || index.row() >= m_rows.size())
        return {};
    const Row &row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return row.title;
    case Qt::AccessibleTextRole:
        // A header says how many tasks it holds, as its badge shows.
        if (row.kind == Kind::header)
            return qtTrId("access.countedTasks %1 %2").arg(row.title).arg(row.count);
        return row.title;
    case Qt::AccessibleDescriptionRole: {
        if (row.kind == Kind::header)
            return row.orderNote;
        QStringList parts{row.inProgress ? qtTrId("canvas.node.status.inProgress") : qtTrId("canvas.node.ready"),
                          row.flow,
                          row.dueText,
                          priorityText(row.priority),
                          row.estimateText,
                          row.hasNotes ? qtTrId("ready.row.hasNotes") : QString(),
                          row.references > 0 ? qtTrId("ready.row.references").arg(row.references) : QString()};
        parts.removeAll(QString());
        return parts.join(QStringLiteral(", "));
    }
    case Qt::ToolTipRole:
        // Today's order is set by dragging; nothing on screen says so otherwise.
        if (row.kind == Kind::header && row.identifier == QLatin1StringView("ready.group.today"))
            return qtTrId("ready.row.reorder.help");
        return {};
    case KindRole:
        return int(row.kind);
    case NodeIdRole:
        return row.nodeId;
    case FlowIdRole:
        return row.flowId;
    case CountRole:
        return qint64(row.count);
    case FlowNameRole:
        return row.flowName;
    case DueTextRole:
        return row.dueText;
    case OverdueRole:
        return row.overdue;
    case PriorityRole:
        return int(row.priority);
    case PriorityTextRole:
        return priorityText(row.priority);
    case EstimateTextRole:
        return row.estimateText;
    case HasNotesRole:
        return row.hasNotes;
    case ReferencesRole:
        return qint64(row.references);
    case InTodayRole:
        return row.inToday;
    case OrderNoteRole:
        return row.orderNote;
    case IdentifierRole:
        return row.identifier;
    default:
        return {};
    }
}

} // namespace fenrow
