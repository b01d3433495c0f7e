#pragma once

#include <QString>
#include <pugixml.hpp>

class PlugInContext;
class RosterDrawing;
struct Client;
struct CRosterItem;

// Keeps MyRoster and the tree in step with the contact list on the server (jabber:iq:roster, RFC 6121, 2).
class RosterSync
{
public:
    RosterSync(Client& client, RosterDrawing& drawing) : client_(client), drawing_(drawing) {}

    // Takes every `item` element of the stanza, whatever its id and type are, save those without an address.
    void OnIQ(const PlugInContext& context);

    // Enters a new contact, or a row under "Gateways" when `IsGateway` is set: then there is no record.
    void AddItem(const QString& JID, const QString& nick, const QString& group, bool IsGateway, bool Online,
                 const QString& subscription, const QString& ask);
    // Asks the server to remove the contact; the list follows when the server says so.
    void RemoveItem(const QString& JID);
    // Removes the record and its node, and the group when it was the last in it.
    void CommitRemoveItem(const QString& JID);
    // Throws everything away and asks the server anew.
    void RefreshAll();

    // The contact got a new text in the tree.
    void renamed(const QString& JID, const QString& text);

private:
    struct Push {
        QString JID;
        QString nick;
        QString group;
        QString subscription;
        QString ask;
    };

    void takeItem(pugi::xml_node item);
    Push readPush(pugi::xml_node item, const QString& JID) const;
    void addGatewayRow(const QString& JID, const QString& nick, const QString& group);
    void addServerRow(const QString& JID, const QString& nick, const QString& group);
    void addUnsubscribed(const Push& push);
    void addListed(const Push& push, bool online);
    void addRecord(const Push& push, const QString& status, const QString& statusMsg, bool online);

    void UpdateRosterItem(const Push& push);
    void updateSubscribed(CRosterItem& item, const Push& push);
    void updateUnsubscribed(CRosterItem& item, const Push& push);

    Client& client_;
    RosterDrawing& drawing_;
};
