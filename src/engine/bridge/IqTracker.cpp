#include "engine/bridge/IqTracker.h"

#include "engine/Xml.h"

#include <string_view>

namespace
{

// The lists by which the client is steered: nobody but the own server may write them, whatever they come in.
bool steersClient(pugi::xml_node iq)
{
    for (const auto child : iq.children()) {
        const auto ns = xml::xmlns(child);
        if (ns == "jabber:iq:roster" || ns == "jabber:iq:agents" || ns == "jabber:iq:auth")
            return true;
    }
    return false;
}

} // namespace

void IqTracker::begin(const QString& ownFullJid, const QString& server)
{
    home_ = HomeAddresses(ownFullJid, server);
    outstanding_.clear();
}

void IqTracker::sent(const QByteArray& stanza)
{
    if (!stanza.startsWith("<iq"))
        return;
    pugi::xml_document document;
    if (!document.load_buffer(stanza.constData(), static_cast<std::size_t>(stanza.size())))
        return;
    const auto iq = document.document_element();
    const std::string_view type = iq.attribute("type").value();
    if (type == "get" || type == "set")
        ++outstanding_[home_.requestKey(iq, "to")];
}

bool IqTracker::accepts(const Stanza& stanza)
{
    if (stanza.kind() != Stanza::Kind::Iq)
        return true;
    const auto iq = stanza.root();
    const auto key = home_.requestKey(iq, "from");
    const bool isFromHome = key.second.isEmpty();
    if (!isFromHome && steersClient(iq))
        return false;
    const std::string_view type = iq.attribute("type").value();
    if (type == "get" || type == "set")
        return true;
    if (type != "result" && type != "error")
        return false;
    const auto request = outstanding_.find(key);
    if (request == outstanding_.end())
        return false;
    if (--request.value() == 0)
        outstanding_.erase(request);
    return true;
}
