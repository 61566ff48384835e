#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace fenrow {

class AppEnvironment;
class CommandContext;

namespace EngineSupport {

// The inference engine of this run: the scripted one with --ui-test (none
// with --ui-test-engine-unavailable as well), otherwise what this computer
// offers.
// A model chosen in the settings is loaded here, with a line on the
// standard error while it loads.
std::unique_ptr<AppEnvironment> environment(CommandContext &context);

// Which engine answers, as one line for the user.
QString engineLine(const AppEnvironment &environment);

// Runs the event loop until `done` holds: engine answers come back through
// it, while the engine works on its own thread. False when the command's
// caller went away first (see Console::isAbandoned): the caller then gives
// up on the engine's work.
bool waitUntil(CommandContext &context, const std::function<bool()> &done);

// Why there is no engine, as one or two sentences for the user.
QString whyNoEngine(const AppEnvironment &environment);

} // namespace EngineSupport

} // namespace fenrow
