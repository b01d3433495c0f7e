#include "mailwatch/MailFixture.h"
#include "settings/Paths.h"
#include "support/ScriptedServer.h"

using Box = RecordingBoxes::Box;
using Icon = MessageBoxes::Icon;

// The window asks for a mailbox, until the watch runs or can't.
class SubscribingTest : public QObject
{
    Q_OBJECT

private slots:
    void theWindowIsAsTold()
    {
        MailFixture f;
        auto* window = f.open();
        QVERIFY(window->isVisible() && !f.icon());
        QCOMPARE(window->windowTitle(), "Sottoscrizione controllo e-mail");
        const std::pair<const char*, QString> texts[] = {
            {"Label2", "http://Servername/exchange/mailboxname/inbox"},
            {"Label3", "&Nome Utente:"},
            {"Label4", "&Password:"},
            {"ChkSave", "&Salva parametri (eccetto password)"},
            {"OKButton", "OK"},
            {"CancelButton", "Cancel"}};
        for (const auto& [name, text] : texts)
            QCOMPARE(ui::find<QWidget>(window, name)->property("text").toString(), text);
        QCOMPARE(ui::find<QLineEdit>(window, "txtPassword")->echoMode(), QLineEdit::Password);
        QVERIFY(f.tmrNotify().interval() == 15'000 && !f.tmrNotify().isActive());
        const QString entries[] = {"&Crea nuovo messaggio", "&Guarda la cartella", "&Disabilita notifiche",
                                   "&Exit"};
        const auto menu = ui::find<QMenu>(window, "mPopSys")->actions();
        for (int i = 0; i < 4; ++i) {
            QVERIFY(menu[i]->text() == entries[i] && !menu[i]->isEnabled());
            QCOMPARE(menu[i]->objectName(), "mPopSysSub" + QString::number(i));
        }
        QVERIFY(!ui::find<QWidget>(window, "menubar")->isVisible());
    }

    void itSubscribesAndGoesFromSight()
    {
        MailFixture f;
        bool wasThere = false;
        f.boxes().meanwhile = [&] {
            wasThere = f.window()->isVisible() && f.icon() && f.tmrNotify().isActive();
        };
        f.ask(f.server.inbox());
        QVERIFY(!ui::find<QWidget>(f.window(), "OKButton")->isEnabled() &&
                f.window()->cursor().shape() == Qt::WaitCursor);
        QTRY_COMPARE(f.boxes().shown.size(), 1);
        QCOMPARE(
            f.boxes().shown.last(),
            (Box{"BreloIM",
                 "L'utente ann è stato correttamente sottoscritto per le notifiche da " + f.server.inbox() +
                     "\n\nClicca il pulsante destro del mouse sull'icona nella barra di stato per modificare "
                     "o "
                     "disabilitare le notifiche.",
                 Icon::Information, MessageBoxes::Buttons::Ok}));
        QVERIFY(wasThere && !f.window()->isVisible() && f.window()->cursor().shape() == Qt::ArrowCursor);
        QCOMPARE(f.tip(), "Sto controllando per nuove e-mail");
        QCOMPARE(f.server.last("SUBSCRIBE"),
                 QByteArray("SUBSCRIBE /exchange/ann/inbox HTTP/1.1\n"
                            "Notification-type: pragma/<http://schemas.microsoft.com/exchange/newmail>\n"
                            "Subscription-lifetime: 100\nDepth: 1\nAuthorization: Basic YW5uOnNlY3JldA=="));
    }

    void whatFailsIsToldAndClosesTheWindow_data()
    {
        columns<QString, QByteArray, QString>("url", "answer", "text");
        const QString here = "http://127.0.0.1:%1/exchange/ann/inbox";
        const QString failed =
            "Si è verificato un errore durante la sottoscrizione. Verifica che l'URL sia corretto.";
        const QString refused = "Non hai accesso a questo URL contenitore. Verifica nome utente e password.";
        const QString useless = "Non posso usare l'URL " + here + " per la sottoscrizione alla notifica.";
        const auto answer = [](const char* status, const QByteArray& headers = {}) {
            return MailServer::answer(status, "200 OK", headers);
        };
        row("a wrong password", here, QByteArray(), refused);
        for (const char* status :
             {"201 Created", "207 Multi-Status", "403 Forbidden", "404 Not Found", "500 Oops"})
            row(status, here, answer(status, "Subscription-id: 7\r\n"), failed);
        row("led elsewhere", here, answer("302 Found", "Location: /other\r\n"), failed);
        row("no id", here, answer("200 OK"), useless);
        row("the id 0", here, answer("200 OK", "Subscription-id: 0\r\n"), useless);
        row("half a body", here, answer("200 OK", "Subscription-id: 7\r\n").chopped(2), failed);
        row("50 MiB", here, MailServer::answer("200 OK", QByteArray(50 << 20, 'x'), "Subscription-id: 7\r\n"),
            failed);
        for (const char* url : {"", "inbox", "http://", "http://[", "ftp://127.0.0.1:%1/inbox",
                                "file:///etc/passwd", "http://127.0.0.1:1/inbox"})
            row(url, QString(url), QByteArray(), failed);
    }
    void whatFailsIsToldAndClosesTheWindow()
    {
        auto [url, answer, text] = fetched<QString, QByteArray, QString>();
        MailFixture f;
        const QString port = QString::number(f.server.serverPort());
        if (!answer.isEmpty())
            f.server.answerNext("SUBSCRIBE", answer);
        f.ask(url.replace("%1", port), answer.isEmpty() ? "guess" : "secret");
        QTRY_COMPARE(f.boxes().shown.size(), 1);
        QCOMPARE(f.boxes().shown.last(),
                 (Box{"BreloIM", text.replace("%1", port), Icon::Exclamation, MessageBoxes::Buttons::Ok}));
        QVERIFY(!f.window() && f.server.count("SUBSCRIBE") == (answer.isEmpty() ? 0 : 1));
        f.open();
        QCOMPARE(f.text("txtUrl") + '|' + f.text("txtLogon") + '|' + f.text("txtPassword"), url + "|ann|");
        QVERIFY(!f.icon() && ui::find<QWidget>(f.window(), "OKButton")->isEnabled());
        QCOMPARE(f.window()->focusWidget()->objectName(), url.isEmpty() ? "txtUrl" : "txtPassword");
    }

    // The system's own store of certificates decides; nothing of the request gets out.
    void aCertificateThatDoesntVerifyIsAFailure()
    {
        MailFixture f;
        ScriptedServer tls;
        tls.setDirectTls();
        f.ask("https://" + tls.address() + "/exchange/ann/inbox");
        QTRY_COMPARE(f.boxes().shown.size(), 1);
        QVERIFY(!f.window() && tls.connections() > 0 && tls.received().isEmpty());
    }

    void cancelGivesItUp()
    {
        MailFixture f;
        QVERIFY(f.subscribe());
        f.server.answerNext("SUBSCRIBE", {});
        f.ask(f.server.inbox());
        QTRY_COMPARE(f.server.count("SUBSCRIBE"), 2);
        QVERIFY(f.tip().isEmpty() && !f.tmrNotify().isActive());
        QTest::keyClick(f.window(), Qt::Key_Escape);
        QVERIFY(!f.window()->isVisible() && !f.icon());
        f.open();
        QVERIFY(ui::find<QWidget>(f.window(), "OKButton")->isEnabled() && f.boxes().shown.isEmpty());
        QVERIFY(f.subscribe());
    }

    void whatIsSavedIsThereAgain()
    {
        MailFixture f;
        const auto stored = [] {
            QFile file(paths::settingsFile());
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const auto save = [&](bool saves) {
            f.open();
            ui::find<QCheckBox>(f.window(), "ChkSave")->setChecked(saves);
            return f.subscribe();
        };
        QVERIFY(save(false) && !stored().contains("[Login]"));
        QVERIFY(save(true));
        for (const auto& line : {"[Login]", "Username=ann", "CheckSave=1"})
            QVERIFY2(stored().contains(line), line);
        QVERIFY(stored().contains("Url=" + f.server.inbox().toUtf8()) && !stored().contains("secret"));
        f.client.emplace();
        QVERIFY(SettingsStore(paths::settingsFile()).keepMailLogin(MailLogin{"bob", "http://x/e/bob"}));
        f.client->signIn();
        f.open();
        QCOMPARE(f.text("txtUrl") + f.text("txtLogon") + f.text("txtPassword"), "http://x/e/bobbob");
        QVERIFY(ui::find<QCheckBox>(f.window(), "ChkSave")->isChecked());
        QVERIFY(save(false) && !stored().contains("Username=bob") && !stored().contains("CheckSave"));
        QVERIFY(QFile::setPermissions(paths::settingsFile(), QFile::ReadOwner));
        f.open();
        ui::find<QCheckBox>(f.window(), "ChkSave")->setChecked(true);
        ui::click(f.window(), "OKButton");
        QCOMPARE(f.boxes().shown.takeFirst().text, "The settings could not be saved.");
    }
};

BRELO_TEST(SubscribingTest)
#include "SubscribingTest.moc"
