// fenrow-bench-open STORE: opens a store file and nothing else, then prints
// one JSON line with the time taken and the process's resident memory. A
// process of its own, so that the memory figure holds the opened store
// alone and not what generated it.
#include "LargeStoreGenerator.h"
#include "ProcessMemory.h"

#include "persistence/StoreDatabase.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

using namespace fenrow;
using namespace fenrow::bench;

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s STORE\n", argv[0]);
        return 2;
    }
    const std::optional<ProcessMemory> before = ProcessMemory::read();

    QElapsedTimer timer;
    timer.start();
    QString error;
    std::unique_ptr<FenrowStore> store;
    if (auto database = StoreDatabase::open(QString::fromLocal8Bit(argv[1]), &error))
        store = FenrowStore::open(std::move(database), LargeStoreGenerator::clock(), LargeStoreGenerator::calendar(),
                                  &error);
    const double openMs = double(timer.nsecsElapsed()) / 1e6;
    if (!store) {
        std::fprintf(stderr, "cannot open %s: %s\n", argv[1], qUtf8Printable(error));
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
