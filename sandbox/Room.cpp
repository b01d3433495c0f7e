#include "sandbox/Room.h"

#include "sandbox/Connection.h"

#include <QCryptographicHash>

#include <algorithm>

namespace sandbox
{

void Room::knock(Connection& connection, const QString& presence)
{
    knocking_.insert(&connection, presence);
}

bool Room::enter(Connection& connection, const QString& nick, const QString& iqId)
{
    if (isTaken(nick, &connection))
        return false;
    if (!find(connection)) {
        occupants_.append({freshId(connection), nick, &connection, knocking_.take(&connection)});
        welcome(occupants_.last(), iqId);
        return true;
    }
    rename(connection, nick);
    welcome(*find(connection), iqId);
    return true;
}

// The others come first, each before its presence; then the own entry; then all learn of the newcomer.
void Room::welcome(const Occupant& newcomer, const QString& iqId) const
{
    for (const auto& other : occupants_) {
        if (other.id == newcomer.id)
            continue;
        send(*newcomer.connection, push(other));
        send(*newcomer.connection, presenceOf(other));
    }
    Element query("query", "jabber:iq:conference");
    query.add("id", newcomer.id).add("nick", newcomer.nick);
    Element result("iq");
    result.set("type", QStringLiteral("result")).option("id", iqId).set("from", jid_);
    newcomer.connection->send(result.set("to", newcomer.connection->fullJid()).add(query));
    sendToAll(push(newcomer));
    sendToAll(presenceOf(newcomer));
}

void Room::seat(const QString& nick)
{
    occupants_.append({jid_ + u'/' + nick.toLower(), nick, nullptr, {}});
    sendToAll(push(occupants_.last()));
    sendToAll(presenceOf(occupants_.last()));
}

void Room::leave(const Connection& connection)
{
    knocking_.remove(&connection);
    const auto* leaving = find(connection);
    if (!leaving)
        return;
    const QString id = leaving->id;
    sendToAll(Element("presence").set("from", id).set("type", QStringLiteral("unavailable")));
    Element query("query", "jabber:iq:browse");
    query.add(Element("user").set("type", QStringLiteral("remove")).set("jid", id));
    sendToAll(Element("iq").set("type", QStringLiteral("set")).set("from", jid_).add(query));
    occupants_.removeIf([&id](const auto& occupant) { return occupant.id == id; });
}

void Room::present(const Connection& connection, const QString& presence)
{
    if (auto* occupant = find(connection)) {
        occupant->presence = presence;
        sendToAll(presenceOf(*occupant));
    }
}

bool Room::rename(const Connection& connection, const QString& nick)
{
    if (isTaken(nick, &connection))
        return false;
    auto* occupant = find(connection);
    if (occupant && !nick.isEmpty() && occupant->nick != nick) {
        occupant->nick = nick;
        sendToAll(push(*occupant));
    }
    return true;
}

void Room::say(const QString& occupantId, const QString& content) const
{
    sendToAll(
        Element("message").set("from", occupantId).set("type", QStringLiteral("groupchat")).raw(content));
}

void Room::sayAs(const QString& nick, const QString& text) const
{
    for (const auto& occupant : occupants_) {
        if (occupant.nick == nick)
            say(occupant.id, Element("body").text(text).xml());
    }
}

Room::Occupant* Room::find(const Connection& connection)
{
    const auto found =
        std::find_if(occupants_.begin(), occupants_.end(),
                     [&connection](const auto& occupant) { return occupant.connection == &connection; });
    return found == occupants_.end() ? nullptr : &*found;
}

const Room::Occupant* Room::byId(const QString& id) const
{
    const auto found = std::find_if(occupants_.begin(), occupants_.end(),
                                    [&id](const auto& occupant) { return occupant.id == id; });
    return found == occupants_.end() ? nullptr : &*found;
}

bool Room::isOver() const
{
    return life_ == Life::WhileUsed && occupants_.isEmpty() && knocking_.isEmpty();
}

QString Room::freshId(const Connection& connection) const
{
    const QByteArray seed = (connection.fullJid() + jid_).toUtf8();
    return jid_ + u'/' +
           QString::fromLatin1(QCryptographicHash::hash(seed, QCryptographicHash::Sha1).toHex());
}

bool Room::isTaken(const QString& nick, const Connection* except) const
{
    return std::any_of(occupants_.begin(), occupants_.end(), [&](const auto& occupant) {
        return occupant.nick == nick && (!occupant.connection || occupant.connection != except);
    });
}

Element Room::push(const Occupant& occupant) const
{
    Element query("query", "jabber:iq:browse");
    query.add(Element("user").set("jid", occupant.id).set("name", occupant.nick));
    return Element("iq").set("type", QStringLiteral("set")).set("from", jid_).add(query);
}

Element Room::presenceOf(const Occupant& occupant)
{
    return Element("presence").set("from", occupant.id).raw(occupant.presence);
}

void Room::sendToAll(const Element& stanza) const
{
    for (const auto& occupant : occupants_) {
        if (occupant.connection)
            send(*occupant.connection, stanza);
    }
}

void Room::send(Connection& connection, Element stanza)
{
    connection.send(stanza.set("to", connection.fullJid()));
}

} // namespace sandbox
