#pragma once

class QApplication;

namespace fenrow {

// The desktop program: opens the store (or stops with the fatal message),
// shows the main window and runs the event loop.
namespace DesktopProgram {
int run(QApplication &application);
}

} // namespace fenrow
