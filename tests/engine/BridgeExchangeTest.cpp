#include "engine/Xml.h"
#include "engine/bridge/BridgeContext.h"
#include "support/Table.h"
#include "support/TestRunner.h"

const QString info = "<query xmlns='http://jabber.org/protocol/disco#info'>%1</query>";

// The bridge's own requests, and what it learns by them.
class BridgeExchangeTest : public QObject
{
    Q_OBJECT

    // A session of romeo@montague.example that is told what happens, one word or two at a time, and writes
    // down what the bridge's requests come to.
    struct Script {
        Script() { begin(); }
        void begin() { context.begin({"romeo@montague.example/orchard", "montague.example"}); }
        void play(const QString& events)
        {
            for (const auto& event : events.split(u'|'))
                step(event.section(u' ', 0, 0), event.section(u' ', 1));
        }
        void step(const QString& event, const QString& address)
        {
            // A request of the id 7, of one that is made, of no deadline; a question what stands there.
            if (event == "ask")
                ask({.to = address, .payload = {}, .id = "7"});
            else if (event == "make")
                ask({.to = address, .payload = {}});
            else if (event == "wait")
                ask({.to = address, .payload = {}, .deadlineMs = std::nullopt});
            else if (event == "learn")
                learn(address);
            else if (event == "tick")
                context.timers.tick(address.toInt());
            else if (event == "begin")
                begin();
            else
                answer(event, address);
            for (const auto& text : std::exchange(context.out, {}).wire)
                noteSent(xml::parsed(QString::fromUtf8(text))->document_element());
        }
        void ask(const Exchange::Request& request)
        {
            context.exchange.ask(request, [this, number = ++asked](const Exchange::Answer& answer) {
                log << QString::number(number) + (answer.result() ? "=result" : result(answer.error));
            });
        }
        void learn(const QString& address)
        {
            context.knowledge.whenKnown(address, [this](const Knowledge::Service& service) {
                const bool isOfToday = service.kind == Knowledge::Kind::OfToday;
                log << (isOfToday ? service.info.features.join(u' ') : "old" + result(service.error));
            });
        }
        static QString result(const StanzaError& error)
        {
            return QString("=%1%2").arg(error.code).arg(error.serverText);
        }
        // To the request that was sent last: a result with features, without; an error.
        void answer(const QString& kind, const QString& from)
        {
            const QString error = "<error type='cancel'><item-not-found "
                                  "xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/>gone</error>";
            const auto content =
                kind == "error" ? error : info.arg(kind == "info" ? "<feature var='f'/>" : "");
            const auto sender = from.isEmpty() ? QString() : QString(" from='%1'").arg(from);
            const auto text = QString("<iq type='%1' id='%2'%3>%4</iq>")
                                  .arg(kind == "error" ? "error" : "result", id, sender, content);
            if (!context.exchange.take(Stanza::fromXml(text)))
                log << "passed";
        }
        void noteSent(pugi::xml_node iq)
        {
            id = xml::attribute(iq, "id");
            if (iq.child("query"))
                log << "?" + xml::attribute(iq, "to");
        }
        BridgeContext context;
        QStringList log;
        int asked = 0;
        QString id; // of the request that was sent last
    };

private slots:
    void requestsComeToAnEnd_data()
    {
        columns<QString, QString>("events", "log");
        row("result", "ask a@b|result a@b", "1=result");
        row("error", "ask a@b|error a@b", "1=404gone");
        row("answered twice", "ask a@b|result a@b|result a@b", "1=result|passed");
        row("of another case", "ask A@b/C|result a@B/C", "1=result");
        row("wrong address", "ask a@b|result evil@b|result|result a@b", "passed|passed|1=result");
        row("wrong address, made id", "make a@b|result evil@b|error a@b", "1=404gone");
        row("home", "ask|result montague.example|ask montague.example|result Romeo@montague.example",
            "1=result|2=result");
        row("no answer yet", "ask a@b|tick 500|tick 10499", "");
        row("no answer in time", "ask a@b|tick 500|tick 10500|tick 99999", "1=504");
        row("late", "ask a@b|tick 0|tick 10000|result a@b|result a@b", "1=504|passed");
        row("late, and the next one's", "ask a@b|tick 0|tick 10000|ask a@b|result a@b|error a@b",
            "1=504|2=404gone");
        row("lost, and the next one's", "ask a@b|tick 0|tick 10000|tick 10000|tick 70000|ask a@b|result a@b",
            "1=504|2=result");
        row("much too late, made id", "make a@b|tick 0|tick 10000|tick 10000|tick 70000|result a@b", "1=504");
        row("patient", "wait a@b|tick 0|tick 9999999|result a@b", "1=result");
        row("same id twice", "ask a@b|ask a@b|error a@b|result a@b", "1=404gone|2=result");
        row("same id to two", "ask a@b|ask c@d|result c@d|error a@b", "2=result|1=404gone");
        row("second given up only", "ask a@b|tick 0|ask a@b|result a@b|tick 5000|tick 10000|tick 15000",
            "1=result|2=504");
        row("new session", "ask a@b|make a@b|begin|tick 0|tick 10000|ask c@d|result a@b", "passed");
        row("asked once", "learn c.x|learn c.x|learn C.x|info c.x|learn c.x", "?c.x|f|f|f|f");
        row("each for itself", "learn c.x|info c.x|learn d.x|error d.x|learn c.x",
            "?c.x|f|?d.x|old=404gone|f");
        row("home is one", "learn|learn romeo@montague.example|info|learn montague.example",
            "?montague.example|f|f|f");
        row("refused", "learn c.x|error c.x|learn c.x", "?c.x|old=404gone|old=404gone");
        row("names nothing", "learn c.x|result c.x", "?c.x|old=0");
        row("silent", "learn c.x|tick 0|tick 10000|info c.x|learn c.x", "?c.x|old=504|old=504");
        row("anew in a new session", "learn c.x|begin|learn c.x|info c.x", "?c.x|?c.x|f");
    }
    void requestsComeToAnEnd()
    {
        const auto [events, log] = fetched<QString, QString>();
        Script script;
        script.play(events);
        QCOMPARE(script.log.join(u'|'), log);
    }

    void requestIsWrittenAsAsked()
    {
        BridgeContext context;
        const auto ignore = [](const Exchange::Answer&) {};
        context.exchange.ask({.to = "r&d@b", .payload = "<q/>", .type = "set", .id = "a\"b"}, ignore);
        context.exchange.ask({.to = {}, .payload = "<q/>"}, ignore);
        QCOMPARE(context.out.wire,
                 QList<QByteArray>({"<iq type=\"set\" id=\"a&quot;b\" to=\"r&amp;d@b\"><q/></iq>",
                                    "<iq type=\"get\" id=\"brelo-q2\"><q/></iq>"}));
    }

    void refusedNamespacesAreRememberedByAddress()
    {
        Script script;
        auto& knowledge = script.context.knowledge;
        knowledge.refuse("C.x", "old");
        knowledge.refuse("montague.example", "old");
        QVERIFY(knowledge.isRefused("c.x", "old") && knowledge.isRefused({}, "old"));
        QVERIFY(!knowledge.isRefused("c.x", "new") && !knowledge.isRefused("d.x", "old"));
        script.play("begin");
        QVERIFY(!knowledge.isRefused("c.x", "old") && !knowledge.isRefused({}, "old"));
    }

    void onlyTheLatestForeignAddressesAreRemembered()
    {
        using Kind = Knowledge::Kind;
        Script script;
        const auto kindOf = [&](const QString& address) { return script.context.knowledge.at(address).kind; };
        script.play("learn|info|learn asked.x");
        for (int number = 0; number < Knowledge::mostForeign; ++number)
            script.play(QString("learn %1.x|info %1.x").arg(number));
        QCOMPARE(kindOf("0.x"), Kind::Unknown);
        QCOMPARE(kindOf("1.x"), Kind::OfToday);
        QCOMPARE(kindOf("asked.x"), Kind::Asked);
        QVERIFY(script.context.knowledge.homeIsOfToday());
        // Nor are more asked at a time.
        for (int number = 0; number < Knowledge::mostForeign; ++number)
            script.context.knowledge.learn(QString("silent%1.x").arg(number));
        auto kind = Kind::Unknown;
        script.context.knowledge.whenKnown("more.x", [&kind](const auto& service) { kind = service.kind; });
        QCOMPARE(kind, Kind::Old);
        QCOMPARE(kindOf("more.x"), Kind::Unknown);
    }
};

BRELO_TEST(BridgeExchangeTest)
#include "BridgeExchangeTest.moc"
