#include "TestStore.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <sqlite3.h>

namespace fenrow {
namespace {

using testing::bytesReadByProcess;
using testing::FlowFixture;
using testing::TestStore;
using ImportResult = std::variant<FlowFileImport::Payload, FlowFileImport::Failure>;

class FileImport : public ::testing::Test {
protected:
    // A file of `size` zero bytes when `bytes` is empty, sparse so that it
    // takes no room on disk.
    QString write(const QString &name, const QByteArray &bytes, qint64 size = 0)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_TRUE(bytes.isEmpty() ? file.resize(size) : file.write(bytes) == bytes.size());
        return file.fileName();
    }
    static FlowFileImport::Payload payload(const ImportResult &result)
    {
        EXPECT_TRUE(std::holds_alternative<FlowFileImport::Payload>(result));
        const auto *payload = std::get_if<FlowFileImport::Payload>(&result);
        return payload ? *payload : FlowFileImport::Payload{};
    }
    QString typeOf(const QString &name, const QByteArray &bytes)
    {
        return payload(read(write(name, bytes))).contentTypeRaw;
    }
    static ImportResult read(const QString &path) { return FlowFileImport::read(path); }

    QTemporaryDir folder;
};

TEST_F(FileImport, SizeLimitIsCheckedBeforeReading)
{
    const FlowFileImport::Payload exact = payload(read(write(QStringLiteral("exact.bin"), {}, 20971520)));
    EXPECT_EQ(exact.byteCount, 20971520);
    EXPECT_EQ(exact.data.size(), 20971520);

    const QString larger = write(QStringLiteral("larger.bin"), {}, 20971521);
    const qint64 before = bytesReadByProcess();
    const ImportResult result = read(larger);
    const qint64 after = bytesReadByProcess();
    const auto *failure = std::get_if<FlowFileImport::Failure>(&result);
    ASSERT_TRUE(failure && std::holds_alternative<FlowFileImport::TooLarge>(*failure));
    EXPECT_EQ(std::get<FlowFileImport::TooLarge>(*failure).byteCount, 20971521);
    ASSERT_GE(before, 0);
    EXPECT_LT(after - before, 65536) << "the refused file was read";
}

TEST_F(FileImport, NamesTypesAndUnreadablePaths)
{
    const FlowFileImport::Payload noise =
        payload(read(write(QStringLiteral("blob"), QByteArray("\x01\xfe\x00\x9c", 4))));
    EXPECT_EQ(noise.filename, QStringLiteral("blob"));
    EXPECT_EQ(noise.byteCount, 4);
    EXPECT_EQ(noise.contentTypeRaw, QString()) << "unknown bytes without extension show the generic icon";
    EXPECT_EQ(typeOf(QStringLiteral("unknown.zzqx"), QByteArray("\x01\x00", 2)), QString());
    EXPECT_EQ(payload(read(write(QStringLiteral("empty"), {}))).contentTypeRaw, QString());

    // By name, else by content.
    EXPECT_EQ(typeOf(QStringLiteral("Report 2026.pdf"), "%PDF-1.4\n"), QStringLiteral("application/pdf"));
    EXPECT_EQ(typeOf(QStringLiteral("scan"), QByteArray("\x89PNG\r\n\x1a\n", 8)), QStringLiteral("image/png"));
    EXPECT_EQ(typeOf(QStringLiteral("notes"), "Plain words.\n"), QStringLiteral("text/plain"));

    for (const QString &path : {folder.filePath(QStringLiteral("absent.txt")), folder.path()}) {
        const ImportResult result = read(path);
        const auto *failure = std::get_if<FlowFileImport::Failure>(&result);
        EXPECT_TRUE(failure && std::holds_alternative<FlowFileImport::Unreadable>(*failure)) << path.toStdString();
    }
}

FlowFileImport::Payload namedPayload(const QString &name, const QByteArray &bytes = "bytes")
{
    return {name, QStringLiteral("text/plain"), bytes.size(), bytes};
}

class StoreFiles : public FlowFixture {
protected:
    const FlowFile &attach(const QString &name, double x = 0, double y = 0)
    {
        return *store->attachFile(namedPayload(name), x, y, *flow);
    }
    static QStringList names(const QList<const FlowFile *> &files)
    {
        QStringList result;
        for (const FlowFile *file : files)
            result << file->filename;
        return result;
    }
};

TEST_F(StoreFiles, AttachNamesOrdersAndPictures)
{
    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    const FlowFile &untitled = attach(QStringLiteral("  "), 30000, -25000);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_FALSE(store->hasChanges());
    EXPECT_EQ(untitled.filename, QStringLiteral("Untitled file"));
    EXPECT_EQ(untitled.order, 0);
    EXPECT_EQ(untitled.posX, 30000) << "attaching does not clamp";
    EXPECT_EQ(untitled.data.value(), QByteArray("bytes"));
    EXPECT_FALSE(untitled.thumbnail.isPresent());

    // A trashed file still counts for the next order.
    store->setFileTrashed(attach(QStringLiteral("second.txt")), true);
    EXPECT_EQ(attach(QStringLiteral("third.txt")).order, 2);

    store->setThumbnailMaker([](const FlowFileImport::Payload &payload) -> std::optional<QByteArray> {
        if (payload.filename.endsWith(QStringLiteral(".png")))
            return QByteArray("picture");
        return std::nullopt;
    });
    EXPECT_EQ(attach(QStringLiteral("photo.png")).thumbnail.value(), QByteArray("picture"));
    EXPECT_FALSE(attach(QStringLiteral("notes.txt")).thumbnail.isPresent());
}

TEST_F(StoreFiles, MovesAndSizesClampAndCompareFirst)
{
    const FlowFile &file = attach(QStringLiteral("a.txt"));
    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    store->moveFile(file, 30000, -30000);
    store->moveFile(file, 25000, -20000);
    EXPECT_EQ(QPointF(file.posX, file.posY), QPointF(20000, -20000));
    store->setFileManualSize(file, 100, 1000);
    store->setFileManualSize(file, 120, 400);
    EXPECT_EQ(file.manualWidth, 150.0);
    EXPECT_EQ(file.manualHeight, 360.0);
    store->resetFileSize(file);
    store->resetFileSize(file);
    EXPECT_FALSE(file.manualWidth || file.manualHeight);
    EXPECT_EQ(changed.count(), 3) << "writes that change nothing neither save nor signal";
}

TEST_F(StoreFiles, LinksAreOnePerPairAndComeOffCleanly)
{
    const FlowFile &file = attach(QStringLiteral("brief.pdf"));
    const FlowFile &second = attach(QStringLiteral("second.txt"));
    const FlowNode &task = add(QStringLiteral("Task"));
    const FlowNode &other = add(QStringLiteral("Other"));
    const FlowNode *stranger = store->addNode(QStringLiteral("Stranger"), *store->addFlow(QStringLiteral("Elsewhere")));
    QSignalSpy changed(store.store.get(), &FenrowStore::changed);

    store->linkFile(file, task);
    store->linkFile(file, task);
    store->linkFile(file, *stranger);
    EXPECT_EQ(changed.count(), 1) << "one link per pair, none across flows";
    ASSERT_EQ(flow->fileLinks().size(), 1u);
    ASSERT_EQ(file.links().size(), 1);
    EXPECT_EQ(file.links()[0], flow->fileLinks()[0]);
    EXPECT_EQ(task.fileLinks(), file.links());
    EXPECT_EQ(file.links()[0]->createdAt, store.clock.now());

    store->linkFile(file, other);
    store->linkFile(second, other);
    store->unlinkFile(file, task);
    store->unlinkFile(file, task);
    EXPECT_TRUE(task.fileLinks().isEmpty());
    EXPECT_EQ(flow->fileLinks().size(), 2u);
    store->unlinkAll(file);
    store->unlinkAll(file);
    EXPECT_TRUE(file.links().isEmpty());
    EXPECT_EQ(names(FenrowStore::linkedFiles(other)), QStringList({"second.txt"}));
    EXPECT_EQ(flow->fileLinks().size(), 1u);
    EXPECT_EQ(changed.count(), 5);
}

TEST_F(StoreFiles, TrashKeepsLinksAndPurgeTakesThemAlong)
{
    const FlowFile &kept = attach(QStringLiteral("kept.txt"));
    const FlowFile &doomed = attach(QStringLiteral("doomed.txt"));
    const FlowNode &task = add(QStringLiteral("Task"));
    store->linkFile(kept, task);
    store->linkFile(doomed, task);
    QSignalSpy changed(store.store.get(), &FenrowStore::changed);

    store->setFileTrashed(doomed, true);
    store->setFileTrashed(doomed, true);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_FALSE(store->hasChanges());
    EXPECT_EQ(task.fileLinks().size(), 2) << "a trashed file keeps its links for undo";
    EXPECT_EQ(names(FenrowStore::linkedFiles(task)), QStringList({"kept.txt"}));
    EXPECT_EQ(names(FenrowStore::liveFiles(*flow)), QStringList({"kept.txt"}));

    store->purgeTrashedFiles(*flow);
    store->purgeTrashedFiles(*flow);
    EXPECT_EQ(changed.count(), 2);
    ASSERT_EQ(flow->files().size(), 1u);
    EXPECT_EQ(flow->files()[0], &kept);
    ASSERT_EQ(flow->fileLinks().size(), 1u);
    ASSERT_EQ(task.fileLinks().size(), 1);
    EXPECT_EQ(task.fileLinks()[0], flow->fileLinks()[0]);
    EXPECT_EQ(kept.links(), task.fileLinks());

    // Several flows at once are one change, so one save.
    const TaskFlow *other = store->addFlow(QStringLiteral("Other"));
    store->setFileTrashed(*store->attachFile(namedPayload(QStringLiteral("there.txt")), 0, 0, *other), true);
    store->setFileTrashed(kept, true);
    changed.clear();
    store->purgeTrashedFiles(store->flows());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(flow->files().empty());
    EXPECT_TRUE(other->files().empty());
}

TEST_F(StoreFiles, LiveFilesByOrderLinkedFilesByLinkTime)
{
    // Orders out of list sequence, as a restore may bring them.
    RecordBundle bundle;
    auto seeded = std::make_unique<TaskFlow>();
    seeded->id = QUuid::createUuid();
    for (const auto &[name, order] : {std::pair("c", 5), std::pair("a", 1), std::pair("x", 2), std::pair("b", 3)}) {
        auto file = std::make_unique<FlowFile>();
        file->id = QUuid::createUuid();
        file->filename = QString::fromLatin1(name);
        file->order = order;
        file->isTrashed = file->filename == QLatin1String("x");
        file->setFlow(seeded.get());
        seeded->files().add(std::move(file));
    }
    const TaskFlow *target = seeded.get();
    bundle.flows.push_back(std::move(seeded));
    store->insertRecords(std::move(bundle));
    EXPECT_EQ(names(FenrowStore::liveFiles(*target)), QStringList({"a", "b", "c"}));

    // Each link made earlier than the one before it, as undo may recreate them.
    const FlowNode *task = store->addNode(QStringLiteral("Task"), *target);
    for (const FlowFile *file : target->files()) {
        store->linkFile(*file, *task);
        store.clock.advanceSeconds(-60);
    }
    EXPECT_EQ(names(FenrowStore::linkedFiles(*task)), QStringList({"b", "a", "c"}));
}

// Bytes stay in their own tables: a reopened store reads them only on
// request, and edits to the row never load or rewrite them.
TEST(FileBytes, StayOnDiskUntilAskedFor)
{
    TestStore store;
    const QByteArray contents(4096, 'z');
    const QUuid flowID = store->addFlow(QStringLiteral("Files"))->id;
    const QUuid taskID = store->addNode(QStringLiteral("Task"), *store->flow(flowID))->id;
    store->setThumbnailMaker([](const FlowFileImport::Payload &) { return std::optional<QByteArray>("png"); });
    store->attachFile(namedPayload(QStringLiteral("big.bin"), contents), 10, 20, *store->flow(flowID));
    auto reopened = [&]() -> const FlowFile & { return *store.reopen().flow(flowID)->files()[0]; };

    const FlowFile *file = &reopened();
    EXPECT_TRUE(file->data.isPresent());
    store->setFileTrashed(*file, true);
    store->setFileTrashed(*file, false);
    store->moveFile(*file, 40, 50);
    store->linkFile(*file, *store->node(taskID));
    EXPECT_FALSE(file->data.isLoaded()) << "a row edit loaded the bytes";
    EXPECT_FALSE(file->thumbnail.isLoaded());

    file = &reopened();
    EXPECT_EQ(file->posX, 40);
    EXPECT_EQ(file->links().size(), 1);
    EXPECT_EQ(file->data.value(), contents);
    EXPECT_FALSE(file->thumbnail.isLoaded()) << "each kind of bytes is read by itself";
    EXPECT_EQ(file->thumbnail.value(), QByteArray("png"));

    // The file's own row has no room for bytes at all.
    sqlite3 *db = nullptr;
    ASSERT_EQ(sqlite3_open(store.path().toUtf8().constData(), &db), SQLITE_OK);
    sqlite3_stmt *query = nullptr;
    sqlite3_prepare_v2(db, "SELECT count(*) FROM pragma_table_info('flow_file') WHERE type = 'BLOB' AND name <> 'id'"
                           " AND name <> 'flow_id'",
                       -1, &query, nullptr);
    ASSERT_EQ(sqlite3_step(query), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(query, 0), 0);
    sqlite3_finalize(query);
    sqlite3_close(db);

    // A purged file leaves neither its row nor its links behind.
    store->setFileTrashed(*file, true);
    store->purgeTrashedFiles(*file->flow());
    store.reopen();
    EXPECT_TRUE(store->flow(flowID)->files().empty());
    EXPECT_TRUE(store->node(taskID)->fileLinks().isEmpty());
}

} // namespace
} // namespace fenrow
