#pragma once

#include <atomic>
#include <functional>
#include <memory>

namespace fenrow {

// Lets whoever started an engine operation give up on it. Copies share one
// flag: the asker keeps a copy and cancels it; the operation looks at it
// between its steps and hands it to the model call in flight, which stops.
// A cancelled operation's answer is not to be applied.
class EngineCancel {
public:
    EngineCancel() : m_flag(std::make_shared<std::atomic_bool>(false)) {}

    void cancel() const { m_flag->store(true); }
    bool isCancelled() const { return m_flag->load(); }
    // For a call that waits on something else and looks at the flag now and
    // then; lives as long as any copy.
    const std::atomic_bool *flag() const { return m_flag.get(); }

private:
    std::shared_ptr<std::atomic_bool> m_flag;
};

// What the work of one operation gets besides its arguments.
struct EngineWork {
    EngineCancel cancel;
    // How far a long operation has come, in steps; may be empty.
    std::function<void(int done, int total)> progress;

    bool isCancelled() const { return cancel.isCancelled(); }
    void reportProgress(int done, int total) const
    {
        if (progress)
            progress(done, total);
    }
};

} // namespace fenrow
