#include "session/forms/SessionUi.h"

#include "contacts/BlockedContacts.h"
#include "contacts/Client.h"
#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "engine/StanzaQueue.h"
#include "session/forms/LoggingInForm.h"
#include "session/forms/SignInForm.h"
#include "session/forms/WindowState.h"
#include "settings/SettingsStore.h"

#include <QTimer>

#include <utility>

SessionUi::SessionUi(FormRegistry& registry, Client& client, SettingsStore& store,
                     const GatewayFactory& makeGateway)
    : windows(registry, client, store), end(client, windows, store), dispatch(client, *this), client_(client),
      store_(store), connection_(client, windows.session, store)
{
    if (!client.Core)
        client.Core = std::make_unique<TempVRXCore>(makeGateway(connection_));
    takeStanzas();
    connect(&windows.session.signIn(), &SignInForm::connecting, this, [this] { byHand_ = started_; });
    connect(&windows.contacts, &ContactWindows::disconnectRequested, &end, &SessionEnd::returnToSignIn);
    connect(&windows.contacts, &ContactWindows::connectRequested, &end, &SessionEnd::returnToSignIn);
    connect(&windows.contacts, &ContactWindows::exitRequested, &end, &SessionEnd::exitProgram);
    connect(&windows.session, &SessionWindows::cancelRequested, &end, &SessionEnd::cancelSignIn);
    connect(&windows.messages, &MessageWindows::connectionLost, this, &SessionUi::connectionLost);
    followSignIn();
}

void SessionUi::followSignIn()
{
    auto& signIn = windows.session.signIn();
    connect(&signIn, &SignInForm::connecting, this, [this] { connection_.begin(); });
    connect(&signIn, &SignInForm::disconnected, &end, &SessionEnd::signedOut);
    connect(this, &SessionUi::connected, &signIn, [&signIn] { signIn.showConnection(true, true); });
    connect(&end, &SessionEnd::ended, this, [this, &signIn] {
        signIn.showConnection(false, false);
        lists_.end();
        connection_.withdraw();
        // The echo that it waits for went with the connection.
        windows.messages.hub.IsTrick = false;
        windows.contacts.closeWhere();
        windows.preferences.sessionEnded();
    });
}

void SessionUi::takeStanzas()
{
    auto& routes = dispatch.routes;
    routes.take(Destination::StreamUp, [this](PlugInContext&) { streamConnected(); });
    routes.take(Destination::StreamDown, [this](PlugInContext&) { streamEnded(); });
    routes.take(Destination::Roster, windows.contacts);
    routes.take(Destination::Agents, [this](PlugInContext& context) {
        windows.services.agents.OnIQ(context);
        windows.preferences.reload();
    });
    routes.take(Destination::Transport,
                [this](PlugInContext& context) { windows.preferences.OnRegister(context); });
    routes.take(Destination::GatewaySubscribed,
                [this](PlugInContext& context) { windows.preferences.OnGatewaySubscribed(context); });
    routes.take(Destination::OnlineUsers,
                [this](PlugInContext& context) { windows.preferences.OnOnlineUsers(context); });
    routes.take(Destination::VCard, windows.services.vCards);
    routes.take(Destination::FileTransfer, windows.services.calls);
    auto& search = windows.services.search;
    routes.take(Destination::SearchServices,
                [&search](PlugInContext& context) { search.OnServices(context); });
    routes.take(Destination::ServerCheck,
                [&search](PlugInContext& context) { search.OnServerCheck(context); });
    routes.take(Destination::Search, [&search](PlugInContext& context) { search.OnSearch(context); });
    routes.take(Destination::Chat, windows.messages.hub);
    routes.take(Destination::GroupChat, windows.groups.rooms);
    routes.take(Destination::ChatRooms, [this](PlugInContext& context) { windows.groups.OnRooms(context); });
    routes.take(Destination::Notices, windows.messages);
    routes.take(Destination::AuthorizationRequest,
                [this](PlugInContext& context) { windows.messages.askAuthorization(context); });
}

void SessionUi::start()
{
    auto& manager = *client_.Core->PluginManager;
    auto& form = windows.session.signIn();
    client_.Core->setTriggerTimer(form.Timer1());
    manager.PlugIn(&dispatch, this);
    client_.site = store_.loadSite();
    client_.settings.Server = client_.site.DefaultServer;
    const QString damage = store_.LoadSettings(client_.settings);
    manager.SessionDescriptor(67);
    manager.Queue()->setBlocked(
        [&client = client_](const QString& bareJid) { return client.MyBanList.BannedJID(bareJid); });
    manager.ApplicationInit();
    form.load();
    started_ = true;
    form.Timer1()->start();
    // The last: whoever ends the program under the box keeps what could be read.
    if (!damage.isEmpty())
        client_.desktop.boxes->exclamation(tr("BreloIM"), damage);
}

void SessionUi::firstContact(const QString& progressLine)
{
    if (client_.settings.AutoLogon)
        windows.session.signIn().hide();
    client_.SessionClosing = false;
    const SameSession same(client_);
    loadBannedList();
    if (!same)
        return;
    auto& form = windows.contacts.makeRosterForm();
    form.Roster1->InitRoster();
    form.showConnected(true);
    client_.desktop.tray->setIcon(QStringLiteral("LightOn"));
    windows.session.progress().appendLine(progressLine);
    loadWindowPosition();
    form.show();
}

void SessionUi::listRefused(const QString& reason)
{
    windows.session.tellProgress(tr("The server does not give the contact list: %1").arg(reason));
}

void SessionUi::finishSignIn()
{
    lists_.end();
    if (auto* progress = windows.session.progressIfLoaded(); progress && progress->isVisible())
        progress->requestUnload(CloseMode::Code);
    windows.contacts.makeRosterForm().showConnected(false);
    // A run that is killed loses nothing then; a keyring may run an event loop of its own. Every later push
    // of the list comes this way too.
    if (std::exchange(saved_, client_.sessionNumber) != client_.sessionNumber)
        QMetaObject::invokeMethod(&windows.session.signIn(), &SignInForm::saveSettings, Qt::QueuedConnection);
    if (std::exchange(byHand_, false))
        tellWhereTheListIs();
}

// Whoever signs in by hand waits for the main window, which comes back as it was left.
void SessionUi::tellWhereTheListIs()
{
    const auto& form = windows.contacts.makeRosterForm();
    if (!form.isVisible())
        windows.contacts.tellWhere(tr("You are signed in. The contact list is in the tray."),
                                   tr("A double click on the icon there brings it up."));
    else if (form.isMinimized())
        windows.contacts.tellWhere(tr("You are signed in. The contact list is minimised, as you left it."),
                                   tr("The task bar brings it up, or the icon in the tray."));
}

void SessionUi::loadBannedList()
{
    const QString error = BlockedContacts(client_).load();
    if (!error.isEmpty())
        client_.desktop.boxes->exclamation(tr("BreloIM"), error);
}

void SessionUi::loadWindowPosition()
{
    auto& form = windows.contacts.makeRosterForm();
    const auto position = store_.loadWindowPosition({form.pos(), form.size()});
    if (windowState(form) == 0 && !client_.settings.StartInSystemTray && position.geometry) {
        form.setPlace(position.geometry->topLeft());
        // Zeros stand for a window that was minimised, whose size nobody kept.
        if (!position.geometry->isEmpty())
            form.resize(position.geometry->size());
    }
    setWindowState(form, position.state);
}

void SessionUi::streamConnected()
{
    if (auto* form = windows.contacts.rosterForm(); form && form->isVisible()) {
        form->StopAnimation();
        form->showContactList();
    }
    auto& progress = windows.session.progress();
    progress.appendLine(tr("Connected"));
    progress.appendLine(tr("Receiving Gateways/Friends..."));
    client_.desktop.tray->setToolTip(tr("BreloIM - Connected"));
    lists_.begin();
    emit connected();
}

// Where the reason is known, it stands in the progress window already.
void SessionUi::streamEnded()
{
    if (connection_.reason().isEmpty())
        windows.session.tellProgress(tr("Disconnected"));
    end.signedOut();
}

// An error that names no sender comes this way too, and ends nothing.
void SessionUi::connectionLost()
{
    if (!client_.isConnected())
        end.connectionLost(connection_.reason());
}

void SessionUi::connectAgain()
{
    windows.session.signIn().Connect_Click();
}
QString SessionUi::userName() const
{
    return windows.session.signIn().userName();
}
QString SessionUi::password() const
{
    return windows.session.signIn().password();
}
void SessionUi::removeContact(const QString& bareJid)
{
    windows.contacts.makeRosterForm().Roster1->RemoveItem(bareJid);
}
void SessionUi::showAdminMenu(const QString& server)
{
    windows.contacts.makeRosterForm().showAdminMenu(server);
    windows.preferences.reload();
}

void SessionUi::Trigger()
{
    trim_.tick(dispatch.takeWork());
    if (lists_.isOver(client_.desktop.clock->now()))
        windows.session.tellProgress(
            tr("The server has not sent all of the lists yet. You can go on waiting, or cancel."));
    auto* form = windows.contacts.rosterForm();
    if (form && client_.isConnected())
        form->myITriggerReceiver().Trigger();
}
