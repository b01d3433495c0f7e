#include "session/forms/SessionEnd.h"

#include "contacts/Client.h"
#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "desktop/forms/Form.h"
#include "session/forms/SignInForm.h"
#include "session/forms/WindowState.h"
#include "session/forms/Windows.h"
#include "settings/SettingsStore.h"

namespace
{

const QString signInName = QStringLiteral("SignInForm");
const QString rosterName = QStringLiteral("RosterForm");

} // namespace

SessionEnd::SessionEnd(Client& client, Windows& windows, SettingsStore& store)
    : client_(client), windows_(windows), store_(store)
{
}

// A window in the tray counts as minimised. One that nobody saw has no place of its own.
void SessionEnd::saveWindowPosition()
{
    const auto* form = windows_.contacts.rosterForm();
    if (!form || !form->wasShown())
        return;
    const QRect stored =
        form->isMaximized() ? QRect(form->pos(), form->size()) : QRect(form->place(), form->wishedSize());
    store_.saveWindowPosition(stored, form->isVisible() ? windowState(*form) : 1);
}

void SessionEnd::emptyLists()
{
    client_.MyRoster.RemoveAll();
    client_.MyAgents.RemoveAll();
    client_.MyGroups.RemoveAll();
}

void SessionEnd::showSignIn()
{
    windows_.session.signIn().bringUp();
}

void SessionEnd::returnToSignIn()
{
    ++client_.sessionNumber;
    saveWindowPosition();
    client_.SessionClosing = true;
    windows_.registry.unloadAllExcept({signInName});
    client_.Gateway().DoDisconnect();
    emptyLists();
    showSignIn();
    signedOut();
}

void SessionEnd::cancelSignIn()
{
    ++client_.sessionNumber;
    emptyLists();
    client_.IgnoreIQ = true;
    client_.Gateway().DoDisconnect();
    client_.SessionClosing = true;
    windows_.registry.unloadAllExcept({signInName, QStringLiteral("LoggingInForm")});
    windows_.session.closeProgress();
    client_.IgnoreIQ = false;
    showSignIn();
    signedOut();
}

void SessionEnd::backToSignIn()
{
    ++client_.sessionNumber;
    windows_.session.closeProgress();
    windows_.session.signIn().showRefused();
    signedOut();
}

void SessionEnd::signedOut()
{
    client_.desktop.tray->setIcon(QStringLiteral("LightOff"));
    client_.desktop.tray->setToolTip(tr("BreloIM - Disconnected"));
    emit ended();
}

// The main window stays on screen, empty, with its wait picture.
void SessionEnd::connectionLost(const QString& reason)
{
    ++client_.sessionNumber;
    windows_.registry.unloadAllExcept({rosterName, signInName});
    if (auto* roster = windows_.contacts.roster()) {
        roster->RemoveAll();
        roster->setIsInitiated(false);
    }
    emptyLists();
    signedOut();
    // The last, since it may show a box.
    if (auto* form = windows_.contacts.rosterForm())
        form->showDisconnected(reason);
}

void SessionEnd::exitProgram()
{
    ++client_.sessionNumber;
    saveWindowPosition();
    client_.UserClosing = true;
    if (client_.isConnected()) {
        client_.Gateway().DoDisconnect();
        // What comes back unsent is still to be logged.
        client_.Core->PluginManager->Trigger();
    }
    emit ended();
    windows_.registry.unloadAllExcept({signInName});
    windows_.session.signIn().requestUnload(CloseMode::Code);
}
