#pragma once

#include "shell/ForwardedCommand.h"

#include <QString>

namespace fenrow {

struct IntentServices;

// What the running program does for callers on the bus. The bus service
// checks and reads each call and leaves the doing to this; everything runs
// on the UI thread.
class FenrowBusHandler {
public:
    virtual ~FenrowBusHandler() = default;

    // The absolute path of the store the program owns.
    virtual QString storePath() const = 0;

    // A second start of the program: bring the window forward, toggle the
    // capture panel, or route a URL.
    virtual void activate() = 0;
    virtual void toggleCapture() = 0;
    virtual void openURL(const QString &url) = 0;

    // The store and its companions for the intents.
    virtual IntentServices &intentServices() = 0;

    // Runs a command line inside the program. It may run the event loop
    // while an engine answers; the service sends no second command in the
    // meantime.
    virtual ForwardedCommand::Reply runCommand(const ForwardedCommand::Request &request) = 0;
};

} // namespace fenrow
