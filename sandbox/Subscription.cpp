#include "sandbox/Subscription.h"

#include <utility>

namespace sandbox::subscription
{

bool isSubscription(const QString& type)
{
    return type == u"subscribe" || type == u"subscribed" || type == u"unsubscribe" || type == u"unsubscribed";
}

Effect outbound(RosterItem& item, const QString& type)
{
    if (type == u"subscribe") {
        const bool asks = !item.to && !item.pendingOut;
        item.pendingOut |= asks;
        return {true, asks};
    }
    if (type == u"unsubscribe") {
        const bool had = std::exchange(item.to, false);
        return {true, std::exchange(item.pendingOut, false) || had};
    }
    if (type == u"subscribed") {
        const bool asked = std::exchange(item.pendingIn, false);
        item.from |= asked;
        return {asked, asked};
    }
    const bool had = std::exchange(item.from, false);
    const bool asked = std::exchange(item.pendingIn, false);
    return {had || asked, had};
}

Effect inbound(RosterItem& item, const QString& type)
{
    if (type == u"subscribe") {
        const bool fresh = !item.from && !item.pendingIn;
        item.pendingIn |= fresh;
        return {fresh, false};
    }
    if (type == u"unsubscribe") {
        const bool had = std::exchange(item.from, false);
        const bool asked = std::exchange(item.pendingIn, false);
        return {had || asked, had};
    }
    if (type == u"subscribed") {
        const bool asked = std::exchange(item.pendingOut, false);
        item.to |= asked;
        return {asked, asked};
    }
    const bool had = std::exchange(item.to, false);
    const bool asked = std::exchange(item.pendingOut, false);
    return {had || asked, had || asked};
}

} // namespace sandbox::subscription
