#pragma once

#include <QHash>
#include <QString>

#include <functional>

class PlugInContext;

// The named places to which the dispatch passes stanzas of windows that need not be there. A stanza for a
// place that nobody has taken is dropped without harm.
class Routes
{
public:
    using Handler = std::function<void(PlugInContext&)>;

    // The places, named as the control that takes the stanza.
    static constexpr auto transport = "TransportUsrCtrl";          // jabber:iq:register and VRX_UNREGISTER
    static constexpr auto gatewaySubscribed = "GatewaySubscribed"; // a gateway asked to see the presence
    static constexpr auto search = "SearchUsrCtrl";
    static constexpr auto vCard = "VCardForm";
    static constexpr auto groupChat = "GroupChatWindow1";
    static constexpr auto fileTransfer = "FileTransferUsrCtrl1";
    static constexpr auto checkServer = "SearchAddForm.CheckServer";
    static constexpr auto searchServices = "SearchAddForm.BrowseUsrCtrl1";
    static constexpr auto chatRooms = "JoinConferenceForm.BrowseUsrCtrl1";
    static constexpr auto onlineUsers = "AdminUsrCtrl";

    void take(const char* place, Handler handler)
    {
        handlers_.insert(QLatin1String(place), std::move(handler));
    }
    // False when nobody has taken the place.
    bool pass(const char* place, PlugInContext& context) const;

private:
    QHash<QString, Handler> handlers_;
};
