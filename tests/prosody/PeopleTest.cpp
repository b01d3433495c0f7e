#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "prosody/ProsodyFixture.h"
#include "support/TestRunner.h"

#include <QLineEdit>

namespace
{

const pugi::xml_node cardOf(const Stanza& stanza)
{
    return stanza.root().child("vCard");
}

QString field(const Form& window, const char* name)
{
    return ui::find<QLineEdit>(&window, name)->text();
}

} // namespace

// Asking and being asked, and cards. Every test has two accounts of its own.
class PeopleTest : public QObject
{
    Q_OBJECT

    ProsodyServer server_;
    std::unique_ptr<ProsodyFixture> f_;
    std::unique_ptr<SlixmppPeer> juliet_;

    QString subscription() const
    {
        const auto* record = f_->live.client.MyRoster.record(f_->peer);
        return record ? record->Subscription : QString();
    }
    // The stranger's window, after a word from her, with its entry that asks her.
    void askJuliet()
    {
        juliet_->say(f_->own, "Good pilgrim");
        QTRY_VERIFY(f_->visible("MessageForm"));
        f_->live.world.boxes.answers = {MessageBoxes::Answer::Ok};
        ui::choose(f_->visible("MessageForm"), "mnuToolsAdd");
        QTRY_VERIFY(juliet_->heardPresence(f_->own, "subscribe"));
        QTRY_VERIFY(f_->live.client.MyRoster.DoesJIDExist(f_->peer));
    }
    // Juliet asks, is accepted, and accepts in turn.
    void becomeFriends()
    {
        juliet_->presence(f_->own, "subscribe");
        QTRY_VERIFY(f_->visible("authorizeForm"));
        ui::click(f_->visible("authorizeForm"), "cmdAccept");
        QTRY_VERIFY(juliet_->heardPresence(f_->own, "subscribed"));
        QTRY_VERIFY(juliet_->heardPresence(f_->own, "subscribe")); // a stranger is asked back
        juliet_->presence(f_->own, "subscribed");
        QTRY_VERIFY(f_->seesPeer());
    }
    QString notices()
    {
        return f_->visible("HeadLineForm") ? f_->transcript(*f_->visible("HeadLineForm"), "txtMsg")
                                           : QString();
    }

private slots:
    void initTestCase() { QVERIFY2(server_.start(), qPrintable(server_.problem())); }

    void init()
    {
        QVERIFY(server_.addAccount("romeo", "secret"));
        QVERIFY(server_.addAccount("juliet", "rose"));
        QVERIFY(server_.forgetContacts());
        f_ = std::make_unique<ProsodyFixture>(server_);
        juliet_ = std::make_unique<SlixmppPeer>(server_, "juliet", "rose");
        QVERIFY(f_->signIn());
        QVERIFY(f_->isOnline(*juliet_));
    }

    void cleanup()
    {
        juliet_.reset();
        f_.reset();
    }

    void askedAndAccepted()
    {
        becomeFriends();
        QVERIFY(!f_->visible("authorizeForm"));
        QTRY_VERIFY(f_->row(f_->peer));
        QTRY_VERIFY(notices().contains("The Contact accepted the Authorisation Request"));
        QTRY_VERIFY(juliet_->heardPresence(f_->own, QString()));
        QVERIFY(f_->signOut());
        QVERIFY(f_->signIn());
        QTRY_COMPARE(subscription(), "both");
    }

    void askedAndDenied()
    {
        juliet_->presence(f_->own, "subscribe");
        QTRY_VERIFY(f_->visible("authorizeForm"));
        ui::click(f_->visible("authorizeForm"), "cmdDeny");
        QTRY_VERIFY(juliet_->heardPresence(f_->own, "unsubscribed"));
        QVERIFY(!juliet_->heardPresence(f_->own, "subscribe"));
        QVERIFY(!juliet_->heardPresence(f_->own, QString()));
        QTRY_VERIFY(!f_->visible("authorizeForm"));
        QVERIFY(!f_->live.client.MyRoster.DoesJIDExist(f_->peer));
    }

    void askingAndAccepted()
    {
        askJuliet();
        QCOMPARE(f_->row(f_->peer)->parent->text, "Waiting authorization");
        juliet_->presence(f_->own, "subscribed");
        QTRY_COMPARE(subscription(), "to");
        QTRY_VERIFY(notices().contains("The Contact accepted the Authorisation Request"));
        QTRY_VERIFY(f_->seesPeer());
        QTRY_VERIFY(f_->row(f_->peer)->parent->text != QStringLiteral("Waiting authorization"));
    }

    void askingAndDenied()
    {
        askJuliet();
        juliet_->presence(f_->own, "unsubscribed");
        QTRY_VERIFY(notices().contains("The Contact refused your Request"));
        QVERIFY(subscription() != QStringLiteral("to"));
        QVERIFY(!f_->seesPeer());
    }

    void contactTurnsAway()
    {
        becomeFriends();
        juliet_->presence(f_->own, "unsubscribe");
        QTRY_VERIFY(notices().contains("The Contact removed you from his Contact List"));
        QTRY_VERIFY(!f_->live.client.MyRoster.DoesJIDExist(f_->peer));
        QTRY_VERIFY(!f_->row(f_->peer));
    }

    void ownCardIsReadByTheOther()
    {
        ui::choose(f_->live.rosterForm(), "mRosterFModVCard");
        QTRY_VERIFY(f_->visible("VCardForm"));
        const QList<std::pair<const char*, QString>> typed = {
            {"name1", "Rom & eo"}, {"surname", "<Montague>"},
            {"nick", "\"Ro\""},    {"email", "romeo@verona.example"},
            {"city", "Verona 🌹"},  {"country", "Italia"},
            {"tel", "+39 045 1"},
        };
        for (const auto& [name, text] : typed)
            ui::find<QLineEdit>(f_->visible("VCardForm"), name)->setText(text);
        ui::click(f_->visible("VCardForm"), "cmdOK");
        QTRY_VERIFY(!f_->visible("VCardForm"));

        const Stanza* answer = nullptr;
        QTRY_VERIFY([&] { // the card may still be on its way
            juliet_->tell("read_card", {{"of", f_->own}});
            answer =
                juliet_->latest([](const Stanza& stanza) { return bool(cardOf(stanza).child("NICKNAME")); });
            return answer != nullptr;
        }());
        const auto card = cardOf(*answer);
        QCOMPARE(QString::fromUtf8(card.select_node("N/GIVEN").node().text().get()), typed[0].second);
        QCOMPARE(QString::fromUtf8(card.select_node("N/FAMILY").node().text().get()), typed[1].second);
        QCOMPARE(QString::fromUtf8(card.child("NICKNAME").text().get()), typed[2].second);
        QCOMPARE(QString::fromUtf8(card.select_node("EMAIL/USERID").node().text().get()), typed[3].second);
        QCOMPARE(QString::fromUtf8(card.select_node("ADR[HOME]/LOCALITY").node().text().get()),
                 typed[4].second);
        QCOMPARE(QString::fromUtf8(card.select_node("ADR[HOME]/CTRY").node().text().get()), typed[5].second);
        QCOMPARE(QString::fromUtf8(card.select_node("TEL[HOME]/NUMBER").node().text().get()),
                 typed[6].second);

        // And it is the same when it is opened here again.
        ui::choose(f_->live.rosterForm(), "mRosterFModVCard");
        QTRY_VERIFY(f_->visible("VCardForm"));
        for (const auto& [name, text] : typed)
            QCOMPARE(field(*f_->visible("VCardForm"), name), text);
    }

    void othersCardIsReadHere()
    {
        juliet_->tell("write_card", {{"given", "Giulietta & <co>"},
                                     {"family", "Capulet"},
                                     {"nickname", "Jule 💐"},
                                     {"email", "j@capulet.example"},
                                     {"phone", "045 2"},
                                     {"country", "Italia"}});
        QTRY_VERIFY(juliet_->happened("card written"));
        f_->live.rosterForm()->Roster1->RetriveVCard(f_->peer);
        QTRY_VERIFY(f_->visible("VCardForm"));
        const auto& window = *f_->visible("VCardForm");
        QCOMPARE(field(window, "name1"), "Giulietta & <co>");
        QCOMPARE(field(window, "surname"), "Capulet");
        QCOMPARE(field(window, "nick"), "Jule 💐");
        QCOMPARE(field(window, "email"), "j@capulet.example");
        QCOMPARE(field(window, "tel"), "045 2");
        QCOMPARE(field(window, "country"), "Italia");
        QVERIFY(!ui::find<QPushButton>(&window, "cmdOK")->isVisible());
    }
};

BRELO_TEST(PeopleTest)
#include "PeopleTest.moc"
