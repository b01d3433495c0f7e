#include "preferences/forms/PreferencePanels.h"

#include "preferences/forms/AuthorizationUsrCtrl.h"
#include "preferences/forms/ConnectionUsrCtrl.h"
#include "preferences/forms/EmptyPanel.h"
#include "preferences/forms/GatewayDescription.h"
#include "preferences/forms/MessagesUsrCtrl.h"
#include "preferences/forms/PersonalUsrCtrl.h"
#include "preferences/forms/PrivacyUsrCtrl.h"
#include "preferences/forms/ResourceUsrCtrl.h"
#include "preferences/forms/RosterPrefUsrCtrl.h"
#include "preferences/forms/SoundUsrCtrl.h"
#include "preferences/forms/StatusMessagesUsrCtrl.h"

#include <QHash>

namespace preferences
{
namespace
{

template <typename Panel>
std::unique_ptr<PreferencePanel> make(Client& client)
{
    return std::make_unique<Panel>(client);
}

using Maker = std::unique_ptr<PreferencePanel> (*)(Client&);

// The class that shows a category; several have nothing to show yet.
Maker makerOf(const QString& className)
{
    static const QHash<QString, Maker> makers = {
        {QStringLiteral("AuthorizationUsrCtrl"), &make<AuthorizationUsrCtrl>},
        {QStringLiteral("ConnectionUsrCtrl"), &make<ConnectionUsrCtrl>},
        {QStringLiteral("FileSharingUsrCtrl"), &make<EmptyPanel>},
        {QStringLiteral("FileTransferUsrCtrl"), &make<EmptyPanel>},
        {QStringLiteral("GatewayDescription"), &make<GatewayDescription>},
        {QStringLiteral("MessagesUsrCtrl"), &make<MessagesUsrCtrl>},
        {QStringLiteral("PersonalUsrCtrl"), &make<PersonalUsrCtrl>},
        {QStringLiteral("PrivacyUsrCtrl"), &make<PrivacyUsrCtrl>},
        {QStringLiteral("ResourceUsrCtrl"), &make<ResourceUsrCtrl>},
        {QStringLiteral("RosterPrefUsrCtrl"), &make<RosterPrefUsrCtrl>},
        {QStringLiteral("SecurityUsrCtrl"), &make<EmptyPanel>},
        {QStringLiteral("ServicesUsrCtrl"), &make<EmptyPanel>},
        {QStringLiteral("SoundUsrCtrl"), &make<SoundUsrCtrl>},
        {QStringLiteral("StatusMessagesUsrCtrl"), &make<StatusMessagesUsrCtrl>},
    };
    return makers.value(className);
}

} // namespace

std::unique_ptr<PreferencePanel> makePanel(const QString& className, Client& client)
{
    const Maker maker = makerOf(className);
    return maker ? maker(client) : nullptr;
}

} // namespace preferences
