#include "session/SessionFixture.h"
// What one window does to another, and the ways to them.
class WindowsTest : public QObject
{
    Q_OBJECT
    static PreferencesForm* preferences(FakeClient& live)
    {
        return qobject_cast<PreferencesForm*>(live.form("PreferencesForm"));
    }

private slots:
    void aBlockedContactIsUnblocked()
    {
        SignedInClient live;
        ui::choose(live.rosterForm(), "mRosterFBlocked");
        auto* page = preferences(live)->panel("Privacy");
        live.world.boxes.inputs = {"juliet@montague.example"};
        ui::click(page, "cmdAdd");
        const auto image = [&] {
            live.rosterForm()->Roster1->settle();
            auto& tree = live.rosterForm()->Roster1->tree();
            const auto* node = tree.Item(tree.NodeIndexByKey("juliet@montague.example"));
            return node ? node->image : QString();
        };
        QCOMPARE(image(), "notauth");
        live.inject(message("chat"));
        QVERIFY(!live.form("MessageForm"));
        ui::find<QListWidget>(page, "List1")->setCurrentRow(0);
        ui::click(page, "cmdRemove");
        QVERIFY(image() != "notauth");
        live.inject(message("chat"));
        QVERIFY(live.form("MessageForm"));
    }

    void theAboutWindowTellsWhatTheProgramIs()
    {
        FakeClient live;
        live.client.site.WebSite = "www.breloim.example";
        live.ui->windows.session.showAbout();
        auto* about = live.form("AboutForm");
        const auto text = [about](const char* label) { return ui::find<QLabel>(about, label)->text(); };
        QCOMPARE(text("lblTitle") + '|' + text("lblVersion"), "BreloIM|Version " BRELO_VERSION);
        QVERIFY(QRegularExpression("^Revision [0-9a-f]{9}$|^Revision .* release$")
                    .match(text("lblRevision"))
                    .hasMatch());
        const QString notices = ui::find<QPlainTextEdit>(about, "txtNotices")->toPlainText();
        const QRegularExpression libraries(
            "Qt %1, QtKeychain [0-9.]+, GNU SASL [0-9.]+ and pugixml [0-9.]+,");
        QVERIFY(notices.contains(QRegularExpression(libraries.pattern().arg(qVersion()))));
        QVERIFY(notices.contains("MIT License") && notices.contains("Copyright © 2026 The BreloIM authors."));
        auto* link = ui::find<QLabel>(about, "lblWebSite");
        QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(link->fontMetrics().height(), link->height() / 2));
        QVERIFY(link->isVisible() && live.world.links.opened.contains("https://www.breloim.example/"));
        ui::click(about, "cmdOK");
        QVERIFY(!live.form("AboutForm"));
        live.client.site.WebSite.clear();
        live.ui->windows.session.showAbout();
        QVERIFY(!ui::find<QLabel>(live.form("AboutForm"), "lblWebSite")->isVisible());
    }

    void menusLeadToThePages()
    {
        const QList<std::pair<const char*, QString>> pages{
            {"mRosterTPref", "Personal"}, {"mRosterTGateways", "Gateways"}, {"mRosterFBlocked", "Privacy"}};
        for (const auto& [entry, page] : pages) {
            SignedInClient live;
            for (int twice = 0; twice < 2; ++twice) {
                ui::choose(live.rosterForm(), entry);
                QVERIFY(preferences(live) && preferences(live)->isVisible());
                QCOMPARE(ui::find<QTreeWidget>(preferences(live), "TreeView1")->currentItem()->text(0), page);
                QVERIFY(preferences(live)->panel(page)->isVisible());
            }
        }
    }

    void appliedSettingsReachTheOtherWindows()
    {
        SignedInClient live;
        auto& form = *preferences((live.ui->windows.preferences.show("Connection"), live));
        ui::find<QCheckBox>(form.panel("Connection"), "Check2")->click();
        form.showPage("Resource");
        ui::type(form.panel("Resource"), "txtResource", "orchard");
        form.showPage("List");
        live.world.looks.fonts = {{"Serif", 14, true, false}};
        ui::click(&form, "cmdFontOnLine");
        ui::click(&form, "cmdApply");
        QVERIFY(ui::find<QCheckBox>(&live.signInForm(), "Check1")->isChecked());
        QCOMPARE(ui::find<QLineEdit>(&live.signInForm(), "txtResource")->text(), "orchard");
        QCOMPARE(live.rosterForm()->Roster1->view().font().pointSizeF(), 14.0);
        QVERIFY(live.client.ownFullJid().endsWith("/BreloIM")); // until the next sign-in
        form.showPage("Personal");
        QVERIFY(ui::find<QRadioButton>(&form, "chkWndNotOnTop")->isChecked());
        for (const bool onTop : {true, false}) {
            ui::click(&form, onTop ? "chkAlwaysOnTop" : "chkWndNotOnTop");
            QCOMPARE(live.client.settings.OnTop, onTop);
            QCOMPARE(live.rosterForm()->windowFlags().testFlag(Qt::WindowStaysOnTopHint), onTop);
            QVERIFY(live.rosterForm()->isVisible());
        }
    }

    void thePreferencesSendNothingAndCountAsNoList()
    {
        FakeClient live;
        ui::type(&live.signInForm(), "txtUserName", "romeo");
        ui::type(&live.signInForm(), "txtServer", "montague.example");
        ui::click(&live.signInForm(), "Connect");
        live.streamUp();
        live.world.boxes.answers = {MessageBoxes::Answer::No};
        live.inject(refusal);
        const auto apply = [&] {
            live.ui->windows.preferences.show("Personal");
            ui::click(preferences(live), "cmdOK");
            live.client.Core->tick();
        };
        apply();
        QVERIFY(!live.rosterForm()->Roster1->IsInitiated());
        live.signIn();
        QVERIFY(live.rosterForm()->isVisible());
        ui::choose(live.rosterForm(), "mRosterSDND");
        live.takeSent();
        apply();
        QCOMPARE(live.takeSent(), QStringList());
    }

    void defaultsAreRestored()
    {
        FakeClient live;
        live.client.settings.Resource = "orchard";
        live.ui->windows.preferences.show("Resource");
        ui::click(preferences(live), "cmdRestoreRegistry");
        ui::click(live.form("RestoreRegForm"), "cmdNo");
        QVERIFY(!live.form("RestoreRegForm"));
        QCOMPARE(live.client.settings.Resource, "orchard");
        ui::click(preferences(live), "cmdRestoreRegistry");
        ui::click(live.form("RestoreRegForm"), "cmdYes");
        QVERIFY(!live.form("RestoreRegForm"));
        QVERIFY(preferences(live)->isVisible());
        QCOMPARE(ui::find<QLineEdit>(preferences(live)->panel("Resource"), "txtResource")->text(), "BreloIM");
        QCOMPARE(live.client.settings.Resource, "BreloIM");
        QVERIFY(live.client.settings.CheckError);
        QCOMPARE(ui::find<QLineEdit>(&live.signInForm(), "txtResource")->text(), "BreloIM");
    }

    void aNoticeShowsItsWindow()
    {
        for (const auto& xml :
             {message("headline", "montague.example"),
              QString("<message from='juliet@montague.example' type='error'><error>gone</error></message>"),
              QString("<presence from='juliet@montague.example' type='subscribed'/>")}) {
            SignedInClient live;
            live.client.settings.CheckError = true;
            for (int twice = 0; twice < 2; ++twice) { // once for a new window, once for a hidden one
                live.inject(xml);
                auto* notices = live.form("HeadLineForm");
                QVERIFY2(notices && notices->isVisible(), qPrintable(xml));
                notices->close();
                QVERIFY(!notices->isVisible());
            }
        }
    }

    void theServerRowBringsTheNoticesToTheFront()
    {
        SignedInClient live;
        live.inject(message("headline", "montague.example"));
        auto& list = *live.rosterForm();
        list.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&list));
        list.Roster1->view().keyboardSearch("MONTAGUE");
        QTest::keyClick(&list.Roster1->view(), Qt::Key_Return);
        QVERIFY(QTest::qWaitForWindowActive(live.form("HeadLineForm")));
    }

    void theProxyIsUsedByTheNextConnection()
    {
        FakeClient live;
        live.client.proxy = {ProxyServer::Kind::Socks5, "proxy.example", 1080, {}, {}};
        live.connectToServer();
        QCOMPARE(live.gateway->proxy.host, "proxy.example");
    }
};

BRELO_TEST(WindowsTest)
#include "WindowsTest.moc"
