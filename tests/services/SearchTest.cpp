#include "contacts/Collections.h"
#include "services/Networks.h"
#include "services/SearchAnswers.h"
#include "support/FakeEngine.h"
#include "support/Table.h"
#include "support/TestRunner.h"

namespace
{

std::shared_ptr<Stanza> answer(const QString& children)
{
    return wellFormed("<iq from='users.x'><query xmlns='jabber:iq:search'>" + children + "</query></iq>");
}

} // namespace

// What goes to a directory of people, and what comes back.
class SearchTest : public QObject
{
    Q_OBJECT

private slots:
    void searchesAreWritten_data()
    {
        using Fields = QList<searchstanzas::Field>;
        columns<Fields, QString>("fields", "inner");
        row("nothing filled in", Fields{{"first", ""}, {"last", ""}}, "");
        row("some", Fields{{"first", "Ann"}, {"nick", ""}, {"e-mail", "a@b"}},
            "<first>Ann</first><e-mail>a@b</e-mail>");
        row("special signs", Fields{{"first", "<&\">"}}, "<first>&lt;&amp;&quot;&gt;</first>");
        row("names that can't be sent",
            Fields{
                {"a:b", "1"}, {"a b", "2"}, {"/a><b", "3"}, {"1a", "4"}, {"", "5"}, {"\u00e9t\u00e9", "6"}},
            "<\u00e9t\u00e9>6</\u00e9t\u00e9>");
    }
    void searchesAreWritten()
    {
        const auto [fields, inner] = fetched<QList<searchstanzas::Field>, QString>();
        QCOMPARE(searchstanzas::result("us'ers<.x", fields),
                 "<iq to=\"us'ers&lt;.x\" type=\"set\" id=\"VRX_SEARCH_RESULT\">"
                 "<query xmlns=\"jabber:iq:search\">" +
                     inner + "</query></iq>");
        QVERIFY(Stanza::fromXml(searchstanzas::result("users.x", fields)));
    }

    void formsAreRead_data()
    {
        columns<QString, QString, QString>("children", "instructions", "fields");
        row("none", "", "", "");
        row("as usual", "<instructions>Fill &lt;in&gt;</instructions><first/><last> Lee</last>", "Fill <in>",
            "first=|last= Lee");
        row("instructions last, and twice",
            "<b/>\n<instructions>1</instructions><instructions>2</instructions>", "2", "b=");
        row("instructions in capitals", "<INSTRUCTIONS>I</INSTRUCTIONS>", "I", "");
        row("a form of another kind beside", "<first/><x xmlns='jabber:x:data'><field/></x>", "", "first=");
        row("unknown names, twice", "<Registered/><z9>1</z9><z9>2</z9>", "", "Registered=|z9=1|z9=2");
    }
    void formsAreRead()
    {
        const auto [children, instructions, fields] = fetched<QString, QString, QString>();
        const auto form = searchanswers::form(*answer(children));
        QCOMPARE(form.instructions, instructions);
        QStringList read;
        for (const auto& [name, value] : form.fields)
            read += name + '=' + value;
        QCOMPARE(read.join('|'), fields);
    }

    void resultsAreRead_data()
    {
        columns<QString, QString, QString>("children", "head", "rows");
        row("nobody", "", "", "");
        row("as usual", "<item jid='a@x'><first>A</first><last>&lt;</last></item>", "jid,first,last",
            "a@x,A,<");
        row("the widest sets the columns",
            "<item jid='a'><n>1</n></item><item jid='b'><l>2</l><n>3</n></item>"
            "<item jid='c'><f>4</f><l>5</l></item>",
            "jid,l,n", "a,,1|b,2,3|c,5");
        row("no address, no children", "<item/><item id='b'/>", ",", "|b");
        row("a namespace is no address", "<item xmlns='jabber:iq:search' key='a'/>", "key", "a");
        row("a title twice", "<item jid='a'><n>1</n><n>2</n></item><item jid='b'><n>3</n></item>", "jid,n,n",
            "a,1,1|b,3,3");
    }
    void resultsAreRead()
    {
        const auto [children, head, rows] = fetched<QString, QString, QString>();
        const auto results = searchanswers::results(*answer(children));
        QCOMPARE(results.columns.join(','), head == "," ? "" : head);
        QStringList lines;
        for (const auto& line : results.rows)
            lines += line.join(',');
        QCOMPARE(lines.join('|'), rows);
    }

    // A hostile directory costs no more than what a person could look at.
    void extremesAreBounded()
    {
        const auto form = searchanswers::form(*answer(QString("<f/>").repeated(10'000)));
        QCOMPARE(form.fields.size() + form.leftOut, 10'000);
        QVERIFY(form.fields.size() >= 50 && form.fields.size() <= 1000);
        const auto results =
            searchanswers::results(*answer("<item>" + QString("<f/>").repeated(10'000) + "</item><item/>"));
        QVERIFY(results.columns.size() <= 1000);
        QCOMPARE(results.rows.value(1).size(), 1);
        const auto many = searchanswers::results(*answer(QString("<item/>").repeated(60'000)));
        QCOMPARE(many.rows.size() + many.leftOut, 60'000);
        QVERIFY(many.rows.size() >= 5000 && many.rows.size() < 60'000);
    }

    void networksAreResolved()
    {
        CAgents agents;
        agents.AddItem("icq.x", "ICQ", false, false);
        agents.AddItem("msn.x", "MSN", false, true);
        agents.AddItem("msn2.x", "MSN", false, true);
        agents.AddItem("nameless.x", "", false, true);
        QCOMPARE(networks::choices(agents, "x"),
                 QStringList({"x", "MSN", "MSN", "nameless.x", "Other Server ..."}));
        QVERIFY(networks::isGateway(agents, "nameless.x"));
        QCOMPARE(networks::server(agents, "MSN"), "msn.x");
        QCOMPARE(networks::server(agents, "ICQ"), "icq.x");
        for (const QString server : {"x", "msn", ""}) {
            QCOMPARE(networks::server(agents, server), server);
            QVERIFY(!networks::isGateway(agents, server));
        }
        QVERIFY(networks::isGateway(agents, "MSN"));
    }
};
BRELO_TEST(SearchTest)

#include "SearchTest.moc"
