#pragma once

#include "engine/Xml.h"

#include <array>
#include <functional>

class ApplicationPlugIn;
class PlugInContext;
class Stanza;
struct Client;

// Where a received stanza goes.
enum class Destination {
    // Steps of the session.
    ContactList,
    AgentList,
    ChangeRefused, // of the contact list
    ListRefused,
    SignInRefusal,
    RegistrationAnswer,
    SupportedNamespaces,
    StreamUp,
    StreamDown, // before there was a list
    AuthorizationAccepted,
    RemovedByContact,
    AuthorizationRefused,
    GatewayRequest,
    ContactPresence,
    // Windows and their controls.
    Roster,
    Agents,
    Chat,
    GroupChat,
    Notices,
    AuthorizationRequest,
    VCard,
    Transport,         // jabber:iq:register and VRX_UNREGISTER
    GatewaySubscribed, // a gateway asked to see the presence
    Search,
    ServerCheck,
    SearchServices,
    ChatRooms,
    OnlineUsers,
    FileTransfer,

    Nowhere, // the last, and taken by nobody
};

// The routes of all received stanzas, and who takes them at their end. Windows need not be there: a stanza
// for a destination that nobody has taken is dropped without harm.
class StanzaRoutes
{
public:
    using Handler = std::function<void(PlugInContext&)>;

    void take(Destination destination, Handler handler);
    // The control gets the event of the stanza's kind; it must outlive the routes.
    void take(Destination destination, ApplicationPlugIn& control);
    void pass(Destination destination, PlugInContext& context) const;

    // An IQ goes by each of its child elements, in their order, and at last by its id.
    // What answers a request of the client's own goes on only where it is an answer.
    static Destination ofIqChild(pugi::xml_node child, const PlugInContext& context);
    static Destination ofIqId(const Stanza& iq);
    // Whether an IQ ends at this destination, so that what is left of it goes nowhere.
    static bool endsIq(Destination destination, const Stanza& iq);
    // Whether the answer to the question for the supported namespaces names that of the administration.
    static bool offersAdmin(const Stanza& iq);

    // A blocked person reaches nothing that shows.
    static bool isBlocked(const Stanza& stanza, const Client& client);
    static Destination ofMessage(const Stanza& stanza, const Client& client);
    // `isInitiated` tells whether the contact list is up.
    static Destination ofPresence(const Stanza& stanza, const Client& client, bool isInitiated);

private:
    std::array<Handler, static_cast<std::size_t>(Destination::Nowhere)> handlers_;
};
