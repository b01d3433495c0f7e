#include "BridgeRig.h"
#include "support/TestRunner.h"

// A server that speaks the old dialect: nothing is changed, in either direction.
class BridgeOldServerTest : public QObject
{
    Q_OBJECT

private slots:
    void serverIsAskedOnceAfterTheFirstStanza()
    {
        BridgeRig rig;
        rig.down("<presence/>");
        rig.down("<presence/>");
        const auto wire = rig.takeWire();
        QCOMPARE(wire.size(), 3);
        QCOMPARE(wire[0], "<presence/>");
        QVERIFY(wire[1].contains("disco#info"));
        QVERIFY(wire[1].contains("to=\"montague.example\""));
    }

    void nothingChangesInEitherDirection()
    {
        BridgeRig rig;
        rig.meetOldServer();
        for (const QString sent :
             {R"(<iq type='get' id="VRX_GET_SUPPORTEDNS"><query xmlns="jabber:iq:browse"></query></iq>)",
              R"(<iq type="get" id="vcard_wj_3" to="a@b"><VCARD xmlns="vcard-temp"/></iq>)",
              R"(<iq type="get" id="a"><query xmlns="jabber:iq:agents"/></iq>)",
              R"(<message to="a@b" type="Normal"><body>è &amp; x</body></message>)",
              R"(<message to="a@b" type="chat"><body>x</body></message>)",
              R"(<message type="chat"><x xmlns="jabber:x:event"><composing></composing></x></message>)",
              "<presence >\n<status>x</status></presence >", "<iq"}) {
            rig.down(sent);
            QCOMPARE(rig.takeWire(), QStringList{sent});
            QCOMPARE(rig.takeUp(), QStringList());
        }
        for (const QString came :
             {R"(<message from="a@b"><x xmlns="jabber:x:event"><id>1</id></x></message>)",
              R"(<message from="a@b" type="chat"/>)",
              R"(<message from="a@b" type="error"><error code="404">no</error></message>)",
              R"(<message><body>x</body><delay xmlns="urn:xmpp:delay" stamp="2002-09-10T23:08:25Z"/>)"
              "</message>",
              R"(<iq type="result" id="v" from="a@b"><VCARD xmlns="vcard-temp"><FN>x</FN></VCARD></iq>)",
              R"(<iq type="get" id="v" from="a@b"><query xmlns="jabber:iq:version"/></iq>)",
              R"(<message from="a@b"><x xmlns="jabber:x:conference" jid="r@c"/></message>)",
              R"(<presence from="a@b/c"><show>away</show></presence>)"}) {
            rig.up(came);
            QCOMPARE(rig.takeUp(), QStringList{came});
            QCOMPARE(rig.takeWire(), QStringList());
        }
    }

    void stanzaHeldForASilentServerGoesOutInTheEnd()
    {
        BridgeRig rig;
        rig.meetSilentServer();
        const QString card = "<iq type=\"get\" id=\"v\" to=\"a@b\"><VCARD xmlns=\"vcard-temp\"/></iq>";
        rig.down(card);
        rig.tick(0);
        QCOMPARE(rig.takeWire(), QStringList());
        rig.tick(10'000);
        QCOMPARE(rig.takeWire(), QStringList{card});
    }

    void newSessionForgetsWhatWasHeld()
    {
        BridgeRig rig;
        rig.meetSilentServer();
        rig.down("<iq type=\"get\" id=\"v\" to=\"a@b\"><VCARD xmlns=\"vcard-temp\"/></iq>");
        rig.down("<iq type=\"get\" id=\"a\"><query xmlns=\"jabber:iq:agents\"/></iq>");
        rig.takeWire();
        rig.begin();
        rig.tick(0);
        rig.tick(60'000);
        QCOMPARE(rig.takeWire() + rig.takeUp(), QStringList());
        rig.down("<presence/>");
        QCOMPARE(rig.takeWire().size(), 2);
    }

    void rosterPushIsAcknowledgedAndPassedOn()
    {
        BridgeRig rig;
        rig.meetOldServer();
        const QString push = "<iq type=\"set\" id=\"p1\"><query xmlns=\"jabber:iq:roster\"/></iq>";
        rig.up(push);
        QCOMPARE(rig.takeWire(), QStringList{"<iq type=\"result\" id=\"p1\"></iq>"});
        rig.up("<iq type=\"set\"><query xmlns=\"jabber:iq:roster\"/></iq>");
        QCOMPARE(rig.takeWire(), QStringList());
        QCOMPARE(rig.takeUp().size(), 2);
        // Nobody's request bears an id by which the client waits for an answer.
        rig.up("<iq type=\"set\" id=\"VRX_GET_SUPPORTEDNS\" from=\"a@b\"/>");
        QCOMPARE(rig.takeUp(),
                 QStringList("<iq type=\"set\" id=\"peer-VRX_GET_SUPPORTEDNS\" from=\"a@b\"/>"));
    }
};

BRELO_TEST(BridgeOldServerTest)
#include "BridgeOldServerTest.moc"
