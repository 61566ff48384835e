#pragma once

#include "TestEngines.h"
#include "TestStore.h"

#include "capture/UnavailableEngine.h"
#include "domain/FenrowHistory.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"

#include <QSettings>

namespace fenrow::testing {

// A store with named nodes, a history, preferences in a file of their own,
// and an environment whose engine is a TestEngine (or none).
class CaptureFixture : public FlowFixture {
protected:
    CaptureFixture() : preferences(std::make_unique<QSettings>(settingsPath(), QSettings::IniFormat)) {}

    AppEnvironment &environment(bool withEngine = true, const QStringList &more = {})
    {
        QStringList arguments{"fenrow", "--ui-test"};
        if (!withEngine)
            arguments.append("--ui-test-engine-unavailable");
        arguments += more;
        EngineFactories factories{
            .scripted = [this] { return engine; },
            .foundationModels = [this] { return engine; },
            .unavailable = [] { return std::make_shared<UnavailableEngine>(); },
        };
        m_environment = std::make_unique<AppEnvironment>(arguments, factories);
        return *m_environment;
    }

    QStringList undoNames(const TaskFlow &of) const
    {
        QStringList names;
        for (const FenrowHistory::Entry &entry : history.undoStack(of.id))
            names.append(entry.name);
        return names;
    }

    std::shared_ptr<TestEngine> engine = std::make_shared<TestEngine>();
    FenrowHistory history{*store};
    QTemporaryDir settingsFolder;
    AppPreferences preferences;

private:
    // QSettings keeps what it read per path for the life of the process, so
    // each fixture takes a fresh name.
    QString settingsPath()
    {
        static int count = 0;
        return settingsFolder.filePath(QStringLiteral("capture-%1.conf").arg(++count));
    }

    std::unique_ptr<AppEnvironment> m_environment;
};

} // namespace fenrow::testing
