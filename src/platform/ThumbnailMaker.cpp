#include "ThumbnailMaker.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QLoggingCategory>
#include <QMimeDatabase>

#include <poppler-qt6.h>

#include <algorithm>
#include <cmath>
#include <mutex>

// Off unless asked for: a damaged PDF is not worth a line on stderr.
Q_LOGGING_CATEGORY(fenrowPdfLog, "fenrow.files.pdf", QtWarningMsg)

namespace fenrow {

namespace {

void logPopplerMessage(const QString &message, const QVariant &)
{
    qCDebug(fenrowPdfLog, "%s", qUtf8Printable(message));
}

bool isPdf(const QString &contentType)
{
    const QMimeType type = QMimeDatabase().mimeTypeForName(contentType);
    return type.isValid() && type.inherits(QStringLiteral("application/pdf"));
}

QImage firstPage(const QByteArray &data)
{
    static std::once_flag quieted;
    std::call_once(quieted, [] { Poppler::setDebugErrorFunction(logPopplerMessage, {}); });
    const std::unique_ptr<Poppler::Document> document = Poppler::Document::loadFromData(data);
    if (!document || document->isLocked() || document->numPages() < 1)
        return {};
    const std::unique_ptr<Poppler::Page> page = document->page(0);
    if (!page)
        return {};
    const QSizeF points = page->pageSizeF();
    const double longer = std::max(points.width(), points.height());
    if (!(longer > 0))
        return {};
    document->setRenderHint(Poppler::Document::Antialiasing);
    document->setRenderHint(Poppler::Document::TextAntialiasing);
    // Render at about the final size rather than scaling down a huge bitmap.
    const double dpi = ThumbnailMaker::maxSide * 72.0 / longer;
    return page->renderToImage(dpi, dpi);
}

QImage decodedImage(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    // Photos from cameras are often stored sideways with a note to turn them.
    reader.setAutoTransform(true);
    return reader.read();
}

} // namespace

QSize ThumbnailMaker::fittedSize(QSize size)
{
    const double scale = std::min(1.0, double(maxSide) / std::max(size.width(), size.height()));
    return {std::max(1, int(std::lround(size.width() * scale))), std::max(1, int(std::lround(size.height() * scale)))};
}

std::optional<QByteArray> ThumbnailMaker::make(const FlowFileImport::Payload &payload)
{
    QImage picture = isPdf(payload.contentTypeRaw) ? firstPage(payload.data) : decodedImage(payload.data);
    if (picture.isNull())
        return std::nullopt;
    const QSize size = fittedSize(picture.size());
    if (size != picture.size())
        picture = picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);

    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "PNG"))
        return std::nullopt;
    return png;
}

} // namespace fenrow
