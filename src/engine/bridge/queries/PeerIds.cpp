#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/Queries.h"

#include <algorithm>
#include <array>

namespace
{

// How the ids of the client's own requests begin, and those of the engine's.
constexpr std::array<std::string_view, 9> ownIds{
    "VRX", "JCOM_", "UP_", "vcard_wj", "Check_", "fullroster_", "transportquery", "register-", "brelo"};

// The client knows the answers to its requests by their ids, whatever their type: others' requests that bear
// such an id get another one before it sees them. It answers none, so that nobody misses the old one.
class PeerIds : public Translator
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeContext&) override
    {
        const std::string_view id = stanza->root().attribute("id").value();
        if (std::any_of(ownIds.begin(), ownIds.end(), [id](auto own) { return id.starts_with(own); }))
            stanza = stanza::changed(stanza->root(), [](pugi::xml_node copy) {
                stanza::setAttribute(copy, "id", QStringLiteral("peer-") + xml::attribute(copy, "id"));
            });
        return false;
    }
};

} // namespace

std::shared_ptr<Translator> queries::peerIds()
{
    return std::make_shared<PeerIds>();
}
