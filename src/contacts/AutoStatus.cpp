#include "contacts/AutoStatus.h"

#include "contacts/Client.h"

bool AutoStatus::pointerMoved()
{
    const QPoint cursor = client_.desktop.pointer->position();
    return std::exchange(lastCursor_, cursor) != cursor;
}

std::optional<StatusCommand> AutoStatus::tick(StatusCommand chosen)
{
    // The time of day alone counts, as midnight ends an idle spell. Kept.
    const QTime now = client_.desktop.clock->now().time();
    if (pointerMoved())
        lastActivity_ = now;
    if (lastActivity_.isNull())
        return {};
    const auto& settings = client_.settings;
    const int idle = lastActivity_.secsTo(now);
    const qint64 awayAfter = qint64{60} * settings.AutoAwayTimerMins;
    const qint64 xAwayAfter = qint64{60} * settings.AutoXAwayTimerMins;
    if (idle > xAwayAfter && settings.AutoXAwayTimer && chosen != StatusCommand::XAway)
        return StatusCommand::XAway;
    if (idle > awayAfter && idle < xAwayAfter && settings.AutoAwayTimer && chosen != StatusCommand::Away)
        return StatusCommand::Away;
    if (chosen != StatusCommand::Available && idle < awayAfter && idle < xAwayAfter && AutoStatusActive)
        return StatusCommand::Available;
    return {};
}
