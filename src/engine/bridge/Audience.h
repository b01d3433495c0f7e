#pragma once

#include "engine/bridge/HomeAddresses.h"
#include "engine/bridge/StanzaText.h"

#include <QSet>
#include <QString>

#include <functional>

// Who may know that the person is there: the own account and server, those whom the contact list lets see the
// presence, and those whom the client sends it by name. Nobody that the person has blocked. Everybody else is
// told no more than a server tells of one who is off line.
class Audience
{
public:
    using IsBlocked = std::function<bool(const QString& bareJid)>;

    void begin(IsBlocked isBlocked)
    {
        isBlocked_ = std::move(isBlocked);
        contacts_.clear();
        told_.clear();
    }

    // The contact list is about to come whole.
    void forgetContacts() { contacts_.clear(); }
    // One of its items, as the server has it, and its bare JID in lower case.
    void contact(pugi::xml_node item, const QString& bare)
    {
        const std::string_view subscription = item.attribute("subscription").value();
        set(contacts_, bare, subscription == "from" || subscription == "both");
    }
    // A presence of the client's to one address.
    void directed(pugi::xml_node presence)
    {
        if (stanza::isType(presence, "") || stanza::isType(presence, "unavailable"))
            set(told_, jid::bare(xml::attribute(presence, "to")).toLower(), stanza::isType(presence, ""));
    }

    bool isBlocked(const QString& jid) const { return isBlocked_ && isBlocked_(jid::bare(jid)); }
    bool includes(const QString& jid, const HomeAddresses& home) const
    {
        const auto bare = jid::bare(jid).toLower();
        const bool isOwn = home.key(jid).isEmpty() || home.key(bare).isEmpty();
        return isOwn || (!isBlocked(jid) && (contacts_.contains(bare) || told_.contains(bare)));
    }

private:
    static void set(QSet<QString>& jids, const QString& bare, bool isIn)
    {
        if (isIn)
            jids.insert(bare);
        else
            jids.remove(bare);
    }

    IsBlocked isBlocked_;
    // Bare JIDs in lower case.
    QSet<QString> contacts_;
    QSet<QString> told_;
};
