#include "TestStore.h"

#include "domain/FlowSearch.h"
#include "domain/TextFolding.h"
#include "shell/InterfaceLanguage.h"

namespace fenrow {
namespace {

using testing::FlowFixture;
using namespace FlowSearch;

class FlowSearchTest : public FlowFixture {
protected:
    void SetUp() override { ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("en"))); }
    void TearDown() override { InterfaceLanguage::apply(QStringLiteral("en")); }

    const FlowNode &add(const QString &title, const QString &notes = {}, const TaskFlow *in = nullptr)
    {
        const FlowNode *node = store->addNode(title, in ? *in : *flow);
        if (!notes.isEmpty())
            store->setNotes(*node, notes);
        return *node;
    }
    QStringList found(const QString &query) const
    {
        QStringList titles;
        for (const FlowSearchMatch &match : searchNodes(query, flow->orderedItems()))
            titles << match.title;
        return titles;
    }
};

TEST_F(FlowSearchTest, FoldingIgnoresCaseAndDiacritics)
{
    EXPECT_TRUE(foldedContains(QStringLiteral("Café au lait"), QStringLiteral("cafe")));
    EXPECT_TRUE(foldedContains(QStringLiteral("CAFÉ"), QStringLiteral("café")));
    EXPECT_TRUE(foldedContains(QStringLiteral("Große Straße"), QStringLiteral("STRASSE")));
    EXPECT_TRUE(foldedContains(QStringLiteral("Ångström"), QStringLiteral("angstrom")));
    EXPECT_TRUE(foldedContains(QStringLiteral("ﬁle"), QStringLiteral("fil"))) << "compatibility forms decompose";
    EXPECT_FALSE(foldedContains(QStringLiteral("Café"), QStringLiteral("cafes")));
    EXPECT_FALSE(foldedContains(QStringLiteral("Café"), QString()));
    // A mark outside the basic plane, and a letter outside it that must stay.
    EXPECT_EQ(TextFolding::fold(QString::fromUtf8("a\xF0\x9D\x85\xA7" "b\xF0\x9F\x93\x8C")),
              QString::fromUtf8("ab\xF0\x9F\x93\x8C"));
}

TEST_F(FlowSearchTest, TurkishInterfaceFoldsDottedAndDotlessI)
{
    const QString istanbul = QStringLiteral("İSTANBUL ofisi");
    const QString isparta = QStringLiteral("ISPARTA gezisi");
    ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("tr")));
    EXPECT_TRUE(foldedContains(istanbul, QStringLiteral("istanbul")));
    EXPECT_TRUE(foldedContains(isparta, QStringLiteral("ısparta")));
    EXPECT_FALSE(foldedContains(isparta, QStringLiteral("isparta"))) << "I is the capital of ı in Turkish";

    ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("en")));
    EXPECT_TRUE(foldedContains(isparta, QStringLiteral("isparta")));
    EXPECT_FALSE(foldedContains(isparta, QStringLiteral("ısparta")));
}

TEST_F(FlowSearchTest, NodesMatchByTitleFirstThenByANotesLine)
{
    add(QStringLiteral("Résumé draft"));
    add(QStringLiteral("Cover letter"), QStringLiteral("Mention the resume"));
    add(QStringLiteral("Portfolio"), QStringLiteral("Pick three pieces\n\n   Link the résumé page  \nresume again"));
    const FlowNode &checklist = add(QStringLiteral("References"));
    store->addChecklistEntry(QStringLiteral("Résumé copy"), checklist);

    const QList<FlowSearchMatch> matches = searchNodes(QStringLiteral("  resume \n"), flow->orderedItems());
    ASSERT_EQ(matches.size(), 3) << "the checklist is not searched";
    EXPECT_EQ(matches[0].title, QStringLiteral("Résumé draft"));
    EXPECT_EQ(matches[0].notesSnippet, std::nullopt);
    EXPECT_EQ(matches[1].notesSnippet, QStringLiteral("Mention the resume"));
    EXPECT_EQ(matches[2].notesSnippet, QStringLiteral("Link the résumé page")) << "first matching line, trimmed";
    EXPECT_EQ(matches[0].flowID, std::nullopt);

    // A node whose title and notes both match shows no snippet.
    add(QStringLiteral("Letter"), QStringLiteral("letter body"));
    EXPECT_EQ(searchNodes(QStringLiteral("letter"), flow->orderedItems()).last().notesSnippet, std::nullopt);

    EXPECT_TRUE(found(QStringLiteral("   ")).isEmpty());
    EXPECT_TRUE(found(QString()).isEmpty());
    EXPECT_EQ(found(QStringLiteral("PIECES")), QStringList{"Portfolio"});
}

TEST_F(FlowSearchTest, SnippetIsTheFirstMatchingLineWhole)
{
    EXPECT_EQ(notesSnippet(QStringLiteral("one\r\ntwo\r\n\t three Café \r\n"), QStringLiteral("cafe")),
              QStringLiteral("three Café"));
    EXPECT_EQ(notesSnippet(QStringLiteral("one\ntwo"), QStringLiteral("one\ntwo")), std::nullopt)
        << "a match must lie within one line";
    EXPECT_EQ(notesSnippet(QStringLiteral("one\ntwo"), QStringLiteral("three")), std::nullopt);
}

TEST_F(FlowSearchTest, GroupsPutTheCurrentFlowFirstAndLeaveOutFlowsWithoutMatches)
{
    const TaskFlow *other = store->addFlow(QStringLiteral("Garden"));
    const TaskFlow *empty = store->addFlow(QStringLiteral("Taxes"));
    const TaskFlow *last = store->addFlow(QStringLiteral("Home"));
    add(QStringLiteral("Buy seeds"), {}, other);
    add(QStringLiteral("File forms"), {}, empty);
    add(QStringLiteral("Paint"), QStringLiteral("Seed the lawn after"), last);
    add(QStringLiteral("Nothing here"));

    // Only other flows match: the first group shown is one of them.
    QList<FlowSearchGroup> groups = searchGroups(QStringLiteral("seed"), flow, store->flows());
    ASSERT_EQ(groups.size(), 2);
    EXPECT_EQ(groups[0].flowID, other->id);
    EXPECT_EQ(groups[0].flowName, QStringLiteral("Garden"));
    EXPECT_EQ(groups[0].matches[0].flowID, other->id);
    EXPECT_EQ(groups[1].flowID, last->id);
    EXPECT_EQ(groups[1].matches[0].notesSnippet, QStringLiteral("Seed the lawn after"));

    // The current flow leads even when it comes last in the list, once only.
    add(QStringLiteral("Seed catalogue"));
    groups = searchGroups(QStringLiteral("SEED"), last, store->flows());
    ASSERT_EQ(groups.size(), 3);
    EXPECT_EQ(groups[0].flowID, last->id);
    EXPECT_EQ(groups[0].matches[0].flowID, std::nullopt);
    EXPECT_EQ(groups[1].flowID, flow->id);
    EXPECT_EQ(groups[1].matches[0].flowID, flow->id);
    EXPECT_EQ(groups[2].flowID, other->id);

    EXPECT_EQ(searchGroups(QStringLiteral("seed"), nullptr, store->flows()).size(), 3);
    EXPECT_TRUE(searchGroups(QStringLiteral(" \t"), flow, store->flows()).isEmpty());
}

// Groups keep each flow's folded text between searches; they must answer
// as a node-by-node search of the live nodes would, edits included.
TEST_F(FlowSearchTest, GroupsAgreeWithANodeByNodeSearchAcrossEdits)
{
    const TaskFlow *other = store->addFlow(QStringLiteral("Reisen"));
    const FlowNode &street = add(QStringLiteral("Straße fegen"), QStringLiteral("erst\nDann die Straße\r\nzuletzt"));
    const FlowNode &plain = add(QStringLiteral("Plan"), QStringLiteral("one line\n  two strasse  \nthree"));
    add(QStringLiteral(""), QStringLiteral("ﬁle the résumé\u2028second"));
    add(QStringLiteral("Café"), QString(), other);
    const FlowNode &moving = add(QStringLiteral("Pack"), QStringLiteral("bags\nand the STRASSE map"), other);

    auto expectAgreement = [&](const QString &query) {
        SCOPED_TRACE(query.toStdString());
        QList<FlowSearchMatch> expected = searchNodes(query, flow->orderedItems());
        for (FlowSearchMatch match : searchNodes(query, other->orderedItems())) {
            match.flowID = other->id;
            expected << match;
        }
        QList<FlowSearchMatch> actual;
        for (const FlowSearchGroup &group : searchGroups(query, flow, store->flows()))
            actual << group.matches;
        EXPECT_EQ(actual, expected);
    };
    const QStringList queries{QStringLiteral("strasse"), QStringLiteral("e"),           QStringLiteral("file"),
                              QStringLiteral("\u0301"),  QStringLiteral("line\n  two"), QStringLiteral("a\u0000b"),
                              QStringLiteral("second"),  QStringLiteral("three"),       QStringLiteral("fe")};
    for (const QString &query : queries)
        expectAgreement(query);

    // Edits between searches: a new title, new notes, a new node, a deletion.
    store->setTitle(plain, QStringLiteral("Straßenfest"));
    store->setNotes(moving, QStringLiteral("nothing to see"));
    add(QStringLiteral("Strasse again"), {}, other);
    for (const QString &query : queries)
        expectAgreement(query);
    EXPECT_EQ(searchGroups(QStringLiteral("Plan"), flow, store->flows()).size(), 0);
    store->deleteNode(street);
    for (const QString &query : queries)
        expectAgreement(query);

    // Another language folds anew.
    ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("tr")));
    add(QStringLiteral("TOPLANTI"));
    expectAgreement(QStringLiteral("toplantı"));
    expectAgreement(QStringLiteral("strasse"));
}

// The joined texts are scanned several characters at a time: a hit must be
// found at any offset, at the very end, and after a near miss.
TEST_F(FlowSearchTest, GroupsFindHitsAtEveryOffsetOfTheJoinedTexts)
{
    for (int pad = 0; pad < 19; ++pad)
        add(QString(pad, u'x') + QStringLiteral("ab"), QStringLiteral("first\n") + QString(pad, u'y') +
                                                           QStringLiteral("zab") + QString(pad % 3, u'y') +
                                                           QStringLiteral("\nlast"));
    const QStringList queries{QStringLiteral("ab"),   QStringLiteral("xab"), QStringLiteral("xxxxxxxxxxab"),
                              QStringLiteral("xqab"), QStringLiteral("yza"), QStringLiteral("yyyyyyyyyyzaby"),
                              QStringLiteral("bf"),   QStringLiteral("t")};
    for (const QString &query : queries) {
        SCOPED_TRACE(query.toStdString());
        const QList<FlowSearchMatch> expected = searchNodes(query, flow->orderedItems());
        const QList<FlowSearchGroup> groups = searchGroups(query, flow, store->flows());
        EXPECT_EQ(groups.isEmpty() ? QList<FlowSearchMatch>() : groups.first().matches, expected);
        EXPECT_LE(groups.size(), 1);
    }
    EXPECT_EQ(searchNodes(QStringLiteral("xxxxxxxxxxab"), flow->orderedItems()).size(), 9);
    EXPECT_EQ(searchNodes(QStringLiteral("yza"), flow->orderedItems()).size(), 18);
}

} // namespace
} // namespace fenrow
