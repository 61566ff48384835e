#include "MainWindow.h"

#include "quickcapture/GlobalCaptureKey.h"
#include "OnboardingView.h"
#include "shell/AppPreferences.h"
#include "shell/WindowFitting.h"

#include <QStackedWidget>

namespace fenrow {

QWidget *MainWindow::withOnboarding(QWidget *root)
{
    m_stage = new QStackedWidget(this);
    m_stage->setObjectName(QStringLiteral("main.window.stage"));
    m_stage->addWidget(root);
    m_onboarding = nullptr;
    followOnboarding();
    return m_stage;
}

OnboardingView *MainWindow::onboarding() const
{
    return m_onboarding;
}

void MainWindow::followOnboarding()
{
    const bool onboarded = m_preferences.hasCompletedOnboarding();
    const QSize minimum = WindowFitting::minimumContentSize(onboarded);
    setMinimumSize(minimum);
    if (onboarded) {
        // Made afresh for the next restart of onboarding.
        if (m_onboarding) {
            m_stage->removeWidget(m_onboarding);
            m_onboarding->deleteLater();
            m_onboarding = nullptr;
        }
        m_stage->setCurrentIndex(0);
        return;
    }
    if (!m_onboarding) {
        m_onboarding = new OnboardingView(m_preferences, GlobalCaptureKey::offeredOnThisDesktop(), m_stage);
        connect(m_onboarding, &OnboardingView::completed, this, &MainWindow::onboardingCompleted);
        m_stage->addWidget(m_onboarding);
    }
    m_stage->setCurrentWidget(m_onboarding);
}

} // namespace fenrow
