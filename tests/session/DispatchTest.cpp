#include "session/SessionDispatch.h"
#include "session/SessionSteps.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesktop.h"
#include "support/Table.h"
#include "support/TestRunner.h"

namespace
{

QString query(const QString& ns, const QString& attributes = {}, const QString& inner = {})
{
    return QString("<iq %1><query xmlns=\"%2\">%3</query></iq>").arg(attributes, ns, inner);
}

// The steps of a session, written down as they are asked for.
struct RecordingSteps : SessionSteps {
    QStringList log;
    bool initiated = false;

    bool isInitiated() const override { return initiated; }
    void firstContact(const QString& line) override
    {
        log += "first:" + line;
        initiated = true;
    }
    void listRefused(const QString& reason) override { log += "refused:" + reason; }
    void finishSignIn() override { log += "finish"; }
    void backToSignIn() override { log += "back"; }
    void connectAgain() override { log += "again"; }
    QString userName() const override { return "ro&meo"; }
    QString password() const override { return "<secret>"; }
    void removeContact(const QString& jid) override { log += "remove:" + jid; }
    void showAdminMenu(const QString& server) override { log += "admin:" + server; }
    void writeNotice(const QString& from, const QString& body, const QString& subject) override
    {
        log += QStringList{"write", from, body, subject}.join(u'|');
    }
};

// A control that writes down which events reached it.
struct Control : ApplicationPlugIn {
    Control(QStringList& list, const char* place) : log(list), name(QLatin1String(place)) {}
    void OnIQ(PlugInContext&) override { log += name + ".OnIQ"; }
    void OnMessage(PlugInContext&) override { log += name + ".OnMessage"; }
    void OnPresence(PlugInContext&) override { log += name + ".OnPresence"; }

    QStringList& log;
    QString name;
};

// All destinations but the dispatch's own steps.
constexpr std::pair<Destination, const char*> places[] = {{Destination::StreamUp, "connected"},
                                                          {Destination::StreamDown, "ended"},
                                                          {Destination::Roster, "roster"},
                                                          {Destination::Agents, "agents"},
                                                          {Destination::Chat, "chat"},
                                                          {Destination::GroupChat, "room"},
                                                          {Destination::Notices, "notices"},
                                                          {Destination::AuthorizationRequest, "ask"},
                                                          {Destination::VCard, "vcard"},
                                                          {Destination::Transport, "transport"},
                                                          {Destination::GatewaySubscribed, "gateway"},
                                                          {Destination::Search, "search"},
                                                          {Destination::ServerCheck, "check"},
                                                          {Destination::SearchServices, "services"},
                                                          {Destination::ChatRooms, "rooms"},
                                                          {Destination::OnlineUsers, "users"},
                                                          {Destination::FileTransfer, "file"}};

} // namespace

// The dispatch of every received stanza, with all that it asks for written down.
class DispatchTest : public QObject
{
    Q_OBJECT
    struct Fixture {
        RecordingDesktop world;
        Client client;
        RecordingSteps steps;
        SessionDispatch dispatch{client, steps};
        FakeEngine engine{client};
        std::vector<std::unique_ptr<Control>> controls;
        Fixture()
        {
            client.desktop = world.desktop();
            engine.plugIn(&dispatch);
            for (const auto& [destination, name] : places) {
                controls.push_back(std::make_unique<Control>(steps.log, name));
                dispatch.routes.take(destination, *controls.back());
            }
        }
        QStringList takeLog() { return std::exchange(steps.log, {}); }
    };
    std::optional<Fixture> f;

private slots:
    void init() { f.emplace(); }

    void listsComeInEitherOrder_data()
    {
        columns<QString, QString, QStringList>("first", "second", "log");
        const QString roster = query("jabber:iq:roster");
        const QString agents = query("jabber:iq:agents");
        row("roster first", roster, agents,
            QStringList{"first:Receiving Gateways...", "roster.OnIQ", "finish", "agents.OnIQ"});
        row("agents first", agents, roster,
            QStringList{"first:Receiving Contacts", "agents.OnIQ", "finish", "roster.OnIQ"});
    }
    void listsComeInEitherOrder()
    {
        const auto [first, second] = fetched<QString, QString>();
        f->engine.inject(first);
        QCOMPARE(f->engine.takeSent(), QStringList());
        f->engine.inject(second);
        QTEST(f->takeLog(), "log");
        const QStringList finishing = {"<presence><status>online</status></presence>",
                                       "<iq type=\"get\" id=\"VRX_GET_SUPPORTEDNS\" to=\"montague.example\">"
                                       "<query xmlns=\"jabber:iq:browse\"></query></iq>"};
        QCOMPARE(f->engine.takeSent(), finishing);
        // A later push sends them again.
        f->engine.inject(second);
        QCOMPARE(f->engine.takeSent(), finishing);
    }

    void listsAreReadOnceAQueryAndUnlessIgnored()
    {
        f->steps.initiated = true;
        f->client.site.UpdateHost = "update.example";
        f->engine.inject("<iq><query xmlns='jabber:iq:roster'/><query xmlns='jabber:iq:roster'/></iq>");
        QCOMPARE(f->takeLog().count("roster.OnIQ"), 2); // once a query
        QCOMPARE(f->engine.takeSent().value(0),
                 QString(R"(<presence to="BreloIM@update.example/%1/ita"/>)").arg(QString(BRELO_VERSION)));
        f->client.IgnoreIQ = true;
        f->engine.inject(query("jabber:iq:roster"));
        QCOMPARE(f->takeLog(), QStringList());
    }

    void firstTimeQuestion_data()
    {
        columns<int, QStringList, QStringList>("answer", "sent", "log");
        row("yes", int(MessageBoxes::Answer::Yes),
            QStringList{
                R"(<iq type="set" id="VRX_new"><query xmlns="jabber:iq:register"><username>ro&amp;meo)"
                "</username><password>&lt;secret&gt;</password><resource></resource></query></iq>"},
            QStringList());
        row("no", int(MessageBoxes::Answer::No), QStringList(), QStringList{"back"});
    }
    void firstTimeQuestion()
    {
        QFETCH(int, answer);
        f->world.boxes.answers = {MessageBoxes::Answer(answer)};
        const QString refusal = query("jabber:iq:auth", "type=\"error\"");
        f->engine.inject(refusal);
        QCOMPARE(f->world.boxes.shown.size(), 1);
        QCOMPARE(f->world.boxes.shown[0].title, "Information");
        QCOMPARE(f->world.boxes.shown[0].buttons, MessageBoxes::Buttons::YesNo);
        QTEST(f->engine.takeSent(), "sent");
        QTEST(f->takeLog(), "log");
        // Right after an attempted registration the question doesn't come again; after a No it does.
        const int registered = answer == int(MessageBoxes::Answer::Yes) ? 1 : 0;
        f->engine.inject(refusal);
        QCOMPARE(f->world.boxes.shown.size(), 2 - registered);
        // An auth result asks nothing.
        f->engine.inject(query("jabber:iq:auth", "type=\"result\""));
        QCOMPARE(f->world.boxes.shown.size(), 2 - registered);
        // The next sign-in is another: after a refused one, and after one that came to its list.
        f->world.boxes.answers = {MessageBoxes::Answer(answer), MessageBoxes::Answer(answer)};
        f->engine.inject(refusal);
        QCOMPARE(f->world.boxes.shown.size(), 3 - registered);
        f->steps.initiated = true;
        f->engine.inject(query("jabber:iq:roster"));
        f->engine.inject(refusal);
        QCOMPARE(f->world.boxes.shown.size(), 4 - registered);
    }

    void registrationAnswers()
    {
        f->engine.inject("<iq type=\"result\" id=\"VRX_new\"/>");
        QCOMPARE(f->engine.gateway().disconnects, 1);
        QCOMPARE(f->takeLog(), QStringList{"again"});
        f->engine.inject("<iq type=\"error\" id=\"VRX_new\"><error code=\"409\">taken</error></iq>");
        QCOMPARE(f->engine.gateway().disconnects, 2);
        QCOMPARE(f->world.boxes.shown.value(0).title, "Server Message");
        QCOMPARE(f->world.boxes.shown.value(0).text, "taken");
        QCOMPARE(f->takeLog(), QStringList{"back"});
    }

    void namespacesDecideTheAdminMenu()
    {
        const std::pair<QString, bool> answers[] = {{"<ns>jabber:iq:time</ns><ns>JABBER:IQ:ADMIN</ns>", true},
                                                    {"<ns>jabber:iq:time</ns>", false},
                                                    {"", true}}; // an empty one keeps the old mark
        for (const auto& [ns, admin] : answers) {
            f->client.settings.UserMode = true;
            f->engine.inject(query("jabber:iq:browse", "type='result' id='VRX_GET_SUPPORTEDNS'", ns));
            QCOMPARE(f->client.settings.UserMode, admin);
            QCOMPARE(f->takeLog().contains("admin:montague.example"), admin && !ns.isEmpty());
        }
    }

    void stanzasFindTheirPlace_data()
    {
        columns<QString, QString>("stanza", "log");
        const auto iq = [](const char* name, const QString& ns, const QString& id, const QString& log,
                           const QString& from = "hall") {
            const QString attributes = "type='result' id='%1' from='%2@conference.example'";
            row(name, query(ns, attributes.arg(id, from)), log);
        };
        const QString browse = "jabber:iq:browse";
        iq("registration", "jabber:iq:register", "x", "transport.OnIQ");
        iq("end of a registration", "other", "VRX_UNREGISTER", "transport.OnIQ");
        iq("search", "jabber:iq:search", "x", "search.OnIQ");
        iq("card", "vcard-temp", "JCOM_51", "vcard.OnIQ");
        iq("refusal of a card, without it", "other", "JCOM_51", "vcard.OnIQ");
        iq("conference", "jabber:iq:conference", "x", "room.OnIQ");
        iq("file", "jabber:iq:oob", "x", "file.OnIQ");
        iq("another's namespace", "jabber:iq:Search", "x", "");
        iq("server check", browse, "Check_Server", "check.OnIQ");
        iq("services", browse, "VRX_GET_SERVICE", "services.OnIQ");
        iq("browser", browse, "VRX_browser", "services.OnIQ");
        iq("rooms", browse, "VRX_GET_CHATROOM", "rooms.OnIQ", "room");
        iq("components", browse, "VRX_CHATROOM?", "rooms.OnIQ");
        iq("a room's push", browse, "other", "room.OnIQ", "room");
        iq("users", browse, "VRX_GET_ONLINEUSERS", "users.OnIQ");
        iq("users, of a room", browse, "VRX_GET_ONLINEUSERS", "room.OnIQ", "room");
        iq("nobody's", browse, "other", "");
        row("a refused change",
            query("jabber:iq:roster", "type='error' id='UP_NICK'", "<item jid='a@b'/>")
                .replace("</iq>", "<error code='405'>no</error></iq>"),
            "write|montague.example|The server refused a change of your contact list: no|Contact list");
        // What doesn't answer a request of ours, or comes from elsewhere, does nothing under its id.
        const auto alien = [](const char* name, const QString& type, const QString& ns, const QString& id) {
            const QString attributes = "type='%1' id='%2' from='tybalt@verona.example/x'";
            row(name, query(ns, attributes.arg(type, id), "<ns>jabber:iq:admin</ns>"), "");
        };
        alien("stranger's namespaces", "set", browse, "VRX_GET_SUPPORTEDNS");
        alien("stranger's namespaces, as a result", "result", browse, "VRX_GET_SUPPORTEDNS");
        alien("stranger's account", "result", "other", "VRX_new");
        alien("stranger's refusal of an account", "error", "other", "VRX_new");
        for (const char* id : {"Check_Server", "VRX_GET_SERVICE", "VRX_browser", "VRX_GET_CHATROOM",
                               "VRX_CHATROOM?", "VRX_GET_ONLINEUSERS"})
            alien(id, "set", browse, id);
        for (const char* ns : {"jabber:iq:register", "jabber:iq:search", "vcard-temp"})
            alien(ns, "set", ns, "x");
        alien("stranger's end of a registration", "set", "other", "VRX_UNREGISTER");
        alien("stranger's refusal of a card", "get", "other", "JCOM_51");
        row("contact list refused", query("jabber:iq:roster", "type='error' id='brelo-roster'"),
            "refused:The server answered with error 500.");
        const auto message = [](const char* name, const QString& attributes, const QString& log,
                                const QString& inner = {}) {
            row(name, QString("<message %1>%2<body>b</body></message>").arg(attributes, inner), log);
        };
        message("headline", "type='headline' from='news.example'", "notices.OnMessage");
        message("mail notice off", "type='headline' from='MSN.montague.example'", "",
                "<subject>Hotmail</subject>");
        message("mail notice of another subject", "type='headline' from='msn.montague.example'",
                "notices.OnMessage", "<subject>hotmail</subject>");
        message("error while errors are off", "type='error' from='a@b'", "");
        message("room", "type='groupchat' from='r@c/n'", "room.OnMessage");
        message("chat", "type='chat' from='a@b/r'", "chat.OnMessage");
        message("no type", "from='a@b'", "chat.OnMessage");
        message("no sender", "type='chat'", "chat.OnMessage");
        message("capital letter", "type='Normal' from='a@b'", "chat.OnMessage");
        message("blocked, with a resource", "type='chat' from='tybalt@b/r'", "");
        message("blocked, headline", "type='headline' from='tybalt@b'", "");
        message("blocked, error", "type='error' from='tybalt@b'", "");
        message("blocked, room", "type='groupchat' from='tybalt@b/n'", "");
        message("blocked in another case", "type='chat' from='Tybalt@b'", "chat.OnMessage");
        const auto presence = [](const char* name, const QString& attributes, const QString& log) {
            row(name, "<presence " + attributes + "/>", log);
        };
        const QString note = "write|%1|Authorization notification|The Contact %2,roster.OnPresence";
        presence("plain", "from='a@b/r'", "roster.OnPresence");
        presence("blocked, plain", "from='tybalt@b/r'", "roster.OnPresence");
        presence("blocked, gone", "from='tybalt@b/r' type='unavailable'", "roster.OnPresence");
        presence("blocked, asks", "from='tybalt@b' type='subscribe'", "");
        presence("blocked, refused", "from='tybalt@b' type='unsubscribed'", "roster.OnPresence");
        row("blocked, calls", query("jabber:iq:oob", "type='set' from='tybalt@b/r'"), "");
        presence("asks", "from='a@b' type='subscribe'", "ask.OnPresence");
        presence("accepted", "from='a@b' type='subscribed'",
                 note.arg("a@b", "accepted the Authorisation Request"));
        presence("removed", "from='a@b/x' type='unsubscribe'",
                 note.arg("a@b/x", "removed you from his Contact List") + ",remove:a@b");
        presence("refused", "from='a@b' type='unsubscribed'", note.arg("a@b", "refused your Request"));
        presence("refused by a blocked one", "from='tybalt@b' type='unsubscribed'", "roster.OnPresence");
        presence("error of somebody, errors off", "from='a@b' type='error'", "");
        presence("error of nobody", "type='error'", "notices.OnPresence");
        presence("error of a gateway, errors off", "from='icq.example' type='error'", "notices.OnPresence");
        presence("gateway unsubscribed", "from='icq.example' type='unsubscribed'", "roster.OnPresence");
    }
    void stanzasFindTheirPlace()
    {
        QFETCH(QString, stanza);
        f->steps.initiated = true;
        f->client.MyAgents.AddItem("icq.example", {}, false, false);
        f->client.MyBanList.Add("tybalt@b");
        auto session = f->client.Core->PluginManager->sessions().session("room@conference.example");
        session->Properties().Add(std::make_shared<QObject>(), "IsGroupchat");
        f->engine.inject(stanza);
        QTEST(f->takeLog().join(u','), "log");
    }

    // The check's error and the administration's namespace end their stanza; their like does not.
    void someStepsEndTheirStanza_data()
    {
        columns<QString, QString, int>("attributes", "inner", "times");
        row("server check", "id='Check_Server' type='result'", QString(), 2);
        row("server check, error", "id=\"Check_Server\" type=\"error\"", QString(), 1);
        row("services, error", "id=\"VRX_browser\" type=\"error\"", QString(), 2);
        row("namespaces", "type=\"result\" id=\"VRX_GET_SUPPORTEDNS\"", "<ns>jabber:iq:time</ns>", 1);
        row("namespaces, administration", "type=\"result\" id=\"VRX_GET_SUPPORTEDNS\"",
            "<ns>jabber:iq:admin</ns>", 0);
    }
    void someStepsEndTheirStanza()
    {
        const auto [attributes, inner] = fetched<QString, QString>();
        const QString first = QString("<query xmlns=\"jabber:iq:browse\">%1</query>").arg(inner);
        const bool namespaces = !inner.isEmpty();
        const QString second = namespaces ? QString("<query xmlns=\"jabber:iq:search\"/>") : first;
        f->engine.inject(QString("<iq %1>%2%3</iq>").arg(attributes, first, second));
        QTEST(int(f->takeLog().filter(".OnIQ").size()), "times");
    }

    void gatewaysAreAlwaysAccepted()
    {
        f->steps.initiated = true;
        f->client.MyAgents.AddItem("icq.example", {}, false, false);
        f->engine.inject("<presence type='subscribe' from='icq.example/registered'/>");
        QCOMPARE(f->engine.takeSent(),
                 QStringList({R"(<presence to="icq.example/registered" type="subscribed"/>)",
                              R"(<presence to="icq.example/registered" type="subscribe"/>)"}));
        QCOMPARE(f->takeLog(), QStringList{"gateway.OnPresence"});
    }

    void theEnginesOwnPresences()
    {
        f->engine.connectStream();
        QCOMPARE(f->takeLog(), QStringList{"connected.OnPresence"});
        f->engine.inject("<presence from='a@b'/>"); // before the list
        f->engine.closeStream();
        QCOMPARE(f->takeLog(), QStringList{"ended.OnPresence"}); // no list yet: nothing to empty
        f->steps.initiated = true;
        f->engine.closeStream();
        QCOMPARE(f->takeLog(), QStringList{"notices.OnPresence"});
        for (const bool initiated : {false, true}) { // and not those of others
            f->steps.initiated = initiated;
            f->engine.inject("<presence type='connect' from='a@b'/>");
            f->engine.inject("<presence type='close' from='a@b'/>");
            QCOMPARE(f->takeLog(), initiated ? QStringList("roster.OnPresence") : QStringList());
        }
    }
};

BRELO_TEST(DispatchTest)
#include "DispatchTest.moc"
