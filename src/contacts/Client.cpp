#include "contacts/Client.h"

QString Client::ownBareJid() const
{
    return Gateway().UserName() + u'@' + Gateway().Server();
}
QString Client::ownFullJid() const
{
    return ownBareJid() + u'/' + (sessionResource.isEmpty() ? settings.Resource : sessionResource);
}
