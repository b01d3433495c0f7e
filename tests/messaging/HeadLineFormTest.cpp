#include "messaging/MessagingFixture.h"

// The notices window.
class HeadLineFormTest : public QObject
{
    Q_OBJECT
private slots:
    void messagesBecomeLines_data()
    {
        columns<QString, QString>("xml", "lines");
        row("headline",
            "<message from='news.x/a' type='headline'><subject>S</subject><body>B &amp; C</body></message>",
            " <07:08>  news.x/a: S - B & C\n");
        row("no subject", "<message from='x'><body>B</body></message>", " <07:08>  x:  - B\n");
        row("error",
            "<message from='x' type='error'><body>B</body><error code='404'>Not "
            "<i>found</i></error></message>",
            " <07:08>  x: error - Not found\n");
        row("two errors", "<message from='x' type='error'><error>one</error><error>two</error></message>",
            " <07:08>  x: error - one\n <07:08>  x: error - two\n");
        row("error without words", "<message from='x' type='error'><error code='404'/></message>",
            " <07:08>  x: error - There is no such address.\n");
        row("error without element", "<message from='x' type='error'><body>B</body></message>", "");
    }
    void messagesBecomeLines()
    {
        const auto [xml, lines] = fetched<QString, QString>();
        MessagingFixture f;
        auto context = f.engine.contextFor(xml);
        f.notices().Myapplicationplugin()->OnMessage(context);
        QCOMPARE(f.transcript(f.notices(), "txtMsg"), lines);
        QTest::mouseClick(&f.control<QWidget>(f.notices(), "Command1"), Qt::LeftButton);
        QCOMPARE(f.transcript(f.notices(), "txtMsg"), QString());
    }

    void noticeHasItsColours()
    {
        MessagingFixture f;
        f.notices().WriteMessage("sender", "body", "subject");
        const auto* document = f.control<QPlainTextEdit>(f.notices(), "txtMsg").document();
        const auto format = [&](const QString& text) { return document->find(text).charFormat(); };
        QCOMPARE(format("sender").foreground().color(), QColor(85, 126, 186));
        QCOMPARE(format("subject").foreground().color(), QColor(Qt::black));
        QCOMPARE(format("subject").fontWeight(), int(QFont::Normal));
        QCOMPARE(format("body").fontWeight(), int(QFont::Bold));
    }

    void errorPresenceOpensTheWindow()
    {
        MessagingFixture f;
        auto context =
            f.engine.contextFor("<presence from='r@x' type='error'><error>gone</error></presence>");
        QSignalSpy lost(&f.notices(), &HeadLineForm::connectionLost);
        f.notices().OnPresence(context);
        QVERIFY(f.notices().isVisible());
        QVERIFY(f.notices().testAttribute(Qt::WA_ShowWithoutActivating)); // keys typed elsewhere stay there
        QCOMPARE(f.notices().pos(), QPoint(0, 0));
        QCOMPARE(f.transcript(f.notices(), "txtMsg"), " <07:08>  r@x: error - gone\n");
        QCOMPARE(lost.size(), 0);
    }

    void placeAndTranscriptSurviveAClose()
    {
        MessagingFixture f;
        auto& window = f.notices();
        window.WriteMessage("a", "b", {});
        window.showAtPlace();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.move(20, 30);
        window.showAtPlace();
        QCOMPARE(window.pos(), QPoint(20, 30));
        QTest::mouseClick(&f.control<QWidget>(window, "cmdClose"), Qt::LeftButton);
        QVERIFY(!window.isVisible());
        QCOMPARE(window.Tag, "300|450");
        window.move(1, 1);
        window.showAtPlace();
        QCOMPARE(window.pos(), QPoint(20, 30));
        QVERIFY(f.transcript(window, "txtMsg").endsWith(" - b\n"));
        f.client.SessionClosing = true;
        QVERIFY(window.requestUnload(CloseMode::Code));
        QVERIFY(!f.registry.find("HeadLineForm"));
    }
};

BRELO_TEST(HeadLineFormTest)
#include "HeadLineFormTest.moc"
