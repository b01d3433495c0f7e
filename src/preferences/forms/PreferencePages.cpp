#include "preferences/forms/PreferencePages.h"

#include "preferences/forms/ConnectionUsrCtrl.h"
#include "preferences/forms/MessagesUsrCtrl.h"
#include "preferences/forms/PersonalUsrCtrl.h"
#include "preferences/forms/PlainPages.h"
#include "preferences/forms/PrivacyUsrCtrl.h"
#include "preferences/forms/ResourceUsrCtrl.h"
#include "preferences/forms/RosterPrefUsrCtrl.h"
#include "preferences/forms/SoundUsrCtrl.h"
#include "services/forms/AdminUsrCtrl.h"

#include <algorithm>

namespace
{

template <typename Panel>
PreferencePage at(const char* key, const char* parent = "", bool ofAdministrators = false)
{
    return {QString::fromLatin1(key), QString::fromLatin1(parent),
            [](Client& client, [[maybe_unused]] SettingsStore& store) -> std::unique_ptr<QWidget> {
                if constexpr (std::is_constructible_v<Panel, Client&, SettingsStore&>)
                    return std::make_unique<Panel>(client, store);
                else
                    return std::make_unique<Panel>(client);
            },
            ofAdministrators};
}

} // namespace

bool PreferencePage::isPersonal() const
{
    const QString group = QStringLiteral("Personal");
    return key == group || parent == group;
}

namespace preferences
{

const std::vector<PreferencePage>& pages()
{
    static const std::vector<PreferencePage> all = {
        at<GatewayDescription>("Gateways"),
        at<PersonalUsrCtrl>("Personal"),
        at<ConnectionUsrCtrl>("Connection", "Personal"),
        at<MessagesUsrCtrl>("Messages", "Personal"),
        at<PrivacyUsrCtrl>("Privacy", "Personal"),
        at<RosterPrefUsrCtrl>("List", "Personal"),
        at<SoundUsrCtrl>("Sounds", "Personal"),
        at<StatusMessagesUsrCtrl>("Status", "Personal"),
        at<ResourceUsrCtrl>("Resource", "Personal"),
        at<AuthorizationUsrCtrl>("Authorizations", "Personal"),
        at<EmptyPanel>("File Sharing", "Personal"),
        at<EmptyPanel>("File Transfer", "Personal"),
        at<EmptyPanel>("Security"),
        at<EmptyPanel>("Services"),
        at<AdminUsrCtrl>("Server management", "", true),
    };
    return all;
}

const PreferencePage* page(const QString& key)
{
    const auto found = std::ranges::find(pages(), key, &PreferencePage::key);
    return found == pages().end() ? nullptr : &*found;
}

} // namespace preferences
