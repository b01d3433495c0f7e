#include "messaging/MessagingFixture.h"
#include "support/Table.h"
#include "support/TestRunner.h"

// An open window follows its peer's presence and resources.
class PeerPresenceTest : public QObject
{
    Q_OBJECT

private slots:
    void windowFollowsPresence_data()
    {
        // resources: as the contact list holds them when the presence comes
        // textBox: shown in txtTOR; empty when the combo box shows
        columns<QStringList, QString, bool, QString, QString, QString, QString>(
            "resources", "inner", "available", "picture", "status", "textBox", "combo");
        const QStringList one{"tomb"};
        const QStringList two{"balcony", "tomb"};
        const QString s = QStringLiteral("<status>st</status>");
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
        MessagingFixture f;
        auto* window = f.open(juliet);
        window->setPicture("LightOn");
        window->setStatusText("old");
        auto& single = f.control<QLineEdit>(*window, "txtTOR");
        single.setText("before");
        f.client.MyRoster.record(juliet)->Resources = resources;

        const QString type = available ? QString() : QStringLiteral(" type=\"unavailable\"");
        f.engine.inject(
            QStringLiteral("<presence from=\"%1/tomb\"%2>%3</presence>").arg(juliet, type, inner));
        QCOMPARE(f.control<QLabel>(*window, "imgStatus").accessibleDescription(), picture);
        QCOMPARE(f.control<QLineEdit>(*window, "txtTOS").text(), status);
        auto& several = f.control<QComboBox>(*window, "ComboResource");
        QCOMPARE(several.isVisible(), !combo.isEmpty());
        QCOMPARE(single.isVisible(), combo.isEmpty());
        QCOMPARE(several.currentText(), combo);
        if (combo.isEmpty())
            QCOMPARE(single.text(), textBox);
        else
            QCOMPARE(several.count(), resources.size());
        QCOMPARE(f.control<QLabel>(*window, "lblResource").buddy(),
                 combo.isEmpty() ? static_cast<QWidget*>(&single) : &several);
    }

    void messageWithoutResourceTakesTheFirst()
    {
        MessagingFixture f;
        f.client.MyRoster.record(juliet)->Resources = QStringList({"balcony", "tomb"});
        const auto* window = f.open(juliet);
        const auto& combo = f.control<QComboBox>(*window, "ComboResource");
        QCOMPARE(combo.currentText(), "balcony");
        f.message(juliet + QStringLiteral("/nowhere"), "chat", "<body>x</body>");
        QCOMPARE(combo.currentText(), "nowhere");
    }

    void presenceOfStrangersChangesNothing()
    {
        MessagingFixture f;
        const QString stranger = QStringLiteral("paris@verona.example");
        auto* window = f.open(stranger);
        f.engine.inject(
            QStringLiteral("<presence from=\"%1/x\"><status>s</status></presence>").arg(stranger));
        QCOMPARE(f.control<QLineEdit>(*window, "txtTOS").text(), QString());
        QCOMPARE(f.control<QLabel>(*window, "imgStatus").accessibleDescription(), "Pendingauth");
    }
};

BRELO_TEST(PeerPresenceTest)
#include "PeerPresenceTest.moc"
