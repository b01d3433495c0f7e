#pragma once

#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "prosody/SlixmppPeer.h"
#include "session/forms/SignInForm.h"
#include "support/LiveClient.h"
#include "support/UiDriver.h"

#include <QPlainTextEdit>

// What most tests need: the server, a client that knows the server's certificate, and Juliet.
class ProsodyFixture
{
    static constexpr int patienceMs = 20'000;

public:
    explicit ProsodyFixture(ProsodyServer& to)
        : server(to),
          live([&to](SettingsStore& store) { store.pinCertificate("localhost", to.fingerprint()); })
    {
    }

    // Signs the client's account in, through the window.
    bool signIn()
    {
        live.signIn(server.address());
        return QTest::qWaitFor([this] { return live.isOnline(); }, patienceMs);
    }
    // Back to the sign-in window, as the entry of the menu does.
    bool signOut()
    {
        ui::choose(live.rosterForm(), "mRosterTDiscon");
        return QTest::qWaitFor([this] {
            return !live.client.isConnected() && live.ui->windows.session.signIn().isVisible() &&
                   !live.rosterForm();
        });
    }
    // Starts Juliet's program, and waits until it is signed in.
    bool startJuliet()
    {
        juliet = std::make_unique<SlixmppPeer>(server, "juliet", "rose");
        const bool online = QTest::qWaitFor([this] { return juliet->isOnline(); }, patienceMs);
        if (!online)
            qWarning("%s", juliet->problem().constData());
        return online;
    }
    bool signInBoth() { return startJuliet() && signIn(); }

    // Opens a contact's window as a double click does. Null when it doesn't come up.
    Form* open(const QString& jid)
    {
        emit live.rosterForm()->Roster1->openConversation(jid);
        Form* window = nullptr;
        (void)QTest::qWaitFor([&] { return (window = visible("MessageForm")) != nullptr; });
        return window;
    }
    // The visible window of this name, or null.
    Form* visible(const char* name)
    {
        for (auto* form : live.registry.loaded()) {
            if (form->objectName() == QLatin1String(name) && form->isVisible())
                return form;
        }
        return nullptr;
    }
    static QString transcript(const Form& window, const char* name = "txtLog")
    {
        return ui::find<QPlainTextEdit>(&window, name)->toPlainText();
    }
    // Types into the window's entry line; sends nothing.
    static void typeInto(const Form& window, const QString& text)
    {
        ui::find<QPlainTextEdit>(&window, "txtMsg")->insertPlainText(text); // an emoji is no key
    }
    // The peer is a contact, and on-line.
    bool seesPeer() const
    {
        const auto* record = live.client.MyRoster.record(peer);
        return record && record->Online;
    }
    // The row of a contact in the tree, or null.
    const TreeNode* row(const QString& jid) const
    {
        auto& tree = live.rosterForm()->Roster1->tree();
        return tree.Item(tree.NodeIndexOfKey(jid));
    }

    ProsodyServer& server;
    LiveClient live;
    const QString own = QStringLiteral("romeo@localhost");
    const QString peer = QStringLiteral("juliet@localhost");
    std::unique_ptr<SlixmppPeer> juliet;
};
