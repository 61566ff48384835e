#pragma once

#include <QString>

namespace fenrow {

// The words a Markdown or OPML export needs, looked up once so that the
// renderers themselves stay free of translations. The formats hold Qt
// placeholders: "%1 of %2 done", "after %1".
struct FlowMarkdownStrings {
    // Done count, then total.
    QString doneCountFormat;
    QString inProgress;
    QString paused;
    // The titles of a task's prerequisites, joined by ", ".
    QString afterFormat;

    // In the interface language of the moment.
    static FlowMarkdownStrings current();
};

} // namespace fenrow
