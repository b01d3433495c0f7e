#include "desktop/SystemClose.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <csignal>

// The system wants the program to end.
class SystemCloseTest : public QObject
{
    Q_OBJECT

private slots:
    void isTold_data()
    {
        columns<int>("signal"); // 0 is the application's Quit event
        row("terminate", SIGTERM);
        row("interrupt", SIGINT);
        row("terminal gone", SIGHUP);
        row("quit event", 0);
    }

    void isTold()
    {
        QFETCH(int, signal);
        const SystemClose close;
        QSignalSpy told(&close, &SystemClose::requested);
        if (signal)
            QCOMPARE(std::raise(signal), 0);
        else
            QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::Quit));
        QTRY_COMPARE(told.size(), 1);
    }
};

BRELO_TEST(SystemCloseTest)
#include "SystemCloseTest.moc"
