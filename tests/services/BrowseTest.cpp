#include "contacts/Client.h"
#include "services/forms/BrowseUsrCtrl.h"
#include "support/FakeEngine.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

// The list of what a server offers, filled from its answers.
class BrowseTest : public QObject
{
    Q_OBJECT

private slots:
    void directories_data()
    {
        columns<QString, QString, QString, QString, QString>("id", "type", "inner", "rows", "asked");
        const QString jud = "<service type='jud' jid='users.x' name='Users'/>";
        row("services", "VRX_GET_SERVICE", "result", jud + "<service type='icq' jid='icq.x'/>", "Users", "");
        row("the server itself", "VRX_GET_SERVICE", "result",
            "<service type='jud' jid='montague.example'/>" + jud, "Users", "");
        row("only the administration's item", "VRX_GET_SERVICE", "result",
            "<item jid='montague.example/admin'/>" + jud, "Users", "");
        row("more than the administration's", "VRX_GET_SERVICE", "result",
            "<item jid='montague.example/admin'/><item type='jud' jid='a.x'/>" + jud, "", "a.x");
        row("items are asked on", "VRX_GET_SERVICE", "result",
            "<item type='jud' jid='a.x'/><item jid='b.x'/><item type='jud' jid='c.x'/>" + jud, "", "a.x,c.x");
        QStringList juds;
        for (int index = 1; index <= 100; ++index)
            juds += QString::number(index) + ".x";
        row("more items than are asked", "VRX_GET_SERVICE", "result",
            "<item type='jud' jid='" + juds.join("'/><item type='jud' jid='") + "'/>", "",
            juds.first(20).join(','));
        row("what a directory holds", "VRX_browser", "result",
            "<service jid='u.x' name='U'/><service jid='s.x' name='Brelo SERVER'/>"
            "<service jid='montague.example' name='M'/><service name='N'/><service jid='v.x'/><service/>",
            "U,N,v.x,dir.x", "");
        row("other ids", "VRX_other", "result", jud, "", "");
        row("refused", "VRX_GET_SERVICE", "error", jud, "", "");
    }
    void directories()
    {
        const auto [id, type, inner, rows, asked] = fetched<QString, QString, QString, QString, QString>();
        Client client;
        FakeEngine engine(client);
        BrowseUsrCtrl control;
        control.setClient(client);
        engine.plugIn(&control);
        const QString answer =
            QString("<iq id='%1' type='%2' from='dir.x'><query xmlns='jabber:iq:browse'>%3</query></iq>")
                .arg(id, type, inner);
        engine.inject(answer);
        const auto* list = ui::find<QListWidget>(&control, "BrowseResult");
        QStringList names;
        for (int row = 0; row < list->count(); ++row)
            names += list->item(row)->text();
        QCOMPARE(names.join(','), rows);
        QStringList to;
        for (const auto& sent : engine.takeSent())
            to += sent.section('"', 5, 5);
        QCOMPARE(to.join(','), asked);
        engine.inject(answer);
        QCOMPARE(list->count(), names.size()); // a row stands there once
    }

    void knownDirectoryStandsIn_data()
    {
        columns<QString, QString, QString>("agent", "asked", "row");
        row("node of the server", "users.montague.example,montague.example/juds", "montague.example/juds",
            "");
        row("host", "users.montague.example", "", "users.montague.example");
        row("none", "icq.montague.example", "", "");
    }
    void knownDirectoryStandsIn()
    {
        const auto [agent, asked, name] = fetched<QString, QString, QString>();
        Client client;
        FakeEngine engine(client);
        for (const auto& jid : agent.split(','))
            client.MyAgents.AddItem(jid, "A", false, false);
        BrowseUsrCtrl control;
        control.setClient(client);
        engine.plugIn(&control);
        engine.inject("<iq id='VRX_GET_SERVICE' type='error'><query xmlns='jabber:iq:browse'/></iq>");
        const QString sent = engine.takeSent().join(QString());
        QCOMPARE(sent, asked.isEmpty() ? QString()
                                       : "<iq type=\"get\" id=\"VRX_browser\" to=\"" + asked +
                                             "\"><query xmlns=\"jabber:iq:browse\"></query></iq>");
        const auto* list = ui::find<QListWidget>(&control, "BrowseResult");
        QCOMPARE(list->count() ? list->item(0)->text() : QString(), name);
        if (list->count()) {
            ui::find<QListWidget>(&control, "BrowseResult")->setCurrentRow(0);
            QCOMPARE(control.SelectedJID, name);
        }
    }
};
BRELO_TEST(BrowseTest)

#include "BrowseTest.moc"
