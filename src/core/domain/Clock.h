#pragma once

#include <QDateTime>

namespace fenrow {

// Source of "now". Operations that depend on the current time take one, so
// tests can fix the moment instead of racing the wall clock.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

} // namespace fenrow
