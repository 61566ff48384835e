#include "FlowMarkdownStrings.h"

namespace fenrow {

FlowMarkdownStrings FlowMarkdownStrings::current()
{
    return {
        //: Progress line under a flow's heading; %1 tasks done of %2.
        .doneCountFormat = qtTrId("export.markdown.progress %lld %lld"),
        .inProgress = qtTrId("export.markdown.status.inProgress"),
        .paused = qtTrId("export.markdown.status.paused"),
        //: %1 is a list of task titles that must be done first.
        .afterFormat = qtTrId("export.markdown.after %@"),
    };
}

} // namespace fenrow
