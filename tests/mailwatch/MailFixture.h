#pragma once

#include "contacts/forms/RosterForm.h"
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
        boxes().shown.clear();
        ask(server.inbox());
        return QTest::qWaitFor([this] { return !boxes().shown.isEmpty(); }) &&
               boxes().shown.takeLast().text.startsWith("L'utente ann è stato");
    }

    QSystemTrayIcon* icon() const { return window() ? window()->findChild<QSystemTrayIcon*>() : nullptr; }
    QString tip() const { return icon() && icon()->isVisible() ? icon()->toolTip() : QString(); }
    QTimer& tmrNotify() const { return *ui::find<QTimer>(window(), "tmrNotify"); }
    void tick() { QMetaObject::invokeMethod(&tmrNotify(), "timeout"); }
    // Ticks until a look that was not under way yet reaches the server.
    bool poll()
    {
        const auto before = server.count("POLL");
        return QTest::qWaitFor([&] {
            tick();
            return server.count("POLL") > before;
        });
    }
};
