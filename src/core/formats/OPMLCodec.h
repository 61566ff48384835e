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
#include <variant>

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
    // Entries left out for having no text and nothing under them.
    qsizetype entriesLeftOut = 0;
    // "fenrowStart" and "fenrowDue" values left out for being no day in
    // the years a store can hold (1 to 9999).
    qsizetype datesLeftOut = 0;

    friend bool operator==(const Document &a, const Document &b)
    {
        return a.title == b.title && a.entriesLeftOut == b.entriesLeftOut && a.datesLeftOut == b.datesLeftOut
            && std::equal(a.roots.begin(), a.roots.end(), b.roots.begin(), b.roots.end());
    }
};

// The most a document may bring, far beyond any outline a person keeps; a
// document past one of them is refused whole. They bound the memory and
// time a hostile file can take, and the depth every walk of the tree meets.
inline constexpr qsizetype maxDepth = 1000;
inline constexpr qsizetype maxEntries = 200000;
inline constexpr qsizetype maxAttributes = 64;
// In characters (UTF-16 units), for an attribute's value and the title.
inline constexpr qsizetype maxValueLength = 1 << 20;

// Why a document was not read.
struct Refusal {
    enum class Reason {
        // Not well-formed XML, no opml element, no entry worth keeping, or
        // leaning on something outside the document.
        notAnOutline,
        tooDeep,
        tooManyEntries,
        tooManyAttributes,
        valueTooLong,
    };
    Reason reason = Reason::notAnOutline;
    // Where the limit was crossed: the line (from 1), and the entry (the
    // outline element, counted from 1 in document order) when the line
    // holds one; 0 where there is none.
    qsizetype line = 0;
    qsizetype entry = 0;

    // In English, for the command line: "line 5012: entries nested deeper
    // than 1,000"; for notAnOutline, only what is wrong.
    QString text() const;

    friend bool operator==(const Refusal &, const Refusal &) = default;
};

// A document, or why there is none. Nothing is read past a refusal.
using Reading = std::variant<Document, Refusal>;

// (tail id, head id) of an edge: (parent, child) or (prerequisite, dependent).
using IdPair = std::pair<QUuid, QUuid>;

// The whole file, lines joined by line feeds, ending in one. Dates are
// written as the day they fall on in `calendar`. `afterFormat` words the
// prerequisites in the note for other readers (one placeholder, %1).
QString encode(const QString &title, const QList<Task> &tasks, const QList<IdPair> &subtaskPairs,
               const QList<IdPair> &dependencyPairs, const QString &afterFormat, const LocalCalendar &calendar);

// The outline in `bytes`, or why not: the bytes are not well-formed XML,
// have no opml element or no outline worth keeping, lean on an external DTD
// or entity (which is never read), or go past one of the limits above.
// Entities declared inside the document expand only up to the reader's
// limit, so an entity bomb is refused too. Names ignore case; where an
// element has an attribute in two spellings, the one written as this
// program writes it wins.
Reading read(const QByteArray &bytes, const LocalCalendar &calendar);
// `read` without the reason.
std::optional<Document> decode(const QByteArray &bytes, const LocalCalendar &calendar);

// `read` and `decode` with the general XML reader alone. `read` takes the
// usual files straight from their bytes and leaves the rest to this one;
// the two must read every file alike, refusals included.
Reading readWithXmlReader(const QByteArray &bytes, const LocalCalendar &calendar);
std::optional<Document> decodeWithXmlReader(const QByteArray &bytes, const LocalCalendar &calendar);

// Outlines in all, nested ones included.
qsizetype outlineCount(const QList<Outline> &roots);

} // namespace OPMLCodec

} // namespace fenrow
