#include "EngineAvailability.h"

namespace fenrow {

const char *EngineAvailability::readoutKey() const
{
    if (!status.reason())
        return QT_TRID_NOOP("engine.availability.available");
    switch (*status.reason()) {
    case Reason::deviceNotEligible:
        return QT_TRID_NOOP("engine.availability.deviceNotEligible");
    case Reason::appleIntelligenceNotEnabled:
        return QT_TRID_NOOP("engine.availability.appleIntelligenceNotEnabled");
    case Reason::modelNotReady:
        return QT_TRID_NOOP("engine.availability.modelNotReady");
    case Reason::frameworkUnavailable:
        return QT_TRID_NOOP("engine.availability.frameworkUnavailable");
    case Reason::modelUnusable:
        return QT_TRID_NOOP("engine.availability.modelUnusable");
    }
    return QT_TRID_NOOP("engine.availability.frameworkUnavailable");
}

QString EngineAvailability::readout() const
{
    return qtTrId(readoutKey());
}

} // namespace fenrow
