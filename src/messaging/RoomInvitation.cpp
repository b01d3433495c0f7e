#include "messaging/RoomInvitation.h"

#include "engine/Xml.h"

RoomInvitation RoomInvitation::of(const Stanza& stanza)
{
    RoomInvitation invitation{stanza.From(), stanza.MessageFields().Body(), {}, {}};
    for (const auto found : stanza.root().select_nodes(".//*[local-name()='x'][@jid]")) {
        const QString jid = xml::attribute(found.node(), "jid");
        const auto at = jid.indexOf(u'@');
        invitation.room = jid.left(qMax<qsizetype>(at, 0));
        invitation.servers += jid.mid(at + 1);
    }
    return invitation;
}
