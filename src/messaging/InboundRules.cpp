#include "messaging/InboundRules.h"

#include "contacts/Collections.h"
#include "engine/Jid.h"
#include "engine/Xml.h"
#include "messaging/LongLines.h"
#include "settings/Settings.h"
#include "settings/SiteData.h"

#include <QCoreApplication>

namespace
{

MessageType typeOf(const QString& type)
{
    if (type.isEmpty())
        return MessageType::Plain;
    if (type == u"chat")
        return MessageType::Chat;
    return type == u"normal" ? MessageType::Normal : MessageType::Other;
}

// An event that names at most the message it is about (XEP-0022, 3.2).
bool hasStoppedTyping(pugi::xml_node message)
{
    const auto isEvent = [](pugi::xml_node x) {
        return std::string_view(x.name()) == "x" && xml::xmlns(x) == "jabber:x:event";
    };
    const auto event = message.find_child(isEvent);
    const auto isNews = [](pugi::xml_node child) { return std::string_view(child.name()) != "id"; };
    return event && !event.find_child(isNews);
}

} // namespace

InboundMessage InboundMessage::of(const Stanza& stanza)
{
    const auto fields = stanza.MessageFields();
    const QString from = stanza.From();
    return {typeOf(fields.Type()),
            from,
            jid::bare(from),
            jid::resource(from),
            stanza.To(),
            textOf(fields),
            stanza.XNamespace() == u"jabber:x:event",
            hasStoppedTyping(stanza.root()),
            fields.XNamespace() == u"jabber:x:conference" && !RoomInvitation::of(stanza).room.isEmpty()};
}

QString InboundMessage::textOf(const MessageFields& fields)
{
    const QString body = fields.Body();
    return body.isEmpty() ? fields.Subject() : body;
}

RoomInvitation RoomInvitation::of(const Stanza& stanza)
{
    constexpr qsizetype mostServers = 20; // nobody invites to more at once
    RoomInvitation invitation{stanza.From(), stanza.MessageFields().Body(), {}, {}};
    for (const auto found : stanza.root().select_nodes(".//*[local-name()='x'][@jid]")) {
        const QString jid = xml::attribute(found.node(), "jid");
        const auto at = jid.indexOf(u'@');
        invitation.room = jid.left(qMax<qsizetype>(at, 0));
        invitation.servers += jid.mid(at + 1);
    }
    invitation.servers = invitation.servers.mid(qMax<qsizetype>(0, invitation.servers.size() - mostServers));
    return invitation;
}

namespace inbound
{
namespace
{

using Action = InboundDecision::Action;
using Window = InboundDecision::Window;

// The sound and the prepared reply are the same for all types.
bool sounds(const InboundMessage& message, const InboundWorld& world, const Settings& settings)
{
    const bool audible = message.type == MessageType::Chat || message.type == MessageType::Normal;
    return audible && !world.trick && settings.SoundOnNewMessage;
}

InboundDecision dropped(const Settings& settings)
{
    InboundDecision decision;
    decision.prepareAutoReply = settings.DoNotReceiveMessFromUnAuth && settings.AutoReplayToUnAuth;
    return decision;
}

// A window more can't open: what came stands among the notices.
InboundDecision turnedAway(InboundDecision decision)
{
    decision.action = Action::TurnAway;
    decision.window = Window::None;
    decision.balloon = decision.write = false;
    return decision;
}

InboundDecision decideRoom(const InboundMessage& message, const InboundWorld& world, const Settings& settings)
{
    if (message.body.isEmpty() && message.hasEvent) // nobody said anything
        return {};
    if (!world.windowOpen && (settings.DoNotReceiveMessFromUnAuth || !settings.AcceptMessageFromAll))
        return dropped(settings);
    InboundDecision decision;
    decision.action = Action::Deliver;
    decision.window = world.windowOpen ? Window::Existing : Window::Stranger;
    decision.room = true;
    decision.balloon = decision.write = !world.trick;
    decision.sound = sounds(message, world, settings);
    return world.crowded && !world.windowOpen ? turnedAway(decision) : decision;
}

// A typing notice never opens a window. Kept: in normal and plain messages the extension alone counts,
// whatever the body holds.
bool isTyping(const InboundMessage& message)
{
    return message.hasEvent && (message.type != MessageType::Chat || message.body.isEmpty());
}

Window windowFor(const InboundWorld& world, const Settings& settings)
{
    if (world.windowOpen)
        return Window::Existing;
    if (world.known)
        return Window::Known;
    if (settings.DoNotReceiveMessFromUnAuth)
        return Window::None;
    return settings.AcceptMessageFromAll ? Window::Stranger : Window::Unregistered;
}

// The first `count` UTF-16 units, and no more lines than a balloon has room for.
QString beginning(const QString& text, qsizetype count)
{
    constexpr int mostLines = 5;
    return text.left(longlines::shownLength(text, count, mostLines));
}

} // namespace

InboundDecision decide(const InboundMessage& message, const InboundWorld& world, const Settings& settings)
{
    InboundDecision decision;
    if (message.isInvitation) {
        decision.action = Action::Invitation;
        return decision;
    }
    if (message.type == MessageType::Other) {
        decision.action = Action::LogOnly;
        return decision;
    }
    if (world.roomOpen)
        return decideRoom(message, world, settings);
    if (message.type == MessageType::Plain && world.notice) {
        decision.action = Action::Notice;
        return decision;
    }
    if (!world.windowOpen && isTyping(message))
        return decision;
    if (message.body.isEmpty() && message.hasStopped) {
        if (world.windowOpen) {
            decision.action = Action::TypingEnds;
            decision.window = Window::Existing;
        }
        return decision;
    }
    decision.window = windowFor(world, settings);
    if (decision.window == Window::None)
        return dropped(settings);
    decision.action = !world.trick && isTyping(message) ? Action::Typing : Action::Deliver;
    decision.write = decision.action == Action::Deliver && !world.trick;
    decision.balloon = decision.write && settings.BalloonEnable;
    decision.sound = decision.action == Action::Deliver && sounds(message, world, settings);
    const bool ofStranger = decision.window == Window::Stranger || decision.window == Window::Unregistered;
    return world.crowded && ofStranger ? turnedAway(decision) : decision;
}

bool isServerNotice(const QString& bare, const QString& server, const CAgents& agents, const SiteData& site)
{
    if (agents.JIDExists(bare))
        return true;
    const QString upper = bare.toUpper();
    if (upper == server.toUpper())
        return true;
    // On other servers the primary host is the server and the secondary is empty, so that a message without a
    // sender counts as the server's.
    if (!server.contains(u"BRELO", Qt::CaseInsensitive))
        return upper.isEmpty();
    return upper == site.DefaultServer.toUpper() || upper == site.SisterServer.toUpper();
}

QString balloonTitle(const QString& from)
{
    const QString title = roomBalloonTitle(from);
    return title.size() < 44 ? title : beginning(title, 40) + QStringLiteral(" ...");
}

QString balloonText(const QString& body)
{
    const QString shown = beginning(body, 200);
    return shown.size() == body.size() ? body : shown + QStringLiteral("...");
}

QString roomBalloonTitle(const QString& from)
{
    return QCoreApplication::translate("ChatWindow", "Message from %1").arg(from);
}

QString roomBalloonText(const QString& body)
{
    return beginning(body, 80) + QStringLiteral("...");
}

} // namespace inbound
