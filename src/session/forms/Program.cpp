#include "session/forms/Program.h"

#include "contacts/forms/RosterForm.h"
#include "desktop/QtSoundPlayer.h"
#include "desktop/SystemClose.h"
#include "desktop/forms/ImageList.h"
#include "desktop/forms/QtDesktop.h"
#include "desktop/forms/QtTrayIcon.h"
#include "session/ComponentCheck.h"
#include "session/LateGateway.h"
#include "session/LateNetwork.h"
#include "session/forms/SignInForm.h"
#include "session/forms/TrayControl.h"
#include "session/forms/TrayMenus.h"
#include "settings/Paths.h"
#include "settings/SecretStore.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QTimer>

#include <csignal>

// The real versions of the seams.
struct Program::World {
    SystemClose systemClose;
    QtMessageBoxes boxes;
    QtFileDialogs files;
    QtLookDialogs looks;
    DesktopLinkOpener links;
    QtSoundPlayer sounds;
    QtTrayIcon tray{[](const QString& key) { return ImageList::icon(key); }};
    SystemClock clock;
    CursorPointer pointer;
    LateNetwork network;
    KeychainSecretStore secrets;
};

Program::Program() : world_(std::make_unique<World>()), store_(paths::settingsFile(), &world_->secrets)
{
    // A file that reaches the system's bound is an error to be told, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    client_.desktop = {&world_->boxes,   &world_->links,   &world_->sounds, &world_->tray,  &world_->clock,
                       &world_->pointer, &world_->network, &world_->files,  &world_->looks, &world_->network};
    world_->tray.setIcon(QStringLiteral("LightOff"));
    world_->tray.setToolTip(QStringLiteral("BreloIM - Disconnected"));
}

// Forms that refused to go at the end, such as the notices, are deleted while what they speak to still lives.
Program::~Program()
{
    if (!ui_)
        return;
    registry_.deleteAllExcept(&ui_->windows.session.signIn());
    // While the mail server is told that the watch is over things still happen, and nobody is there to take
    // them.
    trayControl_.reset();
    client_.Core.reset();
}

QtTrayIcon& Program::tray()
{
    return world_->tray;
}

bool Program::start()
{
    const QString missing = componentCheck();
    if (!missing.isEmpty()) {
        world_->boxes.critical(QStringLiteral("BreloIM"), missing);
        return false;
    }
    ui_ = std::make_unique<SessionUi>(registry_, client_, store_, [this](ConnectionHost& host) {
        return std::make_unique<LateGateway>(
            host, [this](ConnectionHost& ours) { return world_->network.makeGateway(ours); });
    });
    auto& signIn = ui_->windows.session.signIn();
    // Not quit(): that asks every window again, and one that only hides would keep the program running.
    QObject::connect(
        &signIn, &SignInForm::unloaded, qApp, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
    QObject::connect(&world_->systemClose, &SystemClose::requested, &ui_->end, [this] {
        world_->boxes.setUnattended();
        ui_->end.exitProgram();
    });
    ui_->start();
    if (client_.UserClosing) // under a box
        return true;
    signIn.show();
    // The first window need not wait for the icons.
    QTimer::singleShot(0, &signIn, [this] {
        QApplication::setWindowIcon(ImageList::icon(QStringLiteral("breloim")));
        makeTray();
    });
    return true;
}

void Program::bringUp()
{
    if (trayControl_)
        trayControl_->bringUp();
}

void Program::makeTray()
{
    menus_ = std::make_unique<TrayMenus>();
    trayControl_ = std::make_unique<TrayControl>(client_, *ui_, *menus_);
    auto& tray = world_->tray;
    tray.setContextMenu(menus_->menu());
    tray.setIcon(QStringLiteral("LightOff"));
    tray.setToolTip(SessionEnd::tr("BreloIM - Disconnected"));
    tray.appear();
    QObject::connect(&tray, &QtTrayIcon::doubleClicked, trayControl_.get(), &TrayControl::onDoubleClick);
    QObject::connect(&tray, &QtTrayIcon::clicked, trayControl_.get(), &TrayControl::onClick);
    QObject::connect(&tray, &QtTrayIcon::balloonClicked, &ui_->windows.messages.hub,
                     &ChatWindow::openOldestUnread);
    QObject::connect(&tray, &QtTrayIcon::menuRequested, menus_.get(),
                     [this] { menus_->menu()->popup(QCursor::pos()); });
}
