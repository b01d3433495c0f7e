#include "engine/wire/IqResponder.h"

#include "engine/Xml.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace
{

constexpr std::array<std::string_view, 3> clientNamespaces{"jabber:iq:browse", "jabber:iq:oob",
                                                           "jabber:iq:conference"};

QByteArray reply(const Stanza& stanza, const char* type, const char* content)
{
    pugi::xml_document document;
    auto iq = document.append_child("iq");
    iq.append_attribute("type") = type;
    iq.append_attribute("id") = stanza.root().attribute("id").value();
    if (const auto from = stanza.root().attribute("from"))
        iq.append_attribute("to") = from.value();
    if (*content)
        iq.append_buffer(content, std::strlen(content));
    return xml::serialised(iq).toUtf8();
}

} // namespace

IqResponse respondTo(const Stanza& stanza)
{
    const std::string_view type = stanza.root().attribute("type").value();
    if (stanza.kind() != Stanza::Kind::Iq || (type != "get" && type != "set"))
        return {};
    const auto request = stanza.root().first_child();
    const auto space = request ? xml::xmlns(request) : std::string_view();
    if (std::find(clientNamespaces.begin(), clientNamespaces.end(), space) != clientNamespaces.end())
        return {};
    if (type == "set" && space == "jabber:iq:roster")
        return {reply(stanza, "result", ""), true};
    if (type == "get" && space == "urn:xmpp:ping")
        return {reply(stanza, "result", ""), false};
    return {reply(stanza, "error",
                  "<error code=\"503\" type=\"cancel\">"
                  "<service-unavailable xmlns=\"urn:ietf:params:xml:ns:xmpp-stanzas\"/></error>"),
            false};
}
