#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include "domain/FlowFileImport.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

class AttachCommandTest : public CommandLineTest {
protected:
    AttachCommandTest() { addFlows({"Home"}); }

    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path;
    }
};

TEST_F(AttachCommandTest, AttachesCopiesSideBySideWithAPreview)
{
    // One red pixel.
    const QByteArray png = QByteArray::fromBase64(
        "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8z8DwHwAFBQIAX8jx0gAAAABJRU5ErkJggg==");
    const QString picture = write("dot.png", png);
    const CommandResult attached = run({"attach", "home", picture});
    EXPECT_EQ(attached.status, exitSuccess) << attached.err.toStdString();
    EXPECT_EQ(attached.out, QStringLiteral("Attached \"dot.png\" to flow \"Home\": image/png, %1 bytes, with a "
                                           "preview.\n")
                                .arg(png.size()));

    const QJsonObject second =
        QJsonDocument::fromJson(run({"attach", "home", write("notes", "plain words\n"), "--json"}).out.toUtf8())
            .object();
    EXPECT_FALSE(second["hasThumbnail"].toBool());

    auto store = openStore();
    const QList<const FlowFile *> files = FenrowStore::liveFiles(*store->flows().first());
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(files[0]->data.value(), png);
    EXPECT_TRUE(files[0]->thumbnail.isPresent());
    EXPECT_EQ(files[0]->posX, 0);
    // The next card stands clear of the first.
    EXPECT_GE(files[1]->posX, files[0]->posX + 210);
    EXPECT_EQ(files[1]->posY, files[0]->posY);
}

TEST_F(AttachCommandTest, RefusesWhatCannotBeAttached)
{
    // Sparse: the size is there, the bytes are never written.
    const QString large = folder.filePath("large.bin");
    QFile file(large);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(FlowFileImport::maxBytes + 1));
    file.close();

    CommandResult result = run({"attach", "home", large});
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.startsWith(QStringLiteral("fenrow: \"%1\" is larger than 20 MiB").arg(large)))
        << result.err.toStdString();

    result = run({"attach", "home", folder.filePath("missing.txt")});
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.contains("there is no file")) << result.err.toStdString();
    EXPECT_EQ(run({"attach", "home", folder.path()}).status, exitFailure);

    EXPECT_TRUE(openStore()->flows().first()->files().empty());
}

} // namespace
} // namespace fenrow::testing
