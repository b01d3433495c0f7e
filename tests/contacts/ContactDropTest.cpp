#include "contacts/ContactDrop.h"
#include "contacts/ListFixture.h"

class ContactDropTest : public QObject
{
    Q_OBJECT
    static std::unique_ptr<ListFixture> filled()
    {
        auto list = std::make_unique<ListFixture>();
        list->addTransport("icq.x", "ICQ");
        for (const QString contact : {"a Ann Pals", "b Bob Pals", "c Cid Pals", "d Dan Club", "e Eve Club",
                                      "f Flo ", "g Gus Servizi"}) {
            const auto word = contact.split(' ');
            list->addContact(word[0] + "@x", word[1], word[2]);
        }
        list->drawing.settle();
        return list;
    }

private slots:
    void aDropMovesAContact_data()
    {
        // group: as sent; "refused" for none
        columns<QString, QString, QString>("dragged", "target", "group");
        row("on a group", "a@x", "Club", "Club");
        row("on a contact of another", "a@x", "d@x", "Club");
        row("on a contact of its own", "a@x", "b@x", "Pals");
        row("on Contacts", "a@x", "Contacts", "");
        row("on a contact without a group", "a@x", "f@x", "");
        row("on itself", "a@x", "a@x", "refused");
        row("on Gateways", "a@x", "Gateways", "refused");
        row("on a transport", "a@x", "icq.x", "refused");
        row("on an old list's services", "a@x", "Servizi", "refused");
        row("on a contact of those", "a@x", "g@x", "refused");
        row("on an empty fixed group", "a@x", "Waiting authorization", "refused");
        row("on nothing", "a@x", "", "refused");
        row("a transport", "icq.x", "Club", "refused");
        row("a group", "Pals", "Club", "refused");
        row("nothing", "", "Club", "refused");
    }
    void aDropMovesAContact()
    {
        const auto [dragged, target, group] = fetched<QString, QString, QString>();
        const auto list = filled();
        const QString before = list->drawn();
        const bool moved = contactdrop::drop(list->client, list->drawing.tree(), dragged, target, dragged);
        QCOMPARE(moved, group != "refused");
        if (!moved) {
            QVERIFY(list->engine.takeSent().isEmpty());
            QCOMPARE(list->drawn(), before);
            return;
        }
        const QString sent = R"(<iq id="UP_ITEM" type="set"><query xmlns="jabber:iq:roster">)"
                             R"(<item jid="a@x" name="Ann"><group>%1</group></item></query></iq>)";
        QCOMPARE(list->engine.takeSent(), QStringList(sent.arg(group)));
        QCOMPARE(list->parentOf("a@x"), group.isEmpty() ? QString("Contacts") : group);
        QCOMPARE(list->client.MyRoster.record("a@x")->group, "Pals"); // until the push comes
        QVERIFY(list->client.MyGroups.Exists("Pals") && list->client.MyGroups.Exists("Club"));
    }

    void theOldGroupOfALastContactGoes()
    {
        auto list = filled();
        contactdrop::drop(list->client, list->drawing.tree(), "d@x", "Pals", "d@x");
        // One contact is left in the old group; its node goes with it, and the entry is the new group's.
        QCOMPARE(list->node("Club") + " " + list->node("e@x"), "none none");
        QVERIFY(!list->client.MyGroups.Exists("Pals") && list->client.MyGroups.Exists("Club"));
        list->drawing.Refresh();
        QCOMPARE(list->parentOf("e@x"), "Club");
        // "Contacts" has no entry that could go, and so the node stays.
        list = filled();
        contactdrop::drop(list->client, list->drawing.tree(), "d@x", "Contacts", "d@x");
        QVERIFY(list->find("Club"));
        QCOMPARE(list->parentOf("d@x"), "Contacts");
    }
};

BRELO_TEST(ContactDropTest)
#include "ContactDropTest.moc"
