#pragma once

#include "NotificationRequest.h"

#include <QString>

#include <functional>

namespace fenrow {

// What puts a notification on the desktop's screen and tells when the user
// opened one: the freedesktop notification server on Linux. Behind an
// interface so that the rules of the pending list are tested without one.
class NotificationPresenter {
public:
    using Opened = std::function<void(const QString &identifier)>;

    virtual ~NotificationPresenter() = default;

    // Shows the request's content now, in place of one still on screen
    // under the same identifier.
    virtual void show(const NotificationRequest &request) = 0;
    // Takes what is on screen under `identifier` away; nothing when there
    // is none.
    virtual void close(const QString &identifier) = 0;
    // Takes everything this presenter showed away. `done` runs once, when
    // the desktop has answered for all of them (at once when nothing is
    // shown); it may never run if the desktop never answers.
    virtual void closeAll(std::function<void()> done) = 0;
    // Who hears that the user opened a notification (its default action).
    virtual void setOpenedHandler(Opened handler) = 0;
};

} // namespace fenrow
