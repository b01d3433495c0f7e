#include "engine/bridge/queries/IqReply.h"

#include "engine/Xml.h"

namespace reply
{
namespace
{

QByteArray made(pugi::xml_node request, const char* type, const QString& payload)
{
    const auto to = request.attribute("from")
                        ? QStringLiteral(" to=\"%1\"").arg(xml::escaped(xml::attribute(request, "from")))
                        : QString();
    return QStringLiteral("<iq type=\"%1\" id=\"%2\"%3>%4</iq>")
        .arg(QLatin1String(type), xml::escaped(xml::attribute(request, "id")), to, payload)
        .toUtf8();
}

} // namespace

QByteArray result(pugi::xml_node request, const QString& payload)
{
    return made(request, "result", payload);
}

QByteArray absent(pugi::xml_node request)
{
    return made(
        request, "error",
        QStringLiteral("<error type=\"cancel\">"
                       "<service-unavailable xmlns=\"urn:ietf:params:xml:ns:xmpp-stanzas\"/></error>"));
}

QByteArray unavailable(pugi::xml_node request)
{
    return made(
        request, "error",
        QStringLiteral("<error type=\"cancel\" code=\"503\">"
                       "<service-unavailable xmlns=\"urn:ietf:params:xml:ns:xmpp-stanzas\"/></error>"));
}

} // namespace reply
