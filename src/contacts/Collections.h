#pragma once

#include "contacts/KeyedList.h"
#include "engine/Jid.h"

#include <QString>
#include <QStringList>

// What is known of the account's contacts, groups and services while a session lasts: ordered lists of
// records, in the order in which these became known. Two records of one key may stand in a list.

class CRoster;
class CAgents;
class CGroups;
class CBanList;

// One contact.
struct CRosterItem {
    CRoster* Owner = nullptr;
    bool IsGateway = false;
    QString JID; // bare; the identity of the record
    QString nick;
    bool Online = false;
    QString Status; // a show word, "Offline", "Pending", "Lurker", or "4" for an agent row
    QString StatusMsg;
    QString group;
    QString Subscription;
    QString Ask;
    QStringList Resources; // one empty entry stands for "none known yet"
};

// The contacts of the account.
class CRoster : public KeyedList<CRosterItem>
{
public:
    CRosterItem* AddItem(const QString& JID, const QString& nick, bool Online, const QString& Status,
                         const QString& StatusMsg, bool IsGateway, const QString& group,
                         const QString& Subscription, const QString& Ask, const QString& resource)
    {
        return append(
            JID,
            {this, IsGateway, JID, nick, Online, Status, StatusMsg, group, Subscription, Ask, {resource}});
    }
    int FindJID(const QString& JID) const { return find(JID); }
    bool DoesJIDExist(const QString& JID) const { return record(JID); }
};

// One service of the server.
struct CAgentsItem {
    QString JID;
    QString ExtName; // display name
    bool Online = false;
    bool registered = false; // the account is registered with it
    CAgents* Owner = nullptr;
    bool IsTransport = false; // a gateway to another network
};

// The services that the server offers (jabber:iq:agents, XEP-0094).
class CAgents : public KeyedList<CAgentsItem>
{
public:
    CAgentsItem* AddItem(const QString& JID, const QString& ExtName, bool Online, bool registered)
    {
        return append(JID, {JID, ExtName, Online, registered, this, false});
    }
    int FindJID(const QString& JID) const { return find(JID); }
    bool JIDExists(const QString& JID) const { return record(JID); }
};

// One group that was met in the contact list or made by the person.
struct CGroupsItem {
    CGroups* Owner = nullptr;
    QString ExtName; // as shown; the key of the group's tree node
};

// The groups.
class CGroups : public KeyedList<CGroupsItem>
{
public:
    CGroupsItem* AddItem(const QString& name) { return append(name, {this, name}); }
    int FindGroup(const QString& name) const { return find(name); }
    bool Exists(const QString& name) const { return record(name); }
};

// One blocked contact.
struct CBannedItem {
    QString JID; // bare, but of a room's occupant, who must not stand for the room
    CBanList* Owner = nullptr;
};

// The blocked contacts.
class CBanList : public KeyedList<CBannedItem>
{
public:
    CBannedItem* Add(const QString& JID) { return append(JID, {JID, this}); }
    int FindJID(const QString& JID) const { return find(JID); }
    bool BannedJID(const QString& JID) const { return record(JID); }
    // Whether what comes from this address is blocked.
    bool covers(const QString& address) const { return BannedJID(jid::bare(address)) || BannedJID(address); }
};
