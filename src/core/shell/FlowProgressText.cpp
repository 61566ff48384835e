#include "FlowProgressText.h"

#include <QCoreApplication>

namespace fenrow {

QString flowProgressText(const FlowProgress &progress)
{
    if (progress.totalCount == 0)
        return qtTrId("sidebar.flow.progress.empty");
    if (progress.doneCount == progress.totalCount)
        return qtTrId("sidebar.flow.progress.complete %lld").arg(progress.totalCount);
    return qtTrId("sidebar.flow.progress %lld %lld %lld")
        .arg(progress.doneCount)
        .arg(progress.inProgressCount)
        .arg(progress.totalCount);
}

} // namespace fenrow
