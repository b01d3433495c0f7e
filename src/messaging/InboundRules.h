#pragma once

#include "engine/Stanza.h"

#include <QString>
#include <QStringList>

class CAgents;
struct Settings;
struct SiteData;

// The types of messages that make a conversation; plain is a message without a type.
enum class MessageType { Chat, Normal, Plain, Other };

// What the decision reads of a message.
struct InboundMessage {
    MessageType type = MessageType::Other;
    QString from;
    QString bare;     // `from` up to the first "/"
    QString resource; // what follows it
    QString to;
    QString body;              // what it says: its subject where it has no other words
    bool hasEvent = false;     // carries a jabber:x:event extension (XEP-0022)
    bool hasStopped = false;   // the event takes "typing" back
    bool isInvitation = false; // carries a jabber:x:conference extension that names a room

    static InboundMessage of(const Stanza& stanza);
    static QString textOf(const MessageFields& fields);
};

// What the decision reads of the program.
struct InboundWorld {
    bool roomOpen = false;   // the sender's bare JID is a room whose window is open
    bool notice = false;     // the sender is the server or one of its services
    bool windowOpen = false; // the sender has a window already
    bool known = false;      // the sender stands in the contact list
    bool trick = false;      // the message is the client's own, which opens a window
    bool crowded = false;    // strangers have as many windows as they may
};

// What becomes of a message.
struct InboundDecision {
    enum class Action { Invitation, Notice, Drop, Typing, TypingEnds, Deliver, TurnAway, LogOnly };
    enum class Window { None, Existing, Known, Stranger, Unregistered };

    Action action = Action::Drop;
    Window window = Window::None;
    bool room = false;             // the private conversation with a room's occupant
    bool prepareAutoReply = false; // the reply is prepared, never sent
    bool balloon = false;
    bool write = false;
    bool sound = false;
};

// An invitation to a conference room (jabber:x:conference, XEP-0249). One stanza may name several rooms: all
// their servers are offered, and the last room is the one that is joined. Of very many servers the last ones
// count. `room` is empty where the last address names none.
struct RoomInvitation {
    QString from; // who invites
    QString text; // what the message says
    QString room; // the part before "@"
    QStringList servers;

    static RoomInvitation of(const Stanza& stanza);
};

// What becomes of a message that comes in.
namespace inbound
{

InboundDecision decide(const InboundMessage& message, const InboundWorld& world, const Settings& settings);

// Whether `bare` is the server, one of the product's own servers when connected to one of them, or a service.
bool isServerNotice(const QString& bare, const QString& server, const CAgents& agents, const SiteData& site);

QString balloonTitle(const QString& from);
QString balloonText(const QString& body);
QString roomBalloonTitle(const QString& from);
QString roomBalloonText(const QString& body);

} // namespace inbound
