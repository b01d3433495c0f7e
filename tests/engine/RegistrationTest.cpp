#include "engine/Xml.h"
#include "engine/wire/auth/AccountRegistration.h"
#include "support/Table.h"
#include "support/TestRunner.h"

using State = AccountRegistration::State;

class RegistrationTest : public QObject
{
    Q_OBJECT

    static QString fields(const QString& inner)
    {
        return "<iq type='result' id='brelo-register1'><query xmlns='jabber:iq:register'>" + inner +
               "</query></iq>";
    }
    static QString form(const QString& inner)
    {
        return "<x xmlns='jabber:x:data' type='form'><field var='FORM_TYPE' type='hidden'><value>"
               "jabber:iq:register</value></field><field var='username'><required/></field>"
               "<field var='password'/>" +
               inner + "</x>";
    }
    static AccountRegistration begun(bool encrypted = true)
    {
        AccountRegistration registration(
            {"juliet", "", "capulet.example", "", encrypted, false},
            R"(<iq type="set" id="VRX_new"><query xmlns="jabber:iq:register"><username>)"
            "juliet</username><password>a&amp;b</password><resource></resource></query></iq>");
        registration.streamOpened({});
        return registration;
    }
    static void feed(AccountRegistration& registration, const QString& xml)
    {
        registration.feed(*Stanza::fromXml(xml));
    }
    static QString written(AccountRegistration& registration)
    {
        return QString::fromUtf8(registration.takeOutput().join());
    }

private slots:
    void fieldsAreAskedForAndFilled_data()
    {
        columns<QString, QString>("offered", "sent");
        const QString flat = "<instructions>Hi</instructions><username/><password/>";
        const QString filledForm =
            R"(<x xmlns="jabber:x:data" type="submit"><field var="FORM_TYPE"><value>)"
            R"(jabber:iq:register</value></field><field var="username"><value>juliet</value>)"
            R"(</field><field var="password"><value>a&amp;b</value></field>)";
        const QString filledFlat = "<username>juliet</username><password>a&amp;b</password>";
        row("flat", flat, filledFlat);
        row("flat with more", flat + "<email/><key>k1</key>", filledFlat + "<email></email><key>k1</key>");
        row("form beside flat", flat + form({}), filledForm + "</x>");
        row("form with a default",
            form("<field var='list'><required/><value>1</value></field><field "
                 "type='fixed'><value>x</value></field>"),
            filledForm + "<field var=\"list\"><value>1</value></field></x>");
        row("form that wants too much", flat + form("<field var='ocr'><required/></field>"), filledFlat);
    }
    void fieldsAreAskedForAndFilled()
    {
        const auto [offered, sent] = fetched<QString, QString>();
        auto registration = begun();
        const QString iq = R"(<iq type="%1" id="brelo-register%2" to="capulet.example"><query )"
                           "xmlns=\"jabber:iq:register\"%3</iq>";
        QCOMPARE(written(registration), iq.arg("get", "1", "/>"));
        feed(registration, fields(offered));
        QCOMPARE(written(registration), iq.arg("set", "2", ">" + sent + "</query>"));
        feed(registration, "<iq type='result' id='brelo-register2'/>");
        QCOMPARE(registration.state(), State::Done);
        QCOMPARE(registration.takeResult()->Xml(),
                 "<iq type=\"result\" id=\"VRX_new\" from=\"capulet.example\"/>");
        QVERIFY(!registration.takeResult());
    }

    void failureCarriesTheServersWords_data()
    {
        columns<QString, QString, QString>("answer", "code", "text");
        const QString error =
            "<iq type='error' id='brelo-register1'><query xmlns='jabber:iq:register'/>%1</iq>";
        const QString today = error.arg("<error type='cancel'>%1</error>");
        const QString stanzas = " xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'";
        row("old", error.arg("<error code='409'>Username Not Available</error>"), "409",
            "Username Not Available");
        row("of today",
            today.arg("<conflict" + stanzas + "/><text" + stanzas + ">The &lt;name&gt; is taken.</text>"),
            "409", "The <name> is taken.");
        row("without a word", today.arg("<not-allowed" + stanzas + "/>"), "405",
            "The server does not allow this.");
        row("without an error", error.arg(""), "500", "The server answered with error 500.");
        row("on the web only",
            fields("<instructions>See:</instructions><x xmlns='jabber:x:oob'><url>https://x.y/</url></x>"),
            "406", "See: https://x.y/");
        const QString picture =
            form("<instructions>Read it</instructions><field var='ocr'><required/></field>");
        row("a picture to read", fields(picture), "406", "Read it");
        row("no fields", "<iq type='result' id='brelo-register1'/>", "406",
            "The server does not let this program make accounts.");
    }
    void failureCarriesTheServersWords()
    {
        const auto [answer, code, text] = fetched<QString, QString, QString>();
        auto registration = begun();
        written(registration);
        feed(registration, answer);
        QCOMPARE(written(registration), QString());
        const auto result = registration.takeResult();
        QVERIFY(result);
        QCOMPARE(xml::attribute(result->root(), "id"), "VRX_new");
        const auto error = result->IqFields().Document().select_node("//iq/error").node();
        QCOMPARE(xml::attribute(error, "code"), code);
        QCOMPARE(xml::text(error), text);
    }

    void passwordStaysOffAnOpenStream()
    {
        auto registration = begun(false);
        QCOMPARE(written(registration), QString());
        QCOMPARE(xml::attribute(registration.takeResult()->root(), "type"), "error");
    }

    void whatDoesNotFitIsIgnored()
    {
        auto registration = begun();
        written(registration);
        for (const auto* text : {"<iq/>", "<message/>", "<iq type='result' id='brelo-register2'/>",
                                 "<iq type='result' id='other'/>", "<iq type='set' id='brelo-register1'/>"})
            feed(registration, text);
        QCOMPARE(written(registration), QString());
        QCOMPARE(registration.state(), State::Working);
    }

    void lostStreamIsAnOutcomeOnce()
    {
        auto registration = begun();
        registration.fail("Gone.");
        registration.fail("Gone again.");
        QCOMPARE(xml::text(registration.takeResult()->root()), "Gone.");
        QVERIFY(!registration.takeResult());
    }
};

BRELO_TEST(RegistrationTest)
#include "RegistrationTest.moc"
