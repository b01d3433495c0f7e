#pragma once

#include "contacts/ContactTree.h"

#include <QSet>

#include <functional>

struct Client;
struct CRosterItem;

// Draws the contacts into the tree. A rebuild is put off until somebody reads the tree or settle() is called,
// so that many in a row cost one.
class RosterDrawing
{
public:
    explicit RosterDrawing(Client& client) : client_(client) {}

    // The list of this session has come, and the fixed groups stand. Only InitRoster() sets it up.
    bool IsInitiated = false;
    // Plain availability was announced, whatever status is chosen.
    std::function<void()> announced;

    // Makes the fixed groups.
    void InitRoster();
    // Throws the nodes away and draws all contacts anew; nothing before a list has come.
    void redraw();
    // The same; the plain available presence that goes with it is sent at once.
    void Refresh();
    void RemoveAll();
    // Removes the fixed groups that no contact names and the groups that hold nobody. Always true.
    bool PruneEmptyGroups();

    // The server's row.
    void addServerRow();
    // A transport's row; nothing when a node of this JID stands.
    void addTransport(const QString& JID, const QString& name, bool online);
    // The folder of this name, made when there is none.
    TreeNode* group(const QString& name, const QString& tagWhenMade);
    // A contact's node, drawn off line, in a folder that stands. Null when the key stands already.
    TreeNode* addContact(const QString& parent, const QString& JID, const QString& text,
                         const QString& image);
    // A new contact of the list, which has no word of its presence yet, and its folder.
    void addNew(const QString& parent, const QString& JID, const QString& text, const QString& image);
    // Removes the contact's node, and its group, from the tree and from MyGroups, when it was the last in it.
    // The record is left to the caller, who drops it at once.
    void removeContact(const CRosterItem& item);

    // The tree, up to date.
    ContactTree& tree();
    // The model for the views; it may lag behind until settle().
    ContactTree& model() { return tree_; }
    void settle();

private:
    void rebuild();
    void addFixedGroups();
    // The folder in which a rebuild puts the contact.
    QString folderOf(const CRosterItem& item) const;
    void draw(const CRosterItem& item);
    void drawAnnounced(const QString& folder, const CRosterItem& item, const QString& text);
    void forgetEmptied();

    Client& client_;
    ContactTree tree_;
    QSet<QString> emptied_; // groups that lost a contact while the tree was stale
    bool stale_ = false;
};
