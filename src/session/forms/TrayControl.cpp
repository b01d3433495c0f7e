#include "session/forms/TrayControl.h"

#include "contacts/Client.h"
#include "contacts/forms/RosterForm.h"
#include "session/forms/SessionUi.h"
#include "session/forms/SignInForm.h"
#include "session/forms/TrayMenus.h"

#include <array>

namespace
{

void bringUp(QWidget& window)
{
    window.showNormal();
    window.raise();
    window.activateWindow();
}

} // namespace

TrayControl::TrayControl(Client& client, SessionUi& ui, TrayMenus& menus)
    : client_(client), windows_(ui.windows), end_(ui.end), menus_(menus)
{
    connect(&menus, &TrayMenus::statusChosen, this, &TrayControl::onStatus);
    connect(&menus, &TrayMenus::connectChosen, this, &TrayControl::onConnect);
    connect(&menus, &TrayMenus::restoreChosen, this, &TrayControl::onRestore);
    connect(&menus, &TrayMenus::minimizeChosen, this, &TrayControl::onMinimize);
    connect(&menus, &TrayMenus::exitChosen, &end_, &SessionEnd::exitProgram);
    menus.setConnected(client.isConnected());
    connect(&ui, &SessionUi::connected, &menus, [&menus] { menus.setConnected(true); });
    connect(&end_, &SessionEnd::ended, &menus, [&menus] { menus.setConnected(false); });
    connect(&windows_.session.signIn(), &SignInForm::hiddenInTray, &menus,
            [&menus] { menus.setMinimized(true); });
    connect(&windows_.contacts, &ContactWindows::rosterFormMade, this, &TrayControl::follow);
    if (auto* form = windows_.contacts.rosterForm())
        follow(*form);
}

// The main window came up: its status and its place show in the menu.
void TrayControl::follow(RosterForm& form)
{
    menus_.checkStatus(static_cast<int>(form.status()));
    connect(&form, &RosterForm::statusChanged, &menus_,
            [this](StatusCommand command) { menus_.checkStatus(static_cast<int>(command)); });
    connect(&form, &RosterForm::trayMenuState, &menus_,
            [this](bool canShow, bool) { menus_.setMinimized(canShow); });
}

void TrayControl::onDoubleClick()
{
    auto* form = windows_.contacts.rosterForm();
    if (form && form->isMinimized()) {
        bringUp(*form);
        menus_.setMinimized(false);
    }
}

void TrayControl::onStatus(int index)
{
    static constexpr std::array<void (RosterForm::*)(), 5> commands = {
        &RosterForm::mRosterSAvailable_Click, &RosterForm::mRosterSAway_Click,
        &RosterForm::mRosterSXAway_Click, &RosterForm::mRosterSDND_Click, &RosterForm::mRosterSFFC_Click};
    auto* form = windows_.contacts.rosterForm();
    if (form && client_.isConnected())
        (form->*commands.at(static_cast<std::size_t>(index)))();
}

void TrayControl::onConnect()
{
    if (auto* form = windows_.contacts.rosterForm(); form && client_.isConnected()) {
        form->mRosterTDiscon_Click();
    } else {
        end_.returnToSignIn();
    }
}

void TrayControl::onRestore()
{
    if (auto* form = windows_.contacts.rosterForm(); form && client_.isConnected())
        bringUp(*form);
    else
        bringUp(windows_.session.signIn());
    menus_.setMinimized(false);
}

void TrayControl::onMinimize()
{
    if (auto* form = windows_.contacts.rosterForm(); form && client_.isConnected()) {
        form->showMinimized();
        windows_.contacts.showInTray();
    } else {
        windows_.session.signIn().hide();
    }
    menus_.setMinimized(true);
}
