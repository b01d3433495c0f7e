#include "session/HandshakeStanzas.h"

#include "contacts/RosterStanzas.h"
#include "engine/Xml.h"
#include "session/ProgramVersion.h"

namespace handshake
{

QString registration(const QString& userName, const QString& password)
{
    return QStringLiteral("<iq type=\"set\" id=\"VRX_new\"><query xmlns=\"jabber:iq:register\">"
                          "<username>%1</username><password>%2</password><resource></resource></query></iq>")
        .arg(xml::escaped(userName), xml::escaped(password));
}

QString onlinePresence()
{
    return QStringLiteral("<presence><status>online</status></presence>");
}

QString supportedNamespaces(const QString& server)
{
    return stanzas::browse(QStringLiteral("VRX_GET_SUPPORTEDNS"), server);
}

QString updateContact(const QString& updateHost)
{
    if (updateHost.isEmpty())
        return {};
    return QStringLiteral("BreloIM@%1/%2/ita").arg(updateHost, programVersion());
}

} // namespace handshake
