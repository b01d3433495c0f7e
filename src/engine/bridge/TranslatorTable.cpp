#include "engine/bridge/TranslatorTable.h"

#include "engine/bridge/StanzaText.h"
#include "engine/bridge/messages/Messages.h"
#include "engine/bridge/queries/Queries.h"
#include "engine/bridge/rooms/Rooms.h"

#include <set>

std::vector<TranslatorRow> TranslatorTable::standard()
{
    using enum TranslatorRow::Kind;
    using enum TranslatorRow::Server;
    const auto roster = queries::roster();
    const auto refusals = queries::refusals();
    return {
        // Before those who may answer these themselves.
        {Request, "jabber:iq:browse", Any, refusals},
        {Request, "jabber:iq:conference", Any, refusals},
        {Request, "jabber:iq:oob", Any, refusals},
        {Request, "jabber:iq:register", Any, refusals},
        {Request, "jabber:iq:search", Any, refusals},

        {Request, "jabber:iq:roster", Any, roster},
        {Request, "jabber:iq:agents", Any, queries::agents()},
        {Request, "jabber:iq:browse", Any, queries::supportedNamespaces()},
        {Request, "vcard-temp", Any, queries::vCards()},

        {PeerRequest, "jabber:iq:roster", Any, roster},
        {PeerRequest, "", OfToday, queries::peerRequests()},
        {PeerRequest, "", Any, queries::peerIds()},

        // What concerns rooms comes before what people write to each other.
        {Message, "", OfToday, rooms::invitations()},
        {Message, "", OfToday, messages::outbound()},
        {Message, "", OfToday, messages::inbound()},

        {Error, "", OfToday, queries::errors()},
        {Error, "", Any, refusals},
    };
}

namespace
{

bool concerns(const TranslatorRow& row, TranslatorRow::Kind kind, pugi::xml_node root,
              const BridgeContext& context)
{
    return row.kind == kind && (row.ns.empty() || stanza::child(root, row.ns)) &&
           (row.server == TranslatorRow::Server::Any || context.knowledge.homeIsOfToday());
}

} // namespace

void TranslatorTable::begin(BridgeContext& context) const
{
    std::set<Translator*> begun;
    for (const auto& row : rows_) {
        if (begun.insert(row.translator.get()).second)
            row.translator->begin(context);
    }
}

bool TranslatorTable::down(Kind kind, const ClientStanza& stanza, BridgeContext& context) const
{
    return std::any_of(rows_.begin(), rows_.end(), [&](const TranslatorRow& row) {
        return concerns(row, kind, stanza.root(), context) && row.translator->down(stanza, context);
    });
}

bool TranslatorTable::up(Kind kind, std::shared_ptr<Stanza>& stanza, BridgeContext& context) const
{
    return std::any_of(rows_.begin(), rows_.end(), [&](const TranslatorRow& row) {
        return concerns(row, kind, stanza->root(), context) && row.translator->up(stanza, context);
    });
}
