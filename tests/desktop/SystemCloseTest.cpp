#include "desktop/SystemClose.h"
#include "support/TestRunner.h"

#include <csignal>

// The system wants the program to end.
class SystemCloseTest : public QObject
{
    Q_OBJECT

private slots:
    void isTold()
    {
        for (const int signal : {SIGTERM, SIGINT, SIGHUP, 0}) { // 0 is the application's Quit event
            const SystemClose close;
            QSignalSpy told(&close, &SystemClose::requested);
            if (signal)
                QCOMPARE(std::raise(signal), 0);
            else
                QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::Quit));
            QTRY_COMPARE(told.size(), 1);
        }
    }
};

BRELO_TEST(SystemCloseTest)
#include "SystemCloseTest.moc"
