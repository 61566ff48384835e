#pragma once

#include "CaptureDateParser.h"

namespace fenrow::CaptureVocabularies {

// Each built on first call and kept for the process.
const CaptureDateParser::Vocabulary &english();
// "tr", "de", "es" or "fr"; none for any other code, English included.
const CaptureDateParser::Vocabulary *ownVocabulary(QStringView code);

} // namespace fenrow::CaptureVocabularies
