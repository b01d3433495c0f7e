#include "services/ContactAdding.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "messaging/PeerCommands.h"

namespace
{

constexpr qint64 doubleClick = 3; // seconds in which a second wish is the first

} // namespace

QString ContactAdding::fault(const QString& jid) const
{
    if (!jid::isValid(jid) || jid::bare(jid) != jid)
        return tr("This is no address of a contact: %1").arg(jid);
    if (jid.compare(client_.ownBareJid(), Qt::CaseInsensitive) == 0)
        return tr("This is your own address: %1").arg(jid);
    return {};
}

bool ContactAdding::add(const QString& jid)
{
    const QString why = fault(jid);
    if (!why.isNull()) {
        client_.desktop.boxes->exclamation(tr("Error"), why);
        return false;
    }
    const QDateTime now = client_.desktop.clock->now();
    if (jid == last_ && lastAt_.secsTo(now) < doubleClick)
        return true;
    if (!PeerCommands(client_).askContact(jid))
        return false;
    last_ = jid;
    lastAt_ = now;
    notice_(tr("BreloIM"), PeerCommands::submitted(), tr("Notification!"));
    return true;
}
