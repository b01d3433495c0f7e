#pragma once

#include "engine/ApplicationPlugIn.h"
#include "messaging/InboundRules.h"
#include "messaging/UnreadConversations.h"
#include "messaging/forms/ConversationHost.h"

#include <functional>

class ConversationForm;
class HeadLineForm;
class PlugInContext;
struct CRosterItem;

// The hub of all message windows: receives every message that is no headline, error or room message, and
// every presence of a peer with a window. Windows open by a message that the client sends to itself.
class ChatWindow : public ConversationHost, public ApplicationPlugIn
{
    Q_OBJECT

public:
    using ConversationHost::ConversationHost;

    ApplicationPlugIn* Myapplicationplugin() { return this; }

    // Opens the window of a contact, or tells why it can't. The callers set IsTrick first, or an empty line
    // appears in it.
    void SendMessage(const QString& jid);
    // Opens the window of a room's occupant; `to` is the own full JID.
    void SendMessageFromConference(const QString& from, const QString& to);

    // The windows of this session, in the order of their making.
    QList<ConversationForm*> conversations() const;
    // Brings up the one whose message waits longest; false when none does.
    bool openOldestUnread();
    // A window of this hub's, or of a room: its marks go when the person works with it, or it goes.
    void followReading(ConversationForm& window);
    // Something came for the person while the window was not in use.
    void markUnread(ConversationForm& window);

    void OnMessage(PlugInContext& context) override;
    void OnPresence(PlugInContext& context) override;
    void OnReturned(PlugInContext& context) override;

    UnreadConversations unread;
    // The notices window.
    std::function<HeadLineForm&()> notices;

signals:
    void conferenceInvited(const RoomInvitation& invitation);

private:
    QString whyNotOpened(const QString& jid) const;
    void complete(MessageFields fields) const;
    InboundWorld worldOf(const InboundMessage& message, PlugInContext& context) const;
    // As many windows stand open as strangers may open; the person's own count for nothing.
    bool isCrowded() const;
    void playSound(const InboundDecision& decision);
    void prepareAutoReply(const PlugInContext& context, const InboundMessage& message);
    void showNotice(PlugInContext& context);
    void converse(PlugInContext& context, const InboundMessage& message, const InboundDecision& decision);
    MessageForm& makeWindow(PlugInContext& context, const InboundMessage& message,
                            const InboundDecision& decision);
    void describePeer(MessageForm& window, const InboundMessage& message, const InboundDecision& decision);
    void showOccupant(MessageForm& window, const InboundMessage& message) const;
    void showWindow(MessageForm& window);
    void showBalloon(const InboundMessage& message, bool room);
    // What went wrong, empty for nothing.
    QString writeLogLine(const QString& body, const QString& sender, const QString& to,
                         const QDateTime& written = {});
    const CRosterItem* contact(const QString& bare) const;
};
