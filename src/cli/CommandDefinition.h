#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace fenrow {

class CommandContext;

// An option a command accepts: a long name ("json"), an optional one-letter
// alias and, for options that take one, the name of the value ("TIME").
struct OptionDefinition {
    QString name{};
    QChar shortName{};
    QString valueName{};
    QString help{};
    // Accepted but left out of help: switches for scripted runs.
    bool hidden = false;
    // The values shell completion offers, when they are a fixed set.
    QStringList choices{};

    bool takesValue() const { return !valueName.isEmpty(); }
};

// One subcommand: its words ("flow add"), what it takes, how it is
// described, and what runs it. `maxArguments` below 0 means no limit.
struct CommandDefinition {
    using Handler = std::function<int(CommandContext &)>;

    // Members default-initialise so commands can name only what they use.
    QString name{};
    QString argumentsSyntax{};
    // What shell completion offers for each argument: a placeholder it
    // knows (TASK, FLOW, FILE, TEMPLATE, ATTACHMENT for a file attached to a
    // flow, COMMAND) or choices ("add|tick");
    // "..." after one repeats it. Empty: the placeholders of argumentsSyntax.
    QStringList argumentKinds{};
    QString summary{};
    QString description{};
    QStringList options{};
    int minArguments = 0;
    int maxArguments = 0;
    // Help and version run without opening the store, so they work even when
    // it cannot be opened.
    bool usesStore = true;
    Handler run{};

    QStringList words() const { return name.split(QLatin1Char(' ')); }
};

} // namespace fenrow
