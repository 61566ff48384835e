#include "../cli/QtPrinters.h"

#include "formats/JsonStream.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace fenrow::testing {
namespace {

// QJsonDocument is the reference for the writer: the streamed writer must
// give its very bytes.

TEST(JsonStream, WritesWhatQJsonDocumentWrites)
{
    const QList<double> numbers{0.0, -0.0, 40.0, -4.0, 0.1, -19999.75, 1e15, 9007199254740992.0, 9007199254740994.0,
                                1e16, 1e21, 1.2345678901234568e20, 2.5e-7, 5e-324, 1.7976931348623157e308,
                                123456789.0, -1e300};
    const QList<QString> texts{
        QString(), QStringLiteral("plain"), QStringLiteral("quote \" backslash \\ slash /"),
        QStringLiteral("\b\f\n\r\t"), QString::fromUtf8("\x01\x1f\x7f"), QStringLiteral("é ✓ 🚀"),
        QString(QChar(0xD800)) + QStringLiteral("lone high"), QStringLiteral("lone low") + QChar(0xDC00),
        QString(QChar(0xFFFF)) + QChar(0xFFFE), QString(QChar(0)),
    };

    QJsonArray expected;
    JsonWriter writer;
    writer.beginArray();
    for (double number : numbers) {
        expected.append(number);
        writer.number(number);
    }
    for (const QString &text : texts) {
        expected.append(text);
        writer.string(text);
    }
    for (qint64 integer : {qint64(0), qint64(-1), std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()}) {
        expected.append(integer);
        writer.integer(integer);
    }
    expected.append(QJsonObject{{"b", true}, {"a", QJsonArray{false, QJsonObject()}}, {"c", QJsonArray()}});
    writer.beginObject();
    writer.key(QLatin1StringView("a"));
    writer.beginArray();
    writer.boolean(false);
    writer.beginObject();
    writer.endObject();
    writer.endArray();
    writer.key(QLatin1StringView("b"));
    writer.boolean(true);
    writer.key(QLatin1StringView("c"));
    writer.beginArray();
    writer.endArray();
    writer.endObject();
    writer.endArray();

    ASSERT_TRUE(writer.ok());
    EXPECT_EQ(QString::fromUtf8(writer.take()),
              QString::fromUtf8(QJsonDocument(expected).toJson(QJsonDocument::Compact)));

    JsonWriter infinite;
    infinite.number(INFINITY);
    EXPECT_FALSE(infinite.ok());
}

} // namespace
} // namespace fenrow::testing
