#include "LargeStoreGenerator.h"

#include "ChecklistEntry.h"
#include "FixedClock.h"
#include "persistence/StoreDatabase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QSet>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

namespace fenrow::bench {

namespace {

// mt19937_64's output is fixed by the C++ standard, unlike the standard
// distributions, so the mapping to ranges is done here by hand: the same
// seed gives the same store with any library.
class Random {
public:
    explicit Random(quint64 seed) : m_engine(seed) {}

    quint64 next() { return m_engine(); }
    // Uniform in [0, bound). The modulo bias is far below anything we measure.
    int below(int bound) { return int(m_engine() % quint64(bound)); }
    int between(int low, int high) { return low + below(high - low + 1); }
    double unit() { return double(m_engine() >> 11) * 0x1.0p-53; }
    double real(double low, double high) { return low + (high - low) * unit(); }
    bool chance(double probability) { return unit() < probability; }

    template <typename T, std::size_t N>
    const T &pick(const std::array<T, N> &choices)
    {
        return choices[std::size_t(below(int(N)))];
    }

    QUuid uuid()
    {
        std::array<quint64, 2> words{next(), next()};
        std::array<char, 16> raw;
        std::memcpy(raw.data(), words.data(), raw.size());
        raw[6] = char((raw[6] & 0x0f) | 0x40); // version 4
        raw[8] = char((raw[8] & 0x3f) | 0x80); // RFC 4122 variant
        return QUuid::fromRfc4122(QByteArrayView(raw.data(), qsizetype(raw.size())));
    }

    QByteArray bytes(qsizetype count)
    {
        QByteArray result(count, Qt::Uninitialized);
        for (qsizetype at = 0; at < count; at += 8) {
            const quint64 word = next();
            std::memcpy(result.data() + at, &word, std::size_t(std::min<qsizetype>(8, count - at)));
        }
        return result;
    }

private:
    std::mt19937_64 m_engine;
};

using Words = std::array<const char *, 24>;

constexpr Words flowTopics{
    "Website relaunch", "Quarterly budget", "Kitchen renovation", "Thesis chapter", "Product launch",
    "Hiring: backend engineer", "Conference talk", "Garden", "Tax return", "Mobile app onboarding",
    "Umzug nach Köln", "Yıllık rapor", "Lanzamiento de campaña", "Déménagement", "Wedding",
    "Customer migration", "Security audit", "Book manuscript", "Home office setup", "Grant application",
    "Data warehouse", "Team offsite", "Podcast season", "Invoice backlog",
};

constexpr Words verbs{
    "Draft", "Review", "Send", "Call", "Update", "Fix", "Plan", "Book", "Write", "Order", "Check", "Prepare",
    "Clean up", "Schedule", "Test", "Migrate", "Design", "Sign", "Pay", "Research", "Ask about", "Compare",
    "Finish", "Archive",
};

constexpr Words objects{
    "the landing page copy", "invoice #4471", "Dana", "the contractor", "the release notes", "login timeout",
    "the sprint", "train tickets", "the abstract", "paint samples", "the staging server", "the lease",
    "the quarterly numbers", "three vendor quotes", "onboarding emails", "the database schema", "slides",
    "Präsentation", "toplantı notları", "el presupuesto", "les devis", "backup rotation", "the dentist",
    "the API keys",
};

constexpr Words tails{
    "before Friday", "with the finance team before the quarterly review", "(second pass)", "for Monday's call",
    "and share the link in the channel", "once the designs are signed off", "— waiting on legal",
    "so that the migration can start next week without the old export", "again", "für das Kundenmeeting",
    "bis Ende des Monats", "ve ekiple paylaş", "antes del lunes", "avant la réunion",
    "after the supplier confirms the delivery date and the revised price list", "v2", "for the board",
    "including the edge cases from last time", "quickly", "(see notes)", "", "", "", "",
};

constexpr Words sentences{
    "Check the shared drive for the latest version first.",
    "Dana said the numbers from March are off by a few percent; confirm before sending.",
    "Waiting on a reply since last Tuesday.",
    "Link: https://example.org/docs/quarterly-plan",
    "Keep it short, one page at most.",
    "The old script still runs on the staging box; do not delete it yet.",
    "Budget is capped at 2,400 EUR including tax.",
    "Ask whether the deadline can move by a week.",
    "Bring the signed copy and two forms of ID.",
    "Notes from the call:\n- scope is fine\n- timeline is tight\n- revisit pricing",
    "Nicht vergessen: Rechnung an die neue Adresse schicken.",
    "Toplantıdan önce son halini kontrol et.",
    "Confirmar con el proveedor la fecha de entrega.",
    "Prévoir une marge pour les imprévus.",
    "This blocks the release branch.",
    "Low priority unless the customer escalates.",
    "See the attached PDF for the full list.",
    "Two options: patch the current version or wait for the upstream fix.",
    "Measure twice.",
    "Everything else in this branch depends on this decision.",
    "Reuse the template from last year's report.",
    "Already discussed with the team; just needs writing up.",
    "Ping me when it is done.",
    "Estimate assumes no surprises in the legacy code.",
};

constexpr Words checklistItems{
    "Outline", "First draft", "Get feedback", "Second draft", "Proofread", "Export PDF", "Send out",
    "Collect receipts", "Fill in form", "Double-check totals", "Book room", "Invite people", "Order food",
    "Write tests", "Run migration", "Verify backups", "Update docs", "Tag release", "Measure", "Buy materials",
    "Call back", "Confirm date", "Pack", "Clean up",
};

constexpr std::array<const char *, 5> recurrences{"daily", "weekdays", "weekly", "monthly@15", "after@3"};
constexpr std::array<qint64, 9> estimates{15, 30, 45, 60, 90, 120, 180, 240, 480};
constexpr std::array<const char *, 8> colours{"red", "orange", "yellow", "green", "blue", "purple", "pink", "grey"};

struct Attachment {
    const char *contentType;
    const char *extension;
    QByteArrayView magic;
};

constexpr std::array<Attachment, 4> attachmentKinds{{
    {"application/pdf", "pdf", QByteArrayView("%PDF-1.7\n%\xe2\xe3\xcf\xd3\n")},
    {"image/png", "png", QByteArrayView("\x89PNG\r\n\x1a\n")},
    {"image/jpeg", "jpg", QByteArrayView("\xff\xd8\xff\xe0")},
    {"application/zip", "zip", QByteArrayView("PK\x03\x04")},
}};

constexpr double canvasLimit = 20000;

double clampToCanvas(double value)
{
    return std::clamp(value, -canvasLimit, canvasLimit);
}

// Splits `total` over the weights, each share at least `minimum`; the
// rounding remainder goes one by one to the first shares.
std::vector<int> split(int total, const std::vector<double> &weights, int minimum)
{
    const int count = int(weights.size());
    std::vector<int> shares(weights.size(), std::min(minimum, total / std::max(1, count)));
    int left = total;
    for (int share : shares)
        left -= share;
    double weightSum = 0;
    for (double weight : weights)
        weightSum += weight;
    const int distributable = left;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const int extra = int(std::floor(distributable * weights[i] / weightSum));
        shares[i] += extra;
        left -= extra;
    }
    for (std::size_t i = 0; left > 0; i = (i + 1) % shares.size(), --left)
        ++shares[i];
    return shares;
}

// The payload of an archived task: a copy of the node as JSON, keys in
// the order the archive writes them (QJsonObject would sort them).
class OrderedJson {
public:
    void add(const char *key, const QJsonValue &value)
    {
        m_text += m_text.isEmpty() ? "{" : ",";
        m_text += '"';
        m_text += key;
        m_text += "\":";
        const QByteArray wrapped = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
        m_text += wrapped.mid(1, wrapped.size() - 2);
    }

    QByteArray finish() const { return m_text + "}"; }

private:
    QByteArray m_text;
};

// Archive dates count seconds from 2001-01-01 UTC.
double referenceSeconds(const QDateTime &moment)
{
    static const QDateTime reference(QDate(2001, 1, 1), QTime(0, 0), QTimeZone(QByteArrayLiteral("UTC")));
    return double(reference.msecsTo(moment)) / 1000.0;
}

class Builder {
public:
    Builder(const LargeStoreShape &shape, quint64 seed, LargeStoreGenerator::Summary &summary)
        : m_shape(shape), m_random(seed), m_summary(summary), m_now(LargeStoreGenerator::now()),
          m_calendar(LargeStoreGenerator::calendar())
    {
    }

    RecordBundle run()
    {
        RecordBundle bundle;
        std::vector<double> weights;
        for (int i = 0; i < m_shape.flows; ++i) {
            // Most flows are mid-sized; a few are huge, some tiny.
            const double roll = m_random.unit();
            weights.push_back(roll < 0.05 ? m_random.real(3, 5) : roll < 0.25 ? m_random.real(0.1, 0.4)
                                                                                : m_random.real(0.6, 1.4));
        }
        const std::vector<int> nodeCounts = split(m_shape.nodes, weights, 4);
        std::vector<double> nodeWeights(nodeCounts.begin(), nodeCounts.end());
        std::vector<int> edgeCounts = split(m_shape.edges, nodeWeights, 0);
        capEdges(edgeCounts, nodeCounts);

        for (int i = 0; i < m_shape.flows; ++i)
            bundle.flows.push_back(makeFlow(i, nodeCounts[std::size_t(i)], edgeCounts[std::size_t(i)]));
        addFiles(bundle.flows);
        for (int i = 0; i < m_shape.completionRecords; ++i)
            bundle.completionRecords.push_back(makeCompletion(bundle.flows));
        return bundle;
    }

private:
    static qint64 pairCapacity(int nodes) { return qint64(nodes) * (nodes - 1) / 2; }

    // A flow of n nodes holds at most n(n-1)/2 edges one way; what does not
    // fit moves to flows with room.
    static void capEdges(std::vector<int> &edges, const std::vector<int> &nodes)
    {
        int overflow = 0;
        for (std::size_t i = 0; i < edges.size(); ++i) {
            const int capacity = int(std::min<qint64>(pairCapacity(nodes[i]), edges[i]));
            overflow += edges[i] - capacity;
            edges[i] = capacity;
        }
        for (std::size_t i = 0; overflow > 0 && i < edges.size(); ++i) {
            const int room = int(std::min<qint64>(pairCapacity(nodes[i]) - edges[i], overflow));
            edges[i] += room;
            overflow -= room;
        }
    }

    QDateTime dayFromNow(int days) { return m_calendar.startOfDay(m_now.date().addDays(days)); }

    QDateTime between(const QDateTime &from, const QDateTime &to)
    {
        return from.addMSecs(qint64(m_random.unit() * double(from.msecsTo(to))));
    }

    QString title()
    {
        QString text = QString::fromUtf8(m_random.pick(verbs)) + QLatin1Char(' ')
            + QString::fromUtf8(m_random.pick(objects));
        if (m_random.chance(0.45)) {
            const QString tail = QString::fromUtf8(m_random.pick(tails));
            if (!tail.isEmpty())
                text += QLatin1Char(' ') + tail;
        }
        return text;
    }

    QString notes()
    {
        QStringList lines;
        const int count = m_random.between(1, 6);
        for (int i = 0; i < count; ++i)
            lines << QString::fromUtf8(m_random.pick(sentences));
        return lines.join(m_random.chance(0.3) ? QStringLiteral("\n") : QStringLiteral(" "));
    }

    QString checklist()
    {
        Checklist entries;
        const int count = m_random.between(2, 8);
        for (int i = 0; i < count; ++i)
            entries.append({m_random.uuid(), QString::fromUtf8(m_random.pick(checklistItems)), m_random.chance(0.4)});
        return ChecklistCodec::encode(entries);
    }

    std::unique_ptr<TaskFlow> makeFlow(int index, int nodeCount, int edgeCount)
    {
        auto flow = std::make_unique<TaskFlow>();
        flow->id = m_random.uuid();
        flow->name = QString::fromUtf8(m_random.pick(flowTopics));
        if (m_random.chance(0.4))
            flow->name += QStringLiteral(" %1").arg(2019 + m_random.below(7));
        flow->order = index;
        // Flows were started over the last two years, oldest first.
        flow->createdAt = m_now.addDays(-730 + qint64(index) * 700 / std::max(1, m_shape.flows))
                              .addSecs(m_random.below(86400));
        flow->hasBeenFramed = m_random.chance(0.9);
        flow->viewportScale = m_random.real(0.4, 1.6);
        flow->viewportOffsetX = m_random.real(-2000, 2000);
        flow->viewportOffsetY = m_random.real(-1500, 1500);
        ++m_summary.flows;

        std::vector<FlowNode *> nodes;
        nodes.reserve(std::size_t(nodeCount));
        const int rows = std::max(3, int(std::sqrt(double(nodeCount))));
        const double originX = m_random.real(-4000, 1000);
        const double originY = m_random.real(-3000, 1000);
        qint64 order = 0;
        for (int i = 0; i < nodeCount; ++i) {
            auto node = std::make_unique<FlowNode>();
            FlowNode *made = flow->items().add(std::move(node));
            made->setFlow(flow.get());
            fillNode(*made, *flow, i, nodeCount);
            // Deleted tasks leave gaps in the order.
            order += m_random.chance(0.05) ? m_random.between(2, 4) : 1;
            made->order = order;
            made->posX = clampToCanvas(originX + (i / rows) * 300 + m_random.real(-40, 40));
            made->posY = clampToCanvas(originY + (i % rows) * 160 + m_random.real(-30, 30));
            nodes.push_back(made);
            m_allNodes.push_back(made);
        }
        addEdges(*flow, nodes, edgeCount);
        return flow;
    }

    void fillNode(FlowNode &node, const TaskFlow &flow, int index, int count)
    {
        node.id = m_random.uuid();
        node.title = title();
        // Tasks were added over the flow's life, roughly in order.
        const double progress = (index + m_random.unit()) / count;
        node.createdAt = flow.createdAt.addMSecs(qint64(progress * 0.95 * double(flow.createdAt.msecsTo(m_now))));

        if (m_random.chance(0.3))
            node.notes = notes();
        if (m_random.chance(0.15))
            node.checklistData = checklist();
        if (m_random.chance(0.5)) {
            static constexpr std::array<const char *, 3> ranks{"low", "medium", "high"};
            node.priorityRaw = QString::fromLatin1(ranks[std::size_t(m_random.chance(0.2) ? 2 : m_random.below(2))]);
        }
        if (m_random.chance(0.3))
            node.colorRaw = QString::fromLatin1(m_random.pick(colours));
        if (m_random.chance(0.4))
            node.estimateMinutes = m_random.pick(estimates);
        if (m_random.chance(0.15))
            node.startDate = dayFromNow(m_random.between(-20, 30));
        if (m_random.chance(0.35)) {
            QDateTime due = dayFromNow(m_random.between(-30, 90));
            if (node.startDate && due < *node.startDate)
                due = node.startDate->addDays(m_random.between(0, 14));
            node.dueDate = due;
        }
        if (m_random.chance(0.05)) {
            node.manualWidth = m_random.real(180, 420);
            node.manualHeight = m_random.real(90, 300);
        }
        if (m_random.chance(0.03)) {
            node.recurrenceRaw = QString::fromLatin1(m_random.pick(recurrences));
            node.repeatCount = m_random.between(0, 30);
            m_recurring.push_back(&node);
        }
        node.isCollapsed = m_random.chance(0.02);

        // Older tasks are more likely finished.
        const double doneChance = 0.1 + 0.55 * (1.0 - double(index) / count);
        if (m_random.chance(doneChance)) {
            if (m_random.chance(0.15))
                node.statusRaw = QStringLiteral("inProgress");
            node.setStatus(NodeStatus::done);
            node.completedAt = between(node.createdAt, m_now);
            ++m_summary.doneNodes;
        } else {
            const double roll = m_random.unit();
            node.setStatus(roll < 0.75 ? NodeStatus::pending : roll < 0.9 ? NodeStatus::inProgress : NodeStatus::paused);
            if (m_random.chance(0.01))
                node.dayPlanRank = m_random.below(12);
        }
        ++m_summary.nodes;
    }

    // Edges run only from a lower to a higher order, which keeps each flow
    // acyclic; most join near neighbours, as people draw them.
    void addEdges(TaskFlow &flow, const std::vector<FlowNode *> &nodes, int count)
    {
        const int n = int(nodes.size());
        QSet<qint64> taken;
        taken.reserve(count);
        auto key = [n](int from, int to) { return qint64(from) * n + to; };
        for (int made = 0; made < count; ++made) {
            int from = -1;
            int to = -1;
            for (int attempt = 0; attempt < 20 && from < 0; ++attempt) {
                const int a = m_random.below(n - 1);
                const int b = m_random.chance(0.8) ? std::min(n - 1, a + m_random.between(1, 6))
                                                   : m_random.between(a + 1, n - 1);
                if (!taken.contains(key(a, b))) {
                    from = a;
                    to = b;
                }
            }
            // A dense small flow: take the first free pair.
            for (int a = 0; from < 0 && a < n - 1; ++a) {
                for (int b = a + 1; b < n; ++b) {
                    if (!taken.contains(key(a, b))) {
                        from = a;
                        to = b;
                        break;
                    }
                }
            }
            taken.insert(key(from, to));

            auto edge = std::make_unique<DependencyEdge>();
            edge->id = m_random.uuid();
            edge->source = m_random.chance(0.12) ? EdgeSource::ai : EdgeSource::manual;
            const double roll = m_random.unit();
            if (roll < 0.3) {
                edge->kind = EdgeKind::subtask;
                ++m_summary.subtaskEdges;
            } else if (roll < 0.85) {
                edge->kind = EdgeKind::dependency;
            } else {
                // Written before edges had kinds.
                ++m_summary.edgesWithoutKind;
            }
            FlowNode *tail = nodes[std::size_t(from)];
            FlowNode *head = nodes[std::size_t(to)];
            edge->createdAt = std::min(m_now, std::max(tail->createdAt, head->createdAt).addSecs(m_random.below(3600)));
            edge->setFlow(&flow);
            edge->setFromItem(tail);
            edge->setToItem(head);
            flow.edges().add(std::move(edge));
            ++m_summary.edges;
        }
    }

    void addFiles(std::vector<std::unique_ptr<TaskFlow>> &flows)
    {
        std::vector<qint64> filesPerFlow(flows.size(), 0);
        for (int i = 0; i < m_shape.files; ++i) {
            const std::size_t flowIndex = std::size_t(m_random.below(int(flows.size())));
            TaskFlow &flow = *flows[flowIndex];
            const Attachment &kind = attachmentKinds[std::size_t(i) % attachmentKinds.size()];

            auto owned = std::make_unique<FlowFile>();
            FlowFile *file = flow.files().add(std::move(owned));
            file->setFlow(&flow);
            file->id = m_random.uuid();
            file->filename = QStringLiteral("%1-%2.%3")
                                 .arg(QString::fromUtf8(m_random.pick(objects)).replace(QLatin1Char(' '), QLatin1Char('-')))
                                 .arg(i + 1)
                                 .arg(QString::fromLatin1(kind.extension));
            file->contentTypeRaw = QString::fromLatin1(kind.contentType);
            QByteArray data = kind.magic.toByteArray() + m_random.bytes(m_random.between(180, 450) * 1024);
            file->byteCount = data.size();
            file->data.set(std::move(data));
            file->thumbnail.set(QByteArray("\x89PNG\r\n\x1a\n") + m_random.bytes(m_random.between(8, 40) * 1024));
            const FlowNode *anchor = flow.items()[std::size_t(m_random.below(int(flow.items().size())))];
            file->posX = clampToCanvas(anchor->posX + m_random.real(-600, 600));
            file->posY = clampToCanvas(anchor->posY + m_random.real(-400, 400));
            if (m_random.chance(0.3)) {
                file->manualWidth = m_random.real(160, 320);
                file->manualHeight = m_random.real(120, 260);
            }
            file->order = filesPerFlow[flowIndex]++;
            file->createdAt = between(flow.createdAt, m_now);
            m_summary.attachmentBytes += file->byteCount;
            ++m_summary.files;

            QSet<const FlowNode *> linked;
            const int links = std::min<int>(m_random.between(1, 4), int(flow.items().size()));
            while (linked.size() < links) {
                FlowNode *node = flow.items()[std::size_t(m_random.below(int(flow.items().size())))];
                if (linked.contains(node))
                    continue;
                linked.insert(node);
                FileLink *link = flow.fileLinks().add(std::make_unique<FileLink>());
                link->id = m_random.uuid();
                link->createdAt = std::max(file->createdAt, node->createdAt);
                link->setFlow(&flow);
                link->setFile(file);
                link->setNode(node);
                file->links().append(link);
                node->fileLinks().append(link);
                ++m_summary.fileLinks;
            }
        }
    }

    QDateTime pastMoment() { return m_now.addSecs(-qint64(m_random.between(3600, 700 * 86400))); }

    std::unique_ptr<CompletionRecord> makeCompletion(const std::vector<std::unique_ptr<TaskFlow>> &flows)
    {
        auto record = std::make_unique<CompletionRecord>();
        record->id = m_random.uuid();
        record->completedAt = pastMoment();
        ++m_summary.completionRecords;

        // Rounds of recurring tasks make up most of the history.
        if (m_random.chance(0.6) && !m_allNodes.empty()) {
            const FlowNode *node = !m_recurring.empty() && m_random.chance(0.9)
                ? m_recurring[std::size_t(m_random.below(int(m_recurring.size())))]
                : m_allNodes[std::size_t(m_random.below(int(m_allNodes.size())))];
            record->kindRaw = CompletionRecord::repeatKind;
            record->nodeID = node->id;
            record->flowID = node->flow()->id;
            record->flowName = node->flow()->name;
            record->title = node->title;
            record->cycle = m_random.between(1, 40);
            return record;
        }

        // Archived tasks; a few come from flows deleted since.
        record->kindRaw = CompletionRecord::archivedKind;
        record->nodeID = m_random.uuid();
        if (m_random.chance(0.92)) {
            const TaskFlow &flow = *flows[std::size_t(m_random.below(int(flows.size())))];
            record->flowID = flow.id;
            record->flowName = flow.name;
        } else {
            record->flowID = m_random.uuid();
            record->flowName = QString::fromUtf8(m_random.pick(flowTopics));
        }
        record->title = title();
        record->cycle = 0;
        record->payload.set(archivedPayload(record->title, record->completedAt));
        ++m_summary.archivedRecords;
        return record;
    }

    QByteArray archivedPayload(const QString &taskTitle, const QDateTime &completedAt)
    {
        const QDateTime created = completedAt.addDays(-m_random.between(1, 120));
        OrderedJson json;
        json.add("title", taskTitle);
        json.add("notes", m_random.chance(0.7) ? notes() : QString());
        json.add("statusRaw", m_random.chance(0.8) ? QStringLiteral("pending") : QStringLiteral("inProgress"));
        json.add("priorityRaw", m_random.chance(0.5) ? QStringLiteral("none") : QStringLiteral("medium"));
        json.add("colorRaw", m_random.chance(0.7) ? QStringLiteral("none") : QString::fromLatin1(m_random.pick(colours)));
        if (m_random.chance(0.15))
            json.add("startDate", referenceSeconds(m_calendar.startOfDay(created)));
        if (m_random.chance(0.4))
            json.add("dueDate", referenceSeconds(m_calendar.startOfDay(completedAt.addDays(m_random.between(-5, 10)))));
        if (m_random.chance(0.4))
            json.add("estimateMinutes", m_random.pick(estimates));
        json.add("posX", std::round(m_random.real(-4000, 6000)));
        json.add("posY", std::round(m_random.real(-3000, 4000)));
        json.add("checklistData", m_random.chance(0.2) ? checklist() : QString());
        json.add("createdAt", referenceSeconds(created));
        return json.finish();
    }

    const LargeStoreShape &m_shape;
    Random m_random;
    LargeStoreGenerator::Summary &m_summary;
    const QDateTime m_now;
    const LocalCalendar m_calendar;
    std::vector<const FlowNode *> m_allNodes;
    std::vector<const FlowNode *> m_recurring;
};

} // namespace

QDateTime LargeStoreGenerator::now()
{
    return QDateTime(QDate(2025, 3, 3), QTime(9, 30), QTimeZone(QByteArrayLiteral("UTC")));
}

const Clock &LargeStoreGenerator::clock()
{
    static const FixedClock fixed(now());
    return fixed;
}

LocalCalendar LargeStoreGenerator::calendar()
{
    return LocalCalendar(QTimeZone(QByteArrayLiteral("UTC")));
}

LargeStoreGenerator::LargeStoreGenerator(LargeStoreShape shape, quint64 seed) : m_shape(shape), m_seed(seed) {}

RecordBundle LargeStoreGenerator::build()
{
    m_summary = {};
    return Builder(m_shape, m_seed, m_summary).run();
}

std::optional<LargeStoreGenerator::Summary> LargeStoreGenerator::writeStore(const QString &path, QString *error,
                                                                            Timings *timings)
{
    for (const QString &leftover : {path, path + QStringLiteral("-wal"), path + QStringLiteral("-shm")}) {
        if (QFile::exists(leftover) && !QFile::remove(leftover)) {
            *error = QStringLiteral("cannot replace %1").arg(leftover);
            return std::nullopt;
        }
    }

    QElapsedTimer timer;
    timer.start();
    RecordBundle bundle = build();
    const double buildMs = double(timer.nsecsElapsed()) / 1e6;

    std::unique_ptr<StoreDatabase> database = StoreDatabase::open(path, error);
    if (!database)
        return std::nullopt;
    std::unique_ptr<FenrowStore> store = FenrowStore::open(std::move(database), clock(), calendar(), error);
    if (!store)
        return std::nullopt;

    timer.restart();
    store->insertRecords(std::move(bundle));
    const double insertMs = double(timer.nsecsElapsed()) / 1e6;
    // A failed save is only logged; what is still pending did not reach the file.
    if (store->hasChanges()) {
        *error = QStringLiteral("the generated records were not saved to %1").arg(path);
        return std::nullopt;
    }
    if (summarize(*store) != m_summary) {
        *error = QStringLiteral("the store holds other records than were generated");
        return std::nullopt;
    }
    if (timings)
        *timings = {buildMs, insertMs};
    return m_summary;
}

LargeStoreGenerator::Summary LargeStoreGenerator::summarize(const FenrowStore &store)
{
    Summary summary;
    for (const TaskFlow *flow : store.flows()) {
        ++summary.flows;
        for (const FlowNode *node : flow->items()) {
            ++summary.nodes;
            summary.doneNodes += node->isDone ? 1 : 0;
        }
        for (const DependencyEdge *edge : flow->edges()) {
            ++summary.edges;
            summary.subtaskEdges += edge->kind == EdgeKind::subtask ? 1 : 0;
            summary.edgesWithoutKind += edge->kind ? 0 : 1;
        }
        for (const FlowFile *file : flow->files()) {
            ++summary.files;
            summary.attachmentBytes += file->byteCount;
        }
        summary.fileLinks += int(flow->fileLinks().size());
    }
    for (const CompletionRecord *record : store.completionRecords()) {
        ++summary.completionRecords;
        summary.archivedRecords += record->kindRaw == CompletionRecord::archivedKind ? 1 : 0;
    }
    return summary;
}

} // namespace fenrow::bench
