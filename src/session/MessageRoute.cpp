#include "session/MessageRoute.h"

#include "contacts/Client.h"
#include "engine/Jid.h"

namespace
{

// Mail notices of the two gateways that the person may have switched off.
bool isUnwantedMailNotice(const MessageFields& fields, const Client& client)
{
    const QString from = fields.From().toLower();
    const QString server = client.Gateway().Server().toLower();
    if (!client.settings.CheckHotmail && from == QStringLiteral("msn.") + server &&
        fields.Subject() == u"Hotmail")
        return true;
    return !client.settings.CheckYahooMail && from == QStringLiteral("yim.") + server &&
           fields.Subject() == u"Yahoo! E-mail notification";
}

} // namespace

MessageRoute routeOfMessage(const Stanza& stanza, const Client& client)
{
    const auto fields = stanza.MessageFields();
    const QString type = fields.Type();
    if (type == u"headline")
        return isUnwantedMailNotice(fields, client) ? MessageRoute::Drop : MessageRoute::Notice;
    if (type == u"error")
        return client.settings.CheckError ? MessageRoute::Notice : MessageRoute::Drop;
    if (type == u"groupchat")
        return MessageRoute::GroupChat;
    return client.MyBanList.BannedJID(jid::bare(stanza.From())) ? MessageRoute::Drop : MessageRoute::Chat;
}
