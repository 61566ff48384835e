#include "Console.h"

#include "ExitStatus.h"

namespace fenrow {

Console::Console(QTextStream &out, QTextStream &err, QTextStream *input, bool interactive)
    : m_out(out), m_err(err), m_input(input), m_interactive(interactive)
{
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

void Console::holdOutput()
{
    m_out.flush();
    m_currentOut = &m_heldOut;
}

void Console::releaseOutput()
{
    m_heldOut.flush();
    m_out << m_held;
    m_out.flush();
    discardOutput();
}

void Console::discardOutput()
{
    m_heldOut.flush();
    m_held.clear();
    m_heldOut.seek(0);
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
