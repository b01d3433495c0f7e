#pragma once

#include "contacts/KeyedList.h"

#include <QString>

class CBanList;

// One blocked contact.
struct CBannedItem {
    QString JID; // bare
    CBanList* Owner = nullptr;
};

// The blocked contacts.
class CBanList
{
public:
    CBannedItem* Add(const QString& JID) { return items_.append(JID, {JID, this}); }
    int FindJID(const QString& JID) const { return items_.find(JID); }
    bool BannedJID(const QString& JID) const { return FindJID(JID) != 0; }
    // Null when the position is out of range.
    CBannedItem* Item(int position) const { return items_.at(position); }
    int Count() const { return items_.count(); }
    bool Remove(int position) { return items_.remove(position); }
    void RemoveAll() { items_.clear(); }

private:
    KeyedList<CBannedItem> items_;
};
