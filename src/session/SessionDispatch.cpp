#include "session/SessionDispatch.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "engine/Xml.h"
#include "session/HandshakeStanzas.h"
#include "session/MessageRoute.h"
#include "session/PresenceRoute.h"
#include "session/SessionSteps.h"

#include <QCoreApplication>

#include <iterator>
#include <utility>

namespace
{

// How much a query's answer is: its items count.
int sizeOf(const Stanza& iq)
{
    int size = 1;
    for (const auto child : iq.root().children()) {
        const auto items = child.children();
        size += int(std::distance(items.begin(), items.end()));
    }
    return size;
}

QString tr(const char* text)
{
    return QCoreApplication::translate("SessionDispatch", text);
}

const QString groupChatKey = QStringLiteral("IsGroupchat");
const QString chatKey = QStringLiteral("ChatWnd");

bool isVCard(pugi::xml_node child)
{
    return xml::xmlns(child) == "vcard-temp";
}

} // namespace

SessionDispatch::SessionDispatch(Client& client, SessionSteps& windows) : client_(client), windows_(windows)
{
}

void SessionDispatch::ApplicationOnStart(PlugInContext& context)
{
    client_.Application = context;
}

int SessionDispatch::takeWork()
{
    return std::exchange(work_, 0);
}

void SessionDispatch::OnIQ(PlugInContext& context)
{
    work_ += sizeOf(context.Stanza());
    if (client_.IgnoreIQ)
        return;
    for (const auto child : context.Stanza().root().children()) {
        if (child.type() == pugi::node_element && !take(routeOfNamespace(xml::xmlns(child)), context))
            return;
    }
    const QString id = context.Stanza().IqFields().Id();
    if (id == u"VRX_new")
        onRegistered(context);
    else if (id == u"VRX_UNREGISTER")
        routes.pass(Routes::transport, context);
    else if (id == u"JCOM_51" && !context.Stanza().root().find_child(isVCard))
        routes.pass(Routes::vCard, context); // the refusal of a card need not repeat the card
}

bool SessionDispatch::take(const IqRoute& route, PlugInContext& context)
{
    switch (route.step) {
    case IqStep::Roster:
        onList(tr("Receiving Gateways..."), context, &SessionSteps::roster);
        break;
    case IqStep::Agents:
        onList(tr("Receiving Contacts"), context, &SessionSteps::agents);
        break;
    case IqStep::Auth:
        askFirstTime(context);
        break;
    case IqStep::Browse:
        return take(routeOfBrowse(context.Stanza().IqFields().Id(),
                                  context.Session().Properties().Exists(groupChatKey)),
                    context);
    case IqStep::CheckServer:
        routes.pass(route.place, context);
        return context.Stanza().IqFields().Type() != u"error";
    case IqStep::SupportedNamespaces:
        return readSupportedNamespaces(context);
    case IqStep::Pass:
        routes.pass(route.place, context);
        break;
    case IqStep::None:
        break;
    }
    return true;
}

void SessionDispatch::onList(const QString& progressLine, PlugInContext& context,
                             ApplicationPlugIn& (SessionSteps::*list)())
{
    if (!windows_.isInitiated())
        windows_.firstContact(progressLine);
    else
        finish(context);
    (windows_.*list)().OnIQ(context);
}

// Kept: it runs on every later list stanza, and sends all of this again.
void SessionDispatch::finish(PlugInContext& context)
{
    windows_.finishSignIn();
    const QString updateContact = handshake::updateContact(client_.site.UpdateHost);
    if (!updateContact.isEmpty()) {
        auto& packet = context.OutPacket();
        packet.Clear();
        packet.PresenceFields().setTo(updateContact);
        packet.Send();
    }
    SendStanza(context, handshake::onlinePresence());
    SendStanza(context, handshake::supportedNamespaces(client_.Gateway().Server()));
}

void SessionDispatch::askFirstTime(PlugInContext& context)
{
    if (RegistrationAttempted || !context.Stanza().Xml().contains(u"type=\"error\""))
        return;
    const auto answer =
        client_.desktop.boxes->show(tr("Information"),
                                    tr("Are you connecting to this Server for the first time? Click on "
                                       "\"Yes\" to proceed, \"No\" to modify "
                                       "you Information."),
                                    MessageBoxes::Icon::Question, MessageBoxes::Buttons::YesNo);
    if (answer == MessageBoxes::Answer::Yes) {
        SendStanza(context, handshake::registration(windows_.userName(), windows_.password()));
        RegistrationAttempted = true;
        return;
    }
    RegistrationAttempted = false;
    client_.Gateway().DoDisconnect();
    windows_.backToSignIn();
}

void SessionDispatch::onRegistered(PlugInContext& context)
{
    const auto fields = context.Stanza().IqFields();
    const QString type = fields.Type();
    if (type == u"result") {
        client_.Gateway().DoDisconnect();
        windows_.connectAgain();
    } else if (type == u"error") {
        RegistrationAttempted = false;
        client_.Gateway().DoDisconnect();
        client_.desktop.boxes->critical(tr("Server Message"),
                                        xml::text(fields.Document().select_node("//iq/error").node()));
        windows_.backToSignIn();
    }
}

bool SessionDispatch::readSupportedNamespaces(PlugInContext& context)
{
    for (const auto& match : context.Stanza().IqFields().Document().select_nodes("//ns")) {
        if (xml::text(match.node()).toLower().contains(u"jabber:iq:admin")) {
            windows_.showAdminMenu(client_.Gateway().Server());
            client_.settings.UserMode = true;
            return false;
        }
        client_.settings.UserMode = false;
    }
    return true;
}

void SessionDispatch::OnMessage(PlugInContext& context)
{
    ++work_;
    switch (routeOfMessage(context.Stanza(), client_)) {
    case MessageRoute::Notice:
        return windows_.showNotice(context);
    case MessageRoute::GroupChat:
        routes.pass(Routes::groupChat, context);
        return;
    case MessageRoute::Chat:
        return windows_.chat().OnMessage(context);
    case MessageRoute::Drop:
        return;
    }
}

void SessionDispatch::OnPresence(PlugInContext& context)
{
    ++work_;
    if (!windows_.isInitiated()) {
        if (context.Stanza().PresenceFields().Type() == u"connect")
            windows_.streamConnected();
        return;
    }
    switch (routeOfPresence(context.Stanza(), client_)) {
    case PresenceRoute::AskForAuthorization:
        return windows_.askAuthorization(context);
    case PresenceRoute::Accepted:
        return onAuthorizationNotice(context, tr("The Contact accepted the Authorisation Request"));
    case PresenceRoute::Removed:
        onAuthorizationNotice(context, tr("The Contact removed you from his Contact List"));
        return windows_.removeContact(jid::bare(context.Stanza().From()));
    case PresenceRoute::Refused:
        return onAuthorizationNotice(context, tr("The Contact refused your Request"));
    case PresenceRoute::AcceptGateway:
        return acceptGateway(context);
    case PresenceRoute::Notice:
        return windows_.noticePresence(context);
    case PresenceRoute::Contact:
        return passToContact(context);
    case PresenceRoute::Drop:
        return;
    }
}

void SessionDispatch::onAuthorizationNotice(PlugInContext& context, const QString& text)
{
    windows_.writeNotice(context.Stanza().From(), tr("Authorization notification"), text);
    windows_.roster().OnPresence(context);
}

// A gateway is always accepted and subscribed back: the packet goes to the peer of its context.
void SessionDispatch::acceptGateway(PlugInContext& context)
{
    auto& packet = context.OutPacket();
    packet.PresenceFields().SetSubscribed();
    packet.Send();
    packet.PresenceFields().SetSubscribe();
    packet.Send();
    routes.pass(Routes::gatewaySubscribed, context);
}

void SessionDispatch::passToContact(PlugInContext& context)
{
    windows_.roster().OnPresence(context);
    const auto& properties = context.Session().Properties();
    if (properties.Exists(chatKey))
        windows_.chat().OnPresence(context);
    if (properties.Exists(groupChatKey))
        routes.pass(Routes::groupChat, context);
}
