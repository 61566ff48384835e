#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace fenrow {

class FenrowStore;

// The changes the crash test's writer makes: adds, edits, deletions,
// connections, flows, and restores that merge or replace. Step n is chosen
// from the seed and n alone and acts on what the store holds, so the same
// steps on a store of the same content always leave the same content: the
// checker plays them on a store in memory to know what each should leave,
// and a writer started again after a kill goes on where the file stands.
class CrashScript {
public:
    explicit CrashScript(quint64 seed) : m_seed(seed) {}

    // Makes change `step`; true once it is saved.
    bool perform(FenrowStore &store, qint64 step) const;
    // Whether change `step` is a restore, merging or replacing.
    bool isRestore(qint64 step) const { return draw(step, 0) % 100 >= firstRestore; }

    // The store's content, ids aside (they are new in every run): flows,
    // tasks and connections by name, hashed.
    static QByteArray digest(const FenrowStore &store);

private:
    static constexpr quint64 firstRestore = 88;
    quint64 draw(qint64 step, int index) const;

    quint64 m_seed;
};

} // namespace fenrow
