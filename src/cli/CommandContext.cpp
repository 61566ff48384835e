#include "CommandContext.h"

#include "CommandRegistry.h"
#include "EngineSupport.h"
#include "HelpText.h"

#include "domain/FenrowHistory.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/SettingsFile.h"

#include <QDir>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow {

CommandContext::CommandContext(const CommandRegistry &registry, const CommandDefinition &command,
                               const ParsedArguments &parsed, Console &console, const Clock &clock,
                               const CommandWorkspace &workspace, QString workingDirectory)
    : m_registry(registry), m_command(command), m_parsed(parsed),
      m_arguments(parsed.words.mid(command.words().size())), m_console(console), m_clock(clock),
      m_workspace(workspace), m_workingDirectory(std::move(workingDirectory))
{
}

CommandContext::~CommandContext() = default;

bool CommandContext::json() const
{
    return hasOption(GlobalOption::json);
}

FenrowStore &CommandContext::store() const
{
    Q_ASSERT(m_workspace.store);
    return *m_workspace.store;
}

FenrowHistory &CommandContext::history()
{
    if (m_workspace.history)
        return *m_workspace.history;
    if (!m_ownHistory)
        m_ownHistory = std::make_unique<FenrowHistory>(store());
    return *m_ownHistory;
}

AppPreferences &CommandContext::preferences()
{
    if (m_workspace.preferences)
        return *m_workspace.preferences;
    if (!m_ownPreferences)
        m_ownPreferences = std::make_unique<AppPreferences>(SettingsFile::open());
    return *m_ownPreferences;
}

AppEnvironment &CommandContext::environment()
{
    if (m_workspace.environment)
        return *m_workspace.environment;
    if (!m_ownEnvironment)
        m_ownEnvironment = EngineSupport::environment(*this);
    return *m_ownEnvironment;
}

QString CommandContext::filePath(const QString &path) const
{
    return QDir(m_workingDirectory).absoluteFilePath(path);
}

void CommandContext::printJson(const QJsonValue &value)
{
    const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    out() << QString::fromUtf8(document.toJson(QJsonDocument::Indented));
}

int CommandContext::usageError(const QString &message)
{
    return m_console.usageError(message, HelpText::usage(m_registry, m_command), m_command.name);
}

} // namespace fenrow
