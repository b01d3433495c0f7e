#include "desktop/forms/StatusPanel.h"
#include "support/TestRunner.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QMainWindow>
#include <QTextDocument>
#include <QToolTip>

class StatusPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void whatDoesNotFitIsSeenToGoOn()
    {
        QMainWindow window;
        window.resize(200, 100);
        StatusPanel panel(window.statusBar(), "Panel");
        window.show();
        const auto pictureOf = [&panel](const QString& text) {
            panel.tell(text);
            return panel.grab().toImage();
        };
        const QString begin = "It is the east, and <b>Juliet</b> is ";
        QCOMPARE(pictureOf(begin + "the sun."), pictureOf(begin + "the moon."));
        QVERIFY(panel.shownText().endsWith(u'…') && begin.startsWith(panel.shownText().chopped(1)));
        QCOMPARE(QAccessible::queryAccessibleInterface(&panel)->text(QAccessible::Name), panel.text());
        const auto tip = [&panel] {
            QHelpEvent asked(QEvent::ToolTip, QPoint(1, 1), panel.mapToGlobal(QPoint(1, 1)));
            QApplication::sendEvent(&panel, &asked);
            return QToolTip::text();
        };
        QCOMPARE(tip(), Qt::convertFromPlainText(panel.text()));
        QVERIFY(pictureOf("Ay") != pictureOf("No"));
        QCOMPARE(panel.shownText(), panel.text());
    }
};

BRELO_TEST(StatusPanelTest)
#include "StatusPanelTest.moc"
