#pragma once

#include <QString>

// The texts that a session's handshake sends.
namespace handshake
{

// Makes the account (jabber:iq:register, XEP-0077); its answer comes with the id VRX_new.
QString registration(const QString& userName, const QString& password);

QString onlinePresence();

// Asks the server what it supports (jabber:iq:browse); its answer comes with the id VRX_GET_SUPPORTEDNS.
QString supportedNamespaces(const QString& server);

// The JID that is told the running version in its resource; empty where no host is configured.
QString updateContact(const QString& updateHost);

} // namespace handshake
