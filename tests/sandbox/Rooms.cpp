#include "Peer.h"
#include "support/TestRunner.h"

class Rooms : public QObject
{
    Q_OBJECT
    std::unique_ptr<sandbox::SandboxServer> server_;

    static QByteArray to(const QByteArray& room) { return "to=\"" + room + "@conference.im.test\""; }
    static QByteArray question(const QByteArray& room)
    {
        return "<iq type=\"get\" id=\"VRX_CONF?\" " + to(room) +
               "><query xmlns=\"jabber:iq:conference\"/></iq>";
    }
    static QByteArray entry(const QByteArray& nick, const QByteArray& room = "garden")
    {
        return "<presence " + to(room) + "/><iq " + to(room) +
               " type=\"set\" id=\"VRX_CONF_DATA\"><query xmlns=\"jabber:iq:conference\"><nick>" + nick +
               "</nick></query></iq>";
    }
    // The id that the room gave in answer to an entry.
    static QByteArray idIn(const QByteArray& answer)
    {
        const auto from = answer.indexOf("<id>") + 4;
        return answer.mid(from, answer.indexOf("</id>") - from);
    }

private slots:
    void init()
    {
        server_ = std::make_unique<sandbox::SandboxServer>();
        server_->world().addAccount("romeo", "secret");
        server_->world().addAccount("juliet", "secret");
        server_->world().addRoom("garden", "The Garden").seat("Nils");
        QVERIFY(server_->listen());
    }

    void roomTellsItsNameAndWantsOne()
    {
        OnlinePeer peer(*server_, "romeo");
        QVERIFY(peer.ask(question("garden")).contains("<name>The Garden</name><nick/>"));
        QVERIFY(peer.ask(question("attic")).contains("<error code=\"404\">"));
        QVERIFY(peer.ask(entry("")).contains("<error code=\"406\">"));
    }

    void othersComeBeforeTheOwnEntry()
    {
        OnlinePeer peer(*server_, "romeo");
        const QByteArray got = peer.ask(entry("R &amp; M"));
        const auto nils = got.indexOf("<user jid=\"garden@conference.im.test/nils\" name=\"Nils\"/>");
        const auto nilsPresence = got.indexOf("<presence from=\"garden@conference.im.test/nils\"");
        const auto own = got.indexOf("id=\"VRX_CONF_DATA\"");
        const auto ownPush = got.indexOf("<user jid=\"" + idIn(got) + "\" name=\"R &amp; M\"/>");
        const auto ownPresence = got.indexOf("<presence from=\"" + idIn(got));
        QVERIFY2(nils >= 0 && nils < nilsPresence && nilsPresence < own && own < ownPush &&
                     ownPush < ownPresence,
                 got);
    }

    void membersTalkChangeAndLeave()
    {
        OnlinePeer romeo(*server_, "romeo"), juliet(*server_, "juliet");
        const QByteArray id = idIn(romeo.ask(entry("Romeo")));
        QVERIFY(juliet.ask(entry("Romeo")).contains("<error code=\"409\">"));
        const QByteArray hers = idIn(juliet.ask(entry("Juliet")));
        QVERIFY(romeo.news().contains("<user jid=\"" + hers + "\" name=\"Juliet\"/>"));
        const QByteArray line = "<subject>S</subject><body>/me waves &lt;</body>";
        const auto said = romeo.ask("<message " + to("garden") + " type='GroupChat'>" + line + "</message>");
        QVERIFY2(said.contains("<message from=\"" + id + "\" type=\"groupchat\" to=\"romeo@im.test/Desk\">" +
                               line),
                 said);
        QVERIFY(juliet.news().contains("<body>/me waves &lt;</body>"));
        romeo.ask("<presence " + to("garden") + "><show>away</show></presence>");
        QVERIFY(juliet.news().contains("<presence from=\"" + id +
                                       "\" to=\"juliet@im.test/Desk\"><show>away</show>"));
        romeo.ask("<presence to=\"garden@conference.im.test/Montague\"/>");
        QVERIFY(juliet.news().contains("<user jid=\"" + id + "\" name=\"Montague\"/>"));
        romeo.ask("<presence to=\"garden@conference.im.test/\"/>");
        QVERIFY(juliet.news().isEmpty());
        QVERIFY(romeo.ask("<presence to=\"garden@conference.im.test/Nils\"/>").contains("code=\"409\""));
        romeo.ask("<message to=\"" + hers + "\" type=\"chat\"><body>psst</body></message>");
        QCOMPARE(juliet.news(), "<message type=\"chat\" from=\"" + id +
                                    "\" to=\"juliet@im.test/Desk\"><body>psst</body></message>");
        const QByteArray gone = "<user type=\"remove\" jid=\"" + id + "\"/>";
        const QByteArray left = romeo.ask("<presence " + to("garden") + " type=\"unavailable\"/>");
        QVERIFY2(left.endsWith(gone + "</query></iq>"), left);
        QVERIFY(juliet.news().contains(gone));
        QVERIFY(romeo.ask("<presence " + to("garden") + " type=\"unavailable\"/>").isEmpty());
        QVERIFY(romeo.ask("<message " + to("garden") + " type='groupchat'/>").contains("code=\"404\""));
    }

    void lostConnectionLeaves()
    {
        OnlinePeer romeo(*server_, "romeo"), juliet(*server_, "juliet");
        const QByteArray id = idIn(romeo.ask(entry("Romeo")));
        juliet.ask(entry("Juliet"));
        romeo.socket.abort();
        QVERIFY(juliet.sees("<user type=\"remove\" jid=\"" + id + "\"/>"));
    }

    void madeRoomLivesWhileItIsUsed()
    {
        OnlinePeer peer(*server_, "romeo");
        QVERIFY(peer.ask(entry("Romeo", "attic")).contains("id=\"VRX_CONF_DATA\""));
        QVERIFY(peer.ask(question("attic")).contains("<name>attic</name>"));
        peer.ask("<presence " + to("attic") + " type=\"unavailable\"/>");
        QVERIFY(peer.ask(question("attic")).contains("<error code=\"404\">"));
        peer.ask(entry("Romeo"));
        peer.ask("<presence " + to("garden") + " type=\"unavailable\"/>");
        QVERIFY(peer.ask(question("garden")).contains("The Garden"));
    }
};

BRELO_TEST(Rooms)
#include "Rooms.moc"
