#include "messaging/forms/authorizeForm.h"
#include "messaging/MessagingFixture.h"
#include "messaging/forms/AuthorizationRequests.h"

// Answers to subscription requests.
class AuthorizeFormTest : public QObject
{
    Q_OBJECT
    std::optional<MessagingFixture> f;
    std::optional<AuthorizationRequests> requests;
    static inline const QString request = "<presence from='%1' type='subscribe'/>";
    static inline const QString answer = R"(<presence to="%1" type="%2"/>)";

    void take(const QString& from) { requests->take(f->engine.contextFor(request.arg(from))); }
    QStringList asked() const
    {
        QStringList names;
        for (auto* form : f->registry.loaded())
            names += form->isVisible() ? form->findChild<QLabel*>("lblUserName")->text() : "hidden";
        return names;
    }

private slots:
    void init()
    {
        f.emplace();
        requests.emplace(f->registry, f->client);
    }

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
        take(from);
        QStringList expected;
        for (const auto& type : answers)
            expected += answer.arg(from, type);
        QCOMPARE(f->engine.takeSent(), expected);
        QCOMPARE(f->registry.loaded().isEmpty(), !answers.isEmpty());
    }

    void eachDialogAnswersItsPeer()
    {
        const QString paris = "paris@verona.example/x";
        take(paris);
        take(juliet);
        QCOMPARE(asked(), QStringList({paris, juliet}));
        ui::click(f->registry.loaded()[1], "cmdDeny");
        ui::click(f->registry.loaded()[0], "cmdAccept");
        QCOMPARE(f->engine.takeSent(),
                 QStringList({answer.arg(juliet, "unsubscribed"), answer.arg(paris, "subscribed"),
                              answer.arg(paris, "subscribe")}));
        QVERIFY(f->registry.loaded().isEmpty());
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
        for (int again = 0; again < 100; ++again)
            take("one@x/" + QString::number(again));
        QCOMPARE(asked(), isAsked ? QStringList("one@x/0") : QStringList());
        if (!isAsked)
            return;
        f->registry.loaded()[0]->hide(); // as if it lay out of sight
        QTRY_COMPARE((take("one@x"), asked()), QStringList("one@x/0"));
        QElapsedTimer took;
        took.start();
        for (int stranger = 0; stranger < 20'000; ++stranger)
            take(QString("s%1@x").arg(stranger / 2));
        QVERIFY2(took.elapsed() < 5'000, qPrintable(QString::number(took.elapsed())));
        f->client.MyBanList.Add("s6@x");
        for (int next = 0; next < 12; ++next) { // nobody else is lost, and each is asked once
            QTRY_COMPARE(asked().size(), 5);
            const int stranger = next - (next < 7);
            QCOMPARE(asked()[0], next ? QString("s%1@x").arg(stranger) : QString("one@x/0"));
            ui::click(f->registry.loaded()[0], next % 2 ? "cmdDeny" : "cmdAccept");
        }
        ++f->client.sessionNumber; // the end of the session closes what is open, and nothing follows
        f->registry.unloadAllExcept({});
        QCoreApplication::processEvents();
        QVERIFY(f->registry.loaded().isEmpty());
        take("new@x");
        QCOMPARE(asked(), QStringList("new@x"));
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
        take(juliet);
        auto* form = f->registry.loaded()[0];
        QVERIFY(QTest::qWaitForWindowActive(form));
        for (const auto key : {Qt::Key_Space, Qt::Key_Return})
            QTest::keyClick(form->focusWidget(), key);
        QVERIFY(form->isVisible());
        form->close();
        QVERIFY(f->registry.loaded().isEmpty());
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
