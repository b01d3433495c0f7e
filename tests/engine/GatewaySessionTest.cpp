#include "support/GatewayRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

const QByteArray management = "<sm xmlns='urn:xmpp:sm:3'/>";

// The session: stanzas both ways, and the ways in which it ends.
class GatewaySessionTest : public QObject
{
    Q_OBJECT

    // Signed in, with everything that the engine asks by itself already on the wire.
    struct SignedInRig : GatewayRig {
        SignedInRig()
        {
            server.onLegacySignIn();
            CONNECT_UNTIL(*this, isUp() && server.received().contains("jabber:iq:agents"));
            up.clear();
        }
    };
    struct ManagedRig : GatewayRig {
        ManagedRig()
        {
            server.onSaslSignIn(management);
            server.on("<enable", "<enabled xmlns='urn:xmpp:sm:3' id='session-1' resume='true'/>");
            CONNECT_UNTIL(*this, isUp() && server.scriptIsDone());
            server.say("<message from='juliet@a.example'><body>first</body></message>");
            TICK_UNTIL(*this, up.last().contains(u"first"));
            up.clear();
        }
    };

private slots:
    void aMessageToOneselfStaysAtHome()
    {
        // The resource asked for, the one that the server gave, another one of the account's.
        for (const QString resource : {"garden", "orchard", "home"}) {
            GatewayRig rig;
            rig.server.onSaslSignIn();
            CONNECT_UNTIL(rig, rig.isUp());
            const auto text = "<message to=\"romeo@127.0.0.1/" + resource + "\"><body>self</body></message>";
            QVERIFY(rig.queue->sendBuilt(Stanza::fromXml(text)->root(), nullptr));
            rig.send("<presence/>");
            TICK_UNTIL(rig, rig.server.received().contains("<presence/>"));
            QCOMPARE(rig.up.contains(text), resource != "home");
            QCOMPARE(rig.server.received().contains("self"), resource == "home");
        }
    }

    void aFloodWaitsForTheClient()
    {
        SignedInRig rig;
        constexpr int flood = 3'000;
        rig.server.say(QByteArray("<presence from='juliet@a.example/x'><status>here</status></presence>")
                           .repeated(flood));
        for (std::size_t before = 1; before != rig.queue->inboundCount();) {
            before = rig.queue->inboundCount();
            for (int i = 0; i < 20; ++i) {
                QCoreApplication::processEvents();
                rig.gateway->Trigger();
            }
        }
        QVERIFY(rig.queue->inboundCount() <= 500);
        TICK_UNTIL(rig, rig.up.size() == flood);
    }

    void aBreachClosesTheStream_data()
    {
        columns<QByteArray, QByteArray>("bytes", "condition");
        row("document type", QByteArray("<!DOCTYPE a>"), QByteArray("restricted-xml"));
        row("not well-formed", QByteArray("<message></presence>"), QByteArray("not-well-formed"));
        row("text between the stanzas", QByteArray("<presence/>hello<presence/>"), QByteArray("bad-format"));
    }
    void aBreachClosesTheStream()
    {
        const auto [bytes, condition] = fetched<QByteArray, QByteArray>();
        SignedInRig rig;
        rig.server.say(bytes);
        TICK_UNTIL(rig, rig.isClosed());
        QVERIFY(!rig.gateway->isconnected() && rig.up.last().contains(u"close"));
        TICK_UNTIL(rig, !rig.server.isConnected());
        QVERIFY2(rig.server.received().contains("<" + condition), rig.server.received().constData());
    }

    // The server counts it all the same (XEP-0198).
    void aStanzaBeyondTheBoundsIsLeftOut()
    {
        for (const auto& content :
             {QByteArray("<a>").repeated(64) + QByteArray("</a>").repeated(64), QByteArray(6'000'000, 'x')}) {
            GatewayRig rig;
            rig.server.onSaslSignIn("<sm xmlns='urn:xmpp:sm:3'/>");
            rig.server.on("<enable", "<enabled xmlns='urn:xmpp:sm:3' id='1' resume='true'/>");
            CONNECT_UNTIL(rig, rig.isUp() && rig.server.scriptIsDone());
            rig.server.say("<message from='mallory@b.example'>" + content +
                           "</message><message from='a@b'><body>next</body></message>"
                           "<r xmlns='urn:xmpp:sm:3'/>");
            TICK_UNTIL(rig, rig.server.received().contains("<a xmlns"));
            QVERIFY2(rig.server.received().contains(" h=\"2\"/>"), rig.server.received().constData());
            QVERIFY(rig.up.last().contains(u"next") && !rig.up.join(u' ').contains(u"mallory"));
        }
    }

    void aLostConnectionIsToldOnce()
    {
        for (const char* last : {"", "<message from='juliet@a.example'><bo", "</stream:stream>",
                                 "<stream:error><conflict xmlns='urn:ietf:params:xml:ns:xmpp-streams'/>"
                                 "</stream:error></stream:stream>"}) {
            SignedInRig rig;
            rig.server.say(QByteArray("<message from='juliet@a.example'><body>whole</body></message>") +
                           last);
            rig.server.hangUp();
            TICK_UNTIL(rig, rig.isClosed());
            for (int i = 0; i < 5; ++i)
                rig.tick();
            QCOMPARE(rig.up.size(), 2);
            QVERIFY(rig.up.first().contains(u"whole"));
            QVERIFY(!rig.gateway->isconnected());
        }
    }

    void leavingSendsWhatIsQueuedAndWaitsAWhile()
    {
        for (const bool serverEnds : {true, false}) {
            SignedInRig rig;
            rig.send("<presence type=\"unavailable\"/>");
            rig.gateway->DoDisconnect();
            QVERIFY(!rig.gateway->isconnected());
            TICK_UNTIL(rig,
                       rig.server.received().endsWith("<presence type=\"unavailable\"/></stream:stream>"));
            QVERIFY(!rig.isClosed());
            if (serverEnds) {
                rig.server.say("</stream:stream>");
                rig.server.hangUp();
                TICK_UNTIL(rig, rig.isClosed());
            }
            rig.now += 5'000;
            rig.tick();
            QCOMPARE(rig.up, QStringList("<presence type=\"close\"/>"));
        }
    }

    void aDeadConnectionIsNoticed()
    {
        SignedInRig rig;
        rig.now += 61'000;
        TICK_UNTIL(rig, rig.server.received().contains("urn:xmpp:ping"));
        rig.server.say(" ");
        rig.now += 10'000;
        QTRY_VERIFY(rig.tick() && rig.server.isConnected());
        QVERIFY(!rig.isClosed());
        rig.now += 200'000;
        rig.tick();
        rig.now += 31'000;
        TICK_UNTIL(rig, rig.isClosed());
    }

    void aLostSessionIsTakenUpAgain()
    {
        ManagedRig rig;
        rig.server.on("<message", {}, ScriptedServer::Then::Abort);
        rig.server.onSasl(management);
        rig.send("<message to=\"juliet@a.example\"><body>unheard</body></message>");
        TICK_UNTIL(rig, rig.server.connections() == 2);
        QVERIFY(rig.gateway->isconnected());
        rig.send("<message to=\"juliet@a.example\"><body>meanwhile</body></message>");
        TICK_UNTIL(rig, rig.server.received().contains("<resume"));
        QVERIFY(rig.server.received().contains("previd=\"session-1\"") &&
                rig.server.received().contains(" h=\"1\""));
        rig.server.say("<resumed xmlns='urn:xmpp:sm:3' previd='session-1' h='0'/>");
        TICK_UNTIL(rig, rig.server.received().contains("meanwhile"));
        QVERIFY(rig.server.received().indexOf("unheard") < rig.server.received().indexOf("meanwhile"));
        QVERIFY(rig.server.received().contains("unheard"));
        QVERIFY2(rig.up.isEmpty(), qPrintable(rig.up.join(u'\n')));
    }

    // A server that starts again refuses connections meanwhile.
    void aRefusedConnectionIsTriedAgain()
    {
        ManagedRig rig;
        const auto port = rig.server.serverPort();
        rig.server.refuse();
        rig.server.hangUp();
        for (const qint64 end = rig.now + 10'000; rig.now < end; rig.now += 500) {
            TICK_UNTIL(rig, true);
            QTest::qWait(1);
        }
        QVERIFY(rig.gateway->isconnected() && rig.up.isEmpty());
        rig.server.onSasl(management);
        QVERIFY(rig.server.listen(QHostAddress::LocalHost, port));
        TICK_UNTIL(rig, (rig.now += 500) && rig.server.received().contains("<resume"));
    }

    void messagesThatDidNotArriveComeBack_data()
    {
        columns<QByteArray, QStringList>("answer", "back");
        const QString unheard = "uncertain unheard", meanwhile = "unsent meanwhile";
        row("gone", QByteArray("<failed xmlns='urn:xmpp:sm:3'/>"), QStringList{unheard, meanwhile});
        row("gone, but heard", QByteArray("<failed xmlns='urn:xmpp:sm:3' h='4'/>"), QStringList{meanwhile});
        row("taken up", QByteArray("<resumed xmlns='urn:xmpp:sm:3' h='3'/>"), QStringList());
        row("left", QByteArray(), QStringList{unheard, meanwhile});
    }
    void messagesThatDidNotArriveComeBack()
    {
        const auto [answer, back] = fetched<QByteArray, QStringList>();
        ManagedRig rig;
        rig.server.on("unheard", {}, ScriptedServer::Then::Abort);
        rig.server.onSasl(management);
        rig.send("<message to=\"juliet@a.example\"><body>unheard</body></message>");
        TICK_UNTIL(rig, rig.server.connections() == 2);
        rig.send("<message to=\"juliet@a.example\"><body>meanwhile</body></message>");
        rig.send("<presence/>");
        TICK_UNTIL(rig, rig.server.received().contains("<resume"));
        answer.isEmpty() ? rig.gateway->DoDisconnect() : rig.server.say(answer);
        const QByteArray last = back.isEmpty() ? "<presence/>" : "";
        TICK_UNTIL(rig, back.isEmpty() ? rig.server.received().contains(last)
                                       : (rig.now += 1'000) && rig.isClosed());
        QStringList came;
        for (const auto& text : rig.up)
            came += text.section("<message to=\"juliet@a.example\"><body>", 0, 0) +
                    text.section("<body>", 1).section('<', 0, 0);
        QCOMPARE(came, back.isEmpty() ? back : back + QStringList("<presence type=\"close\"/>"));
        QCOMPARE(rig.server.received().count("meanwhile"), back.isEmpty() ? 1 : 0);
    }

    // Without stream management what follows the server's last word is in doubt.
    void aLinkThatNobodyCountsOnLeavesDoubts()
    {
        SignedInRig rig;
        const QString said = "<message to=\"a@b\"><body>%1</body></message>";
        rig.send(said.arg("heard"));
        TICK_UNTIL(rig, rig.server.received().contains("heard"));
        rig.server.say("<message><body>yes</body></message>");
        TICK_UNTIL(rig, !rig.up.isEmpty());
        rig.send(said.arg("unheard"));
        rig.send("<message to=\"a@b\"><x/></message>");
        TICK_UNTIL(rig, rig.server.received().contains("<x/>"));
        rig.server.hangUp();
        TICK_UNTIL(rig, rig.isClosed());
        QCOMPARE(rig.up.mid(1, 1), QStringList("uncertain " + said.arg("unheard")));
        QCOMPARE(rig.up.size(), 3);
    }

    // What nobody reads is kept up to a bound; then the sender is told.
    void aServerThatReadsNothingFillsNoMemory()
    {
        SignedInRig rig;
        rig.server.stopReading();
        const QString text = "<message to=\"a@b\"><body>" + QString(100'000, 'x') + "</body></message>";
        QString error;
        int sent = 0;
        for (; sent < 500 && rig.queue->sendRaw(text, &error); ++sent)
            rig.tick();
        QVERIFY2(sent >= 40 && sent < 200 && error.contains("waits"), qPrintable(QString::number(sent)));
    }

    void noStrangerSpeaksForTheEngine()
    {
        SignedInRig rig;
        rig.now += 61'000;
        TICK_UNTIL(rig, rig.server.received().contains("brelo-ping-1"));
        const QByteArray ping =
            "<iq type='get' id='brelo-ping-1' from='mallory@b.example/x'><ping xmlns='x'/></iq>";
        // No address has a part of more than 1,023 bytes.
        const QByteArray word = QByteArray("\xCC\x96").repeated(511);
        for (const auto& from : {word + "xx@b/c", "a@" + word + "xx/c", "a@b/" + word + "xx"})
            rig.server.say("<message from='" + from + "'><body>long</body></message>");
        rig.server.say("<message from='" + word + "x@" + word + "x/" + word +
                       "x'><body>most</body></message>");
        const auto ofTheServer = QByteArray(ping).replace("mallory@b.example/x", "127.0.0.1");
        rig.server.say("<iq type='result' id='brelo-roster' from='mallory@b.example'><query "
                       "xmlns='jabber:iq:roster'/></iq><presence type='close'/><presence "
                       "from='mallory@b.example' type='connect'/>" +
                       ping + ofTheServer +
                       "<iq type='result' id='brelo-ping-1' from='127.0.0.1'/><presence/>");
        TICK_UNTIL(rig, rig.up.contains("<presence/>"));
        QVERIFY(rig.up.filter("long").isEmpty() && rig.up.filter("most").size() == 1);
        QCOMPARE(rig.up.filter("jabber:iq:roster").size(), 0);
        QCOMPARE(rig.up.filter("brelo-ping-1").size(), 2);
        QVERIFY(rig.up.filter("<presence").size() == 1 && rig.up.filter("result\" id=\"brelo-p").isEmpty());
    }

    // Silence would tell that somebody is there; servers of old know no such answers.
    void aRefusedRequestIsAnsweredAsByNobody()
    {
        SignedInRig rig;
        const QByteArray request = "<iq type='set' id='forged-%' from='mallory@b.example/x'><query "
                                   "xmlns='jabber:iq:auth'/></iq>";
        rig.server.say(QByteArray(request).replace('%', "1") +
                       "<iq type='result' id='brelo-q2' from='127.0.0.1'><query xmlns='http://jabber.org/"
                       "protocol/disco#info'><identity category='server' type='im'/></query></iq>" +
                       QByteArray(request).replace('%', "2"));
        TICK_UNTIL(rig, rig.server.received().contains("id=\"forged-2\" to=\"mallory@b.example/x\"><error "
                                                       "type=\"cancel\"><service-unavailable"));
        QVERIFY(!rig.server.received().contains("forged-1") && rig.up.filter("forged").isEmpty());
    }
};

BRELO_TEST(GatewaySessionTest)
#include "GatewaySessionTest.moc"
