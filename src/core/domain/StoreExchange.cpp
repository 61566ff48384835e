// A flow out as an outline or a list, and an outline in as a new flow.
#include "FenrowStore.h"

#include "Clock.h"
#include "GrowingGraph.h"
#include "RecordID.h"
#include "TextRules.h"
#include "ValueLimits.h"
#include "formats/FlowMarkdown.h"
#include "formats/OPMLCodec.h"

#include <QHash>
#include <QSet>

#include <optional>
#include <vector>

namespace fenrow {

namespace {

// The imported flow's edges, made only where the rules of addEdge allow.
class ImportGraph {
public:
    ImportGraph(TaskFlow &flow, const std::vector<FlowNode *> &nodes, const QDateTime &now)
        : m_flow(flow), m_nodes(nodes), m_now(now), m_rules(nodes.size())
    {
    }

    // True when a new edge was made.
    bool add(std::size_t from, std::size_t to, EdgeKind kind)
    {
        if (!m_rules.admit(from, to))
            return false;
        auto edge = std::make_unique<DependencyEdge>();
        edge->id = RecordID::make();
        edge->source = EdgeSource::manual;
        edge->kind = kind;
        edge->createdAt = m_now;
        edge->setFlow(&m_flow);
        edge->setFromItem(m_nodes[from]);
        edge->setToItem(m_nodes[to]);
        m_flow.edges().add(std::move(edge));
        return true;
    }

private:
    TaskFlow &m_flow;
    const std::vector<FlowNode *> &m_nodes;
    QDateTime m_now;
    GrowingGraph m_rules;
};

// Where each "fenrowId" of a file went. This program writes upper-case
// UUIDs there: those are matched as numbers, which spares a visit to each
// key's characters, scattered over the heap, on every look-up of a large
// file. Any other text is matched as it stands.
class FileIDs {
public:
    explicit FileIDs(std::size_t expected) { m_uuids.reserve(qsizetype(expected)); }

    void insert(const QString &id, std::size_t index)
    {
        if (const QUuid uuid = asUuid(id); !uuid.isNull())
            m_uuids.insert(uuid, index);
        else
            m_others.insert(id, index);
    }

    std::optional<std::size_t> find(const QString &id) const
    {
        if (const QUuid uuid = asUuid(id); !uuid.isNull()) {
            const auto found = m_uuids.constFind(uuid);
            return found == m_uuids.cend() ? std::nullopt : std::optional(*found);
        }
        const auto found = m_others.constFind(id);
        return found == m_others.cend() ? std::nullopt : std::optional(*found);
    }

private:
    // Only the form this program writes, upper-case hex with its four
    // dashes, so that matching stays exact. Read in one pass: QUuid's own
    // parser, after a scan for lower case, was 8 % of a large import.
    static QUuid asUuid(const QString &id)
    {
        if (id.size() != 36)
            return {};
        const auto *text = reinterpret_cast<const char16_t *>(id.constData());
        quint64 high = 0;
        quint64 low = 0;
        int digits = 0;
        for (int i = 0; i < 36; ++i) {
            const char16_t c = text[i];
            if (i == 8 || i == 13 || i == 18 || i == 23) {
                if (c != u'-')
                    return {};
                continue;
            }
            unsigned value;
            if (c >= u'0' && c <= u'9')
                value = unsigned(c - u'0');
            else if (c >= u'A' && c <= u'F')
                value = unsigned(c - u'A' + 10);
            else
                return {};
            quint64 &half = digits < 16 ? high : low;
            half = half << 4 | value;
            ++digits;
        }
        uchar tail[8];
        for (int i = 0; i < 8; ++i)
            tail[i] = uchar(low >> (56 - 8 * i));
        return QUuid(uint(high >> 32), ushort(high >> 16), ushort(high), tail[0], tail[1], tail[2], tail[3], tail[4],
                     tail[5], tail[6], tail[7]);
    }

    QHash<QUuid, std::size_t> m_uuids;
    QHash<QString, std::size_t> m_others;
};

} // namespace

QString FenrowStore::markdown(const TaskFlow &flow) const
{
    const QList<const DependencyEdge *> edges(flow.edges().begin(), flow.edges().end());
    return FlowMarkdown::render(flow.displayName(), flow.orderedItems(), edges, FlowMarkdownStrings::current());
}

QString FenrowStore::exportOPML(const TaskFlow &flow) const
{
    QList<OPMLCodec::Task> tasks;
    tasks.reserve(qsizetype(flow.items().size()));
    for (const FlowNode *node : flow.orderedItems()) {
        tasks.append({node->id, node->title, node->notes, node->isDone, node->startDate, node->dueDate,
                      node->checklistData});
    }
    QList<OPMLCodec::IdPair> subtaskPairs;
    QList<OPMLCodec::IdPair> dependencyPairs;
    for (const DependencyEdge *edge : flow.edges()) {
        if (!edge->fromItem() || !edge->toItem())
            continue;
        (edge->isSubtask() ? subtaskPairs : dependencyPairs).append({edge->fromItem()->id, edge->toItem()->id});
    }
    return OPMLCodec::encode(flow.displayName(), tasks, subtaskPairs, dependencyPairs,
                             FlowMarkdownStrings::current().afterFormat, m_calendar);
}

FenrowStore::ImportedFlow FenrowStore::importOPML(const QString &title, const QList<OPMLCodec::Outline> &roots,
                                                  const QString &fallbackName)
{
    // In UTC, as the store loads dates: a local time would ask the zone
    // again for every row written.
    const QDateTime now = m_clock.now().toUTC();
    auto flow = std::make_unique<TaskFlow>();
    flow->id = RecordID::make();
    flow->name = TextRules::nameOr(title.isEmpty() ? fallbackName : title, TextRules::untitledFlowName);
    flow->order = nextFlowOrder();
    flow->createdAt = now;

    // Depth first in document order; `order` counts up as tasks are made.
    const std::size_t outlines = std::size_t(OPMLCodec::outlineCount(roots));
    std::vector<FlowNode *> nodes;
    nodes.reserve(outlines);
    flow->items().reserve(outlines);
    FileIDs byFileID(outlines);
    std::vector<std::pair<std::size_t, std::size_t>> subtaskPairs;
    std::vector<std::pair<std::size_t, const QStringList *>> afterLists;
    struct Pending {
        const OPMLCodec::Outline *outline;
        std::optional<std::size_t> parent;
    };
    std::vector<Pending> pending;
    for (auto root = roots.crbegin(); root != roots.crend(); ++root)
        pending.push_back({&*root, std::nullopt});
    while (!pending.empty()) {
        const Pending next = pending.back();
        pending.pop_back();
        const OPMLCodec::Outline &outline = *next.outline;

        auto node = std::make_unique<FlowNode>();
        // Always a new identity: the same file imported twice makes two
        // independent flows.
        node->id = RecordID::make();
        node->title = outline.text.isEmpty() ? TextRules::newTaskTitle : outline.text;
        node->isDone = outline.isDone;
        node->notes = outline.note;
        // The reader keeps only storable days; outlines made in code pass
        // the same gate.
        node->startDate = ValueLimits::date(outline.startDate);
        node->dueDate = ValueLimits::date(outline.dueDate);
        node->checklistData = outline.checklistData;
        node->order = qint64(nodes.size());
        node->createdAt = now;
        if (outline.isDone)
            node->completedAt = now;
        node->setFlow(flow.get());
        const std::size_t index = nodes.size();
        nodes.push_back(flow->items().add(std::move(node)));

        if (outline.fenrowID)
            byFileID.insert(*outline.fenrowID, index);
        if (next.parent)
            subtaskPairs.push_back({*next.parent, index});
        if (!outline.after.isEmpty())
            afterLists.push_back({index, &outline.after});
        for (auto child = outline.children.crbegin(); child != outline.children.crend(); ++child)
            pending.push_back({&*child, index});
    }

    ImportGraph graph(*flow, nodes, now);
    for (const auto &[parent, child] : subtaskPairs)
        graph.add(parent, child, EdgeKind::subtask);
    bool hasDependencies = false;
    for (const auto &[index, after] : afterLists) {
        for (const QString &id : *after) {
            const std::optional<std::size_t> source = byFileID.find(id);
            if (source && graph.add(*source, index, EdgeKind::dependency))
                hasDependencies = true;
        }
    }

    const TaskFlow *result = flow.get();
    RecordBundle bundle;
    bundle.flows.push_back(std::move(flow));
    insertRecords(std::move(bundle));
    return {result, hasDependencies};
}

} // namespace fenrow
