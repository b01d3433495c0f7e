#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/IqReply.h"
#include "engine/bridge/queries/Queries.h"

namespace
{

// Roster pushes (RFC 6121, 2.1.6) are acknowledged here; the client, which never answers one, still gets
// them.
class Roster : public Translator
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeContext& context) override
    {
        const auto iq = stanza->root();
        if (stanza::isType(iq, "set") && iq.attribute("id"))
            context.out.wire << reply::result(iq);
        return false;
    }
};

} // namespace

std::shared_ptr<Translator> queries::roster()
{
    return std::make_shared<Roster>();
}
