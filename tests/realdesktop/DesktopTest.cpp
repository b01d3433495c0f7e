#include "realdesktop/DesktopTest.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

void DesktopTest::initTestCase()
{
    QVERIFY(SOON(x.hasWindowManager() && x.hasTray()));
}

void DesktopTest::init()
{
    profile.emplace();
    server.emplace();
    server->world().addAccount("romeo", "secret");
    for (const char* name : {"Juliet", "Tybalt"})
        server->world().addContact("romeo", QString(name).toLower(), name, "Friends").online = true;
    QVERIFY(server->listen());
}

void DesktopTest::cleanup()
{
    if (!QTest::currentTestFailed())
        return;
    const QString file = QStringLiteral("%1/failed-%2.png");
    QGuiApplication::primaryScreen()->grabWindow(0).save(
        file.arg(QCoreApplication::applicationDirPath(), QLatin1String(QTest::currentTestFunction())));
}

QString DesktopTest::address() const
{
    return QStringLiteral("127.0.0.1:%1").arg(server->port());
}

bool DesktopTest::openChatByKeys()
{
    x.activate(main());
    if (!SOON(isActive(main())))
        return false;
    x.type("Jul"); // finds the contact in the list
    x.press(XDisplay::Return);
    return SOON(isActive(chat()));
}

QRect DesktopTest::putAside(XDisplay::Window window)
{
    const QPoint place(417, 139);
    x.move(window, quint32(place.x()), quint32(place.y()));
    return SOON(framed(window).topLeft() == place) ? framed(window) : QRect();
}

void DesktopTest::julietSays(const QString& body)
{
    server->client("romeo")->sendText(
        QStringLiteral("<message from='juliet@127.0.0.1/Home' type='chat'><body>%1</body></message>")
            .arg(body));
}
