#pragma once

#include "contacts/StatusRules.h"

#include <QPoint>
#include <QTime>

#include <optional>

struct Client;

// The status that changes by itself when the pointer rests.
class AutoStatus
{
public:
    explicit AutoStatus(const Client& client) : client_(client) {}

    bool AutoStatusActive = false; // the last status change was made by this rule

    // True when the pointer has moved since the last look.
    bool pointerMoved();
    // What the status is to become, given the one that is chosen now; nothing to leave it. Only a movement
    // that is seen here counts as activity.
    std::optional<StatusCommand> tick(StatusCommand chosen);

private:
    const Client& client_;
    QPoint lastCursor_;
    QTime lastActivity_; // null until the pointer was first seen to move
};
