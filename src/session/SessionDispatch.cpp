#include "session/SessionDispatch.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "engine/StanzaError.h"
#include "engine/Xml.h"
#include "session/HandshakeStanzas.h"
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

} // namespace

SessionDispatch::SessionDispatch(Client& client, SessionSteps& steps) : client_(client), steps_(steps)
{
    takeSteps();
}

void SessionDispatch::takeSteps()
{
    using Step = void (SessionDispatch::*)(PlugInContext&);
    static constexpr std::pair<Destination, Step> own[] = {
        {Destination::ContactList, &SessionDispatch::onContactList},
        {Destination::AgentList, &SessionDispatch::onAgentList},
        {Destination::ChangeRefused, &SessionDispatch::onChangeRefused},
        {Destination::ListRefused, &SessionDispatch::onListRefused},
        {Destination::SignInRefusal, &SessionDispatch::askFirstTime},
        {Destination::RegistrationAnswer, &SessionDispatch::onRegistered},
        {Destination::SupportedNamespaces, &SessionDispatch::readSupportedNamespaces},
        {Destination::AuthorizationAccepted, &SessionDispatch::onAccepted},
        {Destination::RemovedByContact, &SessionDispatch::onRemoved},
        {Destination::AuthorizationRefused, &SessionDispatch::onRefused},
        {Destination::GatewayRequest, &SessionDispatch::acceptGateway},
        {Destination::ContactPresence, &SessionDispatch::passToContact},
    };
    for (const auto& [destination, step] : own)
        routes.take(destination, [this, step = step](PlugInContext& context) { (this->*step)(context); });
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
    const auto& iq = context.Stanza();
    work_ += sizeOf(iq);
    if (client_.IgnoreIQ || (iq.IqFields().Type() == u"set" && StanzaRoutes::isBlocked(iq, client_)))
        return;
    const SameSession same(client_);
    for (const auto child : iq.root().children()) {
        const auto destination = StanzaRoutes::ofIqChild(child, context);
        routes.pass(destination, context);
        if (!same || StanzaRoutes::endsIq(destination, iq))
            return;
    }
    routes.pass(StanzaRoutes::ofIqId(iq), context);
}

void SessionDispatch::OnMessage(PlugInContext& context)
{
    ++work_;
    routes.pass(StanzaRoutes::ofMessage(context.Stanza(), client_), context);
}

// What was said in a room comes back to the room, though its window may have gone.
void SessionDispatch::OnReturned(PlugInContext& context)
{
    const bool room = context.Stanza().MessageFields().Type().toLower() == u"groupchat";
    routes.pass(room ? Destination::GroupChat : Destination::Chat, context);
}

void SessionDispatch::OnPresence(PlugInContext& context)
{
    ++work_;
    routes.pass(StanzaRoutes::ofPresence(context.Stanza(), client_, steps_.isInitiated()), context);
}

void SessionDispatch::onContactList(PlugInContext& context)
{
    onList(tr("Receiving Gateways..."), Destination::Roster, context);
}

void SessionDispatch::onAgentList(PlugInContext& context)
{
    onList(tr("Receiving Contacts"), Destination::Agents, context);
}

// What the server has follows as a push.
void SessionDispatch::onChangeRefused(PlugInContext& context)
{
    steps_.writeNotice(client_.Gateway().Server(),
                       tr("The server refused a change of your contact list: %1")
                           .arg(StanzaError::of(context.Stanza().root()).sentence()),
                       tr("Contact list"));
}

void SessionDispatch::onListRefused(PlugInContext& context)
{
    steps_.listRefused(StanzaError::of(context.Stanza().root()).sentence());
}

void SessionDispatch::onList(const QString& progressLine, Destination list, PlugInContext& context)
{
    const SameSession same(client_);
    if (!steps_.isInitiated())
        steps_.firstContact(progressLine);
    else
        finish(context);
    if (same)
        routes.pass(list, context);
}

// Kept: it runs on every later list stanza, and sends all of this again.
void SessionDispatch::finish(PlugInContext& context)
{
    RegistrationAttempted = false; // a later refusal is another's, or comes of another password
    steps_.finishSignIn();
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
    // The refusal that follows a registration asks nothing; the next sign-in asks anew.
    if (!context.Stanza().Xml().contains(u"type=\"error\"") || std::exchange(RegistrationAttempted, false))
        return;
    const SameSession same(client_);
    const auto answer =
        client_.desktop.boxes->show(tr("Information"),
                                    tr("Are you connecting to this Server for the first time? Click on "
                                       "\"Yes\" to proceed, \"No\" to modify "
                                       "you Information."),
                                    MessageBoxes::Icon::Exclamation, MessageBoxes::Buttons::YesNo);
    if (!same)
        return;
    if (answer == MessageBoxes::Answer::Yes) {
        SendStanza(context, handshake::registration(steps_.userName(), steps_.password()));
        RegistrationAttempted = true;
        return;
    }
    RegistrationAttempted = false;
    client_.Gateway().DoDisconnect();
    steps_.backToSignIn();
}

void SessionDispatch::onRegistered(PlugInContext& context)
{
    const auto fields = context.Stanza().IqFields();
    const QString type = fields.Type();
    if (!isFromHome(fields.From()))
        return;
    if (type == u"result") {
        client_.Gateway().DoDisconnect();
        steps_.connectAgain();
    } else if (type == u"error") {
        RegistrationAttempted = false;
        client_.Gateway().DoDisconnect();
        const SameSession same(client_);
        client_.desktop.boxes->critical(tr("Server Message"),
                                        xml::text(fields.Document().select_node("//iq/error").node()));
        if (same)
            steps_.backToSignIn();
    }
}

// The server, or the own account for which it speaks.
bool SessionDispatch::isFromHome(const QString& from) const
{
    const QString address = jid::bare(from);
    return address.isEmpty() || address.compare(client_.Gateway().Server(), Qt::CaseInsensitive) == 0 ||
           address.compare(client_.ownBareJid(), Qt::CaseInsensitive) == 0;
}

// Of the server alone. An answer that names none keeps the mark.
void SessionDispatch::readSupportedNamespaces(PlugInContext& context)
{
    const auto& answer = context.Stanza();
    if (!isFromHome(answer.From()) || !answer.IqFields().Document().select_node("//ns"))
        return;
    client_.settings.UserMode = StanzaRoutes::offersAdmin(answer);
    if (client_.settings.UserMode)
        steps_.showAdminMenu(client_.Gateway().Server());
}

void SessionDispatch::onAccepted(PlugInContext& context)
{
    onAuthorizationNotice(context, tr("The Contact accepted the Authorisation Request"));
}

void SessionDispatch::onRemoved(PlugInContext& context)
{
    onAuthorizationNotice(context, tr("The Contact removed you from his Contact List"));
    steps_.removeContact(jid::bare(context.Stanza().From()));
}

void SessionDispatch::onRefused(PlugInContext& context)
{
    onAuthorizationNotice(context, tr("The Contact refused your Request"));
}

void SessionDispatch::onAuthorizationNotice(PlugInContext& context, const QString& text)
{
    steps_.writeNotice(context.Stanza().From(), tr("Authorization notification"), text);
    routes.pass(Destination::Roster, context);
}

// A gateway is always accepted and subscribed back: the packet goes to the peer of its context.
void SessionDispatch::acceptGateway(PlugInContext& context)
{
    auto& packet = context.OutPacket();
    packet.PresenceFields().SetSubscribed();
    packet.Send();
    packet.PresenceFields().SetSubscribe();
    packet.Send();
    routes.pass(Destination::GatewaySubscribed, context);
}

void SessionDispatch::passToContact(PlugInContext& context)
{
    routes.pass(Destination::Roster, context);
    const auto& properties = context.Session().Properties();
    if (properties.Exists(QStringLiteral("ChatWnd")))
        routes.pass(Destination::Chat, context);
    if (properties.Exists(QStringLiteral("IsGroupchat")))
        routes.pass(Destination::GroupChat, context);
}
