#pragma once

#include "contacts/AutoStatus.h"
#include "desktop/forms/Form.h"
#include "engine/ITriggerReceiver.h"

#include <QTimer>

#include <memory>

class QLabel;
class Roster;
class StatusPanel;
struct Client;

namespace Ui
{
class RosterForm;
}

// The main window: the contact list with the menus, the tool bar and the status bars.
class RosterForm : public Form, private ITriggerReceiver
{
    Q_OBJECT

public:
    RosterForm(FormRegistry& registry, Client& client);
    ~RosterForm() override;

    Roster* Roster1;

    // What the engine triggers at the end of each tick: the automatic status, and the screen of the contact
    // list.
    ITriggerReceiver& myITriggerReceiver() { return *this; }

    // The status that the Status menu shows.
    StatusCommand status() const { return status_; }

    // What the handshake shows: at the first stanza of a session, and at every later one.
    void showConnected(bool firstContact);
    // The stream is gone: the wait picture stands in place of the contact list, and `reason`, if there is
    // one.
    void showDisconnected(const QString& reason);
    // The contact list stands in place of the wait picture.
    void showContactList();
    // A word for the status bar, for a while.
    void tell(const QString& text);
    // Stays before all other windows, or not, as the setting says.
    void applyOnTop();
    // The server can be managed by this account.
    void showAdminMenu(const QString& serverName);

    void StartAnimation(const QString& path);
    void StopAnimation();

public slots:
    void mRosterSAvailable_Click() { setStatus(StatusCommand::Available, false); }
    void mRosterSAway_Click() { setStatus(StatusCommand::Away, false); }
    void mRosterSXAway_Click() { setStatus(StatusCommand::XAway, false); }
    void mRosterSDND_Click() { setStatus(StatusCommand::DND, false); }
    void mRosterSFFC_Click() { setStatus(StatusCommand::FFC, false); }
    void mRosterTDiscon_Click() { emit disconnectRequested(); }
    void mRosterFFind_Click();

signals:
    void connectRequested();
    void disconnectRequested();
    void exitRequested();
    // The opening message counts as a trick, or as a contact's own.
    void openConversation(const QString& jid, bool trick);
    void showPreferences(const QString& page);
    void showNotices();
    void showHistory(const QString& jid);
    void groupChatRequested();
    // The server has been asked for its services.
    void findContactsRequested();
    void mailWatcherRequested();
    void aboutRequested();
    void statusChanged(StatusCommand command);
    // Which of the tray's show and hide entries can be chosen.
    void trayMenuState(bool canShow, bool canHide);
    void showInTrayRequested();

protected:
    bool queryUnload(CloseMode mode) override;
    void unload() override;

private:
    void Trigger() override;

    void setUpPictures();
    void setUpPanels();
    void setUpTimers();
    void connectBreloMenu();
    void connectFriendsMenu();
    void connectStatusMenu();
    void connectHelpMenu();
    void connectToolbar();
    void connectRoster();
    void start();

    void setStatus(StatusCommand command, bool automatic);
    void showStatus(StatusCommand command);
    // The client announced plain availability by itself.
    void showAnnounced();
    void showPanel(const QString& imageKey, const QString& text);
    void showConnectButton(bool connected);
    void showSwitch();
    void showWholePage();

    void toggleConnection(bool on);
    void switchShowAll();
    void startChat();
    void removeContact();
    void checkVCard();
    void refreshList();
    void openSite(const QString& path);
    void openHelp(const QString& path);
    void openWebLogin();
    void showAddGroup();
    void showMoveFriend();

    Client& client_;
    std::unique_ptr<Ui::RosterForm> ui_;
    QLabel* panels_[3] = {};
    StatusPanel* line_ = nullptr;
    QTimer refreshTimer_;
    QTimer autoAway_;
    AutoStatus autoStatus_;
    StatusCommand status_ = StatusCommand::Available;
    bool connectedShown_ = false; // by the first button of the tool bar
};
