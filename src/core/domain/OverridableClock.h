#pragma once

#include "Clock.h"

#include <optional>

namespace fenrow {

// The running program's clock: the system's time, except while a command
// that fixed its own moment (`--now`) runs inside the program. UI thread
// only, like the store that reads it.
class OverridableClock final : public Clock {
public:
    QDateTime now() const override { return m_moment ? *m_moment : QDateTime::currentDateTime(); }

    // Fixes the moment for the life of the scope; an empty moment leaves
    // the clock as it is.
    class Scope {
    public:
        Scope(OverridableClock &clock, std::optional<QDateTime> moment)
            : m_clock(clock), m_previous(clock.m_moment)
        {
            if (moment)
                clock.m_moment = std::move(moment);
        }
        ~Scope() { m_clock.m_moment = m_previous; }
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        OverridableClock &m_clock;
        std::optional<QDateTime> m_previous;
    };

private:
    std::optional<QDateTime> m_moment;
};

} // namespace fenrow
