#include "AppTestSupport.h"

#include "sheets/FlowSearchPaletteView.h"
#include "shell/InterfaceLanguage.h"

#include "domain/NodeRecurrence.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QScreen>

namespace fenrow::testing {
namespace {

struct Language {
    const char *code;
    QStringList flows;
    QStringList tasks;
};

// Flow and task names a user of each language might pick, long ones included.
const QList<Language> languages = {
    {"en",
     {"Move to Leipzig", "Tax return 2025", "Website relaunch", "Garden shed"},
     {"Book the movers", "Cancel the internet contract", "Pack the books into boxes", "Register at the new address"}},
    {"de",
     {"Umzug nach Leipzig", "Steuererklärung 2025", "Website-Relaunch", "Gartenhaus bauen"},
     {"Umzugsfirma buchen", "Internetvertrag kündigen", "Bücher in Kartons packen", "Neuen Wohnsitz anmelden"}},
    {"tr",
     {"İzmir'e taşınma", "Vergi beyannamesi 2025", "Web sitesi yenileme", "Bahçe kulübesi"},
     {"Nakliyeciyi ayarla", "İnternet aboneliğini iptal et", "Kitapları kolilere yerleştir",
      "Yeni adrese kayıt yaptır"}},
    {"es",
     {"Mudanza a Leipzig", "Declaración de la renta", "Relanzamiento web", "Caseta del jardín"},
     {"Reservar la mudanza", "Cancelar el contrato de internet", "Empaquetar los libros en cajas",
      "Empadronarse en la nueva dirección"}},
    {"fr",
     {"Déménagement à Leipzig", "Déclaration d'impôts", "Refonte du site", "Abri de jardin"},
     {"Réserver les déménageurs", "Résilier le contrat internet", "Mettre les livres en cartons",
      "Déclarer la nouvelle adresse"}},
};

class LookTest : public WindowFixture, public ::testing::WithParamInterface<Language> {
protected:
    void SetUp() override { ASSERT_TRUE(InterfaceLanguage::apply(GetParam().code)); }
    void TearDown() override { InterfaceLanguage::apply("en"); }

    void addSampleFlows()
    {
        const QStringList &names = GetParam().flows;
        addFlow(names[0], 3, 2, 7);
        addFlow(names[1], 4);
        addFlow(names[2], 1, 1, 3);
        addFlow(names[3]);
    }

    // Every text the window shows must fit the space it was given.
    void expectNothingClipped(const char *where)
    {
        SCOPED_TRACE(where);
        testing::expectNothingClipped(*window);
    }

    void settle() { QApplication::processEvents(); }
};

TEST_P(LookTest, TextsFitAtDefaultAndMinimumSizes)
{
    const QString code = QString::fromLatin1(GetParam().code);
    show();
    settle();
    expectNothingClipped("empty state");
    saveScreenshot(*window, "main-window-empty-" + code);

    addSampleFlows();
    window->selectFlow(store->flows().first()->id);
    settle();
    expectNothingClipped("default size");
    saveScreenshot(*window, "main-window-" + code);

    window->resize(window->minimumSize());
    window->setSidebarWidth(0);
    settle();
    expectNothingClipped("minimum size");
    saveScreenshot(*window, "main-window-minimum-" + code);

    // The dialogs a reviewer wants to see: renaming, and deleting.
    sidebar().createFlow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return renameField() != nullptr; }));
    saveScreenshot(*window, "main-window-renaming-" + code);
    QTest::keyClick(renameField(), Qt::Key_Escape);
    chooseFromRowMenu(store->flows().first()->id, "sidebar.row.action.delete");
    QMessageBox *box = deleteConfirmation();
    ASSERT_NE(box, nullptr);
    saveScreenshot(*box, "delete-confirmation-" + code);
    box->reject();
}

TEST_P(LookTest, ReadyListFitsAndSaysWhyWhenEmpty)
{
    const QString code = QString::fromLatin1(GetParam().code);
    preferences->setHasSeededSampleFlow(false);
    show();
    ASSERT_EQ(store->flows().size(), 1) << "the sample flow";

    // Besides the sample's first task: one late, one due soon with notes,
    // one long, and one planned for today.
    const QStringList &titles = GetParam().tasks;
    const TaskFlow &move = *store->addFlow(GetParam().flows[0]);
    const auto day = [](int d) { return QDateTime(QDate(2026, 6, d), QTime(0, 0), QTimeZone("Europe/Berlin")); };
    const FlowNode &movers = *store->addNode(titles[0], move);
    store->setDueDate(day(8), movers);
    store->setPriority(NodePriority::high, movers);
    store->setEstimate(45, movers);
    const FlowNode &internet = *store->addNode(titles[1], move);
    store->setDueDate(day(15), internet);
    store->setPriority(NodePriority::medium, internet);
    store->setEstimate(20, internet);
    store->setNotes(internet, "Customer number in the folder");
    const FlowNode &books = *store->addNode(titles[2], move);
    store->setPriority(NodePriority::low, books);
    store->setEstimate(150, books);
    const FlowNode &address = *store->addNode(titles[3], move);
    store->setStartDate(day(10), address);
    store->setDueDate(day(11), address);
    // Placed first by Plan Day: Today says it follows the user's order.
    store->setDayPlanRank(1, address);

    window->setRoute(DetailRoute::ready());
    settle();
    expectNothingClipped("ready list");
    saveScreenshot(*window, "ready-list-" + code);

    window->findChild<QAbstractButton *>("ready.sort.priority")->click();
    window->resize(window->minimumSize());
    window->setSidebarWidth(0);
    settle();
    expectNothingClipped("ready list at minimum size");
    saveScreenshot(*window, "ready-list-minimum-" + code);

    const QList<const TaskFlow *> flows = store->flows();
    for (const TaskFlow *flow : flows)
        for (const FlowNode *node : flow->orderedItems())
            store->setStatus(NodeStatus::done, *node);
    window->resize(1040, 680);
    settle();
    expectNothingClipped("empty ready list");
    saveScreenshot(*window, "ready-empty-" + code);
}

TEST_P(LookTest, ArchiveAndRowMenuFit)
{
    const QString code = QString::fromLatin1(GetParam().code);
    const QStringList &titles = GetParam().tasks;
    const QStringList &names = GetParam().flows;
    const auto day = [](int d, int h, int m) { return QDateTime(QDate(2026, 6, d), QTime(h, m), QTimeZone("Europe/Berlin")); };
    const TaskFlow &move = *store->addFlow(names[0]);
    const TaskFlow &site = *store->addFlow(names[2]);
    archiveAt(day(2, 11, 20), site, {titles[2]});
    archiveAt(day(9, 17, 40), move, {titles[1], titles[3]});
    archiveAt(day(10, 8, 15), move, {titles[0]});
    const FlowNode &backup = *store->addNode(names[1], site);
    store->setRecurrence(NodeRecurrence{RecurrenceRule::weekly, 1, std::nullopt}, backup);
    store->setStatus(NodeStatus::done, backup);
    store->setStatus(NodeStatus::done, *store->addNode(titles[2], move));
    store->saveAsTemplate(site);
    show();

    window->setRoute(DetailRoute::archive());
    settle();
    expectNothingClipped("archive");
    saveScreenshot(*window, "archive-" + code);

    window->resize(window->minimumSize());
    window->setSidebarWidth(0);
    settle();
    expectNothingClipped("archive at minimum size");
    saveScreenshot(*window, "archive-minimum-" + code);
    window->resize(1040, 680);

    // A menu is a window of its own: take the screen around both.
    const auto saveWithMenu = [&](QMenu *menu, const QString &name) {
        settle();
        const QRect area = window->frameGeometry().united(menu->geometry());
        const QImage shot = window->screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
        EXPECT_TRUE(showsContent(shot)) << name.toStdString();
        saveImage(shot, name + "-" + code);
    };
    QTest::mouseClick(window->findChild<QWidget *>("sidebar.templateMenu"), Qt::LeftButton);
    QMenu *menu = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())); }));
    saveWithMenu(menu, "template-menu");
    menu->close();

    menu = openRowMenu(move.id);
    ASSERT_NE(menu, nullptr);
    saveWithMenu(menu, "row-menu");
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                      menu->actionGeometry(menu->findChild<QAction *>("sidebar.row.archiveDone")).center());
    QMessageBox *box = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        box = window->findChild<QMessageBox *>("sidebar.row.archiveConfirmation");
        return box && box->isVisible();
    }));
    saveScreenshot(*box, "archive-confirmation-" + code);
    box->reject();
}

TEST_P(LookTest, FindPaletteAndRailFit)
{
    const QString code = QString::fromLatin1(GetParam().code);
    const QStringList &titles = GetParam().tasks;
    addSampleFlows();
    const TaskFlow &move = *store->flows().first();
    const TaskFlow &site = *store->flows()[2];
    for (const QString &title : titles)
        store->addNode(title, move);
    const FlowNode &noted = *store->addNode(GetParam().flows[3], site);
    store->setNotes(noted, "Call first\n  " + titles[1] + " and " + titles[2] + ", then the rest of the long list");
    store->setStatus(NodeStatus::done, *store->addNode(titles[3], site));
    show();
    window->selectFlow(move.id);
    settle();

    window->presentSearch();
    // One letter that every language's titles have: many rows in several groups.
    QTest::keyClicks(window->searchPalette()->field(), "e");
    settle();
    expectNothingClipped("find palette");
    saveScreenshot(*window, "find-palette-" + code);
    QTest::keyClicks(window->searchPalette()->field(), "qqq");
    settle();
    expectNothingClipped("find palette without matches");
    saveScreenshot(*window, "find-palette-empty-" + code);
    QTest::keyClick(window->searchPalette()->field(), Qt::Key_Escape);

    window->setSidebarCollapsed(true, false);
    settle();
    expectNothingClipped("rail");
    saveScreenshot(*window, "rail-" + code);
}

INSTANTIATE_TEST_SUITE_P(AllLanguages, LookTest, ::testing::ValuesIn(languages),
                         [](const auto &info) { return std::string(info.param.code); });

} // namespace
} // namespace fenrow::testing
