#pragma once

#include "contacts/PresenceTracker.h"
#include "contacts/RosterDrawing.h"
#include "contacts/RosterSync.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesktop.h"
#include "support/TempProfile.h"

// The contact list without its windows: romeo is signed in at montague.example, the fixed groups stand,
// nothing was sent yet.
struct ListFixture {
    ListFixture();

    // Delivers a roster stanza with these items, as the server pushes it.
    void push(const QString& items);
    // Delivers a presence; `rest` stands inside of it.
    void presence(const QString& from, const QString& type, const QString& rest = {});
    // A contact with both subscriptions.
    void addContact(const QString& JID, const QString& nick, const QString& group);
    void addTransport(const QString& JID, const QString& name);

    // The tree as text, one node a line: two blanks a level, text, image, "bold" and colour where they are
    // set.
    QString drawn();
    // The node of a key as in drawn(), without its level; "none" for none.
    QString node(const QString& key);
    TreeNode* find(const QString& key);

    TempProfile profile;
    RecordingDesktop outside;
    Client client;
    FakeEngine engine{client};
    RosterDrawing drawing{client};
    RosterSync sync{client, drawing};
    PresenceTracker tracker{client, drawing};
};
