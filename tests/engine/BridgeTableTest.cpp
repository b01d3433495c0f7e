#include "BridgeRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

const QString roomPresence = "<presence to='room@rooms.x/me'/>";

// Which translators are asked about a stanza.
class BridgeTableTest : public QObject
{
    Q_OBJECT

    // Says what it sees, and deals with the stanzas that hold "dealt".
    struct Recorder : Translator {
        Recorder(const char* name, QStringList& log) : name(name), log(log) {}
        void begin(BridgeContext& context) override
        {
            presences = &context.presences;
            ++beginnings;
        }
        bool down(const ClientStanza& stanza, BridgeContext&) override { return see(stanza.text); }
        bool up(std::shared_ptr<Stanza>& stanza, BridgeContext&) override
        {
            return see(stanza->Xml().toUtf8());
        }
        bool see(const QByteArray& text)
        {
            log << name;
            return text.contains("dealt");
        }

        const char* name;
        QStringList& log;
        PresenceRoutes* presences = nullptr;
        int beginnings = 0;
    };
    // A bridge whose translators only look on. The one for presence has asked for a room's.
    struct Onlookers {
        using Kind = TranslatorRow::Kind;
        using Server = TranslatorRow::Server;

        std::shared_ptr<Recorder> recorder(const char* name) { return std::make_shared<Recorder>(name, log); }
        QString seenBy(bool isDown, const QString& stanza)
        {
            log.clear();
            isDown ? rig.down(stanza) : rig.up(stanza);
            return log.join(u' ');
        }

        QStringList log;
        std::shared_ptr<Recorder> room = recorder("room");
        BridgeRig rig{{{Kind::Request, "x", Server::Any, recorder("request")},
                       {Kind::PeerRequest, "x", Server::Any, recorder("peer")},
                       {Kind::Message, "x", Server::Any, recorder("extension")},
                       {Kind::Message, "", Server::OfToday, recorder("today")},
                       {Kind::Message, "", Server::Any, room},
                       {Kind::Error, "", Server::OfToday, recorder("error")},
                       {Kind::Presence, "", Server::Any, room}}};
    };

private slots:
    void translatorsSeeWhatTheirRowsSay_data()
    {
        columns<bool, QString, QString>("isDown", "stanza", "seenBy");
        row("request", true, "<iq type='get' id='1'><q xmlns='x'/></iq>", "request");
        row("change", true, "<iq type='set' id='1'><q xmlns='x'/></iq>", "request");
        row("request of another namespace", true, "<iq type='get' id='1'><q xmlns='y'/></iq>", "");
        row("the client's answer", true, "<iq type='result' id='1'><q xmlns='x'/></iq>", "");
        row("another's request", false, "<iq type='get' id='1'><q xmlns='x'/></iq>", "peer");
        row("another's request, second", false, "<iq type='get' id='1'><q xmlns='y'/><q xmlns='x'/></iq>",
            "peer");
        row("answer", false, "<iq type='result' id='1'><q xmlns='x'/></iq>", "");
        row("refusal", false, "<iq type='error' id='1'><q xmlns='x'/></iq>", "error");
        row("sent message", true, "<message to='a@b'/>", "today room");
        row("message", false, "<message from='a@b'><q xmlns='x'/></message>", "extension today room");
        row("message dealt with", false, "<message id='dealt'><q xmlns='x'/></message>", "extension");
        row("bounce", false, "<message type='error'/>", "today room error");
        row("presence to the room", true, roomPresence, "room");
        row("in any spelling", true, "<presence type=\"unavailable\"\n to = \"ROOM@rooms.x\" />", "room");
        row("dealt with", true, "<presence id='dealt' to='room@rooms.x'/>", "room");
        row("an occupant's, dealt with", false, "<presence id='dealt' from='room@rooms.x/you'/>", "room");
        row("to another room", true, "<presence to='room2@rooms.x/room@rooms.x'/>", "");
        row("to all", true, "<presence><x to='room@rooms.x'/></presence>", "");
        row("in another attribute's value", true, "<presence id=\"it's to='room@rooms.x'\"/>", "");
        row("in another attribute", true, "<presence x:to='room@rooms.x' nato='room@rooms.x'/>", "");
        row("broken", true, "<presence to='room@rooms.x'>", "");
        row("cut", true, "<presence to='room@rooms.x", "");
        row("an occupant's", false, "<presence from='Room@rooms.x/you'/>", "room");
        row("an error of the room", false, "<presence type='error' from='room@rooms.x'/>", "room error");
        row("a stranger's", false, "<presence from='a@b/room@rooms.x' to='room@rooms.x'/>", "");
        row("nobody's", false, "<presence/>", "");
    }
    void translatorsSeeWhatTheirRowsSay()
    {
        const auto [isDown, stanza, seenBy] = fetched<bool, QString, QString>();
        Onlookers world;
        world.rig.meetServerOfToday();
        world.room->presences->add("Room@rooms.x", *world.room);
        QCOMPARE(world.seenBy(isDown, stanza), seenBy);
        const bool isDealtWith = stanza.contains("dealt");
        if (isDown)
            QCOMPARE(world.rig.takeWire(), isDealtWith ? QStringList() : QStringList{stanza});
        else
            QCOMPARE(world.rig.takeUp().size(), isDealtWith ? 0 : 1);
    }

    void rowsOfTodayRestAtAnOldServer()
    {
        Onlookers world;
        world.rig.meetOldServer();
        QCOMPARE(world.seenBy(true, "<message to='a@b'/>"), "room");
        QCOMPARE(world.seenBy(false, "<message type='error'/>"), "room");
    }

    void presenceGoesOnlyToWhomAskedAndAsLongAsItIsAskedFor()
    {
        Onlookers world;
        auto& presences = *world.room->presences;
        QCOMPARE(world.seenBy(true, roomPresence), QString());
        presences.add("room@rooms.x", *world.room);
        presences.add({}, *world.room);
        QCOMPARE(world.seenBy(true, roomPresence), "room");
        QCOMPARE(world.seenBy(true, "<presence/>"), "room");
        presences.remove("ROOM@rooms.x");
        QCOMPARE(world.seenBy(true, roomPresence), QString());
        QCOMPARE(world.room->beginnings, 1); // though it has two rows
        world.rig.begin();
        QCOMPARE(world.room->beginnings, 2);
        QCOMPARE(world.seenBy(true, "<presence/>"), QString());
    }
};

BRELO_TEST(BridgeTableTest)
#include "BridgeTableTest.moc"
