#include "CommandForwarding.h"

#include "CommandDispatcher.h"
#include "Console.h"
#include "ExitStatus.h"

#include "domain/FenrowStore.h"

#include <QIODevice>
#include <QTextStream>

namespace fenrow::CommandForwarding {

using ForwardedCommand::Output;
using ForwardedCommand::Reply;
using ForwardedCommand::Request;
using ForwardedCommand::Stream;

namespace {

// Bytes as the streams wrote them, each run of one stream's in one piece;
// a stream writes whole characters, so no piece ends inside one.
using Transcript = QList<std::pair<Stream, QByteArray>>;

// A write-only device that appends what a stream writes to one list shared
// by both streams, so their parts keep the order they were written in.
class TranscriptDevice : public QIODevice {
public:
    TranscriptDevice(Transcript &transcript, Stream stream) : m_transcript(transcript), m_stream(stream)
    {
        open(QIODevice::WriteOnly);
    }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 length) override
    {
        if (!m_transcript.isEmpty() && m_transcript.last().first == m_stream)
            m_transcript.last().second.append(data, length);
        else
            m_transcript.append({m_stream, QByteArray(data, length)});
        return length;
    }

private:
    Transcript &m_transcript;
    Stream m_stream;
};

// The streams come first, so that they exist when the console is made over
// them.
struct TranscriptStreams {
    explicit TranscriptStreams(Transcript &transcript)
        : outDevice(transcript, Stream::out), errDevice(transcript, Stream::err), outStream(&outDevice),
          errStream(&errDevice)
    {
    }
    TranscriptDevice outDevice;
    TranscriptDevice errDevice;
    QTextStream outStream;
    QTextStream errStream;
};

// The caller's terminal, as far as the program has it: the answers given so
// far and the input once sent. A question beyond them is noted, and the
// command, finding no answer, stops without changing anything.
class OwnerConsole : private TranscriptStreams, public Console {
public:
    OwnerConsole(Transcript &transcript, const Request &request)
        : TranscriptStreams(transcript),
          Console(outStream, errStream, nullptr, request.interactive),
          m_answers(request.answers),
          m_input(request.input),
          m_callerGone(request.callerGone)
    {
    }

    bool isAbandoned() const override { return m_callerGone && m_callerGone->load(); }

    Answer confirm(const QString &question) override
    {
        if (!isInteractive())
            return Answer::unanswered;
        if (m_asked < m_answers.size()) {
            const QString answer = m_answers[m_asked++];
            if (answer == QLatin1String("yes"))
                return Answer::yes;
            return answer == QLatin1String("no") ? Answer::no : Answer::unanswered;
        }
        if (m_need == Reply::Need::nothing) {
            m_need = Reply::Need::answer;
            m_question = question;
        }
        return Answer::unanswered;
    }

    QString readAll() override
    {
        if (m_input)
            return *m_input;
        if (m_need == Reply::Need::nothing)
            m_need = Reply::Need::input;
        return {};
    }

    void flush()
    {
        outStream.flush();
        errStream.flush();
    }

    Reply::Need need() const { return m_need; }
    const QString &question() const { return m_question; }

private:
    QStringList m_answers;
    qsizetype m_asked = 0;
    std::optional<QString> m_input;
    std::shared_ptr<const std::atomic_bool> m_callerGone;
    Reply::Need m_need = Reply::Need::nothing;
    QString m_question;
};

// Bounds the exchange with a program that keeps asking.
constexpr int maximumRounds = 16;

} // namespace

Reply runInOwner(const CommandRegistry &registry, const CommandWorkspace &workspace, const Request &request)
{
    Reply reply;
    Transcript transcript;
    OwnerConsole console(transcript, request);
    const CommandDispatcher dispatcher(registry, workspace);
    reply.status = dispatcher.run(request.arguments, console, request.workingDirectory);
    console.flush();
    if (console.need() != Reply::Need::nothing) {
        // What the command wrote before it stopped is written again when
        // it runs with what it asked for.
        reply.need = console.need();
        reply.question = console.question();
        return reply;
    }
    for (const auto &[stream, bytes] : std::as_const(transcript))
        reply.output.append({stream, bytes});
    return reply;
}

int forward(Request request, Console &console, const Sender &send)
{
    for (int round = 0; round < maximumRounds; ++round) {
        QString problem;
        const std::optional<Reply> reply = send(request, &problem);
        if (!reply)
            return console.fail(problem);
        switch (reply->need) {
        case Reply::Need::answer:
            switch (console.confirm(reply->question)) {
            case Console::Answer::yes:
                request.answers.append(QStringLiteral("yes"));
                break;
            case Console::Answer::no:
                request.answers.append(QStringLiteral("no"));
                break;
            case Console::Answer::unanswered:
                // End of input: the command then goes as without a terminal.
                request.answers.append(QStringLiteral("unanswered"));
                break;
            }
            continue;
        case Reply::Need::input:
            request.input = console.readAll();
            continue;
        case Reply::Need::nothing:
            break;
        }
        for (const Output &part : reply->output) {
            QTextStream &stream = part.stream == Stream::err ? console.err() : console.out();
            Console::writeUtf8(stream, part.utf8);
            stream.flush();
        }
        return reply->status;
    }
    return console.fail(QStringLiteral("the running Fenrow kept asking for more; the command was not carried out"));
}

} // namespace fenrow::CommandForwarding
