#pragma once

#include <QByteArrayView>
#include <QString>
#include <QTextStream>

#include <functional>
#include <memory>

namespace fenrow {

// The terminal as commands see it: output, errors, and questions to the
// user. Tests build one over strings; the program over the standard streams.
class Console {
public:
    // `input` may be null. A console that is not `interactive` never asks:
    // a question then has no answer.
    Console(QTextStream &out, QTextStream &err, QTextStream *input, bool interactive);
    virtual ~Console();

    QTextStream &out() { return *m_currentOut; }
    QTextStream &err() { return m_err; }

    // A command's results wait for its save: from `holdOutput` on, what is
    // written to `out` stays in memory until `releaseOutput` prints it or
    // `discardOutput` drops it. Errors and questions are never held.
    // `releasable`, when given, says whether what waits may go out already
    // (nothing is left unsaved): long output then goes out in pieces rather
    // than piling up in memory.
    void holdOutput(std::function<bool()> releasable = {});
    void releaseOutput();
    void discardOutput();

    enum class Answer { yes, no, unanswered };
    // Asks a yes/no question on the error stream (so output stays clean for
    // pipes); anything but "y" or "yes" is no. No terminal or end of input
    // is `unanswered`.
    virtual Answer confirm(const QString &question);

    // Everything left on the input, for a file read from "-"; empty when
    // there is no input.
    virtual QString readAll();

    // Reports a failure and returns the failure status.
    int fail(const QString &message);
    // Reports a change the data's rules do not allow (a loop, a connection
    // across flows) and returns the usage status: the command was read, and
    // it asked for something that cannot be.
    int refuse(const QString &message);
    // Reports a mistake in the command line, shows how `helpTopic` is used
    // (when `usage` is given) and where to read more; returns the usage status.
    int usageError(const QString &message, const QString &usage, const QString &helpTopic);

    bool isInteractive() const { return m_interactive; }

    // Whether nobody reads this console any more: a forwarded command's
    // caller that has ended. Work that waits gives up then.
    virtual bool isAbandoned() const { return false; }

    // Writes text already in UTF-8 after what `stream` holds: straight to
    // its device when it has one, without decoding and encoding it again.
    static void writeUtf8(QTextStream &stream, QByteArrayView utf8);

private:
    class HeldOutput;

    QTextStream &m_out;
    QTextStream &m_err;
    std::unique_ptr<HeldOutput> m_held;
    QTextStream m_heldOut;
    QTextStream *m_currentOut = &m_out;
    QTextStream *m_input;
    bool m_interactive;
};

} // namespace fenrow
