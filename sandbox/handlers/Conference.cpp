#include "sandbox/handlers/Conference.h"

namespace sandbox::conference
{
namespace
{

void tellName(const Call& call)
{
    const Room* room = call.world.room(call.stanza.to());
    if (!room)
        return call.notFound(); // the client then makes the room by entering it
    Element query("query", "jabber:iq:conference");
    call.result(query.add("name", room->name()).add("nick"));
}

} // namespace

void handle(const Call& call)
{
    if (call.stanza.isGet())
        return tellName(call);
    const QString nick = call.stanza.queryText("nick");
    if (nick.isEmpty())
        return call.error(406, QStringLiteral("Not Acceptable"));
    if (!call.world.roomFor(call.stanza.to()).enter(call.client, nick, call.stanza.id()))
        call.error(409, QStringLiteral("Conflict"));
}

} // namespace sandbox::conference
