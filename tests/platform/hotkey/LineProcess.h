#pragma once

#include <QProcess>
#include <QStringList>
#include <QTest>

#include <optional>
#include <vector>

namespace fenrow::testing {

// A helper program beside a test (another X client, a portal on the
// private bus) that takes commands a line at a time on its standard input
// and answers in lines on its standard output. Its answers are waited for
// with the event loop turning, never for a fixed time.
class LineProcess {
public:
    LineProcess(const QString &program, const QStringList &arguments = {})
    {
        m_process.setProgram(program);
        m_process.setArguments(arguments);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QObject::connect(&m_process, &QProcess::readyReadStandardOutput, [this] { read(); });
        m_process.start();
    }

    ~LineProcess()
    {
        // Closing its input ends it, and with it whatever it held.
        m_process.closeWriteChannel();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

    LineProcess(const LineProcess &) = delete;
    LineProcess &operator=(const LineProcess &) = delete;

    // Started and ready for commands.
    bool ready() { return next(QStringLiteral("ready")).has_value(); }

    void send(const QString &line) { m_process.write((line + QLatin1Char('\n')).toUtf8()); }

    // The first line not taken yet that begins with `prefix`, taken now;
    // none if it did not come in time.
    std::optional<QString> next(const QString &prefix, int timeoutMs = 15000)
    {
        std::optional<QString> found;
        // Whether it came or not is in `found`.
        (void)QTest::qWaitFor(
            [&] {
                read();
                for (std::size_t i = 0; i < m_lines.size(); ++i) {
                    if (!m_taken[i] && m_lines[i].startsWith(prefix)) {
                        m_taken[i] = true;
                        found = m_lines[i];
                        return true;
                    }
                }
                return m_process.state() == QProcess::NotRunning && m_process.bytesAvailable() == 0;
            },
            timeoutMs);
        return found;
    }

    // Sends `command` and gives the next line beginning with one of
    // `answers`.
    std::optional<QString> ask(const QString &command, const QStringList &answers)
    {
        send(command);
        std::optional<QString> found;
        (void)QTest::qWaitFor([&] {
            for (const QString &answer : answers)
                if ((found = next(answer, 0)))
                    return true;
            return m_process.state() == QProcess::NotRunning;
        }, 15000);
        return found;
    }

    // Whether a line beginning with `prefix` has come, taken or not.
    bool saw(const QString &prefix)
    {
        read();
        for (const QString &line : m_lines)
            if (line.startsWith(prefix))
                return true;
        return false;
    }

    QStringList lines()
    {
        read();
        return QStringList(m_lines.begin(), m_lines.end());
    }

    QProcess &process() { return m_process; }

private:
    void read()
    {
        m_partial += m_process.readAllStandardOutput();
        for (qsizetype end; (end = m_partial.indexOf('\n')) >= 0;) {
            m_lines.push_back(QString::fromUtf8(m_partial.left(end)));
            m_taken.push_back(false);
            m_partial.remove(0, end + 1);
        }
    }

    QProcess m_process;
    QByteArray m_partial;
    std::vector<QString> m_lines;
    std::vector<bool> m_taken;
};

// Runs a command-line tool (xdotool) to its end; its standard output.
inline QString runTool(const QString &program, const QStringList &arguments, int *status = nullptr)
{
    QProcess tool;
    tool.start(program, arguments);
    const bool finished = tool.waitForFinished(60000);
    if (status)
        *status = finished && tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1;
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

} // namespace fenrow::testing
