#pragma once

#include "desktop/BalloonQueue.h"

#include <functional>

// The desktop's notifications, for where there is no notification area to hold balloons.
class NotificationService
{
public:
    virtual ~NotificationService() = default;
    // False when the desktop has no bus for them. Does not wait for the answer.
    virtual bool show(const Balloon& balloon) = 0;

    // The person clicked at the last one.
    std::function<void()> clicked;
};
