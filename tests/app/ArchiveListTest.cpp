#include "AppTestSupport.h"

#include "lists/ArchiveListModel.h"
#include "lists/ArchiveListView.h"
#include "lists/ArchiveRowDelegate.h"
#include "look/EmptyStateView.h"
#include "sidebar/SidebarRouteRow.h"
#include "domain/NodeRecurrence.h"

#include <QLabel>
#include <QSignalSpy>
#include <QStackedWidget>

namespace fenrow::testing {
namespace {

QDateTime berlin(int day, int hour, int minute = 0)
{
    return QDateTime(QDate(2026, 6, day), QTime(hour, minute), QTimeZone("Europe/Berlin"));
}

class ArchiveListTest : public WindowFixture {
protected:
    ArchiveListView &showArchive()
    {
        show();
        QTest::mouseClick(sidebar().archiveRow(), Qt::LeftButton);
        return *window->archiveList();
    }

    ArchiveListModel &rows() const { return *window->archiveList()->model(); }

    // Days as "# title (count)", records as "title | flow | time | round".
    QStringList rowTexts() const
    {
        QStringList texts;
        for (int row = 0; row < rows().rowCount(); ++row) {
            const QModelIndex index = rows().index(row);
            if (ArchiveListModel::Kind(index.data(ArchiveListModel::KindRole).toInt()) == ArchiveListModel::Kind::day) {
                texts << QStringLiteral("# %1 (%2)").arg(index.data().toString()).arg(
                             index.data(ArchiveListModel::CountRole).toInt());
                continue;
            }
            QStringList parts{index.data().toString(), index.data(ArchiveListModel::FlowNameRole).toString(),
                              index.data(ArchiveListModel::TimeTextRole).toString(),
                              index.data(ArchiveListModel::RepeatTextRole).toString()};
            parts.removeAll(QString());
            texts << parts.join(QStringLiteral(" | "));
        }
        return texts;
    }

    // The empty state's title, or "list" while the list shows.
    QString shown() const
    {
        ArchiveListView &view = *window->archiveList();
        const auto *content = qobject_cast<QStackedWidget *>(view.list()->parentWidget());
        return content->currentWidget() == view.emptyState()
                   ? view.findChild<QLabel *>("archive.empty.title")->text()
                   : QStringLiteral("list");
    }

    QModelIndex rowTitled(const QString &title) const
    {
        for (int row = 0; row < rows().rowCount(); ++row)
            if (rows().index(row).data().toString() == title)
                return rows().index(row);
        return {};
    }

    void clickAt(const QModelIndex &index, QRect (*button)(const QRect &))
    {
        QListView *list = window->archiveList()->list();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, button(list->visualRect(index)).center());
    }

    qsizetype recordCount() const { return qsizetype(store->completionRecords().size()); }
};

TEST_F(ArchiveListTest, DaysNewestFirstWithSearchCountAndEmptyStates)
{
    ArchiveListView &archive = showArchive();
    EXPECT_EQ(window->windowTitle(), "Archive");
    EXPECT_EQ(window->findChild<QStackedWidget *>("detail")->currentWidget(), &archive);
    EXPECT_TRUE(sidebar().archiveRow()->isChecked());
    EXPECT_FALSE(sidebar().readyRow()->isChecked());
    EXPECT_FALSE(activeFlow.activeFlowID().has_value());
    EXPECT_EQ(shown(), "Nothing archived yet");
    EXPECT_FALSE(archive.searchField()->isVisible()) << "nothing to search in";

    // Records come in while the archive is on screen.
    const TaskFlow &job = addFlow("Job hunt");
    const TaskFlow &garden = addFlow("Garden");
    archiveAt(berlin(3, 16, 45), garden, {"Plant tulips"});
    archiveAt(berlin(9, 18, 5), job, {"Résumé draft"});
    archiveAt(berlin(10, 8, 30), job, {"Cover letter"});
    const FlowNode &water = *store->addNode("Water the beds", garden);
    store->setRecurrence(NodeRecurrence{RecurrenceRule::daily, 1, std::nullopt}, water);
    store->setStatus(NodeStatus::done, water);

    const auto at = [](int hour, int minute) { return QLocale("en").toString(QTime(hour, minute), QLocale::ShortFormat); };
    EXPECT_EQ(rowTexts(), QStringList({"# Today (2)", "Water the beds | Garden | " + at(9, 0) + " | Repeated · round 1",
                                       "Cover letter | Job hunt | " + at(8, 30), "# Yesterday (1)",
                                       "Résumé draft | Job hunt | " + at(18, 5), "# June 3, 2026 (1)",
                                       "Plant tulips | Garden | " + at(16, 45)}));
    EXPECT_EQ(archive.findChild<QLabel *>("archive.count")->text(), "Entries: 4");
    EXPECT_TRUE(archive.searchField()->isVisible());
    EXPECT_EQ(archive.searchField()->placeholderText(), "Search the archive");

    // The search field filters the rows (what matches is the archive's own rule).
    QTest::keyClicks(archive.searchField(), "resume");
    EXPECT_EQ(rowTexts(), QStringList({"# Yesterday (1)", "Résumé draft | Job hunt | " + at(18, 5)}));
    EXPECT_EQ(archive.findChild<QLabel *>("archive.count")->text(), "Entries: 1");

    archive.searchField()->setText("taxes");
    EXPECT_EQ(shown(), "No matches");
    EXPECT_EQ(archive.emptyState()->symbol(), Glyphs::Symbol::noMatches);
    EXPECT_TRUE(archive.searchField()->isVisible()) << "the search can still be changed";

    // Escape empties the search first.
    archive.searchField()->setFocus();
    QTest::keyClick(archive.searchField(), Qt::Key_Escape);
    EXPECT_EQ(archive.searchField()->text(), "");
    EXPECT_EQ(shown(), "list");
    EXPECT_EQ(rows().recordCount(), 4);
}

TEST_F(ArchiveListTest, RowsRestoreOrDeleteTheirRecord)
{
    const TaskFlow &flow = addFlow("Garden", 0, 0, 1);
    archiveAt(berlin(9, 10), flow, {"Prune roses"});
    const FlowNode &water = *store->addNode("Water", flow);
    store->setRecurrence(NodeRecurrence{RecurrenceRule::daily, 1, std::nullopt}, water);
    store->setStatus(NodeStatus::done, water);
    showArchive();
    ASSERT_EQ(rows().recordCount(), 2);

    // A round of a recurring task is history, not a task to bring back.
    const QModelIndex round = rowTitled("Water");
    EXPECT_FALSE(round.data(ArchiveListModel::CanRestoreRole).toBool());
    QSignalSpy changes(store.get(), &FenrowStore::changed);
    clickAt(round, &ArchiveRowDelegate::restoreRect);
    EXPECT_EQ(changes.count(), 0);

    const QModelIndex archived = rowTitled("Prune roses");
    ASSERT_TRUE(archived.data(ArchiveListModel::CanRestoreRole).toBool());
    clickAt(archived, &ArchiveRowDelegate::restoreRect);
    QStringList titles;
    for (const FlowNode *node : flow.orderedItems())
        titles << node->title + (node->isDone ? "+" : "");
    EXPECT_EQ(titles, QStringList({"Task 1", "Water", "Prune roses+"})) << "back at the end, done";
    EXPECT_EQ(rowTexts().size(), 2) << "its row has gone";

    clickAt(rowTitled("Water"), &ArchiveRowDelegate::deleteRect);
    EXPECT_EQ(recordCount(), 0);
    EXPECT_EQ(shown(), "Nothing archived yet");
    EXPECT_EQ(flow.items().size(), 3u) << "deleting a record leaves the flow alone";
}

} // namespace
} // namespace fenrow::testing
