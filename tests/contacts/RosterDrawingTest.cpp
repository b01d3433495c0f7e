#include "contacts/ListFixture.h"

class RosterDrawingTest : public QObject
{
    Q_OBJECT
private slots:
    void aRecordIsDrawnInItsFolder_data()
    {
        // record: online, status, group, subscription, ask, blocked
        // all: parent and look
        columns<QString, QString, QString>("record", "all", "onlineOnly");
        const QString none = "/none";
        row("off line", "0|Offline||both||", "Contacts/J [Offline]", none);
        row("on line", "1|||both||", "Contacts/J [Online] bold #ba7e55", "Contacts/J [Online] bold #ba7e55");
        row("busy", "1|dnd||both||", "Contacts/J [dnd] bold", "Contacts/J [dnd] bold");
        row("unknown word", "1|busy||both||", "Contacts/J [Offline] bold", "Contacts/J [Offline] bold");
        row("grouped", "1|away|Pals|both||", "Pals/J [Away] bold", "Pals/J [Away] bold");
        row("blocked", "1|||both||blocked", "Contacts/J [notauth] bold", "Contacts/J [notauth] bold");
        row("blocked off line", "0|Offline|Pals|both||blocked", "Pals/J [notauth]", none);
        row("asked", "0|Pending||none|subscribe|", "Waiting authorization/J [Pending]", none);
        row("asked and on line", "1|||none|subscribe|", "Waiting authorization/J [Pending]",
            "Contacts/J [Online] bold #ba7e55");
        row("asked and grouped", "0|Pending|Pals|none|subscribe|", "Pals/J [Offline]", none);
        row("lurker", "0|Lurker||none||", "Hidden/J [Pending]", none);
        row("lurker in a group", "0|Lurker|Pals|none||", "Pals/J [Offline]", none);
        row("stored as waiting", "1||Waiting authorization|both||", "Waiting authorization/J [Pending]",
            "Waiting authorization/J [Online] bold #ba7e55");
        const QString hidden = "Hidden/J [Online] bold #ba7e55";
        row("stored as hidden", "1||Hidden|both||", hidden, hidden);
    }
    void aRecordIsDrawnInItsFolder()
    {
        const auto [record, all, online] = fetched<QString, QString, QString>();
        const QStringList field = record.split('|');
        for (const bool onlineOnly : {false, true}) {
            ListFixture list;
            list.client.settings.ShowOnlineUsers = onlineOnly;
            list.client.MyRoster.AddItem("j@x", "J", field[0] == "1", field[1], {}, false, field[2], field[3],
                                         field[4], {});
            if (!field[5].isEmpty())
                list.client.MyBanList.Add("j@x");
            list.drawing.Refresh();
            QCOMPARE(list.parentOf("j@x") + "/" + list.node("j@x"), onlineOnly ? online : all);
        }
    }

    void aRebuildDrawsEverything()
    {
        ListFixture list;
        list.addTransport("icq.x", "ICQ");
        list.addContact("c@x", "", "Pals");
        list.addContact("a@x", "Zoe", "");
        list.addContact("b@x", "Abe", "Pals");
        list.client.MyRoster.record("icq.x")->Online = true;
        list.client.settings.CharOnLineBold = false;
        list.client.settings.ColorOffline = 0x10;
        list.drawing.Refresh();
        QCOMPARE(list.drawn(), QString("Gateways [ClosedFolder2]\n"
                                       "  MONTAGUE.EXAMPLE [ServerON] bold #ba7e55\n"
                                       "  ICQ [ServerON] #ba7e55\n"
                                       "Contacts [ClosedFolder2]\n"
                                       "  Zoe [Offline] #10\n"
                                       "Waiting authorization [ClosedFolder2]\n"
                                       "Pals [ClosedFolder2]\n"
                                       "  c@x [Offline] #10\n"
                                       "  Abe [Offline] #10\n"));
        QCOMPARE(list.drawing.tree().NodeIndexByKey("montague.example"), 0);
        QVERIFY(list.find("Pals")->expanded);
        QCOMPARE(list.find("Pals")->tag, QString());
        QCOMPARE(list.find("Contacts")->tag, "IsGroup");
        list.client.settings.ShowOnlineUsers = true;
        list.drawing.Refresh();
        QCOMPARE(list.node("Waiting authorization"), "none");
        QCOMPARE(list.engine.takeSent(), QStringList({"<presence/>", "<presence/>"}));
    }

    void aRebuildDrawsAJidOnceAndNoEmptyGroup()
    {
        ListFixture list;
        list.client.MyGroups.AddItem("Mine");
        list.drawing.tree().addGroup("Mine", "NewGroup");
        for (const QString contact : {"j@x First", "j@x Second", "k@x Third"})
            list.client.MyRoster.AddItem(contact.section(' ', 0, 0), contact.section(' ', 1), false,
                                         "Offline", {}, false, {}, "both", {}, {});
        list.drawing.Refresh();
        QCOMPARE(list.node("j@x"), "First [Offline]");
        QCOMPARE(list.node("k@x"), "Third [Offline]");
        QCOMPARE(list.node("Mine"), "none");
        QVERIFY(list.client.MyGroups.Exists("Mine"));
    }

    void pruningLeavesTheGroupsThatHoldSomebody()
    {
        ListFixture list;
        list.addContact("a@x", "Ann", "Pals"); // known, and not empty
        for (const auto& known : {"Waiting authorization", "Empty"})
            list.client.MyGroups.AddItem(known);
        list.drawing.tree().addGroup("Empty", {});
        list.drawing.tree().addGroup("Mine", "NewGroup"); // the person's own, not yet known
        QVERIFY(list.drawing.PruneEmptyGroups());
        QCOMPARE(list.drawn(), "Pals [ClosedFolder2]\n  Ann [Offline]\nMine [ClosedFolder2]\n");
        QVERIFY(list.drawing.PruneEmptyGroups()); // what isn't there is no fault
    }
};

BRELO_TEST(RosterDrawingTest)
#include "RosterDrawingTest.moc"
