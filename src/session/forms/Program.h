#pragma once

#include "contacts/Client.h"
#include "desktop/forms/Form.h"
#include "session/forms/SessionUi.h"
#include "settings/SettingsStore.h"

#include <memory>

class QtTrayIcon;
class TrayControl;
class TrayMenus;

// The whole program: the world outside, what is shared, and the session's windows, in the order of their
// lives.
class Program
{
public:
    Program();
    ~Program();

    // False, after a box, when something that the client can't live without is missing.
    bool start();

    // Brings up the window that the person would look for.
    void bringUp();

    // For whoever drives the program from within; the session stands once it is started.
    SessionUi& session() const { return *ui_; }
    Client& client() { return client_; }
    QtTrayIcon& tray();

private:
    struct World;

    void makeTray();

    std::unique_ptr<World> world_;
    SettingsStore store_;
    FormRegistry registry_;
    Client client_;
    std::unique_ptr<SessionUi> ui_;
    std::unique_ptr<TrayMenus> menus_;
    std::unique_ptr<TrayControl> trayControl_;
};
