#include "contacts/CRoster.h"

CRosterItem* CRoster::AddItem(const QString& JID, const QString& nick, bool Online, const QString& Status,
                              const QString& StatusMsg, bool IsGateway, const QString& group,
                              const QString& Subscription, const QString& Ask, const QString& resource)
{
    return items_.append(
        JID, {this, IsGateway, JID, nick, Online, Status, StatusMsg, group, Subscription, Ask, {resource}});
}
