#pragma once

#include "engine/bridge/Translator.h"

// The translators of what people write, and the namespaces that messages carry in the dialect and today.
namespace messages
{

std::shared_ptr<Translator> inbound();
std::shared_ptr<Translator> outbound();

} // namespace messages

namespace ns
{

inline constexpr const char* event = "jabber:x:event";
inline constexpr const char* conference = "jabber:x:conference";
inline constexpr const char* oldDelay = "jabber:x:delay";
inline constexpr const char* chatStates = "http://jabber.org/protocol/chatstates";
inline constexpr const char* receipts = "urn:xmpp:receipts";
inline constexpr const char* delay = "urn:xmpp:delay";
inline constexpr const char* hints = "urn:xmpp:hints";
inline constexpr const char* roomUser = "http://jabber.org/protocol/muc#user";

} // namespace ns
