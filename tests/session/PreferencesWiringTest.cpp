#include "FakeClient.h"
#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "preferences/forms/PreferencePanel.h"
#include "preferences/forms/PreferencesForm.h"
#include "session/forms/SignInForm.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>

// What the preferences change in the other windows, and the ways to them.
class PreferencesWiringTest : public QObject
{
    Q_OBJECT

private slots:
    void aBlockedContactIsUnblocked();
    void menusLeadToThePages_data();
    void menusLeadToThePages();
    void appliedSettingsReachTheOtherWindows();
    void defaultsAreRestored();
    void theProxyIsUsedByTheNextConnection();

private:
    static PreferencesForm* preferences(FakeClient& live)
    {
        return qobject_cast<PreferencesForm*>(live.form("PreferencesForm"));
    }
    static QString message()
    {
        return QStringLiteral("<message from=\"juliet@montague.example/balcony\" type=\"chat\" "
                              "to=\"romeo@montague.example/BreloIM\"><body>hark</body></message>");
    }
};

void PreferencesWiringTest::aBlockedContactIsUnblocked()
{
    FakeClient live;
    live.signIn();
    ui::choose(live.rosterForm(), "mRosterFBlocked");
    auto* page = preferences(live)->panel(QStringLiteral("Privacy"));
    live.world.boxes.inputs = {QStringLiteral("juliet@montague.example")};
    ui::click(page, "cmdAdd");
    const auto image = [&] {
        live.rosterForm()->Roster1->settle();
        auto& tree = live.rosterForm()->Roster1->tree();
        const auto* node = tree.Item(tree.NodeIndexByKey(QStringLiteral("juliet@montague.example")));
        return node ? node->image : QString();
    };
    QCOMPARE(image(), QStringLiteral("notauth"));
    live.inject(message());
    QVERIFY(!live.form("MessageForm"));
    ui::find<QListWidget>(page, "List1")->setCurrentRow(0);
    ui::click(page, "cmdRemove");
    QVERIFY(image() != QStringLiteral("notauth"));
    live.inject(message());
    QVERIFY(live.form("MessageForm"));
}

void PreferencesWiringTest::menusLeadToThePages_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QString>("page");
    QTest::newRow("preferences") << QByteArray("mRosterTPref") << "Personal";
    QTest::newRow("gateways") << QByteArray("mRosterTGateways") << "Gateways";
    QTest::newRow("blocked contacts") << QByteArray("mRosterFBlocked") << "Privacy";
}

void PreferencesWiringTest::menusLeadToThePages()
{
    QFETCH(QByteArray, entry);
    QFETCH(QString, page);
    FakeClient live;
    live.signIn();
    for (int twice = 0; twice < 2; ++twice) {
        ui::choose(live.rosterForm(), entry.constData());
        QVERIFY(preferences(live) && preferences(live)->isVisible());
        QCOMPARE(ui::find<QTreeWidget>(preferences(live), "TreeView1")->currentItem()->text(0), page);
        QVERIFY(preferences(live)->panel(page)->isVisible());
    }
}

void PreferencesWiringTest::appliedSettingsReachTheOtherWindows()
{
    FakeClient live;
    live.signIn();
    auto& form = *preferences((live.ui->windows.showPreferences(QStringLiteral("Connection")), live));
    ui::find<QCheckBox>(form.panel(QStringLiteral("Connection")), "Check2")->click();
    form.showPage(QStringLiteral("Resource"));
    ui::type(form.panel(QStringLiteral("Resource")), "txtResource", QStringLiteral("orchard"));
    form.showPage(QStringLiteral("List"));
    live.world.looks.fonts = {{QStringLiteral("Serif"), 14, true, false}};
    ui::click(&form, "cmdFontOnLine");
    ui::click(&form, "cmdApply");
    QVERIFY(ui::find<QCheckBox>(&live.signInForm(), "Check1")->isChecked());
    QCOMPARE(ui::find<QLineEdit>(&live.signInForm(), "txtResource")->text(), QStringLiteral("orchard"));
    QCOMPARE(live.rosterForm()->Roster1->view().font().pointSizeF(), 14.0);
    form.showPage(QStringLiteral("Personal"));
    ui::click(&form, "chkAlwaysOnTop");
    QVERIFY(live.rosterForm()->windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(live.rosterForm()->isVisible());
}

void PreferencesWiringTest::defaultsAreRestored()
{
    FakeClient live;
    live.client.settings.Resource = QStringLiteral("orchard");
    live.ui->windows.showPreferences(QStringLiteral("Resource"));
    ui::click(preferences(live), "cmdRestoreRegistry");
    ui::click(live.form("RestoreRegForm"), "cmdNo");
    QVERIFY(!live.form("RestoreRegForm"));
    QCOMPARE(live.client.settings.Resource, QStringLiteral("orchard"));
    ui::click(preferences(live), "cmdRestoreRegistry");
    ui::click(live.form("RestoreRegForm"), "cmdYes");
    QVERIFY(!live.form("RestoreRegForm"));
    QVERIFY(preferences(live)->isVisible());
    QVERIFY(!preferences(live)->panel(QStringLiteral("Resource"))); // made anew
    QCOMPARE(live.client.settings.Resource, QStringLiteral("BreloIM"));
    QVERIFY(live.client.settings.CheckError);
    QCOMPARE(ui::find<QLineEdit>(&live.signInForm(), "txtResource")->text(), QStringLiteral("BreloIM"));
}

void PreferencesWiringTest::theProxyIsUsedByTheNextConnection()
{
    FakeClient live;
    live.client.proxy = {ProxyServer::Kind::Socks5, QStringLiteral("proxy.example"), 1080, {}, {}};
    ui::click(&live.signInForm(), "Connect");
    QCOMPARE(live.gateway->proxy.host, QStringLiteral("proxy.example"));
}

BRELO_TEST(PreferencesWiringTest)
#include "PreferencesWiringTest.moc"
