#pragma once

#include "prosody/SlixmppPeer.h"
#include "support/LiveClient.h"
#include "support/ProsodyServer.h"
#include "support/UiDriver.h"

#include <QPlainTextEdit>

class MessageForm;
struct TreeNode;

// What most tests need: the server, a client that knows the server's certificate, and Juliet.
class ProsodyFixture
{
public:
    explicit ProsodyFixture(ProsodyServer& server);

    // Signs the client's account in, through the window.
    bool signIn();
    // Back to the sign-in window, as the entry of the menu does.
    bool signOut();
    // Starts Juliet's program, and waits until it is signed in.
    bool startJuliet();
    bool signInBoth() { return startJuliet() && signIn(); }

    // Opens a contact's window as a double click does. Null when it doesn't come up.
    Form* open(const QString& jid);
    // The visible window of this name, or null.
    Form* visible(const char* name);
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
    bool seesPeer() const;
    // The row of a contact in the tree, or null.
    const TreeNode* row(const QString& jid) const;

    ProsodyServer& server;
    LiveClient live;
    const QString own = QStringLiteral("romeo@localhost");
    const QString peer = QStringLiteral("juliet@localhost");
    std::unique_ptr<SlixmppPeer> juliet;
};
