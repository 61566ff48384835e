#include "GeneratedStores.h"

#include "LargeStoreGenerator.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

namespace fenrow::bench {

namespace {

// Part of cached file names: bump it when the generator's output changes,
// so that stale stores are not measured.
constexpr int generatorRevision = 1;

QString fileName(const LargeStoreShape &shape)
{
    return QStringLiteral("large-store-r%1-%2f-%3n-%4e-%5c-%6a.store")
        .arg(generatorRevision)
        .arg(shape.flows)
        .arg(shape.nodes)
        .arg(shape.edges)
        .arg(shape.completionRecords)
        .arg(shape.files);
}

QString storeFolder(QString *error)
{
    const QString cache = qEnvironmentVariable("FENROW_BENCH_CACHE");
    if (!cache.isEmpty()) {
        if (!QDir().mkpath(cache)) {
            *error = QStringLiteral("cannot create %1").arg(cache);
            return {};
        }
        return cache;
    }
    static QTemporaryDir processFolder(QDir::temp().filePath(QStringLiteral("fenrow-bench-XXXXXX")));
    if (!processFolder.isValid()) {
        *error = QStringLiteral("cannot create a temporary folder: %1").arg(processFolder.errorString());
        return {};
    }
    return processFolder.path();
}

} // namespace

double GeneratedStores::scale()
{
    bool ok = false;
    const double value = qEnvironmentVariable("FENROW_BENCH_SCALE").toDouble(&ok);
    return ok && value > 0 ? value : 1.0;
}

LargeStoreShape GeneratedStores::scaledShape()
{
    return LargeStoreShape::scaled(scale());
}

QString GeneratedStores::pristine(const LargeStoreShape &shape, QString *error)
{
    const QString folder = storeFolder(error);
    if (folder.isEmpty())
        return {};
    const QString path = QDir(folder).filePath(fileName(shape));
    if (QFile::exists(path))
        return path;

    // Written under another name and renamed when complete, so that an
    // interrupted run never leaves a half store for the next one to use.
    const QString partial = path + QStringLiteral(".%1.partial").arg(QCoreApplication::applicationPid());
    LargeStoreGenerator generator(shape);
    LargeStoreGenerator::Timings timings;
    QElapsedTimer timer;
    timer.start();
    if (!generator.writeStore(partial, error, &timings))
        return {};
    // Another process may have finished the same store meanwhile: use theirs.
    if (!QFile::rename(partial, path) && !(QFile::exists(path) && QFile::remove(partial))) {
        *error = QStringLiteral("cannot move %1 into place").arg(partial);
        return {};
    }
    std::fprintf(stderr, "Generated %d nodes, %d edges in %.0f ms (records %.0f ms, insert and save %.0f ms): %s\n",
                 shape.nodes, shape.edges, double(timer.nsecsElapsed()) / 1e6, timings.buildMs, timings.insertMs,
                 qUtf8Printable(path));
    return path;
}

QString GeneratedStores::workingCopy(const LargeStoreShape &shape, const QString &folder, QString *error)
{
    const QString source = pristine(shape, error);
    if (source.isEmpty())
        return {};
    const QString copy = QDir(folder).filePath(fileName(shape));
    QFile::remove(copy);
    if (!QFile::copy(source, copy)) {
        *error = QStringLiteral("cannot copy %1 to %2").arg(source, folder);
        return {};
    }
    return copy;
}

} // namespace fenrow::bench
