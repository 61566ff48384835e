#include "CommandContext.h"

#include "CommandRegistry.h"
#include "HelpText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow {

CommandContext::CommandContext(const CommandRegistry &registry, const CommandDefinition &command,
                               const ParsedArguments &parsed, Console &console, const Clock &clock,
                               FenrowStore *store)
    : m_registry(registry), m_command(command), m_parsed(parsed),
      m_arguments(parsed.words.mid(command.words().size())), m_console(console), m_clock(clock), m_store(store)
{
}

bool CommandContext::json() const
{
    return hasOption(GlobalOption::json);
}

FenrowStore &CommandContext::store() const
{
    Q_ASSERT(m_store);
    return *m_store;
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
