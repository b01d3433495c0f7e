#pragma once

#include "sandbox/Element.h"

#include <QHash>
#include <QList>

namespace sandbox
{

class Connection;

// A conference room of the old dialect: members are told by browse pushes of `user` elements, each under an
// address in the room that stays the same when the nick changes.
class Room
{
public:
    struct Occupant {
        QString id; // room/…
        QString nick;
        Connection* connection; // null for a talker whom the server plays
        QString presence;       // content of the last presence
    };

    enum class Life { Lasting, WhileUsed };

    Room(QString jid, QString name, Life life) : jid_(std::move(jid)), name_(std::move(name)), life_(life) {}

    QString jid() const { return jid_; }
    QString name() const { return name_; }

    // The presence that asks for entry; the nick that follows completes it.
    void knock(Connection& connection, const QString& presence);
    // Lets the connection in, or only renames it when it is in. `iqId` is the request's. False if the nick is
    // taken.
    bool enter(Connection& connection, const QString& nick, const QString& iqId);
    // Someone without a connection.
    void seat(const QString& nick);
    void leave(const Connection& connection);

    // Shows a changed presence to all.
    void present(const Connection& connection, const QString& presence);
    // A new nick for an occupant; nothing changes when it is empty. False if somebody else has it.
    bool rename(const Connection& connection, const QString& nick);
    // A line to all. `content` is the message's body and subject as XML.
    void say(const QString& occupantId, const QString& content) const;
    void sayAs(const QString& nick, const QString& text) const;

    Occupant* find(const Connection& connection);
    const Occupant* byId(const QString& id) const;
    // A room that a visitor made has lost its last one.
    bool isOver() const;

private:
    QString freshId(const Connection& connection) const;
    bool isTaken(const QString& nick, const Connection* except) const;
    Element push(const Occupant& occupant) const;
    static Element presenceOf(const Occupant& occupant);
    void sendToAll(const Element& stanza) const;
    static void send(Connection& connection, Element stanza);
    void welcome(const Occupant& newcomer, const QString& iqId) const;

    QString jid_;
    QString name_;
    Life life_;
    QList<Occupant> occupants_;
    QHash<const Connection*, QString> knocking_;
};

} // namespace sandbox
