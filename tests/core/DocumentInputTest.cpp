#include "formats/DocumentInput.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace fenrow {
namespace {

QString describeRead(const QString &path, qint64 limit)
{
    const auto read = DocumentInput::read(path, limit);
    if (const auto *refusal = std::get_if<DocumentInput::Refusal>(&read))
        return DocumentInput::describe(*refusal, QFileInfo(path).fileName());
    return QStringLiteral("read %1 bytes").arg(std::get<QByteArray>(read).size());
}

// Whatever a user points at, the answer comes at once and reads nothing
// that has no end.
TEST(DocumentInput, OnlyRegularFilesUpToTheLimitAreRead)
{
    QTemporaryDir folder;
    const QString fifo = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString file = folder.filePath("outline.opml");
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(QByteArray(1025, 'x'));
    }
    EXPECT_EQ(describeRead(file, 2048), "read 1025 bytes");
    EXPECT_EQ(describeRead(file, 1025), "read 1025 bytes");
    EXPECT_EQ(describeRead(file, 1024), "\"outline.opml\" is larger than 1.0 KiB (it has 1,025 bytes)");
    EXPECT_EQ(describeRead(file, 512), "\"outline.opml\" is larger than 512 bytes (it has 1.0 KiB)");
    EXPECT_EQ(describeRead(folder.filePath("nothing.opml"), 2048), "there is no file \"nothing.opml\"");
    EXPECT_EQ(describeRead(folder.path(), 2048),
              QStringLiteral("\"%1\" is a folder, not a file").arg(QFileInfo(folder.path()).fileName()));
    for (const QString &special : {fifo, QStringLiteral("/dev/zero")})
        EXPECT_TRUE(describeRead(special, 2048).endsWith("is not a regular file (a device or a pipe cannot be read "
                                                         "as a document)"))
            << describeRead(special, 2048).toStdString();
}

TEST(DocumentInput, SizesAreExactWhereRoundingWouldHideTheDifference)
{
    const qint64 limit = qint64(20) << 20;
    EXPECT_EQ(DocumentInput::sizeText(limit + 1, limit), "20,971,521 bytes");
    EXPECT_EQ(DocumentInput::sizeText(limit, limit), "20.0 MiB");
    EXPECT_EQ(DocumentInput::sizeText(limit * 2, limit), "40.0 MiB");
    EXPECT_EQ(DocumentInput::sizeText(limit + 1, limit, QLocale(QLocale::German)), "20.971.521 B");
}

} // namespace
} // namespace fenrow
