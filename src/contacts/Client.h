#pragma once

#include "contacts/Collections.h"
#include "desktop/Desktop.h"
#include "engine/PlugInContext.h"
#include "engine/ProxyServer.h"
#include "engine/TempVRXCore.h"
#include "settings/Settings.h"
#include "settings/SiteData.h"

#include <memory>
#include <optional>

// What the whole program shares. Forms take a reference to it; there is no other global.
struct Client {
    std::unique_ptr<TempVRXCore> Core;
    // The way to send outside an event; set when the engine starts the application.
    std::optional<PlugInContext> Application;

    CRoster MyRoster;
    CAgents MyAgents;
    CGroups MyGroups;
    CBanList MyBanList;

    Settings settings;
    SiteData site;
    ProxyServer proxy;       // holds for this run; it has no settings keys
    QString sessionResource; // of the connection that was begun last
    QString FreeForChatMsg;  // status text of "Free for Chat"; it has no settings key

    bool UserClosing = false;             // a close really closes: the program ends
    bool SessionClosing = false;          // a session ends: forms close instead of hiding
    bool GroupchatCloseConfirmed = false; // the room has confirmed that the person left it
    bool IgnoreIQ = false;                // every IQ is dropped unread

    // Changes at every connect and at every end of a session, see SameSession.
    int sessionNumber = 0;

    Desktop desktop;

    ::Gateway& Gateway() const { return *Core->Gateway; }
    bool isConnected() const { return Core && Core->Gateway->isconnected(); }
    // UserName@Server of the connection.
    QString ownBareJid() const { return Gateway().UserName() + u'@' + Gateway().Server(); }
    // The own bare JID with the resource that was asked for.
    QString ownFullJid() const
    {
        return ownBareJid() + u'/' + (sessionResource.isEmpty() ? settings.Resource : sessionResource);
    }
};

// Made before a box, true after it while the session is still the one of before. Under a box the person may
// disconnect or exit, and the connection may be lost.
class SameSession
{
public:
    explicit SameSession(const Client& client) : client_(client), number_(client.sessionNumber) {}
    explicit operator bool() const { return client_.sessionNumber == number_; }

private:
    const Client& client_;
    int number_;
};
