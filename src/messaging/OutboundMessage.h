#pragma once

#include <QString>

// What leaves a message window.
namespace outbound
{

// The peer's JID, with the resource when there is one.
QString address(const QString& jid, const QString& resource);

// A body that XML 1.0 can carry: characters that it can't are replaced by U+FFFD, so that a pasted control
// character doesn't cost the stream.
QString sendable(const QString& body);

} // namespace outbound
