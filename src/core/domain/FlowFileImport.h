#pragma once

#include <QByteArray>
#include <QString>

#include <variant>

namespace fenrow {

// Reading a file from disk to attach it to a flow. Pure file reading: it
// does not touch the store, so it may run on a worker thread.
namespace FlowFileImport {

// One file may be up to 20 MiB; exactly that much is accepted.
inline constexpr qint64 maxBytes = 20971520;

struct Payload {
    QString filename;
    // A MIME type name such as "application/pdf", or "" when unknown.
    QString contentTypeRaw;
    qint64 byteCount = 0;
    QByteArray data;
};

struct TooLarge {
    qint64 byteCount = 0;
};
struct Unreadable {};
using Failure = std::variant<TooLarge, Unreadable>;

// Checks the size before reading a byte.
std::variant<Payload, Failure> read(const QString &path);

} // namespace FlowFileImport

} // namespace fenrow
