#include "plugins/network/SystemNetworkChecks.h"

#include <QNetworkInterface>

#include <algorithm>

namespace
{

bool isOnLine(const QNetworkInterface& interface)
{
    constexpr auto wanted = QNetworkInterface::IsUp | QNetworkInterface::IsRunning;
    const auto flags = interface.flags();
    return (flags & wanted) == wanted && !(flags & QNetworkInterface::IsLoopBack) &&
           !interface.addressEntries().isEmpty();
}

} // namespace

bool SystemNetworkChecks::isConnected()
{
    const auto all = QNetworkInterface::allInterfaces();
    return std::any_of(all.begin(), all.end(), isOnLine);
}
