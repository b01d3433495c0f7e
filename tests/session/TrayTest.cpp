#include "FakeClient.h"
#include "contacts/forms/RosterForm.h"
#include "session/forms/SignInForm.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

#include <QTest>

// The tray's menu and icon before the real windows.
class TrayTest : public QObject
{
    Q_OBJECT

    static void choose(FakeClient& live, const char* entry) { ui::choose(live.menus.menu(), entry); }

private slots:
    void entriesFollowTheWindows()
    {
        FakeClient live;
        const auto entries = [&live] {
            return QStringList{live.trayEntry("mnuTrayConnect"), live.trayEntry("mnuTrayRestore"),
                               live.trayEntry("mnuTrayMinimize")};
        };
        const QString connectText = QStringLiteral("Connect...");
        const QString disconnectText = QStringLiteral("Disconnect...");
        const QString restore = QStringLiteral("Restore");
        const QString minimize = QStringLiteral("Minimize");
        QCOMPARE(entries(), (QStringList{connectText, QString(), minimize}));
        choose(live, "mnuTrayMinimize");
        QVERIFY(!live.signInForm().isVisible());
        QCOMPARE(entries(), (QStringList{connectText, restore, QString()}));
        choose(live, "mnuTrayRestore");
        QVERIFY(live.signInForm().isVisible());
        QCOMPARE(entries(), (QStringList{connectText, QString(), minimize}));

        live.signIn();
        QCOMPARE(entries(), (QStringList{disconnectText, QString(), minimize}));
        choose(live, "mnuTrayMinimize");
        QVERIFY(live.rosterForm()->isMinimized());
        QVERIFY(live.form("ShowInTrayForm")->isVisible());
        QCOMPARE(entries(), (QStringList{disconnectText, restore, QString()}));
        choose(live, "mnuTrayRestore");
        QVERIFY(live.rosterForm()->isVisible() && !live.rosterForm()->isMinimized());
        choose(live, "mnuTrayConnect");
        QCOMPARE(live.gateway->disconnects, 1);
        QVERIFY(live.signInForm().isVisible() && !live.rosterForm());
        QCOMPARE(entries().first(), connectText);
    }

    // Neither signed in nor on the way: the entry still brings the sign-in window.
    void connectBringsTheSignInWindow()
    {
        FakeClient live;
        live.signInForm().hide();
        choose(live, "mnuTrayConnect");
        QVERIFY(live.signInForm().isVisible());
    }

    void statusEntries_data()
    {
        columns<QByteArray, QString>("entry", "show");
        row("available", QByteArray("mnuTrayStatusAv"), "<show></show>");
        row("away", QByteArray("mnuTrayStatusAway"), "<show>away</show>");
        row("extended away", QByteArray("mnuTrayStatusXA"), "<show>xa</show>");
        row("do not disturb", QByteArray("mnuTrayStatusDND"), "<show>dnd</show>");
        row("free for chat", QByteArray("mnuTrayStatusFFC"), "<show>chat</show>");
    }

    void statusEntries()
    {
        QFETCH(QByteArray, entry);
        QFETCH(QString, show);
        FakeClient live;
        choose(live, entry.constData());
        QCOMPARE(live.takeSent(), QStringList());
        live.signIn();
        live.takeSent();
        choose(live, entry.constData());
        const QStringList sent = live.takeSent();
        QCOMPARE(sent.size(), 1);
        QVERIFY2(sent.at(0).contains(show), qPrintable(sent.at(0)));
        for (const char* name : {"mnuTrayStatusAv", "mnuTrayStatusAway", "mnuTrayStatusXA",
                                 "mnuTrayStatusDND", "mnuTrayStatusFFC"})
            QCOMPARE(ui::find<QAction>(live.menus.menu(), name)->isChecked(), entry == name);
    }

    void doubleClick_data()
    {
        columns<bool>("minimized");
        row("brings a minimised main window back", true);
        row("leaves an open one alone", false);
    }

    void doubleClick()
    {
        QFETCH(bool, minimized);
        FakeClient live;
        live.trayControl->onDoubleClick(); // no main window yet
        live.signIn();
        if (minimized)
            choose(live, "mnuTrayMinimize");
        live.trayControl->onDoubleClick();
        QVERIFY(live.rosterForm()->isVisible() && !live.rosterForm()->isMinimized());
        QCOMPARE(live.trayEntry("mnuTrayRestore"), QString());
    }

    void closingTheMainWindow_data()
    {
        columns<bool>("reachable");
        row("hides it and says where it went", true);
        row("leaves it in reach where there is no tray", false);
    }

    void closingTheMainWindow()
    {
        QFETCH(bool, reachable);
        FakeClient live;
        live.world.tray.reachable = reachable;
        live.signIn();
        live.rosterForm()->close();
        QCOMPARE(live.gateway->disconnects, 0);
        QVERIFY(live.rosterForm()->isMinimized());
        QCOMPARE(live.rosterForm()->isVisible(), !reachable);
        QCOMPARE(live.form("ShowInTrayForm") != nullptr, reachable);
        QCOMPARE(live.trayEntry("mnuTrayRestore").isEmpty(), !reachable);
        live.trayControl->onDoubleClick();
        QVERIFY(live.rosterForm()->isVisible() && !live.rosterForm()->isMinimized());
    }
};

BRELO_TEST(TrayTest)
#include "TrayTest.moc"
