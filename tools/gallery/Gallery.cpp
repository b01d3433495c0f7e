// Draws every window of the client, on the demo's living world, into PNG files: gallery FOLDER [dark] [big]
// For people who look; it tests nothing.

#include "contacts/forms/AddGroupForm.h"
#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "desktop/forms/ShowInTrayForm.h"
#include "messaging/forms/ChatWindow.h"
#include "messaging/forms/HeadLineForm.h"
#include "messaging/forms/MessageForm.h"
#include "preferences/forms/PreferencePages.h"
#include "preferences/forms/PreferencesForm.h"
#include "sandbox/SandboxServer.h"
#include "sandbox/demo/Cast.h"
#include "sandbox/demo/Life.h"
#include "services/forms/TransportUsrCtrl.h"
#include "session/forms/CertificateForm.h"
#include "session/forms/SignInForm.h"
#include "session/forms/TrayMenus.h"
#include "support/LiveClient.h"
#include "support/UiDriver.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPalette>
#include <QPlainTextEdit>
#include <QStyleFactory>
#include <QTest>

namespace
{

QPalette darkPalette()
{
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor base(0x1e, 0x1f, 0x22);
    QPalette palette(window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, QColor(0xdf, 0xe1, 0xe5));
    palette.setColor(QPalette::Highlight, QColor(0x2e, 0x6b, 0xb0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x8c, 0x8f, 0x96));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x7a, 0x7d, 0x84));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0x7a, 0x7d, 0x84));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(0x7a, 0x7d, 0x84));
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, QColor(0xdf, 0xe1, 0xe5));
    return palette;
}

class Camera
{
public:
    explicit Camera(const QString& folder) : folder_(folder) { QDir().mkpath(folder); }

    void take(QWidget* window, const char* name)
    {
        if (!window)
            qFatal("no window for %s", name);
        window->show();
        QTest::qWait(150);
        const QString file = folder_.filePath(QLatin1String(name) + QStringLiteral(".png"));
        window->grab().save(file);
        qInfo().noquote() << file;
    }

private:
    QDir folder_;
};

CertificateInfo sampleCertificate()
{
    return {QStringLiteral("im.example.org"),
            QStringLiteral("CN=im.example.org, O=Example Society"),
            QStringLiteral("CN=im.example.org, O=Example Society"),
            QDateTime(QDate(2026, 1, 1), QTime(0, 0)),
            QDateTime(QDate(2027, 1, 1), QTime(0, 0)),
            QCryptographicHash::hash("sample", QCryptographicHash::Sha256),
            {QStringLiteral("The certificate is self-signed, and untrusted")}};
}

void photographConversation(LiveClient& live, Camera& camera)
{
    emit live.rosterForm()->Roster1->openConversation(QStringLiteral("eva@localhost"));
    Form* window = nullptr;
    if (!QTest::qWaitFor([&] { return (window = live.form("MessageForm")) && window->isVisible(); }))
        qFatal("no conversation");
    auto* entry = ui::find<QPlainTextEdit>(window, "txtMsg");
    QTest::keyClicks(entry, QStringLiteral("Shall we meet at the harbour? https://harbour.example/map"));
    ui::click(window, "cmdSend");
    QTest::qWait(1200);
    camera.take(window, "conversation-typing");
    QTest::qWait(3000);
    QTest::keyClicks(entry, QStringLiteral("See you at eight"));
    camera.take(window, "conversation");
    ui::choose(window, "mnustroldconv");
    QTest::qWait(200);
    camera.take(live.form("LogMessageForm"), "log");
}

void photographRoom(LiveClient& live, Camera& camera)
{
    ui::choose(live.rosterForm(), "mRosterTGRChat");
    Form* join = live.form("JoinConferenceForm");
    auto* rooms = ui::find<QListWidget>(join, "BrowseResult");
    if (!QTest::qWaitFor([rooms] { return rooms->count() > 0; }))
        qFatal("no rooms");
    rooms->setCurrentRow(0);
    camera.take(join, "join");
    ui::click(join, "cmdJoin");
    Form* window = nullptr;
    if (!QTest::qWaitFor([&] { return (window = live.form("GroupchatWindowForm")) && window->isVisible(); }))
        qFatal("no room");
    QTest::keyClicks(ui::find<QPlainTextEdit>(window, "RichTextBox2"),
                     QStringLiteral("Good evening, gardeners"));
    QTest::keyClick(ui::find<QPlainTextEdit>(window, "RichTextBox2"), Qt::Key_Return);
    QTest::qWait(24000); // the garden's people talk
    camera.take(window, "room");
    live.ui->windows.groups.showInvite(QStringLiteral("tomas@localhost"), window->Tag);
    camera.take(live.form("InviteForm"), "invite");
    live.form("InviteForm")->hide();
    live.ui->windows.groups.showInvitation({QStringLiteral("lucia@localhost"),
                                            QStringLiteral("The tomatoes are ripe, come over!"),
                                            QStringLiteral("workshop"),
                                            {QStringLiteral("conference.localhost")}});
    camera.take(live.form("JoinConferenceForm"), "invitation");
    live.form("JoinConferenceForm")->hide();
}

void photographSearch(LiveClient& live, Camera& camera)
{
    ui::choose(live.rosterForm(), "mRosterFFind");
    auto* add = live.form("SearchAddForm");
    auto* directories = ui::find<QListWidget>(add, "BrowseResult");
    if (!QTest::qWaitFor([&] { return directories->count() > 0; }))
        qFatal("no directory");
    camera.take(add, "search-add");
    directories->setCurrentRow(0);
    ui::click(add, "cmdAsk");
    auto* form = live.form("SearchForm");
    if (!QTest::qWaitFor([&] { return form->findChild<QLineEdit*>(QStringLiteral("Text1_1")); }))
        qFatal("no search form");
    camera.take(form, "search-fields");
    ui::click(form, "CmdSearch");
    QTest::qWait(300);
    camera.take(form, "search-results");
    ui::click(form, "cmdClose");
    ui::click(add, "cmdClose");
}

void photographSession(LiveClient& live, Camera& camera)
{
    camera.take(live.rosterForm(), "main");
    ui::choose(live.rosterForm(), "mRosterFShowAll");
    camera.take(live.rosterForm(), "main-online-only");
    ui::choose(live.rosterForm(), "mRosterFShowAll");
    photographConversation(live, camera);
    live.ui->windows.messages.notices().WriteMessage(QStringLiteral("news@localhost"),
                                                     QStringLiteral("The harbour is open again."),
                                                     QStringLiteral("Town news"));
    camera.take(&live.ui->windows.messages.notices(), "notices");
    ui::choose(live.rosterForm(), "mRosterFCreate");
    camera.take(live.form("AddGroupForm"), "add-group");
    live.rosterForm()->Roster1->view().keyboardSearch(QStringLiteral("Lucia"));
    emit live.rosterForm()->Roster1->moveContactRequested();
    camera.take(live.form("MoveFriendForm"), "move-contact");
    ui::choose(live.rosterForm(), "mRosterFModVCard");
    QTest::qWait(500);
    camera.take(live.form("VCardForm"), "vcard-own");
    live.rosterForm()->Roster1->RetriveVCard(QStringLiteral("eva@localhost"));
    QTest::qWait(500);
    for (auto* form : live.registry.loaded())
        if (form->Tag == QStringLiteral("eva@localhost") && form->objectName() == QStringLiteral("VCardForm"))
            camera.take(form, "vcard-foreign");
    live.ui->windows.session.showAbout();
    camera.take(live.form("AboutForm"), "about");
    live.ui->windows.mail.StartMailWatcher();
    camera.take(live.form("Logon"), "mail-watcher");
    live.form("Logon")->findChild<QMenu*>(QStringLiteral("mPopSys"))->popup(QPoint(20, 20));
    camera.take(live.form("Logon")->findChild<QMenu*>(QStringLiteral("mPopSys")), "mail-watcher-menu");
    live.form("Logon")->findChild<QMenu*>(QStringLiteral("mPopSys"))->hide();
    live.ui->windows.contacts.showInTray();
    camera.take(live.form("ShowInTrayForm"), "show-in-tray");
    photographSearch(live, camera);
    if (QTest::qWaitFor([&] { return live.form("authorizeForm"); }, 30000))
        camera.take(live.form("authorizeForm"), "authorize");
}

// Its form, empty and when the person is registered; at last the account is as before.
void photographGateway(LiveClient& live, Camera& camera)
{
    const QString jid = QStringLiteral("msn.localhost");
    live.ui->windows.preferences.show(jid);
    auto* form = qobject_cast<PreferencesForm*>(live.form("PreferencesForm"));
    const auto* panel = form->gatewayPanel(jid);
    if (!panel)
        qFatal("no gateway");
    camera.take(form, "gateway-asked");
    const auto waitForAnswer = [panel] {
        if (!QTest::qWaitFor([panel] { return !panel->isWaiting(); }, 5000))
            qFatal("the gateway is silent");
        QTest::qWait(500);
    };
    waitForAnswer();
    ui::type(panel, "txtField1", QStringLiteral("demo"));
    ui::type(panel, "txtField2", QStringLiteral("demo"));
    camera.take(form, "gateway-form");
    ui::click(panel, "cmdRegister");
    waitForAnswer();
    camera.take(form, "gateway-registered");
    camera.take(live.rosterForm(), "main-with-gateway");
    ui::click(panel, "cmdremove");
    waitForAnswer();
    camera.take(form, "gateway-removed");
}

void photographPreferences(LiveClient& live, Camera& camera)
{
    live.client.MyBanList.Add(QStringLiteral("nuisance@localhost"));
    for (const auto& page : preferences::pages()) {
        live.ui->windows.preferences.show(page.key);
        camera.take(live.form("PreferencesForm"), ("preferences-" + page.key.toLatin1()).constData());
    }
    photographGateway(live, camera);
    ui::click(live.form("PreferencesForm"), "cmdRestoreRegistry");
    camera.take(live.form("RestoreRegForm"), "restore");
    ui::click(live.form("RestoreRegForm"), "cmdNo");
}

void photographTrayMenu(Camera& camera)
{
    TrayMenus tray;
    tray.setConnected(true);
    tray.checkStatus(0);
    tray.menu()->popup(QPoint(20, 20));
    camera.take(tray.menu(), "tray-menu");
    tray.menu()->hide();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("BreloIM"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (application.arguments().contains(QStringLiteral("dark")))
        QApplication::setPalette(darkPalette());
    if (application.arguments().contains(QStringLiteral("big"))) {
        QFont font = QApplication::font();
        font.setPointSize(16);
        QApplication::setFont(font);
    }
    Camera camera(application.arguments().value(1, QStringLiteral("gallery")));

    sandbox::SandboxServer server;
    sandbox::demo::populate(server.world());
    sandbox::demo::Life life(server);
    server.listen();
    LiveClient live;
    camera.take(&live.ui->windows.session.signIn(), "sign-in");
    live.signIn(QStringLiteral("localhost:1"), QStringLiteral("demo"), QStringLiteral("demo"));
    QTest::qWait(400);
    camera.take(live.form("LoggingInForm"), "progress-refused");
    ui::click(live.form("LoggingInForm"), "Command1");
    CertificateForm certificate(sampleCertificate());
    camera.take(&certificate, "certificate");
    certificate.hide();
    live.signIn(QStringLiteral("localhost:%1").arg(server.port()), QStringLiteral("demo"),
                QStringLiteral("demo"));
    if (!QTest::qWaitFor([&] { return live.isOnline(); }, 10000))
        qFatal("not signed in");
    QTest::qWait(500);
    photographTrayMenu(camera);
    photographSession(live, camera);
    photographRoom(live, camera);
    photographPreferences(live, camera);
    server.abortAll();
    QTest::qWait(1500);
    camera.take(live.rosterForm(), "main-disconnected");
    return 0;
}
