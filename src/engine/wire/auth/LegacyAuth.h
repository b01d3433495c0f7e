#pragma once

#include "engine/wire/auth/AuthPhase.h"
#include "engine/wire/auth/AuthRequest.h"

#include <QCoreApplication>

// jabber:iq:auth (XEP-0078): the fields are asked for, then the digest is sent where it is offered, else the
// password, which needs encryption or the person's word.
class LegacyAuth : public AuthPhase
{
    Q_DECLARE_TR_FUNCTIONS(LegacyAuth)

public:
    static bool isOffered(pugi::xml_node features);

    LegacyAuth(AuthRequest request, QString streamId);
    void feed(const Stanza& element) override;

private:
    void send(pugi::xml_node offeredFields);
    void refused(pugi::xml_node iq);
    QString ownJid() const;

    AuthRequest request_;
    QString streamId_;
    bool sent_ = false;
};
