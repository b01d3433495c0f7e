#include "prosody/ProsodyFixture.h"
#include "settings/Paths.h"
#include "support/Table.h"
#include "support/TestRunner.h"

// The ways into a server as it is shipped today: encryption required, SCRAM, a certificate nobody knows.
class SigningInTest : public QObject
{
    Q_OBJECT

    // The person before the certificate question: clicks the buttons in order, and refuses when there are no
    // more.
    class CertificateReader : public QObject
    {
    public:
        explicit CertificateReader(QList<const char*> clicks) : clicks_(std::move(clicks))
        {
            connect(&watch_, &QTimer::timeout, this, &CertificateReader::look);
            watch_.start(5);
        }

        QString question;
        QStringList fingerprints; // as they were shown, without the line end

    private:
        void look()
        {
            auto* dialog = QApplication::activeModalWidget();
            if (!dialog || dialog->objectName() != QLatin1String("CertificateForm"))
                return;
            question = ui::find<QLabel>(dialog, "lblQuestion")->text();
            fingerprints += ui::find<QLabel>(dialog, "lblFingerprint")->text().replace(u'\n', u':');
            ui::click(dialog, clicks_.isEmpty() ? "cmdRefuse" : clicks_.takeFirst());
        }

        QList<const char*> clicks_;
        QTimer watch_;
    };
    static QString shown(const QByteArray& sha256)
    {
        return QString::fromLatin1(sha256.toHex(':')).toUpper();
    }

    using Answer = MessageBoxes::Answer;
    ProsodyServer server_;

    static bool isOnline(const LiveClient& live)
    {
        return QTest::qWaitFor([&live] { return live.isOnline(); });
    }

private slots:
    void initTestCase()
    {
        QVERIFY2(server_.start(), qPrintable(server_.problem()));
        server_.addAccount("romeo", "secret");
    }

    void refusedCertificateEndsTheAttempt()
    {
        for (const QString changed : {"", "not the one that you accepted", "the last time it was verified"}) {
            CertificateReader reader({"cmdRefuse"});
            LiveClient live([&](SettingsStore& store) {
                if (changed.startsWith("not"))
                    store.pinCertificate("localhost", QByteArray(32, 'x'));
                else if (!changed.isEmpty())
                    store.keepSafety("romeo@localhost", {true, true, Proof::ScramSha256});
            });
            live.signIn(server_.address());
            QTRY_COMPARE(reader.fingerprints, QStringList{shown(server_.fingerprint())});
            QCOMPARE(reader.question.contains("has changed:"), !changed.isEmpty());
            QVERIFY2(reader.question.contains(changed), qPrintable(reader.question));
            QTRY_VERIFY(live.progressText().contains("certificate", Qt::CaseInsensitive));
            QVERIFY(!live.client.isConnected());
            ui::click(live.form("LoggingInForm"), "Command1");
            QTRY_VERIFY(live.ui->windows.session.signIn().isVisible());
            QCOMPARE(reader.fingerprints.size(), 1);
        }
    }

    void acceptedCertificateIsAskedForAgainUnlessPinned_data()
    {
        columns<QList<const char*>, bool>("clicks", "pinned");
        row("once", QList{"cmdOnce", "cmdOnce"}, false);
        row("for always", QList{"cmdAlways"}, true);
    }
    void acceptedCertificateIsAskedForAgainUnlessPinned()
    {
        const auto [clicks, pinned] = fetched<QList<const char*>, bool>();
        CertificateReader reader(clicks);
        LiveClient live;
        live.signIn(server_.address());
        QVERIFY(isOnline(live));
        QCOMPARE(SettingsStore(paths::settingsFile()).pinnedCertificate("localhost"),
                 pinned ? server_.fingerprint() : QByteArray());
        ui::choose(live.rosterForm(), "mRosterTDiscon");
        QTRY_VERIFY(live.ui->windows.session.signIn().isVisible() && !live.client.isConnected());
        live.signIn(server_.address());
        QVERIFY(isOnline(live));
        QCOMPARE(reader.fingerprints.size(), clicks.size());
    }

    void firstTimeYesMakesTheAccount()
    {
        for (const auto& [name, password] :
             {std::pair<QString, QString>("mercutio", "jest"), {"tybalt", "<king> & \"cats\""}}) {
            // Of the three streams that this takes only the first one asks.
            CertificateReader reader({"cmdOnce"});
            LiveClient live;
            live.world.boxes.answers = {Answer::Yes};
            live.signIn(server_.address(), name, password);
            QVERIFY(isOnline(live));
            QCOMPARE(live.world.boxes.shown.size(), 1);
            QCOMPARE(live.world.boxes.shown.first().title, "Information");
            QVERIFY(server_.hasAccount(name));
            QCOMPARE(reader.fingerprints.size(), 1);
        }
    }

    // An account of that name is not made anew, and keeps its password.
    void aWrongPasswordLeadsBackWhateverIsAnswered()
    {
        for (const bool yes : {true, false}) {
            ProsodyFixture f(server_);
            auto& boxes = f.live.world.boxes;
            boxes.answers = yes ? QList{Answer::Yes, Answer::Ok} : QList{Answer::No};
            f.live.signIn(server_.address(), "romeo", "wrong");
            QTRY_COMPARE(boxes.shown.size(), yes ? 2 : 1);
            QVERIFY(!yes ||
                    (boxes.shown.at(1).title == "Server Message" && !boxes.shown.at(1).text.isEmpty()));
            QTRY_VERIFY(f.live.ui->windows.session.signIn().isVisible());
            QVERIFY(!f.live.form("LoggingInForm"));
            QVERIFY(f.signIn());
            QCOMPARE(boxes.shown.size(), yes ? 2 : 1);
        }
    }
};

BRELO_TEST(SigningInTest)
#include "SigningInTest.moc"
