#pragma once

#include "domain/FlowFile.h"

#include <QString>

#include <optional>

namespace fenrow {

// Hands an attached file's bytes to the rest of the desktop. Failures are
// logged under "fenrow.files" and reported only as a false result.
class FileOpener {
public:
    // Writes the bytes under the file's name into a new private folder
    // below the temporary location and returns the written path. Folders
    // staged more than a day ago are cleared on the way: by then the program
    // that opened them has long read them.
    static std::optional<QString> stage(const FlowFile &file);
    // Stages the file and opens it with the desktop's default program.
    static bool open(const FlowFile &file);
    // Replaces `path` with the bytes, all or nothing.
    static bool exportCopy(const FlowFile &file, const QString &path);

    static constexpr const char *stagingPrefix = "fenrow-open-";
};

} // namespace fenrow
