#include "services/VCard.h"
#include "engine/Stanza.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class VCardTest : public QObject
{
    Q_OBJECT
    static QString answer(const QString& card, const QString& attributes = QString("type=\"result\""))
    {
        return QString("<iq %1 id=\"vcard_wj_3\" from=\"juliet@capulet.example\">%2</iq>")
            .arg(attributes, card);
    }

    // Every field's control with its value, those that are empty left out.
    static QStringList filled(const VCard& card)
    {
        QStringList lines;
        VCard::forEachField(card, [&lines](const QString& control, const QString& value) {
            if (!value.isEmpty())
                lines += control + u'=' + value;
        });
        return lines;
    }

    // The numbers and the address of one place.
    static QString place(const QString& kind, const QString& tail)
    {
        return QString(
                   "<TEL><VOICE/><%1/>[tel%2]</TEL><TEL><fax/><%1/>[fax%2]</TEL><TEL><MSG/><%1/></TEL>"
                   "<ADR><%1/><EXTADD>[ind2%2]</EXTADD><STREET>[ind1%2]</STREET><LOCALITY>[city%2]</LOCALITY>"
                   "<REGION>[state%2]</REGION><PCODE>[zip%2]</PCODE><COUNTRY>[country%2]</COUNTRY></ADR>")
            .arg(kind, tail);
    }

    // A card whose every field holds its own control's name between `before` and `after`.
    static VCard named(const QString& before, const QString& after)
    {
        VCard card;
        VCard::forEachField(card,
                            [&](const QString& name, QString& value) { value = before + name + after; });
        return card;
    }

    static inline const QString whole =
        R"(<iq type="set" id="JCOM_51"><VCARD version="3.0" xmlns="vcard-temp">)"
        "<FN>[name1] [middle] [surname]</FN><N><GIVEN>[name1]</GIVEN><FAMILY>[surname]</FAMILY>"
        "<MIDDLE/></N><NICKNAME>[nick]</NICKNAME><URL>[persurl]</URL><BDAY>[birth]</BDAY><ORG>"
        "<ORGNAME>[company]</ORGNAME><ORGUNIT>[dep]</ORGUNIT></ORG><TITLE>[position]</TITLE>"
        "<ROLE>[occupation]</ROLE>" +
        place("HOME", "") + place("WORK", "work") +
        "<EMAIL><INTERNET/><PREF/>[email]</EMAIL><EMAIL><INTERNET/>[emails]</EMAIL></VCARD></iq>";

private slots:
    void readsAnswers_data()
    {
        columns<QString, QStringList>("stanza", "fields");
        const auto result = [](const char* name, const QString& card, const QStringList& fields) {
            row(name, answer(card), fields);
        };
        result(
            "old spelling",
            "<VCARD xmlns='vcard-temp'><N><GIVEN>Juliet</GIVEN><FAMILY>Capulet</FAMILY><MIDDLE>M</MIDDLE></N>"
            "<TEL><fax/><WORK/>12</TEL><TEL><VOICE/><HOME/>34</TEL><ADR><WORK/><COUNTRY>IT</COUNTRY></ADR>"
            "<EMAIL><INTERNET/><PREF/>j@capulet.example</EMAIL><EMAIL><INTERNET/>k@capulet.example</EMAIL></"
            "VCARD>",
            {"name1=Juliet", "middle=M", "surname=Capulet", "email=j@capulet.example",
             "emails=k@capulet.example", "tel=34", "countrywork=IT", "faxwork=12"});
        result("a middle name in the full name",
               "<VCARD><FN>Ann B. C. Lee</FN><N><GIVEN>Ann</GIVEN><FAMILY>Lee</FAMILY><MIDDLE/></N></VCARD>",
               {"name1=Ann", "middle=B. C.", "surname=Lee"});
        result("no middle name",
               "<VCARD><FN>Ann Lee</FN><N><GIVEN>Ann</GIVEN><FAMILY>Lee</FAMILY></N></VCARD>",
               {"name1=Ann", "surname=Lee"});
        result("spelling of today",
               "<vCard xmlns='vcard-temp'>\n <TEL>\n  <FAX/><HOME/><NUMBER>12</NUMBER>\n </TEL>\n"
               " <TEL><WORK/><VOICE/><NUMBER>34</NUMBER></TEL>\n <ADR><HOME/><STREET>Via "
               "1</STREET><CTRY>IT</CTRY></ADR>\n"
               " <EMAIL><HOME/><USERID>k@capulet.example</USERID></EMAIL>\n"
               " <EMAIL><INTERNET/><PREF/><USERID>j@capulet.example</USERID></EMAIL>\n</vCard>",
               {"email=j@capulet.example", "emails=k@capulet.example", "ind1=Via 1", "country=IT", "fax=12",
                "telwork=34"});
        result("the first that says something",
               "<VCARD xmlns='vcard-temp'><EMAIL><PREF/></EMAIL><EMAIL><PREF/>a@x.example</EMAIL>"
               "<EMAIL><PREF/>b@x.example</EMAIL></VCARD>",
               {"email=a@x.example"});
        result("entries without kind or place",
               "<VCARD xmlns='vcard-temp'><TEL><HOME/>1</TEL><TEL><VOICE/>2</TEL><TEL><MSG/><HOME/>3</TEL>"
               "<ADR><STREET>Via</STREET></ADR></VCARD>",
               {});
        result(
            "unknown elements and other case",
            "<VCARD xmlns='vcard-temp'>text<DESC>d</DESC><nickname>n</nickname><X><NICKNAME>n</NICKNAME></X>"
            "<ROLE>r<!-- c --><b>o</b></ROLE></VCARD>",
            {"occupation=ro"});
        result("empty card", "<VCARD xmlns='vcard-temp'/>", {});
        result("no card", "", {});
        result("a photo",
               "<VCARD><PHOTO><TYPE>image/png</TYPE><BINVAL>" + QString(1024 * 1024, u'A') +
                   "</BINVAL></PHOTO><NICKNAME>n</NICKNAME></VCARD>",
               {"nick=n"});
        row("an error gives its card back",
            answer("<VCARD xmlns='vcard-temp'><NICKNAME>n</NICKNAME></VCARD><error code='404'/>",
                   "type=\"error\""),
            QStringList());
    }
    void readsAnswers()
    {
        QFETCH(QString, stanza);
        const auto parsed = Stanza::fromXml(stanza);
        QVERIFY(parsed);
        QTEST(filled(VCard::of(*parsed)), "fields");
    }

    void writesInTheOrderOfTheDialect()
    {
        const auto expected = [](const QString& before, const QString& after) {
            return QString(whole).replace(u'[', before).replace(u']', after);
        };
        QCOMPARE(named("", "").stanza(), expected("", ""));
        QCOMPARE(named("<&", "\">'").stanza(), expected("&lt;&amp;", "&quot;&gt;'"));
        QCOMPARE(named("%1", "%2").stanza(), expected("%1", "%2"));
    }

    void readsBackWhatItWrote()
    {
        const VCard card = named("<b>&amp; ", "\"'");
        const auto stanza = Stanza::fromXml(card.stanza());
        QVERIFY(stanza);
        QCOMPARE(filled(VCard::of(*stanza)), filled(card));
    }
};

BRELO_TEST(VCardTest)
#include "VCardTest.moc"
