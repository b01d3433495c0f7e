#pragma once

#include "engine/bridge/BridgePart.h"

#include <QHash>

// vcard-temp (XEP-0054): the dialect writes VCARD where the wire of today has vCard, and three of its element
// names differ. An old server would take the one for the other's absence, so the server's kind decides.
class VCardPart : public BridgePart
{
public:
    void begin() override { asked_.clear(); }
    bool down(const ClientStanza& stanza, BridgeState& state, BridgeOutput& out) override;
    bool up(std::shared_ptr<Stanza>& stanza, BridgeState& state, BridgeOutput& out) override;

private:
    void translateDown(pugi::xml_node iq, const BridgeState& state, BridgeOutput& out);

    // By id: the addresses that were asked for a card, as the client wrote them.
    QMultiHash<QString, QString> asked_;
};
