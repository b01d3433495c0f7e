#include "messaging/MessagingFixture.h"
#include "settings/Paths.h"

using Box = RecordingBoxes::Box;
using Icon = MessageBoxes::Icon;
using Buttons = MessageBoxes::Buttons;

// Adding and blocking the peer of a window, and following its presence and resources.
class PeerTest : public QObject
{
    Q_OBJECT
    std::optional<MessagingFixture> f;
    const QString stranger = "Paris@verona.example";

private slots:
    void init() { f.emplace(); }

    void addingAsksServerAndPeer()
    {
        f->message(stranger + "/x", "chat", "<body>hi</body>");
        auto* window = f->window(stranger);
        f->control<QAction>(*window, "Toolbar1Add").trigger();
        const QString add = R"(<iq id="VRX_Add" type="set"><query xmlns="jabber:iq:roster">)"
                            R"(<item jid="%1" name="%1"/></query></iq>)";
        const QString ask = R"(<presence type="subscribe" to="%1"/>)";
        QCOMPARE(f->engine.takeSent(), QStringList({add.arg(stranger), ask.arg(stranger)}));
        const QString told = "Your request has been submitted; waiting for a reply from your friend, the "
                             "contact will be placed in a group called \"Waiting authorization\"";
        QCOMPARE(f->world.boxes.shown, QList<Box>({{"Notification", told, Icon::Information, Buttons::Ok}}));
        for (const char* name : {"mnuToolsAdd", "Toolbar1Add"})
            QVERIFY2(!f->control<QAction>(*window, name).isEnabled(), name);
    }

    void commandsNeedAConnection()
    {
        f->message(stranger, "chat", "<body>hi</body>");
        auto* window = f->window(stranger);
        f->engine.gateway().connected = false;
        QSignalSpy wishes(f->hub.get(), &ChatWindow::vCardRequested);
        window->mnuToolsAdd_Click();
        window->mnustrvcard_Click();
        QVERIFY(f->panel(*window).contains("not connected"));
        QVERIFY(f->world.boxes.shown.isEmpty() && wishes.isEmpty() && f->engine.takeSent().isEmpty());
        for (const bool connected : {false, true}) {
            f->engine.gateway().connected = connected;
            emit f->control<QMenu>(*window, "mnuTools").aboutToShow();
            for (const char* name : {"mnuToolsAdd", "Toolbar1Add", "mnustrvcard", "Toolbar1VCard",
                                     "mnustrincchgr", "Toolbar1Invite", "mnustrsendfile", "Toolbar1Call"})
                QVERIFY2(f->control<QAction>(*window, name).isEnabled() == connected, name);
        }
    }

    void addingAContactIsRefused()
    {
        f->message(stranger, "chat", "<body>hi</body>");
        f->client.MyRoster.AddItem(stranger.toLower(), {}, false, {}, {}, false, {}, {}, {}, {});
        f->window(stranger)->mnuToolsAdd_Click();
        QCOMPARE(f->world.boxes.shown, QList<Box>({{"Error", "This Contact is already in your Contact List",
                                                    Icon::Exclamation, Buttons::Ok}}));
        QCOMPARE(f->engine.takeSent(), QStringList());
        QVERIFY(f->control<QAction>(*f->window(stranger), "mnuToolsAdd").isEnabled());
        f->client.MyRoster.RemoveAll();
        auto& queue = *f->client.Core->PluginManager->Queue();
        for (const int size : {100'000, 1}) { // until nothing more is taken
            while (queue.sendRaw("<message>" + QString(size, u'x') + "</message>", nullptr))
                continue;
        }
        f->window(stranger)->mnuToolsAdd_Click();
        QVERIFY(f->world.boxes.shown.last().text.startsWith("Your request was not sent"));
    }

    void blockingAsksFirst_data()
    {
        columns<bool, bool, bool, int>("byToolbar", "blockedBefore", "yes", "refreshes");
        row("menu, yes", false, false, true, 1);
        row("menu, no", false, false, false, 0);
        row("menu, blocked already", false, true, false, 0);
        row("tool bar, yes", true, false, true, 2);
        row("tool bar, no", true, false, false, 1);
    }
    void blockingAsksFirst()
    {
        const auto [byToolbar, blockedBefore, yes, refreshes] = fetched<bool, bool, bool, int>();
        auto* window = f->open(juliet);
        window->setPeer(juliet + "/balcony");
        if (blockedBefore)
            f->client.MyBanList.Add(juliet);
        if (yes)
            f->world.boxes.answers = {MessageBoxes::Answer::Yes};
        const QString banned = paths::configFolder() + "/BannedList.xml";
        QSignalSpy refresh(f->hub.get(), &ChatWindow::rosterRefreshRequested);
        f->control<QAction>(*window, byToolbar ? "Toolbar1Block" : "mnustrblock").trigger();
        QCOMPARE(f->world.boxes.shown.size(), 1);
        QCOMPARE(f->world.boxes.shown[0],
                 blockedBefore
                     ? Box({"Note !", "The Contact is already Blocked!", Icon::Information, Buttons::Ok})
                     : Box({"Confirm", "Are you sure that you want to Block this Contact", Icon::Question,
                            Buttons::NoYesCancel}));
        QCOMPARE(refresh.size(), refreshes);
        QCOMPARE(f->client.MyBanList.Count(), int(yes || blockedBefore));
        QCOMPARE(files::read(banned).contains("<item>" + juliet.toUtf8() + "</item>"), yes);
        QVERIFY(window->isVisible());
    }

    void windowFollowsPresence_data()
    {
        // resources: as the contact list holds them when the presence comes
        // textBox: shown in txtTOR; empty when the combo box shows
        columns<QStringList, QString, bool, QString, QString, QString, QString>(
            "resources", "inner", "available", "picture", "status", "textBox", "combo");
        const QStringList one{"tomb"};
        const QStringList two{"balcony", "tomb"};
        const QString s = "<status>st</status>";
        row("online", one, s, true, "Online", "st", "tomb", "");
        row("away", one, s + "<show>away</show>", true, "Away", "st", "tomb", "");
        row("xa", one, s + "<show>xa</show>", true, "xAway", "st", "tomb", "");
        row("dnd", one, s + "<show>dnd</show>", true, "dnd", "st", "tomb", "");
        row("chat", one, s + "<show>chat</show>", true, "free4chat", "st", "tomb", "");
        row("unknown show", one, s + "<show>busy</show>", true, "LightOn", "old", "tomb", "");
        row("second resource", two, s, true, "Online", "st", "", "tomb");
        row("gone, others stay", two, s, false, "LightOn", "old", "", "balcony");
        row("gone, one stays", QStringList{"balcony"}, s, false, "LightOn", "old", "balcony", "");
        row("gone for good", QStringList(), s, false, "Offline", "st", "before", "");
    }
    void windowFollowsPresence()
    {
        const auto [resources, inner, available, picture, status, textBox, combo] =
            fetched<QStringList, QString, bool, QString, QString, QString, QString>();
        auto* window = f->open(juliet);
        window->setPicture("LightOn");
        window->setStatusText("old");
        auto& single = f->control<QLineEdit>(*window, "txtTOR");
        single.setText("before");
        f->client.MyRoster.record(juliet)->Resources = resources;
        const QString type = available ? QString() : QString(" type=\"unavailable\"");
        f->engine.inject(QString("<presence from=\"%1/tomb\"%2>%3</presence>").arg(juliet, type, inner));
        QCOMPARE(f->control<QLabel>(*window, "imgStatus").accessibleDescription(), picture);
        QCOMPARE(f->control<QLineEdit>(*window, "txtTOS").text(), status);
        auto& several = f->control<QComboBox>(*window, "ComboResource");
        QCOMPARE(several.isVisible(), !combo.isEmpty());
        QCOMPARE(single.isVisible(), combo.isEmpty());
        QCOMPARE(several.currentText(), combo);
        if (combo.isEmpty())
            QCOMPARE(single.text(), textBox);
        else
            QCOMPARE(several.count(), resources.size());
        QCOMPARE(f->control<QLabel>(*window, "lblResource").buddy(),
                 combo.isEmpty() ? static_cast<QWidget*>(&single) : &several);
    }

    // What stays isn't listed anew: somebody may come and go a hundred thousand times.
    void theListFollowsTheResources_data()
    {
        columns<QStringList, QStringList, int>("before", "after", "changes");
        const QStringList three{"a", "b", "c"};
        row("the oldest goes", three, QStringList({"b", "c", "d"}), 2);
        row("the same", three, three, 0);
        row("one goes", three, QStringList({"a", "c"}), 1);
        row("another order", three, QStringList({"c", "a", "b"}), 4);
        row("twice", three, QStringList({"a", "a", "b", "c"}), 1);
        row("others", three, QStringList({"x", "y"}), 5);
    }
    void theListFollowsTheResources()
    {
        const auto [before, after, changes] = fetched<QStringList, QStringList, int>();
        auto* window = f->open(juliet);
        const auto& combo = f->control<QComboBox>(*window, "ComboResource");
        const auto show = [&](const QStringList& resources) {
            f->client.MyRoster.record(juliet)->Resources = resources;
            f->engine.inject(QString("<presence from=\"%1/%2\"/>").arg(juliet, resources.last()));
        };
        show(before);
        QSignalSpy came(combo.model(), &QAbstractItemModel::rowsInserted);
        QSignalSpy went(combo.model(), &QAbstractItemModel::rowsRemoved);
        show(after);
        QStringList listed;
        for (int i = 0; i < combo.count(); ++i)
            listed += combo.itemText(i);
        QCOMPARE(listed, after);
        QCOMPARE(combo.currentText(), after.last());
        QCOMPARE(came.size() + went.size(), changes);
    }

    void aHugeResourceIsCutToBeShownAlone()
    {
        const QString huge(500, QChar(0x316));
        f->client.MyRoster.record(juliet)->Resources = QStringList({"a", huge});
        auto* window = f->open(juliet);
        auto& combo = f->control<QComboBox>(*window, "ComboResource");
        const auto address = [&] {
            f->control<QPlainTextEdit>(*window, "txtMsg").setPlainText("x");
            f->engine.takeSent();
            window->cmdSend_Click();
            return wellFormed(f->engine.takeSent().value(0))->To();
        };
        f->message(juliet + "/" + huge, "chat", "<body>x</body>");
        QVERIFY(combo.currentText().size() < 100 && combo.currentText().endsWith("..."));
        QCOMPARE(address(), juliet + "/" + huge);
        combo.setEditText("a");
        QCOMPARE(address(), juliet + "/a");
        combo.setCurrentIndex(1);
        emit combo.activated(1);
        QCOMPARE(address(), juliet + "/" + huge);
        f->client.MyRoster.record(juliet)->Resources = QStringList(huge);
        f->engine.inject(QString("<presence from=\"%1/%2\"/>").arg(juliet, huge));
        QVERIFY(f->control<QLineEdit>(*window, "txtTOR").text().size() < 100);
    }

    void messageWithoutResourceTakesTheFirst()
    {
        f->client.MyRoster.record(juliet)->Resources = QStringList({"balcony", "tomb"});
        const auto* window = f->open(juliet);
        const auto& combo = f->control<QComboBox>(*window, "ComboResource");
        QCOMPARE(combo.currentText(), "balcony");
        f->message(juliet + "/nowhere", "chat", "<body>x</body>");
        QCOMPARE(combo.currentText(), "nowhere");
    }

    void presenceOfStrangersChangesNothing()
    {
        auto* window = f->open("paris@verona.example");
        f->engine.inject("<presence from='paris@verona.example/x'><status>s</status></presence>");
        QCOMPARE(f->control<QLineEdit>(*window, "txtTOS").text(), QString());
        QCOMPARE(f->control<QLabel>(*window, "imgStatus").accessibleDescription(), "Pendingauth");
    }
};

BRELO_TEST(PeerTest)
#include "PeerTest.moc"
