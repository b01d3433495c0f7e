#include "messaging/forms/authorizeForm.h"
#include "messaging/MessagingFixture.h"
#include "support/Table.h"
#include "support/TestRunner.h"

namespace
{

const QString request = QStringLiteral("<presence from=\"%1\" type=\"subscribe\"/>");
const QString answer = QStringLiteral("<presence to=\"%1\" type=\"%2\"/>");

} // namespace

// Answers to subscription requests.
class AuthorizeFormTest : public QObject
{
    Q_OBJECT

private slots:
    void settingsDecide_data()
    {
        columns<bool, bool, bool, bool, QStringList>("ask", "accept", "deny", "known", "answers");
        row("ask", true, false, false, false, QStringList());
        row("ask wins", true, true, true, false, QStringList());
        row("accept", false, true, false, false, QStringList({"subscribed", "subscribe"}));
        row("accept a contact", false, true, false, true, QStringList("subscribed"));
        row("accept wins over deny", false, true, true, true, QStringList("subscribed"));
        row("deny", false, false, true, false, QStringList("unsubscribed"));
        row("none", false, false, false, false, QStringList());
    }

    void settingsDecide()
    {
        const auto [ask, accept, deny, known, answers] = fetched<bool, bool, bool, bool, QStringList>();
        MessagingFixture f;
        f.client.settings.AuthAskForAll = ask;
        f.client.settings.AuthForAll = accept;
        f.client.settings.AuthDenyAll = deny;
        const QString from = known ? juliet : QStringLiteral("paris@verona.example");
        auto* form = new authorizeForm(f.registry, f.client);
        auto context = f.engine.contextFor(request.arg(from));
        form->Myapplicationplugin()->OnPresence(context);
        QStringList expected;
        for (const auto& type : answers)
            expected += answer.arg(from, type);
        QCOMPARE(f.engine.takeSent(), expected);
        QCOMPARE(f.registry.isLoaded(form), answers.isEmpty());
    }

    void eachDialogAnswersItsPeer()
    {
        MessagingFixture f;
        QList<authorizeForm*> forms;
        for (const auto& from : {QString("paris@verona.example/x"), juliet}) {
            forms += new authorizeForm(f.registry, f.client);
            forms.last()->setUserName(from);
            forms.last()->show();
            auto context = f.engine.contextFor(request.arg(from));
            forms.last()->OnPresence(context);
        }
        QCOMPARE(f.control<QLabel>(*forms[0], "lblUserName").text(), "paris@verona.example/x");
        QTest::mouseClick(&f.control<QWidget>(*forms[1], "cmdDeny"), Qt::LeftButton);
        QTest::mouseClick(&f.control<QWidget>(*forms[0], "cmdAccept"), Qt::LeftButton);
        const QString paris = QStringLiteral("paris@verona.example/x");
        QCOMPARE(f.engine.takeSent(),
                 QStringList({answer.arg(juliet, "unsubscribed"), answer.arg(paris, "subscribed"),
                              answer.arg(paris, "subscribe")}));
        QVERIFY(f.registry.loaded().isEmpty());
    }

    void vCardIsThatOfTheBareJid()
    {
        MessagingFixture f;
        authorizeForm form(f.registry, f.client);
        form.setUserName("o'\"hara@x.example/<home>");
        form.show();
        QTest::mouseClick(&f.control<QWidget>(form, "cmdShowVCard"), Qt::LeftButton);
        QCOMPARE(f.engine.takeSent(),
                 QStringList("<iq type=\"get\" id=\"vcard_wj_3\" to=\"o'&quot;hara@x.example\">"
                             "<VCARD xmlns=\"vcard-temp\"/></iq>"));
        QVERIFY(form.isVisible());
    }

    void strayKeysAndClosingSendNothing()
    {
        MessagingFixture f;
        auto* form = new authorizeForm(f.registry, f.client);
        form->show();
        auto context = f.engine.contextFor(request.arg(juliet));
        form->OnPresence(context);
        QVERIFY(QTest::qWaitForWindowActive(form));
        for (const auto key : {Qt::Key_Space, Qt::Key_Return})
            QTest::keyClick(form->focusWidget(), key);
        QVERIFY(form->isVisible());
        form->close();
        QVERIFY(!f.registry.isLoaded(form));
        QCOMPARE(f.engine.takeSent(), QStringList());
    }

    void longNameFitsTheScreen()
    {
        MessagingFixture f;
        authorizeForm form(f.registry, f.client);
        const QString name = QString(1000, u'w') + QStringLiteral("@x.example");
        form.setUserName(name);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QVERIFY2(form.width() < 800, qPrintable(QString::number(form.width())));
        authorizeForm shorter(f.registry, f.client);
        shorter.setUserName(QString(40, u'w') + QStringLiteral("@x.example"));
        shorter.show();
        auto& shown = f.control<QLabel>(shorter, "lblUserName");
        QVERIFY(QTest::qWaitForWindowExposed(&shorter));
        QVERIFY(shown.width() >= shown.fontMetrics().horizontalAdvance(shown.text()));
        const auto* label = QAccessible::queryAccessibleInterface(&f.control<QWidget>(form, "lblUserName"));
        QCOMPARE(label->text(QAccessible::Name), name);
    }
};

BRELO_TEST(AuthorizeFormTest)
#include "AuthorizeFormTest.moc"
