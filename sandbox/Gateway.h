#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace sandbox
{

// A service that reaches another network, for users who registered with it.
struct Gateway {
    QString jid;
    QString title;
    QString network; // "msn", "icq", ...
    QStringList fields = {QStringLiteral("username"), QStringLiteral("password")};
    QString key;
    QHash<QString, QHash<QString, QString>> registered; // fields by the user's bare JID

    QString onlineJid() const { return jid + QStringLiteral("/registered"); }
};

} // namespace sandbox
