#include "engine/bridge/PresenceRoutes.h"

#include "engine/Jid.h"
#include "engine/Xml.h"

Translator* PresenceRoutes::to(pugi::xml_node presence) const
{
    return routes_.isEmpty() ? nullptr : routes_.value(jid::bare(xml::attribute(presence, "to")).toLower());
}

Translator* PresenceRoutes::from(const Stanza& presence) const
{
    return routes_.isEmpty() ? nullptr : routes_.value(jid::bare(presence.From()).toLower());
}
