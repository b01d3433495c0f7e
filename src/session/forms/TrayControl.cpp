#include "session/forms/TrayControl.h"

#include "contacts/Client.h"
#include "contacts/forms/RosterForm.h"
#include "messaging/forms/ConversationMenu.h"
#include "session/forms/LoggingInForm.h"
#include "session/forms/SessionUi.h"
#include "session/forms/SignInForm.h"
#include "session/forms/TrayMenus.h"

#include <array>
#include <utility>

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
    connect(&end_, &SessionEnd::ended, &menus, [this, &menus] {
        menus.setConnected(false);
        if (windows_.session.signIn().isVisible())
            menus.setMinimized(false);
    });
    connect(&windows_.session.signIn(), &SignInForm::hiddenInTray, &menus,
            [&menus] { menus.setMinimized(true); });
    connect(&windows_.contacts, &ContactWindows::rosterFormMade, this, &TrayControl::follow);
    if (auto* form = windows_.contacts.rosterForm())
        follow(*form);
    auto& hub = windows_.messages.hub;
    menus.addConversations(std::make_unique<ConversationMenu>(hub, nullptr));
    connect(&hub.unread, &UnreadConversations::changed, this, [&client](const QStringList& peers) {
        client.desktop.tray->setUnread(static_cast<int>(peers.size()));
    });
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

void TrayControl::onClick()
{
    clickTaken_ = windows_.messages.hub.openOldestUnread();
}

void TrayControl::onDoubleClick()
{
    if (std::exchange(clickTaken_, false))
        return;
    auto* form = windows_.contacts.rosterForm();
    if (form && form->wasShown() && (form->isMinimized() || !form->isVisible())) {
        form->bringUp();
        menus_.setMinimized(false);
    }
}

void TrayControl::bringUp()
{
    if (auto* form = windows_.contacts.rosterForm(); form && form->wasShown())
        form->bringUp();
    else if (auto* progress = windows_.session.progressIfLoaded(); progress && progress->isVisible())
        progress->bringUp();
    else
        windows_.session.signIn().bringUp();
    menus_.setMinimized(false);
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
        form->bringUp();
    else
        windows_.session.signIn().bringUp();
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
