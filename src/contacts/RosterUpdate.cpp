#include "contacts/RosterSync.h"

#include "contacts/Client.h"
#include "contacts/RosterDrawing.h"

// What a push does to a contact that is in the list already. A contact that changes its folder must have a
// node; where the new node goes is told by the rebuild that follows.

bool RosterSync::UpdateRosterItem(const Push& push)
{
    CRosterItem& item = *client_.MyRoster.record(push.JID);
    const bool onlineOnly = client_.settings.ShowOnlineUsers;
    const bool refused = push.subscription == u"none" && push.ask.isEmpty();
    const bool done =
        push.subscription == u"none" ? updateUnsubscribed(item, push) : updateSubscribed(item, push);
    if (!done)
        return false;
    if (!(refused && onlineOnly))
        drawing_.Refresh();
    return true;
}

bool RosterSync::updateSubscribed(CRosterItem& item, const Push& push)
{
    if (!push.ask.isEmpty())
        return true;
    if (push.subscription == u"remove")
        return CommitRemoveItem(push.JID);
    const bool granted = item.Ask == u"subscribe";
    item.Ask = push.ask;
    if (granted) {
        item.Subscription = push.subscription;
        return drawing_.hasNode(item);
    }
    // The subscription stays as it was first told. Kept.
    item.nick = push.nick;
    item.group = push.group;
    return true;
}

bool RosterSync::updateUnsubscribed(CRosterItem& item, const Push& push)
{
    const bool onlineOnly = client_.settings.ShowOnlineUsers;
    const bool sent = push.ask == u"subscribe" && item.Subscription == u"none" && item.Ask.isEmpty();
    const bool refused =
        push.ask.isEmpty() && (onlineOnly || (item.Subscription == u"none" && item.Ask == u"subscribe"));
    if (!sent && !refused)
        return true;
    item.Ask = push.ask;
    item.Subscription = push.subscription;
    return onlineOnly || drawing_.hasNode(item);
}
