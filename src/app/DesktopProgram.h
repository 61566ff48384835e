#pragma once

#include <QString>

#include <memory>

class QApplication;

namespace fenrow {

class FenrowStore;
class MainWindow;

// The desktop program: opens the store (or stops with the fatal message),
// shows the main window and runs the event loop.
namespace DesktopProgram {

// Everything the program holds while it runs, made in the order the
// program needs it: the store, its history, the preferences, the engine,
// the main window and the shell around it. The window is shown when
// `start` returns.
class Session {
public:
    // Nothing, with the reason in `fatal`, when the store cannot be opened.
    static std::unique_ptr<Session> start(QApplication &application, QString *fatal);
    ~Session();

    MainWindow &window() const;
    FenrowStore &store() const;

private:
    struct Parts;
    explicit Session(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};

int run(QApplication &application);

} // namespace DesktopProgram
} // namespace fenrow
