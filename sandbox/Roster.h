#pragma once

#include "sandbox/Element.h"

#include <QHash>
#include <QList>

namespace sandbox
{

// One address in an account's contact list, with its subscription as RFC 3921 has it.
struct RosterItem {
    QString jid; // bare
    QString name;
    QStringList groups;
    bool to = false;         // the owner sees the contact's presence
    bool from = false;       // the contact sees the owner's presence
    bool pendingOut = false; // the owner's request is unanswered
    bool pendingIn = false;  // the contact's request is unanswered
    bool listed = true;      // false while only a request came in: the owner is not shown such an item

    QString subscription() const;
    // "none", "to", "from" or "both".
    void setSubscription(const QString& word);
    Element element() const;
};

// An account's contact list. The order is that of entry.
class Roster
{
public:
    const QList<RosterItem>& items() const { return items_; }
    // Null when the address is unknown. The pointer holds until the list changes.
    RosterItem* find(const QString& bareJid);
    const RosterItem* find(const QString& bareJid) const;
    // The item of that address, made when there is none.
    RosterItem& item(const QString& bareJid);
    void remove(const QString& bareJid);
    // Addresses at the domain `host` become addresses of this server.
    void adoptHost(const QString& host);

private:
    void reindex();

    QList<RosterItem> items_;
    QHash<QString, qsizetype> places_;
};

} // namespace sandbox
