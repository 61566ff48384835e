#include "CommandOutputFile.h"

#include <cerrno>
#include <cstring>
#include <limits>

#include <sys/mman.h>
#include <unistd.h>

namespace fenrow::CommandOutputFile {

namespace {

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

std::optional<QDBusUnixFileDescriptor> make(QString *problem)
{
    const int descriptor = memfd_create("fenrow-command-output", MFD_CLOEXEC);
    if (descriptor < 0) {
        *problem = QStringLiteral("no file in memory for the output: %1").arg(systemError());
        return std::nullopt;
    }
    // The descriptor object keeps a copy of its own.
    QDBusUnixFileDescriptor file(descriptor);
    ::close(descriptor);
    if (!file.isValid()) {
        *problem = QStringLiteral("no file in memory for the output");
        return std::nullopt;
    }
    return file;
}

std::optional<QList<BusOutputLength>> write(const QDBusUnixFileDescriptor &file,
                                       const QList<ForwardedCommand::Output> &output, QString *problem)
{
    QList<BusOutputLength> lengths;
    off_t at = 0;
    for (const ForwardedCommand::Output &part : output) {
        const char *bytes = part.utf8.constData();
        qsizetype left = part.utf8.size();
        while (left > 0) {
            const ssize_t written = ::pwrite(file.fileDescriptor(), bytes, std::size_t(left), at);
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0) {
                *problem = QStringLiteral("the output could not be written: %1").arg(systemError());
                return std::nullopt;
            }
            bytes += written;
            left -= written;
            at += written;
        }
        lengths.append({uint(part.stream), qulonglong(part.utf8.size())});
    }
    return lengths;
}

std::optional<QList<ForwardedCommand::Output>> read(const QDBusUnixFileDescriptor &file,
                                                    const QList<BusOutputLength> &lengths, QString *problem)
{
    QList<ForwardedCommand::Output> output;
    off_t at = 0;
    for (const BusOutputLength &part : lengths) {
        const qulonglong length = part.length;
        if (length > qulonglong(std::numeric_limits<qsizetype>::max() / 2)) {
            *problem = QStringLiteral("the output is too long to read");
            return std::nullopt;
        }
        QByteArray bytes(qsizetype(length), Qt::Uninitialized);
        qsizetype got = 0;
        while (got < bytes.size()) {
            const ssize_t read = ::pread(file.fileDescriptor(), bytes.data() + got, std::size_t(bytes.size() - got), at);
            if (read < 0 && errno == EINTR)
                continue;
            if (read <= 0) {
                *problem = read < 0 ? QStringLiteral("the output could not be read: %1").arg(systemError())
                                    : QStringLiteral("the output ends before its last part");
                return std::nullopt;
            }
            got += read;
            at += read;
        }
        output.append({part.stream == uint(ForwardedCommand::Stream::err) ? ForwardedCommand::Stream::err
                                                                      : ForwardedCommand::Stream::out,
                       std::move(bytes)});
    }
    return output;
}

} // namespace fenrow::CommandOutputFile
