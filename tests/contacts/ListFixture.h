#pragma once

#include "contacts/FixedGroups.h"
#include "contacts/PresenceTracker.h"
#include "contacts/RosterDrawing.h"
#include "contacts/RosterSync.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesktop.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

// The contact list without its windows: romeo is signed in at montague.example, the fixed groups stand,
// nothing was sent yet.
struct ListFixture {
    ListFixture()
    {
        client.desktop = outside.desktop();
        drawing.InitRoster();
        drawing.settle();
    }

    // Delivers a roster stanza with these items, as the server pushes it.
    void push(const QString& items)
    {
        const QString head = "<iq type='set' id='push'><query xmlns='jabber:iq:roster'>";
        sync.OnIQ(engine.contextFor(head + items + "</query></iq>"));
    }
    // Delivers a presence; `rest` stands inside of it.
    void presence(const QString& from, const QString& type, const QString& rest = {})
    {
        const QString attribute = type.isEmpty() ? QString() : " type='" + type + "'";
        const QString head = "<presence from='" + from + "'" + attribute + ">";
        tracker.OnPresence(engine.contextFor(head + rest + "</presence>"));
    }
    // A contact with both subscriptions.
    void addContact(const QString& JID, const QString& nick, const QString& group)
    {
        const QString item = "<item jid='%1' name='%2' subscription='both'><group>%3</group></item>";
        push(item.arg(JID, nick, group));
    }
    void addTransport(const QString& JID, const QString& name)
    {
        client.MyAgents.AddItem(JID, name, false, false)->IsTransport = true;
        client.MyRoster.AddItem(JID, name, false, "4", {}, true, {}, {}, {}, {});
        sync.AddItem(JID, name, groups::gateways(), true, false, {}, {});
    }

    // The tree as text, one node a line: two blanks a level, text, image, "bold" and colour where they are
    // set.
    QString drawn()
    {
        QString out;
        for (int row = 0; row < drawing.tree().rowCount(); ++row)
            draw(*ContactTree::node(drawing.tree().index(row, 0)), QString(), out);
        return out;
    }
    // The node of a key as in drawn(), without its level; "none" for none.
    QString node(const QString& key)
    {
        const TreeNode* found = find(key);
        return found ? look(*found) : QString("none");
    }
    TreeNode* find(const QString& key) { return drawing.tree().Item(drawing.tree().NodeIndexOfKey(key)); }
    // The key of a node's parent; empty without a node.
    QString parentOf(const QString& key)
    {
        const TreeNode* found = drawing.tree().row(key);
        return found ? found->parent->key : QString();
    }

    TempProfile profile;
    RecordingDesktop outside;
    Client client;
    FakeEngine engine{client};
    RosterDrawing drawing{client};
    RosterSync sync{client, drawing};
    PresenceTracker tracker{client, drawing};

private:
    static QString look(const TreeNode& node)
    {
        const QString colour = node.colour ? " #" + QString::number(node.colour, 16) : QString();
        return node.text + " [" + node.image + (node.bold ? "] bold" : "]") + colour;
    }
    static void draw(const TreeNode& node, const QString& level, QString& out)
    {
        out += level + look(node) + "\n";
        for (const TreeNode* child : node.children)
            draw(*child, level + "  ", out);
    }
};
