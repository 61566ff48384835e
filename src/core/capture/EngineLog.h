#pragma once

#include <QLoggingCategory>

// The language model: its failures and the limits applied to what it is sent.
Q_DECLARE_LOGGING_CATEGORY(fenrowEngineLog)
