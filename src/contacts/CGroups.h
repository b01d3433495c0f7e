#pragma once

#include "contacts/KeyedList.h"

#include <QString>

class CGroups;

// One group that was met in the contact list or made by the person.
struct CGroupsItem {
    CGroups* Owner = nullptr;
    QString ExtName; // as shown; the key of the group's tree node
};

// The groups, in the order in which they became known. Duplicates are possible.
class CGroups
{
public:
    CGroupsItem* AddItem(const QString& name) { return items_.append(name, {this, name}); }
    bool Exists(const QString& name) const { return FindGroup(name) != 0; }
    int FindGroup(const QString& name) const { return items_.find(name); }
    // Null when the position is out of range.
    CGroupsItem* Item(int position) const { return items_.at(position); }
    int Count() const { return items_.count(); }
    bool Remove(int position) { return items_.remove(position); }
    void RemoveAll() { items_.clear(); }

private:
    KeyedList<CGroupsItem> items_;
};
