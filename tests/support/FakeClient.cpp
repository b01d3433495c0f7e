#include "support/FakeClient.h"

#include "session/forms/SignInForm.h"
#include "settings/Paths.h"
#include "support/UiDriver.h"

FakeClient::FakeClient(const Settings& stored)
    : FakeClient(stored, [] { return std::make_unique<FakeGateway>(); })
{
}

FakeClient::FakeClient(const Settings& stored, const std::function<std::unique_ptr<FakeGateway>()>& make)
    : store(paths::settingsFile())
{
    store.SaveSettings(stored);
    client.desktop = world.desktop();
    ui = std::make_unique<SessionUi>(registry, client, store, [&](ConnectionHost& asked) {
        host = &asked;
        auto made = make();
        gateway = made.get();
        return made;
    });
    trayControl = std::make_unique<TrayControl>(client, *ui, menus);
    ui->start();
    signInForm().show();
}

FakeClient::~FakeClient()
{
    client.UserClosing = true;
    registry.deleteAllExcept(&signInForm());
}

void FakeClient::connectToServer()
{
    ui::type(&signInForm(), "txtUserName", "romeo");
    ui::type(&signInForm(), "txtServer", "montague.example");
    ui::click(&signInForm(), "Connect");
}

void FakeClient::signIn()
{
    connectToServer();
    streamUp();
    inject("<iq type=\"result\"><query xmlns=\"jabber:iq:roster\"><item jid=\"juliet@montague.example\" "
           "name=\"Juliet\" subscription=\"both\"><group>Friends</group></item></query></iq>");
    inject("<iq type=\"result\"><query xmlns=\"jabber:iq:agents\"/></iq>");
}

void FakeClient::deliver(std::shared_ptr<Stanza> stanza)
{
    client.Core->PluginManager->Queue()->deliver(std::move(stanza));
    client.Core->tick();
}

void FakeClient::inject(const QString& xml)
{
    deliver(wellFormed(xml));
}

void FakeClient::streamUp()
{
    gateway->connected = true;
    client.Core->PluginManager->Queue()->setOwnJid(client.ownFullJid(), client.ownFullJid());
    deliver(Stanza::notice("connect"));
}

void FakeClient::streamLost()
{
    gateway->connected = false;
    deliver(Stanza::notice("close"));
}

QStringList FakeClient::takeSent()
{
    QStringList sent;
    for (const auto& stanza : client.Core->PluginManager->Queue()->takeOutbound())
        sent += QString::fromUtf8(stanza);
    return sent;
}

QString FakeClient::trayEntry(const char* name) const
{
    const auto* action = ui::find<QAction>(menus.menu(), name);
    return action->isVisible() ? action->text() : QString();
}

Settings FakeClient::storedSettings()
{
    Settings settings;
    SettingsStore(paths::settingsFile()).LoadSettings(settings);
    return settings;
}
