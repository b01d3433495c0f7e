#include "session/PresenceRoute.h"

#include "contacts/Client.h"
#include "engine/Jid.h"

PresenceRoute routeOfPresence(const Stanza& stanza, const Client& client)
{
    const auto fields = stanza.PresenceFields();
    const bool agent = client.MyAgents.JIDExists(jid::bare(stanza.From()));
    if (!agent) {
        if (fields.IsSubscribe())
            return PresenceRoute::AskForAuthorization;
        if (fields.IsSubscribed())
            return PresenceRoute::Accepted;
        if (fields.IsUnsubscribe())
            return PresenceRoute::Removed;
        if (fields.IsUnsubscribed())
            return PresenceRoute::Refused;
    } else if (fields.IsSubscribe()) {
        return PresenceRoute::AcceptGateway;
    }
    const QString type = fields.Type();
    if (type == u"error") {
        const bool wanted = stanza.From().isEmpty() || client.settings.CheckError;
        return wanted ? PresenceRoute::Notice : PresenceRoute::Drop;
    }
    return type == u"close" ? PresenceRoute::Notice : PresenceRoute::Contact;
}
