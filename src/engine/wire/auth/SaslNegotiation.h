#pragma once

#include "engine/wire/auth/AuthPhase.h"
#include "engine/wire/auth/AuthRequest.h"
#include "engine/wire/auth/SaslClient.h"

#include <QCoreApplication>
#include <QStringList>

// SASL on a stream (RFC 6120, 6): from <auth/> to <success/>. A mechanism that the server turns out not to
// want gives way to the next one that it offered; a refusal of the account is final.
class SaslNegotiation : public AuthPhase
{
    Q_DECLARE_TR_FUNCTIONS(SaslNegotiation)

public:
    // The mechanisms of `features`; empty when SASL isn't offered.
    static QStringList offered(pugi::xml_node features);

    // At least one of `mechanisms` must be usable, as SaslClient::choose says.
    SaslNegotiation(AuthRequest request, QStringList mechanisms);
    void feed(const Stanza& element) override;

private:
    void start(const QString& mechanism);
    void challenged(const QByteArray& base64);
    void succeeded(const QByteArray& base64);
    void failed(pugi::xml_node failure);

    void giveUp(const QString& sentence);

    AuthRequest request_;
    QStringList mechanisms_;
    std::unique_ptr<SaslClient> client_;
};
