#include "session/IqRoute.h"

#include "session/Routes.h"

#include <array>
#include <utility>

IqRoute routeOfNamespace(std::string_view ns)
{
    static constexpr std::array<std::pair<std::string_view, IqRoute>, 9> table = {{
        {"jabber:iq:roster", {IqStep::Roster}},
        {"jabber:iq:agents", {IqStep::Agents}},
        {"jabber:iq:auth", {IqStep::Auth}},
        {"jabber:iq:browse", {IqStep::Browse}},
        {"jabber:iq:register", {IqStep::Pass, Routes::transport}},
        {"jabber:iq:search", {IqStep::Pass, Routes::search}},
        {"vcard-temp", {IqStep::Pass, Routes::vCard}},
        {"jabber:iq:conference", {IqStep::Pass, Routes::groupChat}},
        {"jabber:iq:oob", {IqStep::Pass, Routes::fileTransfer}},
    }};
    for (const auto& [name, route] : table) {
        if (name == ns)
            return route;
    }
    return {};
}

IqRoute routeOfBrowse(const QString& id, bool isGroupChat)
{
    if (id == u"Check_Server")
        return {IqStep::CheckServer, Routes::checkServer};
    if (id == u"VRX_GET_SERVICE" || id == u"VRX_browser")
        return {IqStep::Pass, Routes::searchServices};
    if (id == u"VRX_GET_CHATROOM" || id == u"VRX_CHATROOM?")
        return {IqStep::Pass, Routes::chatRooms};
    if (isGroupChat)
        return {IqStep::Pass, Routes::groupChat};
    if (id == u"VRX_GET_SUPPORTEDNS")
        return {IqStep::SupportedNamespaces};
    return id == u"VRX_GET_ONLINEUSERS" ? IqRoute{IqStep::Pass, Routes::onlineUsers} : IqRoute{};
}
