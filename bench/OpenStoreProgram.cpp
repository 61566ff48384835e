// fenrow-bench-open [--cold] STORE: opens a store file and nothing else, then
// prints one JSON line with the time taken and the process's resident
// memory. A process of its own, so that the memory figure holds the opened
// store alone and not what generated it. --cold first evicts the file from
// the page cache, as after a reboot.
#include "LargeStoreGenerator.h"
#include "ProcessMemory.h"

#include "persistence/StoreDatabase.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

// Only clean pages can be dropped: flush the file first. Touches this one
// file, not the rest of the machine's cache.
bool evictFromPageCache(const char *path)
{
    const int file = ::open(path, O_RDONLY);
    if (file < 0)
        return false;
    const bool evicted = ::fdatasync(file) == 0 && ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED) == 0;
    ::close(file);
    return evicted;
}

} // namespace

int main(int argc, char **argv)
{
    const bool cold = argc == 3 && qstrcmp(argv[1], "--cold") == 0;
    if (argc != (cold ? 3 : 2)) {
        std::fprintf(stderr, "usage: %s [--cold] STORE\n", argv[0]);
        return 2;
    }
    const char *path = argv[argc - 1];
    if (cold && !evictFromPageCache(path)) {
        std::fprintf(stderr, "cannot evict %s from the page cache\n", path);
        return 1;
    }
    const std::optional<ProcessMemory> before = ProcessMemory::read();

    QElapsedTimer timer;
    timer.start();
    QString error;
    std::unique_ptr<FenrowStore> store;
    if (auto database = StoreDatabase::open(QString::fromLocal8Bit(path), &error))
        store = FenrowStore::open(std::move(database), LargeStoreGenerator::clock(), LargeStoreGenerator::calendar(),
                                  &error);
    const double openMs = double(timer.nsecsElapsed()) / 1e6;
    if (!store) {
        std::fprintf(stderr, "cannot open %s: %s\n", path, qUtf8Printable(error));
        return 1;
    }

    const std::optional<ProcessMemory> after = ProcessMemory::read();
    if (!before || !after) {
        std::fprintf(stderr, "cannot read /proc/self/status\n");
        return 1;
    }
    const LargeStoreGenerator::Summary summary = LargeStoreGenerator::summarize(*store);
    const QJsonObject result{
        {QStringLiteral("openMs"), openMs},
        {QStringLiteral("baselineRssKiB"), before->residentKiB},
        {QStringLiteral("rssKiB"), after->residentKiB},
        {QStringLiteral("peakRssKiB"), after->peakResidentKiB},
        {QStringLiteral("flows"), summary.flows},
        {QStringLiteral("nodes"), summary.nodes},
        {QStringLiteral("edges"), summary.edges},
        {QStringLiteral("completionRecords"), summary.completionRecords},
    };
    std::printf("%s\n", QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
