#pragma once

#include "sandbox/Account.h"
#include "sandbox/Gateway.h"
#include "sandbox/Persona.h"
#include "sandbox/Room.h"
#include "sandbox/Sessions.h"

#include <map>

namespace sandbox
{

// A component that holds rooms, as browsing the server lists it.
struct RoomService {
    QString jid;
    QString name;
    bool isPublic = true;
};

// All that the server knows: accounts, the people it plays, rooms, gateways, who is signed in.
//
// Names: a person of this server may be given by the node alone ("juliet"); an address with "@" is taken as
// it stands, and once a client calls the server by that address's domain, it counts as this server's too.
class World
{
public:
    World();

    Sessions sessions;
    QString motd;
    bool registrationOpen = true; // anybody may make an account

    Account& addAccount(const QString& user, const QString& password, bool admin = false);
    Account* account(const QString& user);
    bool removeAccount(const QString& user);

    // Puts a contact into the account's roster, and a persona of that address into the world.
    Persona& addContact(const QString& user, const QString& jid, const QString& name = {},
                        const QString& group = {}, const QString& subscription = QStringLiteral("both"));
    // `contacts` people of this server, "contact1" upwards, spread over `groups` groups, all online.
    void addRoster(const QString& user, int contacts, int groups);

    Persona& addPersona(const QString& jid, const QString& name);
    Persona* persona(const QString& jid);
    const std::map<QString, Persona>& personas() const { return personas_; }
    // A persona's new presence, told to all who may see it.
    void setOnline(const QString& jid, const QString& show = {}, const QString& status = {});
    void setOffline(const QString& jid);
    void announce(const Persona& persona) const;

    Gateway& addGateway(const QString& name, const QString& title, const QString& network);
    Gateway* gateway(const QString& jid);
    const std::map<QString, Gateway>& gateways() const { return gateways_; }

    const QList<RoomService>& roomServices() const { return roomServices_; }
    Room& addRoom(const QString& name, const QString& title);
    // The room of that address, made when there is none: such a room goes with its last visitor.
    Room& roomFor(const QString& jid);
    Room* room(const QString& jid);
    const std::map<QString, Room>& rooms() const { return rooms_; }
    void leaveRoom(const QString& jid, const Connection& connection);
    void leaveRooms(const Connection& connection);

    // Where users are searched.
    QString directoryJid() const;

    // From now on `host` is one of the server's own names.
    void adoptHost(const QString& host);

private:
    // The address by which the world knows `jid`.
    QString whole(const QString& jid) const;

    std::map<QString, Account> accounts_;
    std::map<QString, Persona> personas_;
    std::map<QString, Gateway> gateways_;
    std::map<QString, Room> rooms_;
    QList<RoomService> roomServices_;
    QStringList adopted_;
};

// A persona's presence for the address `to`.
Element presenceOf(const Persona& persona, const QString& to);

} // namespace sandbox
