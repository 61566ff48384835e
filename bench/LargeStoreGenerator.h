#pragma once

#include "LargeStoreShape.h"

#include "Clock.h"
#include "FenrowStore.h"
#include "LocalCalendar.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace fenrow::bench {

// Builds a realistic store of a given shape: flows of uneven size, acyclic
// graphs with a mix of dependency and subtask edges (some without a stored
// kind), tasks with notes, checklists, dates, estimates and colours, a
// history of repeat and archived completions, and a few attachments with
// real-sized bytes. The same seed always gives the same records, ids
// included, and every time is taken from a fixed clock.
class LargeStoreGenerator {
public:
    static constexpr quint64 defaultSeed = 0x46454e524f57ull;

    // What was generated, to check a reopened store against.
    struct Summary {
        int flows = 0;
        int nodes = 0;
        int doneNodes = 0;
        int edges = 0;
        int subtaskEdges = 0;
        int edgesWithoutKind = 0;
        int completionRecords = 0;
        int archivedRecords = 0;
        int files = 0;
        int fileLinks = 0;
        qint64 attachmentBytes = 0;

        friend bool operator==(const Summary &, const Summary &) = default;
    };

    struct Timings {
        double buildMs = 0;
        double insertMs = 0;
    };

    // The generated history ends at this moment; open generated stores with
    // the same clock so that nothing looks stale or in the future.
    static QDateTime now();
    static const Clock &clock();
    // Days are cut in UTC, whatever the machine's zone.
    static LocalCalendar calendar();

    explicit LargeStoreGenerator(LargeStoreShape shape, quint64 seed = defaultSeed);

    // Builds the records in memory; no store involved.
    RecordBundle build();
    const Summary &summary() const { return m_summary; }

    // Creates a store file at `path` (replacing any there) and writes the
    // generated records through the store in one insert.
    std::optional<Summary> writeStore(const QString &path, QString *error, Timings *timings = nullptr);

    // Counts the records of an opened store the way `summary` counts them.
    static Summary summarize(const FenrowStore &store);

private:
    LargeStoreShape m_shape;
    quint64 m_seed;
    Summary m_summary;
};

} // namespace fenrow::bench
