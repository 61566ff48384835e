#pragma once

#include "EngineCancel.h"
#include "InferenceTypes.h"

#include <QFuture>
#include <QFutureWatcher>
#include <QObject>
#include <QPromise>
#include <QThreadPool>

#include <functional>
#include <memory>

namespace fenrow {

template <typename T>
using EngineFuture = QFuture<EngineResult<T>>;

// Every machine inference goes through this interface, so graph logic never
// depends on a model. An operation starts on the calling thread, does its
// work on a worker of the global thread pool and hands back a future; use
// `EngineCall::whenDone` to get the answer back on the caller's thread
// before touching the store.
//
// Engines hold no mutable state and live in shared pointers: a running
// operation keeps its engine alive even after the environment has moved to
// another one.
class GraphInferenceEngine : public std::enable_shared_from_this<GraphInferenceEngine> {
public:
    virtual ~GraphInferenceEngine() = default;

    // Proposals that connect `newItem` to the existing items.
    EngineFuture<QList<EdgeProposal>> link(const ItemRef &newItem, const QList<ItemRef> &existing,
                                           const QString &language, EngineCancel cancel = {}) const;
    // Proposals among all the items.
    // Reports its progress in batches through the future.
    EngineFuture<QList<EdgeProposal>> relink(const QList<ItemRef> &items, const QString &language,
                                             EngineCancel cancel = {}) const;
    EngineFuture<ExtractedFlow> extractFlow(const QString &text, const QString &language,
                                            EngineCancel cancel = {}) const;
    // Subtask titles of `item`; `detail` is extra description, possibly empty.
    EngineFuture<QStringList> expand(const ItemRef &item, const QString &detail, const ExpansionContext &context,
                                     const QString &language, EngineCancel cancel = {}) const;
    // Minutes, one per title, in order.
    EngineFuture<QList<qint64>> estimate(const QStringList &titles, const ExpansionContext &context,
                                         const QString &language, EngineCancel cancel = {}) const;
    // Task ids in working order, from tasks given in urgency order.
    EngineFuture<QList<QUuid>> planDay(const QList<PlannableTask> &tasks, qint64 minutes, const QString &language,
                                       EngineCancel cancel = {}) const;

protected:
    // The work of each operation, run on a worker thread. Implementations
    // may block here, and must not touch the store. A long one looks at
    // `work` between its steps, and stops early once it is cancelled.
    virtual EngineResult<QList<EdgeProposal>> answerLink(const ItemRef &newItem, const QList<ItemRef> &existing,
                                                         const QString &language, const EngineWork &work) const = 0;
    virtual EngineResult<QList<EdgeProposal>> answerRelink(const QList<ItemRef> &items, const QString &language,
                                                           const EngineWork &work) const = 0;
    virtual EngineResult<ExtractedFlow> answerExtractFlow(const QString &text, const QString &language,
                                                          const EngineWork &work) const = 0;
    virtual EngineResult<QStringList> answerExpand(const ItemRef &item, const QString &detail,
                                                   const ExpansionContext &context, const QString &language,
                                                   const EngineWork &work) const = 0;
    virtual EngineResult<QList<qint64>> answerEstimate(const QStringList &titles, const ExpansionContext &context,
                                                       const QString &language, const EngineWork &work) const = 0;
    virtual EngineResult<QList<QUuid>> answerPlanDay(const QList<PlannableTask> &tasks, qint64 minutes,
                                                     const QString &language, const EngineWork &work) const = 0;

private:
    template <typename T>
    using Work = std::function<EngineResult<T>(const GraphInferenceEngine &, const EngineWork &)>;

    template <typename T>
    EngineFuture<T> onWorker(EngineCancel cancel, Work<T> work) const
    {
        // Shared so the pool's copyable task can carry it.
        auto promise = std::make_shared<QPromise<EngineResult<T>>>();
        EngineFuture<T> future = promise->future();
        promise->start();
        QThreadPool::globalInstance()->start([engine = shared_from_this(), promise, cancel, work = std::move(work)] {
            const auto progress = [promise](int done, int total) {
                promise->setProgressRange(0, total);
                promise->setProgressValue(done);
            };
            promise->addResult(work(*engine, EngineWork{cancel, progress}));
            promise->finish();
        });
        return future;
    }
};

namespace EngineCall {

// Calls `done` with the answer on `receiver`'s thread once the operation has
// finished; never if `receiver` is destroyed first. Call it on the thread
// `receiver` lives in.
template <typename T, typename Done>
void whenDone(const EngineFuture<T> &future, QObject *receiver, Done done)
{
    auto *watcher = new QFutureWatcher<EngineResult<T>>(receiver);
    QObject::connect(watcher, &QFutureWatcherBase::finished, receiver, [watcher, done = std::move(done)]() mutable {
        watcher->deleteLater();
        // A worker that never ran (a pool torn down at exit) leaves no
        // answer; the caller still hears of it.
        if (watcher->future().resultCount() == 0)
            done(EngineResult<T>(EngineError::generationFailed));
        else
            done(watcher->future().result());
    });
    watcher->setFuture(future);
}

// Calls `report` on `receiver`'s thread with the steps done and their total
// each time a long operation says how far it has come.
template <typename T, typename Report>
void whenProgress(const EngineFuture<T> &future, QObject *receiver, Report report)
{
    auto *watcher = new QFutureWatcher<EngineResult<T>>(receiver);
    QObject::connect(watcher, &QFutureWatcherBase::progressRangeChanged, receiver,
                     [watcher, report](int, int total) { report(watcher->progressValue(), total); });
    QObject::connect(watcher, &QFutureWatcherBase::progressValueChanged, receiver,
                     [watcher, report](int done) { report(done, watcher->progressMaximum()); });
    QObject::connect(watcher, &QFutureWatcherBase::finished, watcher, &QObject::deleteLater);
    watcher->setFuture(future);
}

} // namespace EngineCall

} // namespace fenrow
