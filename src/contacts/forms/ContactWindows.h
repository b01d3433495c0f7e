#pragma once

#include "engine/ApplicationPlugIn.h"

#include <QObject>
#include <QString>

class FormRegistry;
class Roster;
class RosterForm;
class ShowInTrayForm;
struct Client;

// The room's face: the main window, made at first use, and what it wishes of other rooms. The stanzas that
// are for the contact list reach it here.
class ContactWindows : public QObject, public ApplicationPlugIn
{
    Q_OBJECT

public:
    // Both must outlive the object.
    ContactWindows(FormRegistry& registry, Client& client);

    // The main window, or null when it isn't loaded.
    RosterForm* rosterForm() const;
    // The contact list of the main window, or null when that isn't loaded.
    Roster* roster() const;
    RosterForm& makeRosterForm();
    // Whether the contact list of this session has been set up.
    bool isInitiated() const;

    void OnIQ(PlugInContext& context) override;
    void OnPresence(PlugInContext& context) override;

    // Draw the contact list anew; nothing where none has been set up. The first announces plain availability,
    // the second takes over how the settings want it to look.
    void refresh();
    void refreshAppearance();
    void applyOnTop();
    // Messages of these JIDs wait to be read.
    void setUnread(const QStringList& jids);
    // A word for the main window's status bar.
    void tell(const QString& text);
    // Tells where the main window went, or where it is in other words.
    void showInTray();
    // What it says holds no longer.
    void closeWhere();
    void tellWhere(const QString& title, const QString& description);

signals:
    void rosterFormMade(RosterForm& form);

    // The wishes of the main window, see there.
    void connectRequested();
    void disconnectRequested();
    void exitRequested();
    void openConversation(const QString& jid, bool trick);
    void showPreferences(const QString& page);
    void showNotices();
    void showHistory(const QString& jid);
    void groupChatRequested();
    void findContactsRequested();
    void mailWatcherRequested();
    void aboutRequested();

private:
    void forwardWishes(RosterForm& form);
    ShowInTrayForm& whereForm();

    FormRegistry& registry_;
    Client& client_;
};
