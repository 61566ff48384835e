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
