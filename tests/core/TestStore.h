#pragma once

#include "domain/FenrowStore.h"
#include "domain/FixedClock.h"
#include "persistence/StoreDatabase.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace fenrow::testing {

inline QTimeZone berlin()
{
    return QTimeZone("Europe/Berlin");
}

inline QDateTime berlinTime(int year, int month, int day, int hour = 0, int minute = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute), berlin());
}

// Bytes this process has asked the kernel to read so far.
inline qint64 bytesReadByProcess()
{
    QFile io(QStringLiteral("/proc/self/io"));
    if (!io.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : io.readAll().split('\n')) {
        if (line.startsWith("rchar:"))
            return line.mid(6).trimmed().toLongLong();
    }
    return -1;
}

// Collects the log lines written while it lives, of one category if given.
class LogCapture
{
public:
    explicit LogCapture(QByteArray category = {}) : m_previous(qInstallMessageHandler(record))
    {
        lines().clear();
        filter() = std::move(category);
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }

    static QStringList &lines()
    {
        static QStringList collected;
        return collected;
    }
    bool contains(const QString &start) const
    {
        for (const QString &line : lines())
            if (line.startsWith(start))
                return true;
        return false;
    }

private:
    static QByteArray &filter()
    {
        static QByteArray category;
        return category;
    }
    static void record(QtMsgType, const QMessageLogContext &context, const QString &message)
    {
        if (filter().isEmpty() || QByteArrayView(context.category) == filter())
            lines().append(message);
    }
    QtMessageHandler m_previous;
};

// Every field of every record, one line each, ids included: two stores that
// give the same lines hold the same data. A flow's rows are sorted, as the
// file gives them back in an order of its own.
inline QStringList describe(const FenrowStore &store)
{
    const auto date = [](const std::optional<QDateTime> &value) {
        return value ? value->toUTC().toString(Qt::ISODateWithMs) : QStringLiteral("-");
    };
    const auto number = [](const auto &value) {
        return value ? QString::number(*value, 'g', 17) : QStringLiteral("-");
    };
    const auto bytes = [](const std::optional<QByteArray> &value) {
        return value ? QString::fromLatin1(value->toBase64()) : QStringLiteral("-");
    };
    const auto id = [](const QUuid &value) { return value.toString(QUuid::WithoutBraces); };

    QStringList lines;
    for (const TaskFlow *flow : store.flows()) {
        QStringList rows;
        lines << QStringList{QStringLiteral("flow"), id(flow->id), flow->name, QString::number(flow->order),
                             date(flow->createdAt), QString::number(flow->viewportOffsetX),
                             QString::number(flow->viewportOffsetY), QString::number(flow->viewportScale),
                             QString::number(flow->hasBeenFramed)}
                     .join('|');
        for (const FlowNode *node : flow->items()) {
            rows << QStringList{QStringLiteral("node"), id(node->id), node->title, QString::number(node->isDone),
                                 node->statusRaw, node->notes, node->priorityRaw, node->colorRaw,
                                 date(node->startDate), date(node->dueDate), number(node->estimateMinutes),
                                 number(node->dayPlanRank), number(node->manualWidth), number(node->manualHeight),
                                 node->checklistData, node->recurrenceRaw.value_or("-"),
                                 QString::number(node->repeatCount), date(node->completedAt),
                                 QString::number(node->isCollapsed), QString::number(node->posX),
                                 QString::number(node->posY), QString::number(node->order), date(node->createdAt),
                                 id(node->flow()->id)}
                         .join('|');
        }
        for (const DependencyEdge *edge : flow->edges()) {
            rows << QStringList{QStringLiteral("edge"), id(edge->id), id(edge->fromItem()->id),
                                 id(edge->toItem()->id), rawString(edge->source),
                                 edge->kind ? rawString(*edge->kind) : QStringLiteral("-"), date(edge->createdAt),
                                 edge->flow() ? id(edge->flow()->id) : QStringLiteral("-")}
                         .join('|');
        }
        for (const FlowFile *file : flow->files()) {
            rows << QStringList{QStringLiteral("file"), id(file->id), file->filename, file->contentTypeRaw,
                                 QString::number(file->byteCount), bytes(file->data.value()),
                                 bytes(file->thumbnail.value()), QString::number(file->isTrashed),
                                 QString::number(file->posX), QString::number(file->posY),
                                 number(file->manualWidth), number(file->manualHeight),
                                 QString::number(file->order), date(file->createdAt),
                                 QString::number(file->links().size())}
                         .join('|');
        }
        for (const FileLink *link : flow->fileLinks()) {
            rows << QStringList{QStringLiteral("link"), id(link->id), id(link->file()->id), id(link->node()->id),
                                 date(link->createdAt)}
                         .join('|');
        }
        rows.sort();
        lines << rows;
    }
    for (const FlowTemplate *flowTemplate : store.templateList())
        lines << QStringList{QStringLiteral("template"), id(flowTemplate->id), flowTemplate->name,
                             date(flowTemplate->createdAt), bytes(flowTemplate->payload)}
                     .join('|');
    QStringList records;
    for (const CompletionRecord *record : store.completionRecords())
        records << QStringList{QStringLiteral("record"), id(record->id), id(record->nodeID), id(record->flowID),
                               record->flowName, record->title, record->kindRaw, date(record->completedAt),
                               QString::number(record->cycle), bytes(record->payload.value())}
                       .join('|');
    records.sort();
    return lines + records;
}

// A store's worth of records that uses every field: optionals present and
// absent, all three edge forms, files with bytes (one trashed, with a link,
// and an empty thumbnail, which differs from none), links, unknown raw text,
// templates and both kinds of record. The flow with tasks comes first.
inline RecordBundle richBundle()
{
    const auto utc = [](int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
        return QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
    };
    RecordBundle bundle;
    auto flow = std::make_unique<TaskFlow>();
    flow->id = QUuid::createUuid();
    flow->name = QStringLiteral("Garden \"east\"");
    flow->order = 4;
    flow->createdAt = utc(2026, 3, 1, 8);
    flow->viewportOffsetX = -320.5;
    flow->viewportOffsetY = 88;
    flow->viewportScale = 0.75;
    flow->hasBeenFramed = true;

    auto full = std::make_unique<FlowNode>();
    full->id = QUuid::createUuid();
    full->title = QStringLiteral("Dig the beds ✓");
    full->isDone = true;
    full->statusRaw = QStringLiteral("paused");
    full->notes = QStringLiteral("Two lines\nof notes");
    full->priorityRaw = QStringLiteral("high");
    full->colorRaw = QStringLiteral("green");
    full->startDate = utc(2026, 3, 2, 23);
    full->dueDate = utc(2026, 3, 9, 23);
    full->estimateMinutes = 150;
    full->dayPlanRank = 3;
    full->manualWidth = 260.5;
    full->manualHeight = 140;
    full->checklistData = ChecklistCodec::encode({{QUuid::createUuid(), QStringLiteral("Spade"), true}});
    full->recurrenceRaw = QStringLiteral("weekly");
    full->repeatCount = 5;
    full->completedAt = utc(2026, 3, 4, 17, 30, 12);
    full->isCollapsed = true;
    full->posX = -1200.25;
    full->posY = 310;
    full->order = 7;
    full->createdAt = utc(2026, 3, 1, 8, 0, 1);

    auto bare = std::make_unique<FlowNode>();
    bare->id = QUuid::createUuid();
    bare->title = QStringLiteral("Sow");
    bare->order = 8;
    bare->createdAt = utc(2026, 3, 1, 8, 0, 2);

    auto third = std::make_unique<FlowNode>();
    third->id = QUuid::createUuid();
    third->title = QStringLiteral("Water");
    third->statusRaw = QStringLiteral("inProgress");
    third->colorRaw = QStringLiteral("mystery-colour");
    third->order = 9;
    third->createdAt = utc(2026, 3, 1, 8, 0, 3);

    FlowNode *a = flow->items().add(std::move(full));
    FlowNode *b = flow->items().add(std::move(bare));
    FlowNode *c = flow->items().add(std::move(third));
    for (FlowNode *node : {a, b, c})
        node->setFlow(flow.get());
    const auto edge = [&](FlowNode *from, FlowNode *to, EdgeSource source, std::optional<EdgeKind> kind, int s) {
        auto made = std::make_unique<DependencyEdge>();
        made->id = QUuid::createUuid();
        made->source = source;
        made->kind = kind;
        made->createdAt = utc(2026, 3, 1, 9, 0, s);
        made->setFlow(flow.get());
        made->setFromItem(from);
        made->setToItem(to);
        flow->edges().add(std::move(made));
    };
    edge(a, b, EdgeSource::manual, EdgeKind::subtask, 1);
    edge(b, c, EdgeSource::ai, EdgeKind::dependency, 2);
    edge(a, c, EdgeSource::manual, std::nullopt, 3);

    const auto file = [&](const QString &name, bool trashed, std::optional<double> width) {
        auto made = std::make_unique<FlowFile>();
        made->id = QUuid::createUuid();
        made->filename = name;
        made->contentTypeRaw = QStringLiteral("image/png");
        made->byteCount = 4;
        made->data.set(QByteArray("\x00\x01\x02\xff", 4));
        made->thumbnail.set(trashed ? QByteArray() : QByteArray("thumb"));
        made->isTrashed = trashed;
        made->posX = 500;
        made->posY = -40.5;
        made->manualWidth = width;
        made->manualHeight = width;
        made->order = trashed ? 1 : 0;
        made->createdAt = utc(2026, 3, 1, 10);
        made->setFlow(flow.get());
        return flow->files().add(std::move(made));
    };
    FlowFile *kept = file(QStringLiteral("plan.png"), false, 200);
    FlowFile *trashed = file(QStringLiteral("old.png"), true, std::nullopt);
    for (auto [attached, node] : {std::pair{kept, a}, std::pair{kept, c}, std::pair{trashed, b}}) {
        auto link = std::make_unique<FileLink>();
        link->id = QUuid::createUuid();
        link->createdAt = utc(2026, 3, 1, 11);
        link->setFlow(flow.get());
        link->setFile(attached);
        link->setNode(node);
        FileLink *added = flow->fileLinks().add(std::move(link));
        attached->links().append(added);
        node->fileLinks().append(added);
    }
    const QUuid flowID = flow->id;
    bundle.flows.push_back(std::move(flow));

    auto empty = std::make_unique<TaskFlow>();
    empty->id = QUuid::createUuid();
    empty->name = QStringLiteral("Empty");
    empty->order = 2;
    empty->createdAt = utc(2026, 3, 2, 8);
    bundle.flows.push_back(std::move(empty));

    auto withPayload = std::make_unique<FlowTemplate>();
    withPayload->id = QUuid::createUuid();
    withPayload->name = QStringLiteral("Weekly");
    withPayload->createdAt = utc(2026, 3, 5);
    withPayload->payload = QByteArray(R"({"version":1,"name":"Weekly","items":[],"edges":[]})");
    bundle.templates.push_back(std::move(withPayload));
    auto withoutPayload = std::make_unique<FlowTemplate>();
    withoutPayload->id = QUuid::createUuid();
    withoutPayload->name = QStringLiteral("Blank");
    withoutPayload->createdAt = utc(2026, 3, 6);
    bundle.templates.push_back(std::move(withoutPayload));

    for (const QString &kind : {CompletionRecord::repeatKind, CompletionRecord::archivedKind}) {
        auto record = std::make_unique<CompletionRecord>();
        record->id = QUuid::createUuid();
        record->nodeID = QUuid::createUuid();
        record->flowID = flowID;
        record->flowName = QStringLiteral("Garden \"east\"");
        record->title = kind;
        record->kindRaw = kind;
        record->completedAt = utc(2026, 2, 20, 12);
        record->cycle = 2;
        if (kind == CompletionRecord::archivedKind)
            record->payload.set(QByteArray(R"({"title":"archived"})"));
        bundle.completionRecords.push_back(std::move(record));
    }
    return bundle;
}

// A store in a real file of a temporary folder, which tests can close and
// open again to see what really reached the disk.
class TestStore {
public:
    enum class Backing { file, memory };

    explicit TestStore(Backing backing = Backing::file) : clock(berlinTime(2026, 6, 10, 9, 0)), m_backing(backing)
    {
        reopen();
    }

    QString path() const
    {
        return m_backing == Backing::memory ? QString::fromLatin1(StoreDatabase::inMemoryPath)
                                            : folder.filePath(QStringLiteral("default.store"));
    }

    FenrowStore &reopen()
    {
        store.reset();
        QString error;
        store = FenrowStore::open(StoreDatabase::open(path(), &error), clock, LocalCalendar(berlin()), &error);
        if (!store)
            ADD_FAILURE() << "cannot open the test store: " << error.toStdString();
        return *store;
    }

    FenrowStore *operator->() const { return store.get(); }
    FenrowStore &operator*() { return *store; }

    QTemporaryDir folder;
    FixedClock clock;
    std::unique_ptr<FenrowStore> store;

private:
    Backing m_backing;
};

// A flow with named nodes, for graph and readiness tests.
class FlowFixture : public ::testing::Test {
protected:
    FlowFixture() : store(TestStore::Backing::memory) { flow = store->addFlow(QStringLiteral("Test")); }

    const FlowNode &add(const QString &title)
    {
        const FlowNode *node = store->addNode(title, *flow);
        nodes.insert(title, node);
        return *node;
    }
    // Adds nodes named by the letters of `titles`, in order.
    void addAll(const QString &titles)
    {
        for (QChar letter : titles)
            add(QString(letter));
    }
    const FlowNode &operator[](const QString &title) const { return *nodes.value(title); }
    const DependencyEdge &link(const QString &from, const QString &to, EdgeKind kind = EdgeKind::dependency)
    {
        return store->addEdge((*this)[from], (*this)[to], EdgeSource::manual, kind);
    }
    void done(const QString &title) { store->setStatus(NodeStatus::done, (*this)[title]); }
    static QStringList titles(const QList<const FlowNode *> &list)
    {
        QStringList result;
        for (const FlowNode *node : list)
            result << node->title;
        return result;
    }
    QStringList titles(const QSet<QUuid> &ids) const
    {
        QStringList result;
        for (auto it = nodes.begin(); it != nodes.end(); ++it)
            if (ids.contains(it.value()->id))
                result << it.key();
        result.sort();
        return result;
    }

    TestStore store;
    const TaskFlow *flow = nullptr;
    QMap<QString, const FlowNode *> nodes;
};

} // namespace fenrow::testing
