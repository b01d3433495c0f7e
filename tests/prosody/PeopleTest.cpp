#include "engine/Xml.h"
#include "prosody/ProsodyFixture.h"
#include "support/TestRunner.h"

// Asking and being asked, and cards. Every test has two accounts of its own.
class PeopleTest : public QObject
{
    Q_OBJECT

    ProsodyServer server_;
    std::unique_ptr<ProsodyFixture> f_;

    QString subscription() const
    {
        const auto* record = f_->live.client.MyRoster.record(f_->peer);
        return record ? record->Subscription : QString();
    }
    QString field(const char* name) { return ui::find<QLineEdit>(f_->visible("VCardForm"), name)->text(); }
    // The stranger's window, after a word from her, with its entry that asks her.
    void askJuliet()
    {
        f_->juliet->say(f_->own, "Good pilgrim");
        QTRY_VERIFY(f_->visible("MessageForm"));
        f_->live.world.boxes.answers = {MessageBoxes::Answer::Ok};
        ui::choose(f_->visible("MessageForm"), "mnuToolsAdd");
        QTRY_VERIFY(f_->juliet->heardPresence(f_->own, "subscribe"));
        QTRY_VERIFY(f_->live.client.MyRoster.DoesJIDExist(f_->peer));
    }
    // Juliet asks, is accepted, and accepts in turn.
    void becomeFriends()
    {
        f_->juliet->presence(f_->own, "subscribe");
        QTRY_VERIFY(f_->visible("authorizeForm"));
        ui::click(f_->visible("authorizeForm"), "cmdAccept");
        QTRY_VERIFY(f_->juliet->heardPresence(f_->own, "subscribed"));
        QTRY_VERIFY(f_->juliet->heardPresence(f_->own, "subscribe")); // a stranger is asked back
        f_->juliet->presence(f_->own, "subscribed");
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
        server_.addAccount("romeo", "secret");
        server_.addAccount("juliet", "rose");
        QVERIFY(server_.forgetContacts());
        f_ = std::make_unique<ProsodyFixture>(server_);
        QVERIFY(f_->signInBoth());
    }

    void cleanup() { f_.reset(); }

    void askedAndAccepted()
    {
        becomeFriends();
        QVERIFY(!f_->visible("authorizeForm"));
        QTRY_VERIFY(f_->row(f_->peer));
        QTRY_VERIFY(notices().contains("The Contact accepted the Authorisation Request"));
        QTRY_VERIFY(f_->juliet->heardPresence(f_->own, QString()));
        QVERIFY(f_->signOut());
        QVERIFY(f_->signIn());
        QTRY_COMPARE(subscription(), "both");
    }

    void askedAndDenied()
    {
        f_->juliet->presence(f_->own, "subscribe");
        QTRY_VERIFY(f_->visible("authorizeForm"));
        ui::click(f_->visible("authorizeForm"), "cmdDeny");
        QTRY_VERIFY(f_->juliet->heardPresence(f_->own, "unsubscribed"));
        QVERIFY(!f_->juliet->heardPresence(f_->own, "subscribe"));
        QVERIFY(!f_->juliet->heardPresence(f_->own, QString()));
        QTRY_VERIFY(!f_->visible("authorizeForm"));
        QVERIFY(!f_->live.client.MyRoster.DoesJIDExist(f_->peer));
    }

    void askingAndAccepted()
    {
        askJuliet();
        QCOMPARE(f_->row(f_->peer)->parent->text, "Waiting authorization");
        f_->juliet->presence(f_->own, "subscribed");
        QTRY_COMPARE(subscription(), "to");
        QTRY_VERIFY(notices().contains("The Contact accepted the Authorisation Request"));
        QTRY_VERIFY(f_->seesPeer());
        QTRY_VERIFY(f_->row(f_->peer)->parent->text != QStringLiteral("Waiting authorization"));
    }

    void contactTurnsAway()
    {
        becomeFriends();
        f_->juliet->presence(f_->own, "unsubscribe");
        QTRY_VERIFY(notices().contains("The Contact removed you from his Contact List"));
        QTRY_VERIFY(!f_->live.client.MyRoster.DoesJIDExist(f_->peer));
        QTRY_VERIFY(!f_->row(f_->peer));
    }

    void ownCardIsReadByTheOther()
    {
        ui::choose(f_->live.rosterForm(), "mRosterFModVCard");
        QTRY_VERIFY(f_->visible("VCardForm"));
        const std::tuple<const char*, const char*, QString> fields[] = {
            // each with its path in the card
            {"name1", "N/GIVEN", "Rom & eo"},
            {"surname", "N/FAMILY", "<Montague>"},
            {"nick", "NICKNAME", "\"Ro\""},
            {"email", "EMAIL/USERID", "romeo@verona.example"},
            {"city", "ADR[HOME]/LOCALITY", "Verona 🌹"},
            {"country", "ADR[HOME]/CTRY", "Italia"},
            {"tel", "TEL[HOME]/NUMBER", "+39 045 1"}};
        for (const auto& [control, path, text] : fields)
            ui::find<QLineEdit>(f_->visible("VCardForm"), control)->setText(text);
        ui::click(f_->visible("VCardForm"), "cmdOK");
        QTRY_VERIFY(!f_->visible("VCardForm"));
        const Stanza* answer = nullptr;
        QTRY_VERIFY([&] { // the card may still be on its way
            f_->juliet->tell("read_card", {{"of", f_->own}});
            answer = f_->juliet->latest(
                [](const Stanza& stanza) { return bool(stanza.root().child("vCard").child("NICKNAME")); });
            return answer != nullptr;
        }());
        for (const auto& [control, path, text] : fields)
            QCOMPARE(xml::text(answer->root().child("vCard").select_node(path).node()), text);
        // And it is the same when it is opened here again.
        ui::choose(f_->live.rosterForm(), "mRosterFModVCard");
        QTRY_VERIFY(f_->visible("VCardForm"));
        for (const auto& [control, path, text] : fields)
            QCOMPARE(field(control), text);
    }

    void othersCardIsReadHere()
    {
        const std::tuple<const char*, const char*, const char*> fields[] = {
            {"given", "name1", "Giulietta & <co>"},
            {"family", "surname", "Capulet"},
            {"nickname", "nick", "Jule 💐"},
            {"email", "email", "j@capulet.example"},
            {"phone", "tel", "045 2"},
            {"country", "country", "Italia"}};
        QJsonObject card;
        for (const auto& [name, control, text] : fields)
            card[QLatin1String(name)] = QString::fromUtf8(text);
        f_->juliet->tell("write_card", card);
        QTRY_VERIFY(f_->juliet->happened("card written"));
        f_->live.rosterForm()->Roster1->RetriveVCard(f_->peer);
        QTRY_VERIFY(f_->visible("VCardForm"));
        for (const auto& [name, control, text] : fields)
            QCOMPARE(field(control), text);
        QVERIFY(!ui::find<QPushButton>(f_->visible("VCardForm"), "cmdOK")->isVisible());
    }
};

BRELO_TEST(PeopleTest)
#include "PeopleTest.moc"
