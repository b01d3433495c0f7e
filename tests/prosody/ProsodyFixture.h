#pragma once

#include "prosody/SlixmppPeer.h"
#include "support/LiveClient.h"
#include "support/ProsodyServer.h"
#include "support/UiDriver.h"

class MessageForm;
struct TreeNode;

// What most tests need: the server, and a client that knows the server's certificate.
class ProsodyFixture
{
public:
    explicit ProsodyFixture(ProsodyServer& server);

    // Signs the client's account in, through the window.
    bool signIn();
    // Back to the sign-in window, as the entry of the menu does.
    bool signOut();
    // Waits until the other program is signed in, too.
    static bool isOnline(SlixmppPeer& peer);

    // Opens a contact's window as a double click does. Null when it doesn't come up.
    Form* open(const QString& jid);
    // The visible window of this name, or null.
    Form* visible(const char* name);
    static QString transcript(const Form& window, const char* name = "txtLog");
    // Types into the window's entry line; sends nothing.
    static void typeInto(const Form& window, const QString& text);
    // The row of a contact in the tree, or null.
    const TreeNode* row(const QString& jid) const;

    ProsodyServer& server;
    LiveClient live;
    const QString own = QStringLiteral("romeo@localhost");
    const QString peer = QStringLiteral("juliet@localhost");
};
