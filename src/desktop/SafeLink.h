#pragma once

#include <QString>

inline constexpr int longestLink = 8192; // characters; more than browsers take

// Whether a link may be handed to the desktop: well formed, with one of the schemes http, https, ftp, mailto,
// xmpp and callto, and complete. Links come from the network and must neither start a program nor open a
// local file.
bool isSafeLink(const QString& link);
