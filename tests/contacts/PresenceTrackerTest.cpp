#include "contacts/ListFixture.h"

class PresenceTrackerTest : public QObject
{
    Q_OBJECT
    std::optional<ListFixture> list;
private slots:
    void init() { list.emplace(); }

    void anAvailableContactIsShown_data()
    {
        columns<QString, QString, QString, bool>("show", "look", "blockedLook", "taken");
        row("plain", "", "J [Online] #ba7e55", "J [notauth] #ba7e55", true);
        row("away", "away", "J [Away] bold #10", "J [notauth] bold #10", true);
        row("xa", "xa", "J [xAway] bold #10", "J [notauth] bold #10", true);
        row("dnd", "dnd", "J [dnd] bold #10", "J [notauth] bold #10", true);
        row("chat", "chat", "J [free4chat] bold #10", "J [notauth] bold #10", true);
        row("busy", "busy", "J [Offline] #10", "J [Offline] #10", false);
        row("Offline", "Offline", "J [Offline] #10", "J [Offline] #10", false);
    }
    void anAvailableContactIsShown()
    {
        const auto [show, look, blockedLook, taken] = fetched<QString, QString, QString, bool>();
        for (const bool blocked : {false, true}) {
            ListFixture list;
            list.client.settings.CharOnLineBold = false;
            list.client.settings.ColorOffline = 0x10;
            list.addContact("j@x", "J", "Pals");
            if (blocked)
                list.client.MyBanList.Add("j@x");
            list.presence("j@x/home", "", "<show>" + show + "</show><status>hi &amp; bye</status>");
            const auto& record = *list.client.MyRoster.record("j@x");
            QCOMPARE(list.node("j@x"), blocked ? blockedLook : look);
            QCOMPARE(record.Online, taken);
            QCOMPARE(record.Status, taken ? show : QString("Offline"));
            QCOMPARE(record.StatusMsg, taken ? QString("hi & bye") : QString());
            QCOMPARE(record.Resources, QStringList("home"));
        }
    }

    void theLastResourceTakesTheContactOffLine()
    {
        list->addContact("j@x", "J", "");
        list->presence("j@x/home", "", "<status>here</status>");
        list->presence("j@x/work", "");
        list->presence("j@x/work", "");
        const auto& record = *list->client.MyRoster.record("j@x");
        QCOMPARE(record.Resources, QStringList({"home", "work"}));
        list->presence("j@x/home", "unavailable");
        QCOMPARE(list->node("j@x"), "J [Online] bold #ba7e55");
        list->presence("j@x/work", "unavailable", "<status>bye</status>");
        QCOMPARE(list->node("j@x"), "J [Offline]");
        QCOMPARE(record.Status, "Offline");
        QCOMPARE(record.StatusMsg, QString());
        QVERIFY(record.Resources.isEmpty() && !record.Online);
        list->presence("j@x/new", "");
        QCOMPARE(record.Resources, QStringList("new"));
        list->presence("j@x/other", "unavailable"); // an unknown one takes a lone one away
        QCOMPARE(list->node("j@x"), "J [Offline]");
        QCOMPARE(record.Resources, QStringList("new"));
        for (int resource = 0; resource < 1000; ++resource)
            list->presence(QString("j@x/%1").arg(resource), "");
        QCOMPARE(record.Resources.size(), 50);
        QCOMPARE(record.Resources.last(), "999");
    }

    void whatIsNobodysContactChangesNothing_data()
    {
        columns<QString, QString>("from", "type");
        row("a stranger", "s@x/r", "");
        row("a stranger who goes", "s@x/r", "unavailable");
        row("a stranger's notice", "s@x", "unsubscribed");
        row("a stranger who agrees", "s@x", "subscribed");
        row("the own account elsewhere", "romeo@montague.example/garden", "");
        row("nobody", "", "");
    }
    void whatIsNobodysContactChangesNothing()
    {
        const auto [from, type] = fetched<QString, QString>();
        for (const bool onlineOnly : {false, true}) {
            ListFixture list;
            list.client.MyRoster.AddItem("romeo@montague.example", "Me", false, "", {}, false, {}, "both", {},
                                         {});
            list.addContact("j@x", "J", "Pals");
            list.client.settings.ShowOnlineUsers = onlineOnly;
            const QString before = list.drawn();
            list.presence(from, type);
            QCOMPARE(list.drawn(), before);
            QCOMPARE(list.client.MyRoster.Count(), 2);
            QVERIFY(list.engine.takeSent().isEmpty());
        }
    }

    void onlyThoseOnLineComeAndGo()
    {
        list->client.settings.ShowOnlineUsers = true;
        list->drawing.Refresh();
        list->addContact("j@x", "", "Pals");
        list->addContact("k@x", "Kay", "");
        list->presence("j@x/r", "", "<show>away</show>");
        list->presence("k@x/r", "");
        QCOMPARE(list->node("j@x"), "j [Away] bold");
        QCOMPARE(list->parentOf("j@x"), "Pals");
        QCOMPARE(list->parentOf("k@x"), "Contacts");
        QCOMPARE(list->client.MyRoster.record("j@x")->Resources, QStringList("r"));
        list->presence("j@x/r", "unavailable");
        list->presence("k@x/r", "unavailable");
        QCOMPARE(list->node("j@x") + " " + list->node("Pals"), "none none");
        QVERIFY(list->find("Contacts") && !list->client.MyRoster.record("j@x")->Online);
        list->presence("j@x/r", "unavailable"); // without a node
        QCOMPARE(list->node("j@x"), "none");
        list->drawing.tree().addGroup("Pals", "NewGroup"); // a folder that the person made
        list->presence("j@x/r", "");
        QCOMPARE(list->parentOf("j@x"), "Pals");
    }

    void aServiceIsMarked()
    {
        list->addTransport("icq.x", "ICQ");
        const auto& agent = *list->client.MyAgents.record("icq.x");
        list->presence("icq.x", "");
        list->presence("icq.x", "subscribed"); // of itself, not of its network
        QVERIFY(agent.Online && !agent.registered);
        QCOMPARE(list->node("icq.x"), "ICQ [ServerON] bold #ba7e55");
        list->presence("icq.x/registered", "");
        QVERIFY(agent.registered);
        list->presence("icq.x", "unavailable");
        QVERIFY(!agent.Online && agent.registered && !list->client.MyRoster.record("icq.x")->Online);
        QCOMPARE(list->node("icq.x"), "ICQ [ServerOFF]");
    }

    void anUnsubscribedNoticeKeepsTheContact()
    {
        list->addContact("j@x", "J", "Pals");
        list->presence("j@x/r", "unsubscribed");
        QCOMPARE(
            list->engine.takeSent(),
            QStringList(R"(<iq id="UP_ITEM" type="set" subscription="none"><query xmlns="jabber:iq:roster">)"
                        R"(<item jid="j@x" name="J"><group>Pals</group></item></query></iq>)"));
        QCOMPARE(list->node("j@x"), "J [Offline]");
    }

    void aSubscribedNoticeDrawsTheWholeSender()
    {
        for (const bool onlineOnly : {false, true}) {
            ListFixture list;
            list.addContact("j@x", "J", "Pals");
            list.client.settings.ShowOnlineUsers = onlineOnly;
            list.presence("j@x/r", "subscribed");
            QCOMPARE(list.node("j@x/r"), "j@x/r [Offline]");
            QCOMPARE(list.node("j@x"), QString(onlineOnly ? "J [Offline]" : "none"));
            list.drawing.Refresh();
            QCOMPARE(list.node("j@x/r"), "none");
        }
    }

    void soundsPlayForPlainComingAndGoing()
    {
        list->client.settings.SoundOnOnLine = list->client.settings.SoundOnOffLine = true;
        list->client.settings.SoundOnOnLineFile = "/tmp/in.wav";
        list->client.settings.SoundOnOffLineFile = "/tmp/out.wav";
        list->addContact("j@x", "J", "");
        list->presence("j@x/a", "", "<show>dnd</show>");
        list->presence("j@x/a", "");
        list->presence("j@x/b", "");
        list->presence("j@x/a", "unavailable");
        list->presence("j@x/b", "unavailable");
        QCOMPARE(list->outside.sounds.played, QStringList({"/tmp/in.wav", "/tmp/in.wav", "/tmp/out.wav"}));
    }

    void probesGoRoundTheContacts()
    {
        QList<bool> timer;
        list->tracker.setResponseTimer = [&](bool running) { timer += running; };
        list->addContact("j@x", "J", "");
        list->addTransport("icq.x", "ICQ");
        list->presence("j@x/r", "");
        list->tracker.RefreshPresence();
        QCOMPARE(list->engine.takeSent(), QStringList(R"(<presence to="j@x" type="probe"/>)"));
        QCOMPARE(timer, QList<bool>({true}));
        list->presence("j@x/r", "");
        QCOMPARE(timer, QList<bool>({true, false}));
        list->tracker.responseTimedOut();
        QVERIFY(!list->client.MyRoster.record("j@x")->Online);
        QCOMPARE(list->client.MyRoster.record("j@x")->Resources, QStringList("r"));
        list->tracker.RefreshPresence(); // a transport is passed over
        list->tracker.RefreshPresence(); // the round is done
        QVERIFY(list->engine.takeSent().isEmpty());
        list->tracker.RefreshPresence();
        QCOMPARE(list->engine.takeSent().size(), 1);
    }
};

BRELO_TEST(PresenceTrackerTest)
#include "PresenceTrackerTest.moc"
