#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <chrono>
#include <optional>

namespace fenrow {

// The size and place of the main window, as arithmetic: small while the
// user is being welcomed, large once onboarding is done, never larger than
// the screen the user is looking at, and centred on it. The program reads
// the screens and applies the answer; everything here is plain geometry so
// that it can be checked without a display.
namespace WindowFitting {

inline constexpr QSize onboardedContentSize{1320, 840};
inline constexpr QSize onboardingContentSize{560, 396};
inline constexpr QSize onboardedMinimumSize{720, 480};
inline constexpr QSize onboardingMinimumSize{560, 396};
// The capture panel as it is made, before its content settles its height.
inline constexpr QSize capturePanelSize{520, 168};
// After onboarding finishes or restarts the window's content changes
// first; the fitting follows once that has settled.
inline constexpr std::chrono::milliseconds fitDelay{300};
// A window manager may place a resized window itself; the window is
// centred once more at its first resize, if that comes within this time.
inline constexpr std::chrono::milliseconds recentreWatch{1000};

inline QSize preferredContentSize(bool onboarded)
{
    return onboarded ? onboardedContentSize : onboardingContentSize;
}

inline QSize minimumContentSize(bool onboarded)
{
    return onboarded ? onboardedMinimumSize : onboardingMinimumSize;
}

// Where a window of `size` stands centred in `visibleFrame`.
QPoint centredOrigin(const QRect &visibleFrame, const QSize &size);

// What the program knows when it fits the window. Screens are given by
// their visible frames (the part not taken by panels and docks).
struct Situation {
    bool onboarded = false;
    // The screen under the mouse pointer, if any.
    std::optional<QRect> pointerScreen;
    // The screen the window is on, if any.
    std::optional<QRect> windowScreen;
    // The screen the window belongs on when it already has its size: that
    // of another window the user is working in, else the pointer's.
    std::optional<QRect> preferredScreen;
    // The window with its title bar and borders, and its content.
    QRect frame;
    QSize contentSize;
};

struct Fit {
    enum class Kind {
        // The window is right as it is.
        keep,
        // Give the content `contentSize` and put the frame at `origin`.
        resize,
        // Only put the frame at `origin`.
        move,
    };
    Kind kind = Kind::keep;
    QSize contentSize;
    QPoint origin;

    friend bool operator==(const Fit &, const Fit &) = default;
};

// The preferred size for the onboarding state, cut down to the visible
// frame of the pointer's screen (else the window's, else the window's own
// frame), the title bar's height taken off the vertical; centred there.
// A window that already has that size is moved only when it stands on
// another screen than the preferred one.
Fit fit(const Situation &situation);

} // namespace WindowFitting

} // namespace fenrow
