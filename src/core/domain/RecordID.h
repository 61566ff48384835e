#pragma once

#include <QUuid>

namespace fenrow::RecordID {

// A new random (version 4) identity for a record. Drawn from a generator
// seeded once per thread from the system's entropy: asking the kernel for
// every id made a 10,000-task import spend a tenth of its time in system
// calls, and ids need to be unique, not secret.
QUuid make();

} // namespace fenrow::RecordID
