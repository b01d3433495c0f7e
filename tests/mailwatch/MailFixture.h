#pragma once

#include "support/FakeClient.h"
#include "support/MailServer.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

// A client that is signed in, and ann's mail server. The window is asked for by the button of the tool bar.
struct MailFixture {
    MailServer server;
    std::optional<FakeClient> client{std::in_place};

    MailFixture() { client->signIn(); }

    Form* open()
    {
        ui::choose(client->rosterForm(), "Toolbar1Button7");
        return window();
    }
    // Null when it isn't loaded.
    Form* window() const { return client->form("Logon"); }
    RecordingBoxes& boxes() { return client->world.boxes; }
    QString text(const char* control) const { return ui::find<QLineEdit>(window(), control)->text(); }

    void ask(const QString& url, const QString& password = "secret")
    {
        open();
        ui::type(window(), "txtUrl", url);
        ui::type(window(), "txtLogon", "ann");
        ui::type(window(), "txtPassword", password);
        ui::click(window(), "OKButton");
    }
    // Asks for the inbox and waits for the word that the watch runs.
    bool subscribe()
    {
        ask(server.inbox());
        return QTest::qWaitFor([this] { return icon() && !boxes().shown.isEmpty(); }) &&
               boxes().shown.takeLast().text.startsWith("L'utente ann è stato");
    }

    QSystemTrayIcon* icon() const { return window() ? window()->findChild<QSystemTrayIcon*>() : nullptr; }
    QString tip() const { return icon() && icon()->isVisible() ? icon()->toolTip() : QString(); }
    QTimer& tmrNotify() const { return *ui::find<QTimer>(window(), "tmrNotify"); }
    void tick() { QMetaObject::invokeMethod(&tmrNotify(), "timeout"); }
    // A tick, and its question's way to the server and back.
    bool poll()
    {
        const auto before = server.count("POLL");
        tick();
        return QTest::qWaitFor([&] { return server.count("POLL") > before; });
    }
};
