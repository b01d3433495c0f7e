#include "BridgeRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

// The contact list on a server of today, and who may know by it that the person is there.
class BridgeRosterTest : public QObject
{
    Q_OBJECT

    static QString list(const QString& items, const QString& type = "set", const QString& id = "UP_ITEM")
    {
        return "<iq id=\"" + id + "\" type=\"" + type + "\"><query xmlns=\"jabber:iq:roster\">" + items +
               "</query></iq>";
    }
    static QString groups(const QString& names)
    {
        QString text;
        for (const auto& name : names.split('|'))
            text += name == "-" ? "" : name.isEmpty() ? "<group/>" : "<group>" + name + "</group>";
        return text;
    }
    static QString item(const QString& names, const QString& attributes = {})
    {
        return "<item jid=\"a@b\"" + attributes + ">" + groups(names) + "</item>";
    }
    // A server that has this contact, in these groups.
    struct Rig : TodaysRig {
        explicit Rig(const QString& names, const QString& subscription = "both")
        {
            down("<iq type='get' id='r'><query xmlns='jabber:iq:roster'/></iq>");
            up(list(item(names, " subscription=\"" + subscription + '"'), "result", "r"));
            takeWire();
        }
    };

private slots:
    void otherGroupsStayOnTheServer_data()
    {
        columns<QString, QString, QString, QString>("has", "shown", "set", "wire");
        row("one", "A", "A", "B", "B");
        row("moved", "A|B|C", "A", "D", "D|B|C");
        row("moved to one of its own", "A|B|C", "A", "C", "C|B");
        row("renamed", "A|B", "A", "A", "A|B");
        row("taken out", "A|B", "A", "", "B");
        row("added anew", "A|B", "A", "-", "A|B");
        row("taken out of the only one", "A", "A", "", "-");
        row("a group without a name", "|B", "B", "C", "C");
        row("a group of blanks", " |B", "B", "C", "C");
    }
    void otherGroupsStayOnTheServer()
    {
        const auto [has, shown, set, wire] = fetched<QString, QString, QString, QString>();
        Rig rig(has);
        QVERIFY(rig.takeUp().value(0).contains(groups(shown) + "</item>"));
        rig.down(list(item(set)));
        const auto sent = list(item(wire));
        QCOMPARE(rig.takeWire(), QStringList{wire == "-" ? QString(sent).replace("></item>", "/>") : sent});
        // The push that follows teaches anew.
        rig.up(list(item("X", " subscription='both'"), "set", "p"));
        rig.takeWire();
        rig.down(list(item("Y")));
        QCOMPARE(rig.takeWire(), QStringList{list(item("Y"))});
    }

    void aRefusedChangeIsFollowedByWhatTheServerHas_data()
    {
        columns<QString, QString, QString>("sent", "has", "push");
        const QString both = " name=\"A\" subscription=\"both\"";
        row("rename", item("A", " name=\"B\""), item("A|B", both), item("A", both));
        row("removal", item("", " subscription=\"remove\""), "<item jid=\"x@y\"/>" + item("A", both),
            item("A", both));
        row("gone", item("-"), "<item jid=\"x@y\"/>", "<item jid=\"a@b\" subscription=\"remove\"/>");
        row("never there", "<item jid=\"n@b\"/>", "<item jid=\"x@y\"/>", "");
    }
    void aRefusedChangeIsFollowedByWhatTheServerHas()
    {
        const auto [sent, has, push] = fetched<QString, QString, QString>();
        Rig rig("A");
        rig.takeUp();
        rig.down(list(sent));
        rig.takeWire();
        rig.up("<iq type='error' id='UP_ITEM'><query xmlns='jabber:iq:roster'>" + sent +
               "</query><error code='400'>no</error></iq>");
        QCOMPARE(rig.takeUp(),
                 QStringList("<iq type=\"error\" id=\"UP_ITEM\"><error code=\"400\">no</error></iq>"));
        const auto question = rig.takeWire();
        QCOMPARE(question.size(), 1);
        const auto id = question[0].section("id=\"", 1).section('"', 0, 0);
        rig.up(list(has, "result", id));
        const auto up = rig.takeUp().join("");
        QCOMPARE(up.count("type=\"set\""), push.isEmpty() ? 0 : 1);
        QVERIFY2(push.isEmpty() || up.contains(">" + push + "</query>"), qPrintable(up));
        QCOMPARE(rig.takeWire(), QStringList());
        rig.up(list(item("-", " ask=\"subscribe\" subscription=\"remove\"")));
        QVERIFY(rig.takeUp().value(0).contains("<item jid=\"a@b\" subscription=\"remove\"/>"));
    }

    void strangersLearnNothing_data()
    {
        columns<QString, QString, bool>("from", "before", "answered");
        row("sees us", "a@b/c", "", true);
        row("another spelling", "A@B/c", "", true);
        row("own account", "romeo@montague.example/x", "", true);
        row("own server", "montague.example", "", true);
        row("nobody", "", "", true);
        row("service of the server", "x.montague.example", "", false);
        row("stranger", "x@y/z", "", false);
        row("told by name", "x@y/z", "<presence to='x@y/z'><show>away</show></presence>", true);
        row("room", "r@c/n", "<presence to='r@c/me'/>", true);
        row("no more", "x@y/z", "<presence to='x@y'/><presence to='x@y' type='unavailable'/>", false);
        row("only asked", "x@y/z", "<presence to='x@y' type='subscribe'/>", false);
        row("we see it", "a@b/c", "to", false);
        row("removed", "a@b/c", "remove", false);
        row("blocked", "tybalt@capulet.example/x", "<presence to='tybalt@capulet.example/x'/>", false);
    }
    void strangersLearnNothing()
    {
        const auto [from, before, answered] = fetched<QString, QString, bool>();
        Rig rig("A");
        if (before.startsWith('<')) {
            for (const auto& presence : before.split("/><"))
                rig.down(presence.startsWith('<') ? presence.endsWith('>') ? presence : presence + "/>"
                                                  : '<' + presence);
        } else if (!before.isEmpty()) {
            rig.up(list(item("A", " subscription='" + before + '\''), "set", "p"));
        }
        rig.takeUp();
        rig.takeWire();
        const auto sender = from.isEmpty() ? from : " from='" + from + '\'';
        rig.up("<iq type='get' id='1'" + sender + "><query xmlns='jabber:iq:version'/></iq>");
        rig.up("<iq type='get' id='2'" + sender + "><ping xmlns='urn:xmpp:ping'/></iq>");
        rig.up("<message id='3'" + sender + "><body>x</body><request xmlns='urn:xmpp:receipts'/></message>");
        const auto wire = rig.takeWire();
        QCOMPARE(wire.size(), answered ? 3 : 2);
        QCOMPARE(wire.filter("service-unavailable").size(), answered ? 0 : 2);
        QVERIFY(answered || wire.filter("code=").isEmpty());
        QCOMPARE(rig.takeUp().size(), 1);
        // A file of a stranger's is the person's to judge, one of a blocked person's is not shown.
        rig.up("<iq type='set' id='4'" + sender + "><query xmlns='jabber:iq:oob'/></iq>");
        QCOMPARE(rig.takeUp().isEmpty(), from.startsWith("tybalt"));
    }
};

BRELO_TEST(BridgeRosterTest)
#include "BridgeRosterTest.moc"
