#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <algorithm>
#include <optional>
#include <utility>

namespace fenrow {

class LocalCalendar;

// One flow as an OPML 2.0 outline, and an outline as the makings of a new
// flow. An outline is a tree and a flow a graph: the writer nests tasks by
// their subtask edges and keeps the rest of the graph in private
// attributes ("fenrowId", "fenrowAfter", …), while "_note" and "_status"
// give any outliner readable notes and ticks. The reader takes this
// program's files and foreign ones alike.
namespace OPMLCodec {

// One task handed to the writer.
struct Task {
    QUuid id{};
    QString title{};
    QString notes{};
    bool isDone = false;
    std::optional<QDateTime> startDate{};
    std::optional<QDateTime> dueDate{};
    QString checklistData{};
};

// One outline element as read.
struct Outline {
    QString text{};
    QString note{};
    bool isDone = false;
    std::optional<QString> fenrowID{};
    QStringList after{};
    std::optional<QDateTime> startDate{};
    std::optional<QDateTime> dueDate{};
    QString checklistData{};
    QList<Outline> children{};

    friend bool operator==(const Outline &, const Outline &) = default;
};

struct Document {
    QString title;
    QList<Outline> roots;

    friend bool operator==(const Document &a, const Document &b)
    {
        return a.title == b.title && std::equal(a.roots.begin(), a.roots.end(), b.roots.begin(), b.roots.end());
    }
};

// (tail id, head id) of an edge: (parent, child) or (prerequisite, dependent).
using IdPair = std::pair<QUuid, QUuid>;

// The whole file, lines joined by line feeds, ending in one. Dates are
// written as the day they fall on in `calendar`. `afterFormat` words the
// prerequisites in the note for other readers (one placeholder, %1).
QString encode(const QString &title, const QList<Task> &tasks, const QList<IdPair> &subtaskPairs,
               const QList<IdPair> &dependencyPairs, const QString &afterFormat, const LocalCalendar &calendar);

// Nothing when the bytes are not well-formed XML, have no opml element or
// no outline worth keeping, or lean on an external DTD or entity, which is
// never read. Entities declared inside the document expand only up to the
// reader's limit, so an entity bomb is refused too. Element names ignore
// case; attribute names do not.
std::optional<Document> decode(const QByteArray &bytes, const LocalCalendar &calendar);

// `decode` with the general XML reader alone. `decode` reads the usual
// files straight from their bytes and leaves the rest to this one; the two
// must read every file alike.
std::optional<Document> decodeWithXmlReader(const QByteArray &bytes, const LocalCalendar &calendar);

// Outlines in all, nested ones included.
qsizetype outlineCount(const QList<Outline> &roots);

} // namespace OPMLCodec

} // namespace fenrow
