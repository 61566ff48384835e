#include "WindowFitting.h"

#include <algorithm>

namespace fenrow::WindowFitting {

QPoint centredOrigin(const QRect &visibleFrame, const QSize &size)
{
    // Integer halves of odd sizes round towards the top left, as a
    // platform's own centring does.
    return QPoint(visibleFrame.x() + (visibleFrame.width() - size.width()) / 2,
                  visibleFrame.y() + (visibleFrame.height() - size.height()) / 2);
}

Fit fit(const Situation &situation)
{
    const QRect visible = situation.pointerScreen.value_or(situation.windowScreen.value_or(situation.frame));
    const int titleHeight = std::max(0, situation.frame.height() - situation.contentSize.height());
    const QSize preferred = preferredContentSize(situation.onboarded);
    const QSize target(std::min(visible.width(), preferred.width()),
                       std::min(visible.height() - titleHeight, preferred.height()));

    if (target != situation.contentSize) {
        // The frame keeps its borders around the new content.
        const QSize frame = target + (situation.frame.size() - situation.contentSize);
        return {Fit::Kind::resize, target, centredOrigin(visible, frame)};
    }
    if (situation.preferredScreen && situation.preferredScreen != situation.windowScreen)
        return {Fit::Kind::move, target, centredOrigin(*situation.preferredScreen, situation.frame.size())};
    return {Fit::Kind::keep, target, situation.frame.topLeft()};
}

} // namespace fenrow::WindowFitting
