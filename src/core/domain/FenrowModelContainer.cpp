#include "FenrowModelContainer.h"

#include "FenrowStore.h"
#include "persistence/StoreDatabase.h"
#include "persistence/StoreLock.h"
#include "persistence/StoreOwnership.h"

#include <QDir>
#include <QStandardPaths>

namespace fenrow {

bool FenrowModelContainer::usesMemory(const QStringList &arguments)
{
    return arguments.contains(QStringLiteral("--ui-test"));
}

QString FenrowModelContainer::storePath()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return QDir(folder).filePath(QString::fromLatin1(storeFileName));
}

std::unique_ptr<StoreDatabase> FenrowModelContainer::create(const QStringList &arguments, QString *error)
{
    if (usesMemory(arguments))
        return StoreDatabase::open(QString::fromLatin1(StoreDatabase::inMemoryPath), error);

    const QString path = storePath();
    // A failure here shows up, with a better reason, when the file opens.
    QDir().mkpath(QFileInfo(path).absolutePath());
    return StoreDatabase::open(path, error);
}

StoreOwnership::Claim FenrowModelContainer::claim(const StoreLockHolder &self,
                                                  const std::function<bool()> &ownerReachable)
{
    const QString path = storePath();
    // A failure here shows up, with a better reason, when the lock is made.
    QDir().mkpath(QFileInfo(path).absolutePath());
    return StoreOwnership::claim(path, self, ownerReachable);
}

std::unique_ptr<FenrowStore> FenrowModelContainer::openStore(const QStringList &arguments, const Clock &clock,
                                                             LocalCalendar calendar, QString *fatalMessage)
{
    QString reason;
    std::unique_ptr<FenrowStore> store;
    if (!usesMemory(arguments) && !StoreLock::isHeldHere(storePath())) {
        *fatalMessage = QString::fromLatin1(failurePrefix)
            + StoreOwnership::busyMessage(StoreLock::holder(storePath()));
        return nullptr;
    }
    if (auto database = create(arguments, &reason))
        store = FenrowStore::open(std::move(database), clock, std::move(calendar), &reason);
    if (!store)
        *fatalMessage = QString::fromLatin1(failurePrefix) + reason;
    return store;
}

} // namespace fenrow
