#pragma once

#include "SettingsPage.h"

#include <QWidget>

class QListWidget;
class QStackedWidget;

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class FenrowStore;
class InterfaceLook;

// The settings: a window of its own with a list of pages on the left.
// Every control writes its preference the moment it changes, and follows
// the preference back when something else changes it. Escape closes the
// window. A change of language or colours builds the pages again, on the
// page the user was on.
class SettingsWindow : public QWidget {
    Q_OBJECT

public:
    SettingsWindow(FenrowStore &store, AppPreferences &preferences, const AppEnvironment &environment,
                   InterfaceLook &look, QWidget *parent = nullptr);

    void showPage(SettingsPage page);
    SettingsPage currentPage() const;
    // The page's widget, named "settings.page.<name>".
    QWidget *page(SettingsPage page) const;

private:
    void build();
    QWidget *makeGeneralPage();
    QWidget *makeAppearancePage();
    QWidget *makeLanguagePage();
    QWidget *makeAboutPage();

    FenrowStore &m_store;
    AppPreferences &m_preferences;
    const AppEnvironment &m_environment;
    QListWidget *m_pageList = nullptr;
    QStackedWidget *m_pages = nullptr;
};

} // namespace fenrow
