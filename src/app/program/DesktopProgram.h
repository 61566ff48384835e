#pragma once

#include <QString>

#include <memory>

class QApplication;

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class FenrowStore;
class MainWindow;
class StoreLock;

// The desktop program: takes the store (or hands a second start over to the
// Fenrow that has it, or stops with the fatal message), shows the main
// window, serves the session bus and runs the event loop.
namespace DesktopProgram {

// Everything the program holds while it runs, made in the order the
// program needs it: the store's lock, the store, its history, the
// preferences, the engine, the main window, the shell around it and the
// service on the session bus. The window is shown when `start` returns.
class Session {
public:
    // Nothing, with the reason in `fatal`, when the store cannot be opened.
    // Without `lock` a store on disk is locked here, and refused when
    // another process has it.
    static std::unique_ptr<Session> start(QApplication &application, QString *fatal,
                                          std::unique_ptr<StoreLock> lock = nullptr);
    ~Session();

    MainWindow &window() const;
    FenrowStore &store() const;
    AppPreferences &preferences() const;
    AppEnvironment &environment() const;

private:
    struct Parts;
    explicit Session(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};

int run(QApplication &application);

} // namespace DesktopProgram
} // namespace fenrow
