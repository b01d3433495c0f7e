#include "contacts/BlockedContacts.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "engine/Xml.h"
#include "settings/Paths.h"
#include "settings/XmlFile.h"

#include <QCoreApplication>

namespace
{

XmlFile bannedList()
{
    return {paths::configFolder() + QStringLiteral("/BannedList.xml"), "banned", "<banned></banned>"};
}

// Rewrites the file after `change` has had each of its lists.
template <typename Change>
QString changeFile(Change change)
{
    const XmlFile file = bannedList();
    pugi::xml_document document;
    const QString error = file.read(document);
    if (!error.isEmpty())
        return error;
    for (const auto banned : document.select_nodes("//banned"))
        change(banned.node());
    return file.write(document);
}

} // namespace

QString BlockedContacts::load()
{
    pugi::xml_document document;
    const QString error = bannedList().read(document);
    if (!error.isEmpty())
        return error;
    for (const auto item : document.select_nodes("//item")) {
        const QString JID = xml::text(item.node());
        if (!JID.isEmpty() && !client_.MyBanList.BannedJID(JID))
            client_.MyBanList.Add(JID);
    }
    return {};
}

bool BlockedContacts::contains(const QString& JID) const
{
    return client_.MyBanList.covers(JID);
}

QString BlockedContacts::add(const QString& JID)
{
    client_.MyBanList.Add(JID);
    const QString error = changeFile(
        [&](pugi::xml_node banned) { banned.append_child("item").text().set(JID.toUtf8().constData()); });
    return error.isEmpty()
               ? error
               : error + u'\n' +
                     QCoreApplication::translate("BlockedContacts", "The contact stays blocked until "
                                                                    "BreloIM is closed.");
}

QString BlockedContacts::remove(int position)
{
    const auto* item = client_.MyBanList.Item(position);
    if (!item)
        return {};
    const QString error = changeFile([&](pugi::xml_node banned) {
        banned.remove_child(banned.find_child([&](auto node) { return xml::text(node) == item->JID; }));
    });
    if (error.isEmpty())
        client_.MyBanList.Remove(position);
    return error;
}

QString BlockedContacts::addressOf(const QString& text)
{
    constexpr qsizetype longest = 2047; // bytes of a bare JID (RFC 7622)
    const QString bare = jid::bare(text.trimmed()).toLower();
    return jid::isValid(bare) && bare.toUtf8().size() <= longest ? bare : QString();
}
