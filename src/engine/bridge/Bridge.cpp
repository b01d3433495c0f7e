#include "engine/bridge/Bridge.h"

#include "engine/Jid.h"
#include "engine/Xml.h"
#include "engine/bridge/AgentsPart.h"
#include "engine/bridge/ErrorsPart.h"
#include "engine/bridge/InboundMessagesPart.h"
#include "engine/bridge/InvitationsPart.h"
#include "engine/bridge/OutboundMessagesPart.h"
#include "engine/bridge/PeerRequestsPart.h"
#include "engine/bridge/RosterPushPart.h"
#include "engine/bridge/SupportedNamespacesPart.h"
#include "engine/bridge/VCardPart.h"

#include <array>

class Bridge::Private
{
public:
    bool passDown(const QByteArray& text, BridgeOutput& out);
    bool passUp(std::shared_ptr<Stanza>& stanza, BridgeOutput& out);

    BridgeState state;
    RosterPushPart rosterPush;
    AgentsPart agents;
    SupportedNamespacesPart supportedNamespaces;
    VCardPart vcard;
    OutboundMessagesPart outboundMessages;
    ErrorsPart errors;
    PeerRequestsPart peerRequests;
    InvitationsPart invitations;
    InboundMessagesPart inboundMessages;

    // The chain, in its order. The parts for browse, register, search, rooms and announce belong here as
    // well: iq parts in any place, rooms before the messages.
    const std::array<BridgePart*, 4> always{&rosterPush, &agents, &supportedNamespaces, &vcard};
    const std::array<BridgePart*, 5> ofToday{&errors, &peerRequests, &invitations, &outboundMessages,
                                             &inboundMessages};
};

Bridge::Bridge() : d_(std::make_unique<Private>()) {}
Bridge::~Bridge() = default;

void Bridge::begin(const Account& account)
{
    auto& state = d_->state;
    state.ownBareJid = jid::bare(account.ownFullJid);
    state.server = account.server;
    state.home = HomeAddresses(account.ownFullJid, account.server);
    state.requests.clear();
    state.knowledge.clear();
    for (auto* part : d_->always)
        part->begin();
    for (auto* part : d_->ofToday)
        part->begin();
}

bool Bridge::Private::passDown(const QByteArray& text, BridgeOutput& out)
{
    // Presence has no translator but the rooms'.
    if (text.startsWith("<presence"))
        return false;
    pugi::xml_document document;
    constexpr unsigned options = pugi::parse_default | pugi::parse_ws_pcdata;
    if (!document.load_buffer(text.constData(), static_cast<std::size_t>(text.size()), options,
                              pugi::encoding_utf8))
        return false;
    const ClientStanza stanza{text, document.document_element()};
    for (auto* part : always) {
        if (part->down(stanza, state, out))
            return true;
    }
    if (!state.knowledge.isOfToday())
        return false;
    for (auto* part : ofToday) {
        if (part->down(stanza, state, out))
            return true;
    }
    return false;
}

BridgeOutput Bridge::down(const QByteArray& stanza)
{
    BridgeOutput out;
    if (!d_->passDown(stanza, out))
        out.wire << stanza;
    d_->state.knowledge.learn(d_->state.server, d_->state.requests, out);
    return out;
}

bool Bridge::Private::passUp(std::shared_ptr<Stanza>& stanza, BridgeOutput& out)
{
    if (stanza->kind() == Stanza::Kind::Iq) {
        if (state.requests.take(*stanza, out))
            return true;
        for (auto* part : always) {
            if (part->up(stanza, state, out))
                return true;
        }
    }
    if (!state.knowledge.isOfToday())
        return false;
    for (auto* part : ofToday) {
        if (part->up(stanza, state, out))
            return true;
    }
    return false;
}

BridgeOutput Bridge::up(std::shared_ptr<Stanza> stanza)
{
    BridgeOutput out;
    // Presence is what floods; nothing but an error in it concerns anybody here.
    const bool isPlainPresence = stanza->kind() == Stanza::Kind::Presence && !stanza->root().child("error");
    if (isPlainPresence || !d_->passUp(stanza, out))
        out.up << std::move(stanza);
    return out;
}

BridgeOutput Bridge::tick(qint64 nowMs)
{
    BridgeOutput out;
    d_->state.requests.tick(nowMs, out);
    for (auto* part : d_->always)
        part->tick(nowMs, d_->state, out);
    for (auto* part : d_->ofToday)
        part->tick(nowMs, d_->state, out);
    return out;
}
