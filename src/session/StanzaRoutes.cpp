#include "session/StanzaRoutes.h"

#include "contacts/Client.h"
#include "engine/ApplicationPlugIn.h"
#include "engine/Jid.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace
{

// The first row that fits.
template <typename Key, typename Value, std::size_t rows>
Destination found(const std::pair<Key, Destination> (&table)[rows], const Value& value,
                  Destination otherwise = Destination::Nowhere)
{
    for (const auto& [key, destination] : table) {
        if (key == value)
            return destination;
    }
    return otherwise;
}

// What follows is asked of each query in a stanza. There may be many, and the id be long: it is read last.

// The server refused a change of the contact list.
bool isChangeRefusal(const Stanza& iq)
{
    static constexpr QStringView changes[] = {u"VRX_Add", u"VRX_Del", u"UP_ITEM", u"UP_NICK"};
    const auto fields = iq.IqFields();
    return fields.Type() == u"error" && std::ranges::find(changes, fields.Id()) != std::end(changes);
}

// The engine lets answers pass only from where the request went; a "set" may come from anybody, under any id.
bool isAnswer(const Stanza& iq)
{
    const QString type = iq.IqFields().Type();
    return type == u"result" || type == u"error";
}

// The answer to the engine's request for the contact list.
bool isListRefusal(const Stanza& iq)
{
    return iq.IqFields().Type() == u"error" && iq.IqFields().Id() == u"brelo-roster";
}

Destination ofBrowse(const PlugInContext& context)
{
    static constexpr std::pair<QStringView, Destination> lists[] = {
        {u"Check_Server", Destination::ServerCheck},   {u"VRX_GET_SERVICE", Destination::SearchServices},
        {u"VRX_browser", Destination::SearchServices}, {u"VRX_GET_CHATROOM", Destination::ChatRooms},
        {u"VRX_CHATROOM?", Destination::ChatRooms},
    };
    static constexpr std::pair<QStringView, Destination> others[] = {
        {u"VRX_GET_SUPPORTEDNS", Destination::SupportedNamespaces},
        {u"VRX_GET_ONLINEUSERS", Destination::OnlineUsers},
    };
    const bool room = context.Session().Properties().Exists(QStringLiteral("IsGroupchat"));
    if (!isAnswer(context.Stanza()))
        return room ? Destination::GroupChat : Destination::Nowhere;
    const QString id = context.Stanza().IqFields().Id();
    return found(lists, id, room ? Destination::GroupChat : found(others, id));
}

// Mail notices of the two gateways that the person may have switched off.
bool isUnwantedMailNotice(const MessageFields& fields, const Client& client)
{
    const QString from = fields.From().toLower();
    const QString server = client.Gateway().Server().toLower();
    if (!client.settings.CheckHotmail && from == QStringLiteral("msn.") + server &&
        fields.Subject() == u"Hotmail")
        return true;
    return !client.settings.CheckYahooMail && from == QStringLiteral("yim.") + server &&
           fields.Subject() == u"Yahoo! E-mail notification";
}

} // namespace

bool StanzaRoutes::isBlocked(const Stanza& stanza, const Client& client)
{
    return client.MyBanList.covers(stanza.From());
}

void StanzaRoutes::take(Destination destination, Handler handler)
{
    handlers_.at(static_cast<std::size_t>(destination)) = std::move(handler);
}

void StanzaRoutes::take(Destination destination, ApplicationPlugIn& control)
{
    take(destination, [&control](PlugInContext& context) {
        switch (context.Stanza().kind()) {
        case Stanza::Kind::Iq:
            return control.OnIQ(context);
        case Stanza::Kind::Message:
            return control.OnMessage(context);
        case Stanza::Kind::Presence:
            return control.OnPresence(context);
        case Stanza::Kind::Unsent:
        case Stanza::Kind::Uncertain:
            return control.OnReturned(context);
        case Stanza::Kind::Other:
            return;
        }
    });
}

void StanzaRoutes::pass(Destination destination, PlugInContext& context) const
{
    const auto index = static_cast<std::size_t>(destination);
    if (index < handlers_.size() && handlers_[index])
        handlers_[index](context);
}

Destination StanzaRoutes::ofIqChild(pugi::xml_node child, const PlugInContext& context)
{
    static constexpr std::pair<std::string_view, Destination> table[] = {
        {"jabber:iq:roster", Destination::ContactList},   {"jabber:iq:agents", Destination::AgentList},
        {"jabber:iq:auth", Destination::SignInRefusal},   {"jabber:iq:oob", Destination::FileTransfer},
        {"jabber:iq:conference", Destination::GroupChat},
    };
    static constexpr std::pair<std::string_view, Destination> answers[] = {
        {"jabber:iq:register", Destination::Transport},
        {"jabber:iq:search", Destination::Search},
        {"vcard-temp", Destination::VCard},
    };
    if (child.type() != pugi::node_element || isChangeRefusal(context.Stanza()))
        return Destination::Nowhere;
    const auto ns = xml::xmlns(child);
    if (ns == "jabber:iq:browse")
        return ofBrowse(context);
    if (isListRefusal(context.Stanza()))
        return Destination::Nowhere; // as a whole it is no list
    return found(table, ns, isAnswer(context.Stanza()) ? found(answers, ns) : Destination::Nowhere);
}

Destination StanzaRoutes::ofIqId(const Stanza& iq)
{
    const QString id = iq.IqFields().Id();
    if (!isAnswer(iq))
        return Destination::Nowhere;
    if (isChangeRefusal(iq))
        return Destination::ChangeRefused;
    if (isListRefusal(iq))
        return Destination::ListRefused;
    if (id == u"VRX_new")
        return Destination::RegistrationAnswer;
    // An answer to these need not repeat what was asked. One that does has gone its way already.
    static constexpr std::tuple<QStringView, std::string_view, Destination> bare[] = {
        {u"transportquery", "jabber:iq:register", Destination::Transport},
        {u"register-transport", "jabber:iq:register", Destination::Transport},
        {u"VRX_UNREGISTER", "jabber:iq:register", Destination::Transport},
        {u"VRX_CHANGE_USER_PWD", "jabber:iq:register", Destination::Transport},
        {u"JCOM_51", "vcard-temp", Destination::VCard},
    };
    for (const auto& [asked, ns, destination] : bare) {
        const auto repeats = [ns = ns](pugi::xml_node child) { return xml::xmlns(child) == ns; };
        if (id == asked)
            return iq.root().find_child(repeats) ? Destination::Nowhere : destination;
    }
    return Destination::Nowhere;
}

bool StanzaRoutes::endsIq(Destination destination, const Stanza& iq)
{
    if (destination == Destination::ServerCheck)
        return iq.IqFields().Type() == u"error";
    return destination == Destination::SupportedNamespaces && offersAdmin(iq);
}

bool StanzaRoutes::offersAdmin(const Stanza& iq)
{
    for (const auto& match : iq.IqFields().Document().select_nodes("//ns")) {
        if (xml::text(match.node()).toLower().contains(u"jabber:iq:admin"))
            return true;
    }
    return false;
}

Destination StanzaRoutes::ofMessage(const Stanza& stanza, const Client& client)
{
    const auto fields = stanza.MessageFields();
    const QString type = fields.Type();
    if (isBlocked(stanza, client))
        return Destination::Nowhere;
    if (type == u"headline")
        return isUnwantedMailNotice(fields, client) ? Destination::Nowhere : Destination::Notices;
    if (type == u"error")
        return client.settings.CheckError ? Destination::Notices : Destination::Nowhere;
    if (type == u"groupchat")
        return Destination::GroupChat;
    return Destination::Chat;
}

Destination StanzaRoutes::ofPresence(const Stanza& stanza, const Client& client, bool isInitiated)
{
    static constexpr std::pair<QStringView, Destination> ofPerson[] = {
        {u"subscribe", Destination::AuthorizationRequest},
        {u"subscribed", Destination::AuthorizationAccepted},
        {u"unsubscribe", Destination::RemovedByContact},
        {u"unsubscribed", Destination::AuthorizationRefused},
    };
    static constexpr std::pair<QStringView, Destination> ofEngine[] = {{u"connect", Destination::StreamUp},
                                                                       {u"close", Destination::StreamDown}};
    const QString type = stanza.PresenceFields().Type();
    if (!isInitiated)
        return stanza.From().isEmpty() ? found(ofEngine, type) : Destination::Nowhere;
    if (type == u"close")
        return stanza.From().isEmpty() ? Destination::Notices : Destination::Nowhere;
    // Their presence stays in the list, and nothing else of theirs shows.
    if (!type.isEmpty() && type != u"unavailable" && isBlocked(stanza, client))
        return type == u"error" || type == u"subscribe" ? Destination::Nowhere : Destination::Roster;
    if (type == u"error") {
        // A gateway's answers the person, who has asked it for a session.
        const bool wanted = stanza.From().isEmpty() || client.settings.CheckError ||
                            client.MyAgents.JIDExists(jid::bare(stanza.From()));
        return wanted ? Destination::Notices : Destination::Nowhere;
    }
    if (!client.MyAgents.JIDExists(jid::bare(stanza.From())))
        return found(ofPerson, type, Destination::ContactPresence);
    return type == u"subscribe" ? Destination::GatewayRequest : Destination::ContactPresence;
}
