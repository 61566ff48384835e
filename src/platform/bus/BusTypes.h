#pragma once

#include "shell/ForwardedCommand.h"

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>

namespace fenrow {

// A task as the bus gives it: (id, title, flow name).
struct BusTask {
    QString id;
    QString title;
    QString flowName;
};

// A part of a forwarded command's output: (stream, UTF-8 bytes).
struct BusOutput {
    uint stream = 0;
    QByteArray utf8;
};

// A part of a forwarded command's output kept in a file: (stream, bytes).
struct BusOutputLength {
    uint stream = 0;
    qulonglong length = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const BusTask &task);
const QDBusArgument &operator>>(const QDBusArgument &argument, BusTask &task);
QDBusArgument &operator<<(QDBusArgument &argument, const BusOutput &output);
const QDBusArgument &operator>>(const QDBusArgument &argument, BusOutput &output);
QDBusArgument &operator<<(QDBusArgument &argument, const BusOutputLength &length);
const QDBusArgument &operator>>(const QDBusArgument &argument, BusOutputLength &length);

namespace BusTypes {

// Makes the types above known to QtDBus; call before the first message.
void registerAll();

// The options of RunCommand, both ways.
QVariantMap requestOptions(const ForwardedCommand::Request &request);
void readRequestOptions(const QVariantMap &options, ForwardedCommand::Request &request);

// Whether two paths name the same store file, however they are spelled.
bool isSameStore(const QString &path, const QString &other);

// A part's stream as the bus gives it: anything but the error stream's
// number is the output.
ForwardedCommand::Stream stream(uint raw);
QList<BusOutput> busOutput(const QList<ForwardedCommand::Output> &output);
QList<ForwardedCommand::Output> commandOutput(const QList<BusOutput> &output);

} // namespace BusTypes

} // namespace fenrow

Q_DECLARE_METATYPE(fenrow::BusTask)
Q_DECLARE_METATYPE(fenrow::BusOutput)
Q_DECLARE_METATYPE(fenrow::BusOutputLength)
