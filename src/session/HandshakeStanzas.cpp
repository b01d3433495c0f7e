#include "session/HandshakeStanzas.h"

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
    return QStringLiteral("<iq type=\"get\" id=\"VRX_GET_SUPPORTEDNS\" to=\"%1\">"
                          "<query xmlns=\"jabber:iq:browse\"></query></iq>")
        .arg(xml::escaped(server));
}

QString updateContact(const QString& updateHost)
{
    if (updateHost.isEmpty())
        return {};
    return QStringLiteral("BreloIM@%1/%2/ita").arg(updateHost, programVersion());
}

} // namespace handshake
