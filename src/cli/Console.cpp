#include "Console.h"

#include "ExitStatus.h"

#include <QFileDevice>
#include <QIODevice>

namespace fenrow {

// Where held output waits, as the stream encoded it. Past a piece's worth it
// goes out at once whenever nothing is left unsaved.
class Console::HeldOutput : public QIODevice {
public:
    static constexpr qsizetype pieceSize = 64 * 1024;

    explicit HeldOutput(QTextStream &out) : m_out(out) { open(QIODevice::WriteOnly); }

    std::function<bool()> releasable;

    void release()
    {
        pass(m_bytes);
        m_bytes.clear();
    }
    void drop() { m_bytes.clear(); }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 length) override
    {
        // A long table comes in one piece: passed on, not copied first.
        if (m_bytes.isEmpty() && length >= pieceSize && releasable && releasable()) {
            pass(QByteArrayView(data, length));
            return length;
        }
        m_bytes.append(data, length);
        if (m_bytes.size() >= pieceSize && releasable && releasable())
            release();
        return length;
    }

private:
    void pass(QByteArrayView bytes)
    {
        writeUtf8(m_out, bytes);
        m_out.flush();
    }

    QTextStream &m_out;
    QByteArray m_bytes;
};

Console::Console(QTextStream &out, QTextStream &err, QTextStream *input, bool interactive)
    : m_out(out), m_err(err), m_held(std::make_unique<HeldOutput>(out)), m_heldOut(m_held.get()),
      m_input(input), m_interactive(interactive)
{
}

Console::~Console() = default;

void Console::writeUtf8(QTextStream &stream, QByteArrayView utf8)
{
    QIODevice *device = stream.device();
    if (!device) {
        stream << QString::fromUtf8(utf8);
        return;
    }
    stream.flush();
    device->write(utf8.data(), utf8.size());
    // As the stream's own flush would: the standard output goes out now.
    if (auto *file = qobject_cast<QFileDevice *>(device))
        file->flush();
}

Console::Answer Console::confirm(const QString &question)
{
    if (!m_interactive || !m_input)
        return Answer::unanswered;
    m_out.flush();
    m_err << question << " [y/N] " << Qt::flush;
    QString line;
    if (!m_input->readLineInto(&line)) {
        // Leave the cursor on a fresh line after end of input (Ctrl-D).
        m_err << Qt::endl;
        return Answer::unanswered;
    }
    const QString answer = line.trimmed().toLower();
    return answer == QLatin1String("y") || answer == QLatin1String("yes") ? Answer::yes : Answer::no;
}

void Console::holdOutput(std::function<bool()> releasable)
{
    m_out.flush();
    m_held->releasable = std::move(releasable);
    m_currentOut = &m_heldOut;
}

void Console::releaseOutput()
{
    m_heldOut.flush();
    m_held->release();
    m_currentOut = &m_out;
}

void Console::discardOutput()
{
    m_heldOut.flush();
    m_held->drop();
    m_currentOut = &m_out;
}

QString Console::readAll()
{
    return m_input ? m_input->readAll() : QString();
}

int Console::fail(const QString &message)
{
    m_out.flush();
    m_err << "fenrow: " << message << Qt::endl;
    return exitFailure;
}

int Console::refuse(const QString &message)
{
    m_out.flush();
    m_err << "fenrow: " << message << Qt::endl;
    return exitUsage;
}

int Console::usageError(const QString &message, const QString &usage, const QString &helpTopic)
{
    m_out.flush();
    m_err << "fenrow: " << message << '\n';
    if (!usage.isEmpty())
        m_err << "Usage: " << usage << '\n';
    const QString help = helpTopic.isEmpty() ? QStringLiteral("fenrow help")
                                             : QStringLiteral("fenrow help %1").arg(helpTopic);
    m_err << "See \"" << help << "\" for more." << Qt::endl;
    return exitUsage;
}

} // namespace fenrow
