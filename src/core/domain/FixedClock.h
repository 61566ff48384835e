#pragma once

#include "Clock.h"

namespace fenrow {

// A clock that stands still until told otherwise; for tests and `--now`.
class FixedClock final : public Clock {
public:
    explicit FixedClock(QDateTime moment) : m_moment(std::move(moment)) {}

    QDateTime now() const override { return m_moment; }
    void set(const QDateTime &moment) { m_moment = moment; }
    void advanceSeconds(qint64 seconds) { m_moment = m_moment.addSecs(seconds); }

private:
    QDateTime m_moment;
};

} // namespace fenrow
