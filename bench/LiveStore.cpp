#include "LiveStore.h"

#include "GeneratedStores.h"
#include "LargeStoreGenerator.h"

#include "persistence/StoreDatabase.h"

#include <map>

namespace fenrow::bench {

LiveStore *LiveStore::of(const LargeStoreShape &shape, QString *error)
{
    static std::map<LargeStoreShape, std::unique_ptr<LiveStore>> stores;
    std::unique_ptr<LiveStore> &live = stores[shape];
    if (live)
        return live.get();
    auto made = std::make_unique<LiveStore>();
    made->path = GeneratedStores::workingCopy(shape, made->folder.path(), error);
    if (made->path.isEmpty())
        return nullptr;
    made->store = open(made->path, error);
    if (!made->store)
        return nullptr;
    live = std::move(made);
    return live.get();
}

std::unique_ptr<FenrowStore> LiveStore::open(const QString &path, QString *error)
{
    std::unique_ptr<StoreDatabase> database = StoreDatabase::open(path, error);
    if (!database)
        return nullptr;
    return FenrowStore::open(std::move(database), LargeStoreGenerator::clock(), LargeStoreGenerator::calendar(), error);
}

bool LiveStore::reopen(QString *error)
{
    store.reset();
    store = open(path, error);
    return store != nullptr;
}

} // namespace fenrow::bench
