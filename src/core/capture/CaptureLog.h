#pragma once

#include <QLoggingCategory>

// Failures of capture and generated changes that the user is not shown.
Q_DECLARE_LOGGING_CATEGORY(fenrowCaptureLog)
