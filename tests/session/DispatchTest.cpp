#include "RecordingSteps.h"
#include "session/SessionDispatch.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesktop.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QTest>

namespace
{

const QString server = QStringLiteral("montague.example");

QString query(const QString& ns, const QString& attributes = {}, const QString& inner = {})
{
    return QStringLiteral("<iq %1><query xmlns=\"%2\">%3</query></iq>").arg(attributes, ns, inner);
}

// A control that writes down which events reached it.
class Control : public ApplicationPlugIn
{
public:
    Control(QStringList& log, const char* name) : log_(log), name_(QLatin1String(name)) {}
    void OnIQ(PlugInContext&) override { log_ += name_ + QStringLiteral(".OnIQ"); }
    void OnMessage(PlugInContext&) override { log_ += name_ + QStringLiteral(".OnMessage"); }
    void OnPresence(PlugInContext&) override { log_ += name_ + QStringLiteral(".OnPresence"); }

private:
    QStringList& log_;
    QString name_;
};

// All destinations but the dispatch's own steps.
constexpr std::pair<Destination, const char*> places[] = {
    {Destination::StreamUp, "connected"},
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
    {Destination::FileTransfer, "file"},
};

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

private slots:
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
        QFETCH(QString, first);
        QFETCH(QString, second);
        Fixture f;
        f.engine.inject(first);
        QCOMPARE(f.engine.takeSent(), QStringList());
        f.engine.inject(second);
        QTEST(f.takeLog(), "log");
        const QStringList finishing = {"<presence><status>online</status></presence>",
                                       "<iq type=\"get\" id=\"VRX_GET_SUPPORTEDNS\" to=\"montague.example\">"
                                       "<query xmlns=\"jabber:iq:browse\"></query></iq>"};
        QCOMPARE(f.engine.takeSent(), finishing);
        // A later push sends them again.
        f.engine.inject(second);
        QCOMPARE(f.engine.takeSent(), finishing);
    }

    void versionIsToldWhereAHostIsConfigured()
    {
        Fixture f;
        f.steps.initiated = true;
        f.client.site.UpdateHost = QStringLiteral("update.example");
        f.engine.inject(query("jabber:iq:roster"));
        QCOMPARE(f.engine.takeSent().value(0),
                 QStringLiteral("<presence to=\"BreloIM@update.example/%1/ita\"/>")
                     .arg(QStringLiteral(BRELO_VERSION)));
    }

    void twoQueriesInOneStanzaAreDispatchedTwice()
    {
        Fixture f;
        f.steps.initiated = true;
        f.engine.inject("<iq><query xmlns=\"jabber:iq:roster\"/><query xmlns=\"jabber:iq:roster\"/></iq>");
        QCOMPARE(f.takeLog().count("roster.OnIQ"), 2);
    }

    void ignoredIqsAreUnread()
    {
        Fixture f;
        f.client.IgnoreIQ = true;
        f.engine.inject(query("jabber:iq:roster"));
        QCOMPARE(f.takeLog(), QStringList());
    }

    void firstTimeQuestion_data()
    {
        columns<int, QStringList, QStringList>("answer", "sent", "log");
        row("yes", int(MessageBoxes::Answer::Yes),
            QStringList{"<iq type=\"set\" id=\"VRX_new\"><query xmlns=\"jabber:iq:register\">"
                        "<username>ro&amp;meo</username><password>&lt;secret&gt;</password>"
                        "<resource></resource></query></iq>"},
            QStringList());
        row("no", int(MessageBoxes::Answer::No), QStringList(), QStringList{"back"});
    }

    void firstTimeQuestion()
    {
        QFETCH(int, answer);
        Fixture f;
        f.world.boxes.answers = {MessageBoxes::Answer(answer)};
        const QString refusal = query("jabber:iq:auth", "type=\"error\"");
        f.engine.inject(refusal);
        QCOMPARE(f.world.boxes.shown.size(), 1);
        QCOMPARE(f.world.boxes.shown[0].title, "Information");
        QCOMPARE(f.world.boxes.shown[0].buttons, MessageBoxes::Buttons::YesNo);
        QTEST(f.engine.takeSent(), "sent");
        QTEST(f.takeLog(), "log");
        // After an attempted registration the question doesn't come again; after a No it does.
        f.engine.inject(refusal);
        QCOMPARE(f.world.boxes.shown.size(), answer == int(MessageBoxes::Answer::Yes) ? 1 : 2);
        // An auth result asks nothing.
        f.engine.inject(query("jabber:iq:auth", "type=\"result\""));
        QCOMPARE(f.world.boxes.shown.size(), answer == int(MessageBoxes::Answer::Yes) ? 1 : 2);
    }

    void registrationAnswers()
    {
        Fixture f;
        f.engine.inject("<iq type=\"result\" id=\"VRX_new\"/>");
        QCOMPARE(f.engine.gateway().disconnects, 1);
        QCOMPARE(f.takeLog(), QStringList{"again"});
        f.engine.inject("<iq type=\"error\" id=\"VRX_new\"><error code=\"409\">taken</error></iq>");
        QCOMPARE(f.engine.gateway().disconnects, 2);
        QCOMPARE(f.world.boxes.shown.value(0).title, "Server Message");
        QCOMPARE(f.world.boxes.shown.value(0).text, "taken");
        QCOMPARE(f.takeLog(), QStringList{"back"});
    }

    void namespacesDecideTheAdminMenu_data()
    {
        columns<QString, bool>("ns", "admin");
        row("last", "<ns>jabber:iq:time</ns><ns>JABBER:IQ:ADMIN</ns>", true);
        row("none", "<ns>jabber:iq:time</ns>", false);
        row("empty answer keeps the old mark", QString(), true);
    }

    void namespacesDecideTheAdminMenu()
    {
        QFETCH(QString, ns);
        QFETCH(bool, admin);
        Fixture f;
        f.client.settings.UserMode = true;
        f.engine.inject(query("jabber:iq:browse", "id=\"VRX_GET_SUPPORTEDNS\"", ns));
        QCOMPARE(f.client.settings.UserMode, admin);
        QCOMPARE(f.takeLog().contains("admin:montague.example"), admin && !ns.isEmpty());
    }

    void iqsFindTheirPlace_data()
    {
        columns<QString, QString, bool, QString>("ns", "id", "room", "log");
        const QString browse = QStringLiteral("jabber:iq:browse");
        row("registration", "jabber:iq:register", "x", false, "transport.OnIQ");
        row("end of a registration", "other", "VRX_UNREGISTER", false, "transport.OnIQ");
        row("search", "jabber:iq:search", "x", false, "search.OnIQ");
        row("card", "vcard-temp", "JCOM_51", false, "vcard.OnIQ");
        row("refusal of a card, without it", "other", "JCOM_51", false, "vcard.OnIQ");
        row("conference", "jabber:iq:conference", "x", false, "room.OnIQ");
        row("file", "jabber:iq:oob", "x", false, "file.OnIQ");
        row("capital letter", "jabber:iq:Search", "x", false, "");
        row("server check", browse, "Check_Server", false, "check.OnIQ");
        row("services", browse, "VRX_GET_SERVICE", false, "services.OnIQ");
        row("browser", browse, "VRX_browser", false, "services.OnIQ");
        row("rooms", browse, "VRX_GET_CHATROOM", true, "rooms.OnIQ");
        row("components", browse, "VRX_CHATROOM?", false, "rooms.OnIQ");
        row("a room's push", browse, "other", true, "room.OnIQ");
        row("users", browse, "VRX_GET_ONLINEUSERS", false, "users.OnIQ");
        row("users, of a room", browse, "VRX_GET_ONLINEUSERS", true, "room.OnIQ");
        row("nobody's", browse, "other", false, "");
    }

    void iqsFindTheirPlace()
    {
        QFETCH(QString, ns);
        QFETCH(QString, id);
        QFETCH(bool, room);
        Fixture f;
        const QString from = QStringLiteral("verona@conference.example");
        if (room) {
            f.client.Core->PluginManager->sessions().session(from)->Properties().Add(
                std::make_shared<QObject>(), "IsGroupchat");
        }
        f.engine.inject(query(ns, QStringLiteral("type=\"result\" id=\"%1\" from=\"%2\"").arg(id, from)));
        QTEST(f.takeLog().join(u','), "log");
    }

    // The check's error and the administration's namespace end their stanza; their like does not.
    void someStepsEndTheirStanza_data()
    {
        columns<QString, QString, int>("attributes", "inner", "times");
        row("server check", "id=\"Check_Server\" type=\"result\"", QString(), 2);
        row("server check, error", "id=\"Check_Server\" type=\"error\"", QString(), 1);
        row("services, error", "id=\"VRX_browser\" type=\"error\"", QString(), 2);
        row("namespaces", "id=\"VRX_GET_SUPPORTEDNS\"", "<ns>jabber:iq:time</ns>", 1);
        row("namespaces, administration", "id=\"VRX_GET_SUPPORTEDNS\"", "<ns>jabber:iq:admin</ns>", 0);
    }

    void someStepsEndTheirStanza()
    {
        QFETCH(QString, attributes);
        QFETCH(QString, inner);
        Fixture f;
        const QString first = QStringLiteral("<query xmlns=\"jabber:iq:browse\">%1</query>").arg(inner);
        const bool namespaces = !inner.isEmpty();
        const QString second = namespaces ? QStringLiteral("<query xmlns=\"jabber:iq:search\"/>") : first;
        f.engine.inject(QStringLiteral("<iq %1>%2%3</iq>").arg(attributes, first, second));
        QTEST(int(f.takeLog().filter(".OnIQ").size()), "times");
    }

    void aStanzaThatNobodyTakesIsDropped()
    {
        Fixture f;
        f.dispatch.routes = {};
        f.engine.inject(query("jabber:iq:search"));
        f.engine.inject("<message type=\"groupchat\" from=\"r@c/n\"/>");
        f.engine.connectStream();
        QCOMPARE(f.takeLog() + f.engine.takeSent(), QStringList());
    }

    void messagesFindTheirPlace_data()
    {
        columns<QString, QString>("message", "log");
        const auto from = [](const char* text) {
            return QStringLiteral("<message ") + QLatin1String(text) + u'>';
        };
        const QString end = QStringLiteral("<body>b</body></message>");
        row("headline", from("type=\"headline\" from=\"news.example\"") + end, "notices.OnMessage");
        row("mail notice off",
            from("type=\"headline\" from=\"MSN.montague.example\"") +
                QStringLiteral("<subject>Hotmail</subject>") + end,
            "");
        row("mail notice of another subject",
            from("type=\"headline\" from=\"msn.montague.example\"") +
                QStringLiteral("<subject>hotmail</subject>") + end,
            "notices.OnMessage");
        row("error while errors are off", from("type=\"error\" from=\"a@b\"") + end, "");
        row("room", from("type=\"groupchat\" from=\"r@c/n\"") + end, "room.OnMessage");
        row("chat", from("type=\"chat\" from=\"a@b/r\"") + end, "chat.OnMessage");
        row("no type", from("from=\"a@b\"") + end, "chat.OnMessage");
        row("no sender", from("type=\"chat\"") + end, "chat.OnMessage");
        row("capital letter", from("type=\"Normal\" from=\"a@b\"") + end, "chat.OnMessage");
        row("blocked, with a resource", from("type=\"chat\" from=\"tybalt@b/r\"") + end, "");
        row("blocked in another case", from("type=\"chat\" from=\"Tybalt@b\"") + end, "chat.OnMessage");
    }

    void messagesFindTheirPlace()
    {
        QFETCH(QString, message);
        Fixture f;
        f.client.MyBanList.Add("tybalt@b");
        f.engine.inject(message);
        QTEST(f.takeLog().join(u','), "log");
    }

    void presencesFindTheirPlace_data()
    {
        columns<QString, bool, QString>("attributes", "initiated", "log");
        row("before the list", "from=\"a@b\"", false, "");
        row("plain", "from=\"a@b/r\"", true, "roster.OnPresence");
        row("asks", "from=\"a@b\" type=\"subscribe\"", true, "ask.OnPresence");
        row("accepted", "from=\"a@b\" type=\"subscribed\"", true,
            "write|a@b|Authorization notification|The Contact accepted the Authorisation "
            "Request,roster.OnPresence");
        row("removed", "from=\"a@b/x\" type=\"unsubscribe\"", true,
            "write|a@b/x|Authorization notification|The Contact removed you from his Contact "
            "List,roster.OnPresence,remove:a@b");
        row("refused", "from=\"a@b\" type=\"unsubscribed\"", true,
            "write|a@b|Authorization notification|The Contact refused your "
            "Request,roster.OnPresence");
        row("error of somebody, errors off", "from=\"a@b\" type=\"error\"", true, "");
        row("error of nobody", "type=\"error\"", true, "notices.OnPresence");
        row("gateway unsubscribed", "from=\"icq.example\" type=\"unsubscribed\"", true, "roster.OnPresence");
    }

    void presencesFindTheirPlace()
    {
        QFETCH(QString, attributes);
        QFETCH(bool, initiated);
        Fixture f;
        f.steps.initiated = initiated;
        f.client.MyAgents.AddItem("icq.example", {}, false, false);
        f.engine.inject(QStringLiteral("<presence %1/>").arg(attributes));
        QTEST(f.takeLog().join(u','), "log");
    }

    void gatewaysAreAlwaysAccepted()
    {
        Fixture f;
        f.steps.initiated = true;
        f.client.MyAgents.AddItem("icq.example", {}, false, false);
        f.engine.inject("<presence type=\"subscribe\" from=\"icq.example/registered\"/>");
        QCOMPARE(f.engine.takeSent(),
                 (QStringList{"<presence to=\"icq.example/registered\" type=\"subscribed\"/>",
                              "<presence to=\"icq.example/registered\" type=\"subscribe\"/>"}));
        QCOMPARE(f.takeLog(), QStringList{"gateway.OnPresence"});
    }

    void theEnginesOwnPresences()
    {
        Fixture f;
        f.engine.connectStream();
        QCOMPARE(f.takeLog(), QStringList{"connected.OnPresence"});
        f.engine.closeStream();
        QCOMPARE(f.takeLog(), QStringList()); // no list yet: nothing to empty
        f.steps.initiated = true;
        f.engine.closeStream();
        QCOMPARE(f.takeLog(), QStringList{"notices.OnPresence"});
    }
};

BRELO_TEST(DispatchTest)
#include "DispatchTest.moc"
