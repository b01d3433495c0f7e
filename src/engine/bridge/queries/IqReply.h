#pragma once

#include <QByteArray>
#include <QString>
#include <pugixml.hpp>

// Answers to iq requests that others send to this client.
namespace reply
{

// `payload` is XML text, or empty.
QByteArray result(pugi::xml_node request, const QString& payload = {});
// service-unavailable (RFC 6120, 8.4).
QByteArray unavailable(pugi::xml_node request);

} // namespace reply
