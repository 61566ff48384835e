#include "CrashScript.h"

#include "domain/FenrowStore.h"
#include "formats/FenrowBackup.h"

#include <QCryptographicHash>
#include <QDateTime>

#include <algorithm>

namespace fenrow {

namespace {

// SplitMix64: a draw from (seed, step, index) without any state, so that
// a writer can start at any step.
quint64 mix(quint64 value)
{
    value += 0x9e3779b97f4a7c15ULL;
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9ULL;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebULL;
    return value ^ (value >> 31);
}

QList<const TaskFlow *> flowsByName(const FenrowStore &store)
{
    QList<const TaskFlow *> flows = store.flows();
    std::sort(flows.begin(), flows.end(), [](const TaskFlow *a, const TaskFlow *b) { return a->name < b->name; });
    return flows;
}

QList<const FlowNode *> nodesByTitle(const FenrowStore &store)
{
    QList<const FlowNode *> nodes;
    for (const TaskFlow *flow : store.flows())
        nodes.append(flow->orderedItems());
    std::sort(nodes.begin(), nodes.end(), [](const FlowNode *a, const FlowNode *b) { return a->title < b->title; });
    return nodes;
}

// A document of `flows` flows with tasks in subtask chains, and a loop and
// a cycle that the restore leaves out.
FenrowBackup document(const QString &prefix, int flows, int tasks)
{
    FenrowBackup backup;
    backup.createdAt = QDateTime::currentDateTimeUtc();
    for (int f = 0; f < flows; ++f) {
        FenrowBackup::Flow flow;
        flow.id = QUuid::createUuid();
        flow.name = QStringLiteral("%1-%2").arg(prefix).arg(f);
        flow.order = f;
        flow.createdAt = backup.createdAt;
        for (int t = 0; t < tasks; ++t) {
            flow.items.append({.id = QUuid::createUuid(), .title = QStringLiteral("%1-%2-%3").arg(prefix).arg(f).arg(t),
                               .statusRaw = QStringLiteral("pending"), .notes = QString(t % 7 * 40, QLatin1Char('n')),
                               .priorityRaw = QStringLiteral("none"), .colorRaw = QStringLiteral("none"),
                               .posX = double(t % 20) * 240, .posY = double(t / 20) * 150, .order = t,
                               .createdAt = backup.createdAt});
            if (t > 0 && t % 5 != 0)
                flow.edges.append({QUuid::createUuid(), flow.items[t - 1].id, flow.items[t].id,
                                   QStringLiteral("manual"), QStringLiteral("subtask"), backup.createdAt});
        }
        if (tasks > 2) {
            flow.edges.append({QUuid::createUuid(), flow.items[0].id, flow.items[0].id, QStringLiteral("manual"),
                               std::nullopt, backup.createdAt});
            flow.edges.append({QUuid::createUuid(), flow.items[2].id, flow.items[1].id, QStringLiteral("manual"),
                               std::nullopt, backup.createdAt});
        }
        backup.flows.append(flow);
    }
    return backup;
}

} // namespace

quint64 CrashScript::draw(qint64 step, int index) const
{
    return mix(m_seed ^ mix(quint64(step) * 8 + quint64(index)));
}

bool CrashScript::perform(FenrowStore &store, qint64 step) const
{
    const QString name = QStringLiteral("%1").arg(step, 6, 10, QLatin1Char('0'));
    const quint64 kind = draw(step, 0) % 100;
    const QList<const TaskFlow *> flows = flowsByName(store);
    const QList<const FlowNode *> nodes = nodesByTitle(store);
    const auto pick = [&](const auto &list, int index) { return list[qsizetype(draw(step, index) % quint64(list.size()))]; };

    if (kind >= firstRestore) {
        // Whole documents: a replace of everything, or a merge beside it.
        const bool replacing = kind >= 94;
        const int count = int(draw(step, 1) % (replacing ? 3 : 1)) + 1;
        const int tasks = int(draw(step, 2) % (replacing ? 240 : 50)) + 10;
        const FenrowBackup backup = document((replacing ? QStringLiteral("R") : QStringLiteral("M")) + name, count, tasks);
        return store.restore(backup, replacing ? RestoreMode::replace : RestoreMode::merge).restored;
    }
    if (flows.isEmpty() || kind >= 80) {
        if (kind >= 84 && flows.size() > 1)
            store.deleteFlow(*pick(flows, 1));
        else
            store.addFlow(QStringLiteral("F") + name);
    } else if (nodes.isEmpty() || kind < 30) {
        store.addNode(QStringLiteral("T") + name, *pick(flows, 1));
    } else if (kind < 40) {
        store.setTitle(*pick(nodes, 1), QStringLiteral("T") + name);
    } else if (kind < 50) {
        store.setNotes(*pick(nodes, 1), QStringLiteral("note ") + name);
    } else if (kind < 60) {
        store.moveNode(*pick(nodes, 1), double(draw(step, 2) % 4000) - 2000, double(draw(step, 3) % 4000) - 2000);
    } else if (kind < 70) {
        store.deleteNode(*pick(nodes, 1));
    } else {
        // A connection within one flow; where the rules refuse it, a task.
        const FlowNode *from = pick(nodes, 1);
        const QList<const FlowNode *> mates = from->flow()->orderedItems();
        const FlowNode *to = pick(mates, 2);
        const std::size_t before = from->flow()->edges().size();
        try {
            store.addEdge(*from, *to, EdgeSource::manual, EdgeKind::dependency);
        } catch (const GraphMutationError &) {
        }
        if (from->flow()->edges().size() == before)
            store.addNode(QStringLiteral("T") + name, *from->flow());
    }
    return !store.hasChanges();
}

QByteArray CrashScript::digest(const FenrowStore &store)
{
    QStringList lines;
    for (const TaskFlow *flow : store.flows()) {
        lines << QStringLiteral("flow|%1|%2").arg(flow->name).arg(flow->order);
        for (const FlowNode *node : flow->items())
            lines << QStringLiteral("task|%1|%2|%3|%4|%5|%6")
                         .arg(flow->name, node->title, node->notes, node->statusRaw)
                         .arg(node->posX, 0, 'g', 17)
                         .arg(node->posY, 0, 'g', 17);
        for (const DependencyEdge *edge : flow->edges()) {
            if (edge->fromItem() && edge->toItem())
                lines << QStringLiteral("edge|%1|%2|%3|%4")
                             .arg(flow->name, edge->fromItem()->title, edge->toItem()->title,
                                  edge->kind ? rawString(*edge->kind) : QStringLiteral("-"));
        }
    }
    lines.sort();
    return QCryptographicHash::hash(lines.join(QLatin1Char('\n')).toUtf8(), QCryptographicHash::Sha1);
}

} // namespace fenrow
