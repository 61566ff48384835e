#include "../cli/QtPrinters.h"
#include "TestStore.h"

#include "domain/ChecklistEntry.h"
#include "domain/LocalCalendar.h"
#include "formats/OPMLCodec.h"
#include "formats/OPMLDirectReader.h"
#include "formats/OPMLOutlineBuilder.h"

#include <QElapsedTimer>
#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTimeZone>
#include <QUrl>

#include <gtest/gtest.h>

namespace fenrow::testing {
namespace {

using OPMLCodec::Outline;

const LocalCalendar berlin{QTimeZone("Europe/Berlin")};

QUuid id(int number)
{
    return QUuid(QStringLiteral("00000000-0000-4000-8000-%1").arg(number, 12, 10, QLatin1Char('0')));
}

QString idText(int number)
{
    return id(number).toString(QUuid::WithoutBraces).toUpper();
}

QDateTime day(int year, int month, int dayOfMonth)
{
    return berlin.startOfDay(QDate(year, month, dayOfMonth));
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QByteArray fixture(const char *name)
{
    return readFile(QStringLiteral(FENROW_SOURCE_DIR "/tests/core/fixtures/opml/") + QLatin1StringView(name));
}

// The flow of expected/outline.opml: a task under two parents, a
// dependency from a tree parent, notes across lines, a checklist, dates,
// text that needs escaping and a character XML cannot carry.
QString sampleOutline()
{
    const QList<OPMLCodec::Task> tasks{
        {id(1), QStringLiteral("Launch <v2> & \"beta\""), {}, false, std::nullopt, day(2026, 3, 9), {}},
        {id(2), QStringLiteral("Write copy"), QStringLiteral("Line one\r\nLine two"), true,
         QDateTime(QDate(2026, 3, 2), QTime(17, 45), QTimeZone("Europe/Berlin")), std::nullopt,
         ChecklistCodec::encode({{QUuid(QStringLiteral("00000000-0000-4000-8000-0000000000C1")), "Draft", true},
                                 {QUuid(QStringLiteral("00000000-0000-4000-8000-0000000000C2")), "Proof", false}})},
        {id(3), QStringLiteral("Design"), {}, false, std::nullopt, std::nullopt, {}},
        {id(4), QStringLiteral("Build"), {}, false, std::nullopt, std::nullopt, {}},
        {id(5), QStringLiteral("Ship it's done"), {}, false, std::nullopt, std::nullopt, {}},
        {id(6), QStringLiteral("Loose\x01 end 🚀"), {}, false, std::nullopt, std::nullopt, {}},
        {id(7), QStringLiteral("Review"), {}, false, std::nullopt, std::nullopt, {}},
    };
    const QList<OPMLCodec::IdPair> subtasks{{id(3), id(4)}, {id(1), id(2)}, {id(1), id(4)}, {id(3), id(7)},
                                            {id(9), id(5)}, {id(6), id(6)}};
    const QList<OPMLCodec::IdPair> dependencies{{id(1), id(4)}, {id(4), id(5)}, {id(2), id(4)},
                                                {id(3), id(5)}, {id(5), id(5)}, {id(9), id(6)}};
    return OPMLCodec::encode(QStringLiteral("Launch & \"plan\""), tasks, subtasks, dependencies,
                             QStringLiteral("after %1"), berlin);
}

QStringList texts(const QList<Outline> &outlines)
{
    QStringList result;
    for (const Outline &outline : outlines)
        result << outline.text;
    return result;
}

std::optional<OPMLCodec::Document> decode(const QByteArray &bytes)
{
    return OPMLCodec::decode(bytes, berlin);
}

// A document of this program's shape around the given body lines.
QByteArray document(const QByteArray &body, const QByteArray &head = "<head><title>Doc</title></head>")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">" + head + "<body>" + body
        + "</body></opml>";
}

TEST(OPMLCodec, WritesTheStoredOutlineLineForLine)
{
    const QString expected = QString::fromUtf8(
        readFile(QStringLiteral(FENROW_SOURCE_DIR "/tests/core/expected/outline.opml")));
    EXPECT_EQ(sampleOutline(), expected);

    // A flow without tasks has an empty body.
    EXPECT_EQ(OPMLCodec::encode(QStringLiteral("Empty"), {}, {}, {}, QStringLiteral("after %1"), berlin),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n  <head>\n"
              "    <title>Empty</title>\n  </head>\n  <body>\n  </body>\n</opml>\n");
}

TEST(OPMLCodec, ReadsItsOwnOutlineBack)
{
    const std::optional<OPMLCodec::Document> read = decode(sampleOutline().toUtf8());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->title, "Launch & \"plan\"");
    EXPECT_EQ(texts(read->roots),
              (QStringList{"Launch <v2> & \"beta\"", "Design", "Ship it's done", "Loose end 🚀"}));
    EXPECT_EQ(OPMLCodec::outlineCount(read->roots), 7);

    const Outline &launch = read->roots[0];
    EXPECT_EQ(launch.fenrowID, idText(1));
    EXPECT_EQ(launch.dueDate, day(2026, 3, 9));
    EXPECT_FALSE(launch.startDate);
    EXPECT_EQ(texts(launch.children), (QStringList{"Write copy", "Build"}));

    const Outline &copy = launch.children[0];
    EXPECT_EQ(copy.note, "Line one\nLine two") << "this program's notes, not the note composed for others";
    EXPECT_TRUE(copy.isDone);
    EXPECT_EQ(copy.startDate, day(2026, 3, 2)) << "the day, at its start";
    EXPECT_EQ(ChecklistCodec::decode(copy.checklistData).size(), 2);
    EXPECT_EQ(launch.children[1].after, QStringList{idText(2)});
    EXPECT_EQ(read->roots[2].after, (QStringList{idText(3), idText(4)}));
    EXPECT_TRUE(read->roots[1].after.isEmpty());
    EXPECT_EQ(launch.children[1].note, "") << "its note for other outliners is no note of its own";
    EXPECT_FALSE(read->roots[1].isDone);
}

TEST(OPMLCodec, ReadsForeignFilesSensibly)
{
    struct Case {
        const char *file;
        QString title;
        QStringList roots;
        qsizetype count;
    };
    const QList<Case> cases{
        {"states.opml", "States", {"United States"}, 59},
        {"outline-opml-editor.opml", "07.opml", {}, 5},
        {"empty-head.opml", "", {}, 4},
        {"cactus-notes.opml", "", {"To do", "Bugs", "Ideas"}, 18},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.file);
        const std::optional<OPMLCodec::Document> read = decode(fixture(c.file));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->title, c.title);
        if (!c.roots.isEmpty()) {
            EXPECT_EQ(texts(read->roots), c.roots);
        }
        EXPECT_EQ(OPMLCodec::outlineCount(read->roots), c.count);
    }

    // Nesting three deep, markup kept as text, entities and the feed
    // list's "title" where "text" is missing.
    const OPMLCodec::Document states = *decode(fixture("states.opml"));
    EXPECT_EQ(texts(states.roots[0].children.mid(0, 2)), (QStringList{"Far West", "Great Plains"}));
    EXPECT_EQ(texts(states.roots[0].children[0].children.mid(0, 2)), (QStringList{"Alaska", "California"}));
    const OPMLCodec::Document editor = *decode(fixture("outline-opml-editor.opml"));
    EXPECT_TRUE(editor.roots[0].text.startsWith(
        "There is no problem with the Windows install of the <a href=\"http://yabfog.hopto.org:1080/yabfog\">"));
    EXPECT_EQ(texts(editor.roots[2].children).size(), 1);
    const OPMLCodec::Document feeds = *decode(fixture("empty-head.opml"));
    EXPECT_EQ(feeds.roots[2].text, "Subscription list for user \"nann\"");
    const OPMLCodec::Document cactus = *decode(fixture("cactus-notes.opml"));
    EXPECT_EQ(cactus.roots[0].children[1].children[1].text,
              "opennode should get a url dict with baseURL, path & query");
    EXPECT_FALSE(cactus.roots[0].isDone);
    EXPECT_TRUE(cactus.roots[0].after.isEmpty());
}

TEST(OPMLCodec, EmptyOrBrokenDocumentsGiveNothing)
{
    const QList<std::pair<const char *, QByteArray>> cases{
        {"no-outlines.opml", fixture("no-outlines.opml")},
        {"malformed.opml", fixture("malformed.opml")},
        {"empty", ""},
        {"not xml", "Launch plan\n- write copy\n"},
        {"no opml element", "<outline text=\"A\"/>"},
        {"only empty outlines", document("<outline/><outline text=\"  \"><outline/></outline>")},
        {"unclosed outline", document("<outline text=\"A\">")},
        {"mismatched case", document("<outline text=\"A\"></OUTLINE>")},
        {"cut off", document("<outline text=\"A\"/>").left(60)},
        {"undeclared entity", document("<outline text=\"&nbsp;A\"/>")},
        {"bytes that are not UTF-8", document("<outline text=\"caf\xe9\"/>")},
    };
    for (const auto &[name, bytes] : cases) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(decode(bytes));
    }
}

TEST(OPMLCodec, AttributesOfOtherOutliners)
{
    const std::optional<OPMLCodec::Document> read = decode(
        "<?xml version=\"1.0\"?><OPML version=\"2.0\"><Head><TITLE>  Shopping\n</TITLE></Head><BODY>"
        "<OUTLINE text=\" Milk \" _note=\" two litres \" _status=\"Checked\"/>"
        "<outline title=\"Bread\" _status=\"unchecked\"/>"
        "<outline text=\"Cheese\" TEXT=\"ignored\" fenrowNotes=\"\" _note=\"the composed note\"/>"
        "<outline><outline text=\"Eggs\"/></outline>"
        "<outline text=\"\"/>"
        "<outline text=\"Dates\" fenrowStart=\"2026-3-9\" fenrowDue=\"2026-13-01\" fenrowChecklist=\"[broken\""
        " fenrowAfter=\" A , ,B,\" fenrowId=\"x1\"/>"
        "<outline text=\"Greek\"><![CDATA[ignored]]></outline>"
        "<outline TEXT=\" Upper \" _NOTE=\"loud\" _Status=\"checked\" fenrowDue=\"20260-6-1\" FenrowStart=\"0-1-1\"/>"
        "</BODY></OPML>");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->title, "Shopping");
    EXPECT_EQ(texts(read->roots), (QStringList{"Milk", "Bread", "Cheese", "", "Dates", "Greek", "Upper"}));
    EXPECT_EQ(read->entriesLeftOut, 1) << "the outline without text";
    EXPECT_EQ(read->datesLeftOut, 3) << "month 13, the year 20260 and the year 0";
    const Outline &upper = read->roots[6];
    EXPECT_EQ(upper.note, "loud");
    EXPECT_TRUE(upper.isDone);
    EXPECT_FALSE(upper.dueDate);
    EXPECT_FALSE(upper.startDate);
    EXPECT_EQ(read->roots[0].note, "two litres");
    EXPECT_TRUE(read->roots[0].isDone);
    EXPECT_FALSE(read->roots[1].isDone);
    EXPECT_EQ(read->roots[2].note, "") << "this program's own notes win, even empty";
    EXPECT_EQ(texts(read->roots[3].children), QStringList{"Eggs"}) << "kept for the sake of its child";
    const Outline &dates = read->roots[4];
    EXPECT_EQ(dates.startDate, day(2026, 3, 9));
    EXPECT_FALSE(dates.dueDate);
    EXPECT_EQ(dates.checklistData, "");
    EXPECT_EQ(dates.after, (QStringList{"A", "B"}));
    EXPECT_EQ(dates.fenrowID, "x1");
    EXPECT_FALSE(read->roots[0].fenrowID);
}

TEST(OPMLCodec, ReadsTheEncodingTheFileDeclares)
{
    const QString text = QStringLiteral("Café für Ärger € ");
    const QString xml = QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?><opml><head><title>%2</title></head>"
                                       "<body><outline text=\"%2\"/></body></opml>");
    for (const char *encoding : {"ISO-8859-15", "windows-1252", "UTF-16"}) {
        SCOPED_TRACE(encoding);
        QStringEncoder encoder(encoding, QStringEncoder::Flag::WriteBom);
        ASSERT_TRUE(encoder.isValid());
        const QByteArray bytes = encoder.encode(xml.arg(QLatin1StringView(encoding), text));
        const std::optional<OPMLCodec::Document> read = decode(bytes);
        ASSERT_TRUE(read);
        EXPECT_EQ(read->title, text.trimmed());
        EXPECT_EQ(read->roots[0].text, text.trimmed());
    }
}

TEST(OPMLCodec, HostileDocumentsAreRefusedWithoutReadingAnything)
{
    QByteArray bomb = "<?xml version=\"1.0\"?>\n<!DOCTYPE opml [\n<!ENTITY lol \"lol\">\n";
    for (int level = 1; level <= 9; ++level) {
        bomb += QStringLiteral("<!ENTITY lol%1 \"").arg(level).toUtf8();
        for (int i = 0; i < 10; ++i)
            bomb += level == 1 ? "&lol;" : QStringLiteral("&lol%1;").arg(level - 1).toUtf8();
        bomb += "\">\n";
    }
    bomb += "]>\n<opml><head><title>&lol9;</title></head><body><outline text=\"&lol9;\"/></body></opml>";
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(decode(bomb));
    EXPECT_LT(timer.elapsed(), 1000) << "expansion stops early";

    // A secret a megabyte long: if the reader fetched it, the process would
    // have read at least that much.
    QTemporaryDir folder;
    const QString secret = folder.filePath(QStringLiteral("secret.txt"));
    {
        QFile file(secret);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(1 << 20, 'S'));
    }
    const QByteArray uri = QUrl::fromLocalFile(secret).toEncoded();
    const QList<QByteArray> hostile{
        "<?xml version=\"1.0\"?><!DOCTYPE opml [<!ENTITY ext SYSTEM \"" + uri
            + "\">]><opml><head><title>&ext;</title></head><body><outline text=\"A &ext;\"/></body></opml>",
        "<?xml version=\"1.0\"?><!DOCTYPE opml [<!ENTITY ext PUBLIC \"-//X//Y\" \"" + uri
            + "\">]><opml><body><outline text=\"A\">&ext;</outline></body></opml>",
        "<?xml version=\"1.0\"?><!DOCTYPE opml [<!ENTITY % ext SYSTEM \"" + uri
            + "\"> %ext;]><opml><body><outline text=\"A\"/></body></opml>",
        "<?xml version=\"1.0\"?><!DOCTYPE opml SYSTEM \"" + uri
            + "\"><opml><body><outline text=\"&x;\"/></body></opml>",
    };
    for (const QByteArray &bytes : hostile) {
        SCOPED_TRACE(bytes.toStdString());
        const qint64 before = bytesReadByProcess();
        EXPECT_FALSE(decode(bytes));
        EXPECT_LT(bytesReadByProcess() - before, 1 << 20);
    }

    // Entities declared inside the document are ordinary text.
    const std::optional<OPMLCodec::Document> internal = decode(
        "<?xml version=\"1.0\"?><!DOCTYPE opml [<!ENTITY co \"Acme &amp; Co\">]>"
        "<opml><head><title>&co;</title></head><body><outline text=\"Call &co;\"/></body></opml>");
    ASSERT_TRUE(internal);
    EXPECT_EQ(internal->title, "Acme & Co");
    EXPECT_EQ(internal->roots[0].text, "Call Acme & Co");
}

// Files the direct reader takes must read exactly as the XML reader reads
// them; whatever it is unsure of it must leave to the XML reader.
TEST(OPMLCodec, TheDirectReaderReadsAsTheXmlReaderDoesOrStepsAside)
{
    const auto takenDirectly = [](const QByteArray &bytes) {
        OPMLCodec::OutlineBuilder builder(berlin);
        return OPMLCodec::OPMLDirectReader::read(bytes, builder) == OPMLCodec::OPMLDirectReader::Result::read;
    };
    const QList<std::pair<const char *, QByteArray>> usual{
        {"own export", sampleOutline().toUtf8()},
        {"states", fixture("states.opml")},
        {"cactus", fixture("cactus-notes.opml")},
        {"feeds", fixture("empty-head.opml")},
        {"byte order mark", "\xEF\xBB\xBF" + document("<outline text=\"A\"/>")},
        {"no declaration, single quotes, blanks around =",
         "<opml version='2.0'><body><outline text = 'it&apos;s' _status='checked'/></body></opml>"},
        {"declaration with standalone", "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>"
                                        "<OPML><BODY><Outline TEXT=\"x\" text=\"A\"/></BODY></OPML>"},
        {"comments and a title built from parts",
         document("<!-- a comment --><outline text=\"A\"><!--x--></outline>",
                  "<head><title> Plan &amp; <!-- c --> more &#x1F600; </title></head>")},
        {"blanks and references in values",
         document("<outline text=\"tab\there\nline\" _note=\"one&#10;two&#x9;three &lt;b&gt; &quot;q&quot;\"/>")},
        {"text and markup inside outlines", document("<outline text=\"A\">loose <b>bold</b> text</outline>")},
        {"non-ASCII text", document("<outline text=\"Çay ☕ için — größer\"/>")},
        {"names in upper case", document("<outline TEXT=\"A\" _NOTE=\"n&#9;m\" Text=\"B\"/><outline Title=\"C\"/>")},
        {"entries and dates left out", document("<outline/><outline text=\"A\" fenrowDue=\"12026-1-1\"/>")},
    };
    for (const auto &[name, bytes] : usual) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(takenDirectly(bytes));
        const std::optional<OPMLCodec::Document> full = OPMLCodec::decodeWithXmlReader(bytes, berlin);
        ASSERT_TRUE(full);
        EXPECT_EQ(decode(bytes), full);
    }

    const QList<std::pair<const char *, QByteArray>> unusual{
        {"document type", "<!DOCTYPE opml [<!ENTITY who \"Ada\">]>"
                          "<opml><body><outline text=\"&who;\"/></body></opml>"},
        {"CDATA", document("<outline text=\"A\"><![CDATA[x]]></outline>")},
        {"another encoding", fixture("outline-opml-editor.opml")},
        {"carriage return", document("<outline text=\"a\r\nb\"/>")},
        {"prefixed name", document("<outline xmlns:x=\"urn:x\" x:text=\"A\" text=\"B\"/>")},
        {"processing instruction", document("<?page break?><outline text=\"A\"/>")},
        {"duplicate attribute", document("<outline text=\"A\" text=\"B\"/>")},
        {"bytes that are not UTF-8", document("<outline text=\"caf\xe9\"/>")},
        {"unknown entity", document("<outline text=\"&nbsp;\"/>")},
        {"mismatched end", document("<outline text=\"A\"></outlinE>")},
        {"two roots", document("<outline text=\"A\"/>") + "<opml/>"},
        {"forbidden character reference", document("<outline text=\"&#1;\"/>")},
        {"comment with a double dash", document("<!-- a -- b --><outline text=\"A\"/>")},
    };
    for (const auto &[name, bytes] : unusual) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(takenDirectly(bytes));
        EXPECT_EQ(decode(bytes), OPMLCodec::decodeWithXmlReader(bytes, berlin));
    }

    // One byte of note at every place of a long value, which the direct
    // reader passes over in blocks: it reads it alike, or steps aside.
    const QList<std::pair<QByteArray, bool>> bytesOfNote{{"&amp;", true}, {"\t", true}, {"\n", true},
                                                         {"é", true},     {"<", false}, {"\x1f", false}};
    for (const auto &[unusual, taken] : bytesOfNote) {
        for (int at = 0; at <= 40; ++at) {
            const QByteArray value = QByteArray(40, 'x').insert(at, unusual);
            // Alone, after a character outside ASCII, and after a reference,
            // which the reader copies around.
            for (const QByteArray &bytes :
                 {document("<outline text=\"" + value + "\"/>"), document("<outline text=\"é" + value + "\"/>"),
                  document("<outline text=\"&lt;" + value + "\"/>")}) {
                SCOPED_TRACE(bytes.toStdString());
                EXPECT_EQ(takenDirectly(bytes), taken);
                EXPECT_EQ(decode(bytes), OPMLCodec::decodeWithXmlReader(bytes, berlin));
            }
        }
    }
}


TEST(OPMLCodec, TabsSurviveARoundTrip)
{
    const QString outline = OPMLCodec::encode(
        QStringLiteral("Plan"),
        {{id(1), QStringLiteral("Name\tAge"), QStringLiteral("col 1\tcol 2"), false, {}, {}, {}}}, {}, {},
        QStringLiteral("after %1"), berlin);
    const std::optional<OPMLCodec::Document> read = decode(outline.toUtf8());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->roots[0].text, "Name\tAge");
    EXPECT_EQ(read->roots[0].note, "col 1\tcol 2");
}

// `count` outlines, each inside the one before, one start tag a line.
QByteArray nested(int count, const QByteArray &attributes = {})
{
    QByteArray body;
    for (int i = 0; i < count; ++i)
        body += "\n<outline text=\"" + QByteArray::number(i) + "\"" + attributes + ">";
    for (int i = 0; i < count; ++i)
        body += "</outline>";
    return document(body);
}

// ` a1="x"` up to ` aN="x"`, each on its own line.
QByteArray attributeLines(int count)
{
    QByteArray attributes;
    for (int i = 1; i <= count; ++i)
        attributes += "\n a" + QByteArray::number(i) + "=\"x\"";
    return attributes;
}

// Documents at a limit are read; one step past it they are refused whole,
// by both readers alike, at the line (and entry) where it was crossed: the
// end of the tag for what the outline builder counts, the attribute itself
// for an element with too many.
TEST(OPMLCodec, LimitsRefuseTheWholeDocumentAndSayWhere)
{
    using Reason = OPMLCodec::Refusal::Reason;
    QByteArray flat;
    for (int i = 0; i <= OPMLCodec::maxEntries; ++i)
        flat += "<outline text=\"e\"/>\n";
    const QByteArray longValue(OPMLCodec::maxValueLength, 'v');
    QStringEncoder utf16(QStringConverter::Utf16, QStringEncoder::Flag::WriteBom);
    const QByteArray crowded = document("<outline text=\"A\"/>\n<outline" + attributeLines(65) + "/>");

    struct Case {
        const char *name;
        QByteArray bytes;
        std::optional<OPMLCodec::Refusal> refusal;
    };
    const QList<Case> cases{
        {"1,000 deep", nested(1000), std::nullopt},
        {"1,001 deep, tags over two lines", nested(1001, "\n"), OPMLCodec::Refusal{Reason::tooDeep, 2004, 1001}},
        // The XML reader checks the encoding before the first element.
        {"1,001 deep, a byte not UTF-8 past the limit", QByteArray(nested(1001)).replace("</body>", "\xff</body>"),
         OPMLCodec::Refusal{}},
        {"200,001 entries", document(flat), OPMLCodec::Refusal{Reason::tooManyEntries, 200002, 200001}},
        {"64 attributes", document("<outline text=\"A\"" + attributeLines(63) + "/>"), std::nullopt},
        {"65 attributes", crowded, OPMLCodec::Refusal{Reason::tooManyAttributes, 68, 2}},
        {"65 attributes in UTF-16", utf16.encode(QString::fromUtf8(crowded).replace("UTF-8", "UTF-16")),
         OPMLCodec::Refusal{Reason::tooManyAttributes, 68, 2}},
        {"65 attributes hidden by UTF-7",
         "<?xml version=\"1.0\" encoding=\"UTF-7\"?>+ADw-opml+AD4APA-body+AD4APA-outline"
             + attributeLines(65).replace("\"", "+ACI-").replace("=", "+AD0-") + "\n/+AD4APA-/body+AD4APA-/opml+AD4-",
         OPMLCodec::Refusal{Reason::tooManyAttributes, 66, 1}},
        {"65 attributes on the head",
         document("<outline text=\"A\"/>", "<head" + attributeLines(65) + "/>"),
         OPMLCodec::Refusal{Reason::tooManyAttributes, 67, 0}},
        {"the longest value", document("<outline text=\"" + longValue + "\"/>"), std::nullopt},
        {"a value too long", document("<outline text=\"A\"/>\n<outline text=\"A\" _note=\"" + longValue + "v\"/>"),
         OPMLCodec::Refusal{Reason::valueTooLong, 3, 2}},
        {"a title too long", document("<outline text=\"A\"/>", "<head>\n<title>" + longValue + "v</title></head>"),
         OPMLCodec::Refusal{Reason::valueTooLong, 3, 0}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const OPMLCodec::Reading read = OPMLCodec::read(c.bytes, berlin);
        EXPECT_EQ(read, OPMLCodec::readWithXmlReader(c.bytes, berlin));
        if (c.refusal) {
            ASSERT_TRUE(std::holds_alternative<OPMLCodec::Refusal>(read));
            const OPMLCodec::Refusal &refusal = std::get<OPMLCodec::Refusal>(read);
            EXPECT_EQ(refusal, *c.refusal) << refusal.text().toStdString();
        } else {
            EXPECT_TRUE(std::holds_alternative<OPMLCodec::Document>(read));
        }
    }
    EXPECT_EQ(OPMLCodec::Refusal({Reason::tooDeep, 5012, 4321}).text(), "line 5012: entries nested deeper than 1,000");
    EXPECT_EQ(OPMLCodec::Refusal({Reason::tooManyAttributes, 7, 3}).text(), "line 7: entry 3 has more than 64 attributes");
}

} // namespace
} // namespace fenrow::testing
