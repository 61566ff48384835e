#include "TestStore.h"
#include "../cli/QtPrinters.h"

#include "formats/FlowMarkdown.h"
#include "shell/InterfaceLanguage.h"

#include <QFile>
#include <QProcess>
#include <QXmlStreamReader>

namespace fenrow::testing {
namespace {

// The flow of expected/flow.md: a task under two parents, a subtask chain
// three deep, every status, prerequisites, notes across lines with an
// empty one, checklists, and text that Markdown would otherwise read as
// markup.
class FlowMarkdownTest : public FlowFixture {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("en")));
        store->renameFlow(*flow, QStringLiteral("Launch *v2*_plan"));
        for (const char *title : {"Plan [draft]", "Write copy", "Design", "Build", "Under two", "Deep"})
            add(QString::fromUtf8(title));
        const FlowNode &plan = (*this)["Plan [draft]"];
        store->setStatus(NodeStatus::inProgress, plan);
        store->setNotes(plan, QStringLiteral("First\r\n\r\nThird \\ line\n"));
        store->addChecklistEntry(QStringLiteral("Buy `tape`"), plan);
        store->addChecklistEntry(QStringLiteral("Call"), plan);
        store->toggleChecklistEntry(plan.checklist()[0].id, plan);
        // Done wins over the status it had before.
        store->setStatus(NodeStatus::inProgress, (*this)["Write copy"]);
        done("Write copy");
        store->setStatus(NodeStatus::paused, (*this)["Design"]);
        store->addChecklistEntry(QStringLiteral("Step one"), (*this)["Under two"]);
        store->setNotes((*this)["Deep"], QStringLiteral("deep note"));
        link("Plan [draft]", "Write copy", EdgeKind::subtask);
        link("Design", "Under two", EdgeKind::subtask);
        link("Plan [draft]", "Under two", EdgeKind::subtask);
        link("Under two", "Deep", EdgeKind::subtask);
        link("Write copy", "Build");
        link("Design", "Build");
    }
    void TearDown() override { InterfaceLanguage::apply(QStringLiteral("en")); }

    static QString expected()
    {
        QFile file(QStringLiteral(FENROW_SOURCE_DIR "/tests/core/expected/flow.md"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll());
    }
};

// What a GFM renderer makes of the text, as an indented outline: list items
// with their tick and text, quotes with their paragraphs.
QStringList renderedOutline(const QString &html)
{
    QXmlStreamReader xml(QStringLiteral("<root>") + html + QStringLiteral("</root>"));
    QStringList lines;
    int listDepth = 0;
    int quoteDepth = 0;
    // An item's own text ends where a nested list or quote begins.
    struct Item {
        qsizetype line;
        QString prefix;
        QString text;
        bool open;
    };
    QList<Item> items;
    QString quoteText;
    while (!xml.atEnd()) {
        xml.readNext();
        const QStringView name = xml.name();
        if (xml.isStartElement()) {
            if (name == u"ul" || name == u"blockquote") {
                if (!items.isEmpty())
                    items.last().open = false;
                listDepth += name == u"ul";
                quoteDepth += name == u"blockquote";
            } else if (name == u"li") {
                lines << QString();
                items.append({lines.size() - 1, QString((listDepth - 1) * 2, QLatin1Char(' ')), {}, true});
            } else if (name == u"input") {
                items.last().prefix += xml.attributes().hasAttribute(QStringLiteral("checked"))
                                           ? QStringLiteral("[x] ")
                                           : QStringLiteral("[ ] ");
            } else if (name == u"p") {
                quoteText.clear();
            }
        } else if (xml.isEndElement()) {
            if (name == u"ul") {
                --listDepth;
            } else if (name == u"blockquote") {
                --quoteDepth;
            } else if (name == u"li") {
                const Item item = items.takeLast();
                lines[item.line] = item.prefix + item.text.simplified();
            } else if (name == u"p" && quoteDepth > 0) {
                lines << QString(listDepth * 2, QLatin1Char(' ')) + QStringLiteral("> ") + quoteText;
            }
        } else if (xml.isCharacters()) {
            if (quoteDepth > 0)
                quoteText += xml.text();
            else if (!items.isEmpty() && items.last().open)
                items.last().text += xml.text();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return lines;
}

TEST_F(FlowMarkdownTest, WritesTheStoredListLineForLine)
{
    EXPECT_EQ(store->markdown(*flow), expected());
}

TEST_F(FlowMarkdownTest, RendersAsTheIntendedNestedTaskList)
{
    QProcess cmark;
    cmark.start(QStringLiteral(FENROW_CMARK_GFM), {QStringLiteral("--extension"), QStringLiteral("tasklist")});
    ASSERT_TRUE(cmark.waitForStarted()) << "cmark-gfm is missing: scripts/setup.sh installs it";
    cmark.write(store->markdown(*flow).toUtf8());
    cmark.closeWriteChannel();
    ASSERT_TRUE(cmark.waitForFinished());
    const QString html = QString::fromUtf8(cmark.readAllStandardOutput());

    EXPECT_TRUE(html.startsWith("<h1>Launch *v2*_plan</h1>\n<p>1 of 6 done</p>\n")) << html.toStdString();
    EXPECT_EQ(renderedOutline(html), (QStringList{
                                         "[ ] Plan [draft] (in progress)",
                                         "  > First",
                                         "  > Third \\ line",
                                         "  [x] Buy `tape`",
                                         "  [ ] Call",
                                         "  [x] Write copy",
                                         "  [ ] Under two",
                                         "    [ ] Step one",
                                         "    [ ] Deep",
                                         "      > deep note",
                                         "[ ] Design (paused)",
                                         "[ ] Build (after Write copy, Design)",
                                     }))
        << html.toStdString();
}

TEST_F(FlowMarkdownTest, FollowsTheInterfaceLanguage)
{
    ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("de")));
    const QString german = store->markdown(*flow);
    EXPECT_TRUE(german.contains("\n1 von 6 erledigt\n")) << german.toStdString();
    EXPECT_TRUE(german.contains("  _(in Arbeit)_\n"));
    EXPECT_TRUE(german.contains("_(nach Write copy, Design)_"));
}

TEST(FlowMarkdown, EscapesUserTextToOneLiteralLine)
{
    EXPECT_EQ(FlowMarkdown::escape(QStringLiteral("  snake_case *bold* [link](x) `code` \\n  ")),
              "snake\\_case \\*bold\\* \\[link\\](x) \\`code\\` \\\\n");
    EXPECT_EQ(FlowMarkdown::escape(QStringLiteral("two\nlines\t and\r\n\u00a0more")), "two lines and more");
    EXPECT_EQ(FlowMarkdown::escape(QString()), "");
}

TEST(FlowMarkdown, EmptyFlowsAndDamagedGraphs)
{
    const FlowMarkdownStrings strings{"%1/%2", "busy", "waiting", "after %1"};
    EXPECT_EQ(FlowMarkdown::render(QStringLiteral("Empty\nflow"), {}, {}, strings), "# Empty flow\n");

    // Two tasks that are each other's parent (possible only in damaged
    // data) still come out once each, the earlier first.
    FlowNode a, b;
    a.title = QStringLiteral("A");
    b.title = QStringLiteral("B");
    b.statusRaw = QStringLiteral("unknown");
    DependencyEdge down, up, loose;
    down.kind = EdgeKind::subtask;
    down.setFromItem(&a);
    down.setToItem(&b);
    up.kind = EdgeKind::subtask;
    up.setFromItem(&b);
    up.setToItem(&a);
    loose.setFromItem(&a);
    EXPECT_EQ(FlowMarkdown::render(QStringLiteral("Loop"), {&a, &b}, {&down, &up, &loose}, strings),
              "# Loop\n\n0/2\n\n- [ ] A\n  - [ ] B\n");
}

} // namespace
} // namespace fenrow::testing
