#include "contacts/ListFixture.h"

class RosterSyncTest : public QObject
{
    Q_OBJECT
    std::optional<ListFixture> list;
private slots:
    void init() { list.emplace(); }

    void aNewContactIsEntered_data()
    {
        // record: nick, status, message, group
        // parent: empty for no node
        columns<bool, QString, QString, QString, QString>("onlineOnly", "item", "record", "parent", "image");
        const QString pending = "jid='j@x' subscription='none' ask='subscribe'";
        const QString lurker = "jid='j@x' subscription='none'";
        const QString both = "jid='j@x' name='Ju' subscription='both'";
        row("pending", false, pending, "j@x Pending Pending ", "Waiting authorization", "Pending");
        row("pending, only those on line", true, pending, "j@x Pending Pending ", "", "");
        row("lurker", false, lurker, "j@x Lurker Lurker ", "Hidden", "Pending");
        row("lurker, only those on line", true, lurker, "j@x Lurker Lurker ", "", "");
        row("listed", false, both, "Ju Offline  ", "Contacts", "Offline");
        row("listed, only those on line", true, both, "Ju Offline  ", "", "");
        row("in a group", false, both + "><group>Pals</group", "Ju Offline  Pals", "Pals", "Offline");
        row("in a group, only those on line", true, both + "><group>Pals</group", "Ju Offline  Pals", "", "");
        row("unknown", false, "jid='j@x' subscription='remove'", " Offline  ", "Contacts", "Offline");
        row("a resource is cut", false, "jid='j@x/r' subscription='to'", " Offline  ", "Contacts", "Offline");
    }
    void aNewContactIsEntered()
    {
        const auto [onlineOnly, item, expected, parent, image] =
            fetched<bool, QString, QString, QString, QString>();
        list->client.settings.ShowOnlineUsers = onlineOnly;
        list->push("<item " + item + "></item>");
        const auto* record = list->client.MyRoster.record("j@x");
        QVERIFY(record);
        const QStringList entered{record->nick, record->Status, record->StatusMsg, record->group};
        QCOMPARE(entered.join(' '), expected);
        QCOMPARE(record->Resources, QStringList(QString()));
        QCOMPARE(list->client.MyGroups.Exists("Pals"), item.contains("Pals"));
        QCOMPARE(list->parentOf("j@x"), parent);
        QCOMPARE(list->find("j@x") ? list->find("j@x")->image : QString(), image);
        QVERIFY(list->engine.takeSent().isEmpty());
    }

    void aPushChangesAKnownContact_data()
    {
        // stored: subscription, ask
        // pushed: attributes
        // record: subscription, ask, nick, group
        columns<bool, QString, QString, QString, QString, bool>("onlineOnly", "stored", "pushed", "record",
                                                                "parent", "refreshed");
        const QString none = "subscription='none'";
        const QString asked = "subscription='none' ask='subscribe'";
        const QString both = "subscription='both'";
        row("removed", false, "both ", "subscription='remove'", "gone", "", true);
        row("granted", false, "none subscribe", both, "both  Old Pals", "Pals", true);
        row("renamed and moved", false, "to ", both, "to  New Club", "Club", true);
        row("asked again", false, "to ", both + " ask='subscribe'", "to  Old Pals", "Pals", true);
        row("our request went out", false, "none ", asked, "none subscribe Old Pals", "Pals", true);
        row("the same again", false, "none subscribe", asked, "none subscribe New Club", "Club", true);
        row("refused", false, "none subscribe", none, "none  Old Pals", "Pals", true);
        row("none after both", false, "both ", none, "both  Old Pals", "Pals", true);
        row("refused, only those on line", true, "none subscribe", none, "none  Old Pals", "", false);
        row("went out, only those on line", true, "none ", asked, "none subscribe Old Pals", "", true);
        row("an unknown ask", false, "both ", none + " ask='other'", "both  Old Pals", "Pals", true);
    }
    void aPushChangesAKnownContact()
    {
        const auto [onlineOnly, stored, pushed, expected, parent, refreshed] =
            fetched<bool, QString, QString, QString, QString, bool>();
        list->client.settings.ShowOnlineUsers = onlineOnly;
        list->client.MyRoster.AddItem("j@x", "Old", false, "Offline", {}, false, "Pals",
                                      stored.section(' ', 0, 0), stored.section(' ', 1), {});
        list->drawing.Refresh();
        list->drawing.settle();
        list->engine.takeSent();
        list->push("<item jid='j@x' name='New' " + pushed + "><group>Club</group></item>");
        const auto* record = list->client.MyRoster.record("j@x");
        const QString now =
            record ? QStringList({record->Subscription, record->Ask, record->nick, record->group}).join(' ')
                   : QString("gone");
        QCOMPARE(now, expected);
        QCOMPARE(list->engine.takeSent(), refreshed ? QStringList("<presence/>") : QStringList());
        QCOMPARE(list->parentOf("j@x"), parent);
    }

    void whatTheServerRefusedGoesBack()
    {
        for (const QString state : {"subscription='none' ask='subscribe'", "subscription='none'",
                                    "subscription='from' ask='subscribe'", "subscription='both'"}) {
            list.emplace();
            const QString item = "<item jid='j@x' name='Old' " + state + "><group>Pals</group></item>";
            list->push(item);
            auto& record = *list->client.MyRoster.record("j@x");
            record.nick = "New"; // as the person's changes leave it
            record.group = "Club";
            list->push(item);
            QCOMPARE(record.nick + " " + record.group, "Old Pals");
            QCOMPARE(list->parentOf("j@x"), "Pals");
        }
    }

    void aRemovedContactGoesWithoutARow()
    {
        list->client.settings.ShowOnlineUsers = true;
        list->push(
            "<item jid='j@x' subscription='none' ask='subscribe'/><item jid='l@x' subscription='to'/>");
        list->push("<item jid='j@x' subscription='remove'/><item jid='l@x' subscription='remove'/>"
                   "<item jid='k@x' subscription='both'/>");
        QCOMPARE(list->client.MyRoster.Count(), 1);
        QVERIFY(list->client.MyRoster.DoesJIDExist("k@x"));
    }

    void anItemIsReadLoosely_data()
    {
        // record: JID, nick, group, ask
        columns<QString, QString>("item", "record");
        const QString groups = "\n<group>One</group>\n<group>Two</group>";
        row("a group of blanks", "<item jid='a@x' subscription='both'><group> </group></item>", "a@x|||");
        row("groups run together", "<item jid='a@x' subscription='both'>" + groups + "</item>",
            "a@x||OneTwo|");
        row("text that speaks of no group", "<item jid='a@x' subscription='both'>stray</item>", "a@x|||");
        row("ask in the address", "<item jid='basket@x' subscription='both'/>", "basket@x|||");
        row("name in the address", "<item jid='name@group' subscription='both'/>", "name@group|||");
        row("deep", "<a><b><item jid='a@x' name='&lt;A&gt;' subscription='both'/></b></a>", "a@x|<A>||");
    }
    void anItemIsReadLoosely()
    {
        QFETCH(QString, item);
        list->push(item);
        QCOMPARE(list->client.MyRoster.Count(), 1);
        const auto& record = *list->client.MyRoster.Item(1);
        QTEST(QStringList({record.JID, record.nick, record.group, record.Ask}).join('|'), "record");
    }

    void anOddItemLeavesTheRest_data()
    {
        // folder: that of the odd one; empty for no row
        columns<QString, QString, QString>("odd", "JID", "folder");
        const QString grouped = "<item jid='%1' subscription='both'><group>%2</group></item>";
        row("a service", "<item jid='msn.x/registered' subscription='both'/>", "msn.x", "");
        row("the server in capitals", grouped.arg("MONTAGUE.example", "Servers"), "MONTAGUE.example", "");
        row("the server", grouped.arg("montague.example", "Servers"), "montague.example", "");
        row("no address", "<item subscription='both'/>", "", "");
        row("a resource alone", "<item jid='/home' subscription='both'/>", "", "");
        row("no subscription", "<item jid='b@x'/>", "b@x", "Hidden");
        row("a group named as a JID before it", grouped.arg("b@x", "a@x"), "b@x", "a@x");
        row("a group named as a JID after it", grouped.arg("b@x", "c@x"), "b@x", "c@x");
        row("a group named as itself", grouped.arg("b@x", "b@x"), "b@x", "b@x");
        row("a group named as the server", grouped.arg("b@x", "MONTAGUE.EXAMPLE"), "b@x", "MONTAGUE.EXAMPLE");
    }
    void anOddItemLeavesTheRest()
    {
        const auto [odd, JID, folder] = fetched<QString, QString, QString>();
        const QString item = "<item jid='%1@x' subscription='both'/>";
        list->client.MyAgents.AddItem("msn.x", "MSN", false, false);
        list->drawing.addServerRow();
        list->push(item.arg("a") + odd + item.arg("c"));
        for (int rebuilt = 0; rebuilt < 2; ++rebuilt) {
            QCOMPARE(list->parentOf("a@x") + list->parentOf("c@x"), "ContactsContacts");
            QCOMPARE(list->parentOf(JID), folder);
            QVERIFY(!list->find("Servers"));
            list->drawing.Refresh();
        }
        QCOMPARE(list->client.MyRoster.Count(), folder.isEmpty() ? 2 : 3);
    }

    void aFolderThatWentComesBackWithItsContact()
    {
        list->client.MyGroups.AddItem("Pals"); // known, and its node went
        list->push("<item jid='a@x' subscription='both'><group>Pals</group></item>");
        QCOMPARE(list->parentOf("a@x"), "Pals");
    }

    void aGatewayStandsOnceWhicheverCameFirst_data()
    {
        columns<bool, bool>("rosterFirst", "refreshedBetween");
        row("the roster", true, false);
        row("the roster, drawn anew", true, true);
        row("the agents", false, false);
        row("the agents, drawn anew", false, true);
    }
    void aGatewayStandsOnceWhicheverCameFirst()
    {
        const auto [rosterFirst, refreshedBetween] = fetched<bool, bool>();
        for (const bool rosterNow : {rosterFirst, !rosterFirst}) {
            if (rosterNow) {
                list->push("<item jid='icq.x' subscription='both'/><item jid='a@x' subscription='both'/>");
                list->presence("icq.x/registered", "");
            } else {
                list->addTransport("icq.x", "ICQ");
                list->sync.AddItem("montague.example", "MONTAGUE.EXAMPLE", "Gateways", true, false, {}, {});
                QCOMPARE(list->node("icq.x"),
                         rosterNow == rosterFirst ? "ICQ [ServerOFF]" : "ICQ [ServerON] bold #ba7e55");
            }
            if (refreshedBetween && rosterNow == rosterFirst)
                list->drawing.Refresh();
        }
        QCOMPARE(list->drawn().count("MONTAGUE.EXAMPLE"), 1);
        QVERIFY(list->drawn().contains("MONTAGUE.EXAMPLE [ServerON] bold #ba7e55"));
        QCOMPARE(list->client.MyRoster.Count(), rosterFirst ? 3 : 2); // neither row makes a record
        QCOMPARE(list->drawn().count("ICQ [ServerON]"), 1);
        QCOMPARE(list->parentOf("icq.x") + list->parentOf("a@x"), "GatewaysContacts");
        QVERIFY(!list->drawn().contains("icq.x"));
        QVERIFY(list->client.MyAgents.record("icq.x")->Online);
    }

    void aThousandPushesRebuildOnce()
    {
        QString items;
        for (int contact = 0; contact < 1000; ++contact)
            items += QString("<item jid='c%1@x' subscription='both'><group>G%2</group></item>")
                         .arg(contact)
                         .arg(contact % 7);
        list->push(items);
        list->drawing.settle();
        auto& model = list->drawing.model();
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QSignalSpy rows(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy waits(&model, &ContactTree::unsettled);
        for (int contact = 0; contact < 1000; ++contact)
            list->addContact(QString("c%1@x").arg(contact), "New", "All");
        QCOMPARE(list->drawing.model().retiredCount(), std::size_t{0}); // nothing was rebuilt yet
        list->drawing.settle();
        list->drawing.settle();
        QCOMPARE(resets.count(), 1);
        QVERIFY(rows.isEmpty() && waits.count() <= 2); // for the new looks, and for the new rows
        QCOMPARE(list->engine.takeSent(), QStringList(1000, "<presence/>"));
        QCOMPARE(list->find("All")->children.size(), std::size_t{1000});
        QCOMPARE(list->node("G3"), "none");
        items.clear(); // known and new ones in turn
        for (int contact = 0; contact < 1000; ++contact)
            items += QString("<item jid='c%1@x' subscription='both'/>").arg(contact % 2 * 1000 + contact);
        list->push(items);
        QCOMPARE(list->drawing.model().retiredCount(), std::size_t{0});
        QCOMPARE(list->find("Contacts")->children.size(), std::size_t{1000});
    }

    void theLastContactTakesItsGroupAlong()
    {
        for (const auto& JID : {"a@x", "b@x", "c@x"})
            list->addContact(JID, "", "Pals");
        for (const auto& JID : {"d@x", "e@x"})
            list->addContact(JID, "", "Club");
        list->addContact("f@x", "F", "");
        list->drawing.settle();
        for (const auto& JID : {"d@x", "a@x", "b@x", "c@x"}) { // in one tick
            QVERIFY(list->client.MyGroups.Exists("Pals"));
            list->push(QString("<item jid='%1' subscription='remove'/>").arg(JID));
        }
        list->drawing.settle();
        QVERIFY(!list->client.MyGroups.Exists("Pals") && list->client.MyGroups.Exists("Club"));
        QCOMPARE(list->node("Pals"), "none");
        QCOMPARE(list->find("Club")->children.size(), std::size_t{1});
        QCOMPARE(list->client.MyRoster.Count(), 2);
        list->sync.CommitRemoveItem("e@x"); // while the tree is drawn
        QCOMPARE(list->node("Club"), "none");
        QVERIFY(!list->client.MyGroups.Exists("Club"));
        for (int twice = 0; twice < 2; ++twice)
            list->sync.CommitRemoveItem("f@x");
        QCOMPARE(list->client.MyRoster.Count(), 0);
        QVERIFY(list->find("Contacts") && !list->find("f@x"));
    }

    void refreshAllAsksTheServerAnew()
    {
        list->addTransport("icq.x", "ICQ");
        list->client.MyAgents.record("icq.x")->Online = true;
        list->client.MyAgents.AddItem("rooms.x", "Rooms", true, false);
        list->addContact("a@x", "A", "Pals");
        list->sync.RefreshAll();
        QCOMPARE(list->drawn(), QString("Gateways [ClosedFolder2]\n"
                                        "  MONTAGUE.EXAMPLE [ServerON] bold #ba7e55\n"
                                        "  ICQ [ServerON] bold #ba7e55\n"
                                        "Contacts [ClosedFolder2]\n"
                                        "Waiting authorization [ClosedFolder2]\n"));
        QCOMPARE(list->client.MyRoster.Count(), 2);
        QCOMPARE(list->client.MyRoster.record("rooms.x")->Status, "4");
        QVERIFY(list->client.MyGroups.Exists("Pals"));
        QCOMPARE(
            list->engine.takeSent(),
            QStringList(R"(<iq id="fullroster_REFRESH" type="get"><query xmlns="jabber:iq:roster"/></iq>)"));
    }

    void aRenameReachesTheServer()
    {
        list->addContact("a@x", "A", "Pals");
        list->sync.renamed("a@x", "");
        QCOMPARE(list->engine.takeSent(),
                 QStringList(R"(<iq id="UP_NICK" type="set"><query xmlns="jabber:iq:roster">)"
                             R"(<item jid="a@x" name=""><group>Pals</group></item></query></iq>)"));
        list->drawing.Refresh();
        QCOMPARE(list->find("a@x")->text, "a@x");
        list->engine.takeSent();
        list->sync.renamed("Pals", "Chums");
        QVERIFY(list->client.MyGroups.Exists("Pals") && list->engine.takeSent().isEmpty());
    }
};

BRELO_TEST(RosterSyncTest)
#include "RosterSyncTest.moc"
