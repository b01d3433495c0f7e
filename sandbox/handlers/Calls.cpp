#include "sandbox/handlers/Calls.h"

namespace sandbox::telephone
{

void invited(const Call& call, const Persona& persona)
{
    call.result();
    if (persona.show != u"dnd")
        return;
    Element message("message");
    message.set("from", persona.fullJid()).set("to", call.client.fullJid());
    call.client.send(message.add("body", QStringLiteral("Automatic Message: NetMeeting Call denied")));
}

void invite(const Persona& persona, Connection& client)
{
    Element offer("iq");
    offer.set("type", QStringLiteral("set")).set("from", persona.fullJid()).set("to", client.fullJid());
    Element query("query", "jabber:iq:oob");
    query.add("url", QStringLiteral("callto:127.0.0.1+type=ip"));
    client.send(offer.add(query));
}

} // namespace sandbox::telephone
