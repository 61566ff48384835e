#pragma once

#include "shell/ForwardedCommand.h"

#include <functional>
#include <optional>

namespace fenrow {

class CommandRegistry;
class Console;
struct CommandWorkspace;

// Both ends of a command handed to the running program (see
// ForwardedCommand): the program runs it on its own store, the caller
// answers its questions and prints what it wrote.
namespace CommandForwarding {

// In the program: runs the request on `workspace` and says what came of
// it, or what the caller must supply first.
ForwardedCommand::Reply runInOwner(const CommandRegistry &registry, const CommandWorkspace &workspace,
                                   const ForwardedCommand::Request &request);

// Sends a request and returns the reply, or none with the reason.
using Sender = std::function<std::optional<ForwardedCommand::Reply>(const ForwardedCommand::Request &,
                                                                    QString *problem)>;

// In the caller: sends `request` until the command has run, asking the
// questions on `console` and reading its input when the program wants them,
// then prints the output. Returns the command's exit status.
int forward(ForwardedCommand::Request request, Console &console, const Sender &send);

} // namespace CommandForwarding

} // namespace fenrow
