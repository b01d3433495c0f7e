#include "AuthPeer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

using State = StreamAuth::State;

const QString bindFeature = "<bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/>";
const QString iqAuthFeature = "<auth xmlns='http://jabber.org/features/iq-auth'/>";

class AuthSessionTest : public QObject
{
    Q_OBJECT

    struct SignedInPeer : AuthPeer {
        SignedInPeer()
        {
            open(mechanisms({"PLAIN"}));
            writtenText();
            feed("<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>");
            QCOMPARE(auth.state(), State::RestartStream);
        }
    };
    static QString bound(const QString& jid)
    {
        return "<iq type='result' id='brelo-bind'><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'><jid>" +
               jid + "</jid></bind></iq>";
    }
    static QString authFields(const QString& fields)
    {
        return "<iq type='result' id='brelo-auth1'><query xmlns='jabber:iq:auth'><username/><resource/>" +
               fields + "</query></iq>";
    }

private slots:
    void resourceIsBound()
    {
        SignedInPeer peer;
        peer.open(bindFeature + "<sm xmlns='urn:xmpp:sm:2'/><sm xmlns='urn:xmpp:sm:3'/>");
        QCOMPARE(peer.writtenText(),
                 R"(<iq type="set" id="brelo-bind"><bind xmlns="urn:ietf:params:xml:ns:xmpp-bind">)"
                 R"(<resource>balcony</resource></bind></iq>)");
        QVERIFY(peer.auth.boundJid().isEmpty());
        peer.feed(bound("juliet@capulet.example/balcony-7"));
        QCOMPARE(peer.auth.state(), State::Bound);
        QCOMPARE(peer.auth.boundJid(), "juliet@capulet.example/balcony-7");
        QVERIFY(peer.auth.offersStreamManagement());
    }

    void sessionIsOpenedOnlyWhereAServerInsists_data()
    {
        columns<QString, bool>("feature", "opened");
        row("none", "", false);
        row("required", "<session xmlns='urn:ietf:params:xml:ns:xmpp-session'/>", true);
        row("optional", "<session xmlns='urn:ietf:params:xml:ns:xmpp-session'><optional/></session>", false);
    }
    void sessionIsOpenedOnlyWhereAServerInsists()
    {
        const auto [feature, opened] = fetched<QString, bool>();
        SignedInPeer peer;
        peer.open(bindFeature + feature);
        peer.writtenText();
        peer.feed(bound("juliet@capulet.example/x"));
        QCOMPARE(peer.auth.state() == State::Working, opened);
        QCOMPARE(peer.writtenText().contains("xmpp-session"), opened);
        if (opened)
            peer.feed("<iq type='result' id='brelo-session'/>");
        QCOMPARE(peer.auth.state(), State::Bound);
        QVERIFY(!peer.auth.offersStreamManagement());
    }

    void takenResourceGivesWayToTheServersChoice()
    {
        for (const QString error : {"conflict", "bad-request", "not-acceptable"}) {
            SignedInPeer peer;
            peer.open(bindFeature);
            peer.writtenText();
            const auto refusal = "<iq type='error' id='brelo-bind'><error type='modify'><" + error +
                                 " xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/></error></iq>";
            peer.feed(refusal);
            const QString next = peer.writtenText();
            QVERIFY2(next.contains("<bind") && !next.contains("resource"), qPrintable(next));
            peer.feed(refusal);
            QCOMPARE(peer.auth.state(), State::Failed);
            QVERIFY(!peer.auth.takeErrorStanza());
        }
    }

    void brokenSessionFails_data()
    {
        columns<QString, QString>("features", "answer");
        row("nothing offered", "<ver/>", "");
        row("no features at all", QString(), "");
        row("no address", bindFeature, bound(""));
        row("forbidden", bindFeature, "<iq type='error' id='brelo-bind'><error code='403'/></iq>");
        row("error without an error", bindFeature, "<iq type='error' id='brelo-bind'/>");
    }
    void brokenSessionFails()
    {
        const auto [features, answer] = fetched<QString, QString>();
        SignedInPeer peer;
        peer.open(features);
        if (!answer.isEmpty())
            peer.feed(answer);
        QCOMPARE(peer.auth.state(), State::Failed);
        QVERIFY(!peer.auth.error().isEmpty());
        peer.feed(bound("a@b/c"));
        QCOMPARE(peer.auth.state(), State::Failed);
    }

    void oldSignInSendsTheDigestBeforeThePassword_data()
    {
        columns<QString, QString, QString, QString>("features", "fields", "streamId", "secret");
        const auto hash = QCryptographicHash::hash("3EE948B0r0m30", QCryptographicHash::Sha1).toHex();
        const auto digest = QString("<digest>%1</digest>").arg(QString::fromLatin1(hash));
        const QString both = "<password/><digest/>";
        row("no features", QString(), both, "3EE948B0", digest);
        row("offered", iqAuthFeature, both, "3EE948B0", digest);
        row("mechanisms unknown", iqAuthFeature + mechanisms({"X"}), "<digest/>", "3EE948B0", digest);
        row("no stream id", iqAuthFeature, both, "", "<password>r0m30</password>");
        row("password only", iqAuthFeature, "<password/>", "3EE948B0", "<password>r0m30</password>");
    }
    void oldSignInSendsTheDigestBeforeThePassword()
    {
        const auto [features, fields, streamId, secret] = fetched<QString, QString, QString, QString>();
        AuthPeer peer;
        peer.open(features, streamId);
        const QString iq = R"(<iq type="%1" id="brelo-auth%2" to="capulet.example"><query )"
                           "xmlns=\"jabber:iq:auth\"><username>juliet</username>%3</query></iq>";
        QCOMPARE(peer.writtenText(), iq.arg("get", "1", ""));
        peer.feed(authFields(fields));
        QCOMPARE(peer.writtenText(), iq.arg("set", "2", secret + "<resource>balcony</resource>"));
        peer.feed("<iq type='result' id='brelo-auth2'/>");
        QCOMPARE(peer.auth.state(), State::Bound);
        QCOMPARE(peer.auth.boundJid(), "juliet@capulet.example/balcony");
    }

    // A digest goes before a word in clear, and nobody is asked before that matters.
    void noPasswordCrossesAnOpenStream()
    {
        for (const auto& mechanisms : {QString(), iqAuthFeature + mechanisms({"PLAIN", "X"})}) {
            for (const bool digest : {false, true}) {
                AuthRequest request{"juliet", "r0m30", "capulet.example", "balcony", false, false};
                int asked = 0;
                request.askPlain = [&asked] { return ++asked == 0; };
                AuthPeer peer(request);
                peer.open(mechanisms, "id");
                QVERIFY(peer.writtenText().contains("iq:auth"));
                peer.feed(authFields(digest ? "<password/><digest/>" : "<password/>"));
                QCOMPARE(peer.writtenText().contains("<digest>"), digest);
                QCOMPARE(peer.auth.state(), digest ? State::Working : State::Failed);
                QCOMPARE(asked, digest ? 0 : 1);
            }
        }
    }

    void oldServersRefusalPassesUp_data()
    {
        columns<QString, QString>("error", "up");
        const QString iq = "<iq type=\"error\" id=\"brelo-auth1\">%1</iq>";
        const QString error = "<error code=\"401\">No</error>", query = "<query xmlns=\"jabber:iq:auth\"";
        const QString whole = iq.arg(query + "><username>juliet</username></query>" + error);
        row("as it is", whole, whole);
        row("without its query", iq.arg(error), iq.arg(query + "/>" + error));
        row("doesn't know the dialect", iq.arg("<error code=\"503\"/>"), "");
    }
    void oldServersRefusalPassesUp()
    {
        const auto [error, up] = fetched<QString, QString>();
        AuthPeer peer;
        peer.open(QString(), "id");
        peer.feed(error);
        QCOMPARE(peer.auth.state(), State::Failed);
        const auto stanza = peer.auth.takeErrorStanza();
        QCOMPARE(stanza ? stanza->Xml() : QString(), up);
    }

    void namesAreEscaped()
    {
        AuthPeer peer({"a<b>&\"", "r0m30", "capulet.example", "balcony", true, false});
        peer.open(QString());
        QCOMPARE(xml::text(peer.written().child("query").child("username")), "a<b>&\"");
    }
};

BRELO_TEST(AuthSessionTest)
#include "AuthSessionTest.moc"
