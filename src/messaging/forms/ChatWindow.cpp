#include "messaging/forms/ChatWindow.h"

#include "contacts/Client.h"
#include "contacts/StatusRules.h"
#include "desktop/forms/Form.h"
#include "engine/Jid.h"
#include "messaging/forms/HeadLineForm.h"
#include "messaging/forms/MessageForm.h"
#include "messaging/forms/RoomWindow.h"

#include <QApplication>

#include <algorithm>

namespace
{

using Action = InboundDecision::Action;
using Window = InboundDecision::Window;

// More than anybody talks to, and few enough for the desktop.
constexpr qsizetype mostOfStrangers = 50;

QString bagKey(const InboundMessage& message, bool room)
{
    return room ? QStringLiteral("ChatWnd") + message.resource : QStringLiteral("ChatWnd");
}

MessageForm* windowIn(const PlugInContext& context, const QString& key)
{
    return qobject_cast<MessageForm*>(context.Session().Properties().Item(key));
}

} // namespace

void ChatWindow::SendMessage(const QString& jid)
{
    SendMessageFromConference(jid, client_.ownFullJid());
}

void ChatWindow::SendMessageFromConference(const QString& from, const QString& to)
{
    const QString refusal = whyNotOpened(from);
    if (!refusal.isEmpty()) {
        IsTrick = false;
        return client_.desktop.boxes->information(tr("Note !"), refusal);
    }
    if (!client_.Application)
        return;
    auto& packet = client_.Application->OutPacket();
    packet.Clear();
    auto fields = packet.MessageFields();
    fields.setFrom(from);
    fields.setTo(to);
    fields.setBody({});
    fields.setType(QStringLiteral("chat"));
    // Without an echo the flag would swallow the next real message.
    if (!packet.Send())
        IsTrick = false;
}

QList<ConversationForm*> ChatWindow::conversations() const
{
    QList<ConversationForm*> windows;
    for (auto* form : registry_.loaded()) {
        auto* window = qobject_cast<ConversationForm*>(form);
        if (window && window->isOpen())
            windows += window;
    }
    return windows;
}

bool ChatWindow::openOldestUnread()
{
    for (const auto& peer : unread.peers()) {
        for (auto* window : conversations()) {
            if (window->peer == peer) {
                window->bringUp();
                return true;
            }
        }
    }
    return false;
}

void ChatWindow::followReading(ConversationForm& window)
{
    connect(&window, &Form::activated, &unread, [this, &window] { unread.remove(window.peer); });
    connect(&window, &QObject::destroyed, &unread, [this, peer = window.peer] { unread.remove(peer); });
}

void ChatWindow::markUnread(ConversationForm& window)
{
    if (window.isActiveWindow() && !window.isMinimized())
        return;
    unread.add(window.peer);
    QApplication::alert(&window);
}

// The opening message would be dropped on its way back.
QString ChatWindow::whyNotOpened(const QString& jid) const
{
    const QString bare = jid::bare(jid);
    if (!jid::isValid(jid))
        return tr("\"%1\" is not a Jabber address. It looks like user@server.").arg(jid.left(200));
    if (client_.MyBanList.covers(jid))
        return tr("%1 is blocked. Take the block back to open a conversation.").arg(jid);
    const bool room = jid.contains(u'/') && registry_.tagged<RoomWindow>(bare);
    const auto session = client_.Core->PluginManager->sessions().session(bare);
    const QString key = room ? QStringLiteral("ChatWnd") + jid::resource(jid) : QStringLiteral("ChatWnd");
    const bool takesNone =
        client_.settings.DoNotReceiveMessFromUnAuth || (room && !client_.settings.AcceptMessageFromAll);
    if (!takesNone || session->Properties().Exists(key) || (!room && client_.MyRoster.DoesJIDExist(bare)))
        return {};
    return tr("Your preferences take no messages from people outside your contact list, so that no "
              "conversation with %1 can be opened.")
        .arg(jid);
}

// What names nobody is from the server, which speaks for the account (RFC 6120, 8.1.2.1), or to the account.
void ChatWindow::complete(MessageFields fields) const
{
    if (fields.From().isEmpty())
        fields.setFrom(client_.Gateway().Server());
    if (fields.To().isEmpty())
        fields.setTo(client_.ownFullJid());
}

void ChatWindow::OnMessage(PlugInContext& context)
{
    complete(context.Stanza().MessageFields());
    const auto message = InboundMessage::of(context.Stanza());
    const auto decision = inbound::decide(message, worldOf(message, context), client_.settings);
    switch (decision.action) {
    case Action::Invitation:
        emit conferenceInvited(RoomInvitation::of(context.Stanza()));
        break;
    case Action::Notice:
        showNotice(context);
        break;
    case Action::Drop:
        if (message.body.isEmpty() && !message.hasEvent)
            IsTrick = false; // it may have been the echo, and no later message is
        if (decision.prepareAutoReply)
            prepareAutoReply(context, message);
        break;
    case Action::TurnAway:
        showNotice(context);
        playSound(decision);
        reportLog(writeLogLine(message.body, decision.room ? message.from : message.bare, message.to,
                               context.Stanza().MessageFields().Written()));
        break;
    case Action::LogOnly:
        // Kept: a message of an unknown type is logged under an empty name.
        reportLog(writeLogLine(message.body, {}, message.to));
        break;
    case Action::TypingEnds:
        windowIn(context, bagKey(message, decision.room))->endTyping();
        break;
    case Action::Typing:
    case Action::Deliver:
        converse(context, message, decision);
        break;
    }
}

InboundWorld ChatWindow::worldOf(const InboundMessage& message, PlugInContext& context) const
{
    InboundWorld world;
    world.roomOpen = message.from.contains(u'/') && registry_.tagged<RoomWindow>(message.bare);
    world.notice =
        message.type == MessageType::Plain &&
        inbound::isServerNotice(message.bare, client_.Gateway().Server(), client_.MyAgents, client_.site);
    world.windowOpen = windowIn(context, bagKey(message, world.roomOpen));
    world.known = client_.MyRoster.DoesJIDExist(message.bare);
    world.trick = IsTrick;
    world.crowded = !world.windowOpen && !world.trick && isCrowded();
    return world;
}

bool ChatWindow::isCrowded() const
{
    const auto windows = conversations();
    return std::count_if(windows.begin(), windows.end(), [](const auto* window) {
               return window->isUnasked && window->isVisible();
           }) >= mostOfStrangers;
}

void ChatWindow::playSound(const InboundDecision& decision)
{
    if (decision.sound)
        client_.desktop.sounds->PlaySoundFile(client_.settings.SoundOnNewMessageFile, false);
}

// Kept: the reply is left in the packet and never sent.
void ChatWindow::prepareAutoReply(const PlugInContext& context, const InboundMessage& message)
{
    context.OutPacket().Clear();
    auto fields = context.OutPacket().MessageFields();
    fields.setTo(message.from);
    fields.setType(QStringLiteral("Normal"));
    fields.setSubject(QStringLiteral("Auto Response"));
    fields.setBody(client_.settings.AutoReplayMess);
}

void ChatWindow::showNotice(PlugInContext& context)
{
    if (!notices)
        return;
    auto& window = notices();
    window.showAtPlace();
    window.Myapplicationplugin()->OnMessage(context);
}

void ChatWindow::converse(PlugInContext& context, const InboundMessage& message,
                          const InboundDecision& decision)
{
    const bool isNew = decision.window != Window::Existing;
    auto& window =
        isNew ? makeWindow(context, message, decision) : *windowIn(context, bagKey(message, decision.room));
    const QString peer = decision.room ? message.from : message.bare;
    if (decision.room)
        showOccupant(window, message);
    const auto fields = context.Stanza().MessageFields();
    QStringList logged; // what went wrong at each write; empty for nothing
    // Kept: without the trick the header lands in the log of the account's own name.
    if (isNew)
        logged += log_.WriteLogHeader(IsTrick ? peer : message.to);
    showWindow(window);
    window.Context = context;
    if (decision.action == Action::Typing)
        return window.showTyping(message.from);
    if (decision.balloon)
        showBalloon(message, decision.room);
    if (decision.write) {
        window.WriteMessage(fields, message.body);
        window.setPanelText(tr("Latest Message Received: %1 %2").arg(stamps_.longDate(), stamps_.longTime()));
        markUnread(window);
    }
    if (!decision.room)
        window.resources().messageCame(message.resource, contact(message.bare));
    playSound(decision);
    logged += writeLogLine(message.body, peer, message.to, fields.Written());
    if (!decision.room && QApplication::activeWindow() == &window)
        window.focusEntry();
    // The last: under a box the session may end, and its windows go.
    for (const auto& error : std::as_const(logged))
        reportLog(error);
}

MessageForm& ChatWindow::makeWindow(PlugInContext& context, const InboundMessage& message,
                                    const InboundDecision& decision)
{
    auto& window = *new MessageForm(registry_, *this);
    window.peer = decision.room ? message.from : message.bare;
    followReading(window);
    window.isUnasked = !IsTrick && decision.window != Window::Known;
    describePeer(window, message, decision);
    if (decision.window == Window::Known || decision.window == Window::Stranger)
        window.keepIn(context.Session().Properties(), bagKey(message, decision.room));
    if (IsTrick && !decision.room)
        window.resources().SetupResourceControls(contact(message.bare));
    return window;
}

void ChatWindow::describePeer(MessageForm& window, const InboundMessage& message,
                              const InboundDecision& decision)
{
    QString nick;
    if (decision.window == Window::Known) {
        const auto* record = contact(message.bare);
        nick = record->nick;
        window.setPicture(statusrules::FindStatusImg(client_.MyRoster, message.bare));
        window.setNick(nick);
        window.setStatusText(record->Status);
        window.setPeer(message.bare);
    } else if (decision.window == Window::Stranger) {
        nick = message.from;
        window.setPicture(QStringLiteral("Pendingauth"));
        window.setCanAdd(!decision.room);
        window.setPeer(decision.room ? message.from : message.bare);
    } else {
        window.setSender(message.bare);
    }
    window.setCaption(decision.room ? message.from : nick + QStringLiteral(" - ") + message.bare);
}

// The address alone may name nobody that the person knows.
void ChatWindow::showOccupant(MessageForm& window, const InboundMessage& message) const
{
    const auto* room = registry_.tagged<RoomWindow>(message.bare);
    if (const QString nick = room ? room->nickOf(message.from) : QString(); !nick.isEmpty())
        window.setNick(nick);
}

// A message never takes the screen from the window in use. What the person opened comes to the front. One of
// a stranger that was closed stays so while there are too many; it is marked as unread.
void ChatWindow::showWindow(MessageForm& window)
{
    if (IsTrick)
        return window.bringUp();
    if (window.isVisible() || (window.isUnasked && isCrowded()))
        return;
    if (client_.settings.CurrentWindowOnTop)
        window.setWindowState(window.windowState() | Qt::WindowMinimized);
    window.show();
}

void ChatWindow::showBalloon(const InboundMessage& message, bool room)
{
    auto& tray = *client_.desktop.tray;
    tray.setBalloonIcon(1);
    tray.setBalloonTitle(room ? inbound::roomBalloonTitle(message.from)
                              : inbound::balloonTitle(message.from));
    tray.setBalloonText(room ? inbound::roomBalloonText(message.body) : inbound::balloonText(message.body));
    tray.setBalloonTime(client_.settings.BalloonTime);
    tray.showBalloon();
}

// Kept: the opening message is logged with its two addresses swapped, under the account's own name.
QString ChatWindow::writeLogLine(const QString& body, const QString& sender, const QString& to,
                                 const QDateTime& written)
{
    const bool trick = std::exchange(IsTrick, false);
    return trick ? log_.WriteLogLine(body, to, sender, false)
                 : log_.WriteLogLine(body, sender, to, false, written);
}

void ChatWindow::OnPresence(PlugInContext& context)
{
    auto* window = windowIn(context, QStringLiteral("ChatWnd"));
    const QString from = context.Stanza().From();
    const auto presence = context.Stanza().PresenceFields();
    const bool available = presence.IsAvailable();
    if (window && !available)
        window->endTyping();
    const auto* record = contact(jid::bare(from));
    if (!window || !record)
        return;
    if (available) {
        if (const QString picture = statusrules::StatusImageKey(presence.Show()); !picture.isEmpty()) {
            window->setPicture(picture);
            window->setStatusText(presence.Status());
        }
    } else if (ResourceControls::NoResourcesLeft(*record)) {
        window->setPicture(QStringLiteral("Offline"));
        window->setStatusText(presence.Status());
        return;
    }
    window->resources().presenceCame(available ? jid::resource(from)
                                               : ResourceControls::FirstResource(*record),
                                     contact(window->peerJid()));
}

// The window of a room's occupant is found by the resource.
void ChatWindow::OnReturned(PlugInContext& context)
{
    const auto message = context.Stanza().MessageFields();
    const QString key = QStringLiteral("ChatWnd");
    const bool uncertain = context.Stanza().kind() == Stanza::Kind::Uncertain;
    auto* window = windowIn(context, key + jid::resource(message.To()));
    if (!window)
        window = windowIn(context, key);
    if (window) {
        window->showReturned(message.Body(), uncertain);
        unread.add(window->peer); // it closes with the session, before anybody could read this
    }
    reportLog(log_.WriteReturned(message.Body(), message.To(), uncertain));
}

const CRosterItem* ChatWindow::contact(const QString& bare) const
{
    return client_.MyRoster.record(bare);
}
