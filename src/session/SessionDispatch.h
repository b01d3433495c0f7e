#pragma once

#include "engine/ApplicationPlugIn.h"
#include "session/IqRoute.h"
#include "session/Routes.h"

#include <QString>

struct Client;
class SessionSteps;

// The one plug-in that is registered with the engine: it carries the session's handshake and the first-time
// registration, and passes every other stanza on to the control that it is for.
class SessionDispatch : public ApplicationPlugIn
{
public:
    SessionDispatch(Client& client, SessionSteps& windows);

    Routes routes;

    // How much came since the last call: stanzas, and items of lists.
    int takeWork();

    void OnIQ(PlugInContext& context) override;
    void OnMessage(PlugInContext& context) override;
    void OnPresence(PlugInContext& context) override;
    void ApplicationOnStart(PlugInContext& context) override;

private:
    // False when the stanza is done with, so that its other children aren't looked at.
    bool take(const IqRoute& route, PlugInContext& context);
    void onList(const QString& progressLine, PlugInContext& context,
                ApplicationPlugIn& (SessionSteps::*list)());
    void finish(PlugInContext& context);
    void askFirstTime(PlugInContext& context);
    void onRegistered(PlugInContext& context);
    bool readSupportedNamespaces(PlugInContext& context);
    void onAuthorizationNotice(PlugInContext& context, const QString& text);
    void acceptGateway(PlugInContext& context);
    void passToContact(PlugInContext& context);

    Client& client_;
    SessionSteps& windows_;
    bool RegistrationAttempted = false;
    int work_ = 0;
};
