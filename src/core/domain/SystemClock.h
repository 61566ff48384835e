#pragma once

#include "Clock.h"

namespace fenrow {

class SystemClock final : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

} // namespace fenrow
