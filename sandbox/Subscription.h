#pragma once

#include "sandbox/Roster.h"

namespace sandbox::subscription
{

// What a subscription presence does to a roster item: the tables of RFC 3921, section 9. `type` is
// "subscribe", "subscribed", "unsubscribe" or "unsubscribed".
struct Effect {
    bool passOn = false; // out: send it to the contact; in: deliver it to the owner
    bool changed = false;
};

bool isSubscription(const QString& type);

// The owner sends `type` to the contact.
Effect outbound(RosterItem& item, const QString& type);
// The contact's `type` comes in.
Effect inbound(RosterItem& item, const QString& type);

} // namespace sandbox::subscription
