#include "support/LiveClient.h"

#include "contacts/forms/RosterForm.h"
#include "engine/wire/session/GatewayClient.h"
#include "session/forms/SignInForm.h"
#include "settings/Paths.h"
#include "support/UiDriver.h"

#include <QPlainTextEdit>

LiveClient::LiveClient(const std::function<void(SettingsStore&)>& prepare) : store(paths::settingsFile())
{
    client.desktop = world.desktop();
    if (prepare)
        prepare(store);
    ui = std::make_unique<SessionUi>(
        registry, client, store, [](ConnectionHost& host) { return std::make_unique<GatewayClient>(host); });
    ui->start();
    ui->windows.session.signIn().show();
}

LiveClient::~LiveClient()
{
    client.UserClosing = true;
    client.SessionClosing = true;
    client.Gateway().DoDisconnect();
    registry.deleteAllExcept(&ui->windows.session.signIn());
    client.Core.reset();
}

void LiveClient::signIn(const QString& server, const QString& user, const QString& password)
{
    const auto& form = ui->windows.session.signIn();
    ui::type(&form, "txtUserName", user);
    ui::type(&form, "txtPassword", password);
    ui::type(&form, "txtServer", server);
    ui::click(&form, "Connect");
}

// The own presence has gone out, and the progress window is gone.
bool LiveClient::isOnline() const
{
    return client.isConnected() && ui->isInitiated() && !ui->windows.session.progressIfLoaded();
}

QString LiveClient::progressText()
{
    const auto* progress = form("LoggingInForm");
    return progress ? ui::find<QPlainTextEdit>(progress, "Label1")->toPlainText() : QString();
}
