#include "AttachCommand.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "PlainText.h"

#include "canvas/CanvasBounds.h"
#include "canvas/NodeSizeResolver.h"
#include "domain/FenrowStore.h"
#include "domain/FlowFileImport.h"
#include "formats/DocumentInput.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <optional>

namespace fenrow::AttachCommand {

namespace {

// Room between the rightmost card and the new one.
constexpr double cardGap = 40;

// Right of the rightmost card and level with it, where the new card covers
// none; the origin in an empty flow.
QPointF freeSpot(const TaskFlow &flow)
{
    std::optional<double> rightEdge;
    double level = 0;
    auto consider = [&](double x, double y, double width) {
        if (!rightEdge || x + width / 2 > *rightEdge) {
            rightEdge = x + width / 2;
            level = y;
        }
    };
    const NodeSizeResolver sizes;
    for (const FlowNode *node : flow.items())
        consider(node->posX, node->posY, sizes.resolve(*node).width);
    for (const FlowFile *file : FenrowStore::liveFiles(flow))
        consider(file->posX, file->posY, file->manualWidth.value_or(NodeSizeResolver::defaultSize.width));
    if (!rightEdge)
        return {0, 0};
    return {CanvasBounds::clampCoordinate(*rightEdge + cardGap + NodeSizeResolver::defaultSize.width / 2), level};
}

QString sizeText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeIecFormat);
}

// Why the file could not be read, as far as the file system tells.
QString unreadableReason(const UserPath &path)
{
    const QFileInfo info(path.absolute);
    const QString quoted = PlainText::quoted(path.typed);
    if (!info.exists())
        return QStringLiteral("there is no file %1").arg(quoted);
    if (info.isDir())
        return QStringLiteral("%1 is a folder; attach the files in it one by one").arg(quoted);
    if (!info.isFile())
        return QStringLiteral("%1 is not a regular file").arg(quoted);
    return QStringLiteral("%1 cannot be read").arg(quoted);
}

int attach(CommandContext &context)
{
    const TaskFlow *flow = CommandSupport::flowArgument(context, 0);
    if (!flow)
        return exitFailure;
    const UserPath path = context.userPath(context.argument(1));
    const std::variant<FlowFileImport::Payload, FlowFileImport::Failure> read = FlowFileImport::read(path.absolute);
    if (const auto *failure = std::get_if<FlowFileImport::Failure>(&read)) {
        if (const auto *tooLarge = std::get_if<FlowFileImport::TooLarge>(failure))
            return context.fail(QStringLiteral("%1 is larger than 20 MiB (it has %2)")
                                    .arg(PlainText::quoted(path.typed),
                                         DocumentInput::sizeText(tooLarge->byteCount, FlowFileImport::maxBytes)));
        return context.fail(unreadableReason(path));
    }

    FenrowStore &store = context.store();
    const QPointF spot = freeSpot(*flow);
    const FlowFile *file = store.attachFile(std::get<FlowFileImport::Payload>(read), spot.x(), spot.y(), *flow);

    if (context.json()) {
        context.printJson(QJsonObject{
            {QStringLiteral("id"), PlainText::id(file->id)},
            {QStringLiteral("filename"), file->filename},
            {QStringLiteral("contentType"), file->contentTypeRaw},
            {QStringLiteral("byteCount"), file->byteCount},
            {QStringLiteral("hasThumbnail"), file->thumbnail.isPresent()},
            {QStringLiteral("flowID"), PlainText::id(flow->id)},
            {QStringLiteral("flowName"), flow->name},
            {QStringLiteral("posX"), file->posX},
            {QStringLiteral("posY"), file->posY},
            {QStringLiteral("createdAt"), JsonOutput::dateTime(file->createdAt, store.calendar())},
        });
        return exitSuccess;
    }
    const QString type = file->contentTypeRaw.isEmpty() ? QStringLiteral("unknown type") : file->contentTypeRaw;
    context.out() << "Attached " << PlainText::quoted(file->filename) << " to flow " << PlainText::quoted(flow->name)
                  << ": " << type << ", " << sizeText(file->byteCount)
                  << (file->thumbnail.isPresent() ? ", with a preview" : "") << ".\n";
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addCommand({
        .name = QStringLiteral("attach"),
        .argumentsSyntax = QStringLiteral("FLOW FILE"),
        .summary = QStringLiteral("Copy a file into a flow, as a card on its canvas"),
        .description = CommandSupport::flowArgumentHelp
            + QStringLiteral(
                "\nThe flow keeps its own copy of the file's contents, up to 20 MiB; a larger\n"
                "file is refused before it is read. Pictures and PDF files get a preview.\n"
                "The card stands right of the rightmost card. With --json, the file's id,\n"
                "filename, contentType, byteCount, hasThumbnail, flowID, flowName, posX,\n"
                "posY and createdAt."),
        .minArguments = 2,
        .maxArguments = 2,
        .run = attach,
    });
}

} // namespace fenrow::AttachCommand
