#pragma once

#include "engine/ApplicationPlugIn.h"
#include "messaging/ConversationLog.h"
#include "messaging/InboundRules.h"
#include "messaging/Stamps.h"

#include <QObject>
#include <QString>

#include <functional>

class Form;
class FormRegistry;
class HeadLineForm;
class MessageForm;
class PlugInContext;
struct Client;
struct CRosterItem;

// The hub of all message windows: receives every message that is no headline, error or room message, and
// every presence of a peer with a window. Windows open by a message that the client sends to itself.
class ChatWindow : public QObject, public ApplicationPlugIn
{
    Q_OBJECT

public:
    // Both must outlive the hub, and the hub its windows.
    ChatWindow(FormRegistry& registry, Client& client, QObject* parent = nullptr);

    // The next message is the client's own opening message, and says nothing.
    bool IsTrick = false;
    ApplicationPlugIn* Myapplicationplugin() { return this; }

    // Opens the window of a contact. The callers set IsTrick first, or an empty line appears in it.
    void SendMessage(const QString& jid);
    // Opens the window of a room's occupant; `to` is the own full JID.
    void SendMessageFromConference(const QString& from, const QString& to);
    // Opens the reader on a peer's log.
    void ShowMessageLog(const QString& peer);

    void OnMessage(PlugInContext& context) override;
    void OnPresence(PlugInContext& context) override;

    // The notices window.
    std::function<HeadLineForm&()> notices;

    Client& client() const { return client_; }
    ConversationLog& log() { return log_; }
    Stamps& stamps() { return stamps_; }
    // Shows one box when writing logs begins to fail, and no more until a write succeeds again.
    void reportLog(const QString& error);

signals:
    // The vCard window is to belong to this JID; the request is on its way.
    void vCardRequested(const QString& jid);
    void inviteRequested(const QString& jid);
    void callRequested(MessageForm* window);
    void conferenceInvited(const RoomInvitation& invitation);
    // A contact was blocked: the contact tree is to be drawn anew.
    void rosterRefreshRequested();

private:
    InboundWorld worldOf(const InboundMessage& message, PlugInContext& context) const;
    void prepareAutoReply(const PlugInContext& context, const InboundMessage& message);
    void showNotice(PlugInContext& context);
    void converse(PlugInContext& context, const InboundMessage& message, const InboundDecision& decision);
    MessageForm& makeWindow(PlugInContext& context, const InboundMessage& message,
                            const InboundDecision& decision);
    void describePeer(MessageForm& window, const InboundMessage& message, const InboundDecision& decision);
    void showWindow(MessageForm& window);
    void showBalloon(const InboundMessage& message, bool room);
    // What went wrong, empty for nothing.
    QString writeLogLine(const QString& body, const QString& sender, const QString& to);
    const CRosterItem* contact(const QString& bare) const;

    FormRegistry& registry_;
    Client& client_;
    Stamps stamps_;
    ConversationLog log_;
    bool logFailureTold_ = false;
};
