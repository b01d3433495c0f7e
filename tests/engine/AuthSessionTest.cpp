#include "AuthPeer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include "engine/Xml.h"

#include <QCryptographicHash>
#include <QTest>

using State = StreamAuth::State;

namespace
{

const QString bindFeature = "<bind xmlns=\"urn:ietf:params:xml:ns:xmpp-bind\"/>";
const QString sessionFeature = "<session xmlns=\"urn:ietf:params:xml:ns:xmpp-session\"/>";
const QString iqAuthFeature = "<auth xmlns=\"http://jabber.org/features/iq-auth\"/>";

void signIn(AuthPeer& peer)
{
    peer.open(mechanisms({"PLAIN"}));
    peer.writtenText();
    peer.feed("<success xmlns=\"urn:ietf:params:xml:ns:xmpp-sasl\"/>");
    QCOMPARE(peer.auth.state(), State::RestartStream);
}

QString bound(const QString& jid)
{
    return "<iq type='result' id='brelo-bind'><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'><jid>" + jid +
           "</jid></bind></iq>";
}

QString authFields(const QString& fields)
{
    return "<iq type='result' id='brelo-auth1'><query xmlns='jabber:iq:auth'><username/><resource/>" +
           fields + "</query></iq>";
}

} // namespace

class AuthSessionTest : public QObject
{
    Q_OBJECT

private slots:
    void resourceIsBound()
    {
        AuthPeer peer;
        signIn(peer);
        peer.open(bindFeature + "<sm xmlns='urn:xmpp:sm:2'/><sm xmlns='urn:xmpp:sm:3'/>");
        QCOMPARE(peer.writtenText(),
                 QString("<iq type=\"set\" id=\"brelo-bind\"><bind "
                         "xmlns=\"urn:ietf:params:xml:ns:xmpp-bind\"><resource>balcony</resource>"
                         "</bind></iq>"));
        QVERIFY(peer.auth.boundJid().isEmpty());
        peer.feed(bound("juliet@capulet.example/balcony-7"));
        QCOMPARE(peer.auth.state(), State::Bound);
        QCOMPARE(peer.auth.boundJid(), QString("juliet@capulet.example/balcony-7"));
        QVERIFY(peer.auth.offersStreamManagement());
    }

    void sessionIsOpenedOnlyWhereAServerInsists_data()
    {
        columns<QString, bool>("feature", "opened");
        row("none", "", false);
        row("required", sessionFeature, true);
        row("optional", "<session xmlns='urn:ietf:params:xml:ns:xmpp-session'><optional/></session>", false);
    }

    void sessionIsOpenedOnlyWhereAServerInsists()
    {
        QFETCH(QString, feature);
        QFETCH(bool, opened);
        AuthPeer peer;
        signIn(peer);
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

    void takenResourceGivesWayToTheServersChoice_data()
    {
        columns<QString>("error");
        row("taken", "<conflict xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/>");
        row("no resource", "<bad-request xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/>");
        row("not wanted", "<not-acceptable xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/>");
    }

    void takenResourceGivesWayToTheServersChoice()
    {
        QFETCH(QString, error);
        AuthPeer peer;
        signIn(peer);
        peer.open(bindFeature);
        peer.writtenText();
        const QString refusal =
            "<iq type='error' id='brelo-bind'><error type='modify'>" + error + "</error></iq>";
        peer.feed(refusal);
        const QString next = peer.writtenText();
        QVERIFY2(next.contains("<bind") && !next.contains("resource"), qPrintable(next));
        peer.feed(refusal);
        QCOMPARE(peer.auth.state(), State::Failed);
        QVERIFY(!peer.auth.takeErrorStanza());
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
        QFETCH(QString, features);
        QFETCH(QString, answer);
        AuthPeer peer;
        signIn(peer);
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
        QFETCH(QString, features);
        QFETCH(QString, fields);
        QFETCH(QString, streamId);
        QFETCH(QString, secret);
        AuthPeer peer;
        peer.open(features, streamId);
        QCOMPARE(
            peer.writtenText(),
            QString(
                "<iq type=\"get\" id=\"brelo-auth1\" to=\"capulet.example\"><query xmlns=\"jabber:iq:auth\">"
                "<username>juliet</username></query></iq>"));
        peer.feed(authFields(fields));
        QCOMPARE(peer.writtenText(),
                 "<iq type=\"set\" id=\"brelo-auth2\" to=\"capulet.example\"><query xmlns=\"jabber:iq:auth\">"
                 "<username>juliet</username>" +
                     secret + "<resource>balcony</resource></query></iq>");
        peer.feed("<iq type='result' id='brelo-auth2'/>");
        QCOMPARE(peer.auth.state(), State::Bound);
        QCOMPARE(peer.auth.boundJid(), QString("juliet@capulet.example/balcony"));
    }

    void oldSignInKeepsThePasswordOffAnOpenStream()
    {
        auto request = AuthPeer::standardRequest();
        request.encrypted = false;
        AuthPeer peer(request);
        peer.open(QString(), "id");
        peer.writtenText();
        peer.feed(authFields("<password/>"));
        QCOMPARE(peer.writtenText(), QString());
        QCOMPARE(peer.auth.state(), State::Failed);
    }

    void oldServersRefusalPassesUp_data()
    {
        columns<QString, QString>("error", "up");
        const QString whole =
            "<iq type=\"error\" id=\"brelo-auth1\"><query xmlns=\"jabber:iq:auth\"><username>juliet"
            "</username></query><error code=\"401\">Unauthorized</error></iq>";
        row("as it is", whole, whole);
        row("without its query", "<iq type=\"error\" id=\"brelo-auth1\"><error code=\"401\">No</error></iq>",
            "<iq type=\"error\" id=\"brelo-auth1\"><query xmlns=\"jabber:iq:auth\"/><error "
            "code=\"401\">No</error>"
            "</iq>");
        row("doesn't know the dialect", "<iq type=\"error\" id=\"brelo-auth1\"><error code=\"503\"/></iq>",
            "");
    }

    void oldServersRefusalPassesUp()
    {
        QFETCH(QString, error);
        QFETCH(QString, up);
        AuthPeer peer;
        peer.open(QString(), "id");
        peer.feed(error);
        QCOMPARE(peer.auth.state(), State::Failed);
        const auto stanza = peer.auth.takeErrorStanza();
        QCOMPARE(stanza ? stanza->Xml() : QString(), up);
    }

    void serverWithoutAKnownWayFailsWithASentence()
    {
        AuthPeer peer;
        peer.open(mechanisms({"X-OTHER"}));
        QCOMPARE(peer.auth.state(), State::Failed);
        QVERIFY(!peer.auth.error().isEmpty());
        QCOMPARE(peer.writtenText(), QString());
    }

    void namesAreEscaped()
    {
        auto request = AuthPeer::standardRequest();
        request.user = "a<b>&\"";
        AuthPeer peer(request);
        peer.open(QString());
        QCOMPARE(xml::text(peer.written().child("query").child("username")), request.user);
    }
};

BRELO_TEST(AuthSessionTest)
#include "AuthSessionTest.moc"
