#include "contacts/StatusImages.h"

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
