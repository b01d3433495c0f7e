#pragma once

#include "engine/ApplicationPlugIn.h"

#include <QString>

#include <functional>

struct Client;

// Reads the server's list of services (jabber:iq:agents, XEP-0094) into the agents and the contacts, and puts
// the gateways and the server itself into the contact list.
class Agents : public ApplicationPlugIn
{
public:
    // What the contact list is asked for. `isInitiated` and `initRoster` set it up when this answer is the
    // first; `addGateway` adds a row under "Gateways".
    struct ContactList {
        std::function<bool()> isInitiated;
        std::function<void()> initRoster;
        std::function<void(const QString& jid, const QString& name)> addGateway;
    };

    Agents(Client& client, ContactList list);

    ApplicationPlugIn& Myapplicationplugin() { return *this; }
    void OnIQ(PlugInContext& context) override;

private:
    void addAgent(const QString& jid, const QString& name, bool isTransport);

    Client& client_;
    ContactList list_;
};
