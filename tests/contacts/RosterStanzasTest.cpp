#include "contacts/RosterStanzas.h"
#include "contacts/ListFixture.h"
#include "contacts/StatusRules.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QTest>

class RosterStanzasTest : public QObject
{
    Q_OBJECT

private slots:
    void everyStanzaStandsExactlySo_data()
    {
        columns<QString, QString>("text", "expected");
        const QString item =
            R"(<query xmlns="jabber:iq:roster"><item jid="a@b" name="N &amp; &quot;M&quot;")";
        const QString end = "<group>G&lt;1&gt;</group></item></query></iq>";
        const QString nick = "N & \"M\"";
        row("remove", stanzas::removeContact("a@b", nick, "G<1>"),
            R"(<iq id="VRX_Del" type="set">)" + item + R"( subscription="remove">)" + end);
        row("move", stanzas::moveContact("a@b", nick, "G<1>"),
            R"(<iq id="UP_ITEM" type="set">)" + item + ">" + end);
        row("rename", stanzas::renameContact("a@b", nick, "G<1>"),
            R"(<iq id="UP_NICK" type="set">)" + item + ">" + end);
        row("keep", stanzas::keepUnsubscribed("a@b", nick, "G<1>"),
            R"(<iq id="UP_ITEM" type="set" subscription="none">)" + item + ">" + end);
        row("values that look like places", stanzas::moveContact("%2", "%1", "%6"),
            R"(<iq id="UP_ITEM" type="set"><query xmlns="jabber:iq:roster"><item jid="%2" name="%1"><group>%6</group></item></query></iq>)");
        row("whole roster", stanzas::wholeRoster(),
            R"(<iq id="fullroster_REFRESH" type="get"><query xmlns="jabber:iq:roster"/></iq>)");
        row("vCard", stanzas::vCard("a&b@c"),
            R"(<iq type="get" id="vcard_wj_3" to="a&amp;b@c"><VCARD xmlns="vcard-temp"/></iq>)");
        row("browse", stanzas::browseServices("m.example"),
            R"(<iq type="get" id="VRX_GET_SERVICE" to="m.example"><query xmlns="jabber:iq:browse"></query></iq>)");
    }

    void everyStanzaStandsExactlySo()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(text, expected);
    }
};

BRELO_TEST(RosterStanzasTest)
#include "RosterStanzasTest.moc"
