#pragma once

#include "engine/ApplicationPlugIn.h"
#include "session/StanzaRoutes.h"

#include <QString>

class SessionSteps;

// The one plug-in that is registered with the engine: it carries the session's handshake and the first-time
// registration, and passes every other stanza on to whoever has taken its destination.
class SessionDispatch : public ApplicationPlugIn
{
public:
    SessionDispatch(Client& client, SessionSteps& steps);

    StanzaRoutes routes;

    // How much came since the last call: stanzas, and items of lists.
    int takeWork();

    void OnIQ(PlugInContext& context) override;
    void OnMessage(PlugInContext& context) override;
    void OnPresence(PlugInContext& context) override;
    void OnReturned(PlugInContext& context) override;
    void ApplicationOnStart(PlugInContext& context) override;

private:
    void takeSteps();
    void onContactList(PlugInContext& context);
    void onAgentList(PlugInContext& context);
    void onChangeRefused(PlugInContext& context);
    void onListRefused(PlugInContext& context);
    void onList(const QString& progressLine, Destination list, PlugInContext& context);
    void finish(PlugInContext& context);
    void askFirstTime(PlugInContext& context);
    void onRegistered(PlugInContext& context);
    bool isFromHome(const QString& from) const;
    void readSupportedNamespaces(PlugInContext& context);
    void onAccepted(PlugInContext& context);
    void onRemoved(PlugInContext& context);
    void onRefused(PlugInContext& context);
    void onAuthorizationNotice(PlugInContext& context, const QString& text);
    void acceptGateway(PlugInContext& context);
    void passToContact(PlugInContext& context);

    Client& client_;
    SessionSteps& steps_;
    bool RegistrationAttempted = false;
    int work_ = 0;
};
