#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QStackedWidget;

namespace fenrow {

class AppPreferences;

// What a new user sees in the main window before anything else: a welcome
// and three short pages on flows, the Ready list and quick capture. The
// last page's button marks onboarding as done; the window then shows the
// flows, and the program installs what a finished onboarding unlocks.
class OnboardingView : public QWidget {
    Q_OBJECT

public:
    enum class Page { welcome, flows, ready, capture };
    static constexpr int pageCount = 4;

    // `globalKeyOffered`: whether this desktop has a way to give Fenrow the
    // capture key everywhere. Where it has none, the capture page names the
    // command to bind in the desktop's own keyboard settings instead.
    OnboardingView(AppPreferences &preferences, bool globalKeyOffered, QWidget *parent = nullptr);

    Page page() const;
    void showPage(Page page);
    // Sets "preferences.hasCompletedOnboarding" and tells the program.
    void finish();

signals:
    // After the flag has been set.
    void completed();

private:
    void next();
    void back();
    void follow();

    AppPreferences &m_preferences;
    QStackedWidget *m_pages = nullptr;
    QWidget *m_dots = nullptr;
    QPushButton *m_back = nullptr;
    QPushButton *m_next = nullptr;
};

} // namespace fenrow
