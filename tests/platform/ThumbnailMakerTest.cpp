#include "ThumbnailMaker.h"

#include <QBuffer>
#include <QColor>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

QByteArray encoded(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

FlowFileImport::Payload payload(const QByteArray &bytes, const QString &type)
{
    return {QStringLiteral("file"), type, bytes.size(), bytes};
}

// The thumbnail of `bytes`, decoded back from PNG; null when none was made.
QImage thumbnail(const QByteArray &bytes, const QString &type)
{
    const std::optional<QByteArray> png = ThumbnailMaker::make(payload(bytes, type));
    if (!png)
        return {};
    EXPECT_TRUE(png->startsWith("\x89PNG"));
    return QImage::fromData(*png, "PNG");
}

QImage filled(int width, int height, QColor colour)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

TEST(ThumbnailMaker, ImagesShrinkToTheLimitButNeverGrow)
{
    const QImage small = thumbnail(encoded(filled(200, 100, Qt::red), "PNG"), QStringLiteral("image/png"));
    EXPECT_EQ(small.size(), QSize(200, 100));
    EXPECT_EQ(small.pixelColor(100, 50), QColor(Qt::red));

    // The type only picks PDF out; images are known by their bytes.
    const QImage wide = thumbnail(encoded(filled(1280, 640, Qt::blue), "JPEG"), QString());
    EXPECT_EQ(wide.size(), QSize(640, 320));
    EXPECT_GT(wide.pixelColor(320, 160).blue(), 200);

    EXPECT_EQ(thumbnail(encoded(filled(100, 2000, Qt::white), "PNG"), QString()).size(), QSize(32, 640));
    EXPECT_EQ(thumbnail(encoded(filled(640, 640, Qt::white), "PNG"), QString()).size(), QSize(640, 640));
    EXPECT_EQ(ThumbnailMaker::fittedSize(QSize(3000, 1)), QSize(640, 1)) << "a side never rounds away";
    EXPECT_EQ(ThumbnailMaker::fittedSize(QSize(641, 3)), QSize(640, 3));
}

TEST(ThumbnailMaker, PdfShowsItsFirstPage)
{
    // Page one is white with a black upper half; page two is all black.
    QByteArray pdf;
    {
        QBuffer buffer(&pdf);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setResolution(72);
        QPainter painter(&writer);
        const QRect page = painter.viewport();
        painter.fillRect(QRect(0, 0, page.width(), page.height() / 2), Qt::black);
        writer.newPage();
        painter.fillRect(page, Qt::black);
    }
    ASSERT_TRUE(pdf.startsWith("%PDF"));

    const QImage picture = thumbnail(pdf, QStringLiteral("application/pdf"));
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(picture.height(), 640);
    EXPECT_NEAR(picture.width(), 640 * 210 / 297, 2);
    EXPECT_LT(picture.pixelColor(picture.width() / 2, picture.height() / 4).lightness(), 40);
    EXPECT_GT(picture.pixelColor(picture.width() / 2, picture.height() * 3 / 4).lightness(), 215);
}

TEST(ThumbnailMaker, BytesWithoutAPictureGiveNone)
{
    const QByteArray garbage("\x13\x37 definitely not a picture \x00\xff", 33);
    for (const QString &type : {QString(), QStringLiteral("image/png"), QStringLiteral("application/pdf"),
                                QStringLiteral("application/octet-stream")}) {
        EXPECT_FALSE(ThumbnailMaker::make(payload(garbage, type))) << type.toStdString();
        EXPECT_FALSE(ThumbnailMaker::make(payload({}, type))) << type.toStdString();
    }
    // A truncated PDF cannot be opened.
    EXPECT_FALSE(ThumbnailMaker::make(payload("%PDF-1.4\n1 0 obj\n<<", QStringLiteral("application/pdf"))));
}

} // namespace
} // namespace fenrow
