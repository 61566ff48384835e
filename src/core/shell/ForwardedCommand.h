#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <atomic>
#include <memory>
#include <optional>

namespace fenrow {

// A command line handed to the running program, which owns the store, and
// what came of it. The program runs the very command the caller would have
// run; what only the caller has (its folder, its terminal, its standard
// input) travels with the request, and what the program needs from the
// terminal mid-way comes back as a question, after which the caller sends
// the whole request again with the answer. A command asks before it
// changes anything, so a run cut short at a question has changed nothing.
namespace ForwardedCommand {

struct Request {
    // Without the program's name.
    QStringList arguments;
    // Where relative paths start.
    QString workingDirectory;
    // The store the caller means; the program refuses another's.
    QString storePath;
    // Whether the caller's standard input is a terminal it can ask on.
    bool interactive = false;
    // The answers to the questions asked so far, in order: "yes" or "no".
    QStringList answers;
    // The caller's whole standard input, once the command asked for it.
    std::optional<QString> input;
    // Never sent: set by the program when the caller has gone (its process
    // ended, as on Ctrl+C) while the command waited to run or ran. Work that
    // waits on the engine then gives up, so the program is free again.
    std::shared_ptr<const std::atomic_bool> callerGone;
};

enum class Stream : uint {
    out = 1,
    err = 2,
};

struct Output {
    Stream stream = Stream::out;
    // As the command wrote it, in UTF-8: passed on as it is, a long listing
    // is not decoded and encoded again on its way.
    QByteArray utf8;
    friend bool operator==(const Output &, const Output &) = default;
};

struct Reply {
    enum class Need {
        // The command ran: print `output` and exit with `status`.
        nothing,
        // Ask `question` on the terminal and send again with the answer.
        answer,
        // Send again with the whole standard input.
        input,
    };

    int status = 0;
    // In the order it was written, each stream's parts in one piece
    // where they followed each other.
    QList<Output> output;
    // What the output's bytes may lie in rather than in their own arrays
    // (a file the reply came in, mapped into memory): kept with the reply.
    std::shared_ptr<const void> outputMemory;
    Need need = Need::nothing;
    QString question;
};

inline QString needName(Reply::Need need)
{
    switch (need) {
    case Reply::Need::answer:
        return QStringLiteral("answer");
    case Reply::Need::input:
        return QStringLiteral("input");
    case Reply::Need::nothing:
        break;
    }
    return {};
}

inline Reply::Need needNamed(const QString &name)
{
    if (name == QLatin1String("answer"))
        return Reply::Need::answer;
    if (name == QLatin1String("input"))
        return Reply::Need::input;
    return Reply::Need::nothing;
}

} // namespace ForwardedCommand

} // namespace fenrow
