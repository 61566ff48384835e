#pragma once

#include "domain/FlowProgress.h"

#include <QString>

namespace fenrow {

// The sidebar's one-line summary of a flow's progress, in the interface
// language: empty, all done, or done / in progress / total.
QString flowProgressText(const FlowProgress &progress);

} // namespace fenrow
