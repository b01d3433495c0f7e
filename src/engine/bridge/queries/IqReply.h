#pragma once

#include <QByteArray>
#include <QString>
#include <pugixml.hpp>

// Answers to iq requests that others send to this client.
namespace reply
{

// `payload` is XML text, or empty.
QByteArray result(pugi::xml_node request, const QString& payload = {});
// What a server answers for one who is not there (RFC 6121, 8.5.2).
QByteArray absent(pugi::xml_node request);
// service-unavailable (RFC 6120, 8.4).
QByteArray unavailable(pugi::xml_node request);

} // namespace reply
