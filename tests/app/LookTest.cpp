#include "AppTestSupport.h"

#include "shell/InterfaceLanguage.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>

namespace fenrow::testing {
namespace {

struct Language {
    const char *code;
    QStringList flows;
};

// Flow names a user of each language might pick, long ones included.
const QList<Language> languages = {
    {"en", {"Move to Leipzig", "Tax return 2025", "Website relaunch", "Garden shed"}},
    {"de", {"Umzug nach Leipzig", "Steuererklärung 2025", "Website-Relaunch", "Gartenhaus bauen"}},
    {"tr", {"İzmir'e taşınma", "Vergi beyannamesi 2025", "Web sitesi yenileme", "Bahçe kulübesi"}},
    {"es", {"Mudanza a Leipzig", "Declaración de la renta", "Relanzamiento web", "Caseta del jardín"}},
    {"fr", {"Déménagement à Leipzig", "Déclaration d'impôts", "Refonte du site", "Abri de jardin"}},
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
        for (QLabel *label : window->findChildren<QLabel *>()) {
            if (!label->isVisible() || label->text().isEmpty())
                continue;
            const std::string name = label->text().toStdString();
            if (label->wordWrap()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width())) << name;
            } else {
                EXPECT_GE(label->width(), label->sizeHint().width()) << name;
            }
        }
        for (QAbstractButton *button : window->findChildren<QAbstractButton *>()) {
            if (!button->isVisible() || button->text().isEmpty())
                continue;
            EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
        }
    }

    void settle() { QApplication::processEvents(); }

    void saveScreenshot(QWidget &widget, const QString &name)
    {
        const QDir folder(QStringLiteral(FENROW_SCREENSHOT_DIR));
        ASSERT_TRUE(folder.mkpath("."));
        EXPECT_TRUE(widget.grab().save(folder.filePath(name + ".png")));
    }
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

INSTANTIATE_TEST_SUITE_P(AllLanguages, LookTest, ::testing::ValuesIn(languages),
                         [](const auto &info) { return std::string(info.param.code); });

} // namespace
} // namespace fenrow::testing
