#include "engine/wire/session/StreamManagement.h"
#include "engine/Diagnostics.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class StreamManagementTest : public QObject
{
    Q_OBJECT

    static bool handle(StreamManagement& management, const QString& xml)
    {
        return management.handle(*Stanza::fromXml(xml));
    }
    static StreamManagement enabled()
    {
        StreamManagement management;
        management.enable();
        handle(management, "<enabled xmlns=\"urn:xmpp:sm:3\" id=\"a&amp;b\" resume=\"true\"/>");
        return management;
    }
    static StreamManagement withThreeSent()
    {
        auto management = enabled();
        for (const char* stanza : {"<message id='1'/>", "<message id='2'/>", "<message id='3'/>"})
            management.sent(stanza);
        return management;
    }

private slots:
    void keepsWhatIsNotAcknowledged_data()
    {
        columns<QStringList, int>("counts", "left");
        row("none", QStringList{}, 3);
        row("some", QStringList{"2"}, 1);
        row("step by step", QStringList{"1", "3"}, 0);
        row("the same twice", QStringList{"2", "2"}, 1);
        row("more than was sent", QStringList{"4"}, 3);
        row("going back", QStringList{"2", "1"}, 1);
        row("no number", QStringList{"-1"}, 3);
    }
    void keepsWhatIsNotAcknowledged()
    {
        QFETCH(QStringList, counts);
        auto management = withThreeSent();
        for (const auto& count : std::as_const(counts))
            handle(management, "<a xmlns=\"urn:xmpp:sm:3\" h=\"" + count + "\"/>");
        QTEST(static_cast<int>(management.unacknowledged().size()), "left");
    }

    void countsOnlyFromTheStart()
    {
        StreamManagement management;
        management.sent("<message/>");
        QCOMPARE(management.unacknowledged().size(), 0u);
        QVERIFY(!management.canResume());
        management.enable();
        management.sent("<message/>");
        QCOMPARE(management.unacknowledged().size(), 1u);
        handle(management, "<failed xmlns=\"urn:xmpp:sm:3\"/>");
        QCOMPARE(management.unacknowledged().size(), 0u);
        QVERIFY(!management.isOn());
    }

    void tellsHowManyCame()
    {
        auto management = enabled();
        management.received();
        management.received();
        QVERIFY(handle(management, "<r xmlns=\"urn:xmpp:sm:3\"/>"));
        QCOMPARE(management.takeOutput(), QList<QByteArray>{"<a xmlns=\"urn:xmpp:sm:3\" h=\"2\"/>"});
        QCOMPARE(management.resumeRequest(), "<resume xmlns=\"urn:xmpp:sm:3\" h=\"2\" previd=\"a&amp;b\"/>");
    }

    void resendsAfterResuming()
    {
        auto management = withThreeSent();
        management.resumed(*Stanza::fromXml("<resumed xmlns=\"urn:xmpp:sm:3\" h=\"1\"/>"));
        const auto output = management.takeOutput();
        QCOMPARE(output.mid(0, 2), (QList<QByteArray>{"<message id='2'/>", "<message id='3'/>"}));
        QCOMPARE(management.unacknowledged().size(), 2u);
    }

    void leavesOtherElementsAlone()
    {
        auto management = enabled();
        QVERIFY(!handle(management, "<message><a xmlns=\"urn:xmpp:sm:3\" h=\"1\"/></message>"));
        QVERIFY(!handle(management, "<r/>"));
        QVERIFY(management.takeOutput().isEmpty());
    }

    void secretsAreMasked()
    {
        for (const QString xml :
             {"<iq><query><password>s3cret</password></query></iq>", "<digest a='b'>s3cret</digest>",
              "<oldPassWord2 a='b'>s3cret</oldPassWord2>",
              "<auth xmlns='urn:ietf:params:xml:ns:xmpp-sasl' mechanism='PLAIN'>s3cret</auth>",
              "<field type='text-private' var='password'><value>s3cret</value></field>"}) {
            const QString text = masked(xml);
            QVERIFY2(!text.contains(u"s3cret"), qPrintable(text));
            QVERIFY2(text.contains(u"***"), qPrintable(text));
        }
    }
};

BRELO_TEST(StreamManagementTest)
#include "StreamManagementTest.moc"
