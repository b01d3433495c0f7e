#include "mailwatch/MailFixture.h"

// A watch that runs: its looks at the mailbox, its icon and menu, and all its ends.
class WatchingTest : public QObject
{
    Q_OBJECT

    using Click = QSystemTrayIcon::ActivationReason;
    const QString watching = "Sto controllando per nuove e-mail";
    const QString news = "Hai nuove e-mail non aperte";

private slots:
    void answersShowByIconAndBalloon_data()
    {
        columns<QByteArray, bool>("answer", "isNews");
        const QByteArray ok = "HTTP/1.1 200 OK";
        row("new mail", MailServer::multiStatus(ok), true);
        row("nothing new", MailServer::multiStatus("HTTP/1.1 204 No Content"), false);
        row("an empty body", MailServer::answer("200 OK"), false);
        row("no XML", MailServer::answer("200 OK", "200 OK"), false);
        row("a document type", MailServer::answer("207 M", "<!DOCTYPE a><a>200 OK</a>"), false);
        row("half a body", MailServer::multiStatus(ok).chopped(1), false);
        row("a chunk without a size",
            QByteArray("HTTP/1.1 207 M\r\nTransfer-Encoding: chunked\r\n\r\n9\r\n<a>200 "
                       "OK\r\nzz\r\n</a>\r\n0\r\n\r\n"),
            false);
        row("50 MiB", MailServer::answer("207 M", "<a>200 OK" + QByteArray(50 << 20, ' ') + "</a>"), false);
        for (const char* status : {"302 Found", "401 No", "403 Forbidden", "404 Not Found", "500 Oops"})
            row(status, MailServer::answer(status), false);
    }
    void answersShowByIconAndBalloon()
    {
        const auto [answer, isNews] = fetched<QByteArray, bool>();
        MailFixture f;
        QVERIFY(f.subscribe() && f.tmrNotify().isActive());
        const auto picture = f.icon()->icon().pixmap(16).toImage();
        f.server.answerNext("POLL", answer);
        QVERIFY(f.poll() && f.poll()); // the second follows when the first is over
        QTRY_COMPARE(f.tip(), isNews ? news : watching);
        QCOMPARE(f.icon()->icon().pixmap(16).toImage() != picture, isNews);
        const QString balloon =
            "BreloIM : Notifica evento!|E' arrivata una nuova mail, clicca sull'icona nella "
            "barra di stato per leggerela !";
        QCOMPARE(f.client->world.tray.balloons, isNews ? QStringList{balloon} : QStringList());
        QCOMPARE(f.client->world.tray.balloonIcon, isNews);
        QCOMPARE(f.client->world.tray.balloonTime, isNews ? 10'000 : 0);
        QVERIFY(f.boxes().shown.isEmpty() && f.server.count("SUBSCRIBE") == 1);
        QCOMPARE(f.server.last("POLL"), QByteArray("POLL /exchange/ann/inbox HTTP/1.1\nSubscription-id: 1\n"
                                                   "Authorization: Basic YW5uOnNlY3JldA=="));
    }

    void newMailIsToldAtEveryLook()
    {
        MailFixture f;
        QVERIFY(f.subscribe());
        f.server.hasNews = true;
        QVERIFY(f.poll() && f.poll());
        auto& tray = f.client->world.tray;
        QTRY_COMPARE(tray.balloons.size(), 2);
        f.client->client.settings.BalloonEnable = false;
        QVERIFY(f.poll() && f.poll());
        QCOMPARE(tray.balloons.size(), 2);
        emit f.icon()->activated(Click::DoubleClick);
        QCOMPARE(f.tip(), watching);
        QCOMPARE(f.client->world.links.opened, QStringList{f.server.inbox()});
        emit f.icon()->activated(Click::DoubleClick);
        QCOMPARE(f.client->world.links.opened.size(), 2);
    }

    void aTickDuringALookIsSkipped()
    {
        MailFixture f;
        QVERIFY(f.subscribe());
        f.server.answerNext("POLL", {});
        QVERIFY(f.poll());
        f.tick();
        ui::choose(f.window(), "mPopSysSub2"); // gives it up
        ui::choose(f.window(), "mPopSysSub2");
        QVERIFY(f.poll());
        QCOMPARE(f.server.count("POLL"), 2);
    }

    void aSubscriptionThatRanOutIsRenewed_data()
    {
        columns<QByteArray, QString>("answer", "box");
        row("taken again", QByteArray(), "");
        row("refused", MailServer::answer("401 No"),
            "Non hai accesso a questo URL contenitore. Verifica nome utente e password.");
        row("failed", MailServer::answer("500 Oops"),
            "L'applicazione non riesce a sottoscriversi nuovamente alle notifiche. Sto terminando "
            "normalmente.");
    }
    void aSubscriptionThatRanOutIsRenewed()
    {
        const auto [answer, box] = fetched<QByteArray, QString>();
        MailFixture f;
        QVERIFY(f.subscribe());
        f.server.subscriptions.clear();
        if (!answer.isEmpty())
            f.server.answerNext("SUBSCRIBE", answer);
        f.tick();
        QTRY_COMPARE(f.server.count("SUBSCRIBE"), 2);
        if (box.isEmpty()) {
            QVERIFY(f.poll() && f.boxes().shown.isEmpty());
            QVERIFY(f.server.last("POLL").contains("Subscription-id: 2") && f.tip() == watching);
        } else {
            QTRY_COMPARE(f.boxes().shown.size(), 1);
            QCOMPARE(f.boxes().shown.last().text, box);
            QVERIFY(!f.window());
        }
    }

    void itIsSwitchedOffAndOn()
    {
        MailFixture f;
        QVERIFY(f.subscribe());
        const auto* entry = ui::find<QAction>(f.window(), "mPopSysSub2");
        for (const bool on : {false, true}) {
            ui::choose(f.window(), "mPopSysSub2");
            QCOMPARE(entry->text(), on ? "&Disabilita Notifiche" : "&Abilita Notifiche");
            QCOMPARE(f.tip(), on ? watching : "Controllo spento");
            QCOMPARE(f.tmrNotify().isActive(), on);
            f.tick();
        }
        QVERIFY(f.poll() || f.server.count("POLL") > 0);
        QCOMPARE(f.server.count("SUBSCRIBE"), 1);
    }

    void theMenuOpensPages()
    {
        MailFixture f;
        f.server.answerNext("SUBSCRIBE", MailServer::answer("200 OK", {}, "Subscription-id: 9\r\n"));
        f.ask("http://127.0.0.1:" + QString::number(f.server.serverPort()) + "/exchange");
        QTRY_COMPARE(f.boxes().shown.size(), 1);
        ui::choose(f.window(), "mPopSysSub0");
        QCOMPARE(f.boxes().shown.last().text, "Non posso creare nuovi messaggi, l'URL fornito non contiene "
                                              "sufficienti informazioni per portare a "
                                              "termine l'azione richiesta.");
        QVERIFY(f.client->world.links.opened.isEmpty() && f.subscribe());
        ui::choose(f.window(), "mPopSysSub0");
        ui::choose(f.window(), "mPopSysSub1");
        QCOMPARE(f.client->world.links.opened,
                 QStringList({f.server.inbox().replace("inbox", "drafts/?cmd=new"), f.server.inbox()}));
        f.client->world.links.works = false;
        ui::choose(f.window(), "mPopSysSub1");
        QCOMPARE(f.boxes().shown.last(),
                 (RecordingBoxes::Box{"URL Failed", "La pagina Web non è stata aperta.",
                                      MessageBoxes::Icon::Exclamation, MessageBoxes::Buttons::Ok}));
    }

    // Whatever ends the watch takes its icon away and ends the subscription.
    void everyEndUnsubscribes_data()
    {
        columns<std::function<void(MailFixture&)>>("end");
        using End = std::function<void(MailFixture&)>;
        row("Exit", End([](MailFixture& f) { ui::choose(f.window(), "mPopSysSub3"); }));
        row("the program's exit",
            End([](MailFixture& f) { ui::choose(f.client->rosterForm(), "mRosterTExit"); }));
        row("a kill of the window", End([](MailFixture& f) { delete f.window(); }));
        row("the end of the run", End([](MailFixture& f) { f.client.reset(); }));
        row("another watch", End([](MailFixture& f) { f.ask("http://127.0.0.1:1/"); }));
        row("a renewal that fails", End([](MailFixture& f) {
                f.server.answerNext("POLL", MailServer::answer("412 No"));
                f.server.answerNext("SUBSCRIBE", MailServer::answer("500 Oops"));
                f.tick();
            }));
    }
    void everyEndUnsubscribes()
    {
        MailFixture f;
        QVERIFY(f.subscribe());
        QPointer<QSystemTrayIcon> icon = f.icon();
        (*static_cast<std::function<void(MailFixture&)>*>(
            QTest::qData("end", qMetaTypeId<std::function<void(MailFixture&)>>())))(f);
        if (f.client) {
            QTRY_VERIFY(f.server.subscriptions.isEmpty());
            QTRY_VERIFY(!icon);
        }
        QVERIFY(f.server.subscriptions.isEmpty() && !icon);
        QCOMPARE(f.server.last("UNSUBSCRIBE"),
                 QByteArray("UNSUBSCRIBE /exchange/ann/inbox HTTP/1.1\nSubscription-id: 1\n"
                            "Authorization: Basic YW5uOnNlY3JldA=="));
    }

    void aSilentServerDoesntHoldTheEndUp()
    {
        MailFixture f;
        QVERIFY(f.subscribe());
        f.server.answerNext("UNSUBSCRIBE", {});
        f.client.reset();
        QCOMPARE(f.server.count("UNSUBSCRIBE"), 1);
    }

    void theEndOfASessionLeavesItAlone()
    {
        for (const bool isLost : {true, false}) {
            MailFixture f;
            QVERIFY(f.subscribe());
            isLost ? f.client->streamLost() : ui::choose(f.client->rosterForm(), "mRosterTDiscon");
            QVERIFY(f.tip() == watching && f.poll());
            QCOMPARE(f.server.subscriptions, QList<QByteArray>{"1"});
        }
    }

    // The window comes back, and goes again without ending anything; its menu bar stands in for the icon.
    void theButtonBringsTheWindowBack()
    {
        MailFixture f;
        QVERIFY(f.subscribe());
        const auto* bar = ui::find<QWidget>(f.window(), "menubar");
        for (const bool hasTray : {true, false}) {
            f.client->world.tray.reachable = hasTray;
            for (const auto& leave : {std::function([&] { ui::click(f.window(), "CancelButton"); }),
                                      std::function([&] { f.window()->close(); })}) {
                QVERIFY(f.open()->isVisible() && !f.window()->isMinimized());
                QCOMPARE(bar->isVisible(), !hasTray);
                QCOMPARE(f.text("txtUrl"), f.server.inbox());
                leave();
                QCOMPARE(f.window()->isVisible(), !hasTray);
                QCOMPARE(f.window()->isMinimized(), !hasTray);
            }
        }
        QVERIFY(f.poll() && f.server.count("SUBSCRIBE") == 1);
        QVERIFY(f.subscribe() && f.window()->isMinimized());
        QTRY_COMPARE(f.server.subscriptions, QList<QByteArray>{"2"});
    }
};

BRELO_TEST(WatchingTest)
#include "WatchingTest.moc"
