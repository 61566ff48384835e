#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QTextStream;

namespace fenrow {

class CommandRegistry;

// Shell completion answered by the program itself, so the bash, zsh and
// fish scripts stay thin and every command in the registry completes
// without touching them. The scripts run
//     fenrow __complete WORD… CURRENT
// with the words before the cursor (without "fenrow") and the unquoted
// word being typed. The first line printed is ":files" when the shell
// should also offer file names, else ":words"; then one candidate a line.
namespace ShellCompletion {

inline const QString commandName = QStringLiteral("__complete");

// Names from the store, asked for only when a position needs them.
struct StoreNames {
    std::function<QStringList()> flows;
    std::function<QStringList()> tasks;
    std::function<QStringList()> templates;
    // Files attached to flows (not in the trash).
    std::function<QStringList()> attachments;
};

struct Candidates {
    bool files = false;
    QStringList words;
};

Candidates complete(const CommandRegistry &registry, const QStringList &before, const QString &current,
                    const StoreNames &names);

// The names in the store file at `storePath`, read without its lock and
// without changing anything; empty when it cannot be read at once.
StoreNames readStore(const QString &storePath);

// `arguments` are the words after "__complete". Always succeeds: a shell
// shows nothing rather than an error.
int run(const CommandRegistry &registry, const QStringList &arguments, const StoreNames &names, QTextStream &out);

} // namespace ShellCompletion

} // namespace fenrow
