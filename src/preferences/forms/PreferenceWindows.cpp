#include "preferences/forms/PreferenceWindows.h"

#include "contacts/Client.h"
#include "desktop/forms/Form.h"
#include "preferences/forms/PreferencesForm.h"
#include "preferences/forms/RestoreRegForm.h"
#include "services/ServerAdmin.h"
#include "services/forms/AdminUsrCtrl.h"
#include "services/forms/TransportUsrCtrl.h"
#include "settings/SettingsStore.h"

PreferenceWindows::PreferenceWindows(FormRegistry& registry, Client& client, SettingsStore& store)
    : registry_(registry), client_(client), store_(store)
{
}

PreferencesForm& PreferenceWindows::form()
{
    return registry_.single<PreferencesForm>(QStringLiteral("PreferencesForm"), [this] {
        auto* made = new PreferencesForm(registry_, client_, store_);
        connect(made, &PreferencesForm::applied, this, &PreferenceWindows::applied);
        connect(made, &PreferencesForm::blockedListChanged, this, &PreferenceWindows::blockedListChanged);
        connect(made, &PreferencesForm::onTopChanged, this, &PreferenceWindows::onTopChanged);
        connect(made, &PreferencesForm::messageRequested, this, &PreferenceWindows::messageRequested);
        connect(made, &PreferencesForm::restoreRequested, this, &PreferenceWindows::askRestore);
        return made;
    });
}

void PreferenceWindows::show(const QString& page)
{
    form().ReloadList();
    form().showPage(form().FindNode(page) ? page : QStringLiteral("Gateways"));
    form().bringUp();
}

PreferencesForm* PreferenceWindows::loaded() const
{
    return qobject_cast<PreferencesForm*>(registry_.find(QStringLiteral("PreferencesForm")));
}

void PreferenceWindows::reload()
{
    if (auto* form = loaded())
        form->ReloadList();
}

void PreferenceWindows::sessionEnded()
{
    if (auto* form = loaded())
        form->sessionEnded();
}

void PreferenceWindows::OnRegister(PlugInContext& context)
{
    const auto& answer = context.Stanza();
    if (answer.IqFields().Id() == u"VRX_CHANGE_USER_PWD")
        return AdminUsrCtrl::passwordAnswered(context, client_);
    auto* form = loaded();
    if (auto* panel = form ? form->gatewayPanel(answer.From()) : nullptr)
        panel->OnIQ(context);
}

void PreferenceWindows::OnOnlineUsers(PlugInContext& context)
{
    auto* form = loaded();
    if (auto* panel = form ? form->adminPanel() : nullptr) {
        panel->usersOnline = serveradmin::onlineUsers(context.Stanza());
        panel->OnIQ(context);
    }
}

void PreferenceWindows::OnGatewaySubscribed(const PlugInContext& context)
{
    auto* form = loaded();
    if (auto* panel = form ? form->gatewayPanel(context.Stanza().From()) : nullptr)
        panel->subscribed();
}

void PreferenceWindows::askRestore()
{
    auto& question = registry_.single<RestoreRegForm>(QStringLiteral("RestoreRegForm"), [this] {
        auto* made = new RestoreRegForm(registry_);
        connect(made, &RestoreRegForm::confirmed, this, &PreferenceWindows::restoreDefaults);
        return made;
    });
    question.showAbove(form());
}

// The preferences show the new values from the start.
void PreferenceWindows::restoreDefaults()
{
    const QString page = form().currentPage();
    const QRect place = form().geometry();
    form().requestUnload(CloseMode::Code);
    const bool administrates = client_.settings.UserMode; // the server's word, not the person's
    SettingsStore::LoadDefaults(client_.settings, client_.site);
    client_.settings.UserMode = administrates;
    emit applied();
    emit defaultsRestored();
    form().setGeometry(place);
    show(page);
}
