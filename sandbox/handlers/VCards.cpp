#include "sandbox/handlers/VCards.h"

#include "sandbox/Address.h"

namespace sandbox::vcards
{
namespace
{

Element cardOf(const Persona& persona)
{
    Element card("VCARD", "vcard-temp");
    card.add("FN", persona.name);
    card.add(Element("N")
                 .add("GIVEN", persona.name.section(u' ', 0, 0))
                 .add("FAMILY", persona.name.section(u' ', 1)));
    card.add("NICKNAME", address::node(persona.jid));
    return card.add(Element("EMAIL").add("INTERNET").add("PREF").text(persona.email));
}

void tell(const Call& call)
{
    const QString jid = call.stanza.to().isEmpty() ? call.client.bareJid() : address::bare(call.stanza.to());
    if (const auto* account = address::domain(jid) == Host ? call.world.account(address::node(jid)) : nullptr)
        return call.result(account->vcard.isEmpty() ? Element("VCARD", "vcard-temp").xml() : account->vcard);
    if (const auto* persona = call.world.persona(jid))
        return call.result(cardOf(*persona));
    call.notFound();
}

} // namespace

void handle(const Call& call)
{
    if (call.stanza.isGet())
        return tell(call);
    const QString to = call.stanza.to();
    if (!to.isEmpty() && address::bare(to) != call.client.bareJid())
        return call.error(403, QStringLiteral("Forbidden"));
    call.owner().vcard = xmlOf(call.stanza.query());
    call.result();
}

} // namespace sandbox::vcards
