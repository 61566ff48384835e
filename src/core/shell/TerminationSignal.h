#pragma once

#include <QObject>

namespace fenrow {

// SIGTERM as an ordinary event: a system that asks the program to end gets
// the same orderly quit as the Quit command. The signal handler only writes
// a byte into a socket pair; the event loop reads it and `received` is
// emitted on the thread of the application object, where it is safe to
// close windows and save.
class TerminationSignal : public QObject {
    Q_OBJECT

public:
    // Takes over SIGTERM for the rest of the process. Only the first call
    // does anything; it returns false for later calls and when the socket
    // pair cannot be made (SIGTERM then keeps its default: the process ends).
    static bool install();
    // The one object that emits `received`, made by `install`; null before.
    static TerminationSignal *instance();

signals:
    void received();

private:
    explicit TerminationSignal(QObject *parent);
};

} // namespace fenrow
