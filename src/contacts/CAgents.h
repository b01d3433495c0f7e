#pragma once

#include "contacts/KeyedList.h"

#include <QString>

class CAgents;

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
class CAgents
{
public:
    CAgentsItem* AddItem(const QString& JID, const QString& ExtName, bool Online, bool registered)
    {
        return items_.append(JID, {JID, ExtName, Online, registered, this, false});
    }
    int FindJID(const QString& JID) const { return items_.find(JID); }
    bool JIDExists(const QString& JID) const { return FindJID(JID) != 0; }
    // Null when the position is out of range.
    CAgentsItem* Item(int position) const { return items_.at(position); }
    // The first service of the JID, or null.
    CAgentsItem* record(const QString& JID) const { return Item(FindJID(JID)); }
    int Count() const { return items_.count(); }
    bool Remove(int position) { return items_.remove(position); }
    void RemoveAll() { items_.clear(); }

private:
    KeyedList<CAgentsItem> items_;
};
