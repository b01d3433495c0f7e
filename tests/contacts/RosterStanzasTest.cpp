#include "contacts/RosterStanzas.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class RosterStanzasTest : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreEscapedWhereTheyStand_data()
    {
        columns<QString, QString>("text", "expected");
        row("change", stanzas::moveContact("a@b", "N & \"M\"", "G<1>"),
            R"(<iq id="UP_ITEM" type="set"><query xmlns="jabber:iq:roster"><item jid="a@b" )"
            R"(name="N &amp; &quot;M&quot;"><group>G&lt;1&gt;</group></item></query></iq>)");
        row("values that look like places", stanzas::moveContact("%2", "%1", "%6"),
            R"(<iq id="UP_ITEM" type="set"><query xmlns="jabber:iq:roster"><item jid="%2" name="%1">)"
            R"(<group>%6</group></item></query></iq>)");
        row("vCard", stanzas::vCard("a&b@c"),
            R"(<iq type="get" id="vcard_wj_3" to="a&amp;b@c"><VCARD xmlns="vcard-temp"/></iq>)");
    }

    void valuesAreEscapedWhereTheyStand()
    {
        const auto [text, expected] = fetched<QString, QString>();
        QCOMPARE(text, expected);
    }
};

BRELO_TEST(RosterStanzasTest)
#include "RosterStanzasTest.moc"
