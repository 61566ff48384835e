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

// Reads any value by skipping it, as the reader does with unknown keys.
bool streamAccepts(const QByteArray &json)
{
    JsonReader reader(json);
    return reader.skipValue() && reader.atEnd();
}

TEST(JsonStream, FollowsTheJsonGrammarStrictly)
{
    const QList<QByteArray> valid{
        R"([])",
        R"( { "a" : [ 1 , -2.5e3, 0, -0, 1E+2, 0.5e-1, true, false, null, "x", {} ] } )",
        "[\"\\u00e9\\u0041\\n\\/\\\"\"]",
        "[\"\\ud83d\\ude80\"]",
        "[\"caf\xc3\xa9 \xf0\x9f\x9a\x80\"]",
        "{\"a\":1} ",
        "[99999999999999999999999]",
        "[-9223372036854775809]",
    };
    for (const QByteArray &json : valid) {
        SCOPED_TRACE(json.toStdString());
        QJsonParseError error;
        QJsonDocument::fromJson(json, &error);
        ASSERT_EQ(error.error, QJsonParseError::NoError) << "valid for the reference too";
        EXPECT_TRUE(streamAccepts(json));
    }

    // QJsonDocument lets some of these pass (lone surrogates, unknown
    // escapes, raw tabs, "1." and ".5"); a backup never holds them, and a
    // document that does is not one this program wrote.
    QByteArray deep(2000, '[');
    deep += QByteArray(2000, ']');
    const QList<QByteArray> invalid{
        "[\"\\ud83d\"]", "[\"\\ude80\"]", "[\"\\x\"]", "[\"\\u12G4\"]", "[\"tab\there\"]", "[\"caf\xe9\"]",
        "[\"\xed\xa0\x80\"]", "[\"\xc0\xaf\"]", "[\"\xf4\x90\x80\x80\"]", "[01]", "[1.]", "[.5]", "[-]", "[1e]",
        "[1e400]", "[+1]", "[tru]", "[nul]", "[1,]", "[,1]", "{\"a\":1,}", "{\"a\" 1}", "{a:1}", "{\"a\":1}x",
        "[1 2]", "[\"unterminated]", "", "   ", deep,
    };
    for (const QByteArray &json : invalid) {
        SCOPED_TRACE(json.left(60).toStdString());
        EXPECT_FALSE(streamAccepts(json));
    }
}

TEST(JsonStream, ReadsTypedValuesAndKeys)
{
    JsonReader reader(R"({"id":"A","n":3.0,"big":9223372036854775807,"x":1.5,"flag":true,"none":null,"k\u0065y":[]})");
    ASSERT_TRUE(reader.beginObject());
    QByteArrayView key;
    QStringList keys;
    while (reader.nextKey(key)) {
        keys << QString::fromUtf8(key);
        if (key == QByteArrayView("id")) {
            EXPECT_EQ(reader.string(), "A");
        } else if (key == QByteArrayView("n")) {
            EXPECT_EQ(reader.integer(), 3) << "a whole number reads as an integer";
        } else if (key == QByteArrayView("big")) {
            EXPECT_EQ(reader.integer(), std::numeric_limits<qint64>::max()) << "exactly";
        } else if (key == QByteArrayView("x")) {
            EXPECT_EQ(reader.number(), 1.5);
        } else if (key == QByteArrayView("flag")) {
            EXPECT_EQ(reader.boolean(), true);
        } else if (key == QByteArrayView("none")) {
            EXPECT_TRUE(reader.takeNull());
        } else {
            EXPECT_TRUE(reader.skipValue());
        }
    }
    EXPECT_TRUE(reader.ok());
    EXPECT_TRUE(reader.atEnd());
    EXPECT_EQ(keys, (QStringList{"id", "n", "big", "x", "flag", "none", "key"}));

    JsonReader fraction("[1.5]");
    ASSERT_TRUE(fraction.beginArray() && fraction.nextElement());
    EXPECT_FALSE(fraction.integer());
    EXPECT_FALSE(fraction.ok()) << "a mistake sticks";
    EXPECT_FALSE(fraction.nextElement());
}

} // namespace
} // namespace fenrow::testing
