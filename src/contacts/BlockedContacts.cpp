#include "contacts/BlockedContacts.h"

#include "contacts/BannedListFile.h"
#include "contacts/Client.h"
#include "engine/Jid.h"

#include <QCoreApplication>

#include <algorithm>

QString BlockedContacts::load()
{
    return BannedListFile().load(client_.MyBanList);
}

bool BlockedContacts::contains(const QString& JID) const
{
    return client_.MyBanList.BannedJID(jid::bare(JID));
}

QString BlockedContacts::add(const QString& JID)
{
    const QString bare = jid::bare(JID);
    client_.MyBanList.Add(bare);
    const QString error = BannedListFile().add(bare);
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
    const QString error = BannedListFile().remove(item->JID);
    if (error.isEmpty())
        client_.MyBanList.Remove(position);
    return error;
}

QString BlockedContacts::addressOf(const QString& text)
{
    constexpr qsizetype longest = 2047; // bytes of a bare JID (RFC 7622)
    const QString bare = jid::bare(text.trimmed()).toLower();
    const bool blank = std::any_of(bare.begin(), bare.end(), [](QChar c) { return c.isSpace() || c < u' '; });
    const bool cut = bare.startsWith(u'@') || bare.endsWith(u'@') || bare.count(u'@') > 1;
    return blank || cut || bare.toUtf8().size() > longest ? QString() : bare;
}
