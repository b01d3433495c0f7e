#pragma once

#include <QString>

#include <functional>

class PlugInContext;
class RosterDrawing;
struct CAgentsItem;
struct Client;
struct CRosterItem;
struct TreeNode;

// Turns presences into changes of the contacts' records and nodes, and watches one contact at a time by a
// probe.
class PresenceTracker
{
public:
    PresenceTracker(Client& client, RosterDrawing& drawing) : client_(client), drawing_(drawing) {}

    // Starts and stops the time within which a probed contact must answer.
    std::function<void(bool running)> setResponseTimer;

    void OnPresence(const PlugInContext& context);
    // What a presence of `JID` (bare) does to its record and its node.
    void ApplyPresence(const QString& JID, bool IsAvailable, const QString& StatusMsg, const QString& Show,
                       const QString& resource);
    // Brings a contact into a tree that shows only those on line.
    void AddOnlineItem(const QString& JID, const QString& resource);

    // Probes the next contact.
    void RefreshPresence();
    // The probed contact did not answer in time.
    void responseTimedOut();

private:
    void tellUnsubscribed(const QString& JID);
    void showSubscribed(const QString& from, const QString& bare);
    void applyToService(CRosterItem& item, CAgentsItem& agent, TreeNode* node, bool online);
    void applyAvailable(CRosterItem& item, TreeNode* node, const QString& StatusMsg, const QString& Show);
    void applyUnavailable(CRosterItem& item, TreeNode* node, const QString& resource);
    void removeOffline(TreeNode* node);

    Client& client_;
    RosterDrawing& drawing_;
    int probeIndex_ = 1;
    QString probeJid_;
};
