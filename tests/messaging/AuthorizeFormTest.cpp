#include "messaging/forms/authorizeForm.h"
#include "messaging/MessagingFixture.h"
#include "messaging/forms/AuthorizationRequests.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

// Answers to subscription requests.
class AuthorizeFormTest : public QObject
{
    Q_OBJECT

    std::optional<MessagingFixture> f;
    static inline const QString request = "<presence from='%1' type='subscribe'/>";
    static inline const QString answer = R"(<presence to="%1" type="%2"/>)";

private slots:
    void init() { f.emplace(); }

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
        f->client.settings.AuthAskForAll = ask;
        f->client.settings.AuthForAll = accept;
        f->client.settings.AuthDenyAll = deny;
        const QString from = known ? juliet : QString("paris@verona.example");
        auto* form = new authorizeForm(f->registry, f->client);
        auto context = f->engine.contextFor(request.arg(from));
        form->Myapplicationplugin()->OnPresence(context);
        QStringList expected;
        for (const auto& type : answers)
            expected += answer.arg(from, type);
        QCOMPARE(f->engine.takeSent(), expected);
        QCOMPARE(f->registry.isLoaded(form), answers.isEmpty());
    }

    void eachDialogAnswersItsPeer()
    {
        const QString paris = "paris@verona.example/x";
        QList<authorizeForm*> forms;
        for (const auto& from : {paris, juliet}) {
            forms += new authorizeForm(f->registry, f->client);
            forms.last()->setUserName(from);
            forms.last()->show();
            auto context = f->engine.contextFor(request.arg(from));
            forms.last()->OnPresence(context);
        }
        QCOMPARE(f->control<QLabel>(*forms[0], "lblUserName").text(), paris);
        ui::click(forms[1], "cmdDeny");
        ui::click(forms[0], "cmdAccept");
        QCOMPARE(f->engine.takeSent(),
                 QStringList({answer.arg(juliet, "unsubscribed"), answer.arg(paris, "subscribed"),
                              answer.arg(paris, "subscribe")}));
        QVERIFY(f->registry.loaded().isEmpty());
    }

    static QStringList asked(const FormRegistry& registry)
    {
        QStringList names;
        for (auto* form : registry.loaded())
            names += form->isVisible() ? form->findChild<QLabel*>("lblUserName")->text() : "hidden";
        return names;
    }

    void fewWindowsAskForManyRequests_data()
    {
        columns<bool, bool, bool>("ask", "blocked", "asked");
        row("asked", true, false, true);
        row("settings that say nothing", false, false, true);
        row("a blocked one", true, true, false);
    }
    void fewWindowsAskForManyRequests()
    {
        const auto [ask, blocked, isAsked] = fetched<bool, bool, bool>();
        f->client.settings.AuthAskForAll = ask;
        f->client.settings.AuthForAll = f->client.settings.AuthDenyAll = false;
        if (blocked)
            f->client.MyBanList.Add("one@x");
        AuthorizationRequests requests(f->registry, f->client);
        const auto ring = [&](const QString& from) {
            requests.take(f->engine.contextFor(request.arg(from)));
        };
        for (int again = 0; again < 100; ++again)
            ring("one@x/" + QString::number(again));
        QCOMPARE(asked(f->registry), isAsked ? QStringList("one@x/0") : QStringList());
        if (!isAsked)
            return;
        f->registry.loaded()[0]->hide(); // as if it lay out of sight
        QTRY_COMPARE((ring("one@x"), asked(f->registry)), QStringList("one@x/0"));
        QElapsedTimer took;
        took.start();
        for (int stranger = 0; stranger < 20'000; ++stranger)
            ring(QString("s%1@x").arg(stranger / 2));
        QVERIFY2(took.elapsed() < 5'000, qPrintable(QString::number(took.elapsed())));
        f->client.MyBanList.Add("s6@x");
        for (int next = 0; next < 12; ++next) { // nobody else is lost, and each is asked once
            QTRY_COMPARE(asked(f->registry).size(), 5);
            const int stranger = next - (next < 7);
            QCOMPARE(asked(f->registry)[0], next ? QString("s%1@x").arg(stranger) : QString("one@x/0"));
            ui::click(f->registry.loaded()[0], next % 2 ? "cmdDeny" : "cmdAccept");
        }
        ++f->client.sessionNumber; // the end of the session closes what is open, and nothing follows
        f->registry.unloadAllExcept({});
        QCoreApplication::processEvents();
        QVERIFY(f->registry.loaded().isEmpty());
        ring("new@x");
        QCOMPARE(asked(f->registry), QStringList("new@x"));
    }

    void vCardIsThatOfTheBareJid()
    {
        authorizeForm form(f->registry, f->client);
        form.setUserName("o'\"hara@x.example/<home>");
        form.show();
        ui::click(&form, "cmdShowVCard");
        const QString sent = "<iq type=\"get\" id=\"vcard_wj_3\" to=\"o'&quot;hara@x.example\">"
                             "<VCARD xmlns=\"vcard-temp\"/></iq>";
        QCOMPARE(f->engine.takeSent(), QStringList(sent));
        QVERIFY(form.isVisible());
    }

    void strayKeysAndClosingSendNothing()
    {
        auto* form = new authorizeForm(f->registry, f->client);
        form->show();
        auto context = f->engine.contextFor(request.arg(juliet));
        form->OnPresence(context);
        QVERIFY(QTest::qWaitForWindowActive(form));
        for (const auto key : {Qt::Key_Space, Qt::Key_Return})
            QTest::keyClick(form->focusWidget(), key);
        QVERIFY(form->isVisible());
        form->close();
        QVERIFY(!f->registry.isLoaded(form));
        QCOMPARE(f->engine.takeSent(), QStringList());
    }

    void longNameFitsTheScreen()
    {
        authorizeForm form(f->registry, f->client);
        authorizeForm shorter(f->registry, f->client);
        const QString name = QString(1000, u'w') + "@x.example";
        form.setUserName(name);
        shorter.setUserName(QString(40, u'w') + "@x.example");
        for (auto* shown : {&form, &shorter}) {
            shown->show();
            QVERIFY(QTest::qWaitForWindowExposed(shown));
        }
        QVERIFY2(form.width() < 800, qPrintable(QString::number(form.width())));
        const auto& label = f->control<QLabel>(shorter, "lblUserName");
        QVERIFY(label.width() >= label.fontMetrics().horizontalAdvance(label.text()));
        const auto* read = QAccessible::queryAccessibleInterface(&f->control<QWidget>(form, "lblUserName"));
        QCOMPARE(read->text(QAccessible::Name), name);
    }
};

BRELO_TEST(AuthorizeFormTest)
#include "AuthorizeFormTest.moc"
