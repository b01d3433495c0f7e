#include "contacts/AutoStatus.h"
#include "contacts/Client.h"
#include "support/RecordingDesktop.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class AutoStatusTest : public QObject
{
    Q_OBJECT
    int become(StatusCommand chosen)
    {
        const auto next = status_->tick(chosen);
        return next ? int(*next) : -1;
    }

    RecordingDesktop outside_;
    Client client_;
    std::unique_ptr<AutoStatus> status_;

private slots:
    void init()
    {
        client_.desktop = outside_.desktop();
        client_.settings = Settings();
        client_.settings.AutoAwayTimer = client_.settings.AutoXAwayTimer = true;
        outside_.clock = HandClock();
        outside_.pointer.at = {10, 10};
        status_ = std::make_unique<AutoStatus>(client_);
    }

    void aRestingPointerChangesTheStatus_data()
    {
        // idle: seconds
        columns<int, StatusCommand, bool, QString, int>("idle", "chosen", "active", "timers", "next");
        constexpr int nothing = -1;
        using enum StatusCommand;
        row("at the limit", 300, Available, false, "ax", nothing);
        row("past it", 301, Available, false, "ax", int(Away));
        row("past it, by hand busy", 301, DND, false, "ax", int(Away));
        row("away already", 301, Away, true, "ax", nothing);
        row("away switched off", 301, Available, false, "x", nothing);
        row("past the second limit", 481, Away, true, "ax", int(XAway));
        row("past the second limit, xa switched off", 481, Available, false, "a", nothing);
        row("between, at the second limit", 480, Available, false, "ax", nothing);
        row("back by itself", 0, XAway, true, "ax", int(Available));
        row("chosen by hand stays", 0, XAway, false, "ax", nothing);
        row("nothing to come back from", 0, Available, true, "ax", nothing);
    }
    void aRestingPointerChangesTheStatus()
    {
        const auto [idle, chosen, active, timers] = fetched<int, StatusCommand, bool, QString>();
        client_.settings.AutoAwayTimer = timers.contains('a');
        client_.settings.AutoXAwayTimer = timers.contains('x');
        QCOMPARE(become(StatusCommand::Available), -1);
        outside_.clock.time = outside_.clock.time.addSecs(idle);
        status_->AutoStatusActive = active;
        QTEST(become(chosen), "next");
    }

    void withoutAMovementNothingHappens()
    {
        outside_.pointer.at = {0, 0};
        QCOMPARE(become(StatusCommand::Available), -1);
        outside_.clock.time = outside_.clock.time.addSecs(9000);
        QCOMPARE(become(StatusCommand::Available), -1);
    }

    void aMovementThatTheOtherTimerSawCountsAsNone()
    {
        become(StatusCommand::Available);
        outside_.clock.time = outside_.clock.time.addSecs(301);
        outside_.pointer.at = {11, 10};
        QVERIFY(status_->pointerMoved());
        QCOMPARE(become(StatusCommand::Available), int(StatusCommand::Away));
        outside_.pointer.at = {12, 10};
        status_->AutoStatusActive = true;
        QCOMPARE(become(StatusCommand::Away), int(StatusCommand::Available));
    }

    void midnightEndsAnIdleSpell()
    {
        outside_.clock.time.setTime(QTime(23, 50));
        become(StatusCommand::Available);
        outside_.clock.time = outside_.clock.time.addSecs(3600);
        status_->AutoStatusActive = true;
        QCOMPARE(become(StatusCommand::XAway), int(StatusCommand::Available));
    }
};

BRELO_TEST(AutoStatusTest)
#include "AutoStatusTest.moc"
