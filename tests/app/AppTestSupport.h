#pragma once

#include "sidebar/FlowListModel.h"
#include "sidebar/FlowListView.h"
#include "window/MainWindow.h"
#include "sidebar/Sidebar.h"
#include "domain/ActiveFlowState.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowModelContainer.h"
#include "domain/FenrowStore.h"
#include "domain/FixedClock.h"
#include "domain/NodeStatus.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/SettingsFile.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProcessEnvironment>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <memory>

namespace fenrow::testing {

// A home of the test's own, for the program as `fenrow` runs it: data and
// settings (XDG_DATA_HOME, XDG_CONFIG_HOME) in a temporary folder while it
// lives, the interface in English and, unless a test says otherwise, the
// welcome done. The process's own folders come back when it goes.
class PrivateHome {
public:
    explicit PrivateHome(bool onboarded = true)
        : m_savedData(qgetenv("XDG_DATA_HOME")), m_savedConfig(qgetenv("XDG_CONFIG_HOME"))
    {
        qputenv("XDG_DATA_HOME", filePath(QStringLiteral("data")).toUtf8());
        qputenv("XDG_CONFIG_HOME", filePath(QStringLiteral("config")).toUtf8());
        const auto settings = SettingsFile::open();
        settings->setValue("preferences.uiLanguage", "en");
        if (onboarded)
            settings->setValue("preferences.hasCompletedOnboarding", true);
        settings->sync();
    }
    ~PrivateHome()
    {
        qputenv("XDG_DATA_HOME", m_savedData);
        qputenv("XDG_CONFIG_HOME", m_savedConfig);
    }
    PrivateHome(const PrivateHome &) = delete;
    PrivateHome &operator=(const PrivateHome &) = delete;

    QString path() const { return m_folder.path(); }
    QString filePath(const QString &name) const { return m_folder.filePath(name); }
    // This process's environment, with this home, for the programs a test
    // starts; in the C locale, so that their messages are English too.
    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", filePath(QStringLiteral("data")));
        environment.insert("XDG_CONFIG_HOME", filePath(QStringLiteral("config")));
        environment.insert("LC_ALL", "C.UTF-8");
        return environment;
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_savedData;
    QByteArray m_savedConfig;
};

// A main window over a fresh in-memory store and settings of its own, shown
// and active, with the helpers the GUI tests share to reach rows, menus and
// dialogs. The user has finished onboarding and met the sample flow
// already unless a test says otherwise.
class WindowFixture : public ::testing::Test {
protected:
    WindowFixture()
        : clock(QDateTime(QDate(2026, 6, 10), QTime(9, 0), QTimeZone("Europe/Berlin"))),
          m_savedConfig(qgetenv("XDG_CONFIG_HOME"))
    {
        qputenv("XDG_CONFIG_HOME", configHome.path().toUtf8());
        preferences = std::make_unique<AppPreferences>(SettingsFile::open());
        preferences->setHasSeededSampleFlow(true);
        preferences->setHasCompletedOnboarding(true);
        QString fatal;
        store = FenrowModelContainer::openStore({QStringLiteral("--ui-test")}, clock,
                                                LocalCalendar(QTimeZone("Europe/Berlin")), &fatal);
        if (!store)
            ADD_FAILURE() << fatal.toStdString();
        else
            history = std::make_unique<FenrowHistory>(*store);
    }

    ~WindowFixture() override
    {
        // Dialogs and menus are parented to the window; it goes before the store.
        window.reset();
        qputenv("XDG_CONFIG_HOME", m_savedConfig);
    }

    MainWindow &show()
    {
        window = std::make_unique<MainWindow>(*store, *history, activeFlow, *preferences, environment);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        return *window;
    }

    // A flow with `done` finished tasks, `active` in progress and `open` pending.
    const TaskFlow &addFlow(const QString &name, int done = 0, int active = 0, int open = 0)
    {
        const TaskFlow *flow = store->addFlow(name);
        for (int i = 0; i < done + active + open; ++i) {
            const FlowNode *node = store->addNode(QStringLiteral("Task %1").arg(i + 1), *flow);
            if (i < done)
                store->setStatus(NodeStatus::done, *node);
            else if (i < done + active)
                store->setStatus(NodeStatus::inProgress, *node);
        }
        return *flow;
    }

    // New tasks of `flow` finished at `when` and archived right then, with
    // any other done task of the flow.
    void archiveAt(const QDateTime &when, const TaskFlow &flow, const QStringList &titles)
    {
        const QDateTime now = clock.now();
        clock.set(when);
        for (const QString &title : titles)
            store->setStatus(NodeStatus::done, *store->addNode(title, flow));
        store->archiveDone(flow);
        clock.set(now);
    }

    QStringList flowNames() const
    {
        QStringList names;
        for (const TaskFlow *flow : store->flows())
            names << flow->name;
        return names;
    }

    Sidebar &sidebar() const { return *window->sidebar(); }
    FlowListView &list() const { return *sidebar().flowList(); }
    FlowListModel &model() const { return *sidebar().flowModel(); }

    QPoint rowCenter(const QUuid &id) const { return list().visualRect(model().indexOf(id)).center(); }

    void clickRow(const QUuid &id, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(list().viewport(), button, Qt::NoModifier, rowCenter(id));
    }

    // A widget sees the press and release of the first click before the
    // double click; the list opens the editor only for the row pressed.
    void doubleClickRow(const QUuid &id)
    {
        clickRow(id);
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, rowCenter(id));
    }

    // The open rename field; a closed one may linger hidden until deleted.
    QLineEdit *renameField() const
    {
        for (QLineEdit *field : list().findChildren<QLineEdit *>(QStringLiteral("sidebar.flow.rename")))
            if (field->isVisible())
                return field;
        return nullptr;
    }

    // Opens a row's context menu the way a right click does.
    QMenu *openRowMenu(const QUuid &id)
    {
        const QPoint position = rowCenter(id);
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, list().viewport()->mapToGlobal(position));
        QApplication::sendEvent(list().viewport(), &event);
        QMenu *menu = nullptr;
        EXPECT_TRUE(QTest::qWaitFor([&] { return (menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())); }));
        return menu;
    }

    void chooseFromRowMenu(const QUuid &id, const char *action)
    {
        QMenu *menu = openRowMenu(id);
        ASSERT_NE(menu, nullptr);
        QAction *entry = menu->findChild<QAction *>(QString::fromLatin1(action));
        ASSERT_NE(entry, nullptr) << action;
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(entry).center());
    }

    QMessageBox *deleteConfirmation() const
    {
        QMessageBox *box = nullptr;
        const bool shown = QTest::qWaitFor([&] {
            box = window->findChild<QMessageBox *>(QStringLiteral("sidebar.row.deleteConfirmation"));
            return box && box->isVisible();
        });
        return shown ? box : nullptr;
    }

    QTemporaryDir configHome;
    std::unique_ptr<AppPreferences> preferences;
    FixedClock clock;
    std::unique_ptr<FenrowStore> store;
    std::unique_ptr<FenrowHistory> history;
    ActiveFlowState activeFlow;
    // Scripted answers: sheets that ask an engine get the same replies every run.
    AppEnvironment environment{QStringList{AppEnvironment::uiTestArgument}};
    std::unique_ptr<MainWindow> window;

private:
    QByteArray m_savedConfig;
};

// Saves `image` as `name` (".png" added when missing) among the run's
// screenshots, for a person to look at.
inline void saveImage(const QImage &image, QString name)
{
    if (!name.endsWith(QLatin1StringView(".png")))
        name += QStringLiteral(".png");
    const QDir folder(QStringLiteral(FENROW_SCREENSHOT_DIR));
    ASSERT_TRUE(folder.mkpath("."));
    EXPECT_TRUE(image.save(folder.filePath(name)));
}

// Whether the lower half of `image` holds more than one colour: a window
// grabbed before its content showed is a menu bar over a plain ground.
inline bool showsContent(const QImage &image)
{
    const QRgb first = image.pixel(0, image.height() - 1);
    for (int y = image.height() / 2; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != first)
                return true;
    return false;
}

// `widget` as it shows once its window is on screen and every pending
// layout and paint has run, saved for review; fails when it shows nothing.
inline QImage saveScreenshot(QWidget &widget, const QString &name)
{
    EXPECT_TRUE(QTest::qWaitForWindowExposed(widget.window())) << name.toStdString();
    QCoreApplication::sendPostedEvents();
    QApplication::processEvents();
    const QImage image = widget.grab().toImage();
    EXPECT_TRUE(showsContent(image)) << name.toStdString() << " shows nothing";
    saveImage(image, name);
    return image;
}

// The texts shown in `root` that do not fit the room they were given.
inline QStringList clippedTexts(QWidget &root)
{
    QStringList texts;
    for (QLabel *label : root.findChildren<QLabel *>())
        if (label->isVisible() && !label->text().isEmpty() &&
            (label->wordWrap() ? label->height() < label->heightForWidth(label->width())
                               : label->width() < label->sizeHint().width()))
            texts << label->text();
    for (QAbstractButton *button : root.findChildren<QAbstractButton *>())
        if (button->isVisible() && !button->text().isEmpty() && button->width() < button->sizeHint().width())
            texts << button->text();
    return texts;
}

// Every text in `root` fits, once the layouts a new text set off have run
// (a wrapped label grows over more than one turn of the event loop).
inline void expectNothingClipped(QWidget &root)
{
    QStringList cut;
    EXPECT_TRUE(QTest::qWaitFor([&] { return (cut = clippedTexts(root)).isEmpty(); }, 2000))
        << cut.join(QStringLiteral(" | ")).toStdString();
}

} // namespace fenrow::testing
