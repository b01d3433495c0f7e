#include "engine/wire/socket/StreamParser.h"
#include "support/Table.h"
#include "support/TestRunner.h"

using namespace Qt::StringLiterals;
using Event = StreamParser::Event;
const QByteArray head = "<?xml version='1.0' encoding='UTF-8'?>\n<stream:stream xmlns='jabber:client' id='7' "
                        "from='a.example' xmlns:stream='http://etherx.jabber.org/streams' version='1.0'>";

class StreamParserTest : public QObject
{
    Q_OBJECT

    // What a parser made of some bytes.
    struct Seen {
        QStringList elements;
        bool closed = false;
        QByteArray condition;
        int skipped = 0;
        bool operator==(const Seen&) const = default;
    };
    static void feed(StreamParser& parser, const QByteArray& bytes, Seen& seen)
    {
        parser.feed(bytes);
        seen.skipped += parser.takeSkipped();
        for (auto event = parser.next(); event != Event::None; event = parser.next()) {
            if (event == Event::Element)
                seen.elements += parser.takeElement()->Xml();
            seen.closed = event == Event::Closed;
            if (event == Event::Broken)
                seen.condition = parser.fault().condition;
            if (event == Event::Closed || event == Event::Broken)
                return;
        }
    }
    static Seen parsed(const QList<QByteArray>& pieces)
    {
        StreamParser parser;
        Seen seen;
        for (const auto& piece : pieces)
            feed(parser, piece, seen);
        return seen;
    }
    static QList<QByteArray> inPieces(const QByteArray& bytes, qsizetype size)
    {
        QList<QByteArray> pieces;
        for (qsizetype at = 0; at < bytes.size(); at += size)
            pieces += bytes.mid(at, size);
        return pieces;
    }
    static QByteArray crowded(int attributes)
    {
        QByteArray text;
        for (int i = 0; i < attributes; ++i)
            text += " a" + QByteArray::number(i) + "='/>'";
        return text;
    }
    static QByteArray nested(int depth)
    {
        return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
    }

private slots:
    void splitAnywhereGivesTheSame_data()
    {
        columns<QByteArray, QString>("stanza", "expected");
        row("attributes and text", "<message to='a' from=\"b'c\"><body>x y</body></message>"_ba,
            "<message to=\"a\" from=\"b'c\"><body>x y</body></message>");
        row("entities", "<message a='&lt;&quot;'><body>&amp;&lt;&gt;&apos;&#x20AC;&#65;</body></message>"_ba,
            "<message a=\"&lt;&quot;\"><body>&amp;&lt;&gt;'€A</body></message>");
        row("many bytes a character", "<message n='ü'><body>é€😀</body></message>"_ba,
            "<message n=\"ü\"><body>é€😀</body></message>");
        row("cdata", "<message><body>a<![CDATA[<b>]]&]]>c</body></message>"_ba,
            "<message><body>a&lt;b&gt;]]&amp;c</body></message>");
        row("mixed content", "<message>a<b/> <c>d</c>\r\ne</message>"_ba,
            "<message>a<b/> <c>d</c>\ne</message>");
        row("prefix", "<x:iq xmlns:x='jabber:client' type='get'><q xmlns='u:q'/></x:iq>"_ba,
            "<iq type=\"get\"><q xmlns=\"u:q\"/></iq>");
    }
    void splitAnywhereGivesTheSame()
    {
        const auto [stanza, expected] = fetched<QByteArray, QString>();
        const QByteArray all = head + stanza + " <presence/></stream:stream>";
        const Seen whole{{expected, "<presence/>"}, true, {}};
        QCOMPARE(parsed({all}).elements, whole.elements);
        for (qsizetype at = 1; at < all.size(); ++at)
            QVERIFY2(parsed({all.first(at), all.mid(at)}) == whole, all.first(at).constData());
        QVERIFY(parsed(inPieces(all, 1)) == whole);
        QVERIFY(parsed(inPieces(all, 3)) == whole);
    }

    void cutAnywhereGivesWhatIsWhole()
    {
        const QByteArray first = "<iq id='1'><query xmlns='jabber:iq:roster'/></iq>";
        const QByteArray all = head + first + "<message><body>&amp;é</body></message></stream:stream>";
        for (qsizetype at = 0; at < all.size(); ++at) {
            const auto seen = parsed({all.first(at)});
            const auto second = all.indexOf("</message>") + 10;
            QCOMPARE(seen.elements.size(), at < head.size() + first.size() ? 0 : at < second ? 1 : 2);
            QVERIFY2(!seen.closed && seen.condition.isEmpty(), all.first(at).constData());
        }
    }

    void normalises_data()
    {
        columns<QByteArray, QString>("wire", "expected");
        row("default namespace said again",
            "<iq xmlns='jabber:client'><query xmlns='jabber:iq:auth'><username/></query></iq>"_ba,
            "<iq><query xmlns=\"jabber:iq:auth\"><username/></query></iq>");
        row("stream's own element",
            "<stream:features><starttls xmlns='urn:tls'><required/></starttls></stream:features>"_ba,
            "<features xmlns=\"http://etherx.jabber.org/streams\"><starttls "
            "xmlns=\"urn:tls\"><required/></starttls></features>");
        row("child back in the client's namespace",
            "<message><f xmlns='u:f'><message xmlns='jabber:client'/></f></message>"_ba,
            "<message><f xmlns=\"u:f\"><message xmlns=\"jabber:client\"/></f></message>");
        row("no namespace", "<iq><q xmlns=''/></iq>"_ba, "<iq><q xmlns=\"\"/></iq>");
        row("attributes of others are not ours", "<iq xmlns:e='u:e' e:from='evil' id='1' xml:lang='de'/>"_ba,
            "<iq id=\"1\" xml:lang=\"de\"/>");
    }
    void normalises()
    {
        const auto [wire, expected] = fetched<QByteArray, QString>();
        QCOMPARE(parsed({head + wire}).elements, QStringList{expected});
    }

    void breachesEndTheStream_data()
    {
        columns<QByteArray, QByteArray>("bytes", "condition");
        const QByteArray restricted = "restricted-xml", malformed = "not-well-formed",
                         limit = "policy-violation";
        row("document type", QByteArray("<!DOCTYPE a [<!ENTITY b 'c'>]>") + head, restricted);
        row("document type in the stream", head + "<!DOCTYPE a>", restricted);
        row("entity bomb",
            QByteArray("<?xml version='1.0'?><!DOCTYPE a [<!ENTITY b 'bbbb'><!ENTITY c "
                       "'&b;&b;&b;'>]><a>&c;</a>"),
            restricted);
        row("processing instruction", head + "<?php echo 1 ?>", restricted);
        row("style sheet before the stream", QByteArray("<?xml-stylesheet href='x'?>") + head, restricted);
        row("comment", head + "<message><!-- a --></message>", restricted);
        row("unknown entity", head + "<message>&nbsp;</message>", malformed);
        row("unknown entity in an attribute", head + "<message a='&nbsp;'/>", malformed);
        row("undeclared prefix", head + "<x:message/>", malformed);
        row("wrong nesting", head + "<a><b></a></b>", malformed);
        row("an attribute twice", head + "<a b='1' b='2'/>", malformed);
        row("bytes that are not UTF-8", head + "<message>\xC3\x28</message>", malformed);
        row("an overlong form", head + "<message>\xC0\xAF</message>", malformed);
        row("a surrogate", head + "<message>\xED\xA0\x80</message>", malformed);
        row("a control character", head + "<message>&#1;</message>", malformed);
        row("UTF-16", "<\0?\0x\0m\0l\0"_ba, malformed);
        row("another encoding", "<?xml version='1.0' encoding='ISO-8859-1'?><a/>"_ba,
            "unsupported-encoding"_ba);
        row("no XML", "SSH-2.0-OpenSSH_9.2\r\n"_ba, malformed);
        row("no stream", "<html><body/></html>"_ba, "invalid-namespace"_ba);
        row("text between stanzas", head + "<presence/>hello<presence/>", "bad-format"_ba);
        row("an endless name", head + "<" + QByteArray(20'000, 'x'), malformed);
        row("1,000 attributes of the stream", head.chopped(1) + crowded(1'000), limit);
        row("wrong nesting behind one left out", head + nested(65) + "<a><b></a></b>", malformed);
        row("one left out that never ends", head + QByteArray("<a>").repeated(22'500'000), limit);
    }
    void breachesEndTheStream()
    {
        const auto [bytes, condition] = fetched<QByteArray, QByteArray>();
        for (const qsizetype size : {qsizetype(16'384), bytes.size() / 1'000 + 1}) {
            const auto seen = parsed(inPieces(bytes, size));
            QCOMPARE(seen.condition, condition);
            QVERIFY(seen.elements.size() <= 1);
        }
    }

    // Any stranger can send it where a server lets it pass.
    void whatIsBeyondTheBoundsIsLeftOut_data()
    {
        columns<QByteArray, bool>("stanza", "isLeftOut");
        row("64 deep", nested(64), false);
        row("65 deep", nested(65), true);
        row("66 deep, the last one empty", nested(65).replace("<a></a>", "<a><b c='>'/><![CDATA[<]]></a>"),
            true);
        row("100,000 deep", nested(100'000), true);
        row("64 attributes", "<a" + crowded(64) + "/>", false);
        row("65 attributes", "<a" + crowded(65) + "/>", true);
        row("65 attributes within", "<a><b" + crowded(65) + ">c</b></a>", true);
        row("200,000 elements", "<a>" + QByteArray("<b/>").repeated(199'999) + "</a>", false);
        row("200,001 elements", "<a>" + QByteArray("<b/>").repeated(200'000) + "</a>", true);
    }
    void whatIsBeyondTheBoundsIsLeftOut()
    {
        const auto [stanza, isLeftOut] = fetched<QByteArray, bool>();
        const QByteArray before = head + "<message/>";
        const QByteArray all = before + stanza + stanza + "<stream:features/>";
        const auto holds = [isLeftOut](const Seen& seen) {
            return seen.elements.size() == (isLeftOut ? 2 : 4) && seen.elements.first() == "<message/>" &&
                   seen.elements.last().contains("etherx") && seen.skipped == (isLeftOut ? 2 : 0) &&
                   seen.condition.isEmpty();
        };
        QVERIFY(holds(parsed({all})) && holds(parsed(inPieces(all, 16'384))));
        for (qsizetype at = before.size() - 1; at < all.size() && all.size() < 3'000; ++at)
            QVERIFY2(holds(parsed({all.first(at), all.mid(at)})), all.first(at).constData());
        QVERIFY(all.size() > 3'000 || holds(parsed(inPieces(all, 1))));
    }

    void whatStandsBeforeABreachIsNotLost()
    {
        for (const char* breach : {"<!DOCTYPE a>", "<?php ?>", "\xFF", "</iq>"}) {
            const auto seen = parsed({head + "<message/><presence/>" + breach});
            QCOMPARE(seen.elements, (QStringList{"<message/>", "<presence/>"}));
            QVERIFY(!seen.condition.isEmpty());
        }
    }

    void aLongStanzaIsLeftOutAndAnEndlessOneRefused_data()
    {
        columns<QByteArray, QByteArray, QByteArray>("beginning", "filling", "end");
        const QByteArray filling(16'000, 'x');
        row("text", "<message><body>"_ba, filling, "</body></message>"_ba);
        row("attribute", "<message a='"_ba, filling, "'/>"_ba);
        row("cdata", "<message><![CDATA["_ba, filling, "]]></message>"_ba);
        row("elements", "<message>"_ba, QByteArray("<body>xxxxxxx</body>").repeated(800), "</message>"_ba);
    }
    void aLongStanzaIsLeftOutAndAnEndlessOneRefused()
    {
        const auto [beginning, filling, end] = fetched<QByteArray, QByteArray, QByteArray>();
        constexpr qsizetype mib = 1024 * 1024;
        for (const auto& [size, elements] : {std::pair(3 * mib, 3), {5 * mib, 2}, {66 * mib, 1}}) {
            StreamParser parser;
            Seen seen;
            feed(parser, head + "<presence/>" + beginning, seen);
            qsizetype fed = 0;
            for (; fed < size && seen.condition.isEmpty(); fed += filling.size())
                feed(parser, filling, seen);
            feed(parser, end + "<iq/>", seen);
            QCOMPARE(seen.elements.size(), elements);
            QCOMPARE(seen.skipped, elements == 2 ? 1 : 0);
            QCOMPARE(seen.condition, elements == 1 ? "policy-violation" : "");
            QVERIFY(fed < 65 * mib);
        }
    }

    void aLargeRosterIsNoBreach()
    {
        QByteArray items;
        for (int i = 0; i < 10'000; ++i)
            items += "<item jid='contact" + QByteArray::number(i) +
                     "@montague.example' name='Somebody of Verona' subscription='both'><group>Group " +
                     QByteArray::number(i % 50) + "</group></item>";
        const QByteArray roster =
            "<iq type='result'><query xmlns='jabber:iq:roster'>" + items + "</query></iq>";
        const auto seen = parsed(inPieces(head + roster + roster, 16'384));
        QCOMPARE(seen.elements.size(), 2);
        QCOMPARE(seen.elements.last().count("<group>"), 10'000);
    }

    void aRestartForgetsEverything()
    {
        StreamParser parser;
        Seen seen;
        feed(parser, head + "<success xmlns='urn:sasl'/><mess", seen);
        parser.feed("age>" + nested(70) + "</message>");
        parser.reset();
        QCOMPARE(parser.takeSkipped(), 0);
        parser.feed(QByteArray(head).replace("id='7'", "id='8'").replace("version='1.0'>", "version='0.9'>"));
        QCOMPARE(parser.next(), Event::Opened);
        QCOMPARE(parser.header().id, "8");
        QCOMPARE(parser.header().from, "a.example");
        QVERIFY(!parser.header().hasFeatures);
        QCOMPARE(parser.next(), Event::None);
    }
};

BRELO_TEST(StreamParserTest)
#include "StreamParserTest.moc"
