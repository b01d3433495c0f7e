#include "session/IqRoute.h"

#include <array>
#include <utility>

IqRoute routeOfNamespace(std::string_view ns)
{
    static constexpr std::array<std::pair<std::string_view, IqRoute>, 9> table = {{
        {"jabber:iq:roster", IqRoute::Roster},
        {"jabber:iq:agents", IqRoute::Agents},
        {"jabber:iq:register", IqRoute::Register},
        {"jabber:iq:auth", IqRoute::Auth},
        {"jabber:iq:browse", IqRoute::Browse},
        {"jabber:iq:search", IqRoute::Search},
        {"vcard-temp", IqRoute::VCard},
        {"jabber:iq:conference", IqRoute::Conference},
        {"jabber:iq:oob", IqRoute::OutOfBand},
    }};
    for (const auto& [name, route] : table) {
        if (name == ns)
            return route;
    }
    return IqRoute::None;
}

BrowseRoute routeOfBrowse(const QString& id, bool isGroupChat)
{
    if (id == u"Check_Server")
        return BrowseRoute::CheckServer;
    if (id == u"VRX_GET_SERVICE")
        return BrowseRoute::SearchServices;
    if (id == u"VRX_browser")
        return BrowseRoute::SearchBrowser;
    if (id == u"VRX_GET_CHATROOM" || id == u"VRX_CHATROOM?")
        return BrowseRoute::ChatRooms;
    if (isGroupChat)
        return BrowseRoute::GroupChat;
    if (id == u"VRX_GET_SUPPORTEDNS")
        return BrowseRoute::SupportedNamespaces;
    return id == u"VRX_GET_ONLINEUSERS" ? BrowseRoute::OnlineUsers : BrowseRoute::None;
}
