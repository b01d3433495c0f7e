#include "contacts/StatusImages.h"

#include "contacts/CRoster.h"

QString statusimages::StatusImageKey(const QString& status)
{
    if (status.isEmpty())
        return QStringLiteral("Online");
    if (status == u"Offline")
        return QStringLiteral("Offline");
    if (status == u"away")
        return QStringLiteral("Away");
    if (status == u"xa")
        return QStringLiteral("xAway");
    if (status == u"dnd")
        return QStringLiteral("dnd");
    if (status == u"chat")
        return QStringLiteral("free4chat");
    return {};
}

QString statusimages::FindStatusImg(const CRoster& roster, const QString& JID)
{
    const auto* item = roster.record(JID);
    const QString key = item ? StatusImageKey(item->Status) : QString();
    return key.isEmpty() ? QStringLiteral("Offline") : key;
}
