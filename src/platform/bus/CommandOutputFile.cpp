#include "CommandOutputFile.h"

#include <cerrno>
#include <cstring>
#include <limits>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
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
    const int descriptor = memfd_create("fenrow-command-output", MFD_CLOEXEC | MFD_ALLOW_SEALING);
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
    // Sealed, the caller can map the file and read it in place: nothing can
    // cut it short under the mapping. Without the seals it reads a copy.
    ::fcntl(file.fileDescriptor(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE | F_SEAL_SEAL);
    return lengths;
}

bool read(const QDBusUnixFileDescriptor &file, const QList<BusOutputLength> &lengths, ForwardedCommand::Reply &reply,
          QString *problem)
{
    qulonglong total = 0;
    for (const BusOutputLength &part : lengths) {
        if (part.length > qulonglong(std::numeric_limits<qsizetype>::max() / 2) - total) {
            *problem = QStringLiteral("the output is too long to read");
            return false;
        }
        total += part.length;
    }
    const int descriptor = file.fileDescriptor();
    struct stat status {
    };
    const int seals = ::fcntl(descriptor, F_GET_SEALS);
    if (total > 0 && seals >= 0 && (seals & F_SEAL_SHRINK) && ::fstat(descriptor, &status) == 0) {
        if (qulonglong(status.st_size) < total) {
            *problem = QStringLiteral("the output ends before its last part");
            return false;
        }
        void *mapped = ::mmap(nullptr, total, PROT_READ, MAP_SHARED | MAP_POPULATE, descriptor, 0);
        if (mapped != MAP_FAILED) {
            reply.outputMemory = std::shared_ptr<const void>(
                mapped, [total](const void *at) { ::munmap(const_cast<void *>(at), total); });
            const char *at = static_cast<const char *>(mapped);
            reply.output.clear();
            for (const BusOutputLength &part : lengths) {
                reply.output.append(
                    {BusTypes::stream(part.stream), QByteArray::fromRawData(at, qsizetype(part.length))});
                at += part.length;
            }
            return true;
        }
    }

    QList<ForwardedCommand::Output> output;
    off_t at = 0;
    for (const BusOutputLength &part : lengths) {
        QByteArray bytes(qsizetype(part.length), Qt::Uninitialized);
        qsizetype got = 0;
        while (got < bytes.size()) {
            const ssize_t read = ::pread(descriptor, bytes.data() + got, std::size_t(bytes.size() - got), at);
            if (read < 0 && errno == EINTR)
                continue;
            if (read <= 0) {
                *problem = read < 0 ? QStringLiteral("the output could not be read: %1").arg(systemError())
                                    : QStringLiteral("the output ends before its last part");
                return false;
            }
            got += read;
            at += read;
        }
        output.append({BusTypes::stream(part.stream), std::move(bytes)});
    }
    reply.output = std::move(output);
    return true;
}

} // namespace fenrow::CommandOutputFile
