#pragma once

#include "contacts/CRosterItem.h"
#include "contacts/KeyedList.h"

#include <QString>

// The contacts of the account, in the order in which they became known. Two records of one JID may stand in
// it.
class CRoster
{
public:
    CRosterItem* AddItem(const QString& JID, const QString& nick, bool Online, const QString& Status,
                         const QString& StatusMsg, bool IsGateway, const QString& group,
                         const QString& Subscription, const QString& Ask, const QString& resource);
    int FindJID(const QString& JID) const { return items_.find(JID); }
    bool DoesJIDExist(const QString& JID) const { return FindJID(JID) != 0; }
    // Null when the position is out of range.
    CRosterItem* Item(int position) const { return items_.at(position); }
    // The first record of the JID, or null.
    CRosterItem* record(const QString& JID) const { return Item(FindJID(JID)); }
    int Count() const { return items_.count(); }
    // False when the position is out of range.
    bool Remove(int position) { return items_.remove(position); }
    void RemoveAll() { items_.clear(); }

private:
    KeyedList<CRosterItem> items_;
};
