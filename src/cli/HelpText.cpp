#include "HelpText.h"

#include "CommandRegistry.h"
#include "TextTable.h"

namespace fenrow::HelpText {

namespace {

QString commandColumn(const CommandDefinition &command)
{
    return command.argumentsSyntax.isEmpty() ? command.name : command.name + QLatin1Char(' ') + command.argumentsSyntax;
}

QString optionColumn(const OptionDefinition &option)
{
    QString text = option.shortName.isNull() ? QStringLiteral("    ") : QStringLiteral("-%1, ").arg(option.shortName);
    text += QStringLiteral("--") + option.name;
    if (option.takesValue())
        text += QLatin1Char(' ') + option.valueName;
    return text;
}

void printCommandTable(const QList<const CommandDefinition *> &commands, QTextStream &out)
{
    TextTable table({}, QStringLiteral("  "));
    for (const CommandDefinition *command : commands)
        table.addRow({commandColumn(*command), command->summary});
    table.print(out);
}

void printOptionTable(const QList<const OptionDefinition *> &options, QTextStream &out)
{
    TextTable table({}, QStringLiteral("  "));
    for (const OptionDefinition *option : options) {
        if (!option->hidden)
            table.addRow({optionColumn(*option), option->help});
    }
    table.print(out);
}

} // namespace

QString usage(const CommandRegistry &registry, const CommandDefinition &command)
{
    QString line = QStringLiteral("fenrow ") + commandColumn(command);
    for (const QString &name : command.options) {
        const OptionDefinition *option = registry.option(name);
        const QString value = option->takesValue() ? QLatin1Char(' ') + option->valueName : QString();
        line += QStringLiteral(" [--") + name + value + QLatin1Char(']');
    }
    return line;
}

void printOverview(const CommandRegistry &registry, QTextStream &out)
{
    out << "Usage: fenrow COMMAND [ARGUMENTS] [OPTIONS]\n"
           "Without a command, fenrow starts the desktop program, or brings it to the\n"
           "front when it runs. While it runs, commands are carried out by it, and its\n"
           "window shows their changes at once.\n\n"
           "Commands:\n";
    printCommandTable(registry.commands(), out);
    out << "\nOptions:\n";
    printOptionTable(registry.globalOptions(), out);
    out << "\nExit status: 0 done; 1 failed (nothing was changed); 2 refused or a\n"
           "mistake in the command line (nothing was changed). Messages go to standard\n"
           "error, results to standard output.\n"
           "\nSee \"fenrow help COMMAND\" for more on a command.\n";
}

void printGroup(const CommandRegistry &registry, const QStringList &group, QTextStream &out)
{
    const QString name = group.join(QLatin1Char(' '));
    out << "Usage: fenrow " << name << " COMMAND [ARGUMENTS] [OPTIONS]\n\n"
        << "Commands:\n";
    printCommandTable(registry.commandsUnder(group), out);
    out << "\nSee \"fenrow help " << name << " COMMAND\" for more on a command.\n";
}

void printCommand(const CommandRegistry &registry, const CommandDefinition &command, QTextStream &out)
{
    out << "Usage: " << usage(registry, command) << "\n\n" << command.summary << ".\n";
    if (!command.description.isEmpty())
        out << '\n' << command.description << '\n';

    QList<const OptionDefinition *> options;
    for (const QString &name : command.options)
        options.append(registry.option(name));
    for (const OptionDefinition *option : registry.globalOptions()) {
        // The version belongs to the program, not to a command.
        if (option->name != GlobalOption::version)
            options.append(option);
    }
    out << "\nOptions:\n";
    printOptionTable(options, out);
}

} // namespace fenrow::HelpText
