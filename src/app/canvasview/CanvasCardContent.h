#pragma once

#include "CanvasGlyphs.h"
#include "domain/NodeColor.h"
#include "domain/PendingWrites.h"
#include "domain/Readiness.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <vector>

namespace fenrow {

class FenrowStore;
class FlowNode;
class TaskFlow;

// One small fact on a card: its status, a date, the repeat, the steps, the
// priority or the estimate.
struct MetaPill {
    enum class Tint { neutral, brand, warning, done };

    CanvasGlyphs::Glyph glyph = CanvasGlyphs::Glyph::notes;
    QString text;
    // Said when the pointer rests on the pill.
    QString help;
    Tint tint = Tint::neutral;
    // Names the pill as a part of its card ("status", "priority", ...).
    QString part;

    friend bool operator==(const MetaPill &, const MetaPill &) = default;
};

// What a card shows besides its title and place, worked out once per
// change of the store rather than on every frame.
struct CardContent {
    NodeCardState state;
    // Ready now: nothing holds it up and its day has come.
    bool actionable = false;
    bool canCollapse = false;
    bool folded = false;
    bool hasNotes = false;
    // Not started yet: drawn with a dashed border.
    bool dashed = false;
    QList<MetaPill> pills;
    // What the card shows of the record itself.
    QString title;
    NodeColor color = NodeColor::none;
    bool done = false;
    // Changes whenever anything above does, so a picture of the card drawn
    // earlier can be kept while it stays the same.
    quint64 serial = 0;

    // Equal contents, whatever their serials.
    bool sameAs(const CardContent &other) const;
};

// The contents of the cards of one flow as of the last change, for the
// day the store's clock says. A card's contents are worked out when first
// asked for, so a frame costs the cards in view; a change of a few tasks
// redoes those tasks and the ones they hold up, not the whole flow.
class CanvasCardContents {
public:
    explicit CanvasCardContents(const FenrowStore &store) : m_store(store) {}

    // The cards a change may have made look different: every card, or
    // only these tasks' (none when it wrote flow rows alone, or another
    // flow's tasks).
    struct Touched {
        bool everything = true;
        QList<const FlowNode *> nodes;
    };

    // Forgets everything; the next question reads the flow again.
    void invalidate() { m_valid = false; }
    // Forgets what the store's last change may have touched. Every card is
    // touched when the flow is read again or a card's place, size, fold or
    // colour, or a line, may have changed.
    Touched invalidate(const StoreChange &change);
    const CardContent &of(const TaskFlow &flow, const FlowNode &node);
    // The flow's progress readout needs the same count of ready tasks.
    int readyCount(const TaskFlow &flow);
    // Changes whenever a card's place or size, a line or a fold may have.
    quint64 geometrySerial(const TaskFlow &flow);

    static QString statusText(const NodeCardState &state, const QDateTime &now, const FenrowStore &store);
    static QString shortDate(const QDateTime &day, const QDateTime &now, const FenrowStore &store);

private:
    struct Entry {
        QUuid id;
        CardContent content;
        // Current while it equals m_generation.
        quint64 generation = 0;
        // Known for every task at once: the ready count needs them all.
        bool actionable = false;
        // Prerequisites and subtasks not done yet.
        int openBlockers = 0;
        bool hasSubtasks = false;
        // Whether the task was done when the tasks it holds up were counted.
        bool countedDone = false;
        // The card's share of the lines' hash.
        size_t geometry = 0;
        bool collapsed = false;
    };

    // Reads what the flow as a whole decides: blockers, folds, the count
    // of ready tasks and the lines' hash.
    void prepare(const TaskFlow &flow);
    void ensure(const TaskFlow &flow);
    // The task's entry, or null for a task not of the flow last read.
    Entry *entryOf(const FlowNode &node);
    CardContent make(const FlowNode &node, const Entry &entry) const;
    void setNow();
    bool isDeferred(const FlowNode &node) const;
    static size_t geometryOf(const FlowNode &node);
    void setGeometry(size_t hash);

    const FenrowStore &m_store;
    bool m_valid = false;
    QUuid m_flowID;
    QDateTime m_now;
    // A start at or after it lies on a later day than m_now.
    QDateTime m_tomorrow;
    quint64 m_generation = 1;
    // In the flow's order, found by the task: a new flow of thousands of
    // tasks is read on every frame that shows it, and hashing ids and
    // moving whole contents around cost more than reading the tasks.
    std::vector<Entry> m_entries;
    QHash<const FlowNode *, qsizetype> m_index;
    int m_readyCount = 0;
    quint64 m_lastSerial = 0;
    struct StepCount {
        QString data;
        qsizetype done = 0;
        qsizetype total = 0;
    };
    mutable QHash<QUuid, StepCount> m_checklists;
    // The lines' hash is the lines' own part and each card's, combined so
    // that one card's share can be taken out and put back.
    size_t m_linesGeometry = 0;
    size_t m_geometryHash = 0;
    quint64 m_geometrySerial = 0;
    CardContent m_empty;
};

} // namespace fenrow
