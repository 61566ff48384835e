// Files attached to a flow: cards on the canvas, soft deletion, links to nodes.
// None of these operations reads a file's bytes: rows are written without
// them, and bytes that were not replaced are never rewritten.
#include "FenrowStore.h"

#include "Clock.h"
#include "RecordID.h"
#include "ValueLimits.h"

#include <algorithm>

namespace fenrow {

namespace {

const QString untitledFileName = QStringLiteral("Untitled file");

FileLink *linkBetween(const FlowFile &file, const FlowNode &node)
{
    for (FileLink *link : file.links()) {
        if (link->node() == &node)
            return link;
    }
    return nullptr;
}

// Takes the accepted links out of the flow and out of both ends' lists.
template <typename Predicate>
std::size_t dropLinks(TaskFlow *flow, PendingWrites &pending, Predicate accepts)
{
    return flow->fileLinks().removeIf(accepts, [&](FileLink *link) {
        if (FlowFile *file = link->file())
            file->links().removeOne(link);
        if (FlowNode *node = link->node())
            node->fileLinks().removeOne(link);
        pending.remove(link);
    });
}

} // namespace

const FlowFile *FenrowStore::attachFile(const FlowFileImport::Payload &payload, double x, double y,
                                        const TaskFlow &flow)
{
    TaskFlow *target = mutableFlow(flow);
    // Trashed files count: undo may bring them back, and orders stay unique.
    qint64 order = 0;
    if (!target->files().empty()) {
        order = target->files()[0]->order;
        for (const FlowFile *file : std::as_const(*target).files())
            order = std::max(order, file->order);
        ++order;
    }

    auto file = std::make_unique<FlowFile>();
    file->id = RecordID::make();
    file->filename = payload.filename.trimmed().isEmpty() ? untitledFileName : payload.filename;
    file->contentTypeRaw = payload.contentTypeRaw;
    file->byteCount = payload.byteCount;
    file->data.set(payload.data);
    // A file that cannot be pictured is still attached; its card shows an icon.
    if (m_thumbnailMaker) {
        if (std::optional<QByteArray> picture = m_thumbnailMaker(payload))
            file->thumbnail.set(std::move(picture));
    }
    // Callers hand in canvas points; only moves are clamped.
    file->posX = x;
    file->posY = y;
    file->order = order;
    file->createdAt = m_clock.now();
    file->setFlow(target);
    FlowFile *added = target->files().add(std::move(file));
    m_pending.write(added);
    finishChange();
    return added;
}

void FenrowStore::moveFile(const FlowFile &file, double x, double y)
{
    FlowFile *target = mut(file);
    const bool movedX = update(target, &FlowFile::posX, ValueLimits::coordinate(x));
    const bool movedY = update(target, &FlowFile::posY, ValueLimits::coordinate(y));
    if (movedX || movedY)
        finishChange();
}

void FenrowStore::setFileManualSize(const FlowFile &file, double width, double height)
{
    // A file card obeys the same size limits as a node card.
    const ValueLimits::ManualSize size = ValueLimits::manualSize(width, height);
    FlowFile *target = mut(file);
    const bool changedWidth = update(target, &FlowFile::manualWidth, size.width);
    const bool changedHeight = update(target, &FlowFile::manualHeight, size.height);
    if (changedWidth || changedHeight)
        finishChange();
}

void FenrowStore::resetFileSize(const FlowFile &file)
{
    FlowFile *target = mut(file);
    const bool changedWidth = update(target, &FlowFile::manualWidth, std::optional<double>());
    const bool changedHeight = update(target, &FlowFile::manualHeight, std::optional<double>());
    if (changedWidth || changedHeight)
        finishChange();
}

void FenrowStore::setFileTrashed(const FlowFile &file, bool trashed)
{
    // Trashing keeps the record, bytes and links, so undo can bring it back.
    if (update(mut(file), &FlowFile::isTrashed, trashed))
        finishChange();
}

void FenrowStore::purgeTrashedFiles(const TaskFlow &flow)
{
    purgeTrashedFiles(QList<const TaskFlow *>{&flow});
}

void FenrowStore::purgeTrashedFiles(const QList<const TaskFlow *> &flows)
{
    bool erased = false;
    for (const TaskFlow *flow : flows) {
        QSet<QUuid> trashed;
        for (const FlowFile *file : flow->files()) {
            if (file->isTrashed)
                trashed.insert(file->id);
        }
        if (trashed.isEmpty())
            continue;
        eraseFiles(mutableFlow(*flow), trashed);
        erased = true;
    }
    if (erased)
        finishChange();
}

void FenrowStore::eraseFiles(TaskFlow *flow, const QSet<QUuid> &ids)
{
    auto doomed = [&](const FlowFile *file) { return file && ids.contains(file->id); };
    // The link rows (and the bytes) go with the file rows by cascade.
    flow->fileLinks().removeIf([&](const FileLink &link) { return doomed(link.file()); },
                               [&](FileLink *link) {
                                   if (FlowNode *node = link->node())
                                       node->fileLinks().removeOne(link);
                                   m_pending.remove(link, false);
                               });
    flow->files().removeIf([&](const FlowFile &file) { return ids.contains(file.id); },
                           [&](FlowFile *file) { m_pending.remove(file); });
}

void FenrowStore::linkFile(const FlowFile &file, const FlowNode &node)
{
    TaskFlow *flow = mut(file)->flow();
    // A line never crosses flows, and a pair has at most one.
    if (!flow || node.flow() != flow || linkBetween(file, node))
        return;
    auto link = std::make_unique<FileLink>();
    link->id = RecordID::make();
    link->createdAt = m_clock.now();
    link->setFlow(flow);
    link->setFile(mut(file));
    link->setNode(mut(node));
    FileLink *added = flow->fileLinks().add(std::move(link));
    mut(file)->links().append(added);
    mut(node)->fileLinks().append(added);
    m_pending.write(added);
    finishChange();
}

void FenrowStore::unlinkFile(const FlowFile &file, const FlowNode &node)
{
    const FileLink *doomed = linkBetween(file, node);
    if (!doomed)
        return;
    dropLinks(mut(file)->flow(), m_pending, [&](const FileLink &link) { return &link == doomed; });
    finishChange();
}

void FenrowStore::unlinkAll(const FlowFile &file)
{
    if (file.links().isEmpty())
        return;
    const FlowFile *owner = &file;
    dropLinks(mut(file)->flow(), m_pending, [&](const FileLink &link) { return link.file() == owner; });
    finishChange();
}

QList<const FlowFile *> FenrowStore::liveFiles(const TaskFlow &flow)
{
    QList<const FlowFile *> files;
    for (const FlowFile *file : flow.files()) {
        if (!file->isTrashed)
            files.append(file);
    }
    std::stable_sort(files.begin(), files.end(),
                     [](const FlowFile *a, const FlowFile *b) { return a->order < b->order; });
    return files;
}

QList<const FlowFile *> FenrowStore::linkedFiles(const FlowNode &node)
{
    QList<const FileLink *> links;
    for (const FileLink *link : node.fileLinks()) {
        if (link->file() && !link->file()->isTrashed)
            links.append(link);
    }
    std::stable_sort(links.begin(), links.end(),
                     [](const FileLink *a, const FileLink *b) { return a->createdAt < b->createdAt; });
    QList<const FlowFile *> files;
    files.reserve(links.size());
    for (const FileLink *link : links)
        files.append(link->file());
    return files;
}

void FenrowStore::setThumbnailMaker(std::function<std::optional<QByteArray>(const FlowFileImport::Payload &)> maker)
{
    m_thumbnailMaker = std::move(maker);
}

} // namespace fenrow
