#include "sandbox/handlers/Dispatch.h"

#include "sandbox/Address.h"
#include "sandbox/handlers/Agents.h"
#include "sandbox/handlers/Auth.h"
#include "sandbox/handlers/Browse.h"
#include "sandbox/handlers/Calls.h"
#include "sandbox/handlers/Conference.h"
#include "sandbox/handlers/GatewayHandler.h"
#include "sandbox/handlers/MessageHandler.h"
#include "sandbox/handlers/Place.h"
#include "sandbox/handlers/PresenceHandler.h"
#include "sandbox/handlers/Registration.h"
#include "sandbox/handlers/RosterQuery.h"
#include "sandbox/handlers/Search.h"
#include "sandbox/handlers/VCards.h"

#include <QLatin1String>

namespace sandbox
{
namespace
{

struct Route {
    Place place;
    QLatin1String xmlns;
    Handler handler;
};

const Route Routes[] = {
    {Place::Server, QLatin1String("jabber:iq:auth"), auth::handle},
    {Place::Server, QLatin1String("jabber:iq:register"), registration::handle},
    {Place::Server, QLatin1String("jabber:iq:roster"), rosterquery::handle},
    {Place::Server, QLatin1String("jabber:iq:agents"), agents::handle},
    {Place::Server, QLatin1String("jabber:iq:browse"), browse::server},
    {Place::Server, QLatin1String("vcard-temp"), vcards::handle},
    {Place::Admin, QLatin1String("jabber:iq:browse"), browse::admin},
    {Place::User, QLatin1String("jabber:iq:browse"), browse::user},
    {Place::User, QLatin1String("vcard-temp"), vcards::handle},
    {Place::Gateway, QLatin1String("jabber:iq:browse"), browse::gateway},
    {Place::Gateway, QLatin1String("jabber:iq:register"), gateways::registration},
    {Place::Directory, QLatin1String("jabber:iq:browse"), browse::directory},
    {Place::Directory, QLatin1String("jabber:iq:search"), search::handle},
    {Place::RoomService, QLatin1String("jabber:iq:browse"), browse::roomService},
    {Place::Room, QLatin1String("jabber:iq:conference"), conference::handle},
};

Handler handlerFor(Place place, const QString& xmlns)
{
    for (const auto& route : Routes) {
        if (route.place == place && route.xmlns == xmlns)
            return route.handler;
    }
    return nullptr;
}

// To a person's client. What nobody there can take is refused, unless it is an answer itself.
void passOn(const Call& call)
{
    const QString to = call.stanza.to();
    const bool isOwn = to == call.client.bareJid();
    if (auto* session = isOwn ? nullptr : call.world.sessions.best(to))
        return session->send(call.forwarded(call.client.fullJid(), to));
    if (!call.stanza.isGet() && !call.stanza.isSet())
        return;
    const auto* persona = call.world.persona(to);
    if (persona && persona->online && call.stanza.xmlns() == u"jabber:iq:oob")
        return telephone::invited(call, *persona);
    const bool isKnown = call.world.account(address::node(to)) || persona;
    isKnown&& address::resource(to).isEmpty() ? call.notImplemented() : call.notFound();
}

void dispatchIq(const Call& call)
{
    const bool isRequest = call.stanza.isGet() || call.stanza.isSet();
    const Place place = placeOf(call.world, call.stanza.to());
    const Handler handler = handlerFor(place, call.stanza.xmlns());
    if (isRequest && handler)
        return handler(call);
    if (place == Place::User)
        return passOn(call);
    if (!isRequest)
        return;
    if (place == Place::Elsewhere)
        return call.error(502, QStringLiteral("Unable to resolve hostname."));
    if (place == Place::Nowhere)
        return call.notFound();
    call.notImplemented();
}

bool mayBeforeSignIn(const Stanza& stanza)
{
    const QString xmlns = stanza.xmlns();
    return stanza.name() == u"iq" && (xmlns == u"jabber:iq:auth" || xmlns == u"jabber:iq:register");
}

} // namespace

void dispatch(const Call& call)
{
    const QString name = call.stanza.name();
    if (!call.client.isBound() && !mayBeforeSignIn(call.stanza))
        return call.error(401, QStringLiteral("Unauthorized"));
    if (name == u"iq")
        return dispatchIq(call);
    if (name == u"message")
        return messages::handle(call);
    if (name == u"presence")
        return presences::handle(call);
}

} // namespace sandbox
