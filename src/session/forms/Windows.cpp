#include "session/forms/Windows.h"

#include "contacts/Client.h"
#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "desktop/forms/FormRegistry.h"
#include "desktop/forms/ShowInTrayForm.h"
#include "messaging/forms/ChatWindow.h"
#include "messaging/forms/HeadLineForm.h"
#include "messaging/forms/MessageForm.h"
#include "preferences/forms/PreferencePages.h"
#include "preferences/forms/PreferencesForm.h"
#include "preferences/forms/RestoreRegForm.h"
#include "services/forms/VCardWindows.h"
#include "session/forms/AboutForm.h"
#include "session/forms/LoggingInForm.h"
#include "session/forms/SignInForm.h"
#include "settings/SettingsStore.h"

namespace
{

void bringUp(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

Windows::Windows(FormRegistry& registry, Client& client, SettingsStore& store)
    : registry_(registry), client_(client), hub_(std::make_unique<ChatWindow>(registry, client)),
      vCards_(std::make_unique<VCardWindows>(registry, client)),
      signIn_(std::make_unique<SignInForm>(registry, client, store))
{
    wireHub();
}

Windows::~Windows() = default;

void Windows::wireHub()
{
    hub_->statusImage = [this](const QString& jid) {
        auto* list = roster();
        return list ? list->FindStatusImg(jid) : QString();
    };
    hub_->notices = [this]() -> HeadLineForm& { return notices(); };
    connect(hub_.get(), &ChatWindow::rosterRefreshRequested, this, &Windows::refreshRoster);
    connect(hub_.get(), &ChatWindow::vCardRequested, this,
            [this](const QString& jid) { vCards_->RequestVCard(jid); });
    connect(hub_.get(), &ChatWindow::inviteRequested, this, [this] { notThereYet(tr("An invitation")); });
    connect(hub_.get(), &ChatWindow::callRequested, this, [this] { notThereYet(tr("A call")); });
    // Whoever invites must not be able to put a box before the person, which would stop the connection.
    connect(hub_.get(), &ChatWindow::conferenceInvited, this, [this](const RoomInvitation& invitation) {
        const QString room = invitation.room + u'@' + invitation.servers.value(invitation.servers.size() - 1);
        notices().WriteMessage(invitation.from, invitation.text, tr("Invitation to %1").arg(room));
        notices().showAtPlace();
    });
}

RosterForm* Windows::rosterForm() const
{
    return qobject_cast<RosterForm*>(registry_.find(QStringLiteral("RosterForm")));
}

Roster* Windows::roster() const
{
    auto* form = rosterForm();
    return form ? form->Roster1 : nullptr;
}

RosterForm& Windows::makeRosterForm()
{
    if (auto* form = rosterForm())
        return *form;
    auto* form = new RosterForm(registry_, client_);
    wireRosterForm(*form);
    emit rosterFormMade(*form);
    return *form;
}

void Windows::wireRosterForm(RosterForm& form)
{
    connect(&form, &RosterForm::openConversation, this, &Windows::openConversation);
    connect(&form, &RosterForm::showHistory, hub_.get(), &ChatWindow::ShowMessageLog);
    // Notices that come by themselves don't take the focus; those that the person asks for do.
    connect(&form, &RosterForm::showNotices, this, [this] {
        notices().showAtPlace();
        bringUp(notices());
    });
    connect(&form, &RosterForm::aboutRequested, this, &Windows::showAbout);
    connect(&form, &RosterForm::showInTrayRequested, this, &Windows::showInTray);
    connect(&form, &RosterForm::showPreferences, this, &Windows::showPreferences);
    connect(&form, &RosterForm::groupChatRequested, this, [this] { notThereYet(tr("A group chat")); });
    connect(&form, &RosterForm::findContactsRequested, this, [this] { notThereYet(tr("The search")); });
    connect(&form, &RosterForm::mailWatcherRequested, this, [this] { notThereYet(tr("The mail watcher")); });
}

LoggingInForm* Windows::progressIfLoaded() const
{
    return qobject_cast<LoggingInForm*>(registry_.find(QStringLiteral("LoggingInForm")));
}

LoggingInForm& Windows::progress()
{
    return registry_.single<LoggingInForm>(QStringLiteral("LoggingInForm"), [this] {
        auto* form = new LoggingInForm(registry_);
        connect(form, &LoggingInForm::cancelRequested, this, &Windows::cancelRequested);
        return form;
    });
}

HeadLineForm& Windows::notices()
{
    return registry_.single<HeadLineForm>(QStringLiteral("HeadLineForm"), [this] {
        auto* form = new HeadLineForm(registry_, client_);
        connect(form, &HeadLineForm::connectionLost, this, &Windows::connectionLost);
        return form;
    });
}

void Windows::showAbout()
{
    bringUp(registry_.single<AboutForm>(QStringLiteral("AboutForm"),
                                        [this] { return new AboutForm(client_, registry_); }));
}

void Windows::showInTray()
{
    registry_
        .single<ShowInTrayForm>(QStringLiteral("ShowInTrayForm"),
                                [this] { return new ShowInTrayForm(registry_); })
        .show();
}

void Windows::openPage(const QString& path)
{
    if (client_.site.WebSite.isEmpty())
        client_.desktop.boxes->information(tr("BreloIM"), tr("No web site is configured for this program."));
    else
        client_.desktop.links->open(QStringLiteral("https://") + client_.site.WebSite + path);
}

PreferencesForm& Windows::preferences()
{
    return registry_.single<PreferencesForm>(QStringLiteral("PreferencesForm"), [this] {
        auto* form = new PreferencesForm(registry_, client_);
        connect(form, &PreferencesForm::applied, this, &Windows::preferencesApplied);
        connect(form, &PreferencesForm::blockedListChanged, this, &Windows::refreshRoster);
        connect(form, &PreferencesForm::onTopChanged, this, [this] {
            if (auto* main = rosterForm())
                main->applyOnTop();
        });
        connect(form, &PreferencesForm::restoreRequested, this, &Windows::askRestore);
        return form;
    });
}

void Windows::showPreferences(const QString& page)
{
    if (!preferences::page(page))
        return notThereYet(page);
    preferences().showPage(page);
    bringUp(preferences());
}

void Windows::preferencesApplied()
{
    signIn_->showSettings();
    if (auto* list = roster())
        list->RefreshAppearance();
}

void Windows::refreshRoster()
{
    if (auto* list = roster())
        list->Refresh();
}

void Windows::askRestore()
{
    auto& form = registry_.single<RestoreRegForm>(QStringLiteral("RestoreRegForm"), [this] {
        auto* made = new RestoreRegForm(registry_);
        connect(made, &RestoreRegForm::confirmed, this, &Windows::restoreDefaults);
        return made;
    });
    form.showAbove(preferences());
}

// The preferences show the new values from the start.
void Windows::restoreDefaults()
{
    const QString page = preferences().currentPage();
    const QRect place = preferences().geometry();
    preferences().requestUnload(CloseMode::Code);
    SettingsStore::LoadDefaults(client_.settings, client_.site);
    preferencesApplied();
    signIn_->showDefaults();
    preferences().setGeometry(place);
    showPreferences(page);
}

void Windows::notThereYet(const QString& what)
{
    client_.desktop.boxes->information(tr("BreloIM"), tr("%1 can't be opened yet.").arg(what));
}

void Windows::openConversation(const QString& jid, bool trick)
{
    if (trick)
        hub_->IsTrick = true;
    hub_->SendMessage(jid);
}
