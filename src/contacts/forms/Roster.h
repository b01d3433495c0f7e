#pragma once

#include "contacts/ContextMenuRules.h"
#include "contacts/PresenceTracker.h"
#include "contacts/RosterDrawing.h"
#include "contacts/RosterSync.h"
#include "engine/ApplicationPlugIn.h"

#include <QTimer>
#include <QWidget>

class QMenu;
class RosterContextMenu;
class RosterView;
struct Client;
struct CRosterItem;

// The contact list control: the tree, its menu and what the server's roster and the contacts' presences do to
// it.
class Roster : public QWidget, private ApplicationPlugIn
{
    Q_OBJECT

public:
    explicit Roster(Client& client, QWidget* parent = nullptr);
    ~Roster() override;

    // Where the one registered plug-in passes stanzas on to.
    ApplicationPlugIn& Myapplicationplugin() { return *this; }

    // The fixed groups stand.
    bool IsInitiated() const { return drawing_.IsInitiated; }
    void setIsInitiated(bool initiated) { drawing_.IsInitiated = initiated; }
    // Sets the tree's font and makes the fixed groups.
    void InitRoster();

    // See RosterSync.
    void AddItem(const QString& JID, const QString& nick, const QString& group, bool IsGateway, bool Online,
                 const QString& subscription, const QString& ask);
    void RemoveItem(const QString& JID) { sync_.RemoveItem(JID); }
    void CommitRemoveItem(const QString& JID) { sync_.CommitRemoveItem(JID); }
    void RefreshAll() { sync_.RefreshAll(); }

    // Empties the tree.
    void RemoveAll() { drawing_.RemoveAll(); }
    // Draws the tree anew from the records, at the next settle(); nothing before a list has come. Its
    // presence is sent at once.
    void Refresh() { drawing_.Refresh(); }
    // Draws it anew in the font and the colours of the settings, and sends nothing.
    void RefreshAppearance();
    // Adds a group of the person's own. False when the name is empty or taken.
    bool AddGroupItem(const QString& name);
    // Brings the screen up to date; the trigger calls it at the end of each tick. Put off while the person
    // edits a label or drags.
    void settle();

    // Asks for the contact's vCard.
    void RetriveVCard(const QString& JID);

    void StartLoginTimer() { loginTimer_.start(); }
    void StopLoginTimer() { loginTimer_.stop(); }
    bool LoginTimerStatus() const { return loginTimer_.isActive(); }

    // Key and tag of the selected node; empty for none.
    QString SelectedItem();
    QString SelectedItemTag();
    // Null for none; good until the next settle().
    const TreeNode* selectedNode();

    // Probes the next contact.
    void RefreshPresence() { presence_.RefreshPresence(); }
    // Does what a double click on the selected node does.
    void openSelected();
    // Removes the selected contact, if one is selected and the session is connected.
    void removeSelected();
    // The same after a question.
    void askRemove();
    // Starts editing the selected node's text.
    void renameSelected();
    // Asks the selected gateway for a session, or ends it.
    void sendGatewayPresence(bool available);
    // Asks the selected contact for its authorisation again.
    void askAuthorisation();

    // Messages of these JIDs wait to be read.
    void setUnread(const QStringList& jids);

    RosterView& view() { return *view_; }
    ContactTree& tree() { return drawing_.tree(); }

signals:
    // The person wants to talk to a contact. The opening message counts as a trick.
    void openConversation(const QString& jid);
    void showPreferences(const QString& page);
    void showNotices();
    void showHistory(const QString& jid);
    void addGroupRequested();
    void moveContactRequested();
    // What a command did, in a sentence for the status bar.
    void told(const QString& text);
    // Plain availability was announced, whatever status is chosen.
    void announced();

private:
    void OnIQ(PlugInContext& context) override { sync_.OnIQ(context); }
    void OnPresence(PlugInContext& context) override { presence_.OnPresence(context); }

    void setUpView();
    void setUpTimers();
    QString describe(const TreeNode& node) const;
    QString stateOf(const TreeNode& node) const;
    // The record of the selected contact; null for none, and while there is no connection.
    const CRosterItem* selectedContact();
    void remove(const CRosterItem& contact);
    void rename(const QString& JID, const QString& text);
    void applyFont();
    void rememberDragNode(const TreeNode* node);
    void showMenu(const TreeNode* node, const QPoint& at);
    void act(ContextEntry entry);
    void drop(const QString& target);

    Client& client_;
    RosterDrawing drawing_;
    RosterSync sync_;
    PresenceTracker presence_;
    RosterView* view_;
    RosterContextMenu* menu_;
    QTimer loginTimer_;
    QTimer responseTimer_;
    QTimer settleTimer_;
    QString dragNode_; // key of the node under the last mouse press
};
