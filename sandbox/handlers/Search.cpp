#include "sandbox/handlers/Search.h"

#include <algorithm>
#include <array>

namespace sandbox::search
{
namespace
{

constexpr std::array<const char*, 4> Fields = {"first", "last", "nick", "email"};

// A person's values, in the order of the fields.
std::array<QString, 4> entryOf(const Persona& persona)
{
    const QString nick = persona.jid.section(u'@', 0, 0);
    return {persona.name.section(u' ', 0, 0), persona.name.section(u' ', 1), nick, persona.email};
}

void tellFields(const Call& call)
{
    Element query("query", "jabber:iq:search");
    query.add("instructions", QStringLiteral("Fill in one or more fields to find people."));
    for (const char* field : Fields)
        query.add(field);
    call.result(query);
}

bool matches(const std::array<QString, 4>& entry, const std::array<QString, 4>& wanted)
{
    return std::equal(
        entry.begin(), entry.end(), wanted.begin(),
        [](const QString& has, const QString& part) { return has.contains(part, Qt::CaseInsensitive); });
}

Element item(const QString& jid, const std::array<QString, 4>& entry)
{
    Element element("item");
    element.set("jid", jid);
    for (std::size_t i = 0; i < Fields.size(); ++i)
        element.add(Fields[i], entry[i]);
    return element;
}

} // namespace

void handle(const Call& call)
{
    if (call.stanza.isGet())
        return tellFields(call);
    std::array<QString, 4> wanted;
    for (std::size_t i = 0; i < Fields.size(); ++i)
        wanted[i] = call.stanza.queryText(Fields[i]).trimmed();
    Element query("query", "jabber:iq:search");
    for (const auto& [jid, persona] : call.world.personas()) {
        const auto entry = entryOf(persona);
        if (matches(entry, wanted))
            query.add(item(jid, entry));
    }
    call.result(query);
}

} // namespace sandbox::search
