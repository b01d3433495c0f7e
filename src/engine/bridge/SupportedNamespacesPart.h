#pragma once

#include "engine/bridge/BridgePart.h"

#include <QStringList>

// The browse by which the client learns what its server offers. The client tells an administrator by the
// namespace jabber:iq:admin, which no server of today has: it stands for an account that is one (XEP-0030,
// XEP-0133).
class SupportedNamespacesPart : public BridgePart
{
public:
    void begin() override;
    bool down(const ClientStanza& stanza, BridgeState& state, BridgeOutput& out) override;

private:
    void answer(const QString& from, BridgeState& state, BridgeOutput& out);
    void askForRights(BridgeState& state, BridgeOutput& out);
    void learntRight(bool isAdmin, BridgeState& state, BridgeOutput& out);
    std::shared_ptr<Stanza> made(const QString& from, const QStringList& features) const;

    enum class Rights { Unknown, Asked, Known };

    Rights rights_ = Rights::Unknown;
    bool isAdmin_ = false;
    int openQuestions_ = 0;
    // Senders that the askers expect, while the rights aren't known.
    QStringList waiting_;
};
