#pragma once

#include "BusTypes.h"
#include "shell/ForwardedCommand.h"

#include <QDBusUnixFileDescriptor>
#include <QList>
#include <QString>

#include <optional>

namespace fenrow {

// A forwarded command's output handed back as a file in memory rather than
// inside the reply: the bus moves a message in pieces of 2 KiB, three times
// over (sender, bus, receiver), while a file passes as one descriptor. The
// file holds the parts' bytes one after another; the reply gives each
// part's stream and length.
namespace CommandOutputFile {

// An empty file in memory for `write`; none, with the reason, when the
// system gives none.
std::optional<QDBusUnixFileDescriptor> make(QString *problem);

// Writes the parts' bytes into `file` from its start, seals it against any
// further change and returns their lengths; none, with the reason, when not
// all of them could be written.
std::optional<QList<BusOutputLength>> write(const QDBusUnixFileDescriptor &file,
                                       const QList<ForwardedCommand::Output> &output, QString *problem);

// The parts back from `file` into `reply`'s output; false, with the reason,
// when it holds fewer bytes than the lengths say. A file sealed against
// shrinking is read in place, mapped into memory that `reply` keeps.
bool read(const QDBusUnixFileDescriptor &file, const QList<BusOutputLength> &lengths, ForwardedCommand::Reply &reply,
          QString *problem);

} // namespace CommandOutputFile

} // namespace fenrow
