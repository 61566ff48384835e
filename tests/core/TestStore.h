#pragma once

#include "domain/FenrowStore.h"
#include "domain/FixedClock.h"
#include "persistence/StoreDatabase.h"

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
