#pragma once

#include <QString>

// What the pages accept.
namespace preferences
{

// The milliseconds of a text of seconds; 0 when it is no number from 1 to 3600.
int balloonMilliseconds(const QString& seconds);
// Whether the text is a priority (RFC 6121, 4.7.2.3).
bool isPriority(const QString& text);
// Whether the text can be a host's name or IP address, without a port.
bool isHost(const QString& text);

} // namespace preferences
