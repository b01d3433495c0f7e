#include "session/forms/SessionUi.h"

#include "contacts/BlockedContacts.h"
#include "contacts/Client.h"
#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "messaging/forms/ChatWindow.h"
#include "messaging/forms/HeadLineForm.h"
#include "messaging/forms/authorizeForm.h"
#include "services/forms/VCardWindows.h"
#include "session/forms/CertificateForm.h"
#include "session/forms/LoggingInForm.h"
#include "session/forms/SignInForm.h"
#include "session/forms/WindowState.h"
#include "settings/SettingsStore.h"

#include <QTimer>

SessionUi::SessionUi(FormRegistry& registry, Client& client, SettingsStore& store,
                     const GatewayFactory& makeGateway)
    : windows(registry, client, store), end(client, windows, store), dispatch(client, *this), client_(client),
      store_(store), agents_(client, contactList())
{
    if (!client.Core)
        client.Core = std::make_unique<TempVRXCore>(makeGateway(*this));
    dispatch.routes.take(Routes::vCard, [this](PlugInContext& context) { windows.vCards().OnIQ(context); });
    wireSignIn();
    connect(&windows, &Windows::rosterFormMade, this, [this](RosterForm& form) { wireRosterForm(form); });
    connect(&windows, &Windows::cancelRequested, &end, &SessionEnd::cancelSignIn);
    connect(&windows, &Windows::connectionLost, &end, &SessionEnd::connectionLost);
}

Agents::ContactList SessionUi::contactList()
{
    return {[this] { return isInitiated(); }, [this] { windows.makeRosterForm().Roster1->InitRoster(); },
            [this](const QString& jid, const QString& name) {
                windows.makeRosterForm().Roster1->AddItem(jid, name, QStringLiteral("Gateways"), true, false,
                                                          {}, {});
            }};
}

void SessionUi::wireSignIn()
{
    auto& form = windows.signIn();
    connect(&form, &SignInForm::connecting, this,
            [this] { windows.makeRosterForm().Roster1->StartLoginTimer(); });
    connect(&form, &SignInForm::progressWanted, this, [this] {
        auto& progress = windows.progress();
        progress.appendLine(tr("Connecting..."));
        progress.show();
    });
    connect(&form, &SignInForm::preferencesRequested, this,
            [this] { windows.showPreferences(QStringLiteral("Personal")); });
    connect(&form, &SignInForm::pageRequested, &windows, &Windows::openPage);
}

void SessionUi::wireRosterForm(RosterForm& form)
{
    connect(&form, &RosterForm::disconnectRequested, &end, &SessionEnd::returnToSignIn);
    connect(&form, &RosterForm::connectRequested, &end, &SessionEnd::returnToSignIn);
    connect(&form, &RosterForm::exitRequested, &end, &SessionEnd::exitProgram);
}

void SessionUi::start()
{
    auto& manager = *client_.Core->PluginManager;
    auto& form = windows.signIn();
    client_.Core->setTriggerTimer(form.Timer1());
    manager.PlugIn(&dispatch, this);
    client_.site = store_.loadSite();
    client_.settings.Server = client_.site.DefaultServer;
    store_.LoadSettings(client_.settings);
    manager.SessionDescriptor(67);
    manager.ApplicationInit();
    form.load();
    form.Timer1()->start();
}

bool SessionUi::isInitiated() const
{
    const auto* list = windows.roster();
    return list && list->IsInitiated();
}

void SessionUi::firstContact(const QString& progressLine)
{
    if (client_.settings.AutoLogon)
        windows.signIn().hide();
    client_.SessionClosing = false;
    loadBannedList();
    auto& form = windows.makeRosterForm();
    form.Roster1->InitRoster();
    form.showConnected(true);
    client_.desktop.tray->setIcon(QStringLiteral("LightOn"));
    windows.progress().appendLine(progressLine);
    loadWindowPosition();
    form.show();
}

void SessionUi::finishSignIn()
{
    if (auto* progress = windows.progressIfLoaded(); progress && progress->isVisible())
        progress->requestUnload(CloseMode::Code);
    windows.makeRosterForm().showConnected(false);
}

void SessionUi::loadBannedList()
{
    const QString error = BlockedContacts(client_).load();
    if (!error.isEmpty())
        client_.desktop.boxes->exclamation(tr("BreloIM"), error);
}

void SessionUi::loadWindowPosition()
{
    auto& form = windows.makeRosterForm();
    const auto position = store_.loadWindowPosition(form.geometry());
    if (windowState(form) == 0 && !client_.settings.StartInSystemTray && position.geometry)
        form.setGeometry(*position.geometry);
    setWindowState(form, position.state);
}

void SessionUi::streamConnected()
{
    if (auto* form = windows.rosterForm(); form && form->isVisible()) {
        form->StopAnimation();
        form->showContactList();
    }
    auto& progress = windows.progress();
    progress.appendLine(tr("Connected"));
    progress.appendLine(tr("Receiving Gateways/Friends..."));
    client_.desktop.tray->setToolTip(tr("BreloIM - Connected"));
}

void SessionUi::backToSignIn()
{
    if (auto* progress = windows.progressIfLoaded())
        progress->requestUnload(CloseMode::Code);
    windows.signIn().show();
}

void SessionUi::connectAgain()
{
    windows.signIn().Connect_Click();
}
QString SessionUi::userName() const
{
    return windows.signIn().userName();
}
QString SessionUi::password() const
{
    return windows.signIn().password();
}
ApplicationPlugIn& SessionUi::roster()
{
    return windows.makeRosterForm().Roster1->Myapplicationplugin();
}
ApplicationPlugIn& SessionUi::chat()
{
    return *windows.hub().Myapplicationplugin();
}
void SessionUi::removeContact(const QString& bareJid)
{
    windows.makeRosterForm().Roster1->RemoveItem(bareJid);
}
void SessionUi::showAdminMenu(const QString& server)
{
    windows.makeRosterForm().showAdminMenu(server);
}

void SessionUi::askAuthorization(PlugInContext& context)
{
    auto* form = new authorizeForm(windows.registry(), client_);
    if (client_.settings.AuthAskForAll) {
        form->show();
        form->setUserName(context.Stanza().From());
    }
    form->OnPresence(context);
}

void SessionUi::showNotice(PlugInContext& context)
{
    if (client_.settings.SoundOnNewMessage)
        client_.desktop.sounds->PlaySoundFile(client_.settings.SoundOnNewMessageFile, false);
    windows.notices().OnMessage(context);
    windows.notices().showAtPlace();
}

void SessionUi::writeNotice(const QString& from, const QString& body, const QString& subject)
{
    windows.notices().WriteMessage(from, body, subject);
    windows.notices().showAtPlace();
}

void SessionUi::noticePresence(PlugInContext& context)
{
    windows.notices().OnPresence(context);
}

void SessionUi::connectionProgress(const QString& text)
{
    if (auto* progress = windows.progressIfLoaded())
        progress->appendLine(text);
}

CertificateAnswer SessionUi::askCertificate(const CertificateInfo& info)
{
    CertificateForm form(info, windows.progressIfLoaded());
    form.exec();
    return form.answer();
}

bool SessionUi::allowPlainPassword(const QString& server)
{
    if (store_.plainPasswordAllowed(server))
        return true;
    const auto answer =
        client_.desktop.boxes->show(tr("Security question"),
                                    tr("The connection to %1 is not encrypted, and the server wants the "
                                       "password in clear: others on the way "
                                       "could read it. Send it all the same?")
                                        .arg(server),
                                    MessageBoxes::Icon::Exclamation, MessageBoxes::Buttons::YesNo);
    if (answer != MessageBoxes::Answer::Yes)
        return false;
    store_.allowPlainPassword(server);
    return true;
}

QByteArray SessionUi::pinnedCertificate(const QString& server)
{
    return store_.pinnedCertificate(server);
}

void SessionUi::pinCertificate(const QString& server, const QByteArray& sha256)
{
    store_.pinCertificate(server, sha256);
}

void SessionUi::Trigger()
{
    trim_.tick(dispatch.takeWork());
    auto* form = windows.rosterForm();
    if (form && client_.isConnected())
        form->myITriggerReceiver().Trigger();
}
