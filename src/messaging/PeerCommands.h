#pragma once

#include <QString>

struct Client;

// What a message window does about its peer, beside talking.
class PeerCommands
{
public:
    explicit PeerCommands(Client& client) : client_(client) {}

    // Asks the server for the contact and the peer for its presence. False, after a box, when the contact is
    // in the list already, or nothing could be sent.
    bool addContact(const QString& jid);
    // The same, without a word when it was sent.
    bool askContact(const QString& jid);
    // What is said of a request that was sent.
    static QString submitted();
    // Blocks the address after a question. False when it was blocked already, or the answer wasn't Yes.
    bool block(const QString& jid);
    void requestVCard(const QString& jid);

private:
    bool request(const QString& jid);

    Client& client_;
};
